// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QTimeZone>

#include "core/common/dates.h"
#include "core/library/info_block.h"

namespace {
QStringList linesOf(const VideoInfoBlock& b) {
    return {b.recordDate, b.pixelSize, b.resolution, b.videoFormat, b.createdDate, b.duration};
}
}  // namespace

TEST(InfoBlock, VideoLabelsKeepTheirBlanks) {
    IKImageItem item;
    item.shootDateStr = "2020:01:02 03:04:05";
    item.filePixWidth = 1920;
    item.filepixHeigh = 1080;
    item.videoResolutionStr = "1920 X 1080";
    item.fileVideoEncodeFormat = "H.264";
    item.fileCreateDate = dateFromText("2021:01:01 00:00:00");
    item.fileCreateDateStr = "2021:01:01 00:00:00";
    EXPECT_EQ(linesOf(videoInfoBlock(item, 3725.9)),
              (QStringList{"Record Date:         2020:01:02 03:04:05", "1920 x 1080",
                           "Resolution:           1920 X 1080", "Video Format:        H.264",
                           "Created Date:        2021:01:01 00:00:00", "Duration: 1h:2m:5s"}));
}

TEST(InfoBlock, EmptyRecordGivesBareLabels) {
    IKImageItem item;
    item.fileCreateDateStr = "text without a date value";  // shown only with a date
    EXPECT_EQ(
        linesOf(videoInfoBlock(item, std::nullopt)),
        (QStringList{"Record Date:   ", "", "Resolution:", "Video Format:", "Created Date:", ""}));
    EXPECT_EQ(audioInfoBlock(item).lines(),
              (QStringList{"File Name:", "Modified Date:", "File Size:", "Location:", "Kind: Image",
                           "Channels:", "Duration:", "Bitrate:", "Sample Rate:", "Created Date:"}));
}

TEST(InfoBlock, AudioLines) {
    IKImageItem item;
    item.fileName = "a.mp3";
    item.fileModifyDate = QDateTime(QDate(2020, 5, 6), QTime(7, 8, 9), QTimeZone::utc());
    item.fileBitRate = "128000 bps";
    const AudioInfoBlock b = audioInfoBlock(item);
    EXPECT_EQ(b.fileName, "File Name: a.mp3");
    EXPECT_EQ(b.modifiedDate, "Modified Date: 2020-05-06 07:08:09 +0000");
    EXPECT_EQ(b.bitrate, "Bitrate: 128000 bps");
}
