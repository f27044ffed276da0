#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The video tools through tagsmith-cli: outputs checked with ffprobe
(container, codecs, durations), pass-through streams against the source's
packets, rotation kept, and the failure paths."""

import os
import shutil
import subprocess
import tempfile
import unittest

from support import CLI, SourceKeepingTest, children, ffmpeg, ffprobe, framemd5, read_bytes, run, sha


def hashes(path, stream):
    return [line.split(",")[-1] for line in framemd5(path, (stream,))]


class CliVideoToolsTest(SourceKeepingTest):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        src = cls.src = os.path.join(cls.tmp.name, "src")
        os.makedirs(src)
        av = "-f lavfi -i testsrc=size=160x120:rate=25:duration={0} -f lavfi -i sine=duration={0} " \
             "-c:v libx264 -pix_fmt yuv420p -c:a aac -shortest"
        plain = os.path.join(src, "plain.mov")
        ffmpeg(*av.format(3.5).split(), plain)
        cls.clip = os.path.join(src, "clip.mov")  # 3.5 s, shown turned by 90 degrees
        ffmpeg("-i", plain, "-c", "copy", "-metadata:s:v:0", "rotate=90", cls.clip)
        os.remove(plain)
        cls.four = os.path.join(src, "four.mp4")
        ffmpeg(*av.format(4).split(), cls.four)
        cls.multi = os.path.join(src, "multi.mov")  # a second sound track in French, a timecode track
        ffmpeg("-f", "lavfi", "-i", "testsrc=size=160x120:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2",
               "-f", "lavfi", "-i", "sine=frequency=880:duration=2", "-map", "0", "-map", "1", "-map", "2",
               "-c:v", "libx264", "-pix_fmt", "yuv420p", "-c:a", "aac", "-metadata:s:a:1", "language=fra",
               "-timecode", "01:00:00:00", cls.multi)
        cls.song = os.path.join(src, "song.mp3")
        ffmpeg("-f", "lavfi", "-i", "sine=duration=1", cls.song)
        cls.avi = os.path.join(src, "old.avi")
        ffmpeg("-f", "lavfi", "-i", "testsrc=size=64x48:duration=1", cls.avi)
        cls.text = os.path.join(src, "notes.mov")
        with open(cls.text, "w") as f:
            f.write("not a movie\n")
        cls.hashes = {p: sha(p) for p in (cls.clip, cls.four, cls.song, cls.avi)}

    def cli(self, *args, check=True):
        return run(CLI, *args, "--storage", self.out, check=check)

    def probe(self, name):
        info = ffprobe(os.path.join(self.out, name))
        streams = info["streams"]
        rotation = [s.get("side_data_list", [{}])[0].get("rotation") for s in streams
                    if s["codec_type"] == "video"]
        return (info["format"]["tags"].get("major_brand", "").strip() if "tags" in info["format"] else "",
                [s["codec_name"] for s in streams], round(float(info["format"].get("duration", 0)), 1),
                rotation)

    def test_outputs(self):
        q = "qt"
        cases = [  # command, source, output, brand, codecs, duration, rotation
            (["convert", "--to", "mp4"], self.clip, "clip.mp4", "mp42", ["h264", "aac"], 3.5, [90]),
            (["convert", "--to", "m4v"], self.four, "four.m4v", "M4V", ["h264", "aac"], 4.0, [None]),
            (["compress", "--quality", "low"], self.clip, "clip.mov", q, ["h264", "aac"], 3.5, [90]),
            (["extract-audio"], self.four, "four.m4a", "M4A", ["aac"], 4.0, []),
            (["remove-audio"], self.four, "four.mp4", q, ["h264"], 4.0, [None]),
            (["remove-audio"], self.clip, "clip.mov", q, ["h264"], 3.5, [90]),
            (["speed", "--factor", "2"], self.four, "four.mp4", q, ["h264", "aac"], 2.0, [None]),
            (["speed", "--factor", "0.5"], self.four, "four.mp4", q, ["h264", "aac"], 4.0, [None]),
            (["slow", "--factor", "0.5"], self.four, "four.mp4", q, ["h264", "aac"], 8.0, [None]),
            # the sound makes the clip 3.52 s long
            (["slow", "--factor", "0.2"], self.clip, "clip.mov", q, ["h264", "aac"], 17.6, [90]),
        ]
        for command, source, output, brand, codecs, duration, rotation in cases:
            with self.subTest(command=command, source=source):
                self.out = tempfile.mkdtemp(dir=self.tmp.name)
                self.assertEqual(self.cli(*command, source).stdout.strip(), os.path.join(self.out, output))
                self.assertEqual(self.probe(output), (brand, codecs, duration, rotation))
                copied = {"convert": ("v", "a"), "slow": ("v",)}.get(command[0], ())
                for stream in copied:  # pass-through: the same packets
                    self.assertEqual(hashes(os.path.join(self.out, output), stream), hashes(source, stream))
                if command[0] in ("convert", "compress", "extract-audio"):  # the movie box in front
                    data = read_bytes(os.path.join(self.out, output))
                    top = [kind for kind, *_ in children(data, 0, len(data))]
                    self.assertLess(top.index("moov"), top.index("mdat"))
                self.assertEqual(sorted(os.listdir(self.out)), [output])  # no temporary file left

    def test_pass_through_keeps_every_stream_the_container_holds(self):
        cases = [  # command, streams written, log line
            (["convert", "--to", "mov"], ["video", "audio", "audio", "data"], ""),
            # A movie file is rewritten, not remuxed: its timecode track stays as it is
            (["convert", "--to", "mp4"], ["video", "audio", "audio", "data"], ""),
            (["compress"], ["video", "audio"], "left out: #2 audio (aac), #3 data (tmcd)"),
        ]
        for command, kinds, logged in cases:
            with self.subTest(command=command):
                self.out = tempfile.mkdtemp(dir=self.tmp.name)
                result = run(CLI, "--verbose", *command, "--storage", self.out, self.multi)
                streams = ffprobe(result.stdout.strip())["streams"]
                self.assertEqual([s["codec_type"] for s in streams], kinds)
                self.assertIn(logged, result.stderr)
                if command[0] == "convert":
                    self.assertNotIn("remuxed instead of rewritten", result.stderr)
                    self.assertEqual(streams[3]["codec_tag_string"], "tmcd")
                    self.assertEqual(streams[2]["tags"]["language"], "fra")
                    self.assertEqual(framemd5(result.stdout.strip(), ("a",)), framemd5(self.multi, ("a",)))

    def test_gif_of_a_3_5_s_clip_has_4_pictures_looping_forever(self):
        self.cli("gif", self.clip)
        gif = os.path.join(self.out, "clip.gif")
        frames = run("ffprobe", "-v", "error", "-count_frames", "-show_entries", "stream=nb_read_frames,width,height",
                     "-of", "csv=p=0", gif).stdout.strip()
        self.assertEqual(frames, "120,160,4")  # turned as shown
        self.assertEqual(run("ffmpeg", "-v", "error", "-i", gif, "-f", "null", "-").stderr, "")
        with open(gif, "rb") as f:
            self.assertIn(b"NETSCAPE2.0\x03\x01\x00\x00", f.read())

    def test_gif_pictures_match_the_movie(self):  # noise fills the LZW table many times
        noise = os.path.join(self.out, "noise.mp4")
        ffmpeg("-f", "lavfi", "-i", "nullsrc=s=320x240:d=1,geq=random(1)*255:128:128", "-pix_fmt", "yuv420p", noise)
        self.cli("gif", noise)
        gray = [subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-vframes", "1", "-f", "rawvideo", "-pix_fmt",
                                "gray", "-"], capture_output=True, check=True).stdout
                for path in (os.path.join(self.out, "noise.gif"), noise)]
        self.assertEqual(len(gray[0]), 320 * 240)
        self.assertLess(sum(abs(a - b) for a, b in zip(*gray)) / len(gray[1]), 2)

    def test_frames_every_0_2_s_keep_one_tiff_per_second(self):
        out = self.cli("frames", "--every", "0.2", self.clip).stdout.split()
        self.assertEqual(out, [os.path.join(self.out, "clip_%d.jpg" % s) for s in range(4)])
        for path in out:
            with open(path, "rb") as f:
                self.assertIn(f.read(4), (b"II*\x00", b"MM\x00*"))
        self.assertEqual(len(os.listdir(self.out)), 4)

    def test_failures_leave_nothing(self):
        cases = [  # command, source, line printed, the job's words in the log
            (["convert"], self.song, "skipped: the file is not a video", ""),
            (["convert"], self.text, "failed: the file cannot be read as a movie", "conversion failed =="),
            (["compress"], self.avi, "failed: a .avi file cannot be compressed (only MP4, MOV and M4V files can)", ""),
            (["extract-audio"], self.text, "failed: the file cannot be read as a movie", "sound extraction failed =="),
            (["remove-audio"], self.song, "failed: the file has no video", "sound removal failed =="),
            (["gif"], self.song, "failed: no picture could be taken from the movie", "GIF making failed =="),
            (["speed", "--factor", "2"], self.song, "failed: the file has no video", "speed change failed =="),
            (["frames"], self.song, "failed: no picture could be taken from the file", ""),
        ]
        for command, source, line, logged in cases:
            with self.subTest(command=command, source=source):
                self.out = tempfile.mkdtemp(dir=self.tmp.name)
                result = self.cli(*command, source, check=False)
                self.assertEqual((result.returncode, result.stdout.strip()), (1, line))
                self.assertIn(logged, result.stderr)
                self.assertEqual(os.listdir(self.out), [])

    def test_slow_motion_batch_ends_at_a_file_without_video(self):
        result = self.cli("slow", "--factor", "0.5", self.song, self.four, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.splitlines(), ["skipped: the file has no video; the batch ends here",
                                                      "skipped: not tried, the batch ended at an earlier file"])
        self.assertEqual(os.listdir(self.out), [])

    def test_storage_folder_equal_to_the_source_folder_keeps_the_source(self):
        folder = tempfile.mkdtemp(dir=self.tmp.name)
        own = shutil.copy(self.clip, folder)
        before = sha(own)
        result = run(CLI, "convert", "--to", "mov", "--storage", folder, own)
        self.assertEqual(result.stdout.strip(), os.path.join(folder, "clip (2).mov"))
        self.assertEqual(sha(own), before)

    def test_usage(self):
        self.assertIn("NOT retimed", run(CLI, "speed", "--help").stdout)
        self.assertIn("TIFF data", run(CLI, "frames", "--help").stdout)
        self.assertEqual(run(CLI, "slow", "--factor", "3", self.four, check=False).returncode, 2)


if __name__ == "__main__":
    unittest.main()
