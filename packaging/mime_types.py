#!/usr/bin/env python3
"""Prints the MIME types of the media kinds the program reads, for the
desktop entry's MimeType key: every extension of the kind tables in
media_kinds.cpp, looked up in the shared-mime-info glob list, keeping the
audio, video and image types."""
import re
import sys


def kind_extensions(kinds_source):
    text = open(kinds_source, encoding="utf-8").read()
    extensions = set()
    for table in re.findall(r"k\w+List\[\]\s*=\s*\{(.*?)\};", text, re.S):
        extensions.update(e.lower() for e in re.findall(r'"([^"]+)"', table))
    return extensions


def mime_types(extensions, globs2):
    found = set()
    for line in open(globs2, encoding="utf-8"):
        if line.startswith("#"):
            continue
        fields = line.rstrip("\n").split(":")
        if len(fields) < 3 or not fields[2].startswith("*."):
            continue
        mime, ext = fields[1], fields[2][2:].lower()
        if ext in extensions and mime.split("/")[0] in ("audio", "video", "image"):
            found.add(mime)
    return sorted(found)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: mime_types.py MEDIA_KINDS_CPP GLOBS2")
    types = mime_types(kind_extensions(sys.argv[1]), sys.argv[2])
    if not types:
        sys.exit("mime_types.py: no MIME type found for the kind tables")
    print(";".join(types) + ";")
