#include "core/video/metadata_item.h"

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
