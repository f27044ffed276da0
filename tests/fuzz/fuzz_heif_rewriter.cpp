// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the HEIF item reader and rewriter: any bytes, taken as
// a HEIC or AVIF, are given a new Exif and XMP item. A rewritten file must
// parse again with the same primary image, hold the new Exif item and keep
// every other item's bytes as they were.

#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "core/photo/heif_items.h"
#include "core/photo/heif_rewriter.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

namespace {

void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "fuzz_heif_rewriter: %s\n", what);
    std::abort();
}

// Every item's bytes but the Exif and XMP ones, by id.
QMap<quint32, QByteArray> keptItems(const Heif::ItemFile& items, QByteArrayView file) {
    QMap<quint32, QByteArray> out;
    for (const Heif::ItemLocation& loc : items.locations) {
        const Heif::ItemInfo* info = items.item(loc.id);
        if (info && (info->type == "Exif" || info->type == "mime")) continue;
        Heif::itemData(items, file, loc.id, out[loc.id]);
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView source(reinterpret_cast<const char*>(data), qsizetype(size));
    Heif::ItemFile before;
    if (!Heif::parseItemFile(source, before, nullptr)) return 0;
    Heif::primaryExifTiff(source);

    const QByteArray tiff("II*\0\x08\0\0\0\0\0\0\0\0\0", 14);
    Heif::MetadataEdit edit;
    edit.exifTiff = tiff;
    edit.xmp = size % 2 ? QByteArray() : QByteArray("<x:xmpmeta/>");
    QByteArray written;
    if (!Heif::rewriteMetadata(source, edit, written, nullptr)) return 0;

    Heif::ItemFile after;
    check(Heif::parseItemFile(written, after, nullptr), "the rewritten file does not parse");
    check(after.primary == before.primary, "the primary image changed");
    check(Heif::primaryExifTiff(written) == tiff, "the new Exif item is not there");
    const QMap<quint32, QByteArray> kept = keptItems(before, source);
    for (auto it = kept.cbegin(); it != kept.cend(); ++it) {
        QByteArray now;
        check(Heif::itemData(after, written, it.key(), now) && now == it.value(),
              "an item's bytes changed");
    }
    return 0;
}
