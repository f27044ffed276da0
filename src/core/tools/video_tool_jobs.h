// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

#include "core/common/output_files.h"
#include "core/tools/media_transcoder.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// The batch jobs of the video tools menu. Each runs over the chosen files
// in list (import) order and writes new files into the storage folder; the
// sources are only read. Every output is written under a hidden temporary
// name and renamed into place only when complete, so a failed or cancelled
// job leaves nothing under the output's name; names are claimed through the
// batch's OutputBatch (a file that is not ours, the source itself or an
// earlier output of the batch keeps its name, and the new file gets a free
// one).
enum class VideoTool { Convert, Compress, ExtractAudio, RemoveAudio, Gif, Speed, Slow, Frames };

// The variant is the title of the menu item that started the job ("Convert
// to MOV", "Low video quality", "2X", "5 pics per second"); the GIF, sound
// extraction and sound removal have none.
struct VideoToolRequest {
    VideoTool tool = VideoTool::Convert;
    QString variant;
    StorageContext storage;
};

// The outcome of one file: `outputs` lists every file written (the frame
// job writes several; `outputPath` is the first).
struct VideoToolResult : VideoWriteResult {
    QStringList outputs;
};

struct VideoToolCallbacks {
    // The file at `index` of the batch is `fraction` done.
    std::function<void(int index, double fraction)> progress;
    // The file at `index` has finished.
    std::function<void(int index, const VideoToolResult&)> finished;
    const std::atomic<bool>* cancel = nullptr;
};

// Runs the job on the calling thread. A cancelled job stops the batch; so
// does the slow motion at a file without video (the files after it are not
// tried, as that job has always done). Answers one result per file tried.
QList<VideoToolResult> runVideoToolBatch(const VideoToolRequest& request,
                                         const QStringList& sources, OutputBatch& batch,
                                         const VideoToolCallbacks& callbacks = {});

// The variants, by menu title, with the fallbacks of unknown titles.
QString convertExtension(const QString& title);         // "mp4", "mov", "m4v"; else "mp4"
VideoQuality compressionQuality(const QString& title);  // else Highest
float speedFactor(const QString& title);                // "0.2X" ... "20X"; else 1
float slowMotionFactor(const QString& title);           // "0.2X", "0.5X"; else 1
float frameInterval(const QString& title);              // seconds; else 1

// The menu titles of each variant, in menu order.
QStringList videoToolVariants(VideoTool tool);
