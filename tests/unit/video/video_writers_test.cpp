// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <tuple>

#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/video/video_items.h"
#include "core/video/video_metadata_rules.h"
#include "core/video/video_writers.h"
#include "metadata_test_items.h"
#include "support/media_fixtures.h"

namespace {

IKImageItem videoAt(const QString& path) {
    IKImageItem item;
    item.filePath = path;
    item.fileName = QFileInfo(path).fileName();
    return item;
}

const StorageContext kStorage{"/store", false, ""};

}  // namespace

// A new value replaces its field in every key space the file holds it in, so
// that no reader finds an older value; other items follow unchanged.
TEST(VideoItems, NewValueReplacesItsFieldInEveryKeySpace) {
    const struct {
        const char* name;
        MetadataItem newItem;
        VideoFileType type;
        QList<MetadataItem> existing;
        QStringList expected;  // identifiers; each of the field's carries the new value
    } cases[] = {
        {"title",
         VideoItems::title("new"),
         VideoFileType::AppleM4V,
         {item("mdta/com.apple.quicktime.title", "keys"), item("udta/%A9cmt", "comment"),
          item("itsk/%A9nam", "itunes", "UTF-8", "eng"),
          item("udta/%A9nam", "user data", {}, "eng"), item("mdta/title", "bare key"),
          item("uiso/titl", "3gpp"), item("id3/TIT2", "id3")},
         {"itsk/%A9nam", "mdta/com.apple.quicktime.title", "udta/%A9nam", "mdta/title", "uiso/titl",
          "udta/%A9cmt"}},
        {"common item in a movie",
         VideoItems::publisher("new"),
         VideoFileType::QuickTimeMovie,
         {item("itsk/%A9pub", "itunes"), item("mdta/com.apple.quicktime.publisher", "keys")},
         {"common/publisher", "itsk/%A9pub"}},
        {"location",
         VideoItems::location("new"),
         VideoFileType::AppleM4V,
         {item("udta/%A9xyz", "+1+2/"), item("mdta/com.apple.quicktime.location.ISO6709", "+1+2/")},
         {"uiso/loci", "udta/%A9xyz", "mdta/com.apple.quicktime.location.ISO6709"}},
        {"keywords as text outside the keys",
         VideoItems::keywords("new"),
         VideoFileType::AppleM4V,
         {item("uiso/kywd", "a,b"), item("itsk/keyw", "a")},
         {"mdta/com.apple.quicktime.keywords", "uiso/kywd", "itsk/keyw"}},
        {"date, with the year box",
         VideoItems::make("uiso", "date", "uiso/date", "new"),
         VideoFileType::AppleM4V,
         {item("itsk/%A9day", "2001"), item("uiso/yrrc", "2001"), item("udta/%A9cmt", "c")},
         {"uiso/date", "itsk/%A9day", "uiso/yrrc", "udta/%A9cmt"}},
        {"an empty value removes the field everywhere",
         VideoItems::title(""),
         VideoFileType::AppleM4V,
         {item("udta/%A9nam", "a"), item("mdta/title", "b"), item("itsk/%A9ART", "c")},
         {"itsk/%A9nam", "itsk/%A9ART"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QList<MetadataItem> merged = VideoItems::merge({c.newItem}, c.existing, c.type);
        EXPECT_EQ(identifiers(merged), c.expected);
        for (const MetadataItem& m : merged) {
            if (VideoItems::fieldOf(m, c.type) != VideoItems::fieldOf(c.newItem, c.type)) continue;
            EXPECT_EQ(m.value.typeId() == QMetaType::QByteArray
                          ? QString::fromUtf8(m.value.toByteArray())
                          : m.value.toString(),
                      c.newItem.value.toString().isEmpty() ? QString() : QString("new"))
                << m.identifier.toStdString();
        }
    }
    // The place keeps its language.
    const QList<MetadataItem> merged = VideoItems::merge(
        {VideoItems::title("t")}, {item("udta/%A9nam", "a", {}, "fra")}, VideoFileType::AppleM4V);
    EXPECT_EQ(merged.at(1).language, "fra");
}

TEST(VideoWriters, EditorSaveWritesOnlyChangedFieldsOfEditedGroups) {
    VideoEditorState e;
    e.basicInfoChange = true;
    e.mediaTitle = "New title";
    e.oldMovieTitle = "Old title";
    e.mediaArtist = e.oldMovieArtist = "Same artist";
    e.mediaMake = "A director";          // the director field
    e.mediaReleaseYear = "A publisher";  // changed, but its group was not edited
    const QList<MetadataItem> existing{item("itsk/%A9nam", "Old title"),
                                       item("mdta/com.apple.quicktime.creationdate", "2001")};
    const VideoWriteJob job =
        SaveChangedVideoExifDateAction(videoAt("/in/clip.mp4"), e, existing, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"itsk/%A9nam", "mdta/com.apple.quicktime.director",
                           "mdta/com.apple.quicktime.creationdate"}));
    EXPECT_EQ(valueOf(job.request.metadata, "itsk/%A9nam"), "New title");
    EXPECT_EQ(job.request.outputPath + job.fallbackCopyPath, "/store/clip.mp4/store/clip.mp4");
    EXPECT_EQ(job.request.fileType, VideoFileType::AppleM4V);
    EXPECT_FALSE(job.newDate.isValid());  // created date unchanged: the source's own dates
}

// The file's own location and picture go back only when changed: written
// from the editor's form, a location loses its hemisphere and the picture
// replaces every cover of the file.
TEST(VideoWriters, LocationAndArtworkOnlyWhenChanged) {
    const QList<MetadataItem> existing{item("uiso/loci", "-33.8688+151.2093+000.000/"),
                                       item("itsk/covr", noisePicture("PNG", 4), "public.png")};
    IKImageItem record = videoAt("/in/a.mov");
    applyVideoMetadata(record, existing, false);
    VideoEditorState e = videoEditorStateFor(record);
    VideoWriteJob job = SaveChangedVideoExifDateAction(record, e, existing, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata), identifiers(existing));

    e.mediaLatitude = "48.8566";
    e.mediaLongtitude = "2.3522";
    e.mediaAatitude = "";
    e.mediaImage = QImage(8, 8, QImage::Format_RGB32);
    job = SaveChangedVideoExifDateAction(record, e, existing, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata), (QStringList{"uiso/loci", "common/artwork"}));
    EXPECT_EQ(valueOf(job.request.metadata, "uiso/loci"), "+48.8566+2.3522+");
    const QByteArray tiff = job.request.metadata[1].value.toByteArray();
    EXPECT_TRUE(tiff.startsWith("II*") || tiff.startsWith("MM")) << "artwork is TIFF data";
}

TEST(VideoWriters, ShootDateRewritesEveryDateItemAndPicksTheOutputType) {
    VideoEditorState e;
    e.cameraInfoChange = true;
    e.mediaShootDate = "2022:02:02 10:00:00";
    const QList<MetadataItem> withQuickTime{item("uiso/date", "a"), item("udta/date", "b"),
                                            item("mdta/com.apple.quicktime.creationdate", "c")};
    VideoWriteJob job =
        SaveChangedVideoExifDateAction(videoAt("/in/x.mp4"), e, withQuickTime, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"uiso/date", "udta/date", "mdta/com.apple.quicktime.creationdate"}));
    for (const auto& i : job.request.metadata) EXPECT_EQ(i.value.toString(), e.mediaShootDate);
    EXPECT_EQ(job.request.fileType, VideoFileType::QuickTimeMovie);  // whatever the extension

    job = SaveChangedVideoExifDateAction(videoAt("/in/x.mov"), e, {item("itsk/%A9nam", "t")},
                                         kStorage);
    EXPECT_EQ(identifiers(job.request.metadata), (QStringList{"uiso/date", "itsk/%A9nam"}));
    EXPECT_EQ(job.request.fileType, VideoFileType::AppleM4V);

    // The same shoot date as before writes no date item at all.
    e.oldMovieShootDate = e.mediaShootDate;
    job = SaveChangedVideoExifDateAction(videoAt("/in/x.mov"), e, withQuickTime, kStorage);
    EXPECT_EQ(job.request.fileType, VideoFileType::AppleM4V);
    EXPECT_EQ(valueOf(job.request.metadata, "uiso/date"), "a");
}

TEST(VideoWriters, ChangedCreatedDateSetsBothFileDates) {
    VideoEditorState e;
    e.mediaCreatedDate = "2015:06:07 08:09:10";
    VideoWriteJob job = SaveChangedVideoExifDateAction(videoAt("/in/x.mp4"), e, {}, kStorage);
    EXPECT_EQ(job.newDate, dateFromText("2015:06:07 08:09:10"));
    e.mediaCreatedDate = "not a date";
    job = SaveChangedVideoExifDateAction(videoAt("/in/x.mp4"), e, {}, kStorage);
    EXPECT_FALSE(job.newDate.isValid());
}

TEST(VideoWriters, ImportedDictionaryUsesItsKeysAndCameraDate) {
    VideoEditorState remembered;
    remembered.oldMovieTitle = "Same";
    const QVariantMap exif{
        {"Title", "Same"},  {"Artist", "New artist"}, {"Camera Date", "2010:01:01 00:00:00"},
        {"Latitude", "10"}, {"Longitude", "20"},      {"Publisher", "ignored"}};
    const VideoWriteJob job =
        ReloadChangedVideoExifDateAction(videoAt("/in/v.m4v"), exif, remembered, {}, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"itsk/%A9ART", "uiso/date", "uiso/loci"}));
    EXPECT_EQ(job.newDate, dateFromText("2010:01:01 00:00:00"));
}

TEST(VideoWriters, XmpBatchWritesUniversalTimeAndReplacesTheSource) {
    const QDateTime when(QDate(2021, 3, 4), QTime(5, 6, 7), QTimeZone::utc());
    EXPECT_EQ(xmpDateText(when), "2021:03:04 05:06:07");
    EXPECT_EQ(xmpDateText(when.toLocalTime()), "2021:03:04 05:06:07");
    EXPECT_EQ(xmpDateText(QDateTime()), "");
    const VideoWriteJob job = SaveChangedVideoExifWith("/in/s.mov", "T", "", "1", "2", when, {});
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"itsk/%A9nam", "uiso/date", "uiso/loci"}));
    EXPECT_TRUE(job.replaceSource && job.fallbackCopyPath.isEmpty());
    EXPECT_EQ(job.request.outputPath, "/in/.s.mov.new");  // beside it: the rename stays on one disk
    const VideoWriteJob undated =
        SaveChangedVideoExifWith("/in/s.mov", "", "", "", "", QDateTime(), {});
    EXPECT_TRUE(undated.request.metadata.isEmpty());
}

TEST(VideoWriters, BatchDateChangeReplacesTheDateWhereverItLives) {
    const QList<MetadataItem> existing{item("itsk/%A9nam", "t"), item("udta/date", "old"),
                                       item("mdta/com.apple.quicktime.creationdate", "old")};
    VideoWriteJob job =
        SetVideoFileWithFilePath("/in/a.mp4", "/out/a.mp4", "2000:01:01 00:00:00", existing);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"uiso/date", "udta/date", "mdta/com.apple.quicktime.creationdate",
                           "itsk/%A9nam"}));
    for (int i : {0, 1, 2}) EXPECT_EQ(job.request.metadata[i].value, "2000:01:01 00:00:00");
    EXPECT_EQ(job.request.fileType, VideoFileType::QuickTimeMovie);
    job = SetVideoFileWithFilePath("/in/a.mp4", "/out/a.mp4", "", existing);
    EXPECT_EQ(identifiers(job.request.metadata), (QStringList{"uiso/date", "itsk/%A9nam"}));
    EXPECT_EQ(job.request.metadata[0].value, "");  // left out by the encoder
}

TEST(VideoWriters, RemovalEmptiesHeldFieldsAndMirrorsFolders) {
    IKImageItem item = videoAt("/media/trip/day1/a.mov");
    std::tie(item.fileTitle, item.fileKeyWords, item.shootDateStr) = std::tuple{"t", "k", "2020"};
    std::tie(item.filelatitude, item.filelongtitude) = std::pair{33.8, 151.2};
    const StorageContext folder{"/store", true, "/media"};
    VideoWriteJob job = RemoveVideoExifDateAction(item, {}, {}, folder);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"itsk/%A9nam", "uiso/kywd", "uiso/date", "uiso/loci"}));
    for (const auto& i : job.request.metadata) EXPECT_TRUE(i.value.toString().isEmpty());
    EXPECT_EQ(job.request.fileType, VideoFileType::AppleM4V);
    EXPECT_EQ(job.fallbackCopyPath, "/store/a.mov");
    // A southern, western or zero position is left in place (the record
    // holds magnitudes; the signs stand beside them).
    for (const auto& [latitudeSign, longitudeSign, latitude] :
         {std::tuple{"-", "+", 33.8}, {"+", "-", 33.8}, {"+", "+", 0.0}}) {
        item.latitudeFormat = latitudeSign;
        item.longtitudeFormat = longitudeSign;
        item.filelatitude = latitude;
        job = RemoveVideoExifDateAction(item, {}, {}, kStorage);
        EXPECT_FALSE(identifiers(job.request.metadata).contains("uiso/loci")) << latitudeSign;
    }
    EXPECT_EQ(job.request.outputPath, "/store/a.mov");
}

// The location strip leaves out every location item, whatever its key space
// or key, and keeps every other item in its order; the tracks' location boxes
// go too, and the file keeps its own type box.
TEST(VideoWriters, LocationStripLeavesOutEveryPlaceAndNothingElse) {
    // clang-format off
    const QList<MetadataItem> existing{
        item("udta/%A9xyz", "+1+2/"), item("mdta/com.apple.quicktime.location.ISO6709", "+1+2/"),
        item("mdta/location.ISO6709", "+1+2/"), item("mdta/com.apple.quicktime.location.name", "Home"),
        item("mdta/com.apple.quicktime.location.accuracy.horizontal", "5"), item("uiso/loci", "place"),
        item("itsk/%A9xyz", "+1+2/"), item("udta/%A9nam", "title"), item("mdta/com.apple.quicktime.make", "Maker"),
        item("mdta/com.apple.quicktime.locationish", "kept"), item("udta/XMP_", "xmp")};
    // clang-format on
    const VideoWriteJob job =
        RemoveVideoLocationAction(videoAt("/media/a.mov"), existing, kStorage);
    EXPECT_EQ(identifiers(job.request.metadata),
              (QStringList{"udta/%A9nam", "mdta/com.apple.quicktime.make",
                           "mdta/com.apple.quicktime.locationish", "udta/XMP_"}));
    EXPECT_TRUE(job.request.dropTrackLocations && job.request.keepFileTypeBox);
    EXPECT_FALSE(job.request.dropAllMetadataBoxes || !job.fallbackCopyPath.isEmpty());
    EXPECT_EQ(job.request.outputPath, "/store/a.mov");
}

TEST(VideoWriters, MirroredOutputPathCreatesSubFolders) {
    QTemporaryDir tmp;
    const QString out = mirroredOutputPath(tmp.path(), "/media/trip/day1/a.mov", true, "/media");
    EXPECT_EQ(out, tmp.path() + "/trip/day1/a.mov");
    EXPECT_TRUE(QDir(tmp.path() + "/trip/day1").exists());
    // A file outside the imported folder keeps its whole path.
    EXPECT_EQ(mirroredOutputPath(tmp.path(), "/elsewhere/b.mov", true, "/media"),
              tmp.path() + "/elsewhere/b.mov");
    EXPECT_EQ(mirroredOutputPath("/s", "/x/y/c.mp4", false, ""), "/s/c.mp4");
}

class VideoWriteJobTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto recorder = std::make_unique<RecordingDesktopIntegration>();
        desktop = recorder.get();
        DesktopIntegration::setInstance(std::move(recorder));
        source = tmp.path() + "/src.mov";
        ASSERT_TRUE(writeFile(source, "source bytes"));
        setFileDates(source, QDateTime(), dateFromText("2012:12:12 12:12:12"));
    }
    VideoWriteJob job(const QString& output) {
        VideoWriteJob j;
        j.request.sourcePath = source;
        j.request.outputPath = output;
        j.sourceDates = readFileDates(source);
        return j;
    }
    QTemporaryDir tmp;
    QString source;
    RecordingDesktopIntegration* desktop = nullptr;
};

TEST_F(VideoWriteJobTest, FailedExportFallsBackToACopyWithTheSourceDates) {
    const QString out = tmp.path() + "/out.mov";
    VideoWriteJob j = job(out);
    j.fallbackCopyPath = out;
    const VideoWriteResult r = runVideoWriteJob(j, tmp.path(), [](const PassthroughExport&) {
        return ExportOutcome(ExportStatus::Failed, "the disk is full");
    });
    EXPECT_EQ(r.outputPath, out);
    EXPECT_EQ(r.message().toStdString(),
              "src.mov could not be saved: the disk is full; an unchanged copy was saved as " +
                  out.toStdString());
    EXPECT_EQ(readFile(out), "source bytes");
    EXPECT_EQ(readFileDates(out).modification, dateFromText("2012:12:12 12:12:12"));
    EXPECT_EQ(desktop->revealed(), QStringList{out});
}

TEST_F(VideoWriteJobTest, ReplacingWriterMovesTheOutputOverTheSourceOnlyOnSuccess) {
    const QString out = tmp.path() + "/out.mov";
    VideoWriteJob j = job(out);
    j.replaceSource = true;
    j.reveal = false;
    runVideoWriteJob(j, tmp.path(), [](const PassthroughExport&) { return ExportStatus::Failed; });
    EXPECT_TRUE(QFile::exists(source));
    EXPECT_FALSE(QFile::exists(out));
    runVideoWriteJob(j, tmp.path(), [](const PassthroughExport& e) {
        return writeFile(e.outputPath, "new bytes") ? ExportStatus::Completed
                                                    : ExportStatus::Failed;
    });
    EXPECT_EQ(readFile(source), "new bytes");
    EXPECT_FALSE(QFile::exists(out) || isOutputOfOurs(source));  // the user's file again
    EXPECT_TRUE(desktop->revealed().isEmpty());
}
