// SPDX-License-Identifier: GPL-3.0-or-later
// What the photo panel shows, and the edit an apply makes of it.
#include <QLocale>

#include <cmath>

#include "core/common/dates.h"
#include "core/common/logging.h"
#include "core/library/formatters.h"
#include "core/photo/photo_writers.h"

namespace {

QString numberText(double value) {
    return QString::number(value, 'g', 12);
}

// A signed position or altitude from the GPS group: the unsigned number
// negated by its reference.
bool signedValue(const QVariantMap& gps, const char* key, double* value) {
    if (!gps.contains(QLatin1String(key))) return false;
    *value = gps.value(QLatin1String(key)).toDouble();
    const QString ref = gps.value(QLatin1String(key) + QLatin1String("Ref")).toString();
    if (QLatin1String(key) == QLatin1String("Latitude") && ref != QLatin1String("N"))
        *value = -*value;
    if (QLatin1String(key) == QLatin1String("Longitude") && ref != QLatin1String("E"))
        *value = -*value;
    if (QLatin1String(key) == QLatin1String("Altitude") && ref == QLatin1String("1"))
        *value = -*value;
    return true;
}

bool changed(const QString& now, const QString& before) {
    return !now.isEmpty() && now != before;
}

// A camera date as the Exif group stores it; "" when it is no date.
QString exifDateText(const QString& typed) {
    QString date = typed.trimmed();
    date.replace(QLatin1Char('-'), QLatin1Char(':'));
    if (!QLocale(QStringLiteral("en_US"))
             .toDateTime(date, QLatin1String(kDateTextFormat))
             .isValid()) {
        qCInfo(lcTagsmith) << "camera date not a date, not written ==" << typed;
        return {};
    }
    return date;
}

// The GPS values of the panel: each number with its reference, so a
// southern, western or below-sea-level value keeps its sign in the file.
void putPosition(QVariantMap& gps, const char* key, const QString& typed, const char* positive,
                 const char* negative) {
    bool ok = false;
    const double value = typed.toDouble(&ok);
    if (!ok) return;
    gps.insert(QLatin1String(key), std::fabs(value));
    const QString refKey = QLatin1String(key) + QLatin1String("Ref");
    if (QLatin1String(key) == QLatin1String("Altitude"))
        gps.insert(refKey, value < 0 ? 1 : 0);
    else
        gps.insert(refKey, QLatin1String(value < 0 ? negative : positive));
}

}  // namespace

QString propertyText(const QVariantMap& group, const char* key) {
    const QVariant value = group.value(QLatin1String(key));
    if (value.typeId() == QMetaType::QVariantList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

bool photoPosition(const PropertyDictionary& properties, double* latitude, double* longitude) {
    const QVariantMap gps = properties.value(PhotoGroup::GPS).toMap();
    double lat = 0, lon = 0;
    if (!signedValue(gps, "Latitude", &lat) || !signedValue(gps, "Longitude", &lon)) return false;
    *latitude = lat;
    *longitude = lon;
    return true;
}

PhotoEditorState photoEditorStateFor(const PropertyDictionary& properties) {
    const QVariantMap tiff = properties.value(PhotoGroup::TIFF).toMap();
    const QVariantMap exif = properties.value(PhotoGroup::Exif).toMap();
    const QVariantMap gps = properties.value(PhotoGroup::GPS).toMap();
    const QVariantMap iptc = properties.value(PhotoGroup::IPTC).toMap();
    PhotoEditorState s;
    s.artistlab = propertyText(tiff, "Artist");
    s.imageDescrilab = propertyText(tiff, "ImageDescription");
    s.copyrightlab = propertyText(tiff, "Copyright");
    s.cameraMakelab = propertyText(tiff, "Make");
    const bool lens = s.cameraMakelab.isEmpty();
    if (lens) s.cameraMakelab = propertyText(exif, "LensMake");
    s.cameraModelab = lens ? propertyText(exif, "LensModel") : propertyText(tiff, "Model");
    s.cameraDatelab = propertyText(exif, "DateTimeDigitized");
    s.commentslab = propertyText(exif, "UserComment");
    s.gpsDatelab = propertyText(gps, "DateStamp");
    s.gpsTimelab = propertyText(gps, "TimeStamp");
    double value = 0;
    if (signedValue(gps, "Altitude", &value)) s.gpsAitlab = numberText(value);
    if (signedValue(gps, "Latitude", &value)) s.gpsLatilab = numberText(value);
    if (signedValue(gps, "Longitude", &value)) s.gpsLongtlab = numberText(value);
    s.keywordslab = propertyText(iptc, "Keywords");
    s.titlelab = propertyText(iptc, "ObjectName");

    s.latitudelab = s.gpsLatilab;
    s.longtitudelab = s.gpsLongtlab;
    s.altitudelab = s.gpsAitlab;
    s.dateStamplab = s.gpsDatelab;
    s.timeStamplab = s.gpsTimelab;

    s.oldArtistStr = s.artistlab;
    s.oldImageDescStr = s.imageDescrilab;
    s.oldCopyrightStr = s.copyrightlab;
    s.oldCommentStr = s.commentslab;
    s.oldKeywordStr = s.keywordslab;
    s.oldCameraMakeStr = s.cameraMakelab;
    s.oldCameraModeStr = s.cameraModelab;
    s.oldCameraDateStr = s.cameraDatelab;
    s.oldGpsDateStr = s.gpsDatelab;
    s.oldGpsTimeStr = s.gpsTimelab;
    s.oldGpsLatiStr = s.gpsLatilab;
    s.oldGpsAitStr = s.gpsAitlab;
    s.oldGpsLongtStr = s.gpsLongtlab;
    s.oldTitleStr = s.titlelab;
    return s;
}

PhotoPanelTexts photoPanelTextsFor(const IKImageItem& item, const PropertyDictionary& properties) {
    PhotoPanelTexts t;
    t.photoNamelab = item.fileName;
    if (item.fileSizeBytes >= 1)
        t.photoFileSizelab = QStringLiteral("%1 (%2 bytes)")
                                 .arg(sizeText(item.fileSizeBytes))
                                 .arg(item.fileSizeBytes);
    const QVariant width = properties.value(QStringLiteral("PixelWidth"));
    const QVariant height = properties.value(QStringLiteral("PixelHeight"));
    if (width.isValid() && height.isValid())
        t.photoImageSizelab = QStringLiteral("%1 x %2").arg(width.toString(), height.toString());
    const QVariantMap tiff = properties.value(PhotoGroup::TIFF).toMap();
    const QVariantMap exif = properties.value(PhotoGroup::Exif).toMap();
    t.photoDPIlab = propertyText(tiff, "Make").isEmpty() ? propertyText(exif, "LensModel")
                                                         : propertyText(tiff, "Model");
    t.photoCreateDatelab = dateDescription(item.fileCreateDate);
    t.photoModDatelab = propertyText(exif, "DateTimeDigitized");
    return t;
}

PropertyEdit applyChangeEdit(const PhotoEditorState& e, PhotoMode mode) {
    PropertyEdit edit;
    const QVariantList version{2, 2, 0, 0};
    if (mode == PhotoMode::Camera) {
        // The camera list's apply writes the whole position as shown.
        QVariantMap gps{{QStringLiteral("Version"), version}};
        putPosition(gps, "Latitude", e.gpsLatilab, "N", "S");
        putPosition(gps, "Longitude", e.gpsLongtlab, "E", "W");
        putPosition(gps, "Altitude", e.gpsAitlab, "", "");
        if (!e.timeStamplab.isEmpty()) gps.insert(QStringLiteral("TimeStamp"), e.timeStamplab);
        if (!e.dateStamplab.isEmpty()) gps.insert(QStringLiteral("DateStamp"), e.dateStamplab);
        edit.values.insert(PhotoGroup::GPS, gps);
    } else if (e.gpsInfoChange && !e.gpsLatilab.isEmpty() && !e.gpsLongtlab.isEmpty()) {
        // Only the values the user changed, merged into the photo's group.
        QVariantMap gps{{QStringLiteral("Version"), version}};
        if (e.gpsLatilab != e.oldGpsLatiStr) putPosition(gps, "Latitude", e.gpsLatilab, "N", "S");
        if (e.gpsLongtlab != e.oldGpsLongtStr)
            putPosition(gps, "Longitude", e.gpsLongtlab, "E", "W");
        if (changed(e.gpsAitlab, e.oldGpsAitStr)) putPosition(gps, "Altitude", e.gpsAitlab, "", "");
        if (changed(e.dateStamplab, e.oldGpsDateStr))
            gps.insert(QStringLiteral("DateStamp"), e.dateStamplab);
        if (changed(e.timeStamplab, e.oldGpsTimeStr))
            gps.insert(QStringLiteral("TimeStamp"), e.timeStamplab);
        edit.values.insert(PhotoGroup::GPS, gps);
    }
    if (!e.basicInfoChange && !e.cameraInfoChange) return edit;

    QVariantMap tiff, exif, iptc;
    if (changed(e.artistlab, e.oldArtistStr)) tiff.insert(QStringLiteral("Artist"), e.artistlab);
    if (changed(e.imageDescrilab, e.oldImageDescStr))
        tiff.insert(QStringLiteral("ImageDescription"), e.imageDescrilab);
    if (changed(e.copyrightlab, e.oldCopyrightStr))
        tiff.insert(QStringLiteral("Copyright"), e.copyrightlab);
    if (changed(e.cameraMakelab, e.oldCameraMakeStr)) {
        tiff.insert(QStringLiteral("Make"), e.cameraMakelab);
        exif.insert(QStringLiteral("LensMake"), e.cameraMakelab);
    }
    if (changed(e.cameraModelab, e.oldCameraModeStr)) {
        tiff.insert(QStringLiteral("Model"), e.cameraModelab);
        exif.insert(QStringLiteral("LensModel"), e.cameraModelab);
    }
    if (changed(e.cameraDatelab, e.oldCameraDateStr)) {
        if (const QString date = exifDateText(e.cameraDatelab); !date.isEmpty()) {
            exif.insert(QStringLiteral("DateTimeOriginal"), date);
            exif.insert(QStringLiteral("DateTimeDigitized"), date);
        }
    }
    if (changed(e.commentslab, e.oldCommentStr))
        exif.insert(QStringLiteral("UserComment"), e.commentslab);
    if (changed(e.keywordslab, e.oldKeywordStr)) {
        QVariantList words;
        for (const QString& word : e.keywordslab.split(QLatin1Char(',')))
            if (!word.trimmed().isEmpty()) words << word.trimmed();
        iptc.insert(QStringLiteral("Keywords"), words);
    }
    if (changed(e.titlelab, e.oldTitleStr)) iptc.insert(QStringLiteral("ObjectName"), e.titlelab);
    if (!tiff.isEmpty()) edit.values.insert(PhotoGroup::TIFF, tiff);
    if (!exif.isEmpty()) edit.values.insert(PhotoGroup::Exif, exif);
    if (!iptc.isEmpty()) edit.values.insert(PhotoGroup::IPTC, iptc);
    return edit;
}
