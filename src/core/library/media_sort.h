// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "core/library/ik_image_item.h"

// The seven columns of the media list, by their identifiers.
enum class MediaColumn { Name, Size, Time, Type, Artist, Album, Date };
inline constexpr int kMediaColumnCount = 7;

// Column identifier ("Name", "Size", ...) and header title ("Media Name", ...).
const char* mediaColumnIdentifier(MediaColumn column);
const char* mediaColumnTitle(MediaColumn column);
// The cell text of a record in a column; absent values are "".
QString mediaCellText(const IKImageItem& item, MediaColumn column);

// What the Size column sorts by: the byte count (107.63 KB before 34.43 MB),
// or, as the list always did, `sizeFormString` of the size text, which takes
// the number before the unit's last letter ("12.00 KB" counts 12, "512 bytes"
// counts 512 x 10^12).
enum class SizeSortKey { ByteCount, SizeText };

// Compares two records for a column's sort with the column's direction
// flag. Text columns with the flag set sort descending with empty and
// punctuated values last, and never answer equal; number and date columns
// with the flag set sort ascending. Answers -1, 0 or +1.
int compareMediaItems(const IKImageItem& a, const IKImageItem& b, MediaColumn column, bool flag,
                      SizeSortKey sizeKey = SizeSortKey::ByteCount);

// The text rule on its own: case- and diacritic-insensitive, with empty and
// punctuation-led values ordered first or last as described above.
int compareMediaTexts(const QString& a, const QString& b, bool flag);

// Whether a record stays listed under the list's filter text: its name,
// type, artist or album contains the text, ignoring case and diacritics.
// An empty filter keeps every record.
bool mediaItemMatches(const IKImageItem& item, const QString& filter);

// A stable merge sort that stays within bounds whatever the comparator
// answers (the text comparators are not consistent for equal values, which
// a standard sort may not be given).
void sortMediaItems(IKImageItemList& items,
                    const std::function<int(const IKImageItem&, const IKImageItem&)>& cmp);
