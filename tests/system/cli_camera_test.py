#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""`camera` over a generated folder served as a camera by libgphoto2's
directory driver: list (photos and movies only), download (byte-identical,
dated, free names), and delete with its question."""

import os
import subprocess
import tempfile
import unittest

from support import CLI, ffmpeg, run, sha


class CliCameraTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.card = os.path.join(self.tmp.name, "card")
        self.out = os.path.join(self.tmp.name, "out")
        os.makedirs(os.path.join(self.card, "DCIM", "100TEST"))
        self.photo = os.path.join(self.card, "DCIM", "100TEST", "IMG_0001.JPG")
        ffmpeg("-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1", self.photo)
        run("exiftool", "-q", "-overwrite_original", "-Artist=Cam", "-FileModifyDate=2021:05:06 07:08:09",
            self.photo)
        ffmpeg("-f", "lavfi", "-i", "testsrc=duration=1:size=64x48", "-pix_fmt", "yuv420p",
               os.path.join(self.card, "DCIM", "100TEST", "MVI_0002.MOV"))
        run("sox", "-n", "-r", "8000", os.path.join(self.card, "DCIM", "REC.WAV"), "trim", "0", "0.1")

    def tearDown(self):
        self.tmp.cleanup()

    def camera(self, *args, answer=None, code=0):
        r = subprocess.run([CLI, "camera", "--port", "disk:" + self.card, "--storage", self.out,
                            *args], input=answer, capture_output=True, text=True, timeout=120)
        self.assertEqual(r.returncode, code, r.stdout + r.stderr)
        return r.stdout.split("\n")[:-1]

    def test_list_and_download(self):
        items = self.camera("list")
        self.assertEqual(items, ["/DCIM/100TEST/IMG_0001.JPG", "/DCIM/100TEST/MVI_0002.MOV"])
        os.makedirs(self.out)
        with open(os.path.join(self.out, "IMG_0001.JPG"), "w") as f:
            f.write("the user's")
        written = self.camera("download")
        self.assertEqual([os.path.basename(p) for p in written], ["IMG_0001 (2).JPG", "MVI_0002.MOV"])
        self.assertEqual(sha(written[0]), sha(self.photo))
        self.assertEqual(int(os.path.getmtime(written[0])), int(os.path.getmtime(self.photo)))
        # Downloading again replaces our own copies only.
        self.assertEqual(self.camera("download", items[1]), [written[1]])
        self.assertEqual(self.camera("download", "/DCIM/REC.WAV", "/DCIM/none.JPG", code=1),
                         ["skipped: /DCIM/REC.WAV: not a photo or movie",
                          "failed: /DCIM/none.JPG: no such item on the camera"])

    def test_delete_asks_unless_yes(self):
        item = "/DCIM/100TEST/IMG_0001.JPG"
        r = subprocess.run([CLI, "camera", "--port", "disk:" + self.card, "delete", item],
                           input="Cancel\n", capture_output=True, text=True, timeout=120)
        self.assertEqual(r.returncode, 1)
        self.assertIn("Are you sure you want to delete the selected photo ?", r.stderr)
        self.assertTrue(os.path.exists(self.photo))
        self.assertEqual(self.camera("delete", item, answer="Delete\n"), [item])
        self.assertFalse(os.path.exists(self.photo))
        self.assertEqual(self.camera("delete", "--yes", "/DCIM/100TEST/MVI_0002.MOV"),
                         ["/DCIM/100TEST/MVI_0002.MOV"])
        self.assertEqual(self.camera("list"), [])
        self.assertTrue(os.path.exists(os.path.join(self.card, "DCIM", "REC.WAV")))
        self.camera("delete", code=2)
        for port in ("usb:999,999", "disk:" + os.path.join(self.tmp.name, "none")):
            self.camera("list", "--port", port, code=1)


if __name__ == "__main__":
    unittest.main()
