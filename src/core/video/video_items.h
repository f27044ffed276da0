// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <optional>

#include "core/video/metadata_item.h"
#include "core/video/video_export.h"

// The metadata items the video writers make, and the rules that combine
// them with a file's existing items.
namespace VideoItems {

inline const QString kUisoDate = QStringLiteral("uiso/date");
inline const QString kUdtaDate = QStringLiteral("udta/date");
inline const QString kQuickTimeCreationDate =
    QStringLiteral("mdta/com.apple.quicktime.creationdate");
inline const QString kItunesTitle = QStringLiteral("itsk/%A9nam");

MetadataItem make(const QString& keySpace, const QString& key, const QString& identifier,
                  const QVariant& value);

MetadataItem title(const QString& text);
MetadataItem album(const QString& text);
MetadataItem artist(const QString& text);
MetadataItem director(const QString& text);
MetadataItem performer(const QString& text);
MetadataItem producer(const QString& text);
MetadataItem publisher(const QString& text);
MetadataItem copyrights(const QString& text);
MetadataItem description(const QString& text);
// The keywords as UTF-8 bytes, raw data type, language "und".
MetadataItem keywords(const QString& text);
// The keyword list of the 3GPP user data (used to clear keywords).
MetadataItem keywordList(const QString& text);
// TIFF data of the picture; a null picture gives empty data.
MetadataItem artwork(const QImage& picture);
MetadataItem location(const QString& iso6709);

bool isDateIdentifier(const QString& identifier);

// The location value: each part gets a "+" in front unless it holds a "-",
// and the three are joined with nothing between (no padding, no "/").
QString locationText(const QString& latitude, const QString& longitude, const QString& altitude);

// Date items for a new date text: one item of the same identifier for every
// existing date item, or one "uiso/date" when there is none. Tells whether
// a QuickTime creation date was among the existing ones.
QList<MetadataItem> dateItems(const QList<MetadataItem>& existing, const QString& dateText,
                              bool* rewroteQuickTimeDate);

// The items with the date replaced: a 3GPP date carrying `dateText`, the
// same text wherever else the file holds a date (see merge), every older
// date item dropped. An empty text drops every date item.
QList<MetadataItem> replaceDateItems(const QList<MetadataItem>& existing, const QString& dateText);

// The fields the writers write. A field can live in every key space of a
// movie: the QuickTime keys, the user data, the iTunes items and the 3GPP
// boxes; a new value replaces it in each of them.
enum class Field {
    Title,
    Album,
    Artist,
    Director,
    Performer,
    Producer,
    Publisher,
    Copyright,
    Description,
    Keywords,
    Date,
    Artwork,
    Location,
};

// The field an item carries, or nullopt. QuickTime keys count with and
// without their "com.apple.quicktime." prefix; "common" items count in the
// output type's native form as well as in their own.
std::optional<Field> fieldOf(const MetadataItem& item, VideoFileType type);

// Does the item hold a place: the location field in any key space, the
// iTunes "©xyz", and every QuickTime key of the location group (its
// accuracy, name, body, note, role and date as well as the position)?
bool isLocationItem(const MetadataItem& item, VideoFileType type);

// The identifier an item gets in a file of the given type: "common" items
// take the type's native form (iTunes items, or QuickTime keys for movies).
QString nativeIdentifier(const MetadataItem& item, VideoFileType type);

// New items first; then, for every field a new item carries, the first new
// value of that field in each other place the file already holds the field
// (one item per identifier, keeping the place's key and language), so that
// every reader finds the new value; then every existing item that carries
// none of the new fields and whose identifier no new item has (compared in
// the output type's native form), in its existing order. A new item with an
// empty value thus removes its field from every key space.
QList<MetadataItem> merge(const QList<MetadataItem>& newItems, const QList<MetadataItem>& existing,
                          VideoFileType type);

}  // namespace VideoItems
