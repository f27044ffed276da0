// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "core/video/metadata_item.h"

struct IKImageItem;

// One line of a file's complete tag list, as a user reads it: the key space
// and key under their usual names and the value as text. The window's
// "All Tags" list and `tagsmith-cli info --items` show the same rows.
struct MetadataRow {
    QString keySpace;  // "QuickTime keys", "QuickTime user data", "iTunes", "3GPP", "XMP", ...
    QString key;       // as the file names it: "\u00a9nam", "com.apple.quicktime.make", "dc:title"
    QString value;     // text; a picture reads as "JPEG picture, 600 x 400"
    QString identifier;  // the item's identifier; empty for the properties inside an XMP packet
    QByteArray picture;  // the encoded picture of a cover, for a thumbnail
    qint64 bytes = -1;   // the size of a binary value (picture or raw data), else -1
};

// The rows of a movie's metadata items, in container order. The XMP packet
// of the user data (`XMP_`) and `xmp`, the file's top-level XMP box, are
// listed property by property; Nero chapters one row per chapter; track and
// disc numbers as "n of m"; other raw data as text when it is text, else by
// its size and first bytes.
QList<MetadataRow> metadataRows(const QList<MetadataItem>& items, const QByteArray& xmp = {});

// The packet of the XMP box at the top level of an ISO base-media file (where
// MP4 files keep their XMP), or an empty array when there is none. Packets
// larger than a few megabytes are not read.
QByteArray readTopLevelXmp(const QString& path);

// The rows of a video record: its metadata items and its file's top-level XMP.
QList<MetadataRow> videoMetadataRows(const IKImageItem& item);
