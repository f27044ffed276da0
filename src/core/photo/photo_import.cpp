// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_import.h"

#include <QFileInfo>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/library/media_record.h"

IKImageItemPtr importPhotoFile(const QString& path) {
    if (!isImagePath(path)) return nullptr;
    if (!isRegularFile(path)) {
        qCWarning(lcTagsmith) << "not a regular file, not read ==" << path;
        return nullptr;
    }
    auto item = std::make_shared<IKImageItem>();
    item->fileType = QStringLiteral("Image");
    item->fileName = QFileInfo(path).fileName();
    item->filePath = path;
    fillFileAttributes(*item);
    // The record takes nothing Qt's image readers add but a pixel size that
    // Exiv2 does not know; they are asked only then.
    PhotoSource source = readPhotoProperties(path, false);
    if (source.ok() && !source.properties.contains(QStringLiteral("PixelWidth")))
        source = readPhotoProperties(path);
    fillPhotoRecord(*item, source);
    if (!source.ok()) {
        item->fileReadProblem = source.problem;
        qCWarning(lcTagsmithUser).noquote()
            << QStringLiteral("%1 could not be read: %2").arg(item->fileName, source.problem);
    }
    return item;
}

void fillPhotoRecord(IKImageItem& item, const PhotoSource& source) {
    const PropertyDictionary& p = source.properties;
    const QVariantMap tiff = p.value(PhotoGroup::TIFF).toMap();
    const QVariantMap exif = p.value(PhotoGroup::Exif).toMap();
    const QVariantMap gps = p.value(PhotoGroup::GPS).toMap();
    const QVariantMap iptc = p.value(PhotoGroup::IPTC).toMap();
    item.filePixWidth = p.value(QStringLiteral("PixelWidth")).toInt();
    item.filepixHeigh = p.value(QStringLiteral("PixelHeight")).toInt();
    item.fileMake = propertyText(tiff, "Make");
    item.fileModel = propertyText(tiff, "Model");
    item.fileSoftware = propertyText(tiff, "Software");
    item.fileArist = propertyText(tiff, "Artist");
    item.fileCopyright = propertyText(tiff, "Copyright");
    item.fileDescription = propertyText(tiff, "ImageDescription");
    item.fileComments = propertyText(exif, "UserComment");
    item.fileTitle = propertyText(iptc, "ObjectName");
    item.fileKeyWords = propertyText(iptc, "Keywords");
    // The location as magnitudes beside their signs, as every record holds it.
    if (gps.contains(QStringLiteral("Latitude")) && gps.contains(QStringLiteral("Longitude"))) {
        item.filelatitude = gps.value(QStringLiteral("Latitude")).toDouble();
        item.filelongtitude = gps.value(QStringLiteral("Longitude")).toDouble();
        item.latitudeFormat = propertyText(gps, "LatitudeRef") == QLatin1String("S")
                                  ? QStringLiteral("-")
                                  : QStringLiteral("+");
        item.longtitudeFormat = propertyText(gps, "LongitudeRef") == QLatin1String("W")
                                    ? QStringLiteral("-")
                                    : QStringLiteral("+");
    }
    if (gps.contains(QStringLiteral("Altitude"))) {
        item.fileAtitude = gps.value(QStringLiteral("Altitude")).toDouble();
        item.AtitudeFormat = gps.value(QStringLiteral("AltitudeRef")).toInt() == 1
                                 ? QStringLiteral("-")
                                 : QStringLiteral("+");
    }
    const QString shot = propertyText(exif, "DateTimeOriginal");
    const QDateTime date = dateFromText(shot);
    if (date.isValid()) {
        item.shootDateStr = shot;
        item.shootDate = date;
    }
}
