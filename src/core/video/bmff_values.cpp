// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/bmff_values.h"

#include <QSet>
#include <QStringDecoder>

#include <cstring>
#include <limits>

#include "core/video/bmff_box.h"
#include "core/video/mac_roman.h"

namespace Bmff {

QString DataType::integer(bool isSigned, int bytes) {
    return QStringLiteral("com.apple.metadata.datatype.%1int%2")
        .arg(isSigned ? QString() : QStringLiteral("u"))
        .arg(bytes * 8);
}

namespace {

QString utf8Text(QByteArrayView bytes) {
    while (!bytes.isEmpty() && bytes.back() == '\0') bytes.chop(1);
    return QString::fromUtf8(bytes);
}

QString utf16BigEndianText(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size() / 2);
    for (qint64 i = 0; i + 1 < bytes.size(); i += 2) text += QChar(readU16(bytes, i));
    while (text.endsWith(QChar(0))) text.chop(1);
    return text;
}

bool isValidUtf8(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);  // decodes only when made into a string
    return !decoder.hasError();
}

// A big-endian integer of 1, 2, 3, 4 or 8 bytes; false for other sizes or
// for an unsigned value too large for a signed 64-bit number.
bool integerValue(QByteArrayView bytes, bool isSigned, DecodedValue& out) {
    const qint64 n = bytes.size();
    if (n != 1 && n != 2 && n != 3 && n != 4 && n != 8) return false;
    quint64 raw = 0;
    for (qint64 i = 0; i < n; ++i) raw = (raw << 8) | static_cast<unsigned char>(bytes[i]);
    qint64 value = qint64(raw);
    if (isSigned && n < 8) {
        const quint64 signBit = quint64(1) << (n * 8 - 1);
        if (raw & signBit) value = qint64(raw) - qint64(signBit << 1);
    } else if (!isSigned && n == 8 && raw > quint64(std::numeric_limits<qint64>::max())) {
        return false;
    }
    out.value = value;
    out.dataType = DataType::integer(isSigned, n == 3 ? 4 : int(n));
    return true;
}

bool floatValue(QByteArrayView bytes, int size, DecodedValue& out) {
    if (bytes.size() != size) return false;
    if (size == 4) {
        const quint32 raw = readU32(bytes, 0);
        float f;
        std::memcpy(&f, &raw, sizeof f);
        out.value = double(f);
        out.dataType = DataType::kFloat32;
    } else {
        const quint64 raw = readU64(bytes, 0);
        double d;
        std::memcpy(&d, &raw, sizeof d);
        out.value = d;
        out.dataType = DataType::kFloat64;
    }
    return true;
}

void rawValue(QByteArrayView bytes, const QString& dataType, DecodedValue& out) {
    out.value = bytes.toByteArray();
    out.dataType = dataType;
}

double fixed16(QByteArrayView data, qint64 pos) {
    return double(qint32(readU32(data, pos))) / 65536.0;
}

}  // namespace

bool decodeDataAtom(QByteArrayView payload, DecodedValue& out) {
    if (payload.size() < 8) return false;
    const quint32 indicator = readU32(payload, 0);
    const quint16 language = readU16(payload, 6);
    const QByteArrayView bytes = payload.sliced(8);
    out = DecodedValue();
    out.language = language == 0 ? QString() : languageFromCode(language);
    if ((indicator >> 24) != 0) {  // not the well-known type set
        rawValue(bytes, DataType::kRaw, out);
        return true;
    }
    switch (indicator) {
        case kUtf8:
        case kUtf8Sort:
            out.value = utf8Text(bytes);
            out.dataType = DataType::kUtf8;
            return true;
        case kUtf16:
        case kUtf16Sort:
            out.value = utf16BigEndianText(bytes);
            out.dataType = DataType::kUtf16;
            return true;
        case kJpeg:
            rawValue(bytes, DataType::kJpeg, out);
            return true;
        case kPng:
            rawValue(bytes, DataType::kPng, out);
            return true;
        case kBmp:
            rawValue(bytes, DataType::kBmp, out);
            return true;
        case kGif:
            rawValue(bytes, DataType::kGif, out);
            return true;
        case kSignedBE:
        case kUnsignedBE:
            if (integerValue(bytes, indicator == kSignedBE, out)) return true;
            break;
        case kInt8:
        case kUInt8:
            if (bytes.size() == 1 && integerValue(bytes, indicator == kInt8, out)) return true;
            break;
        case kInt16BE:
        case kUInt16BE:
            if (bytes.size() == 2 && integerValue(bytes, indicator == kInt16BE, out)) return true;
            break;
        case kInt32BE:
        case kUInt32BE:
            if (bytes.size() == 4 && integerValue(bytes, indicator == kInt32BE, out)) return true;
            break;
        case kInt64BE:
        case kUInt64BE:
            if (bytes.size() == 8 && integerValue(bytes, indicator == kInt64BE, out)) return true;
            break;
        case kFloat32BE:
            if (floatValue(bytes, 4, out)) return true;
            break;
        case kFloat64BE:
            if (floatValue(bytes, 8, out)) return true;
            break;
        default:
            break;
    }
    // Implicit types (track numbers and the like), unknown types and
    // numbers of an unexpected width are kept as they are stored.
    rawValue(bytes, DataType::kRaw, out);
    return true;
}

QList<DecodedValue> decodeInternationalText(QByteArrayView payload) {
    QList<DecodedValue> values;
    qint64 pos = 0;
    while (payload.size() - pos >= 4) {
        const qint64 length = readU16(payload, pos);
        const quint16 language = readU16(payload, pos + 2);
        if (length > payload.size() - pos - 4) break;
        const QByteArrayView bytes = payload.sliced(pos + 4, length);
        DecodedValue value;
        value.stored = payload.sliced(pos, 4 + length);
        pos += 4 + length;
        value.language = languageFromCode(language);
        if (bytes.size() >= 2 && readU16(bytes, 0) == 0xfeff) {
            value.value = utf16BigEndianText(bytes.sliced(2));
            value.dataType = DataType::kUtf16;
        } else if (isPackedLanguage(language) || isValidUtf8(bytes)) {
            value.value = utf8Text(bytes);
            value.dataType = DataType::kUtf8;
        } else {
            // A Macintosh language code means Mac Roman text (some tools
            // store UTF-8 there instead, which the test above reads).
            QByteArrayView text = bytes;
            while (!text.isEmpty() && text.back() == '\0') text.chop(1);
            value.value = MacRoman::decode(text);
            value.dataType = DataType::kUtf8;
        }
        values.append(value);
    }
    return values;
}

QString decodeTerminatedText(QByteArrayView data, qint64* consumed) {
    if (data.size() >= 2 && readU16(data, 0) == 0xfeff) {
        qint64 end = 2;
        while (end + 1 < data.size() && readU16(data, end) != 0) end += 2;
        const bool terminated = end + 1 < data.size();
        if (consumed) *consumed = terminated ? end + 2 : data.size();
        return utf16BigEndianText(data.sliced(2, end - 2));
    }
    const qint64 end = data.indexOf('\0');
    if (end < 0) {
        if (consumed) *consumed = data.size();
        return QString::fromUtf8(data);
    }
    if (consumed) *consumed = end + 1;
    return QString::fromUtf8(data.first(end));
}

bool isIsoUserDataType(QByteArrayView type) {
    static const QSet<QByteArray> types = {"titl", "dscp", "cprt", "perf", "auth", "gnre", "albm",
                                           "yrrc", "kywd", "loci", "rtng", "clsf", "coll", "date"};
    return types.contains(type.toByteArray());
}

QString iso6709Text(double latitude, double longitude, double altitude) {
    return QString::asprintf("%+08.4f%+09.4f%+08.3f/", latitude, longitude, altitude);
}

bool decodeIsoUserData(QByteArrayView type, QByteArrayView payload, DecodedValue& out) {
    out = DecodedValue();
    const QByteArrayView body = fullBoxBody(payload);
    const bool fullBoxWithLanguage =
        payload.size() >= 6 && readU32(payload, 0) == 0 && isPackedLanguage(readU16(payload, 4));
    if (type == QByteArrayView("date") && !fullBoxWithLanguage) {
        // Some writers store the date as plain text, without the full-box
        // header and language of the other 3GPP boxes.
        out.value = utf8Text(payload);
        out.dataType = DataType::kUtf8;
        return true;
    }
    if (type == QByteArrayView("yrrc")) {
        if (body.size() < 2) return false;
        out.value = qint64(readU16(body, 0));
        out.dataType = DataType::integer(false, 2);
        return true;
    }
    qint64 pos = 0;
    if (type == QByteArrayView("rtng")) pos = 8;  // rating entity and criteria
    if (type == QByteArrayView("clsf")) pos = 6;  // classification entity and table
    if (body.size() < pos + 2) return false;
    out.language = languageFromCode(readU16(body, pos) & 0x7fff);
    pos += 2;
    const QByteArrayView rest = body.sliced(pos);
    if (type == QByteArrayView("kywd")) {
        if (rest.isEmpty()) return false;
        const int count = static_cast<unsigned char>(rest[0]);
        QStringList keywords;
        qint64 at = 1;
        for (int i = 0; i < count && at < rest.size(); ++i) {
            const qint64 size = static_cast<unsigned char>(rest[at]);
            ++at;
            if (size > rest.size() - at) break;
            keywords.append(decodeTerminatedText(rest.sliced(at, size)));
            at += size;
        }
        out.value = keywords.join(QLatin1Char(','));
        out.dataType = DataType::kUtf8;
        return true;
    }
    qint64 used = 0;
    const QString text = decodeTerminatedText(rest, &used);
    out.dataType = rest.startsWith("\xfe\xff") ? DataType::kUtf16 : DataType::kUtf8;
    if (type == QByteArrayView("loci")) {
        // name, then role (1 byte), longitude, latitude, altitude (16.16 fixed)
        const QByteArrayView place = rest.sliced(used);
        if (place.size() < 13) return false;
        out.value = iso6709Text(fixed16(place, 5), fixed16(place, 1), fixed16(place, 9));
        out.dataType = DataType::kIso6709;
        return true;
    }
    out.value = text;
    return true;
}

}  // namespace Bmff
