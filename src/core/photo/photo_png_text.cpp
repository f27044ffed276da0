// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_png_text.h"

#include <QtEndian>

QByteArray withoutPngTexts(const QByteArray& png) {
    static const QByteArray signature("\x89PNG\r\n\x1a\n", 8);
    if (!png.startsWith(signature)) return png;
    QByteArray out = signature;
    qsizetype at = signature.size();
    while (at + 12 <= png.size()) {
        const quint32 length = qFromBigEndian<quint32>(png.constData() + at);
        if (length > quint32(png.size() - at - 12)) return png;
        const QByteArray type = png.mid(at + 4, 4);
        const qsizetype whole = 12 + qsizetype(length);
        bool keep = true;
        if (type == "tEXt" || type == "zTXt" || type == "iTXt") {
            const QByteArray data = png.mid(at + 8, length);
            const QByteArray keyword = data.left(data.indexOf('\0'));
            keep = keyword.startsWith("Raw profile type") || keyword == "XML:com.adobe.xmp";
        }
        if (keep) out += png.mid(at, whole);
        at += whole;
        if (type == "IEND") return at == png.size() ? out : out + png.mid(at);
    }
    return png;
}
