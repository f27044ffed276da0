// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/batch/metadata_plist.h"
#include "core/batch/plist_io.h"
#include "core/common/desktop_integration.h"

TEST(MetadataPlist, ValuesSurviveXmlAndKeyOrderIsTheFiles) {
    const QVariantMap map{{"text", "Zoë 李"},
                          {"int", qlonglong(-7)},
                          {"real", 0.1},
                          {"bool", true},
                          {"data", QByteArray("\0\1\2", 3)},
                          {"list", QVariantList{1, "two"}},
                          {"date", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), Qt::UTC)},
                          {"nested", QVariantMap{{"k", "v"}}}};
    const PlistRead read = readPlistData(plistXml(map));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.root.toMap(), map);
    const PlistRead ordered = readPlistData(
        "<plist><dict><key>z</key><string>1</string><key>a</key><string>2</string></dict></plist>");
    EXPECT_EQ(ordered.keyOrder, QStringList({"z", "a"}));
    for (const char* junk : {"", "not a plist", "<plist><dict><key>x</key>"})
        EXPECT_FALSE(readPlistData(junk).ok()) << junk;
}

TEST(MetadataPlist, EntriesByKindAndAudioTwice) {
    DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    QTemporaryDir dir;
    auto audio = std::make_shared<IKImageItem>();
    audio->filePath = dir.path() + "/a.m4a";
    audio->fileName = "a.m4a";
    audio->fileTitle = "T";
    audio->fileAlbumArist = "3";
    audio->fileImage = QImage(4, 4, QImage::Format_RGB32);
    auto video = std::make_shared<IKImageItem>();
    video->filePath = dir.path() + "/v.mov";
    video->fileName = "v.mov";
    video->shootDateStr = "2020:01:02 03:04:05";
    video->filelongtitude = -1.5;
    auto photo = std::make_shared<IKImageItem>();
    photo->filePath = dir.path() + "/p.jpg";
    photo->fileName = "p.jpg";

    EXPECT_EQ(metadataPlistEntry(*audio), (QVariantMap{{"Title", "T"}, {"Track Number", "3"}}));
    EXPECT_EQ(metadataPlistEntry(*video),
              (QVariantMap{{"Camera Date", "2020:01:02 03:04:05"}, {"Longitude", "-1.500000"}}));
    EXPECT_TRUE(metadataPlistEntry(*photo).isEmpty());

    const StorageContext storage{dir.path() + "/out", false, {}};
    OutputBatch batch;
    const QList<VideoWriteResult> results =
        exportMetadataPlist({audio, video, photo}, storage, batch);
    ASSERT_EQ(results.size(), 2);
    EXPECT_TRUE(results[0].skipped);
    ASSERT_TRUE(results[1].ok());
    const QVariantMap top = readPlistFile(results[1].outputPath).root.toMap();
    EXPECT_EQ(top.keys(), QStringList({"a", "a.m4a", "v"}));

    const QList<VideoWriteResult> art = exportArtwork({audio, video}, storage, batch);
    ASSERT_EQ(art.size(), 2);
    EXPECT_EQ(art[0].outputPath, storage.storagelocation + "/a.m4a.jpg");
    QFile tiff(art[0].outputPath);
    ASSERT_TRUE(tiff.open(QIODevice::ReadOnly));
    const QByteArray magic = tiff.read(4);
    EXPECT_TRUE(magic == QByteArray("II*\0", 4) || magic == QByteArray("MM\0*", 4));
    EXPECT_TRUE(art[1].skipped);
}

TEST(MetadataPlist, ListsOfTheWrongShapeChangeNothing) {
    QTemporaryDir dir;
    const StorageContext storage{dir.path() + "/out", false, {}};
    auto write = [&](const QString& name, const QByteArray& bytes) {
        QFile f(dir.path() + "/" + name);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return f.fileName();
    };
    const QString junk = write("junk.plist", "junk");
    const QString array = write("array.plist", plistXml(QVariantList{1}));
    const QString groups = write(
        "groups.plist", plistXml(QVariantMap{{"p.jpg", QVariantMap{{"{Exif}", QVariantMap{}}}}}));
    const QString flat = write("flat.plist", plistXml(QVariantMap{{"p.jpg", "x"}}));
    auto photo = std::make_shared<IKImageItem>();
    photo->filePath = write("p.jpg", "not read");
    photo->fileName = "p.jpg";
    OutputBatch batch;
    for (const QString& plist : {junk, array, groups, flat}) {
        EXPECT_FALSE(importPhotoPlist(plist, PhotoPlistKind::TIFF, {photo}, storage, batch)
                         .problem.isEmpty())
            << plist.toStdString();
        EXPECT_FALSE(ReloadMetaDataPlistAction(plist, {photo}, storage, batch).problem.isEmpty())
            << plist.toStdString();
    }
    EXPECT_FALSE(ImportTemplateDataPlistAction(groups, {photo}, storage, batch).problem.isEmpty());
    EXPECT_FALSE(QDir(storage.storagelocation).exists());
}
