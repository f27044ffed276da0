#!/usr/bin/env python3
"""tagsmith-cli set, strip and the video tools end to end: outputs checked
with exiftool and ffmpeg, the sources checked to be untouched."""

import os
import tempfile
import unittest

from support import CLI, exif, ffmpeg, framemd5, info, run, sha


class CliVideoWriteTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        cls.src = os.path.join(cls.tmp.name, "src")
        os.makedirs(cls.src)
        cls.mp4 = os.path.join(cls.src, "VID_20190514_183005.mp4")
        ffmpeg("-f", "lavfi", "-i", "testsrc=size=320x240:rate=25:duration=2",
            "-f", "lavfi", "-i", "sine=sample_rate=44100:duration=2", "-c:v", "libx264", "-pix_fmt", "yuv420p",
            "-c:a", "aac", "-shortest", "-metadata", "title=Original", "-metadata", "comment=keep me",
            cls.mp4)
        cls.mov = os.path.join(cls.src, "clip.mov")
        ffmpeg("-i", cls.mp4, "-c", "copy", "-movflags", "+faststart+use_metadata_tags",
            "-metadata", "title=Movie title", "-metadata", "com.apple.quicktime.creationdate=2001-02-03T04:05:06Z",
            cls.mov)
        run("exiftool", "-q", "-overwrite_original", "-ItemList:Title=Movie title", cls.mov)
        cls.hashes = {p: sha(p) for p in (cls.mp4, cls.mov)}

    @classmethod
    def tearDownClass(cls):
        cls.tmp.cleanup()

    def setUp(self):
        self.out = tempfile.mkdtemp(dir=self.tmp.name)

    def tearDown(self):
        for path, digest in self.hashes.items():
            self.assertEqual(sha(path), digest, "the source was changed: " + path)

    def cli(self, *args, check=True):
        return run(CLI, *args, "--storage", self.out, check=check)

    def test_set_round_trips_through_our_reader_and_exiftool(self):
        self.cli("set", "--title", "Été à Paris", "--artist", "Someone", "--director", "A Director",
                 "--keywords", "one,two", "--publisher", "Pub", "--shoot-date", "2020:01:02 03:04:05",
                 "--latitude", "48.8566", "--longitude", "-2.3522", "--altitude", "35", self.mp4)
        out = os.path.join(self.out, os.path.basename(self.mp4))
        rec = info(out)
        self.assertEqual(rec["fileTitle"], "Été à Paris")
        self.assertEqual(rec["fileArist"], "Someone")
        self.assertEqual(rec["fileDirector"], "A Director")
        self.assertEqual(rec["fileKeyWords"], "one,two")
        self.assertEqual(rec["filePublisher"], "Pub")
        self.assertEqual(rec["shootDateStr"], "2020:01:02 03:04:05")
        self.assertAlmostEqual(rec["filelatitude"], 48.8566, places=3)
        self.assertAlmostEqual(rec["filelongtitude"], 2.3522, places=3)
        self.assertEqual(rec["longtitudeFormat"], "-")
        tags = exif(out)
        self.assertEqual(tags["ItemList:Title"], "Été à Paris")
        self.assertEqual(tags["ItemList:Artist"], "Someone")
        self.assertEqual(tags["Keys:Director"], "A Director")
        self.assertEqual(tags["ItemList:Publisher"], "Pub")
        self.assertEqual(tags["QuickTime:MajorBrand"].split()[0:2], ["Apple", "iTunes"])
        # Items not edited are kept.
        self.assertEqual(tags.get("ItemList:Comment"), "keep me")
        self.assertEqual(framemd5(out), framemd5(self.mp4))

    def test_quicktime_creation_date_makes_a_movie_file(self):
        self.cli("set", "--shoot-date", "2022:02:02 10:00:00", self.mov)
        out = os.path.join(self.out, "clip.mov")
        tags = exif(out)
        self.assertTrue(tags["QuickTime:MajorBrand"].startswith("Apple QuickTime"))
        self.assertTrue(tags["Keys:CreationDate"].startswith("2022:02:02 10:00:00"))
        self.assertEqual(info(out)["shootDateStr"], "2022:02:02 10:00:00")
        self.assertEqual(framemd5(out), framemd5(self.mov))

    def test_created_date_sets_the_file_dates(self):
        self.cli("set", "--created-date", "2015:06:07 08:09:10", self.mp4)
        out = os.path.join(self.out, os.path.basename(self.mp4))
        self.assertEqual(exif(out)["System:FileModifyDate"][:19], "2015:06:07 08:09:10")

    def test_strip_removes_what_the_file_held(self):
        self.cli("set", "--title", "T", "--artist", "A", self.mp4)
        tagged = os.path.join(self.out, os.path.basename(self.mp4))
        stripped_dir = tempfile.mkdtemp(dir=self.tmp.name)
        run(CLI, "strip", "--storage", stripped_dir, tagged)
        rec = info(os.path.join(stripped_dir, os.path.basename(self.mp4)))
        self.assertNotIn("fileTitle", rec)
        self.assertNotIn("fileArist", rec)
        self.assertEqual(framemd5(os.path.join(stripped_dir, os.path.basename(self.mp4))), framemd5(self.mp4))

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

    def test_items_list_matches_exiftool(self):
        items = info(self.mov, "--items")["items"]
        by_id = {i["identifier"]: i["value"] for i in items}
        tags = exif(self.mov)
        self.assertEqual(by_id["itsk/%A9nam"], tags["ItemList:Title"])
        self.assertEqual(by_id["mdta/title"], tags["Keys:Title"])
        self.assertEqual(by_id["mdta/com.apple.quicktime.creationdate"], "2001-02-03T04:05:06Z")
        self.assertEqual(info(self.mov)["fileTitle"], "Movie title")

if __name__ == "__main__":
    unittest.main(verbosity=2)
