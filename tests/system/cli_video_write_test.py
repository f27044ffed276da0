#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tagsmith-cli set, strip and the video tools end to end: outputs checked
with exiftool and ffmpeg, the sources checked to be untouched."""

import os
import shutil
import tempfile
import unittest

from support import (CLI, SourceKeepingTest, exif, exif_write, ffmpeg, framemd5, info, read_bytes, run, sha,
                     write_bytes)


class CliVideoWriteTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        cls.src = os.path.join(cls.tmp.name, "src")
        os.makedirs(cls.src)
        cls.mp4 = os.path.join(cls.src, "VID_20190514_183005.mp4")
        ffmpeg(*("-f lavfi -i testsrc=size=320x240:rate=25:duration=2 -f lavfi -i sine=sample_rate=44100:"
                 "duration=2 -c:v libx264 -pix_fmt yuv420p -c:a aac -shortest -metadata title=Original").split(),
               "-metadata", "comment=keep me", cls.mp4)
        cls.mov = os.path.join(cls.src, "clip.mov")
        ffmpeg("-i", cls.mp4, "-c", "copy", "-movflags", "+faststart+use_metadata_tags",
            "-metadata", "title=Movie title", "-metadata", "com.apple.quicktime.creationdate=2001-02-03T04:05:06Z",
            cls.mov)
        exif_write(cls.mov, "-ItemList:Title=Movie title")
        cls.hashes = {p: sha(p) for p in (cls.mp4, cls.mov)}

    def cli(self, *args, check=True):
        return run(CLI, *args, "--storage", self.out, check=check)

    def test_set_round_trips_through_our_reader_and_exiftool(self):
        self.cli("set", "--title", "Été à Paris", "--artist", "Someone", "--director", "A Director",
                 "--keywords", "one,two", "--publisher", "Pub", "--shoot-date", "2020:01:02 03:04:05",
                 "--latitude", "48.8566", "--longitude", "-2.3522", "--altitude", "35",
                 "--created-date", "2015:06:07 08:09:10", self.mp4)
        out = os.path.join(self.out, os.path.basename(self.mp4))
        rec = info(out)
        fields = ("fileTitle", "fileArist", "fileDirector", "fileKeyWords", "filePublisher", "shootDateStr")
        self.assertEqual([rec.get(f) for f in fields],
                         ["Été à Paris", "Someone", "A Director", "one,two", "Pub", "2020:01:02 03:04:05"])
        self.assertAlmostEqual(rec["filelatitude"], 48.8566, places=3)
        self.assertAlmostEqual(rec["filelongtitude"], 2.3522, places=3)
        self.assertEqual(rec["longtitudeFormat"], "-")
        # Where each key space lands: MovieRewriter.ExiftoolReadsTheWrittenValues.
        tags = exif(out)
        self.assertEqual(tags["QuickTime:MajorBrand"].split()[0:2], ["Apple", "iTunes"])
        self.assertEqual(tags["System:FileModifyDate"][:19], "2015:06:07 08:09:10")
        # Items not edited are kept.
        self.assertEqual(tags.get("ItemList:Comment"), "keep me")
        self.assertEqual(framemd5(out), framemd5(self.mp4))
        # strip empties what the file held.
        stripped = tempfile.mkdtemp(dir=self.tmp.name)
        run(CLI, "strip", "--storage", stripped, out)
        rec = info(os.path.join(stripped, os.path.basename(out)))
        self.assertEqual([f for f in ("fileTitle", "fileArist") if f in rec], [])

    def test_quicktime_creation_date_makes_a_movie_file(self):
        self.cli("set", "--shoot-date", "2022:02:02 10:00:00", self.mov)
        out = os.path.join(self.out, "clip.mov")
        tags = exif(out)
        self.assertTrue(tags["QuickTime:MajorBrand"].startswith("Apple QuickTime"))
        self.assertTrue(tags["Keys:CreationDate"].startswith("2022:02:02 10:00:00"))
        self.assertEqual(info(out)["shootDateStr"], "2022:02:02 10:00:00")
        self.assertEqual(framemd5(out), framemd5(self.mov))

    def test_title_and_date_tools(self):
        self.cli("name-to-title", self.mp4)
        self.assertEqual(info(os.path.join(self.out, os.path.basename(self.mp4)))["fileTitle"],
                         "VID_20190514_183005")
        self.cli("title-to-name", self.mov)
        self.assertTrue(os.path.exists(os.path.join(self.out, "Movie title.mov")))
        self.cli("name-date-to-recorded", self.mp4)
        self.assertEqual(info(os.path.join(self.out, os.path.basename(self.mp4)))["shootDateStr"],
                         "2019:05:14 18:30:05")
        self.cli("recorded-to-created", self.mov)
        self.assertEqual(exif(os.path.join(self.out, "clip.mov"))["System:FileModifyDate"][:19],
                         "2001:02:03 04:05:06")
        # A file without a title or recorded date is reported, not copied.
        result = self.cli("title-to-name", self.mp4.replace("VID_", "missing_"), check=False)
        self.assertNotEqual(result.returncode, 0)

    def test_one_line_per_file_and_no_file_of_others_replaced(self):
        mine = os.path.join(self.out, "clip.mov")
        write_bytes(mine, b"the user's own file")
        other = os.path.join(self.tmp.name, "other")
        os.makedirs(other, exist_ok=True)
        second, song, photo, broken = (os.path.join(other, n) for n in ("clip.mov", "song.mp3", "photo.jpg", "broken.mov"))
        shutil.copyfile(self.mov, second)
        for path, content in ((song, b""), (photo, b""), (broken, b"\0\0\0\x10moov" + b"\xff" * 64)):
            write_bytes(path, content)
        result = self.cli("set", "--title", "T", self.mov, second, song, photo, "missing.mov", broken, check=False)
        self.assertEqual(result.returncode, 1, result.stderr)
        lines = result.stdout.splitlines()
        self.assertEqual(lines[:5], [os.path.join(self.out, "clip (2).mov"), os.path.join(self.out, "clip (3).mov"),
                                     "skipped: the file holds no audio",
                                     "skipped: The file is empty.", "failed: no such file"])
        self.assertTrue(lines[5].startswith("failed: the file is damaged"), lines[5])
        self.assertEqual(len(lines), 6)
        self.assertEqual(read_bytes(mine), b"the user's own file")
        # An output of ours is replaced by the next command.
        self.assertEqual(self.cli("set", "--title", "U", second).stdout.strip(), os.path.join(self.out, "clip (2).mov"))
        self.assertEqual(info(os.path.join(self.out, "clip (2).mov"))["fileTitle"], "U")
        self.assertEqual(self.cli("set", check=False).returncode, 2)
        self.assertEqual(self.cli("set", "--no-such-option", self.mov, check=False).returncode, 2)

    def test_items_list_only_on_request(self):
        # Which items the reader lists: VideoMetadataFiles, against exiftool.
        rows = info(self.mov, "--items")["items"]
        self.assertIn({"keySpace": "iTunes", "key": "\u00a9nam", "identifier": "itsk/%A9nam",
                       "value": "Movie title"}, [{k: r[k] for k in ("keySpace", "key", "identifier", "value")} for r in rows])
        self.assertNotIn("items", info(self.mov))


if __name__ == "__main__":
    unittest.main(verbosity=2)
