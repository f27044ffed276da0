// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonObject>
#include <QPainter>
#include <QTemporaryDir>
#include <QtEndian>

#include "core/common/desktop_integration.h"
#include "core/photo/photo_writers.h"
#include "exiftool.h"
#include "media_fixtures.h"

// Photos made at test time: Qt draws and encodes the picture, exiftool adds
// the tags. Each is made once per build in the fixture folder.
inline QString photoPicture(const QString& name, const char* format) {
    const QString path = fixtureDir() + QLatin1Char('/') + name;
    if (QFileInfo(path).size() > 0) return path;
    QImage image(64, 48, QImage::Format_RGB888);
    image.fill(Qt::darkCyan);
    QPainter(&image).fillRect(8, 8, 24, 16, Qt::yellow);
    return image.save(path, format, 95) ? path : QString();
}

// A DNG: an uncompressed RGB TIFF with the DNG tags of linear raw data.
inline QString dngPicture(const QString& name, const QStringList& tags = {}) {
    const QStringList dng = words(
                                "-n -UniqueCameraModel=TestCam "
                                "-PhotometricInterpretation=34892 -CalibrationIlluminant1=21") +
                            QStringList{"-DNGVersion=1 4 0 0", "-DNGBackwardVersion=1 1 0 0",
                                        "-ColorMatrix1=1 0 0 0 1 0 0 0 1"};
    return exiftoolFixture(name, photoPicture(QStringLiteral("dng-base.tif"), "TIFF"), dng + tags);
}

// A little-endian TIFF of `pages` 8x8 grey pages, written byte by byte.
inline QByteArray multiPageTiff(int pages) {
    QByteArray tiff("II*\0\x08\0\0\0", 8);
    const auto put16 = [&](quint16 v) { tiff.append(reinterpret_cast<const char*>(&v), 2); };
    const auto put32 = [&](quint32 v) { tiff.append(reinterpret_cast<const char*>(&v), 4); };
    const quint16 entries[][3] = {{256, 3, 8}, {257, 3, 8}, {258, 3, 8}, {259, 3, 1}, {262, 3, 1},
                                  {273, 4, 0}, {277, 3, 1}, {278, 3, 8}, {279, 4, 64}};
    const int ifdSize = 2 + 9 * 12 + 4;
    for (int page = 0; page < pages; ++page) {
        const quint32 ifd = quint32(tiff.size());
        const quint32 pixels = ifd + ifdSize;
        put16(9);
        for (const auto& e : entries) {
            put16(e[0]);
            put16(e[1]);
            put32(1);
            put32(e[0] == 273 ? pixels : e[2]);
        }
        put32(page + 1 < pages ? pixels + 64 : 0);
        tiff.append(QByteArray(64, char(page * 40)));
    }
    return tiff;
}

// A storage folder per test, a desktop that only records, photo records.
class PhotoTest : public testing::Test {
protected:
    void SetUp() override {
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        storage.storagelocation = dir.path() + QStringLiteral("/storage");
    }
    void TearDown() override { setPhotoCopyWriter({}); }
    static IKImageItem photoAt(const QString& path) {
        IKImageItem item;
        item.filePath = path;
        item.fileName = QFileInfo(path).fileName();
        return item;
    }
    // A copy of a fixture in the test's folder, under `name`.
    QString copyOf(const QString& fixture, const QString& name) {
        const QString path = dir.path() + QLatin1Char('/') + name;
        QFile::copy(fixture, path);
        return path;
    }
    static QJsonObject tagsOf(const QString& path) { return exiftoolTags(path, {"-n"}); }
    QTemporaryDir dir;
    StorageContext storage;
    OutputBatch batch;
};
