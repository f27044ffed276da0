// The Exif and XMP of HEIC and AVIF photos, read through our own item reader:
// Exiv2 0.27 guesses the size of the item list's entries (so it misses the
// metadata of a file with base offsets or several extents) and reads an item
// held in idat as if its offset were in the file.
#include <QByteArrayView>

#include "core/common/logging.h"
#include "core/photo/heif_decode.h"
#include "core/photo/heif_items.h"
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

}  // namespace photo_exiv2
