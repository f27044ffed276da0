// SPDX-License-Identifier: GPL-3.0-or-later
// The photo commands: what the panel shows, what an apply, a date save, a
// GPS save and a removal write, and where.
#include <QColorSpace>
#include <QDir>

#include "core/photo/photo_removal.h"
#include "photo_fixture.h"

namespace {

QString gpsJpeg() {
    return exiftoolFixture(
        QStringLiteral("photo-gps-irb.jpg"), photoPicture(QStringLiteral("photo-base.jpg"), "JPEG"),
        words("-Make=Canon -Model=EOS -GPSLatitude=33.5 -GPSLatitudeRef=S "
              "-GPSLongitude=151.2 -GPSLongitudeRef=W -GPSAltitude=10 "
              "-GPSAltitudeRef#=1 -GPSSpeed=5 -GPSSpeedRef=K -GPSMapDatum=WGS-84 "
              "-DateTimeOriginal=2020:01:02_03:04:05 -IPTC:Keywords=old "
              "-XMP-exif:GPSLatitude=33.5S -XMP-dc:Title=Secret -Orientation#=6 "
              "-Photoshop:URL=x")
            .replaceInStrings("_", " "));
}

}  // namespace

TEST(PhotoEditor, ShowsSignedPositionAndRemembersTheFields) {
    const PhotoEditorState s = photoEditorStateFor(readPhotoProperties(gpsJpeg()).properties);
    EXPECT_EQ(s.gpsLatilab, "-33.5");
    EXPECT_EQ(s.gpsLongtlab, "-151.2");
    EXPECT_EQ(s.gpsAitlab, "-10");
    EXPECT_EQ(s.cameraModelab, "EOS");
    EXPECT_EQ(s.oldCameraModeStr, "EOS");  // not the make: an apply leaves the model alone
    EXPECT_EQ(s.keywordslab, "old");
    EXPECT_EQ(s.latitudelab, s.gpsLatilab);
    double lat = 0, lon = 0;
    EXPECT_TRUE(photoPosition(readPhotoProperties(gpsJpeg()).properties, &lat, &lon));
    EXPECT_EQ(QPointF(lat, lon), QPointF(-33.5, -151.2));
    EXPECT_FALSE(photoPosition({}, &lat, &lon));
}

TEST(PhotoEditor, LocalAndCameraModeEdits) {
    PhotoEditorState e = photoEditorStateFor(readPhotoProperties(gpsJpeg()).properties);
    e.gpsInfoChange = e.basicInfoChange = true;
    e.gpsLatilab = "-10";
    e.titlelab = "T";
    e.keywordslab = "a, b,,c";
    const PropertyEdit local = applyChangeEdit(e, PhotoMode::Local);
    const QVariantMap gps = local.values[PhotoGroup::GPS];
    EXPECT_EQ(gps["Latitude"].toDouble(), 10.0);
    EXPECT_EQ(gps["LatitudeRef"], "S");
    EXPECT_FALSE(gps.contains("Longitude") || gps.contains("Altitude") || gps.contains("Speed"));
    EXPECT_EQ(local.values[PhotoGroup::IPTC]["Keywords"], QVariantList({"a", "b", "c"}));
    EXPECT_EQ(local.values[PhotoGroup::IPTC]["ObjectName"], "T");
    EXPECT_FALSE(local.values.contains(PhotoGroup::TIFF));
    const PropertyEdit camera = applyChangeEdit(e, PhotoMode::Camera);
    EXPECT_EQ(camera.values[PhotoGroup::GPS]["Longitude"].toDouble(), 151.2);
    EXPECT_EQ(camera.values[PhotoGroup::GPS]["LongitudeRef"], "W");
    EXPECT_EQ(camera.values[PhotoGroup::GPS]["AltitudeRef"], 1);
}

class PhotoCommands : public PhotoTest {};

// An altitude edit leaves the rest of the GPS group; the dashed camera date
// is stored with colons but does not date the file.
TEST_F(PhotoCommands, ApplyMergesIntoThePhotosOwnGroups) {
    const QString source = copyOf(gpsJpeg(), "a.jpg");
    PhotoEditorState e = photoEditorStateFor(readPhotoProperties(source).properties);
    e.gpsInfoChange = e.cameraInfoChange = e.basicInfoChange = true;
    e.gpsAitlab = "-20";
    e.artistlab = "Ünal";
    e.cameraDatelab = "2020-01-02 03:04:05";
    const PhotoWriteResult r =
        ClickApplyChangeAction(photoAt(source), e, PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    EXPECT_EQ(r.outputPath, storage.storagelocation + "/a.jpg");
    const QJsonObject t = tagsOf(r.outputPath);
    EXPECT_DOUBLE_EQ(t["Composite:GPSAltitude"].toDouble(), -20);
    EXPECT_DOUBLE_EQ(t["Composite:GPSLatitude"].toDouble(), -33.5);
    EXPECT_EQ(t["GPS:GPSSpeed"].toInt(), 5);
    EXPECT_EQ(t["GPS:GPSMapDatum"].toString(), "WGS-84");
    EXPECT_FALSE(t.contains("GPS:GPSTrack"));
    EXPECT_EQ(t["IFD0:Artist"].toString(), "Ünal");
    EXPECT_EQ(t["IFD0:Model"].toString(), "EOS");
    EXPECT_FALSE(t.contains("ExifIFD:LensModel"));
    EXPECT_EQ(t["ExifIFD:DateTimeOriginal"].toString(), "2020:01:02 03:04:05");
    EXPECT_EQ(readFileDates(r.outputPath).modification, readFileDates(source).modification);
    EXPECT_TRUE(isOutputOfOurs(r.outputPath));
}

// A bare photo gets new groups holding only the changed fields, and the
// camera date in the program's form dates the file.
TEST_F(PhotoCommands, BarePhotoGetsNewGroups) {
    const QString source = copyOf(photoPicture("photo-base.png", "PNG"), "bare.png");
    PhotoEditorState e = photoEditorStateFor(readPhotoProperties(source).properties);
    e.cameraInfoChange = true;
    e.titlelab = "Title";
    e.cameraDatelab = "2021:05:06 07:08:09";
    const PhotoWriteResult r =
        ClickApplyChangeAction(photoAt(source), e, PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    const QJsonObject t = tagsOf(r.outputPath);
    EXPECT_EQ(t["IPTC:ObjectName"].toString(), "Title");
    EXPECT_EQ(t["ExifIFD:CreateDate"].toString(), "2021:05:06 07:08:09");
    EXPECT_FALSE(t.contains("IFD0:Artist"));
    EXPECT_EQ(readFileDates(r.outputPath).modification,
              QDateTime(QDate(2021, 5, 6), QTime(7, 8, 9)));
}

TEST_F(PhotoCommands, DateAndGpsSaves) {
    const QString source = copyOf(gpsJpeg(), "d.jpg");
    PhotoWriteResult r =
        ClickDateChangedSaveAction(photoAt(source), "2019-03-04 05:06:07", "2019-03-04 05:06:07",
                                   PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    QJsonObject t = tagsOf(r.outputPath);
    for (const char* tag : {"ExifIFD:DateTimeOriginal", "ExifIFD:CreateDate", "IFD0:ModifyDate"})
        EXPECT_EQ(t[tag].toString(), "2019:03:04 05:06:07") << tag;
    EXPECT_EQ(readFileDates(r.outputPath).modification,
              QDateTime(QDate(2019, 3, 4), QTime(5, 6, 7)));

    PhotoEditorState e;
    e.latitudelab = "-33.5";
    e.longtitudelab = "151.2";
    e.altitudelab = "-10";
    e.dateStamplab = "2021:05:06";
    e.timeStamplab = "07:08:09";
    r = ClickSaveChangeGPSAction(photoAt(source), e, true, PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    EXPECT_EQ(QFileInfo(r.outputPath).fileName(), "d (2).jpg");  // the batch's first stays
    t = tagsOf(r.outputPath);
    EXPECT_EQ(t["GPS:GPSLatitudeRef"].toString(), "S");
    EXPECT_EQ(t["GPS:GPSLongitudeRef"].toString(), "E");
    EXPECT_DOUBLE_EQ(t["Composite:GPSAltitude"].toDouble(), -10);
    EXPECT_EQ(t["GPS:GPSDateStamp"].toString(), "2021:05:06");
    EXPECT_EQ(t["GPS:GPSTimeStamp"].toString(), "07:08:09");
    EXPECT_EQ(t["GPS:GPSSpeed"].toInt(), 5);
    EXPECT_EQ(readFileDates(r.outputPath).modification,
              QDateTime(QDate(2021, 5, 6), QTime(7, 8, 9)));

    // The add window's placeholders are no date: nothing of them is written
    // and the copy keeps the source's dates.
    e.dateStamplab = "YYYY:MM:DD";
    e.timeStamplab = "HH:MM:SS";
    const QString bare = copyOf(photoPicture("photo-base.png", "PNG"), "g.png");
    r = ClickSaveChangeGPSAction(photoAt(bare), e, true, PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    t = tagsOf(r.outputPath);
    EXPECT_EQ(t["GPS:GPSVersionID"].toString(), "2 2 0 0");
    EXPECT_FALSE(t.contains("GPS:GPSDateStamp") || t.contains("GPS:GPSTimeStamp"));
    EXPECT_EQ(readFileDates(r.outputPath).modification, readFileDates(bare).modification);
}

TEST_F(PhotoCommands, RemovalTableAndNames) {
    const QString source = copyOf(gpsJpeg(), "r.jpg");
    const struct {
        PhotoRemoval action;
        PhotoMode mode;
        QString name;
        QStringList gone, kept;
    } cases[] = {
        {PhotoRemoval::GPS,
         PhotoMode::Local,
         "r.jpg",
         {"GPS:GPSLatitude", "XMP-exif:GPSLatitude"},
         {"IFD0:Make", "IPTC:Keywords"}},
        {PhotoRemoval::IPTC,
         PhotoMode::Camera,
         "NoIPTC_r.jpg",
         {"IPTC:Keywords"},
         {"GPS:GPSSpeed"}},
        {PhotoRemoval::All,
         PhotoMode::Camera,
         "NoExifAndGPS_r.jpg",
         {"ExifIFD:DateTimeOriginal", "GPS:GPSSpeed"},
         {"IFD0:Make", "IPTC:Keywords", "Photoshop:URL"}},
        {PhotoRemoval::All,
         PhotoMode::Local,
         "r.jpg",
         {"IFD0:Make", "IPTC:Keywords", "GPS:GPSSpeed", "XMP-exif:GPSLatitude", "Photoshop:URL"},
         {"XMP-dc:Title", "IFD0:Orientation"}},
        {PhotoRemoval::Privacy,
         PhotoMode::Local,
         "r.jpg",
         {"IFD0:Make", "XMP-dc:Title"},
         {"IFD0:Orientation"}},
    };
    QDir().mkpath(storage.storagelocation);
    QFile::copy(source, storage.storagelocation + "/r.jpg");  // the camera's downloaded copy
    for (const auto& c : cases) {
        OutputBatch own;
        const PhotoWriteResult r =
            removePhotoMetadata(photoAt(source), c.action, c.mode, storage, own);
        ASSERT_TRUE(r.ok()) << r.message().toStdString();
        // The user's file in the storage folder is never replaced.
        EXPECT_EQ(QFileInfo(r.outputPath).fileName(),
                  c.name == "r.jpg" ? QString("r (2).jpg") : c.name);
        const QJsonObject t = tagsOf(r.outputPath);
        for (const QString& tag : c.gone) EXPECT_FALSE(t.contains(tag)) << tag.toStdString();
        for (const QString& tag : c.kept) EXPECT_TRUE(t.contains(tag)) << tag.toStdString();
    }
}

// A type the writer cannot write: a camera raw becomes TIFF data under its
// own name; anything else is not written at all.
TEST_F(PhotoCommands, RawFallbackAndRefusals) {
    setPhotoCopyWriter([](const QString&, const QString&, const PropertyEdit&) {
        return PhotoWriteOutcome{PhotoWriteStatus::CannotWriteType, "cannot"};
    });
    const QString raw = copyOf(dngPicture("photo-raw.dng", {"-Artist=Raw Artist"}), "x.DNG");
    ASSERT_TRUE(QDir().mkpath(storage.storagelocation));
    QFile::copy(raw, storage.storagelocation + "/x.DNG");
    PhotoWriteResult r =
        removePhotoMetadata(photoAt(raw), PhotoRemoval::Exif, PhotoMode::Camera, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    EXPECT_EQ(readPhotoProperties(raw).type, "raw");
    EXPECT_EQ(QFileInfo(r.outputPath).fileName(), "NoExif_x.DNG");
    const QJsonObject t = tagsOf(r.outputPath);
    EXPECT_EQ(t["IFD0:PhotometricInterpretation"].toInt(), 2);  // RGB, no longer raw
    EXPECT_FALSE(t.contains("IFD0:DNGVersion"));
    EXPECT_EQ(t["IFD0:Orientation"].toInt(), 4);
    EXPECT_EQ(t["IFD0:ImageWidth"].toInt(), 64);
    EXPECT_EQ(t["IFD0:Artist"].toString(), "Raw Artist");
    EXPECT_FALSE(
        removePhotoMetadata(photoAt(raw), PhotoRemoval::IPTC, PhotoMode::Camera, storage, batch)
            .ok());
    const QString jpeg = copyOf(gpsJpeg(), "j.jpg");
    r = removePhotoMetadata(photoAt(jpeg), PhotoRemoval::Exif, PhotoMode::Local, storage, batch);
    EXPECT_FALSE(r.ok());
    EXPECT_FALSE(QFile::exists(storage.storagelocation + "/j.jpg"));
}

// Hostile files are skipped with a reason, a failed write leaves nothing
// under the output's name or beside it.
TEST_F(PhotoCommands, HostileFilesAndFailedWritesLeaveNothing) {
    const QByteArray jpeg = readFile(gpsJpeg());
    const struct {
        QString name;
        QByteArray bytes;
    } cases[] = {{"empty.jpg", {}},
                 {"cut.jpg", jpeg.left(200)},
                 {"text.jpg", "not a photo at all"},
                 {"png.tif", readFile(photoPicture("photo-base.png", "PNG")).left(100)},
                 {"fails.jpg", jpeg}};
    setPhotoCopyWriter([](const QString& source, const QString& target, const PropertyEdit& edit) {
        if (source.endsWith("fails.jpg")) return PhotoWriteOutcome{PhotoWriteStatus::Failed, "no"};
        return writePhotoCopy(source, target, edit);
    });
    for (const auto& c : cases) {
        const QString path = dir.filePath(c.name);
        writeFile(path, c.bytes);
        PhotoEditorState e;
        e.basicInfoChange = true;
        e.artistlab = "x";
        const PhotoWriteResult r =
            ClickApplyChangeAction(photoAt(path), e, PhotoMode::Local, storage, batch);
        EXPECT_FALSE(r.ok()) << c.name.toStdString();
        EXPECT_FALSE(r.reason.isEmpty());
        EXPECT_TRUE(QDir(storage.storagelocation).entryList(QDir::Files | QDir::Hidden).isEmpty());
    }
}

// The privacy strip of a PNG: its texts, Exif and XMP go; the colour
// profile stays.
TEST_F(PhotoCommands, PrivacyStripKeepsTheColourProfile) {
    QImage image(16, 16, QImage::Format_RGB888);
    image.fill(Qt::red);
    image.setColorSpace(QColorSpace::DisplayP3);
    image.setText("Author", "Me");
    const QString source = dir.filePath("p.png");
    ASSERT_TRUE(image.save(source));
    ASSERT_TRUE(runTool("exiftool", words("-q -overwrite_original -Artist=A -XMP-dc:Title=T") +
                                        QStringList{source}));
    const PhotoWriteResult r = removePhotoMetadata(photoAt(source), PhotoRemoval::Privacy,
                                                   PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    const QJsonObject t = tagsOf(r.outputPath);
    for (const char* tag : {"PNG:Author", "IFD0:Artist", "XMP-dc:Title"})
        EXPECT_FALSE(t.contains(tag)) << tag;
    EXPECT_EQ(QImage(r.outputPath).colorSpace(), QColorSpace(QColorSpace::DisplayP3));
    EXPECT_TRUE(QImage(r.outputPath) == QImage(source));
}
