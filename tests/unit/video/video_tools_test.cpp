// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/video/video_items.h"
#include "core/video/video_tools.h"
#include "metadata_test_items.h"
#include "support/media_fixtures.h"

namespace {

class VideoToolsTest : public ::testing::Test {
protected:
    void SetUp() override {
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        QDir().mkpath(tmp.path() + "/media/trip");
        QDir().mkpath(tmp.path() + "/store");
        video.filePath = tmp.path() + "/media/trip/2021-03-04 10.30 beach.mov";
        video.fileName = QFileInfo(video.filePath).fileName();
        ASSERT_TRUE(writeFile(video.filePath, "movie"));
        setFileDates(video.filePath, QDateTime(), dateFromText("2018:08:08 08:08:08"));
        storage.storagelocation = tmp.path() + "/store";
    }
    QTemporaryDir tmp;
    IKImageItem video;
    StorageContext storage;
};

}  // namespace

TEST_F(VideoToolsTest, TitleBecomesTheCopysNameWithTheSourceDates) {
    video.fileTitle = "Sunset/Beach";
    ASSERT_TRUE(CopyvideoTitletoFileNameAction(video, storage).ok());
    const QString copy = storage.storagelocation + "/Sunset-Beach.mov";
    EXPECT_TRUE(QFile::exists(copy));
    EXPECT_EQ(readFileDates(copy).modification, dateFromText("2018:08:08 08:08:08"));
    EXPECT_TRUE(QFile::exists(video.filePath));  // the listed file stays

    // After a folder import the sub-folders are mirrored.
    storage.bImportLocalFolder = true;
    storage.bImportLocalPath = tmp.path() + "/media";
    ASSERT_TRUE(CopyvideoTitletoFileNameAction(video, storage).ok());
    EXPECT_TRUE(QFile::exists(storage.storagelocation + "/trip/Sunset-Beach.mov"));

    video.fileTitle.clear();
    EXPECT_TRUE(CopyvideoTitletoFileNameAction(video, storage).skipped);

    // A copy that would land on the source itself goes beside it.
    IKImageItem stored;
    stored.filePath = copy;
    stored.fileTitle = "Sunset-Beach";
    EXPECT_EQ(
        CopyvideoTitletoFileNameAction(stored, StorageContext{storage.storagelocation, false, ""})
            .outputPath,
        storage.storagelocation + "/Sunset-Beach (2).mov");
    EXPECT_TRUE(QFile::exists(copy));
}

TEST_F(VideoToolsTest, FileNameBecomesTitleOrRecordedDateAndCreationDateRecordedDate) {
    const QString name = "2021-03-04 10.30 beach";
    VideoWriteJob job = CopyvideofilenametoTitleAction(
        video, {item("udta/%A9nam", "a"), item("udta/%A9cmt", "c"), item("itsk/%A9nam", "b")},
        storage);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"itsk/%A9nam", "udta/%A9nam", "udta/%A9cmt"}));
    EXPECT_EQ(valueOf(job.request.metadata, "udta/%A9nam"), name);
    EXPECT_EQ(job.request.fileType, VideoFileType::QuickTimeMovie);
    EXPECT_EQ(job.request.outputPath, storage.storagelocation + "/" + video.fileName);

    const QString created = dateText(readFileDates(video.filePath).creation);
    job = ClickCopyVideoCreatedDateToCameraDateAction(video, {item("udta/date", "x")}, storage);
    EXPECT_EQ(identifiers(job.request.metadata), (QStringList{"uiso/date", "udta/date"}));
    EXPECT_EQ(valueOf(job.request.metadata, "udta/date"), created);

    job = ClickSetVideoDateFromFileNameAction(video, {}, storage);
    EXPECT_EQ(identifiers(job.request.metadata), QStringList{"uiso/date"});
    EXPECT_EQ(valueOf(job.request.metadata, "uiso/date"), "2021:03:04 10:30:00");
    video.filePath = tmp.path() + "/nodate.mov";
    EXPECT_TRUE(
        ClickSetVideoDateFromFileNameAction(video, {}, storage).request.sourcePath.isEmpty());
}

TEST(VideoTools, DatesFoundInFileNames) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"2021-03-04 10.30 beach", "2021:03:04 10:30:00"}, {"20200101", "2020:01:01 00:00:00"},
        {"VID_20190514_183005", "2019:05:14 18:30:05"}, {"clip 2020.12.31", "2020:12:31 00:00:00"},
        {"take 12 of 2015_07_04-2359", "2015:07:04 23:59:00"}, {"holiday", ""},
        {"2021-02-30", ""} /* not a day */, {"1234567", ""}};
    // clang-format on
    for (const auto& [name, date] : cases) EXPECT_EQ(dateTextFromFileName(name), date) << name;
}

TEST(VideoTools, RecordedDateIsTheLastReadableDateItem) {
    EXPECT_EQ(
        recordedDate({item("uiso/date", "2001:01:01 00:00:00"), item("udta/date", "garbage"),
                      item("mdta/com.apple.quicktime.creationdate", "2019-05-04T10:11:12+0800")}),
        dateFromText("2019:05:04 10:11:12"));
    EXPECT_FALSE(recordedDate({item("itsk/%A9day", "2001")}).isValid());
}

TEST_F(VideoToolsTest, RecordedDateBecomesTheCopysFileDates) {
    ASSERT_TRUE(ClickCopyVideoExifDateToCreateDateAction(
                    video, {item("uiso/date", "2011:11:11 11:11:11")}, storage)
                    .ok());
    EXPECT_EQ(readFileDates(storage.storagelocation + "/" + video.fileName).modification,
              dateFromText("2011:11:11 11:11:11"));
    EXPECT_TRUE(ClickCopyVideoExifDateToCreateDateAction(video, {}, storage).skipped);
}
