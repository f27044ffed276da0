// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

#include "core/common/desktop_integration.h"
#include "core/tools/video_tool_jobs.h"
#include "media_fixtures.h"
#include "video/movie_rewriter_support.h"

namespace {

QStringList everyFile(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
}

VideoToolRequest request(VideoTool tool, const QString& variant, const QString& storage) {
    DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    VideoToolRequest r;
    r.tool = tool;
    r.variant = variant;
    r.storage.storagelocation = storage;
    return r;
}

}  // namespace

// A job cancelled while it runs stops its batch and leaves no file at all:
// neither the output nor its temporary file.
TEST(VideoToolJobs, CancelLeavesNoFile) {
    const QString clip = clipFixture(QStringLiteral("tools_4s.mp4"), 160, 120, 4.0);
    ASSERT_FALSE(clip.isEmpty()) << qPrintable(lastToolOutput());
    for (const auto& [tool, variant] : {std::pair{VideoTool::Compress, QString()},
                                        {VideoTool::Slow, QStringLiteral("0.5X")},
                                        {VideoTool::Gif, QString()},
                                        {VideoTool::Frames, QStringLiteral("5 pics per second")}}) {
        QTemporaryDir storage;
        std::atomic<bool> cancel{false};
        VideoToolCallbacks callbacks;
        callbacks.cancel = &cancel;
        callbacks.progress = [&](int, double) { cancel = true; };  // at its first report
        OutputBatch batch;
        const QList<VideoToolResult> results = runVideoToolBatch(
            request(tool, variant, storage.path()), {clip, clip}, batch, callbacks);
        ASSERT_EQ(results.size(), 1) << int(tool);
        EXPECT_EQ(results[0].status, ExportStatus::Cancelled) << int(tool);
        EXPECT_EQ(everyFile(storage.path()), QStringList()) << int(tool);
    }
}

// Two batches at once into one folder both finish, each under its own name.
TEST(VideoToolJobs, TwoBatchesAtOnce) {
    const QString clip = clipFixture(QStringLiteral("tools_4s.mp4"), 160, 120, 4.0);
    QTemporaryDir storage;
    QList<VideoToolResult> first, second;
    OutputBatch batchA, batchB;
    std::thread a([&] {
        first = runVideoToolBatch(
            request(VideoTool::Convert, QStringLiteral("Convert to MOV"), storage.path()), {clip},
            batchA);
    });
    second = runVideoToolBatch(request(VideoTool::Speed, QStringLiteral("2X"), storage.path()),
                               {clip}, batchB);
    a.join();
    ASSERT_EQ(first.size() + second.size(), 2);
    EXPECT_TRUE(first[0].ok() && second[0].ok());
    EXPECT_EQ(everyFile(storage.path()),
              QStringList({QStringLiteral("tools_4s.mov"), QStringLiteral("tools_4s.mp4")}));
}

// The movie box goes in front of the media: into the room kept for it (the
// rest of the room a free box), or, when that is too small, moved there after
// a second writing.
TEST(VideoToolJobs, MovieBoxInFront) {
    for (const auto& [room, boxes] :
         {std::pair{0, "ftyp moov free free mdat"}, {200, "ftyp moov free mdat"}}) {
        QTemporaryDir dir;
        const TranscodeRequest t{
            .sourcePath = clipFixture(QStringLiteral("tools_4s.mp4"), 160, 120, 4.0),
            .outputPath = dir.filePath(QStringLiteral("out.mp4")),
            .muxer = "mp4",
            .fastStart = true,
            .movieBoxRoom = room};
        ASSERT_EQ(transcodeMedia(t).status, ExportStatus::Completed) << room;
        EXPECT_EQ(RewriterTest::topLevelTypes(t.outputPath).join(' '), boxes) << room;
    }
}
