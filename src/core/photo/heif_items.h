// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>

// The items of a HEIF file (HEIC, AVIF) as its meta box lists them: what each
// item is (iinf), where its bytes are (iloc), how items refer to each other
// (iref) and which one is the picture shown (pitm). Everything is read
// strictly and checked against the file: a count, size or offset that does
// not fit, an unknown box version or a storage the rewriter cannot move is
// an error with a reason in the user's words, because a file rewritten from a
// misread structure would be damaged.
namespace Heif {

// Items and extents accepted in one file before it is treated as damaged.
inline constexpr int kMaxItems = 1 << 16;
inline constexpr int kMaxExtents = 1 << 16;

// A stretch of an item's bytes: in the file (method 0) or in idat (method 1).
struct Extent {
    quint64 offset = 0;  // base offset included
    quint64 length = 0;
};

struct ItemLocation {
    quint32 id = 0;
    int method = 0;  // 0: file offsets, 1: offsets into the idat box
    QList<Extent> extents;
};

struct ItemInfo {
    quint32 id = 0;
    QByteArray type;         // "hvc1", "av01", "grid", "Exif", "mime", ...
    QByteArray contentType;  // of a "mime" item
    QByteArrayView box;      // the infe box as stored
};

struct Reference {
    QByteArray type;  // "cdsc", "thmb", "dimg", "auxl", ...
    quint32 from = 0;
    QList<quint32> to;
};

// A box as stored (header included) and its type.
struct StoredBox {
    QByteArray type;
    QByteArrayView bytes;
    QByteArrayView payload;
};

struct ItemFile {
    QList<StoredBox> topLevel;  // every top-level box in file order
    int metaIndex = -1;         // the meta box among them
    quint32 metaVersionFlags = 0;
    QList<StoredBox> metaChildren;
    quint32 primary = 0;
    QList<ItemInfo> items;
    QList<ItemLocation> locations;
    QList<Reference> references;
    int irefVersion = 0;
    QByteArrayView idat;
    // Positions in `items` and `locations` by id (an id listed twice is damage).
    QHash<quint32, qsizetype> itemIndex, locationIndex;

    const ItemInfo* item(quint32 id) const;
    const ItemLocation* location(quint32 id) const;
    // The items of the type (and content type for "mime") that describe
    // the primary image through a "cdsc" reference.
    QList<quint32> metadataOfPrimary(QByteArrayView type, QByteArrayView contentType = {}) const;
};

inline constexpr QByteArrayView kXmpContentType = "application/rdf+xml";

// Parses a whole file held in memory; the views in `out` point into `file`.
bool parseItemFile(QByteArrayView file, ItemFile& out, QString* reason);

// An item's bytes: its extents, in order, joined.
bool itemData(const ItemFile& items, QByteArrayView file, quint32 id, QByteArray& out);

// The TIFF data of the primary image's Exif item (after the item's header
// offset), or an empty array when it has none or the file is no item file.
QByteArray primaryExifTiff(QByteArrayView file);

}  // namespace Heif
