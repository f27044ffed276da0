#include <gtest/gtest.h>

#include <QTimeZone>

#include "core/common/dates.h"
#include "core/library/info_block.h"

TEST(InfoBlock, VideoLabelsKeepTheirBlanks) {
    IKImageItem item;
    item.shootDateStr = "2020:01:02 03:04:05";
    item.filePixWidth = 1920;
    item.filepixHeigh = 1080;
    item.videoResolutionStr = "1920 X 1080";
    item.fileVideoEncodeFormat = "H.264";
    item.fileCreateDate = dateFromText("2021:01:01 00:00:00");
    item.fileCreateDateStr = "2021:01:01 00:00:00";
    const VideoInfoBlock b = videoInfoBlock(item, 3725.9);
    EXPECT_EQ(b.recordDate, "Record Date:         2020:01:02 03:04:05");
    EXPECT_EQ(b.pixelSize, "1920 x 1080");
    EXPECT_EQ(b.resolution, "Resolution:           1920 X 1080");
    EXPECT_EQ(b.videoFormat, "Video Format:        H.264");
    EXPECT_EQ(b.createdDate, "Created Date:        2021:01:01 00:00:00");
    EXPECT_EQ(b.duration, "Duration: 1h:2m:5s");
}

TEST(InfoBlock, EmptyRecordGivesBareLabels) {
    IKImageItem item;
    item.fileCreateDateStr = "text without a date value";  // shown only with a date
    const VideoInfoBlock b = videoInfoBlock(item, std::nullopt);
    EXPECT_EQ(b.recordDate, "Record Date:   ");
    EXPECT_EQ(b.pixelSize, "");
    EXPECT_EQ(b.resolution, "Resolution:");
    EXPECT_EQ(b.videoFormat, "Video Format:");
    EXPECT_EQ(b.createdDate, "Created Date:");
    EXPECT_EQ(b.duration, "");
    EXPECT_EQ(audioInfoBlock(item).lines(),
              (QStringList{"File Name:", "Modified Date:", "File Size:", "Location:", "Kind: Image",
                           "Channels:", "Duration:", "Bitrate:", "Sample Rate:", "Created Date:"}));
}

TEST(InfoBlock, AudioLinesAndPlayerSeconds) {
    IKImageItem item;
    item.fileName = "a.mp3";
    item.fileModifyDate = QDateTime(QDate(2020, 5, 6), QTime(7, 8, 9), QTimeZone::utc());
    item.fileBitRate = "128000 bps";
    const AudioInfoBlock b = audioInfoBlock(item);
    EXPECT_EQ(b.fileName, "File Name: a.mp3");
    EXPECT_EQ(b.modifiedDate, "Modified Date: 2020-05-06 07:08:09 +0000");
    EXPECT_EQ(b.bitrate, "Bitrate: 128000 bps");
    // Narrowed to single precision before truncation.
    EXPECT_EQ(playerWholeSeconds(59.9999999), 60);
    EXPECT_EQ(playerWholeSeconds(59.5), 59);
}
