"""What the system tests share: running tools, making media with ffmpeg, and
the one way they ask exiftool and ffprobe about a file."""

import hashlib
import json
import os
import subprocess

CLI = os.environ.get("TAGSMITH_CLI", "tagsmith-cli")


def run(*args, check=True):
    return subprocess.run(args, capture_output=True, text=True, check=check, timeout=300)


def ffmpeg(*args):
    run("ffmpeg", "-y", "-v", "error", *args)


def ffprobe(path):
    return json.loads(run("ffprobe", "-v", "error", "-show_format", "-show_streams", "-of", "json",
                          path).stdout)


def exif(path, *options):
    """exiftool's view of a file, keys "Group:Tag" (e.g. "ItemList:Title")."""
    return json.loads(run("exiftool", "-j", "-G1", "-a", *options, path).stdout)[0]


def exif_write(path, *assignments):
    """Changes a file in place with exiftool ("-Keys:Title=New")."""
    run("exiftool", "-q", "-overwrite_original", *assignments, path)


def sha(path):
    with open(path, "rb") as f:
        return hashlib.sha256(f.read()).hexdigest()


def framemd5(path, streams=("",)):
    """Per-packet checksums of the streams (ffmpeg stream specifiers after "0:";
    all by default), without the lines naming the file."""
    maps = [arg for s in streams for arg in ("-map", ("0:" + s).rstrip(":"))]
    out = run("ffmpeg", "-v", "error", "-i", path, *maps, "-c", "copy", "-f", "framemd5", "-").stdout
    return [line for line in out.splitlines() if not line.startswith("#")]


def info(path, *extra):
    """The first record `tagsmith-cli info --json` prints for the path."""
    return json.loads(run(CLI, "info", "--json", *extra, path).stdout)[0]
