// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Small audio files made at test time with ffmpeg, cached with the other
// fixtures. Texts carry non-Latin characters on purpose.
namespace audiofix {
inline const char* kTitle = "\xc3\x9cn\xc3\xaf \xe6\x97\xa5\xe6\x9c\xac";  // "Ünï 日本"

// An 8x8 PNG picture.
QString coverPng();
// An MP3 with an ID3v2 tag of `version` (3 or 4): title kTitle, artist
// "Artist", year 2019, track 7, a user text "comment", a recording date and
// the PNG as front cover; and an ID3v1 tag at the end.
QString mp3(int version);
// A CAF (PCM) with title kTitle and artist "Artist" in its info chunk.
QString caf();
// A WAV with RIFF INFO (title "WavT", artist "A", track 4, subject "Sub",
// date "2019-05-03T10:20:30+0800") and an "id3 " chunk holding mp3(3)'s tag.
QString wav();
// A FLAC with Vorbis comments (title "FlacT", TRACKNUMBER 5, YEAR 2018) and
// the PNG as picture.
QString flac();
// An AIFF with an ID3v2.3 chunk: title "AifT", TRDA "2019 05 03 10 20 30".
QString aiff();
// An M4A (AAC) with title "M4aT", track 3 of 9, date 2017.
QString m4a();
// An AU file made by sox (no tags).
QString au();
}  // namespace audiofix
