#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include "core/library/ik_image_item.h"

// A record as a JSON object: every field that is not empty, zero or false,
// under the record's own field names. Dates are ISO 8601 with their offset;
// artwork is described by its pixel size.
QJsonObject itemToJson(const IKImageItem& item);

// Metadata items in their order: identifier, keySpace, key (bytes read as
// Latin-1, so (c)nam shows as "\u00a9nam"), value, dataType and language.
// Binary values appear as {"bytes": size}.
QJsonArray metadataItemsToJson(const QList<MetadataItem>& items);
