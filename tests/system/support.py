# SPDX-License-Identifier: GPL-3.0-or-later
"""What the system tests share: running tools, making media with ffmpeg, and
the one way they ask exiftool and ffprobe about a file, and a few box helpers
to make files shaped like real ones."""

import hashlib
import json
import os
import struct
import subprocess
import tempfile
import unittest

CLI = os.environ.get("TAGSMITH_CLI", "tagsmith-cli")


def run(*args, check=True):
    return subprocess.run(args, capture_output=True, text=True, check=check, timeout=300)


def ffmpeg(*args):
    run("ffmpeg", "-y", "-v", "error", *args)


def ffprobe(path):
    return json.loads(run("ffprobe", "-v", "error", "-show_format", "-show_streams", "-of", "json",
                          path).stdout)


def exif(path, *options):
    """exiftool's view of a file, keys "Group:Tag" (e.g. "ItemList:Title")."""
    return json.loads(run("exiftool", "-j", "-G1", "-a", *options, path).stdout)[0]


def exif_write(path, *assignments):
    """Changes a file in place with exiftool ("-Keys:Title=New")."""
    run("exiftool", "-q", "-overwrite_original", *assignments, path)


def sha(path):
    with open(path, "rb") as f:
        return hashlib.sha256(f.read()).hexdigest()


def framemd5(path, streams=("",)):
    """Per-packet checksums of the streams (ffmpeg stream specifiers after "0:";
    all by default), without the lines naming the file."""
    maps = [arg for s in streams for arg in ("-map", ("0:" + s).rstrip(":"))]
    out = run("ffmpeg", "-v", "error", "-i", path, *maps, "-c", "copy", "-f", "framemd5", "-").stdout
    return [line for line in out.splitlines() if not line.startswith("#")]


def info(path, *extra):
    """The first record `tagsmith-cli info --json` prints for the path."""
    return json.loads(run(CLI, "info", "--json", *extra, path).stdout)[0]


def box(kind, payload=b""):
    kind = kind if isinstance(kind, bytes) else kind.encode("latin-1")
    return struct.pack(">I", 8 + len(payload)) + kind + payload


ENG = 0x15C7  # "eng" packed as ISO 639-2; a code below 0x400 is a Macintosh language


def qt_text(kind, text, language=ENG):  # a QuickTime user-data text: length, language, bytes
    return box(kind, struct.pack(">HH", len(text), language) + text)


def data_atom(type_indicator, value):
    """The value of an iTunes or QuickTime keys list item."""
    return box(b"data", struct.pack(">II", type_indicator, 0) + value)


def read_bytes(path):
    with open(path, "rb") as f:
        return bytearray(f.read())


def write_bytes(path, content):
    with open(path, "wb") as f:
        f.write(content)


def children(buf, start, end):
    """(type, start, body start, end) of the boxes in buf[start:end]."""
    while start + 8 <= end:
        size, kind = struct.unpack(">I4s", buf[start:start + 8])
        head = 16 if size == 1 else 8
        if size == 0:
            size = end - start
        elif size == 1 and start + 16 <= end:
            size = struct.unpack(">Q", buf[start + 8:start + 16])[0]
        if size < head or start + size > end:
            return
        kind = kind.decode("latin-1")
        # A `meta` is a full box unless its `hdlr` follows at once.
        skip = 4 if kind == "meta" and buf[start + 12:start + 16] != b"hdlr" else 0
        yield kind, start, start + head + skip, start + size
        start += size


def append_boxes(path, payload, chain=("moov", "udta")):
    """Appends boxes at the end of the box at `chain` (made where missing),
    growing its parents. Nothing moves the media: for files whose movie box
    comes last, as ffmpeg writes them."""
    buf, parents, start = read_bytes(path), [], 0
    end = len(buf)
    for kind in chain:
        found = next((c for c in children(buf, start, end) if c[0] == kind), None)
        if not found:
            break
        parents.append(found[1])
        start, end = found[2:]
    for kind in reversed(chain[len(parents):]):
        payload = box(kind, payload)
    buf[end:end] = payload
    for pos in parents:
        struct.pack_into(">I", buf, pos, struct.unpack_from(">I", buf, pos)[0] + len(payload))
    write_bytes(path, buf)


def items(path):
    """Every metadata item by place ("udta/©nam", "keys/com.apple.quicktime.make",
    "ilst/covr", "ilst/----:iTunMOVI", "uuid/HEX", "trak/udta/name"; repeats get
    "#n") mapped to its stored bytes (a keys item's without its index)."""
    buf, out = read_bytes(path), {}

    def add(name, value):
        n = sum(1 for k in out if k.split("#")[0] == name)
        out[name + ("#%d" % n if n else "")] = bytes(value)

    def meta(start, end):
        handler, keys = None, []
        for kind, _, s, e in children(buf, start, end):
            if kind == "hdlr":
                handler = buf[s + 8:s + 12]
            elif kind == "keys":
                keys = [buf[ks:ke].decode() for _, _, ks, ke in children(buf, s + 8, e)]
            elif kind == "ilst":
                for entry, _, es, ee in children(buf, s, e):
                    if handler == b"mdta":
                        entry = "keys/" + keys[int.from_bytes(entry.encode("latin-1"), "big") - 1]
                    elif entry == "----":  # a freeform item, by its name
                        entry += "".join(":" + buf[ns + 4:ne].decode()
                                         for k, _, ns, ne in children(buf, es, ee) if k == "name")
                    add(entry if entry.startswith("keys/") else "ilst/" + entry, buf[es:ee])
            elif kind not in ("free", "skip"):
                add("meta/" + kind, buf[s:e])

    def udta(prefix, start, end):
        for kind, _, s, e in children(buf, start, end):
            if kind == "meta":
                meta(s, e)
            elif kind not in ("free", "skip"):
                add(prefix + kind, buf[s:e])

    top = list(children(buf, 0, len(buf)))
    top += [c for kind, _, s, e in top if kind == "moov" for c in children(buf, s, e)]
    tracks = [c for kind, _, s, e in top if kind == "trak" for c in children(buf, s, e)]
    for kind, _, s, e in top:
        if kind == "uuid":
            add("uuid/" + buf[s:s + 16].hex(), buf[s:e])
        elif kind == "udta":
            udta("udta/", s, e)
        elif kind == "meta":
            meta(s, e)
    for kind, _, s, e in tracks:
        if kind == "udta":
            udta("trak/udta/", s, e)
    return out


class SourceKeepingTest(unittest.TestCase):
    """Sources made once per class under `tmp`, their digests in `hashes`; each
    test writes into its own `out` folder and must leave every source as it was."""
    hashes = {}

    @classmethod
    def tearDownClass(cls):
        cls.tmp.cleanup()

    def setUp(self):
        self.out = tempfile.mkdtemp(dir=self.tmp.name)

    def tearDown(self):
        for path, digest in self.hashes.items():
            self.assertEqual(sha(path), digest, "the source was changed: " + path)
