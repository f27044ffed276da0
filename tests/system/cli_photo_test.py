#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tagsmith-cli on photos: set, gps, photo-date and strip on JPEG, PNG, TIFF and
WebP files made by ffmpeg and tagged by exiftool, the copies read back by
exiftool with their decoded pictures unchanged; tree, info and hostile files."""

import functools
import http.server
import json
import os
import tempfile
import threading
import unittest

from support import CLI, SourceKeepingTest, ffmpeg, read_bytes, run, sha, write_bytes

TYPES = ("jpg", "png", "tif", "webp")
SOURCE_TAGS = ("-EXIF:Artist=Old", "-EXIF:Make=OldMake", "-EXIF:Orientation#=6", "-GPSLatitude=10",
               "-GPSLatitudeRef=N", "-GPSLongitude=20", "-GPSLongitudeRef=E", "-GPSAltitude=5",
               "-GPSAltitudeRef#=0", "-GPSSpeed=3", "-IPTC:ObjectName=Old", "-IPTC:Keywords=old",
               "-XMP-exif:GPSLatitude=10", "-XMP-exif:GPSLongitude=20",
               "-ExifIFD:DateTimeOriginal=2001:01:01 00:00:00")
TITLE, ARTIST, KEYWORDS = "夏の写真 Ünï", "Zoë Ærøskøbing 李", ["été", "日本", "β"]


def tags(path):
    """exiftool's raw values ("Group:Tag"), as the outputs are checked."""
    return json.loads(run("exiftool", "-j", "-G1", "-a", "-n", path).stdout)[0]


def pixels(path):
    """Checksums of the decoded picture: equal for copies that were not re-encoded."""
    out = run("ffmpeg", "-v", "error", "-i", path, "-map", "0:v", "-f", "framemd5", "-").stdout
    return [line.split(",")[-1] for line in out.splitlines() if not line.startswith("#")]


def groups(t):
    return {k.split(":")[0] for k in t}


class CliPhotoTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        cls.src = os.path.join(cls.tmp.name, "photos")
        os.makedirs(os.path.join(cls.src, "nested"))
        cls.files = {}
        for ext in TYPES:
            path = cls.files[ext] = os.path.join(cls.src, "nested" if ext == "tif" else "", "pic." + ext)
            ffmpeg("-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1", path)
            run("exiftool", "-q", "-q", "-overwrite_original", *SOURCE_TAGS, path)
        cls.hostile = {"empty.jpg": b"", "text.png": b"not a picture\n",
                       "cut.jpg": bytes(read_bytes(cls.files["jpg"])[:300])}
        for name, content in cls.hostile.items():
            write_bytes(os.path.join(cls.src, name), content)
        cls.hashes = {p: sha(p) for p in cls.files.values()}

    def cli(self, *args):
        return run(CLI, *args, "--storage", self.out, check=False)

    def written(self, result, count):
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        lines = result.stdout.splitlines()
        self.assertEqual(len(lines), count, lines)
        return lines

    def test_set_writes_every_type_exiftool_reads(self):
        result = self.cli("set", "--title", TITLE, "--artist", ARTIST, "--keywords", ",".join(KEYWORDS),
                          "--comments", "A comment", "--description", "Desc", "--copyright", "© Me",
                          "--model", "Model X", "--shoot-date", "2021:02:03 04:05:06",
                          "--latitude", "-33.5", "--longitude", "-70.25", "--altitude", "-12",
                          *self.files.values())
        for ext, out in zip(self.files, self.written(result, len(TYPES))):
            with self.subTest(ext):
                self.assertEqual(os.path.basename(out), os.path.basename(self.files[ext]))
                t = tags(out)
                expected = {"IFD0:Artist": ARTIST, "IFD0:Make": "OldMake", "IFD0:Model": "Model X",
                            "IFD0:ImageDescription": "Desc", "IFD0:Copyright": "© Me",
                            "ExifIFD:UserComment": "A comment", "ExifIFD:DateTimeOriginal": "2021:02:03 04:05:06",
                            "ExifIFD:CreateDate": "2021:02:03 04:05:06", "GPS:GPSLatitude": 33.5,
                            "GPS:GPSLatitudeRef": "S", "GPS:GPSLongitude": 70.25, "GPS:GPSLongitudeRef": "W",
                            "GPS:GPSAltitude": 12, "GPS:GPSAltitudeRef": 1, "GPS:GPSSpeed": 3}
                if ext == "webp":  # no IPTC in WebP: the XMP equivalents
                    expected.update({"XMP-dc:Title": TITLE, "XMP-dc:Subject": KEYWORDS})
                else:
                    expected.update({"IPTC:ObjectName": TITLE, "IPTC:Keywords": KEYWORDS})
                self.assertEqual({k: t.get(k) for k in expected}, expected)
                self.assertTrue(t["System:FileModifyDate"].startswith("2021:02:03 04:05:06"), t["System:FileModifyDate"])
                self.assertEqual(pixels(out), pixels(self.files[ext]))

        # The altitude alone keeps the photo's position and hemispheres; the
        # copy keeps the source's file dates.
        out = self.written(self.cli("set", "--altitude", "7.5", self.files["jpg"]), 1)[0]
        t = tags(out)
        self.assertEqual([t.get("GPS:" + k) for k in ("GPSLatitude", "GPSLatitudeRef", "GPSLongitude",
                                                       "GPSAltitude", "GPSAltitudeRef")], [10, "N", 20, 7.5, 0])
        self.assertEqual(t["System:FileModifyDate"], tags(self.files["jpg"])["System:FileModifyDate"])

    def test_gps_and_photo_date(self):
        gps = ("--latitude", "-33.5", "--longitude", "151.2", "--altitude", "-10",
               "--gps-date", "2021:05:06", "--gps-time", "07:08:09")
        out = self.written(self.cli("gps", *gps, self.files["jpg"], self.files["webp"]), 2)
        for path in out:
            t = tags(path)
            self.assertEqual([t.get("GPS:" + k) for k in ("GPSLatitude", "GPSLatitudeRef", "GPSLongitude",
                                                           "GPSLongitudeRef", "GPSAltitude", "GPSAltitudeRef",
                                                           "GPSDateStamp", "GPSTimeStamp", "GPSSpeed")],
                             [33.5, "S", 151.2, "E", 10, 1, "2021:05:06", "07:08:09", 3])
            self.assertTrue(t["System:FileModifyDate"].startswith("2021:05:06 07:08:09"))
        missing = self.cli("gps", *gps[:-2], self.files["jpg"])
        self.assertEqual((missing.returncode, missing.stdout), (2, ""))
        self.assertIn("Each value cannot be empty.", missing.stderr)

        out = self.written(self.cli("photo-date", "--date", "2020-01-02 03:04:05", self.files["png"]), 1)[0]
        t = tags(out)
        self.assertEqual([t.get(k) for k in ("ExifIFD:DateTimeOriginal", "ExifIFD:CreateDate", "IFD0:ModifyDate")],
                         ["2020:01:02 03:04:05"] * 3)
        self.assertTrue(t["System:FileModifyDate"].startswith("2020:01:02 03:04:05"))
        self.assertEqual(pixels(out), pixels(self.files["png"]))
        bad = self.cli("photo-date", "--date", "2020/01/02", self.files["png"])
        self.assertEqual(bad.returncode, 2)
        self.assertIn("Input the valid date format: YYYY:MM:DD HH:MM:SS or YYYY-MM-DD HH:MM:SS", bad.stderr)

    def test_strip_removes_the_flags_groups(self):
        cases = (  # flags, groups gone, groups kept
            (["--iptc"], {"IPTC"}, {"IFD0", "ExifIFD", "GPS", "XMP-exif"}),
            (["--exif"], {"ExifIFD"}, {"IFD0", "GPS", "IPTC"}),
            (["--gps"], {"GPS", "XMP-exif"}, {"IFD0", "ExifIFD", "IPTC"}),
            (["--exif-gps"], {"ExifIFD", "GPS"}, {"IFD0", "IPTC"}),
            (["--exif", "--gps"], {"ExifIFD", "GPS"}, {"IFD0", "IPTC"}),
            (["--all"], {"ExifIFD", "GPS", "IPTC", "XMP-exif", "XMP-x"}, set()),
        )
        for flags, gone, kept in cases:
            with self.subTest(flags):
                out = self.written(self.cli("strip", *flags, self.files["jpg"]), 1)[0]
                t = tags(out)
                self.assertEqual((gone & groups(t), kept - groups(t)), (set(), set()))
                self.assertEqual(pixels(out), pixels(self.files["jpg"]))
        self.assertEqual(tags(out).get("IFD0:Orientation"), 6)  # --all keeps the orientation
        self.assertNotIn("IFD0:Artist", tags(out))
        skipped = self.cli("strip", self.files["jpg"])
        self.assertEqual((skipped.returncode, skipped.stdout.strip()),
                         (1, "skipped: photos need one of --iptc, --exif, --gps, --exif-gps or --all"))
        self.assertEqual(self.cli("strip", "--iptc", "--gps", self.files["jpg"]).returncode, 2)

    def test_tree_and_info(self):
        result = run(CLI, "tree", "--json", self.files["jpg"], self.files["png"])
        jpg, png = (r["properties"] for r in json.loads(result.stdout))
        self.assertEqual((jpg["PixelWidth"], jpg["PixelHeight"], jpg["Orientation"]), (64, 48, 6))
        self.assertEqual([jpg["{TIFF}"]["Artist"], jpg["{TIFF}"]["Make"], jpg["{Exif}"]["DateTimeOriginal"]],
                         ["Old", "OldMake", "2001:01:01 00:00:00"])
        self.assertEqual([jpg["{GPS}"][k] for k in ("Latitude", "LatitudeRef", "Altitude", "AltitudeRef")],
                         [10, "N", 5, 0])
        self.assertEqual([jpg["{IPTC}"]["ObjectName"], jpg["{IPTC}"]["Keywords"]], ["Old", ["old"]])
        self.assertIn("{PNG}", png)
        gif, lens = os.path.join(self.tmp.name, "anim.gif"), os.path.join(self.tmp.name, "lens.jpg")
        ffmpeg("-f", "lavfi", "-i", "testsrc=size=32x24:rate=4", "-frames:v", "3", "-loop", "0", gif)
        run("exiftool", "-q", "-o", lens, "-LensModel=EF 50mm", "-SerialNumber=A1", self.files["jpg"])
        gif, lens = (r["properties"] for r in json.loads(run(CLI, "tree", "--json", gif, lens).stdout))
        self.assertEqual([gif["{GIF}"]["LoopCount"], gif["{GIF}"]["DelayTime"], lens["{ExifAux}"]],
                         [0, 0.25, {"LensModel": "EF 50mm", "SerialNumber": "A1"}])
        text = run(CLI, "tree", self.files["jpg"]).stdout
        self.assertIn("\n  {TIFF}\n", text)
        self.assertIn("\n    Artist: Old\n", text)

        result = run(CLI, "info", "--json", self.src)
        self.assertEqual(result.returncode, 0, result.stderr)
        records = {r["fileName"]: r for r in json.loads(result.stdout)}
        self.assertEqual(sorted(records), sorted(["pic." + e for e in TYPES] + list(self.hostile)))
        rec = records["pic.jpg"]
        self.assertEqual([rec.get(k) for k in ("filePixWidth", "filepixHeigh", "fileMake", "fileArist",
                                               "fileTitle", "fileKeyWords", "filelatitude", "filelongtitude")],
                         [64, 48, "OldMake", "Old", "Old", "old", 10, 20])
        for name in self.hostile:
            self.assertTrue(records[name].get("fileReadProblem"), records[name])

    def test_hostile_files_are_reported_and_nothing_is_written(self):
        hostile = [os.path.join(self.src, n) for n in self.hostile]
        tree = run(CLI, "tree", *hostile, check=False)
        self.assertEqual(tree.returncode, 1, tree.stderr)
        self.assertEqual(len(tree.stderr.splitlines()), len(hostile), tree.stderr)
        for command in (("set", "--artist", "A"), ("strip", "--all"), ("photo-date", "--date", "2020:01:02 03:04:05")):
            result = self.cli(*command, *hostile)
            self.assertEqual(result.returncode, 1, result.stderr)
            self.assertTrue(all(line.startswith(("failed: ", "skipped: ")) for line in result.stdout.splitlines()),
                            result.stdout)
            self.assertEqual(os.listdir(self.out), [])
        wrong = self.cli("set", "--album", "X", "--make", "M", self.files["jpg"])
        self.assertEqual(wrong.stdout.strip(), "skipped: --album does not apply to photo files")


    def test_stamp_writes_upright_jpeg_copies_with_the_photos_metadata(self):
        out = self.written(self.cli("stamp", "--color", "#ffcc00", "--position", "Upper right corner",
                                    self.files["jpg"], self.files["png"]), 2)
        self.assertEqual([os.path.basename(p) for p in out], ["pic_date.jpg", "pic_date.png"])
        for path, source in zip(out, (self.files["jpg"], self.files["png"])):
            t = tags(path)
            self.assertEqual([t.get(k) for k in ("File:FileType", "IFD0:Orientation", "File:ImageWidth",
                                                 "File:ImageHeight", "IFD0:Artist", "GPS:GPSLatitude")],
                             ["JPEG", 1, 48, 64, "Old", 10], path)
            # No digitized date: the copy is dated like the photo's creation
            # (its birth time where the file system keeps one).
            born = int(run("stat", "-c", "%W", source).stdout) or int(os.stat(source).st_mtime)
            self.assertEqual(int(os.stat(path).st_mtime), born)
        for bad in (("--position", "middle"), ("--layout", "YY"), ("--color", "nope"), ("--size", "0")):
            self.assertEqual(self.cli("stamp", *bad, self.files["jpg"]).returncode, 2, bad)

    def test_check_update_against_a_loopback_server(self):
        docs = os.path.join(self.out, "product")
        os.makedirs(docs)
        handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory=self.out)
        handler.log_message = lambda *a: None
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        url = "http://127.0.0.1:%d/product/tagsmithVersion.plist" % server.server_port
        own = run(CLI, "--version").stdout.split()[-1]
        for latest, expected in (("99.0", ["Brimlark Photo Stampel 99.0 is available.",
                                            "You are using %s version. Would you like to download it now?" % own,
                                            "", "Fixed crash", "Faster import"]),
                                 (own, ["No update is available: you are using the latest version (%s)." % own])):
            with open(os.path.join(docs, "tagsmithVersion.plist"), "w") as f:
                f.write('<?xml version="1.0"?><plist version="1.0"><dict><key>lastestVersion</key>'
                        '<string>%s</string><key>WhatsNew</key><string>*Fixed crash*Faster import</string>'
                        '</dict></plist>' % latest)
            result = run(CLI, "check-update", "--url", url, check=False)
            self.assertEqual((result.returncode, result.stdout.splitlines()), (0, expected))
        server.shutdown()
        server.server_close()
        failed = run(CLI, "check-update", "--url", url, check=False)
        self.assertEqual((failed.returncode, failed.stdout.strip()),
                         (1, "failed: the version document could not be fetched"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
