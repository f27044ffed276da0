// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <atomic>
#include <functional>

#include "core/tools/encoder_settings.h"
#include "core/video/video_export.h"

// What a running job reports and how it is stopped. `progress` is given
// the share of the file done (0 to 1), from the position of the encoder or
// the decoder; `cancel`, when set, stops the job at its next packet.
struct JobControl {
    std::function<void(double)> progress;
    const std::atomic<bool>* cancel = nullptr;
    bool cancelled() const { return cancel && cancel->load(); }
};

// What becomes of a stream of the source.
enum class StreamMode { Drop, Copy, Encode };

// One pass over a movie with FFmpeg: the first video and first audio stream
// are copied (packets unchanged), re-encoded (see encoder_settings.h) or
// left out. When both are copied and nothing is cut or retimed (a
// pass-through), every other stream the output type holds is copied too
// (further sound tracks, timecode and data tracks); otherwise the others are
// left out. The log names every stream left out. The display rotation of the
// video stream is kept in both cases.
struct TranscodeRequest {
    QString sourcePath;
    QString outputPath;  // written as it is (a temporary file)
    const char* muxer = "mov";
    StreamMode video = StreamMode::Copy;
    StreamMode audio = StreamMode::Copy;
    VideoQuality quality = VideoQuality::Highest;
    int audioBitRate = 0;  // 0: the quality's
    // Below 1, only that share of the movie's duration is kept (from its
    // start, both streams).
    double keepShare = 1.0;
    // Above 1 the movie is made that many times longer: the video packets
    // are copied with their times scaled, the sound is re-encoded at the new
    // length with its pitch kept (the video must be copied, the audio
    // encoded).
    double timeScale = 1.0;
    // The movie box in front ("optimise for network use"). Room for it is
    // kept ahead of the media, sized from the packets the output will hold,
    // so the file is written once; when the room proves too small, or the
    // packets cannot be counted, the file is written again with the box
    // moved to the front afterwards (which writes the media twice).
    bool fastStart = false;
    int movieBoxRoom = 0;  // bytes kept for the movie box; 0: estimated
    bool requireVideo = false;
    bool requireAudio = false;
};

// Runs the pass on the calling thread. Completed, Cancelled, or Failed with
// the reason in the user's words (the details are logged). The output may
// be left partly written: the caller removes it.
ExportOutcome transcodeMedia(const TranscodeRequest& request, const JobControl& control = {});

// Whether the file opens as media with a video stream (pictures attached to
// audio files do not count).
bool hasVideoStream(const QString& path);

// Keeps FFmpeg's own messages out of the terminal (our log says what failed).
void quietFfmpeg();
