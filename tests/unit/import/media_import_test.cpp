// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTimeZone>

#include <sys/stat.h>

#include <limits>

#include "core/import/item_json.h"
#include "core/import/media_import.h"
#include "library/ffmpeg_open_count.h"
#include "support/media_fixtures.h"

namespace {

class RecordingSink : public ImportSink {
public:
    void itemImported(const IKImageItemPtr& item) override { items.append(item); }
    void pathFinished() override { ++finished; }
    void folderImported(const QString& parent) override { folders.append(parent); }
    void pathMissing(const QString& path) override { missing.append(path); }

    QStringList names() const {
        QStringList out;
        for (const auto& i : items) out.append(i->fileName);
        out.sort();
        return out;
    }

    IKImageItemList items;
    int finished = 0;
    QStringList folders;
    QStringList missing;
};

class MediaImportTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tmp.isValid());
        clip = clipFixture("import-clip.mp4", 160, 120, 1.0);
        ASSERT_FALSE(clip.isEmpty()) << lastToolOutput().toStdString();
    }
    QString place(const QString& relative) {
        const QString path = tmp.path() + "/" + relative;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile::copy(clip, path);
        return path;
    }
    QTemporaryDir tmp;
    QString clip;
};

}  // namespace

TEST_F(MediaImportTest, FolderScanReachesEveryDepthAndHiddenFilesAndSkipsOtherKinds) {
    for (const QString& path : words("top.mp4 a/b/c/deep.MOV .hidden/inside.m4v a/.secret.mkv "
                                     "a/photo.jpg a/readme a/song.mp3"))
        place(path);
    RecordingSink sink;
    MediaImporter importer(sink);
    importer.importMediaItemsThreader({tmp.path()});
    EXPECT_EQ(sink.names(),
              (QStringList{".secret.mkv", "deep.MOV", "inside.m4v", "song.mp3", "top.mp4"}));
    EXPECT_EQ(sink.finished, 1);  // one path given, one refresh
    EXPECT_EQ(sink.folders, QStringList{QFileInfo(tmp.path()).absolutePath()});
}

TEST_F(MediaImportTest, LinkCycleEndsAndLinkedFoldersAreScannedOnce) {
    place("x/one.mp4");
    ASSERT_TRUE(QFile::link(tmp.path() + "/x", tmp.path() + "/x/again"));
    ASSERT_TRUE(QFile::link(tmp.path(), tmp.path() + "/x/up"));
    RecordingSink sink;
    MediaImporter importer(sink);
    importer.ScanMediasItemWithinFolder(tmp.path());
    EXPECT_EQ(sink.names(), QStringList{"one.mp4"});
}

TEST_F(MediaImportTest, FilesGivenDirectlyAreEachRefreshedAndMissingOnesReported) {
    const QString a = place("a.mp4");
    const QString img = place("b.png");
    RecordingSink sink;
    MediaImporter importer(sink);
    importer.importMediaItemsThreader({a, img, tmp.path() + "/gone.mov", a});
    // Importing the same file twice lists it twice.
    ASSERT_EQ(sink.items.size(), 2);
    EXPECT_EQ(sink.items[0]->filePath, a);
    EXPECT_EQ(sink.finished, 4);  // skipped and missing paths refresh too
    EXPECT_EQ(sink.missing, QStringList{tmp.path() + "/gone.mov"});
    EXPECT_TRUE(sink.folders.isEmpty());
}

TEST_F(MediaImportTest, VideoRecordCarriesFileFactsAndProbedFacts) {
    const QString path = place("facts.mp4");
    const int opensBefore = ffmpegOpenCount();
    const IKImageItemPtr item = MediaImporter::importFile(path, true);
    ASSERT_TRUE(item);
    EXPECT_EQ(ffmpegOpenCount() - opensBefore, 1);  // the probe and the track texts share it
    EXPECT_EQ(item->fileName + item->filePath, "facts.mp4" + path);
    EXPECT_EQ(item->fileType, "MPEG-4 video");  // the system's kind text replaces "Movie"
    EXPECT_TRUE(item->fileSize.endsWith(" KB")) << item->fileSize.toStdString();
    EXPECT_EQ(item->fileSizeBytes, QFileInfo(path).size());  // the Size column's sort key
    EXPECT_TRUE(item->fileCreateDate.isValid());
    EXPECT_EQ(item->fileCreateDateStr.size(), 19);
    EXPECT_NEAR(item->fileduration, 1.0, 0.1);
    EXPECT_EQ(item->fileduratStr, "1s");
    EXPECT_EQ(QSize(item->filePixWidth, item->filepixHeigh), QSize(160, 120));
    EXPECT_EQ(item->fileSampleRate, "44100 Hz");
    EXPECT_EQ(item->fileChannels, "1");
    EXPECT_TRUE(item->fileBitRate.endsWith(" bps"));
    // The full import replaces the probed rate text by the track's estimate
    // and adds the technical texts; the folder scan has neither.
    EXPECT_TRUE(item->audioDataRateStr.endsWith(" kb/s")) << item->audioDataRateStr.toStdString();
    EXPECT_EQ(item->videoResolutionStr, "160 X 120");
    EXPECT_EQ(item->fileVideoEncodeFormat, "H.264");
    const IKImageItemPtr scanned = MediaImporter::importFile(path, false);
    EXPECT_EQ(scanned->audioDataRateStr, scanned->fileBitRate);
    EXPECT_TRUE(scanned->videoResolutionStr.isEmpty());
    // The writers' record is not probed, but has the dates and items.
    const int opensBeforeWriting = ffmpegOpenCount();
    const IKImageItemPtr forWriting = MediaImporter::importFileForWriting(path);
    EXPECT_EQ(ffmpegOpenCount(), opensBeforeWriting);
    EXPECT_EQ(forWriting->fileCreateDateStr, item->fileCreateDateStr);
    EXPECT_EQ(forWriting->fileMetaArray.size(), item->fileMetaArray.size());
}

TEST_F(MediaImportTest, DamagedAndEmptyVideosKeepTheirFileFacts) {
    const QString empty = tmp.path() + "/empty.mp4";
    const QString garbage = tmp.path() + "/garbage.mov";
    const QString truncated = tmp.path() + "/cut.mp4";
    const QByteArray data = readFile(clip);
    ASSERT_TRUE(writeFile(empty, {}) && writeFile(garbage, QByteArray(4096, '\x7f')) &&
                writeFile(truncated, data.left(data.size() / 3)));
    for (const QString& path : {empty, garbage, truncated}) {
        const IKImageItemPtr item = MediaImporter::importFile(path, true);
        ASSERT_TRUE(item) << path.toStdString();
        EXPECT_FALSE(item->fileSize.isEmpty());
        EXPECT_FALSE(item->fileType.isEmpty());
    }
}

TEST_F(MediaImportTest, PipesDevicesAndDanglingLinksAreNotRead) {
    // Opening any of these as a movie could block for ever.
    ASSERT_EQ(::mkfifo(QFile::encodeName(tmp.path() + "/pipe.mp4").constData(), 0600), 0);
    ASSERT_TRUE(QFile::link("/dev/zero", tmp.path() + "/zero.mov"));
    ASSERT_TRUE(QFile::link(tmp.path() + "/nowhere.mp4", tmp.path() + "/dangling.mp4"));
    place("real.mp4");
    RecordingSink sink;
    MediaImporter importer(sink);
    importer.importMediaItemsThreader({tmp.path(), tmp.path() + "/pipe.mp4"});
    EXPECT_EQ(sink.names(), QStringList{"real.mp4"});
}

TEST_F(MediaImportTest, ReadingOnSeveralThreadsKeepsTheOrderAndTheRecords) {
    for (const QString& path : words("a.mp4 d/1.mp4 d/e/2.mov d/3.mkv d/skip.txt b.m4v"))
        place(path);
    auto run = [&](int threads) {
        RecordingSink sink;
        MediaImporter importer(sink);
        importer.setReadingThreads(threads);
        importer.importMediaItemsThreader(
            {tmp.path() + "/a.mp4", tmp.path() + "/d", tmp.path() + "/b.m4v"});
        QStringList records;  // the full import's technical texts, the scan's none
        for (const auto& i : sink.items)
            records << i->filePath + ' ' + i->videoResolutionStr + ' ' + i->fileduratStr;
        return records;
    };
    const QStringList one = run(1);
    EXPECT_EQ(one.size(), 5);
    EXPECT_EQ(run(3), one);
}

// The command line writes records as text directly; it must be the text
// QJsonDocument makes of the same object, escapes and number forms included.
TEST(ItemJson, DirectTextIsQJsonDocumentsText) {
    IKImageItem item;
    item.filePath = "/m/clip.mov";
    item.fileTitle = QString::fromUtf8("Quote \" back\\ tab\t nl\n \x01 del \x7f 😀 漢字 é");
    item.fileArist = QString(QChar(0xD800)) + "lone";  // a lone surrogate
    item.fileComments = QString(QChar(0xDC00));
    item.fileduration = 1.045;
    item.filePixWidth = 1920;
    item.filelatitude = -33.8688;
    item.filelongtitude = 1e-7;
    item.fileAtitude = 123456789012.5;
    item.bhasCopy = true;
    item.fileModifyDate = QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7), QTimeZone(19800));
    IKImageItem dated;
    dated.filePath = "/m/b.mp3";
    dated.fileduration = 0.1 + 0.2;
    dated.fileAtitude = 1e21;
    dated.filelatitude = std::numeric_limits<double>::infinity();
    dated.fileCreateDate = QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC);
    dated.fileModifyDate = QDateTime(QDate(2024, 7, 1), QTime(0, 0), QTimeZone(-34200));
    dated.shootDate = QDateTime(QDate(2024, 2, 29), QTime(12, 30), Qt::LocalTime);
    IKImageItem odd;  // dates Qt writes itself
    odd.filePath = "/m/c.mp3";
    odd.fileCreateDate = QDateTime(QDate(812, 1, 2), QTime(3, 4), Qt::UTC);
    odd.fileModifyDate = QDateTime(QDate(2024, 1, 2), QTime(3, 4), QTimeZone(-17762));
    for (const IKImageItem& record : {item, dated, odd}) {
        const QJsonObject object = itemToJson(record);
        for (const auto& [name, date] : {std::pair{"fileCreateDate", record.fileCreateDate},
                                         std::pair{"fileModifyDate", record.fileModifyDate},
                                         std::pair{"shootDate", record.shootDate}}) {
            const QString expected =
                date.isValid() ? date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate)
                               : QString();
            EXPECT_EQ(object.value(name).toString(), expected) << name;
        }
    }
    for (const IKImageItem& record : {item, dated, odd, IKImageItem()}) {
        for (int indent : {0, 1, 2}) {
            QByteArray expected = QJsonDocument(itemToJson(record)).toJson(QJsonDocument::Indented);
            expected.chop(1);
            const QByteArray pad(4 * indent, ' ');
            expected = pad + expected.replace("\n", "\n" + pad);
            EXPECT_EQ(itemToJsonText(record, indent), expected) << indent;
        }
    }
}
