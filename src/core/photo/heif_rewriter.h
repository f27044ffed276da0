// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

// Rewrites a HEIF file (HEIC, AVIF) with new metadata items for its primary
// image, without decoding anything: the Exif item and the XMP ("mime") item
// are replaced, added or removed, every other item's bytes are copied as they
// are, and the item list (iinf, iloc, iref, ipma, idat) is rebuilt to match.
// The items' data go into one media data box at the end of the file, those
// kept in the idat box stay there; new and replaced items go to the media data.
namespace Heif {

struct MetadataEdit {
    // nullopt: leave the item as it is; an empty array: remove it; else the
    // new contents (the Exif item takes the TIFF data, the header is added).
    std::optional<QByteArray> exifTiff;
    std::optional<QByteArray> xmp;
};

// Answers false with a reason in the user's words when the file holds
// something the rewriter cannot keep safely; `out` is then undefined.
bool rewriteMetadata(QByteArrayView file, const MetadataEdit& edit, QByteArray& out,
                     QString* reason);

}  // namespace Heif
