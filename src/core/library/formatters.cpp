// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/formatters.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdio>
#include <limits>

char* size_to_unit(qint64 n, char* out_buffer) {
    constexpr int kBufferSize = 100;
    constexpr qint64 kKilo = 1000;
    constexpr qint64 kMega = kKilo * 1000;
    constexpr qint64 kGiga = kMega * 1000;
    constexpr qint64 kTera = kGiga * 1000;
    // Division step by step in single precision, as the texts have always been made.
    float v = 0.0f;
    if (n <= 999) {
        std::snprintf(out_buffer, kBufferSize, "%d bytes", static_cast<int>(n));
    } else if (n < kMega) {
        v = static_cast<float>(n) / 1000.0f;
        std::snprintf(out_buffer, kBufferSize, "%.2f KB", static_cast<double>(v));
    } else if (n < kGiga) {
        v = static_cast<float>(n) / 1000.0f;
        v = v / 1000.0f;
        std::snprintf(out_buffer, kBufferSize, "%.2f MB", static_cast<double>(v));
    } else if (n < kTera) {
        v = static_cast<float>(n) / 1000.0f;
        v = v / 1000.0f;
        v = v / 1000.0f;
        std::snprintf(out_buffer, kBufferSize, "%.2f GB", static_cast<double>(v));
    } else {
        v = static_cast<float>(n) / 1000.0f;
        v = v / 1000.0f;
        v = v / 1000.0f;
        v = v / 1000.0f;
        std::snprintf(out_buffer, kBufferSize, "%.2f TB", static_cast<double>(v));
    }
    return out_buffer;
}

QString sizeText(qint64 n) {
    char buffer[100] = {};
    return QString::fromLatin1(size_to_unit(n, buffer));
}

quint64 sizeFormString(const QString& text) {
    if (text.isEmpty()) return 0;
    const QChar unit = text.back();
    // The leading decimal number of what stands before the unit; none reads 0.
    static const QRegularExpression number(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch m = number.match(text.left(text.size() - 1));
    double value = m.hasMatch() ? m.captured(0).trimmed().toDouble() : 0.0;
    if (unit == QLatin1Char('B')) {
    } else if (unit == QLatin1Char('K')) {
        value *= 1000.0;
    } else if (unit == QLatin1Char('M')) {
        value *= 1000.0 * 1000.0;
    } else if (unit == QLatin1Char('G')) {
        value *= 1000.0 * 1000.0 * 1000.0;
    } else {
        value *= 1000.0 * 1000.0 * 1000.0 * 1000.0;
    }
    // Truncation to an unsigned count; out-of-range values are clamped.
    if (!(value > 0.0)) return 0;
    if (value >= 18446744073709551615.0) return std::numeric_limits<quint64>::max();
    return static_cast<quint64>(value);
}

QString getMediaDuration(qint32 seconds) {
    const qint32 h = seconds / 3600;
    const qint32 r = seconds % 3600;
    const qint32 m = r / 60;
    const qint32 sec = r % 60;
    if (seconds < 3600 && r < 60) return QString::asprintf("%ds", sec);
    if (seconds < 3600) return QString::asprintf("%dm:%ds", m, sec);
    return QString::asprintf("%dh:%dm:%ds", h, m, sec);
}
