#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Edits over a folder of files made like phone, camera, QuickTime and iTunes
files: the edited field changes in every key space that holds it, every other
metadata item keeps its bytes, the media stays identical, and exiftool,
ffprobe and `info` agree on the new title and location. The location strip
and the privacy strip (strip --all, --tracks) over the same files."""

import json
import os
import re
import struct
import tempfile
import unittest

from support import (CLI, ENG, SourceKeepingTest, append_boxes, box, children, data_atom, exif,
                     exif_write, ffmpeg, ffprobe, framemd5, info, items, qt_text, read_bytes, run,
                     sha, write_bytes)

CLIP = ["-f", "lavfi", "-i", "testsrc=size=64x48:rate=10:duration=1", "-f", "lavfi", "-i",
        "sine=duration=1", "-c:v", "libx264", "-pix_fmt", "yuv420p", "-c:a", "aac", "-shortest"]
TITLE = "Été à Paris"
# Where each field lives, as items() names the places.
TITLE_PLACES = {"keys/com.apple.quicktime.title", "udta/©nam", "ilst/©nam", "udta/titl"}
LOCATION_PLACES = {"keys/com.apple.quicktime.location.ISO6709", "udta/©xyz", "udta/loci"}
# The groups exiftool reports descriptive movie items in.
DESCRIPTIVE = ("UserData", "ItemList", "Keys", "XMP", "3GP")


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


def make_timed_metadata_track(path, track_number):
    """Turns a subtitle track into a telemetry track in place, as action cameras
    write them: its handler becomes "meta" and its sample description "gpmd"."""
    buf = read_bytes(path)

    def walk(start, end):
        for kind, pos, body, stop in children(buf, start, end):
            if kind in ("mdia", "minf", "stbl"):
                walk(body, stop)
            elif kind in ("hdlr", "stsd"):
                at = pos + (16 if kind == "hdlr" else 20)
                buf[at:at + 4] = b"meta" if kind == "hdlr" else b"gpmd"

    [(_, _, body, end)] = [c for c in children(buf, 0, len(buf)) if c[0] == "moov"]
    walk(*[c[2:] for c in children(buf, body, end) if c[0] == "trak"][track_number])
    write_bytes(path, buf)


def make_folder(folder):
    """Six files shaped like what phones, cameras and Apple's tools write."""
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
    # A phone's 3GPP file: every key space, XMP, a cover, chapters, a subtitle
    # and a telemetry track.
    for name, text in (("sub.srt", "Hello"), ("tel.srt", "Telemetry")):
        with open(path(name), "w") as f:
            f.write("1\n00:00:00,000 --> 00:00:00,800\n%s\n" % text)
    with open(path("chapters.txt"), "w") as f:
        f.write(";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=1000\ntitle=One\n")
    ffmpeg(*CLIP[:8], "-i", path("sub.srt"), "-i", path("tel.srt"), "-i", path("chapters.txt"),
           *"-map 0 -map 1 -map 2 -map 3 -map_chapters 4".split(), *CLIP[8:], "-c:s", "mov_text",
           "-metadata", "title=3GPP title", "-metadata", "artist=3GPP performer",
           "-metadata", "location=+48.8566+002.3522/", "-f", "3gp", path("phone.3gp"))
    make_timed_metadata_track(path("phone.3gp"), 3)
    exif_write(path("phone.3gp"), "-ItemList:Title=iTunes title", "-Keys:Title=Keys title",
               "-ItemList:CoverArt<=" + path("cover.png"), "-UserData:GPSCoordinates=11, 21",
               "-Keys:GPSCoordinates=12, 22, 5", "-Keys:Make=Phone maker",
               "-XMP-dc:Title=XMP title", "-XMP-exif:GPSLatitude=40")
    return [path(n) for n in ("IMG_0001.MOV", "VID_20220501.mp4", "GX010001.MP4", "Holiday.mov",
                              "Film.m4v", "phone.3gp")]


def coordinates(text):
    """Latitude and longitude in a reader's text: ISO 6709, exiftool's numbers, 3GPP's Lat=."""
    numbers = re.findall(r"[+-]?\d+(?:\.\d*)?", str(text).split("Lat=")[-1])
    return tuple(round(float(n), 3) for n in numbers[:2])


class CliRealFilesTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        cls.sources = make_folder(cls.tmp.name)
        cls.phone = cls.sources[-1]
        cls.before = {p: items(p) for p in cls.sources}
        cls.hashes = {p: sha(p) for p in cls.sources}

    def write(self, *args, sources=None):
        """Runs a writing command over the folder's files; answers (source, output) pairs."""
        out, sources = tempfile.mkdtemp(dir=self.out), sources or self.sources
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

    def test_strip_gps_removes_every_location_and_nothing_else(self):
        place = lambda key: re.search(r"©xyz|loci|location", key, re.I)  # noqa: E731
        for source, output in self.write("strip", "--gps"):
            with self.subTest(file=os.path.basename(source)):
                before, after = self.before[source], items(output)
                self.assertEqual({k: v for k, v in after.items() if not place(k)},
                                 {k: v for k, v in before.items() if not place(k)})
                self.assertEqual(framemd5(output), framemd5(source))
                # XMP is left as it is (exiftool's composite position reads it).
                self.assertEqual([k for k in exif(output) if re.search("GPS|(?<!Window)Location", k)
                                  and not k.startswith(("XMP", "Composite"))], [])

    def test_strip_all_leaves_no_descriptive_item_nor_location(self):
        streams = ("V", "a", "s", "d?")
        for extra in ((), ("--tracks",)):
            with self.subTest(flags=extra):
                [(_, out)] = self.write("strip", "--all", *extra, sources=[self.phone])
                tags = exif(out)
                self.assertEqual({k: v for k, v in tags.items()
                                  if k.split(":")[0].startswith(DESCRIPTIVE)}, {})
                self.assertEqual(json.loads(run("ffprobe", "-v", "error", "-show_chapters", "-of",
                                                "json", out).stdout)["chapters"], [])
                self.assertEqual([k for k in tags if "GPS" in k or "Location" in k], [])
                probe = ffprobe(out)
                brands = ("major_brand", "minor_version", "compatible_brands")
                self.assertEqual([k for k in probe["format"].get("tags", {}) if k not in brands], [])
                self.assertEqual(probe["format"]["tags"]["major_brand"],  # still a 3GP file
                                 ffprobe(self.phone)["format"]["tags"]["major_brand"])
                kinds = [(s["codec_type"], s["codec_tag_string"]) for s in probe["streams"]]
                # --tracks drops the telemetry track and keeps the subtitle.
                self.assertEqual(("data", "gpmd") in kinds, not extra)
                self.assertEqual(framemd5(out, streams),
                                 framemd5(self.phone, ("V", "a", "2") if extra else streams))
        # --tracks alone is a usage error.
        self.assertEqual(run(CLI, "strip", "--tracks", self.phone, check=False).returncode, 2)


if __name__ == "__main__":
    unittest.main(verbosity=2)
