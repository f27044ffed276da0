// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

// Re-muxing an audio file into another container without re-encoding,
// through the FFmpeg libraries: the first audio stream's packets go over
// unchanged (an ADTS header becomes the MPEG-4 decoder configuration), every
// other stream stays behind. The source is only opened for reading.

enum class RemuxContainer {
    Mpeg4Audio,       // an MPEG-4 file of the audio stream, without tags
    CoreAudioFormat,  // a CAF file, without an info chunk
};

struct RemuxResult {
    bool ok = false;
    // Why not, in the user's words ("WAV audio (PCM) cannot be stored in an
    // MPEG-4 audio file"); the details are in the log.
    QString reason;
    // The source's tags (container and audio stream), as the demuxer names
    // them and in its order; empty keys and values are left out.
    QList<std::pair<QString, QString>> tags;
    // The bytes of the source's first attached picture (a FLAC or ID3 cover).
    QByteArray cover;
    // The tags are Vorbis comments (Ogg, FLAC), whose DATE is the recording's.
    bool vorbisComments = false;
};

// Writes `target` (which should not exist; it is replaced) from the audio
// of `source`. On failure no file is left at `target`.
RemuxResult remuxAudio(const QString& source, const QString& target, RemuxContainer container);
