// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QImage>
#include <QVariantMap>

#include "core/library/ik_image_item.h"
#include "core/video/video_metadata_rules.h"
#include "metadata_test_items.h"
#include "support/media_fixtures.h"

namespace {

QDateTime local(int y, int mo, int d, int h, int mi, int s) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s));
}

QStringList logLines;

}  // namespace

TEST(VideoMetadataRules, LastItemInContainerOrderWins) {
    IKImageItem a, b;
    applyVideoMetadata(a, {item("itsk/%A9nam", "iTunes"), item("id3/TIT2", "ID3")}, false);
    applyVideoMetadata(b, {item("id3/TIT2", "ID3"), item("itsk/%A9nam", "iTunes")}, false);
    EXPECT_EQ(a.fileTitle + b.fileTitle, "ID3iTunes");
    // No ranking of key spaces, and unknown identifiers change nothing.
    IKImageItem c;
    applyVideoMetadata(c,
                       {item("mdta/com.apple.quicktime.description", " spaced "),
                        item("uiso/dscp", "iso"), item("udta/%A9des", "ignored")},
                       false);
    EXPECT_EQ(c.fileDescription, "iso");
}

TEST(VideoMetadataRules, ImportAndFolderScanUseTheirOwnSets) {
    // clang-format off
    const QList<MetadataItem> items = {
        item("common/make", "CommonMake"), item("mdta/com.apple.quicktime.model", "QtModel"),
        item("common/model", "CommonModel"), item("mdta/com.apple.quicktime.software", "Soft"),
        item("uiso/dscp", "IsoDesc"), item("mdta/com.apple.proapps.manufacturer", "Maker"),
        item("itsk/%A9alb", "Album"), item("itsk/%A9ART", "Artist"), item("itsk/%A9pub", "Pub"),
        item("itsk/cprt", "Copy"), item("itsk/%A9dir", "Dir"), item("itsk/%A9prf", "Actor"),
        item("id3/TYER", "1999")};
    // clang-format on
    const auto fields = [&](bool folderScan) {
        IKImageItem r;
        applyVideoMetadata(r, items, folderScan);
        return QStringList{r.fileMake,      r.fileModel,     r.fileSoftware, r.fileDescription,
                           r.fileproducer,  r.fileAblumName, r.fileArist,    r.filePublisher,
                           r.fileCopyright, r.fileDirector,  r.fileActor,    r.fileReleasedYear};
    };
    // The manufacturer is filed as producer.
    EXPECT_EQ(fields(false),
              (QStringList{"CommonMake", "CommonModel", "Soft", "IsoDesc", "Maker", "Album",
                           "Artist", "Pub", "Copy", "Dir", "Actor", "1999"}));
    EXPECT_EQ(fields(true), (QStringList{"", "QtModel", "", "", "", "Album", "Artist", "Pub",
                                         "Copy", "Dir", "Actor", "1999"}));
}

TEST(VideoMetadataRules, PicturesDecodeOrLeaveTheImage) {
    // Each item in turn: the picture's side, or 0 where the earlier one stays.
    const QVariantMap frame{{"data", noisePicture("PNG", 5)}, {"MIMEType", "image/png"}};
    const std::pair<MetadataItem, int> cases[] = {
        {item("itsk/covr", noisePicture("PNG", 4)), 4},
        {item("itsk/covr", QByteArray("not a picture")), 0},
        {item("id3/APIC", frame), 5},
        {item("org.id3/APIC", noisePicture("PNG", 6)), 0},  // wrong identifier
        {item("id3/APIC", QVariantMap{{"data", QByteArray()}}), 0},
        {item("id3/APIC", QString("text")), 0},
        {item("id3/APIC", noisePicture("PNG", 7)), 7}};
    IKImageItem record;
    for (const auto& [picture, side] : cases) {
        const QSize before = record.fileImage.size();
        applyVideoMetadata(record, {picture}, side == 7);
        EXPECT_EQ(record.fileImage.size(), side ? QSize(side, side) : before)
            << picture.identifier.toStdString();
    }
}

TEST(VideoMetadataRules, KeywordsAreLoggedOnImportOnly) {
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& line) { logLines << line; });
    IKImageItem record;
    applyVideoMetadata(record, {item("mdta/com.apple.quicktime.keywords", QByteArray("a,b"))},
                       false);
    EXPECT_EQ(record.fileKeyWords, "a,b");
    EXPECT_TRUE(logLines.contains("[AVitem value]===QByteArray,=a,b=")) << logLines.size();
    const qsizetype before = logLines.size();
    applyVideoMetadata(record, {item("udta/%A9key", QString("c"))}, true);
    qInstallMessageHandler(previous);
    EXPECT_EQ(record.fileKeyWords, "c");
    EXPECT_EQ(logLines.size(), before);
}

// Dates and locations go through their parsers (DatesVideoText, VideoLocation)
// only from text items of their own keys: the later location bytes and the
// user-data date change nothing.
TEST(VideoMetadataRules, DatesAndLocationsOnlyFromTheirTextItems) {
    IKImageItem record;
    applyVideoMetadata(record,
                       {item("uiso/loci", "+48.8566+002.3522+035.000/"),
                        item("mdta/com.apple.quicktime.location.ISO6709", QByteArray("+1+2+3/")),
                        item("udta/date", "2020:01:02 03:04:05")},
                       false);
    EXPECT_DOUBLE_EQ(record.filelongtitude, 2.3522);
    EXPECT_EQ(record.shootDateStr, "");
}

// Named for the date suites so the zone runs of the test build pick it up.
TEST(DatesVideoText, PatternsOffsetsAndFallback) {
    struct Case {
        const char* text;
        const char* shootDateStr;
        QDateTime date;  // invalid: the date must stay as it was
    };
    const QDateTime kept = local(2000, 1, 1, 0, 0, 0);
    const Case cases[] = {
        {"2020:01:02 03:04:05", "2020:01:02 03:04:05", local(2020, 1, 2, 3, 4, 5)},
        {"2019-05-04T10:11:12+0800", "2019-05-04 10:11:12", local(2019, 5, 4, 10, 11, 12)},
        {"2020:01:02 03:04:05+00:00", "2020:01:02 03:04:05", local(2020, 1, 2, 3, 4, 5)},
        {"2019-05-04 10:11:12-0700", "2019-05-04 10:11:12", local(2019, 5, 4, 10, 11, 12)},
        {"2019:05:04T10:11:12-07:00", "2019-05-04 10:11:12", local(2019, 5, 4, 10, 11, 12)},
        {"2020-01-02T03:04:05Z", "2020-01-02 03:04:05Z", QDateTime()},
        {"2020:01:02", "2020:01:02", QDateTime()},
        {"someday+0100", "someday", QDateTime()},
        {"2020-13-45 10:11:12+0100", "2020-13-45 10:11:12", QDateTime()},
        {"2020-13-45 10:11:12-0100", "2020-13-45 10:11:12-0100", QDateTime()},
    };
    for (const Case& c : cases) {
        IKImageItem record;
        record.shootDate = kept;
        applyVideoDateText(record, QString::fromUtf8(c.text));
        EXPECT_EQ(record.shootDateStr, QString::fromUtf8(c.shootDateStr)) << c.text;
        EXPECT_EQ(record.shootDate, c.date.isValid() ? c.date : kept) << c.text;
    }
}

// The sign and magnitude of each component, the way the panel reads them.
QString locationOf(const IKImageItem& r) {
    return QString("%1%2 %3%4 %5%6")
        .arg(r.latitudeFormat)
        .arg(r.filelatitude)
        .arg(r.longtitudeFormat)
        .arg(r.filelongtitude)
        .arg(r.AtitudeFormat)
        .arg(r.fileAtitude);
}

TEST(VideoLocation, SignedComponentsInOrder) {
    // Magnitudes, never signed; a fourth sign is never reached; the longitude
    // needs an altitude after it; a single sign sets only the latitude sign;
    // text after a number is ignored and a missing number reads as zero.
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"+48.8566+002.3522+035.000/", "+48.8566 +2.3522 +35"},
        {"-37.3349-122.0090-012.345/", "-37.3349 -122.009 -12.345"},
        {"+40-075+10-99/", "+40 -75 +10"},
        {"-33.8688+151.2093/", "-33.8688 +0 0"},
        {"+48.8566", "+0 0 0"},
        {"48.8566 2.3522", "0 0 0"},
        {"", "0 0 0"},
        {"+12.5abc+x+3e2/", "+12.5 +0 +300"}};
    // clang-format on
    for (const auto& [text, expected] : cases) {
        IKImageItem record;
        applyIso6709Location(record, text);
        EXPECT_EQ(locationOf(record), expected) << text;
    }
    // An earlier longitude survives a text without an altitude.
    IKImageItem record;
    record.filelongtitude = 7.5;
    applyIso6709Location(record, "+10.0-020.0/");
    EXPECT_EQ(locationOf(record), "+10 -7.5 0");
}
