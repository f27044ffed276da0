// SPDX-License-Identifier: GPL-3.0-or-later
// Values of the 3GPP/ISO user-data boxes: packed languages, keyword lists,
// recording years and the binary location built from ISO 6709 text.
#include "core/video/metadata_encoder.h"
#include "core/video/metadata_encoder_private.h"

#include <QRegularExpression>

#include <cmath>

#include "core/common/logging.h"
#include "core/video/bmff_tree.h"

namespace MetadataEncoder {

using Bmff::appendU16;
using Bmff::appendU32;
using Bmff::appendU8;

std::optional<quint16> packedLanguage(const QString& language) {
    if (language.size() != 3) return std::nullopt;
    quint16 code = 0;
    for (QChar c : language) {
        const char16_t u = c.toLower().unicode();
        if (u < u'a' || u > u'z') return std::nullopt;
        code = quint16((code << 5) | (u - 0x60));
    }
    return code;
}

namespace {

const quint16 kUndetermined = *packedLanguage(QStringLiteral("und"));

// One coordinate of ISO 6709 text: "+DD.D", "+DDMM.M" or "+DDMMSS.S" for a
// latitude (one more degree digit for a longitude).
std::optional<double> coordinate(const QString& part, int degreeDigits) {
    const bool negative = part.startsWith(QLatin1Char('-'));
    const QString digits = part.mid(1);
    const qsizetype dot = digits.indexOf(QLatin1Char('.'));
    const qsizetype whole = dot < 0 ? digits.size() : dot;
    bool ok = false;
    const double number = digits.toDouble(&ok);
    if (!ok) return std::nullopt;
    double degrees = 0;
    if (whole <= degreeDigits) {
        degrees = number;
    } else if (whole == degreeDigits + 2) {
        const double d = std::floor(number / 100);
        degrees = d + (number - d * 100) / 60;
    } else if (whole == degreeDigits + 4) {
        const double d = std::floor(number / 10000);
        const double m = std::floor((number - d * 10000) / 100);
        degrees = d + m / 60 + (number - d * 10000 - m * 100) / 3600;
    } else {
        return std::nullopt;
    }
    return negative ? -degrees : degrees;
}

void appendFixed16(QByteArray& out, double value) {
    appendU32(out, quint32(qint32(std::lround(value * 65536.0))));
}

}  // namespace

quint16 languageOrUndetermined(const QString& language) {
    return packedLanguage(language).value_or(kUndetermined);
}

std::optional<QByteArray> locationPayload(const QString& iso6709, const QString& language) {
    static const QRegularExpression pattern(QStringLiteral(
        R"(^([+-]\d+(?:\.\d*)?)([+-]\d+(?:\.\d*)?)([+-](?:\d+(?:\.\d*)?)?)?(?:CRS[^/]*)?/?$)"));
    const QRegularExpressionMatch m = pattern.match(iso6709.trimmed());
    if (!m.hasMatch()) return std::nullopt;
    const std::optional<double> latitude = coordinate(m.captured(1), 2);
    const std::optional<double> longitude = coordinate(m.captured(2), 3);
    const QString altitudeText = m.captured(3);
    double altitude = 0;
    if (altitudeText.size() > 1) altitude = altitudeText.toDouble();
    if (!latitude || !longitude || std::abs(*latitude) > 90 || std::abs(*longitude) > 180 ||
        std::abs(altitude) >= 32768) {
        return std::nullopt;
    }
    QByteArray body;
    appendU16(body, languageOrUndetermined(language));
    appendU8(body, 0);  // name: empty text
    appendU8(body, 0);  // role: shooting location
    appendFixed16(body, *longitude);
    appendFixed16(body, *latitude);
    appendFixed16(body, altitude);
    body.append("earth", 6);  // astronomical body, terminated
    appendU8(body, 0);        // notes: empty text
    return body;
}

QByteArray isoTextPayload(const QString& text, const QString& language) {
    QByteArray body;
    appendU16(body, languageOrUndetermined(language));
    body += text.toUtf8();
    appendU8(body, 0);
    return body;
}

std::optional<QByteArray> keywordListPayload(const QString& text, const QString& language) {
    QByteArray entries;
    int count = 0;
    for (const QString& keyword : text.split(QLatin1Char(','))) {
        QByteArray bytes = keyword.toUtf8();
        if (bytes.isEmpty()) continue;
        if (count == 255) {
            qCWarning(lcTagsmith)
                << "Movie rewriter: more than 255 keywords; the rest are left out";
            break;
        }
        // Each keyword is at most 254 bytes and its terminator; cut on a
        // character boundary.
        if (bytes.size() > 254) {
            QString cut = keyword;
            while (cut.toUtf8().size() > 254) cut.chop(1);
            bytes = cut.toUtf8();
        }
        appendU8(entries, quint8(bytes.size() + 1));
        entries += bytes;
        appendU8(entries, 0);
        ++count;
    }
    if (count == 0) return std::nullopt;
    QByteArray body;
    appendU16(body, languageOrUndetermined(language));
    appendU8(body, quint8(count));
    body += entries;
    return body;
}

std::optional<QByteArray> recordingYearPayload(const QVariant& value) {
    bool ok = false;
    const int year = value.toString().left(4).toInt(&ok);
    if (!ok || year <= 0 || year > 0xffff) return std::nullopt;
    QByteArray body;
    appendU16(body, quint16(year));
    return body;
}

QByteArray isoUserDataType(const QByteArray& key) {
    // The media framework names some of these boxes by key rather than by
    // box type; both reach the same box.
    static const QHash<QByteArray, QByteArray> names{
        {"title", "titl"},         {"description", "dscp"},
        {"copyright", "cprt"},     {"performer", "perf"},
        {"author", "auth"},        {"genre", "gnre"},
        {"albumAndTrack", "albm"}, {"recordingYear", "yrrc"},
        {"location", "loci"},      {"keywords", "kywd"},
        {"keywordList", "kywd"},   {"collection", "coll"},
        {"userRating", "rtng"},    {"mediaClassification", "clsf"},
        {"mediaRating", "rtng"},   {"date", "date"},
    };
    return names.value(key, key);
}

std::optional<QByteArray> isoUserDataBox(const QByteArray& type, const MetadataItem& item) {
    const QVariant& value = item.value;
    if (value.typeId() == QMetaType::QByteArray) return Bmff::makeBox(type, value.toByteArray());
    const QString text = textOf(value);
    if (type == "date") {
        // The date box holds bare text, without the version and language of
        // its neighbours; that is how other tools write and read it.
        return Bmff::makeBox(type, text.toUtf8());
    }
    std::optional<QByteArray> body;
    if (type == "loci") {
        body = locationPayload(text, item.language);
        if (!body) qCWarning(lcTagsmith) << "Movie rewriter: not a location, left out:" << text;
    } else if (type == "kywd") {
        body = keywordListPayload(text, item.language);
    } else if (type == "yrrc") {
        body = recordingYearPayload(value);
        if (!body) qCWarning(lcTagsmith) << "Movie rewriter: not a year, left out:" << text;
    } else if (type == "rtng" || type == "clsf") {
        // Their entity codes are not part of the text; without them the box
        // would claim a rating system it does not have.
        qCWarning(lcTagsmith) << "Movie rewriter: a rating given as text is left out";
    } else {
        body = isoTextPayload(text, item.language);
    }
    if (!body) return std::nullopt;
    return Bmff::makeFullBox(type, 0, 0, *body);
}

}  // namespace MetadataEncoder
