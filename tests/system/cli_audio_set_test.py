#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tagsmith-cli set and strip on audio files: each kind through its writer,
outputs read back by exiftool, sources untouched."""

import os
import tempfile
import unittest

from support import CLI, SourceKeepingTest, exif, ffmpeg, run, sha


class CliAudioSetTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        tone = "-f lavfi -i sine=duration=0.5 -metadata title=Old -metadata genre=Jazz".split()
        cls.files = {ext: os.path.join(cls.tmp.name, "song." + ext) for ext in ("mp3", "flac", "wav")}
        ffmpeg(*tone, "-write_id3v1", "1", "-id3v2_version", "3", cls.files["mp3"])
        ffmpeg(*tone, cls.files["flac"])
        ffmpeg(*tone, cls.files["wav"])
        cls.hashes = {p: sha(p) for p in cls.files.values()}

    def cli(self, *args):
        return run(CLI, *args, "--storage", self.out, check=False)

    def test_set_writes_each_kind_and_reports_what_does_not_apply(self):
        r = self.cli("set", "--title", "Ünï 日本", "--created-date", "2015:06:07 08:09:10",
                     "--direct", *self.files.values())
        self.assertEqual(r.returncode, 0, r.stdout + r.stderr)
        out = {ext: os.path.join(self.out, os.path.basename(p)) for ext, p in self.files.items()}
        self.assertEqual(r.stdout.splitlines(), list(out.values()))
        self.assertIn("--created-date is ignored", r.stderr)
        mp3, flac, wav = exif(out["mp3"]), exif(out["flac"]), exif(out["wav"], "-charset", "riff=utf8")
        self.assertEqual([mp3["ID3v2_3:Title"], mp3["ID3v2_3:Genre"]], ["Ünï 日本", "Jazz"])
        self.assertFalse([k for k in mp3 if k.startswith("ID3v1:")])
        self.assertEqual([flac["Vorbis:Title"], flac["Vorbis:Genre"]], ["Ünï 日本", "Jazz"])
        self.assertEqual(wav["RIFF:Title"], "Ünï 日本")
        self.assertEqual(mp3["System:FileModifyDate"][:19], "2015:06:07 08:09:10")
        self.assertEqual(flac["System:FileModifyDate"], exif(self.files["flac"])["System:FileModifyDate"])

        for option, ext, kind in (("--director", "mp3", "audio"), ("--band", "flac", "FLAC")):
            r = self.cli("set", option, "D", self.files[ext])
            self.assertEqual((r.returncode, r.stdout.strip()), (1, f"skipped: {option} does not apply to {kind} files"))

    def test_strip_all_leaves_no_tag(self):
        r = self.cli("strip", "--all", self.files["mp3"])
        self.assertEqual(r.returncode, 0, r.stderr)
        tags = exif(r.stdout.strip())
        self.assertFalse([k for k in tags if k.startswith("ID3")], tags)


if __name__ == "__main__":
    unittest.main()
