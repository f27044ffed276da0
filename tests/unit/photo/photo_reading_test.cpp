// SPDX-License-Identifier: GPL-3.0-or-later
// The segment reader's walk, the outline rows, the date check and the photo
// record of the import.
#include <QTemporaryDir>

#include <cstring>
#include <string>

#include "core/batch/date_check.h"
#include "core/import/media_import.h"
#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_file_io.h"
#include "core/photo/photo_import.h"
#include "media_fixtures.h"
#include "photo_fixture.h"

namespace {

// A big-endian JPEG whose Exif segment follows the start marker: make,
// orientation, the Exif pointer and an original date; then a thumbnail's
// end marker before the main scan.
QByteArray bigEndianJpeg() {
    QByteArray tiff("MM\0\x2a\0\0\0\x08", 8);
    const auto be16 = [&](quint16 v) { tiff += char(v >> 8), tiff += char(v & 0xff); };
    const auto be32 = [&](quint32 v) { be16(quint16(v >> 16)), be16(quint16(v)); };
    be16(3);
    be16(0x010f), be16(2), be32(6), be32(50);  // make at 50
    be16(0x0112), be16(3), be32(1), be32(0x00060000);
    be16(0x8769), be16(4), be32(1), be32(56);  // Exif directory at 56
    be32(0);                                   // ends at 46, value bound read at 50 + 8
    tiff += QByteArray("Canon\0", 6);          // 50..55
    be16(1);
    be16(0x9003), be16(2), be32(20), be32(74);  // date at 74
    be32(0);
    tiff += QByteArray("2020:01:02 03:04:05\0", 20);
    QByteArray app1 = QByteArray("Exif\0\0", 6) + tiff;
    QByteArray jpeg("\xff\xd8\xff\xe1", 4);
    jpeg += char((app1.size() + 2) >> 8), jpeg += char((app1.size() + 2) & 0xff);
    return jpeg + app1 + QByteArray("\xff\xd9\0\x0c\x03\x01\0\x02\xff\xd9", 10);
}

}  // namespace

TEST(ExifSegmentReader, WalksBigEndianDirectoriesAndFindsTheThumbnail) {
    QTemporaryDir dir;
    const QString path = dir.filePath("be.jpg");
    writeFile(path, bigEndianJpeg());
    ExifSegmentReader reader;
    reader.theImageData = "x";
    reader.ReadExifDataFromPiture(path);
    EXPECT_TRUE(reader.lines.contains("makeString====Canon"));
    EXPECT_TRUE(reader.lines.contains("Orientation====1"));
    EXPECT_TRUE(reader.lines.contains("DateTimeOriginal====2020:01:02 03:04:05"));
    EXPECT_TRUE(reader.bhasThumImage);
    EXPECT_TRUE(reader.theImageData.isEmpty());

    // Little-endian data, a PNG and a directory pointing at itself all end.
    writeFile(path, readFile(photoPicture("photo-base.png", "PNG")));
    reader.ReadExifDataFromPiture(path);
    EXPECT_EQ(reader.lines, QStringList({"8950", "8950"}));
    QByteArray loop = bigEndianJpeg();
    loop.replace(12 + 8 + 2 + 24 + 8, 4, QByteArray("\0\0\0\x08", 4));  // Exif pointer to IFD0
    writeFile(path, loop);
    reader.ReadExifDataFromPiture(path);
    EXPECT_LT(reader.lines.size(), 20000);
}

TEST(ExifSegmentReader, HexHelpersAndOutline) {
    EXPECT_EQ(getHexString("\x01\xab", 0, 3), "01ab00");
    EXPECT_EQ(DemaNumberFormHexChar("01ab", 4), 0x01ab);
    EXPECT_EQ(DemaNumberFormHexChar("01", 4), 0);
    EXPECT_EQ(GetStringFormChar("Zoë\0rest"), "Zoë");
    EXPECT_EQ(GetStringFormChar("\xff\xfe"), "");
    EXPECT_EQ(stringFromHex("4142c"), "AB");
    EXPECT_EQ(stringToHex("AB"), "4142");
    const QList<PropertyTreeRow> rows =
        propTree({{"{GPS}", QVariantMap{{"Latitude", 1.5}}}, {"PixelWidth", 10}});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].key, "PixelWidth");
    EXPECT_EQ(rows[1].key, "{GPS}");
    EXPECT_EQ(rows[1].val, "");
    EXPECT_EQ(rows[1].children[0].val, 1.5);
}

TEST(Dates, PhotoDateCheckTakesBothForms) {
    EXPECT_TRUE(CheckDateFormatWithDateString("2020:01:02 03:04:05"));
    EXPECT_TRUE(CheckDateFormatWithDateString("2020-01-02 03:04:05"));
    EXPECT_FALSE(CheckDateFormatWithDateString("2020/01/02 03:04:05"));
    EXPECT_FALSE(CheckDateFormatWithDateString("YYYY:MM:DD HH:MM:SS"));
}

TEST(PhotoImport, RecordFieldsAndFolderScan) {
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("sub"));
    const QString photo = dir.filePath("sub/p.jpg");
    QFile::copy(
        exiftoolFixture(
            "photo-import.jpg", photoPicture("photo-base.jpg", "JPEG"),
            QStringList{"-Make=Nikon", "-Artist=Ann", "-GPSLatitude=1.5", "-GPSLatitudeRef=S",
                        "-GPSLongitude=2", "-GPSLongitudeRef=E", "-IPTC:Keywords=a",
                        "-IPTC:Keywords=b", "-DateTimeOriginal=2020:01:02 03:04:05"}),
        photo);
    writeFile(dir.filePath("broken.png"), "nothing");
    struct Sink : ImportSink {
        void itemImported(const IKImageItemPtr& item) override { items << item; }
        IKImageItemList items;
    } sink, table;
    MediaImporter(sink, true).importMediaItemsThreader({dir.path()});
    MediaImporter(table).importMediaItemsThreader({dir.path()});
    EXPECT_TRUE(table.items.isEmpty());
    ASSERT_EQ(sink.items.size(), 2);
    const IKImageItemPtr item = sink.items[0]->fileName == "p.jpg" ? sink.items[0] : sink.items[1];
    EXPECT_EQ(item->fileType, "Image");
    EXPECT_EQ(item->filePixWidth, 64);
    EXPECT_EQ(item->fileMake, "Nikon");
    EXPECT_EQ(item->fileArist, "Ann");
    EXPECT_EQ(item->filelatitude, 1.5);
    EXPECT_EQ(item->latitudeFormat, "-");
    EXPECT_EQ(item->longtitudeFormat, "+");
    EXPECT_EQ(item->fileKeyWords, "a, b");
    EXPECT_EQ(item->shootDate, QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
    EXPECT_FALSE(item->fileSize.isEmpty());
    const IKImageItemPtr broken = sink.items[0] == item ? sink.items[1] : sink.items[0];
    EXPECT_FALSE(broken->fileReadProblem.isEmpty());
}

// Our read-only file source answers every read, seek and end-of-file
// question as Exiv2's memory source does over the same bytes, across its
// window's edges, and refuses counts larger than the file.
TEST(PhotoFileIo, AnswersAsExiv2sMemorySource) {
    QTemporaryDir dir;
    const QByteArray bytes = patternedBytes(40000);
    const QString path = dir.filePath("data.bin");
    ASSERT_TRUE(writeFile(path, bytes));
    PhotoFileIo ours(QFile::encodeName(path).toStdString());
    Exiv2::MemIo theirs(reinterpret_cast<const Exiv2::byte*>(bytes.constData()),
                        long(bytes.size()));
    ASSERT_EQ(ours.open(), 0);
    ASSERT_EQ(theirs.open(), 0);
    EXPECT_EQ(ours.size(), theirs.size());
    struct Step {
        char op;  // s: seek from start, c: from here, e: from the end, r: read, g: get a byte
        long n;
    };
    const Step steps[] = {{'r', 10},    {'g', 0},     {'r', 16374},  {'r', 20}, {'c', -30},
                          {'r', 17000}, {'s', 39990}, {'r', 20},     {'g', 0},  {'e', -5},
                          {'g', 0},     {'r', 5},     {'s', 40000},  {'g', 0},  {'s', 40001},
                          {'s', 16383}, {'r', 2},     {'c', -20000}, {'r', 1},  {'s', 0},
                          {'r', 40000}, {'s', 12345}, {'r', 100}};
    for (const Step& step : steps) {
        SCOPED_TRACE(std::string(1, step.op) + " " + std::to_string(step.n));
        if (step.op == 'r') {
            const Exiv2::DataBuf a = ours.read(step.n);
            const Exiv2::DataBuf b = theirs.read(step.n);
            ASSERT_EQ(a.size_, b.size_);
            EXPECT_EQ(std::memcmp(a.pData_, b.pData_, size_t(a.size_)), 0);
        } else if (step.op == 'g') {
            EXPECT_EQ(ours.getb(), theirs.getb());
        } else {
            const auto from = step.op == 's'   ? Exiv2::BasicIo::beg
                              : step.op == 'c' ? Exiv2::BasicIo::cur
                                               : Exiv2::BasicIo::end;
            EXPECT_EQ(ours.seek(step.n, from), theirs.seek(step.n, from));
        }
        EXPECT_EQ(ours.tell(), theirs.tell());
        EXPECT_EQ(ours.eof(), theirs.eof());
    }
    EXPECT_THROW(ours.read(long(bytes.size()) + 1), Exiv2::AnyError);
    EXPECT_EQ(std::memcmp(ours.mmap(), bytes.constData(), size_t(bytes.size())), 0);
    EXPECT_EQ(ours.munmap(), 0);
    EXPECT_NE(PhotoFileIo(QFile::encodeName(dir.filePath("none")).toStdString()).open(), 0);
}
