// SPDX-License-Identifier: GPL-3.0-or-later
// The property dictionary over Exiv2: exiftool's tags read back under the
// dictionary's names, and our writes read back by exiftool.
#include <QBuffer>
#include <QImageReader>

#include "core/photo/photo_properties.h"
#include "photo_fixture.h"

namespace {

// A JPEG with the tags a camera and a photo manager leave.
QString taggedJpeg() {
    return exiftoolFixture(QStringLiteral("photo-tagged.jpg"),
                           photoPicture(QStringLiteral("photo-base.jpg"), "JPEG"),
                           QStringList{"-Make=Canon",
                                       "-Model=EOS 5D",
                                       "-Artist=Zoë 山田",
                                       "-Orientation#=6",
                                       "-XResolution=300",
                                       "-YResolution=300",
                                       "-ResolutionUnit=inches",
                                       "-DateTimeOriginal=2020:01:02 03:04:05",
                                       "-CreateDate=2020:01:02 03:04:06",
                                       "-FNumber=2.8",
                                       "-ISO=200",
                                       "-UserComment=note",
                                       "-LensModel=EF 50mm",
                                       "-GPSLatitude=33.5",
                                       "-GPSLatitudeRef=S",
                                       "-GPSLongitude=151.25",
                                       "-GPSLongitudeRef=W",
                                       "-GPSAltitude=10",
                                       "-GPSAltitudeRef#=1",
                                       "-GPSSpeed=5",
                                       "-GPSTimeStamp=07:08:09.5",
                                       "-GPSDateStamp=2021:05:06",
                                       "-IPTC:CodedCharacterSet=UTF8",
                                       "-IPTC:ObjectName=Été",
                                       "-IPTC:Keywords=sea",
                                       "-IPTC:Keywords=夏",
                                       "-IPTC:By-line=Ann"});
}

// The bytes of a one-strip TIFF's picture.
QByteArray rawStrip(const QString& path) {
    const QJsonObject t = exiftoolTags(path, {"-n"});
    const QByteArray strip =
        readFile(path).mid(t["IFD0:StripOffsets"].toInt(), t["IFD0:StripByteCounts"].toInt());
    return strip.isEmpty() ? QByteArray("no strip") : strip;
}

}  // namespace

TEST(PhotoProperties, ExiftoolValuesReadUnderDictionaryNames) {
    const PhotoSource source = readPhotoProperties(taggedJpeg());
    ASSERT_TRUE(source.ok()) << source.problem.toStdString();
    EXPECT_EQ(source.type, "jpeg");
    EXPECT_TRUE(source.writable);
    const PropertyDictionary& p = source.properties;
    const struct {
        QString group, key;
        QVariant expected;
    } cases[] = {
        {"", "PixelWidth", 64},
        {"", "PixelHeight", 48},
        {"", "Orientation", 6},
        {"", "DPIWidth", 300.0},
        {"", "ColorModel", "RGB"},
        {"", "Depth", 8},
        {PhotoGroup::TIFF, "Make", "Canon"},
        {PhotoGroup::TIFF, "Artist", "Zoë 山田"},
        {PhotoGroup::Exif, "DateTimeOriginal", "2020:01:02 03:04:05"},
        {PhotoGroup::Exif, "DateTimeDigitized", "2020:01:02 03:04:06"},
        {PhotoGroup::Exif, "FNumber", 2.8},
        {PhotoGroup::Exif, "ISOSpeedRatings", 200},
        {PhotoGroup::Exif, "UserComment", "note"},
        {PhotoGroup::Exif, "LensModel", "EF 50mm"},
        {PhotoGroup::GPS, "Latitude", 33.5},
        {PhotoGroup::GPS, "LatitudeRef", "S"},
        {PhotoGroup::GPS, "Longitude", 151.25},
        {PhotoGroup::GPS, "LongitudeRef", "W"},
        {PhotoGroup::GPS, "Altitude", 10.0},
        {PhotoGroup::GPS, "AltitudeRef", 1},
        {PhotoGroup::GPS, "TimeStamp", "07:08:09.5"},
        {PhotoGroup::GPS, "DateStamp", "2021:05:06"},
        {PhotoGroup::IPTC, "ObjectName", "Été"},
        {PhotoGroup::IPTC, "Keywords", QVariantList{"sea", "夏"}},
        {PhotoGroup::IPTC, "By-line", "Ann"},
        {PhotoGroup::JFIF, "JFIFVersion", QVariantList{1, 1}},
    };
    for (const auto& c : cases) {
        const QVariant got = c.group.isEmpty() ? p.value(c.key) : p[c.group].toMap().value(c.key);
        EXPECT_EQ(got.toString(), c.expected.toString()) << (c.group + c.key).toStdString();
        EXPECT_EQ(got.toList(), c.expected.toList()) << (c.group + c.key).toStdString();
    }
}

TEST(PhotoProperties, HostileBytesAnswerAProblem) {
    const QByteArray jpeg = readFile(taggedJpeg());
    QByteArray loop = multiPageTiff(5);
    loop.replace(loop.size() - 64 - 4, 4, QByteArray("\x08\0\0\0", 4));  // page 2 points to page 1
    QByteArray huge = multiPageTiff(5);
    huge.replace(10 + 12 * 5 + 4, 4, QByteArray("\xff\xff\xff\x0f", 4));  // 2^28 strip offsets
    // A resource longer than the file; a GIF of extensions to its end.
    const QByteArray irb =
        QByteArray("\xff\xd8\xff\xed\0\x1cPhotoshop 3.0\0008BIM\x04\x0a\0\0\xff\xff\xff\xff", 32) +
        jpeg.mid(2);
    const QByteArray gif = QByteArray("GIF89a\x10\0\x10\0\xf7", 11) + QByteArray(800, '\x21');
    const QByteArray cases[] = {
        {}, jpeg.left(jpeg.size() / 3), "GIF89a garbage", loop, huge, QByteArray(4096, '\xff'), irb,
        gif};
    for (const QByteArray& bytes : cases) {
        const PhotoSource source = readPhotoPropertiesFromData(bytes);  // must return
        EXPECT_TRUE(source.ok() || !source.problem.isEmpty());
    }
    EXPECT_FALSE(readPhotoProperties(QStringLiteral("/nonexistent.jpg")).ok());
}

// Our writes read back by exiftool, non-Latin texts included, each type for
// the groups it can hold; the picture decodes to the same pixels.
TEST(PhotoProperties, WritesReadBackByExiftool) {
    const QString base = QStringLiteral("photo-base");
    const struct {
        QString path;
        QString titleTag, keywordsTag;
    } cases[] = {
        {photoPicture(base + ".jpg", "JPEG"), "IPTC:ObjectName", "IPTC:Keywords"},
        {photoPicture(base + ".png", "PNG"), "IPTC:ObjectName", "IPTC:Keywords"},
        {photoPicture(base + ".tif", "TIFF"), "IPTC:ObjectName", "IPTC:Keywords"},
        {photoPicture(base + ".webp", "WEBP"), "XMP-dc:Title", "XMP-dc:Subject"},
        {dngPicture("photo-base.dng"), "IPTC:ObjectName", "IPTC:Keywords"},
    };
    PropertyEdit edit;
    edit.values[PhotoGroup::TIFF] = {{"Artist", "Åsa 山田"}, {"Copyright", "© 2024"}};
    edit.values[PhotoGroup::Exif] = {{"UserComment", "コメント"}};
    edit.values[PhotoGroup::IPTC] = {{"ObjectName", "夏の海"},
                                     {"Keywords", QVariantList{"海", "été"}}};
    edit.values[PhotoGroup::GPS] = {
        {"Latitude", 33.5}, {"LatitudeRef", "S"}, {"Altitude", 12.5}, {"AltitudeRef", 1}};
    QTemporaryDir dir;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        ASSERT_FALSE(c.path.isEmpty());
        const QString out = dir.filePath(QFileInfo(c.path).fileName());
        ASSERT_EQ(writePhotoCopy(c.path, out, edit).status, PhotoWriteStatus::Written);
        const QJsonObject tags = exiftoolTags(out, {"-n"});
        EXPECT_EQ(tags["IFD0:Artist"].toString(), "Åsa 山田");
        EXPECT_EQ(tags["IFD0:Copyright"].toString(), "© 2024");
        EXPECT_EQ(tags["ExifIFD:UserComment"].toString(), "コメント");
        EXPECT_EQ(tags[c.titleTag].toString(), "夏の海");
        EXPECT_EQ(tags[c.keywordsTag].toVariant(), QVariantList({"海", "été"}));
        const QVariantMap iptc = readPhotoProperties(out).properties[PhotoGroup::IPTC].toMap();
        EXPECT_EQ(iptc["ObjectName"], "夏の海");  // from XMP where IPTC has no place
        EXPECT_EQ(iptc["Keywords"], QVariantList({"海", "été"}));
        EXPECT_DOUBLE_EQ(tags["Composite:GPSLatitude"].toDouble(), -33.5);
        EXPECT_DOUBLE_EQ(tags["Composite:GPSAltitude"].toDouble(), -12.5);
        const QImage before(c.path), after(out);
        // Qt decodes all but the DNG, whose raw data are compared as bytes.
        EXPECT_TRUE(before.isNull() ? rawStrip(c.path) == rawStrip(out) : before == after);
    }
}

// Exiv2 keeps four pages of a TIFF: a fifth would be lost, so such a file
// is refused and nothing is written.
TEST(PhotoProperties, MultiPageTiffKeepsEveryPageOrIsRefused) {
    QTemporaryDir dir;
    PropertyEdit edit;
    edit.values[PhotoGroup::TIFF] = {{"Artist", "A"}};
    for (const int pages : {4, 5}) {
        const QString source = dir.filePath("pages.tif"),
                      out = dir.filePath(QString::number(pages));
        ASSERT_TRUE(writeFile(source, multiPageTiff(pages)));
        EXPECT_EQ(readPhotoProperties(source).imageCount, pages);
        const PhotoWriteOutcome outcome = writePhotoCopy(source, out, edit);
        if (pages == 5) {
            EXPECT_EQ(outcome.status, PhotoWriteStatus::Failed);
            EXPECT_FALSE(QFile::exists(out));
            continue;
        }
        ASSERT_EQ(outcome.status, PhotoWriteStatus::Written);
        EXPECT_EQ(readPhotoProperties(out).properties[PhotoGroup::TIFF].toMap()["Artist"], "A");
        for (int page = 0; page < pages; ++page) {
            QImageReader reader(out);
            reader.jumpToImage(page);
            EXPECT_EQ(reader.read().pixelColor(0, 0).red(), page * 40);
        }
    }
}

// The groups beside the main ones, each from a file made here; a removal of
// "{8BIM}" and "{ExifAux}" takes what they are made of and keeps IPTC.
TEST(PhotoProperties, AuxiliaryGroupsReadAndRemoved) {
    const QString jpeg = exiftoolFixture(
        "photo-aux.jpg", photoPicture("photo-base.jpg", "JPEG"),
        QStringList{"-LensModel=EF 50mm", "-SerialNumber=A123", "-LensInfo=24 70 2.8 4",
                    "-XMP-aux:Firmware=1.0.3", "-XMP-aux:FlashCompensation=-2/3",
                    "-IPTC:Keywords=k", "-Photoshop:CopyrightFlag=True", "-Photoshop:URL=x"});
    const QString gif = ffmpegFixture(
        "photo-anim.gif", words("-f lavfi -i testsrc=size=32x24:rate=4 -frames:v 3 -loop 0"));
    const struct {
        QString path, group, key;
        QVariant expected;
    } cases[] = {
        {jpeg, PhotoGroup::ExifAux, "LensModel", "EF 50mm"},
        {jpeg, PhotoGroup::ExifAux, "SerialNumber", "A123"},
        {jpeg, PhotoGroup::ExifAux, "LensInfo", QVariantList{24.0, 70.0, 2.8, 4.0}},
        {jpeg, PhotoGroup::ExifAux, "Firmware", "1.0.3"},
        {jpeg, PhotoGroup::ExifAux, "FlashCompensation", -2.0 / 3},
        {jpeg, PhotoGroup::EightBIM, "ImageResources", QVariantList{0x040a, 0x040b}},
        {gif, PhotoGroup::GIF, "CanvasPixelWidth", 32},
        {gif, PhotoGroup::GIF, "HasGlobalColorMap", true},
        {gif, PhotoGroup::GIF, "LoopCount", 0},
        {gif, PhotoGroup::GIF, "DelayTime", 0.25},
        {dngPicture("photo-base.dng"), PhotoGroup::Raw, "UniqueCameraModel", "TestCam"},
        {dngPicture("photo-base.dng"), PhotoGroup::Raw, "DNGVersion", QVariantList{1, 4, 0, 0}},
        {dngPicture("photo-base.dng"), PhotoGroup::TIFF, "UniqueCameraModel", {}},
    };
    for (const auto& c : cases) {
        const QVariant got = readPhotoProperties(c.path).properties[c.group].toMap().value(c.key);
        EXPECT_EQ(got.toString(), c.expected.toString()) << (c.group + c.key).toStdString();
        EXPECT_EQ(got.toList(), c.expected.toList()) << (c.group + c.key).toStdString();
    }
    QTemporaryDir dir;
    PropertyEdit edit;
    edit.removedGroups = QStringList{PhotoGroup::EightBIM, PhotoGroup::ExifAux};
    ASSERT_EQ(writePhotoCopy(jpeg, dir.filePath("out.jpg"), edit).status,
              PhotoWriteStatus::Written);
    const QJsonObject t = exiftoolTags(dir.filePath("out.jpg"));
    for (const char* gone :
         {"Photoshop:URL", "Photoshop:CopyrightFlag", "XMP-aux:Firmware", "ExifIFD:SerialNumber"})
        EXPECT_FALSE(t.contains(gone)) << gone;
    EXPECT_EQ(t["IPTC:Keywords"].toString(), "k");
    EXPECT_EQ(QImage(dir.filePath("out.jpg")), QImage(jpeg));
}
