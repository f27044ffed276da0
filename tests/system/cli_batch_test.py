#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The batch commands end to end in New York time: set-date and shift-date over
video, MP3, FLAC, M4A and photo files read back by exiftool and ffprobe with
every other tag unchanged; export and import round trips of each property list
read with plistlib; rename with --dry-run and --undo; XMP sidecars applied to
the videos beside them."""

import os
import plistlib
import tempfile
import unittest

from support import CLI, SourceKeepingTest, exif, exif_write, ffmpeg, ffprobe, framemd5, run, sha

os.environ["TZ"] = "America/New_York"
SOUND = ("-f", "lavfi", "-i", "sine=duration=1")
# Where each kind's date writer puts the record date, as exiftool names it.
DATE_TAG = {"mov": "UserData:DateTimeOriginal", "mp3": "ID3v2_3:RecordingDates",
            "flac": "Vorbis:Date", "m4a": "Keys:CreationDate"}
# Dates, the encoder's name and the file type box are the writer's.
SKIP_KEYS = ("date", "creation_time", "com.apple.quicktime.creationdate", "trda", "tdrc",
             "encoder", "minor_version", "compatible_brands")


def tags(path):
    """ffprobe's format tags but the SKIP_KEYS."""
    found = ffprobe(path)["format"].get("tags", {})
    return {k.lower(): v for k, v in found.items() if k.lower() not in SKIP_KEYS}


class CliBatchTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        os.environ["XDG_DATA_HOME"] = os.path.join(cls.tmp.name, "xdg")
        src = cls.src = os.path.join(cls.tmp.name, "src")
        os.makedirs(src)
        meta = ("-metadata", "title=Tune", "-metadata", "artist=Ann", "-metadata", "album=LP")
        p = {k: os.path.join(src, "clip." + k) for k in ("mov", "mp3", "flac", "m4a", "jpg")}
        ffmpeg("-f", "lavfi", "-i", "testsrc=duration=1:size=64x48", "-pix_fmt", "yuv420p", *meta,
               p["mov"])
        ffmpeg(*SOUND, *meta, p["mp3"])
        ffmpeg(*SOUND, *meta, p["flac"])
        ffmpeg(*SOUND, "-c:a", "aac", *meta, p["m4a"])
        for name, artist in (("clip.jpg", "Ann"), ("b.jpg", "Bo")):
            path = os.path.join(src, name)
            ffmpeg("-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1", path)
            exif_write(path, "-Artist=" + artist, "-Make=Maker", "-GPSLatitude=10",
                       "-GPSLatitudeRef=S", "-DateTimeOriginal=2019:05:06 19:08:00")
        cls.paths = [p[k] for k in ("mov", "mp3", "flac", "m4a", "jpg")]
        cls.hashes = {path: sha(path) for path in cls.paths}

    def cli(self, *args):
        return run(CLI, *args, "--storage", self.out, check=False)

    def test_dates_go_to_each_writer_and_nothing_else_changes(self):
        r = self.cli("set-date", "--date", "2021:03:04 05:06:07", "--step", "2", "--unit",
                     "minute", *self.paths)
        lines = r.stdout.splitlines()
        self.assertEqual(r.returncode, 1, r.stderr)  # the photo is skipped
        self.assertEqual(lines[-1], "skipped: photo dates are changed in the photo date window")
        # 05:06:07 in New York is 10:06:07 universal time; each file a step later.
        for i, (src, out) in enumerate(zip(self.paths, lines[:4])):
            ext = src.rsplit(".", 1)[1]
            self.assertEqual(str(exif(out)[DATE_TAG[ext]]), "2021:03:04 10:%02d:07" % (6 + 2 * i))
            self.assertEqual(tags(out), tags(src), out)
        r = self.cli("shift-date", "--add", "--months", "10", "--seconds", "53", lines[1])
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(exif(r.stdout.strip())[DATE_TAG["mp3"]], "2022:01:04 10:09:00")
        r = self.cli("set-date", "--created", "--date", "2001:09:09 01:46:40", self.paths[4])
        self.assertEqual(r.returncode, 0, r.stderr)  # the creation variant takes photos too
        # 01:46:40 in New York (daylight time) is 1e9 + 4 hours in Unix time.
        self.assertEqual(os.stat(r.stdout.strip()).st_mtime, 1e9 + 4 * 3600)
        self.assertEqual(self.cli("set-date", "--date", "2021-13-01 00:00:00", *self.paths)
                         .returncode, 2)

    def test_property_lists_round_trip(self):
        photos = [self.paths[4], os.path.join(self.src, "b.jpg")]
        shapes = {"tiff": ("ExportTiffInfo", "Artist"), "exif": ("ExportExifInfo", "DateTimeOriginal"),
                  "exif-tiff": ("ExportExifandTiffInfo", "{TIFF}"),
                  "exif-gps": ("ExportExifandGPSInfo", "{GPS}"),
                  "all-photo": ("ExportAllMetadataInfo", "{Exif}")}
        for flag, (name, key) in shapes.items():
            r = self.cli("export", "--" + flag, *reversed(photos))
            with open(r.stdout.strip(), "rb") as f:
                top = plistlib.load(f)
            self.assertEqual(os.path.basename(r.stdout.strip()), name + ".plist")
            self.assertEqual(sorted(top), ["b.jpg", "clip.jpg"])
            self.assertIn(key, top["b.jpg"])
        # One whole dictionary per photo, named after it; a video is no photo.
        r = self.cli("export", "--per-photo", *photos, self.paths[0])
        lines = r.stdout.splitlines()
        self.assertEqual((r.returncode, [os.path.basename(p) for p in lines[:2]]),
                         (1, ["clip.plist", "b.plist"]))
        self.assertTrue(lines[2].startswith("skipped: "), lines)
        with open(lines[1], "rb") as f:
            self.assertEqual(plistlib.load(f)["{TIFF}"]["Artist"], "Bo")
        # The first entry (b.jpg) goes to every photo, whichever it came from.
        r = self.cli("import", "--tiff", os.path.join(self.out, "ExportTiffInfo.plist"), photos[0])
        self.assertEqual(exif(r.stdout.strip())["IFD0:Artist"], "Bo")
        r = self.cli("export", "--template", photos[1])
        with open(r.stdout.strip(), "rb") as f:
            self.assertEqual(plistlib.load(f)["LatitudeRef"], "S")
        r = self.cli("import", "--template", r.stdout.strip(), photos[0])
        self.assertEqual(exif(r.stdout.strip())["IFD0:Artist"], "Bo")

        r = self.cli("export", "--metadata", *self.paths[:4])
        with open(r.stdout.strip(), "rb") as f:
            top = plistlib.load(f)
        self.assertEqual(sorted(top), ["clip", "clip.flac", "clip.m4a", "clip.mp3"])
        self.assertEqual(top["clip.mp3"]["Album"], "LP")
        edited = os.path.join(self.out, "edited.plist")
        with open(edited, "wb") as f:
            plistlib.dump({"clip": {"Title": "New"}}, f)
        r = self.cli("import", "--metadata", edited, self.paths[1], self.paths[2])
        self.assertEqual(r.returncode, 0, r.stderr)
        for out in r.stdout.splitlines():
            self.assertEqual(tags(out)["title"], "New")
            self.assertEqual(tags(out)["artist"], "Ann")
        with open(edited, "wb") as f:
            f.write(b"junk")
        before = sorted(os.listdir(self.out))
        r = self.cli("import", "--exif", edited, photos[0])
        self.assertEqual((r.returncode, r.stdout), (1, ""))
        self.assertEqual(sorted(os.listdir(self.out)), before)

    def test_rename_previews_moves_and_undoes(self):
        folder = os.path.join(self.out, "r")
        os.makedirs(folder)
        names = ["x%d.jpg" % i for i in range(3)]
        for n in names:
            run("cp", self.paths[4], os.path.join(folder, n))
            os.utime(os.path.join(folder, n), (1e9, 1e9))
        files = [os.path.join(folder, n) for n in names]
        args = ("rename", "--template", "{Artist} {Camera Date}", "--date-format", "YYYY_MM_DD",
                *files)
        r = run(CLI, *args, "--dry-run", check=False)
        self.assertEqual(r.stdout.splitlines()[1],
                         files[1] + " -> " + os.path.join(folder, "Ann 2019_05_06 2.jpg"))
        self.assertEqual(sorted(os.listdir(folder)), names)
        r = run(CLI, *args, check=False)
        self.assertEqual(sorted(os.listdir(folder)),
                         ["Ann 2019_05_06 2.jpg", "Ann 2019_05_06 3.jpg", "Ann 2019_05_06.jpg"])
        self.assertEqual(os.stat(os.path.join(folder, "Ann 2019_05_06 3.jpg")).st_mtime, 1e9)
        run(CLI, "rename", "--undo")
        self.assertEqual(sorted(os.listdir(folder)), names)

    def test_xmp_sidecars_replace_the_videos_beside_them(self):
        folder = os.path.join(self.out, "x")
        os.makedirs(os.path.join(folder, "sub"))
        ns = ('xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#" xmlns:exif="http://ns.adobe'
              '.com/exif/1.0/" xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:photoshop="http:'
              '//ns.adobe.com/photoshop/1.0/"')
        body = ("<dc:title>%s</dc:title><photoshop:DateCreated>%s</photoshop:DateCreated>"
                "<exif:GPSLatitude>48,51.396N</exif:GPSLatitude><exif:GPSLongitude>2,21.132E"
                "</exif:GPSLongitude><exif:GPSAltitude>35/1</exif:GPSAltitude>")
        sidecars = {"a.xmp": ("Paris", "2019-05-06T07:08:09+02:00"), "sub/b.XMP": ("B", "2019-05-06"),
                    "c.xmp": ("no video", ""), "d.xmp": None}
        for name, values in sidecars.items():
            with open(os.path.join(folder, name), "w") as f:
                f.write("<rdf:RDF %s><rdf:Description>%s</rdf:Description></rdf:RDF>"
                        % (ns, body % values) if values else "<dc:title>unclosed")
        videos = [os.path.join(folder, n) for n in ("a.MOV", "sub/b.mp4")]
        for v in videos:
            ffmpeg("-f", "lavfi", "-i", "testsrc=duration=1:size=64x48", "-pix_fmt", "yuv420p", v)
        frames = [framemd5(v) for v in videos]
        r = run(CLI, "xmp", folder, check=False)
        self.assertEqual(r.returncode, 1, r.stderr)  # the unreadable sidecar
        lines = sorted(r.stdout.splitlines())
        self.assertEqual(lines[:2], videos)
        self.assertTrue(lines[2].startswith("failed: d.xmp: it is not valid XML (line 1: "), lines)
        self.assertEqual(lines[3:], ["skipped: c.xmp: no video of the same name is beside it"])
        self.assertEqual(sorted(os.listdir(folder)), ["a.MOV", "a.xmp", "c.xmp", "d.xmp", "sub"])
        for v, title, f in zip(videos, ("Paris", "B"), frames):
            found = exif(v, "-n")
            self.assertEqual((found["ItemList:Title"], found["Composite:GPSLatitude"],
                              found["Composite:GPSLongitude"], found["Composite:GPSAltitude"]),
                             (title, 48.8566, 2.3522, 35), v)
            self.assertEqual(framemd5(v), f)
        # The offset is dropped: 07:08:09 in New York, written in universal time.
        self.assertEqual(exif(videos[0])["UserData:DateTimeOriginal"], "2019:05:06 11:08:09")
        self.assertEqual(os.stat(videos[0]).st_mtime, 1557140889)
        self.assertNotIn("UserData:DateTimeOriginal", exif(videos[1]))  # three parts: no date

    def test_help_and_usage(self):
        for command in ("rename", "set-date", "shift-date", "copy-date", "export", "import", "xmp"):
            r = run(CLI, command, "--help", check=False)
            self.assertEqual(r.returncode, 0)
            self.assertIn("Usage: tagsmith-cli " + command, r.stdout)
        self.assertEqual(run(CLI, "shift-date", "--add", "--subtract", "f", check=False).returncode, 2)
        r = run(CLI, "copy-date", "--from", "modified", "--to", "created", "f", check=False)
        self.assertIn("cannot set a file's creation date", r.stderr)


if __name__ == "__main__":
    unittest.main()
