// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// A photo's metadata as one dictionary of named groups and keys, read and
// written through Exiv2 (the adapter keeps Exiv2's exceptions and warnings to
// itself; warnings go to our log).
//
// Top-level keys: "PixelWidth", "PixelHeight", "Orientation", "DPIWidth",
// "DPIHeight", "ColorModel", "Depth", "ProfileName", ... and the groups, each
// a QVariantMap: "{Exif}", "{TIFF}", "{GPS}", "{IPTC}", "{PNG}", "{JFIF}",
// "{ExifAux}", "{MakerCanon}", ... Keys inside a group carry the names users
// of such a dictionary know ("Artist", "DateTimeOriginal", "LensModel",
// "Latitude", "LatitudeRef", "ObjectName", "Keywords", ...). Values:
//  - texts as QString; dates as "yyyy:MM:dd HH:mm:ss" texts;
//  - numbers (rationals included) as double, integers as qlonglong;
//  - "{GPS}" "Latitude"/"Longitude" as unsigned decimal degrees beside their
//    "LatitudeRef"/"LongitudeRef" texts, "Altitude" as an unsigned number
//    beside "AltitudeRef" (0 above, 1 below sea level), "DateStamp" as
//    "yyyy:MM:dd" and "TimeStamp" as "HH:mm:ss" (fractions kept: "07:08:09.5");
//  - lists (IPTC "Keywords", version numbers) as QVariantList.
using PropertyDictionary = QVariantMap;

// The group names, as the dictionary spells them.
namespace PhotoGroup {
inline const QString Exif = QStringLiteral("{Exif}");
inline const QString TIFF = QStringLiteral("{TIFF}");
inline const QString GPS = QStringLiteral("{GPS}");
inline const QString IPTC = QStringLiteral("{IPTC}");
inline const QString PNG = QStringLiteral("{PNG}");
inline const QString JFIF = QStringLiteral("{JFIF}");
inline const QString GIF = QStringLiteral("{GIF}");
inline const QString Raw = QStringLiteral("{Raw}");
inline const QString ExifAux = QStringLiteral("{ExifAux}");
inline const QString EightBIM = QStringLiteral("{8BIM}");
inline const QString OpenEXR = QStringLiteral("{OpenEXR}");
inline const QString MakerCanon = QStringLiteral("{MakerCanon}");
inline const QString MakerNikon = QStringLiteral("{MakerNikon}");
inline const QString MakerMinolta = QStringLiteral("{MakerMinolta}");
inline const QString MakerFuji = QStringLiteral("{MakerFuji}");
inline const QString MakerOlympus = QStringLiteral("{MakerOlympus}");
inline const QString MakerPentax = QStringLiteral("{MakerPentax}");
}  // namespace PhotoGroup

// A key of a group as text: a list (keywords) joined with ", "; "" when missing.
QString propertyText(const QVariantMap& group, const char* key);

// What reading a photo gives.
struct PhotoSource {
    PropertyDictionary properties;  // of image 0
    QString type;                   // "jpeg", "png", "tiff", "webp", "heif", "avif", "raw", ...
    int imageCount = 0;             // pages of a TIFF, 1 for most files
    bool writable = false;          // Exiv2 can write this type
    QString problem;  // why the photo could not be read, in the user's words; "" when it was

    bool ok() const { return problem.isEmpty(); }
};

// Reads a photo's dictionary. Never throws; a damaged, truncated or foreign
// file answers a problem. Bounded: huge counts and IFD loops end. Without
// `pictureFacts` (a writer's check of its source) what Qt's image readers add
// is left out: the JFIF group, PNG texts, colour model, depth and the pixel
// size where Exiv2 has none.
PhotoSource readPhotoProperties(const QString& path, bool pictureFacts = true);
// The same over bytes in memory (the fuzz target's entry).
PhotoSource readPhotoPropertiesFromData(const QByteArray& data);

// A change to a photo's dictionary, as the writers hand it over. Unchanged
// keys and groups are not named, so they stay as Exiv2 keeps them.
struct PropertyEdit {
    // Groups taken out whole (the removal's null-valued groups).
    QStringList removedGroups;
    // Keys set, by group ("" for the top-level keys such as "Orientation").
    // A null QVariant removes that key. The GPS writers merge: the keys they
    // set replace those keys only, every other GPS tag stays.
    QMap<QString, QVariantMap> values;
    // Take out XMP too (the privacy strip of `strip --all` and the GPS strip's
    // XMP GPS properties); the design's removal actions leave it.
    bool removeXmp = false;
    bool removeXmpGps = false;

    bool isEmpty() const {
        return removedGroups.isEmpty() && values.isEmpty() && !removeXmp && !removeXmpGps;
    }
};

enum class PhotoWriteStatus {
    Written,
    // Exiv2 cannot write this type: the design's "destination cannot be
    // created" path (the raw fallback, or nothing written).
    CannotWriteType,
    Failed,
};

struct PhotoWriteOutcome {
    PhotoWriteStatus status = PhotoWriteStatus::Failed;
    QString reason;  // in the user's words; "" when written
};

// Writes the source with the edit applied into `target` (a new, empty
// temporary file the caller publishes; the copy is appended to it). The picture data are copied
// as they are: never decoded, never re-encoded. Every image of a multi-page
// file is kept: a TIFF of more pages than Exiv2 keeps (four) is refused
// (Failed) rather than written short. Where the type cannot hold a group (IPTC in WebP), its title
// and keywords go to their XMP equivalents (dc:title, dc:subject).
// HEIC and AVIF are written by our item rewriter (heif_rewriter.h); what it
// cannot keep safely is refused (Failed) with a reason.
PhotoWriteOutcome writePhotoCopy(const QString& sourcePath, const QString& target,
                                 const PropertyEdit& edit);
// The same from a source's bytes in memory.
PhotoWriteOutcome writePhotoBytes(const QByteArray& source, const QString& target,
                                  const PropertyEdit& edit);

// A newly encoded picture (JPEG or TIFF bytes) with the metadata of the photo
// it was made from that still means the same for it: the Exif sub-directory
// (the maker note left out) with the new pixel dimensions, GPS, the
// descriptive TIFF tags, IPTC and XMP (without the old picture's orientation
// and size). The orientation is the caller's to set. `encoded` unchanged
// (logged) when the source's metadata cannot be read.
QByteArray withSourceMetadata(const QByteArray& encoded, const QString& sourcePath);
