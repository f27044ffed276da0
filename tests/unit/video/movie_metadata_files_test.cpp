// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/library/ik_image_item.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/video_metadata_rules.h"
#include "metadata_test_items.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"

// Round trips through files that ffmpeg and exiftool write at test time: what
// our reader lists must agree with what the tools put in and with exiftool's
// own reading of the same file.

namespace {
const QString kClip =
    "-f lavfi -i testsrc=size=96x64:rate=10:duration=0.5 -c:v libx264 "
    "-pix_fmt yuv420p ";
}  // namespace

#define REQUIRE_TOOLS() \
    if (!haveTool("ffmpeg") || !haveTool("exiftool")) GTEST_SKIP() << "needs ffmpeg and exiftool"

TEST(VideoMetadataFiles, Mp4ItunesItemsMatchExiftool) {
    REQUIRE_TOOLS();
    // iTunes items, movie box in front of the media data.
    const QString mp4 = ffmpegFixture(
        "reader_itunes.mp4",
        words(kClip + "-metadata artist=Arty -metadata album=Alb -movflags +faststart") +
            QStringList{"-metadata", "title=Tïtle ✓"});
    ASSERT_FALSE(mp4.isEmpty()) << lastToolOutput().toStdString();
    const QString cover =
        ffmpegFixture("reader_cover.png", words("-f lavfi -i color=blue:size=24x16 -frames:v 1"));
    const QString m4v = exiftoolFixture("reader_itunes_cover.m4v", mp4,
                                        {"-ItemList:CoverArt<=" + cover, "-ItemList:Director=Dir",
                                         "-ItemList:Copyright=(c) Me", "-ItemList:Publisher=Pub"});
    ASSERT_FALSE(m4v.isEmpty()) << lastToolOutput().toStdString();

    const auto items = readMovieMetadata(m4v);
    const QJsonObject tool = exiftoolTags(m4v, {"-n"});
    EXPECT_EQ(valueOf(items, "itsk/%A9nam") + valueOf(items, "itsk/%A9pub"), "Tïtle ✓Pub");
    for (const auto& [id, tag] : {std::pair{"itsk/%A9nam", "Title"},
                                  {"itsk/%A9ART", "Artist"},
                                  {"itsk/%A9alb", "Album"},
                                  {"itsk/%A9dir", "Director"},
                                  {"itsk/cprt", "Copyright"}})
        EXPECT_EQ(valueOf(items, id), tool[QString("ItemList:") + tag].toString()) << id;
    // The picture bytes are exactly those exiftool extracts.
    ASSERT_TRUE(findItem(items, "itsk/covr"));
    EXPECT_EQ(findItem(items, "itsk/covr")->value.toByteArray(),
              exiftoolBinary(m4v, "ItemList:CoverArt"));

    IKImageItem record;
    record.filePath = m4v;
    readVideoFileMetadata(record, false);
    // Which field each item fills: VideoMetadataRules.
    EXPECT_EQ(record.fileMetaArray.size(), items.size());
    EXPECT_EQ(record.fileTitle, "Tïtle ✓");
    EXPECT_EQ(record.fileImage.size(), QSize(24, 16));
}

TEST(VideoMetadataFiles, MovQuickTimeKeysAndUserData) {
    REQUIRE_TOOLS();
    // Keys written by ffmpeg, then more keys and user data added by exiftool.
    const QString keysMov = ffmpegFixture(
        "reader_keys.mov",
        words(kClip + "-movflags use_metadata_tags -metadata com.apple.quicktime.make=Canon "
                      "-metadata com.apple.quicktime.location.ISO6709=-33.8688+151.2093+012.500/"));
    ASSERT_FALSE(keysMov.isEmpty()) << lastToolOutput().toStdString();
    const QString edited = exiftoolFixture(
        "reader_keys_edited.mov", keysMov,
        {"-Keys:Model=EOS", "-Keys:Keywords=alpha,beta", "-Keys:Description=Keys desc",
         "-Keys:CreationDate=2019:05:04 10:11:12+08:00", "-UserData:Description=Iso desc"});
    ASSERT_FALSE(edited.isEmpty()) << lastToolOutput().toStdString();

    const auto items = readMovieMetadata(edited);
    const QJsonObject tool = exiftoolTags(edited, {"-n"});
    EXPECT_EQ(valueOf(items, "mdta/com.apple.quicktime.make"), tool["Keys:Make"].toString());
    EXPECT_EQ(valueOf(items, "mdta/com.apple.quicktime.model"), tool["Keys:Model"].toString());
    EXPECT_EQ(valueOf(items, "mdta/com.apple.quicktime.keywords"), "alpha,beta");
    EXPECT_EQ(valueOf(items, "mdta/com.apple.quicktime.location.ISO6709"),
              "-33.8688+151.2093+012.500/");
    EXPECT_EQ(valueOf(items, "uiso/dscp"), "Iso desc");

    IKImageItem record;
    record.filePath = edited;
    readVideoFileMetadata(record, false);
    EXPECT_EQ(record.fileModel + record.latitudeFormat + record.shootDateStr,
              "EOS-2019-05-04 10:11:12");
    // The signed values agree with exiftool's decimal reading.
    const QStringList gps = tool["Keys:GPSCoordinates"].toString().split(' ');
    ASSERT_EQ(gps.size(), 3);
    EXPECT_NEAR(-record.filelatitude, gps[0].toDouble(), 1e-4);
    EXPECT_NEAR(record.filelongtitude, gps[1].toDouble(), 1e-4);
    EXPECT_NEAR(record.fileAtitude, gps[2].toDouble(), 1e-3);

    // The folder scan leaves out the 3GPP description; the keys one is kept.
    IKImageItem scanned;
    scanned.filePath = edited;
    readVideoFileMetadata(scanned, true);
    EXPECT_EQ(scanned.fileDescription, "Keys desc");
}

TEST(VideoMetadataFiles, ThreeGppBoxesAndLocation) {
    REQUIRE_TOOLS();
    const QString gp = ffmpegFixture(
        "reader_3gpp.3gp",
        words("-f lavfi -i testsrc=size=176x144:rate=10:duration=0.5 -c:v libx264 -metadata "
              "author=Auth -metadata album=Alb3 -metadata location=+48.8566+002.3522+035.000/") +
            QStringList{"-metadata", "title=3g title"});
    ASSERT_FALSE(gp.isEmpty()) << lastToolOutput().toStdString();
    const QString dated = exiftoolFixture("reader_3gpp_dated.3gp", gp,
                                          {"-UserData:DateTimeOriginal=2020:01:02 03:04:05"});
    ASSERT_FALSE(dated.isEmpty()) << lastToolOutput().toStdString();

    const auto items = readMovieMetadata(dated);
    EXPECT_EQ(QStringList({valueOf(items, "uiso/titl"), valueOf(items, "uiso/auth"),
                           valueOf(items, "uiso/loci")}),
              QStringList({"3g title", "Auth", "+48.8566+002.3522+035.000/"}));

    IKImageItem record;
    record.filePath = dated;
    readVideoFileMetadata(record, true);
    EXPECT_EQ(std::tuple(record.filelatitude, record.filelongtitude, record.fileAtitude),
              std::tuple(48.8566, 2.3522, 35.0));
    // exiftool stores the date with an offset; the offset is dropped.
    EXPECT_TRUE(record.shootDateStr.startsWith("2020-01-02 03:04:05") ||
                record.shootDateStr.startsWith("2020:01:02 03:04:05"))
        << record.shootDateStr.toStdString();
    EXPECT_EQ(record.shootDate, QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
}
