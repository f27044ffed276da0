// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include "core/library/ik_image_item.h"
#include "core/video/metadata_rows.h"

// A record as a JSON object: every field that is not empty, zero or false,
// under the record's own field names. Dates are ISO 8601 with their offset;
// artwork is described by its pixel size.
QJsonObject itemToJson(const IKImageItem& item);
// The same object as QJsonDocument's indented text, `indent` levels deep
// (4 blanks each) and without a final line break, written directly: the
// command line prints thousands of records, and building and writing the
// QJsonObject cost a tenth of reading the files.
QByteArray itemToJsonText(const IKImageItem& item, int indent);

// The rows of a file's complete tag list (see metadata_rows.h): keySpace,
// key and value as the window's "All Tags" list shows them, the item's
// identifier where the row is a whole item, and the size of binary values.
QJsonArray metadataRowsToJson(const QList<MetadataRow>& rows);
