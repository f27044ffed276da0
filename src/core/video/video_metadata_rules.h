// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include "core/video/metadata_item.h"

struct IKImageItem;

// Fills the descriptive fields of a media record from its metadata items.
// Items are visited in container order and each matching item overwrites
// its field, so the last one wins. `folderScan` selects the smaller
// identifier set of the folder scan; the import thread uses the full set and
// also logs the keywords it finds.
void applyVideoMetadata(IKImageItem& item, const QList<MetadataItem>& items, bool folderScan);

// Reads the metadata items of `item.filePath`, keeps them in
// `item.fileMetaArray` and applies them to the record as above.
void readVideoFileMetadata(IKImageItem& item, bool folderScan);

// A date text of a movie: "T" becomes a blank and anything from a "+" on is
// dropped (an offset is discarded, not applied). The text goes to
// `shootDateStr`; the date, read in local time, to `shootDate` when it
// parses. A text without "+" that does not parse is rebuilt from its first
// six numbers ("2019-05-04 10:11:12-0700" gives "2019-05-04 10:11:12").
void applyVideoDateText(IKImageItem& item, const QString& text);

// An ISO 6709 location text such as "+37.3349-122.0090+012.345/": the signs
// go to the three format fields and the unsigned magnitudes to
// `filelatitude`, `filelongtitude`, `fileAtitude`. A longitude is stored
// only when a signed altitude follows it.
void applyIso6709Location(IKImageItem& item, const QString& text);
