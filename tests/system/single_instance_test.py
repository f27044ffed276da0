#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""One window per session, on a private bus of dbus-run-session (skipped, 77,
without one): a later launch hands its paths to the running window and ends;
without a session bus a launch runs on its own."""

import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from support import ffmpeg

APP = os.environ.get("TAGSMITH_APP", "tagsmith")


def listed_files(count):
    """The running window's list once it holds `count` files, asked over the bus."""
    for _ in range(150):
        out = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=io.github.tagsmith.Tagsmith",
                              "/io/github/tagsmith/Tagsmith", "io.github.tagsmith.Tagsmith.Window.ListedFiles"],
                             capture_output=True, text=True, timeout=10).stdout
        files = [line.strip()[8:-1] for line in out.splitlines() if line.strip().startswith('string "')]
        if len(files) >= count:
            return files
        time.sleep(0.2)
    return files


class SingleInstanceTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        root = self.tmp.name
        self.env = dict(os.environ, QT_QPA_PLATFORM="offscreen", TAGSMITH_NO_PLAYER="1", HOME=root,
                        XDG_CONFIG_HOME=root, XDG_CACHE_HOME=root, XDG_DATA_HOME=root)
        self.clip, self.photo = root + "/tone.wav", root + "/red.jpg"
        ffmpeg("-f", "lavfi", "-i", "sine=duration=0.5", self.clip)
        ffmpeg("-f", "lavfi", "-i", "color=c=red:s=32x24", "-frames:v", "1", self.photo)

    def start(self, *args, **env):
        proc = subprocess.Popen([APP, *args], cwd=self.tmp.name, env=dict(self.env, **env),
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(lambda: (proc.terminate(), proc.wait()))
        return proc

    def test_a_later_launch_hands_its_paths_to_the_running_window(self):
        first = self.start(self.clip)
        self.assertEqual(listed_files(1), [self.clip])
        # A relative path, resolved in the later launch's own folder.
        self.assertEqual(self.start(os.path.basename(self.photo)).wait(timeout=30), 0)
        self.assertEqual(listed_files(2), [self.clip, self.photo])
        self.assertEqual(self.start().wait(timeout=30), 0)  # only raises the window
        self.assertIsNone(first.poll())

    def test_without_a_session_bus_a_launch_runs_on_its_own(self):
        alone = self.start(self.clip, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent/bus")
        time.sleep(3)
        self.assertIsNone(alone.poll())


if __name__ == "__main__":
    if not os.environ.get("TAGSMITH_IN_TEST_BUS"):
        if not shutil.which("dbus-run-session") or not shutil.which("dbus-send"):
            print("dbus-run-session or dbus-send not found: skipped")
            sys.exit(77)
        os.environ["TAGSMITH_IN_TEST_BUS"] = "1"
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])
    unittest.main()
