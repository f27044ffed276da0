#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tagsmith-cli info, end to end: files made with ffmpeg and sox, the printed
records checked against ffprobe's view of the same files."""

import json
import os
import subprocess
import tempfile
import unittest

from support import CLI, ffmpeg, ffprobe, run


class CliInfoTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        root = cls.tmp.name
        os.makedirs(os.path.join(root, "nested", "deeper"))
        cls.h264 = os.path.join(root, "h264.mp4")
        ffmpeg(*("-f lavfi -i testsrc=size=320x240:rate=25:duration=2 -f lavfi -i sine=frequency=440:"
                 "sample_rate=48000:duration=2 -ac 2 -c:v libx264 -pix_fmt yuv420p -c:a aac -b:a 96k "
                 "-shortest").split(), cls.h264)
        cls.mov = os.path.join(root, "nested", "deeper", "Portrait.MOV")
        ffmpeg(*"-f lavfi -i testsrc=size=180x320:rate=30:duration=3.5 -c:v mpeg4".split(), cls.mov)
        cls.mkv = os.path.join(root, "nested", "stereo.mkv")
        ffmpeg(*("-f lavfi -i testsrc=size=64x48:rate=10:duration=61 -f lavfi -i sine=sample_rate=22050:"
                 "duration=61 -c:v libx264 -preset ultrafast -c:a libvorbis -shortest").split(), cls.mkv)
        # Neither kind, and untagged audio.
        with open(os.path.join(root, "notes.txt"), "w") as f:
            f.write("not media\n")
        run("sox", "-n", "-r", "8000", os.path.join(root, "nested", "tone.wav"), "synth", "0.5", "sine", "300")

    def info(self, *paths, check=True):
        result = run(CLI, "info", "--json", *paths, check=False)
        if check:
            self.assertEqual(result.returncode, 0, result.stderr)
        return result, json.loads(result.stdout)

    def test_folder_import_matches_ffprobe(self):
        # The texts' own forms are the unit tests' (SizeText, MediaDuration, MediaImport).
        _, records = self.info(self.tmp.name)
        by_name = {r["fileName"]: r for r in records}
        self.assertEqual(sorted(by_name), ["Portrait.MOV", "h264.mp4", "stereo.mkv", "tone.wav"])
        tone = by_name["tone.wav"]
        stream = ffprobe(tone["filePath"])["streams"][0]
        self.assertEqual([tone[k] for k in ("fileSampleRate", "fileChannels", "fileBitRate", "fileduratStr")],
                         ["8000 Hz", "1", stream["bit_rate"] + " bps", "0s"])
        for path in (self.h264, self.mov, self.mkv):
            rec, probe = by_name[os.path.basename(path)], ffprobe(path)
            self.assertEqual(rec["filePath"], path)
            self.assertAlmostEqual(rec["fileduration"], float(probe["format"]["duration"]), places=2)
            video = next(s for s in probe["streams"] if s["codec_type"] == "video")
            self.assertEqual((rec["filePixWidth"], rec["filepixHeigh"]), (video["width"], video["height"]))
            audio = [s for s in probe["streams"] if s["codec_type"] == "audio"][:1]
            self.assertEqual([rec.get("fileSampleRate"), rec.get("fileChannels")],
                             [f(a) for a in audio for f in (lambda a: a["sample_rate"] + " Hz",
                                                           lambda a: str(a["channels"]))] or [None, None])
        self.assertEqual(by_name["stereo.mkv"]["fileduratStr"], "1m:1s")

    def test_only_non_empty_fields_are_printed(self):
        _, records = self.info(self.mov)
        self.assertEqual(len(records), 1)
        for key, value in records[0].items():
            self.assertNotIn(value, ("", 0, None, False), key)
        self.assertNotIn("fileTitle", records[0])

    def test_missing_path_is_reported_and_the_rest_printed(self):
        missing = os.path.join(self.tmp.name, "no-such-file.mp4")
        result, records = self.info(missing, self.h264, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertIn("no-such-file.mp4", result.stderr)
        self.assertEqual([r["fileName"] for r in records], ["h264.mp4"])

    def test_audio_records_carry_every_filled_field(self):
        own = tempfile.TemporaryDirectory()
        self.addCleanup(own.cleanup)
        cover = os.path.join(own.name, "cover.png")
        ffmpeg(*"-f lavfi -i color=blue:size=16x8 -frames:v 1".split(), cover)
        song = os.path.join(own.name, "song.mp3")
        ffmpeg(*"-f lavfi -i sine=duration=1 -i".split(), cover, *(
            "-map 0 -map 1 -c:v copy -disposition:v attached_pic -id3v2_version 3 -metadata "
            "title=Песня -metadata artist=Artist -metadata album=Album -metadata track=7 "
            "-metadata TRDA=2019-05-03T10:20:30+0800 -metadata date=2019").split(), song)
        rec = json.loads(run(CLI, "info", "--items", song).stdout)[0]
        expected = {"fileTitle": "Песня", "fileArist": "Artist", "fileAblumName": "Album",
                    "fileAlbumArist": "7", "fileReleasedYear": "2019", "fileImage": "16x8",
                    "shootDateStr": "2019-05-03 10:20:30", "fileType": "MP3 audio"}
        self.assertEqual({k: rec.get(k) for k in expected}, expected)
        rows = {r["identifier"]: r["value"] for r in rec["items"]}
        self.assertEqual(rows["id3/TIT2"], "Песня")
        self.assertTrue(rows["id3/APIC"].startswith("PNG picture, 16 x 8"), rows["id3/APIC"])

    def test_an_audio_import_loads_no_library_it_does_not_use(self):
        # What a run loads, every run pays for: these load on first use only.
        wav = os.path.join(self.tmp.name, "nested", "tone.wav")
        result = subprocess.run([CLI, "info", "--json", wav], capture_output=True, text=True,
                                env=dict(os.environ, LD_DEBUG="files"), timeout=300)
        self.assertEqual(result.returncode, 0, result.stderr[-500:])
        loaded = [line for line in result.stderr.splitlines() if "file=" in line]
        self.assertTrue(any("libQt6Core" in line for line in loaded), result.stderr[-500:])
        for library in ("libQt6Network", "libavformat", "libheif", "libgphoto2", "libraw"):
            self.assertFalse([line for line in loaded if library in line], library)

    def test_usage_errors(self):
        for args in ((), ("--bogus", self.h264)):
            self.assertEqual(run(CLI, "info", *args, check=False).returncode, 2)
        self.assertEqual(run(CLI, "frobnicate", check=False).returncode, 2)
        self.assertIn("info", run(CLI, "--help").stdout)
        self.assertIn("--json", run(CLI, "info", "--help").stdout)


if __name__ == "__main__":
    unittest.main(verbosity=2)
