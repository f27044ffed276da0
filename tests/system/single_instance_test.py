#!/usr/bin/env python3
"""One window per session: the window started with a file lists it; a second
launch with a photo hands it to that window over the session bus and ends;
without a session bus a launch runs on its own. Runs itself inside a private
bus made by dbus-run-session, and is skipped (77) where there is none."""

import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from support import ffmpeg

APP = os.environ.get("TAGSMITH_APP", "tagsmith")
SERVICE, PATH, IFACE = "com.brimlark.Tagsmith", "/com/brimlark/Tagsmith", "com.brimlark.Tagsmith.Window"
SKIP = 77


def listed_files():
    """The running window's list, asked over the bus; None while none answers."""
    out = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=" + SERVICE, PATH,
                          IFACE + ".ListedFiles"], capture_output=True, text=True, timeout=10)
    if out.returncode != 0:
        return None
    return [line.strip()[len('string "'):-1] for line in out.stdout.splitlines()
            if line.strip().startswith('string "')]


def wait_for(check, seconds=30):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = check()
        if value:
            return value
        time.sleep(0.2)
    return check()


class SingleInstanceTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        root = cls.tmp.name
        cls.env = dict(os.environ, QT_QPA_PLATFORM="offscreen", TAGSMITH_NO_PLAYER="1", HOME=root,
                       XDG_CONFIG_HOME=root + "/config", XDG_CACHE_HOME=root + "/cache",
                       XDG_DATA_HOME=root + "/data", XDG_RUNTIME_DIR=root + "/run")
        os.makedirs(root + "/run", mode=0o700)
        cls.clip = os.path.join(root, "tone.wav")
        ffmpeg("-f", "lavfi", "-i", "sine=duration=0.5", cls.clip)
        cls.photo = os.path.join(root, "red.jpg")
        ffmpeg("-f", "lavfi", "-i", "color=c=red:s=32x24", "-frames:v", "1", cls.photo)

    def start(self, *args, env=None):
        proc = subprocess.Popen([APP, *args], cwd=self.tmp.name, env=env or self.env,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.addCleanup(lambda: (proc.poll() is None and proc.terminate(), proc.communicate()))
        return proc

    def test_second_launch_hands_its_paths_to_the_first_window(self):
        first = self.start(self.clip)
        self.assertEqual(wait_for(lambda: listed_files()), [self.clip])
        # A relative path, resolved in the launch's own folder.
        second = self.start(os.path.basename(self.photo))
        self.assertEqual(second.wait(timeout=30), 0)
        self.assertEqual(wait_for(lambda: len(listed_files() or []) == 2 and listed_files()),
                         [self.clip, self.photo])
        self.assertIsNone(first.poll(), "the first window must keep running")
        # A launch without paths only raises the window.
        self.assertEqual(self.start().wait(timeout=30), 0)
        self.assertEqual(listed_files(), [self.clip, self.photo])

    def test_without_a_session_bus_each_launch_runs_on_its_own(self):
        env = dict(self.env, DBUS_SESSION_BUS_ADDRESS="unix:path=" + self.tmp.name + "/no-bus")
        alone = self.start(self.clip, env=env)
        time.sleep(3)
        self.assertIsNone(alone.poll(), alone.stderr.read() if alone.poll() is not None else "")


if __name__ == "__main__":
    if not os.environ.get("TAGSMITH_IN_TEST_BUS"):
        if not shutil.which("dbus-run-session") or not shutil.which("dbus-send"):
            print("dbus-run-session or dbus-send not found: skipped")
            sys.exit(SKIP)
        os.environ["TAGSMITH_IN_TEST_BUS"] = "1"
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])
    unittest.main()
