#pragma once

#include <QString>

#include <optional>

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

// Probes a media file. An unreadable or unrecognised file gives no facts.
ProbeFacts probeMediaFile(const QString& path);
