// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The encoder settings behind the video tools' presets, in one place. The
// quality presets re-encode the picture with libx264 (constant rate factor,
// 4:2:0 pictures at the source's pixel size and frame timing) and the sound
// with FFmpeg's AAC encoder (at most two channels, the source's sample rate
// where AAC has it, else 48 kHz). The command line that does the same work:
//   ffmpeg -i IN -c:v libx264 -crf CRF -preset PRESET -pix_fmt yuv420p
//          -c:a aac -b:a AUDIO_BITRATE OUT
// Pass-through copies the packets of every stream the output type holds
// unchanged.

enum class VideoQuality { Highest, Medium, Low };

struct EncoderSettings {
    int crf;                 // libx264 constant rate factor
    const char* x264Preset;  // libx264 speed preset
    int audioBitRate;        // AAC, bits per second
};

// Highest: crf 18, "medium", 192 kb/s. Medium: crf 23, "medium", 128 kb/s.
// Low: crf 28, "fast", 64 kb/s.
EncoderSettings encoderSettings(VideoQuality quality);

// The M4A sound preset: AAC at 192 kb/s in an MPEG-4 audio file.
constexpr int kM4aAudioBitRate = 192000;

// The FFmpeg muxer for an output file type chosen by the output's
// extension, compared case-insensitively: "mp4" and "mpeg" give MPEG-4,
// "m4v" the M4V type, "mov" a QuickTime movie, "m4a" MPEG-4 audio; any
// other extension has no file type (nullptr), and such an export fails.
const char* muxerForExtension(const QString& extension);
