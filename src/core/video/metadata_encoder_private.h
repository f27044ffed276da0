// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

#include "core/video/metadata_item.h"

// Shared between the parts of the metadata encoder.
namespace MetadataEncoder {

// A value as text (dates in ISO form, data as UTF-8).
QString textOf(const QVariant& value);

// The packed language, "und" when none or not a three-letter code.
quint16 languageOrUndetermined(const QString& language);

// The box type of an ISO user-data key ("keywords" -> "kywd", "titl" as is).
QByteArray isoUserDataType(const QByteArray& key);

// A whole ISO/3GPP user-data box for the item, or nullopt (logged) when its
// value does not fit the box.
std::optional<QByteArray> isoUserDataBox(const QByteArray& type, const MetadataItem& item);

}  // namespace MetadataEncoder
