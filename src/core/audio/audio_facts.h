// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

#include "core/audio/audio_container.h"
#include "core/audio/taglib_info.h"
#include "core/library/media_probe.h"

class WindowedFile;

// The facts of a sound (length, bit rate, sample rate, channels) read from
// the file's own headers without FFmpeg: TagLib for the containers it knows,
// our own code for CAF and AU. Loading FFmpeg costs more than reading a
// whole folder of audio files this way, so the import asks FFmpeg only where
// these readers cannot tell.
struct AudioFacts {
    ProbeFacts facts;
    // The generic tag's album and year, which stand in for a file whose
    // metadata walk finds no items.
    QString album;
    QString year;
    // A WAV's RIFF INFO or a FLAC's comments and pictures, when asked for:
    // read from the same parse of the file.
    std::optional<TagLibInfo> info;
};

// The facts of `file` (opened for reading) of the sniffed `container`;
// nothing where the headers give neither a sample rate nor a length.
// Without `tags` the album and year are left out, and an MP3's or FLAC's
// ID3v2 frames are not decoded (a third of the work for a tagged MP3). With
// `infoDictionary`, a WAV's or FLAC's info dictionary comes along.
std::optional<AudioFacts> readAudioFacts(WindowedFile& file, AudioContainer container,
                                         bool tags = true, bool infoDictionary = false);
