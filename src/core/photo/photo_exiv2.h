// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The Exiv2 adapter's own header: only the adapter's sources include it.
// Exiv2 0.27's interface still uses std::auto_ptr, whose deprecation
// warnings are kept out of the build here and nowhere else.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/bmffimage.hpp>
#include <exiv2/exiv2.hpp>
#include <exiv2/webpimage.hpp>
#pragma GCC diagnostic pop

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>
#include <QVariant>

#include "core/photo/photo_properties.h"

namespace photo_exiv2 {

// Once per process: BMFF support, the XMP toolkit and the log handler that
// sends Exiv2's messages to our log instead of stderr.
void ensureInitialised();

// Our name of an Exiv2 image type ("jpeg", "png", "tiff", "webp", "heif", ...).
QString typeName(int imageType);

// A HEIC or AVIF among Exiv2's base-media types (not a CR3): our item
// rewriter writes these.
inline bool isHeifMime(const std::string& mime) {
    return mime == "image/heif" || mime == "image/heic" || mime == "image/avif";
}
bool isHeif(const Exiv2::Image& image);

// After readMetadata(): a HEIC's or AVIF's Exif and XMP as our item reader
// finds them, in place of Exiv2's own reading (photo_heif.cpp). Answers the
// primary picture's size as libheif shows it (Exiv2 answers the first size
// it meets, often a tile's); invalid for other types.
QSize readHeifMetadata(Exiv2::Image& image);

// What a HEIC's or AVIF's metadata held before an edit, to find what it changed.
struct HeifBefore {
    std::string exif, xmp;
    bool removeXmp = false;  // even a packet Exiv2 could not decode
};
HeifBefore heifBefore(const Exiv2::Image& image, bool removeXmp);
// After the edit: the file `source` with the changed Exif and XMP items, from
// our item rewriter. False with a reason in the user's words when it refuses.
bool writeHeifItems(Exiv2::Image& image, const QByteArray& source, const HeifBefore& before,
                    QByteArray& written, QString* reason);

// The dictionary's name of an IPTC dataset and back; "" when it has none.
QString iptcDictionaryName(const std::string& exiv2Name);
std::string iptcExiv2Name(const QString& dictionaryName);

// The XMP properties that say what an IPTC dataset says: where a type
// holds no IPTC they stand in for it, in reading and in writing.
struct XmpEquivalent {
    QString iptc;     // the dictionary's IPTC name
    const char* xmp;  // the XMP key
    Exiv2::TypeId type;
};
const QList<XmpEquivalent>& xmpEquivalents();

// The Exif sub-directory's tags under the names the dictionary uses.
QString exifDictionaryName(const std::string& exiv2Name);
std::string exifExiv2Name(const QString& dictionaryName);

// TIFF tags that describe the photo rather than its picture: the ones the
// removal of the TIFF group takes out (orientation and resolution stay).
bool isDescriptiveTiffTag(const std::string& tagName);
// TIFF tags that are structure (offsets, pointers, blobs) and not listed.
bool isStructuralTiffTag(const std::string& tagName);

// The dictionary group of a maker-note group ("{MakerCanon}"), or "".
QString makerGroupOf(const std::string& exiv2Group);

// An Exiv2 value as the dictionary holds it (photo_read.cpp); invalid when
// it is not listed (long tables, blobs).
QVariant dictionaryValue(const Exiv2::Value& value);

// The groups made of what Exiv2 read beside the main ones
// (photo_exiv2_groups.cpp): "{ExifAux}" from the Exif, maker-note and XMP
// auxiliary values, "{Raw}" from a DNG's raw-data tags (taken out of
// "{TIFF}"), "{8BIM}" from a TIFF's image resources.
void addAuxiliaryGroups(PropertyDictionary& properties, const Exiv2::Image& image);
// Takes out what "{ExifAux}" is made of.
void removeExifAux(Exiv2::Image& image);

// A text from bytes that should be UTF-8 but may be Latin-1.
QString textFromBytes(const std::string& bytes);

}  // namespace photo_exiv2
