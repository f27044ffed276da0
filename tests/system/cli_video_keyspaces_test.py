#!/usr/bin/env python3
"""A field is written in every key space that holds it (set), and the privacy
strip (strip --all, --tracks) leaves no descriptive item and strip --gps no
location but every other item: checked with
exiftool and ffprobe over files made like camera and phone files."""

import json
import os
import tempfile
import unittest

from support import (CLI, SourceKeepingTest, children, exif, exif_write, ffmpeg, ffprobe, framemd5, info, read_bytes,
                     run, sha, write_bytes)

# The groups exiftool reports descriptive movie items in.
DESCRIPTIVE = ("UserData", "ItemList", "Keys", "XMP", "3GP")


def descriptive(tags):
    return {k: v for k, v in tags.items() if k.split(":")[0].startswith(DESCRIPTIVE)}


def chapters(path):
    return json.loads(run("ffprobe", "-v", "error", "-show_chapters", "-of", "json",
                          path).stdout)["chapters"]


def make_timed_metadata_track(path, track_number):
    """Turns a subtitle track into a GoPro-like telemetry track in place: its
    handler becomes "meta" and its sample description "gpmd" (same sizes)."""
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


class CliVideoKeySpacesTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        src = os.path.join(cls.tmp.name, "src")
        os.makedirs(src)
        clip = ["-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=1", "-f", "lavfi",
                "-i", "sine=duration=1", "-c:v", "libx264", "-pix_fmt", "yuv420p", "-c:a", "aac",
                "-shortest"]
        # A camera movie: a keys title and location beside a user-data title
        # and location and an iTunes title.
        cls.mov = os.path.join(src, "camera.mov")
        ffmpeg(*clip, "-movflags", "+use_metadata_tags",
            "-metadata", "title=Keys title", cls.mov)
        exif_write(cls.mov, "-ItemList:Title=iTunes title", "-UserData:Title=User data title",
                   "-UserData:GPSCoordinates=11, 21", "-Keys:GPSCoordinates=12, 22, 5")
        # A phone file with every key space, XMP, a cover, a location,
        # chapters, a subtitle and a telemetry track.
        for name, text in (("sub.srt", "Hello"), ("tel.srt", "Telemetry")):
            with open(os.path.join(src, name), "w") as f:
                f.write("1\n00:00:00,000 --> 00:00:00,800\n%s\n" % text)
        with open(os.path.join(src, "chapters.txt"), "w") as f:
            f.write(";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=1000\ntitle=One\n")
        cover = os.path.join(src, "cover.png")
        ffmpeg("-f", "lavfi", "-i", "color=red:size=16x16",
            "-frames:v", "1", cover)
        cls.phone = os.path.join(src, "phone.3gp")
        ffmpeg(*clip[:8], "-i", os.path.join(src, "sub.srt"),
            "-i", os.path.join(src, "tel.srt"), "-i", os.path.join(src, "chapters.txt"),
            "-map", "0", "-map", "1", "-map", "2", "-map", "3", "-map_chapters", "4",
            *clip[8:], "-c:s", "mov_text", "-metadata", "title=3GPP title",
            "-metadata", "artist=3GPP performer", "-metadata", "location=+48.8566+002.3522/",
            "-f", "3gp", cls.phone)
        make_timed_metadata_track(cls.phone, 3)
        exif_write(cls.phone, "-ItemList:Title=iTunes title", "-Keys:Title=Keys title",
                   "-ItemList:CoverArt<=" + cover, "-UserData:GPSCoordinates=11, 21",
                   "-Keys:GPSCoordinates=12, 22, 5", "-Keys:Make=Phone maker",
                   "-XMP-dc:Title=XMP title", "-XMP-exif:GPSLatitude=40")
        cls.hashes = {p: sha(p) for p in (cls.mov, cls.phone)}

    def output(self, source):
        return os.path.join(self.out, os.path.basename(source))

    def test_set_replaces_title_and_location_in_every_key_space(self):
        for source in (self.mov, self.phone):
            with self.subTest(source=os.path.basename(source)):
                run(CLI, "set", "--title", "New title", "--latitude", "48.5", "--longitude",
                    "-3.25", "--altitude", "7", "--storage", self.out, source)
                out = self.output(source)
                tags = exif(out)
                # XMP is kept as it is (not one of the key spaces written).
                titles = {k: v for k, v in tags.items()
                          if k.endswith(":Title") and not k.startswith("XMP")}
                self.assertGreaterEqual(len(titles), 3, titles)
                self.assertEqual(set(titles.values()), {"New title"}, titles)
                places = {k: v for k, v in tags.items()
                          if k.endswith(":GPSCoordinates") or k.endswith("LocationInformation")}
                self.assertGreaterEqual(len(places), 2, places)
                for key, value in places.items():
                    self.assertRegex(value, r"48(\.5| deg 30').*3(\.25| deg 15')", key)
                probe = ffprobe(out)["format"]["tags"]
                self.assertEqual(probe["title"], "New title")
                for key, value in probe.items():
                    if "location" in key or key.startswith("title"):
                        self.assertIn(value, ("New title", "+48.5-3.25+7"), key)
                rec = info(out)
                self.assertEqual(rec["fileTitle"], "New title")
                self.assertAlmostEqual(rec["filelongtitude"], 3.25)
                self.assertEqual(tags.get("ItemList:CoverArt") is None,
                                 exif(source).get("ItemList:CoverArt") is None)

    def test_strip_all_leaves_no_descriptive_item_nor_location(self):
        streams = ("V", "a", "s", "d?")
        for extra in ((), ("--tracks",)):
            with self.subTest(flags=extra):
                out_dir = tempfile.mkdtemp(dir=self.tmp.name)
                run(CLI, "strip", "--all", *extra, "--storage", out_dir, self.phone)
                out = os.path.join(out_dir, "phone.3gp")
                tags = exif(out)
                self.assertEqual(descriptive(tags), {})
                self.assertEqual(chapters(out), [])  # they were user data
                self.assertEqual([k for k in tags if "GPS" in k or "Location" in k], [])
                self.assertNotIn("CoverArt", str(tags))
                probe = ffprobe(out)
                brands = ("major_brand", "minor_version", "compatible_brands")
                self.assertEqual([k for k in probe["format"].get("tags", {}) if k not in brands], [])
                self.assertEqual(probe["format"]["tags"]["major_brand"],  # still a 3GP file
                                 ffprobe(self.phone)["format"]["tags"]["major_brand"])
                kinds = [(s["codec_type"], s["codec_tag_string"]) for s in probe["streams"]]
                if extra:
                    # The telemetry track goes; the subtitle stays.
                    self.assertEqual(kinds, [("video", "avc1"), ("audio", "mp4a"),
                                             ("subtitle", "tx3g")])
                    self.assertEqual(framemd5(out, streams),
                                     framemd5(self.phone, ("V", "a", "2")))
                else:
                    self.assertIn(("data", "gpmd"), kinds)
                    self.assertEqual(framemd5(out, streams),
                                     framemd5(self.phone, streams))
        # --tracks alone is a usage error.
        result = run(CLI, "strip", "--tracks", "--storage", self.out, self.phone, check=False)
        self.assertEqual(result.returncode, 2)

    def test_strip_gps_removes_every_location_and_nothing_else(self):
        def place(key):
            return "GPS" in key or "Location" in key

        # What moves with the smaller movie box, and the vendor field of the
        # key list's handler, which the writer fills in.
        layout = {"SourceFile", "QuickTime:MediaDataOffset", "QuickTime:HandlerVendorID"}

        def kept(tags):
            return {k: v for k, v in tags.items() if not place(k) and k not in layout
                    and not k.startswith(("System:", "Composite:"))}

        for flags in (("--gps",), ("--gps", "--all")):
            with self.subTest(flags=flags):
                out_dir = tempfile.mkdtemp(dir=self.tmp.name)
                run(CLI, "strip", *flags, "--storage", out_dir, self.phone)
                out = os.path.join(out_dir, "phone.3gp")
                before, after = exif(self.phone, "-n"), exif(out, "-n")
                self.assertTrue({"UserData:GPSCoordinates", "Keys:GPSCoordinates",
                                 "UserData:LocationInformation"} <= set(before), before.keys())
                # XMP is left as it is (exiftool's composite position reads it).
                self.assertEqual([k for k in after if place(k) and
                                  not k.startswith(("XMP", "Composite"))], [])
                streams = ("V", "a", "s", "d?")
                self.assertEqual(framemd5(out, streams), framemd5(self.phone, streams))
                if "--all" in flags:
                    self.assertEqual(descriptive(after), {})
                else:
                    self.assertEqual(kept(after), kept(before))
                    self.assertEqual(after["XMP-exif:GPSLatitude"], 40)


if __name__ == "__main__":
    unittest.main(verbosity=2)
