// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/metadata_item.h"

#include <cmath>

QByteArray MetadataOrigin::bytes() const {
    if (!valueInBetween) return prefix + suffix;
    return prefix + value.toByteArray() + suffix;
}

namespace {

bool sameValue(const QVariant& a, const QVariant& b) {
    if (a.typeId() != b.typeId()) return false;  // another type is a change
    if (a.typeId() == QMetaType::Double && std::isnan(a.toDouble()))
        return std::isnan(b.toDouble());  // a stored NaN is still itself
    return a == b;
}

}  // namespace

bool MetadataItem::isUnchanged() const {
    return origin.form != MetadataOrigin::Form::None && identifier == origin.identifier &&
           sameValue(value, origin.value) && dataType == origin.dataType &&
           language == origin.language;
}

QString metadataIdentifier(const QString& keySpace, const QByteArray& key) {
    static const char hex[] = "0123456789ABCDEF";
    QString out = keySpace;
    out += QLatin1Char('/');
    for (const char c : key) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x21 || b > 0x7e || b == '%' || b == '/') {
            out += QLatin1Char('%');
            out += QLatin1Char(hex[b >> 4]);
            out += QLatin1Char(hex[b & 0x0f]);
        } else {
            out += QLatin1Char(static_cast<char>(b));
        }
    }
    return out;
}
