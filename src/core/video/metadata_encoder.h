// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

#include "core/video/metadata_item.h"
#include "core/video/video_export.h"

// Encoding of a movie's metadata list into the boxes the rewriter puts into
// the movie box: the user data box (QuickTime text boxes, 3GPP boxes and the
// iTunes item list) and the QuickTime metadata box (keys and item list).
namespace MetadataEncoder {

struct MovieMetadataBoxes {
    QByteArray userData;  // a whole "udta" box, or empty when there is nothing for it
    QByteArray metadata;  // a whole "meta" box (handler "mdta"), or empty
};

// Encodes `items` in order. Common items take the native form of `fileType`.
// Items with an empty value are left out (that is how a key is removed);
// items that have no place in a movie, or whose value cannot be encoded, are
// logged and left out. `storedInTracks` lists items that the tracks already
// hold (their own metadata boxes are kept as they are): one matching item of
// the list is left out per entry, so that they are not copied up into the
// movie's metadata on every rewrite.
MovieMetadataBoxes encodeMovieMetadata(const QList<MetadataItem>& items, VideoFileType fileType,
                                       const QList<MetadataItem>& storedInTracks = {});

// The file type box of an output type.
QByteArray fileTypeBox(VideoFileType fileType);

// The key of an identifier ("itsk/%A9nam" gives "\xa9nam"), %XX unescaped.
QByteArray identifierKey(const QString& identifier);

// A three-letter ISO 639-2 code packed into 15 bits, or nullopt.
std::optional<quint16> packedLanguage(const QString& language);

// A 3GPP location box payload (after version and flags) from ISO 6709 text
// such as "+48.8566+002.3522+035.000/" or "+12.5-3.25+", or nullopt when the
// text is not a location.
std::optional<QByteArray> locationPayload(const QString& iso6709, const QString& language);

}  // namespace MetadataEncoder
