// SPDX-License-Identifier: GPL-3.0-or-later
// The Exif and XMP of HEIC and AVIF photos. Read through our own item reader:
// Exiv2 0.27 guesses the size of the item list's entries (so it misses the
// metadata of a file with base offsets or several extents) and reads an item
// held in idat as if its offset were in the file. Written by our item
// rewriter, since Exiv2 cannot write these files: Exiv2 encodes the edited
// Exif and XMP, and only the items whose metadata the edit changed are
// replaced; the others keep their bytes.
#include <QByteArrayView>
#include <QCoreApplication>

#include "core/common/logging.h"
#include "core/photo/heif_decode.h"
#include "core/photo/heif_items.h"
#include "core/photo/heif_rewriter.h"
#include "core/photo/photo_exiv2.h"

namespace photo_exiv2 {

namespace {

// The contents of the item for the primary image; empty when it has none
// or several.
QByteArray primaryItem(const Heif::ItemFile& items, QByteArrayView file, QByteArrayView type,
                       QByteArrayView contentType = {}) {
    const QList<quint32> ids = items.metadataOfPrimary(type, contentType);
    QByteArray data;
    if (ids.size() != 1 || !Heif::itemData(items, file, ids[0], data)) return {};
    return data;
}

// What a metadata set holds, key, type and value bytes, to tell whether an
// edit changed it: an item the edit leaves alone is copied byte for byte.
std::string fingerprint(const Exiv2::ExifData& exif) {
    std::string out;
    for (const Exiv2::Exifdatum& d : exif) {
        Exiv2::DataBuf value(d.size());
        d.copy(value.pData_, Exiv2::bigEndian);
        out += d.key() + '\0' + std::to_string(d.typeId()) + '\0' +
               std::string(reinterpret_cast<const char*>(value.pData_), size_t(value.size_)) + '\n';
    }
    return out;
}

std::string fingerprint(const Exiv2::XmpData& xmp) {
    std::string out;
    for (const Exiv2::Xmpdatum& d : xmp) out += d.key() + '\0' + d.toString() + '\n';
    return out;
}

// Exiv2 encodes Exif for a JPEG segment: it drops the tags of a picture's
// strips and, past 64 KB, its largest tags. A HEIF Exif item has no such
// limit, so an encoding that lost a tag the edit kept is refused.
bool keepsEveryTag(const Exiv2::ExifData& wanted, const QByteArray& tiff) {
    Exiv2::ExifData written;
    Exiv2::ExifParser::decode(written, reinterpret_cast<const Exiv2::byte*>(tiff.constData()),
                              uint32_t(tiff.size()));
    for (const Exiv2::Exifdatum& d : wanted)
        if (!isStructuralTiffTag(d.tagName()) &&
            written.findKey(Exiv2::ExifKey(d.key())) == written.end()) {
            qCInfo(lcTagsmith).noquote()
                << "HEIF Exif tag lost in encoding ==" << QString::fromStdString(d.key());
            return false;
        }
    return true;
}

}  // namespace

bool isHeif(const Exiv2::Image& image) {
    return image.imageType() == Exiv2::ImageType::bmff && isHeifMime(image.mimeType());
}

QSize readHeifMetadata(Exiv2::Image& image) {
    if (!isHeif(image)) return {};
    Exiv2::BasicIo& io = image.io();
    if (io.open() != 0) return {};
    struct Closer {
        Exiv2::BasicIo& io;
        ~Closer() { io.close(); }
    } closer{io};
    const QByteArrayView file(reinterpret_cast<const char*>(io.mmap()), qsizetype(io.size()));
    const QSize size = heifPictureSize(file);
    Heif::ItemFile items;
    QString reason;
    if (!Heif::parseItemFile(file, items, &reason)) {
        // Exiv2's reading stands; such a file is not written anyway.
        qCInfo(lcTagsmith).noquote()
            << "HEIF items not read ==" << QString::fromStdString(io.path()) << "==" << reason;
        io.munmap();
        return size;
    }
    image.exifData().clear();
    image.xmpData().clear();
    image.clearXmpPacket();
    const QByteArray tiff = Heif::primaryExifTiff(file);
    const QByteArray xmp = primaryItem(items, file, "mime", Heif::kXmpContentType);
    io.munmap();
    if (!tiff.isEmpty())
        Exiv2::ExifParser::decode(image.exifData(),
                                  reinterpret_cast<const Exiv2::byte*>(tiff.data()),
                                  uint32_t(tiff.size()));
    if (!xmp.isEmpty()) {
        image.setXmpPacket(xmp.toStdString());
        if (Exiv2::XmpParser::decode(image.xmpData(), xmp.toStdString()) != 0)
            qCInfo(lcTagsmith).noquote()
                << "HEIF XMP not decoded ==" << QString::fromStdString(io.path());
    }
    return size;
}

HeifBefore heifBefore(const Exiv2::Image& image, bool removeXmp) {
    return {fingerprint(image.exifData()), fingerprint(image.xmpData()), removeXmp};
}

bool writeHeifItems(Exiv2::Image& image, const QByteArray& source, const HeifBefore& before,
                    QByteArray& written, QString* reason) {
    Heif::MetadataEdit items;
    if (fingerprint(image.exifData()) != before.exif) {
        QByteArray tiff = Heif::primaryExifTiff(source);
        if (image.exifData().empty()) {
            items.exifTiff = QByteArray();
        } else {
            const Exiv2::ByteOrder order =
                tiff.startsWith("MM") ? Exiv2::bigEndian : Exiv2::littleEndian;
            Exiv2::Blob blob;
            const Exiv2::WriteMethod method =
                Exiv2::ExifParser::encode(blob, reinterpret_cast<const Exiv2::byte*>(tiff.data()),
                                          uint32_t(tiff.size()), order, image.exifData());
            if (method == Exiv2::wmIntrusive || tiff.isEmpty())
                tiff =
                    QByteArray(reinterpret_cast<const char*>(blob.data()), qsizetype(blob.size()));
            if (!keepsEveryTag(image.exifData(), tiff)) {
                *reason = QCoreApplication::translate(
                    "PhotoWriter",
                    "The photo's Exif could not be kept whole, so it was not written.");
                return false;
            }
            items.exifTiff = tiff;
        }
    }
    if (before.removeXmp) {
        items.xmp = QByteArray();
    } else if (fingerprint(image.xmpData()) != before.xmp) {
        std::string packet;
        if (!image.xmpData().empty() && Exiv2::XmpParser::encode(packet, image.xmpData()) != 0)
            throw Exiv2::Error(Exiv2::kerErrorMessage, "XMP not encoded");
        items.xmp = QByteArray::fromStdString(packet);
    }
    return Heif::rewriteMetadata(source, items, written, reason);
}

}  // namespace photo_exiv2
