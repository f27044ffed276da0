#!/usr/bin/env python3
"""Edits over a folder of files made like phone, camera, QuickTime and iTunes
files: the edited field changes in every key space that holds it, every other
metadata item keeps its bytes, the media stays identical, and exiftool,
ffprobe and `info` agree on the new title and location."""

import os
import re
import struct
import tempfile
import unittest

from support import (CLI, ENG, append_boxes, box, children, data_atom, exif, exif_write, ffmpeg,
                     ffprobe, framemd5, info, items, qt_text, read_bytes, run, write_bytes)

CLIP = ["-f", "lavfi", "-i", "testsrc=size=64x48:rate=10:duration=1", "-f", "lavfi", "-i",
        "sine=duration=1", "-c:v", "libx264", "-pix_fmt", "yuv420p", "-c:a", "aac", "-shortest"]
TITLE = "Été à Paris"
# Where each field lives, as items() names the places.
TITLE_PLACES = {"keys/com.apple.quicktime.title", "udta/©nam", "ilst/©nam", "udta/titl"}
LOCATION_PLACES = {"keys/com.apple.quicktime.location.ISO6709", "udta/©xyz", "udta/loci"}


def gpp(kind, payload):  # a 3GPP asset: version and flags, packed language, value
    return box(kind, struct.pack(">IH", 0, ENG) + payload)


def keys_meta(*entries):
    """A movie-level QuickTime keys box (no version, as phones write it) of
    (key, data type, value bytes) entries."""
    keys = b"".join(box("mdta", key.encode()) for key, _, _ in entries)
    ilst = b"".join(box(struct.pack(">I", n + 1), data_atom(kind, value))
                    for n, (_, kind, value) in enumerate(entries))
    return box("meta", box("hdlr", b"\0" * 8 + b"mdta" + b"\0" * 13)
               + box("keys", struct.pack(">II", 0, len(entries)) + keys) + box("ilst", ilst))


def move_movie_first(path):
    """Puts the movie box before the media, as fast-start exports do."""
    buf = read_bytes(path)
    top = {kind: (pos, end) for kind, pos, _, end in children(buf, 0, len(buf))}
    (start, end), media = top["moov"], top["mdat"][0]
    moov = buf[start:end]

    def shift(first, last):
        for kind, _, s, e in children(moov, first, last):
            if kind in ("trak", "mdia", "minf", "stbl"):
                shift(s, e)
            elif kind in ("stco", "co64"):
                form = ">%d%s" % (struct.unpack_from(">I", moov, s + 4)[0], "I" if kind == "stco" else "Q")
                offsets = struct.unpack_from(form, moov, s + 8)
                struct.pack_into(form, moov, s + 8, *(o + len(moov) for o in offsets))

    shift(8, len(moov))
    write_bytes(path, buf[:media] + moov + buf[media:start] + buf[end:])


def make_folder(folder):
    """Five files shaped like what phones, cameras and Apple's tools write."""
    path = lambda name: os.path.join(folder, name)
    for name, colour in (("cover.jpg", "red"), ("cover.png", "blue"), ("cover.bmp", "green")):
        ffmpeg("-f", "lavfi", "-i", "color=%s:size=16x16" % colour, "-frames:v", "1", path(name))
    # A phone's camera app: QuickTime keys in the movie's meta box, a user-data location.
    ffmpeg(*CLIP, "-f", "mov", path("IMG_0001.MOV"))
    append_boxes(path("IMG_0001.MOV"), qt_text("©xyz", b"-33.8688+151.2093+012.000/"))
    exif_write(path("IMG_0001.MOV"), "-Keys:Make=Apple", "-Keys:Model=iPhone 12",
               "-Keys:Software=16.1", "-Keys:CreationDate=2022:05:01 10:00:00+10:00",
               "-Keys:GPSCoordinates=-33.8688, 151.2093, 12")
    # An Android phone: a creation time, a user-data location, typed keys, a box
    # nobody knows and an ID3 tag in a metadata box after the iTunes one.
    ffmpeg(*CLIP, "-metadata", "creation_time=2022-05-01T10:00:00Z", path("VID_20220501.mp4"))
    id3 = box("meta", bytes(4) + box("hdlr", bytes(8) + b"ID32" + bytes(13))
              + box("ID32", b"\0\0\0\0\x15\xc7ID3\x04" + bytes(6)))
    append_boxes(path("VID_20220501.mp4"), qt_text("©xyz", b"+48.8566+002.3522/")
                 + box("Xtgs", b"\x01\x02 not understood \xff") + id3)
    append_boxes(path("VID_20220501.mp4"), keys_meta(
        ("com.android.version", 1, b"12"), ("com.android.capture.fps", 23, struct.pack(">f", 30)),
        ("com.android.manufacturer.flags", 21, b"\x01")), ("moov",))
    # An action camera: a timecode track, vendor boxes in the user data and the movie.
    ffmpeg(*CLIP, "-timecode", "01:00:00:00", path("GX010001.MP4"))
    append_boxes(path("GX010001.MP4"), box("FIRM", b"HD9.01.01.60.00") + box("LENS", b"LAJ8052311203000")
           + box("CAME", bytes(range(16))) + box("GPMF", b"DEVC\0\x01\0\x08STRM\0\0\0\0"))
    append_boxes(path("GX010001.MP4"), box("uuid", bytes.fromhex("85c0b687820f11e08111f4ce462b6a48")
                                     + box("CNCV", b"CanonAVC0010")), ("moov",))
    # QuickTime Player: Mac Roman texts (one in two languages), player boxes, 3GPP
    # items, three covers (one named, one BMP), an unknown list entry, the list's zero end word, a track name,
    # fast start, XMP.
    ffmpeg(*CLIP, "-f", "mov", path("Holiday.mov"))
    append_boxes(path("Holiday.mov"), box("name", b"Movie track") + qt_text("©nam", b"Track one"),
           ("moov", "trak", "udta"))
    album = qt_text("©alb", b"Caf\x8e au lait", 0)[8:] + qt_text("©alb", b"Milchkaffee", 2)[8:]
    covers = data_atom(13, read_bytes(path("cover.jpg"))) + box("name", b"\0\0\0\0Front") \
        + data_atom(14, read_bytes(path("cover.png"))) + data_atom(27, read_bytes(path("cover.bmp")))
    hdlr = box("hdlr", b"\0" * 8 + b"mdirappl" + b"\0" * 9)
    append_boxes(path("Holiday.mov"), qt_text("©nam", b"Caf\x8e", 0) + box("©alb", album)
           + box("WLOC", b"\0\x64\0\x64") + box("AllF", b"\x01") + gpp("titl", b"Titre 3GPP\0")
           + gpp("auth", b"Auteur\0") + gpp("kywd", b"\x02\x04one\0\x04two\0")
           + qt_text("©xyz", b"+48.8566+002.3522+035.000/")
           + box("meta", b"\0\0\0\0" + hdlr + box("ilst", box("covr", covers) + box("tgsX", box("blob", b"\0\1 not a data atom")))) + b"\0\0\0\0")
    move_movie_first(path("Holiday.mov"))
    exif_write(path("Holiday.mov"), "-XMP-dc:Title=XMP title")
    # iTunes: list items, a freeform item, a cover beside a QuickTime keys title, XMP.
    ffmpeg(*CLIP, "-f", "ipod", "-metadata", "title=iTunes title", "-metadata", "artist=Artist",
           path("Film.m4v"))
    append_boxes(path("Film.m4v"), box("stik", data_atom(21, b"\x09")) + box(
        "----", box("mean", b"\0\0\0\0com.apple.iTunes") + box("name", b"\0\0\0\0iTunMOVI")
        + data_atom(1, b"<plist/>")), ("moov", "udta", "meta", "ilst"))
    move_movie_first(path("Film.m4v"))
    exif_write(path("Film.m4v"), "-ItemList:CoverArt<=" + path("cover.jpg"),
               "-Keys:Title=Keys title", "-XMP-dc:Title=XMP title")
    return [path(n) for n in ("IMG_0001.MOV", "VID_20220501.mp4", "GX010001.MP4", "Holiday.mov",
                              "Film.m4v")]


def coordinates(text):
    """Latitude and longitude in a reader's text: ISO 6709, exiftool's numbers, 3GPP's Lat=."""
    numbers = re.findall(r"[+-]?\d+(?:\.\d*)?", str(text).split("Lat=")[-1])
    return tuple(round(float(n), 3) for n in numbers[:2])


class CliRealFilesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        cls.sources = make_folder(cls.tmp.name)
        cls.before = {p: items(p) for p in cls.sources}

    @classmethod
    def tearDownClass(cls):
        cls.tmp.cleanup()

    def write(self, *args, sources=None):
        """Runs a writing command over the folder's files; answers (source, output) pairs."""
        out, sources = tempfile.mkdtemp(dir=self.tmp.name), sources or self.sources
        result = run(CLI, *args, "--storage", out, *sources, check=False)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return [(s, os.path.join(out, os.path.basename(s))) for s in sources]

    def assert_only_changed(self, source, output, places):
        """Every item outside the field's places keeps its bytes, each place that
        held the field still holds it, and the media is identical."""
        before, after = self.before[source], items(output)
        place = lambda key: key.split("#")[0]
        differ = sorted(k for k in set(before) | set(after)
                        if place(k) not in places and before.get(k) != after.get(k))
        self.assertEqual(differ, [], "items lost, added or changed")
        self.assertEqual({k for k in before if place(k) in places} - set(after), set(),
                         "places of the field dropped")
        self.assertEqual(framemd5(output), framemd5(source))

    def readers(self, path):
        """exiftool's tags (copies apart), ffprobe's as "ffprobe:KEY", and our record."""
        tags = exif(path, "-n", "-G1:4")
        tags.update({"ffprobe:" + k: v for k, v in ffprobe(path)["format"].get("tags", {}).items()})
        return tags, info(path)

    def test_set_title_changes_only_the_title(self):
        held = {k.split("#")[0] for before in self.before.values() for k in before}
        self.assertLessEqual({"udta/©alb", "udta/kywd", "udta/Xtgs", "meta/ID32", "ilst/covr", "ilst/tgsX"}, held)
        for source, output in self.write("set", "--title", TITLE):
            with self.subTest(file=os.path.basename(source)):
                self.assert_only_changed(source, output, TITLE_PLACES)
                tags, rec = self.readers(output)
                # XMP is not one of the key spaces an edit writes.
                titles = {k: v for k, v in tags.items()
                          if re.search(r"[:.]title(-\w+)?$", k, re.I) and not k.startswith("XMP")}
                self.assertEqual(set(titles.values()) | {rec.get("fileTitle")}, {TITLE}, titles)

    def test_set_location_changes_only_the_location(self):
        for source, output in self.write("set", "--latitude", "-12.5", "--longitude", "-3.25"):
            with self.subTest(file=os.path.basename(source)):
                self.assert_only_changed(source, output, LOCATION_PLACES)
                tags, rec = self.readers(output)
                places = {k: coordinates(v) for k, v in tags.items()
                          if re.search(r"GPSCoordinates|LocationInformation|location", k)}
                sign = lambda f: -1 if rec.get(f) == "-" else 1
                places["info"] = (round(sign("latitudeFormat") * rec.get("filelatitude", 0), 3),
                                  round(sign("longtitudeFormat") * rec.get("filelongtitude", 0), 3))
                self.assertEqual(set(places.values()), {(-12.5, -3.25)}, places)

    def test_altitude_alone_keeps_the_position(self):
        # Parts of the location not given keep the file's values, hemisphere included.
        [(source, output)] = self.write("set", "--altitude", "120", sources=self.sources[:1])
        tags, rec = self.readers(output)
        places = {k: coordinates(v) for k, v in tags.items() if "GPSCoordinates" in k}
        self.assertEqual(set(places.values()), {(-33.869, 151.209)}, places)
        self.assertEqual((rec.get("latitudeFormat"), rec.get("fileAtitude")), ("-", 120), rec)

    def test_removal_keeps_a_southern_location(self):
        # The design's removal clears a location only north and east of zero.
        [(source, output)] = self.write("strip", sources=self.sources[:1])
        after = items(output)
        for place in LOCATION_PLACES & set(self.before[source]):
            self.assertEqual(after.get(place), self.before[source][place], place)


if __name__ == "__main__":
    unittest.main(verbosity=2)
