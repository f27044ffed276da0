// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "core/library/frame_image.h"
#include "support/media_fixtures.h"

TEST(FrameImage, FitsTheSizeKeepsTheAspectAndTurnsRotatedVideos) {
    const QString landscape = clipFixture("frame-landscape.mp4", 320, 180, 2.0);
    ASSERT_FALSE(landscape.isEmpty()) << lastToolOutput().toStdString();
    const QImage still = videoFrameImage(landscape, 1.0, QSize(64, 64));
    ASSERT_FALSE(still.isNull());
    EXPECT_EQ(still.size(), QSize(64, 36));

    // A track flagged to be shown turned by a quarter stands upright.
    const QString rotated = ffmpegFixture(
        "frame-rotated.mp4", {"-i", landscape, "-c", "copy", "-metadata:s:v:0", "rotate=90"});
    ASSERT_FALSE(rotated.isEmpty()) << lastToolOutput().toStdString();
    const QImage upright = videoFrameImage(rotated, 0.0, QSize(64, 64));
    ASSERT_FALSE(upright.isNull());
    EXPECT_EQ(upright.size(), QSize(36, 64));

    // Past the end: the last frame rather than nothing.
    EXPECT_FALSE(videoFrameImage(landscape, 60.0, QSize(16, 16)).isNull());
}

TEST(FrameImage, NothingForFilesWithoutVideo) {
    QTemporaryDir tmp;
    const QString junk = tmp.filePath("junk.mp4");
    ASSERT_TRUE(writeFile(junk, QByteArray(2048, 'x')));
    EXPECT_TRUE(videoFrameImage(junk, 0, QSize(16, 16)).isNull());
    EXPECT_TRUE(videoFrameImage(tmp.filePath("missing.mov"), 0, QSize(16, 16)).isNull());
    const QString audio =
        ffmpegFixture("frame-audio-only.m4a", words("-f lavfi -i sine=duration=1 -c:a aac"));
    ASSERT_FALSE(audio.isEmpty());
    EXPECT_TRUE(videoFrameImage(audio, 0, QSize(16, 16)).isNull());
}
