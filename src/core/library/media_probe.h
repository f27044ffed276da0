// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

struct AVFormatContext;

// What the file's own headers tell of its duration, audio and picture size,
// found by FFmpeg's probing. Stands where a desktop search index would answer
// these questions. Every fact is absent when the file does not give it.
struct ProbeFacts {
    std::optional<double> durationSeconds;
    std::optional<qint64> audioBitRate;  // bits per second
    std::optional<int> audioSampleRate;  // Hz
    std::optional<int> audioChannels;
    std::optional<int> pixelWidth;
    std::optional<int> pixelHeight;
};

// A media file opened once with FFmpeg, its streams described: containers
// with full headers (MP4, MOV, ...) describe them at once, only the others
// have packets read. The import takes both the probed facts and the track
// descriptions from one open file.
class OpenedMedia {
public:
    // Opens the file; an unreadable or unrecognised file is logged and
    // leaves the object closed. `formatName` (FFmpeg's name of a demuxer,
    // "wav", "mp3") skips the probing of every format when the caller knows
    // the container from the file's bytes.
    explicit OpenedMedia(const QString& path, const char* formatName = nullptr);
    ~OpenedMedia();
    OpenedMedia(const OpenedMedia&) = delete;
    OpenedMedia& operator=(const OpenedMedia&) = delete;

    bool isOpen() const { return m_context != nullptr; }
    // The library's context (reading packets changes it), or null.
    AVFormatContext* context() const { return m_context; }

private:
    AVFormatContext* m_context = nullptr;
};

// The facts of an opened file; none for a closed one.
ProbeFacts probeMediaFile(const OpenedMedia& media);

// Opens and probes a media file.
ProbeFacts probeMediaFile(const QString& path);
