// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/dates.h"

#include <QLocale>

namespace {
const QLocale& usLocale() {
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

// A text of exactly "yyyy?MM?dd HH:mm:ss" with `separator` for "?", read
// without the locale's parser, which costs more than the rest of a photo's
// record. Anything else, and a local time the zone skips, answers an invalid
// date, so the parser decides.
QDateTime plainDate(const QString& text, char separator) {
    if (text.size() != 19 || text[4] != QLatin1Char(separator) ||
        text[7] != QLatin1Char(separator) || text[10] != QLatin1Char(' ') ||
        text[13] != QLatin1Char(':') || text[16] != QLatin1Char(':'))
        return {};
    bool ok = true;
    auto number = [&](int at, int count) {
        int value = 0;
        for (int i = at; i < at + count; ++i) {
            const char16_t c = text[i].unicode();
            ok = ok && c >= u'0' && c <= u'9';
            value = value * 10 + (c - u'0');
        }
        return value;
    };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    if (!ok || !date.isValid() || !time.isValid()) return {};
    const QDateTime local(date, time);
    return local.isValid() && local.time() == time ? local : QDateTime();
}

}  // namespace

QDateTime dateFromText(const QString& text) {
    for (const char* format : {kDateTextFormat, kDateTextFallbackFormat}) {
        if (const QDateTime d = plainDate(text, format[4]); d.isValid()) return d;
        const QDateTime d = usLocale().toDateTime(text, QLatin1String(format));
        if (d.isValid()) return d;  // local time
    }
    return {};
}

QString dateText(const QDateTime& date) {
    if (!date.isValid()) return {};
    const QDateTime local = date.toLocalTime();
    // Four-digit years written here: the locale's formatter costs more than
    // the rest of an audio file's record. It writes the other years.
    const QDate day = local.date();
    const QTime time = local.time();
    if (day.year() >= 1000 && day.year() <= 9999) {
        char16_t text[19];
        auto put = [&](int at, int value, int digits) {
            for (int i = at + digits - 1; i >= at; --i, value /= 10) text[i] = u'0' + value % 10;
        };
        put(0, day.year(), 4);
        put(5, day.month(), 2);
        put(8, day.day(), 2);
        put(11, time.hour(), 2);
        put(14, time.minute(), 2);
        put(17, time.second(), 2);
        text[4] = text[7] = u':';
        text[10] = u' ';
        text[13] = text[16] = u':';
        return QString(reinterpret_cast<const QChar*>(text), 19);
    }
    QString text = usLocale().toString(local, QLatin1String(kDateTextFormat));
    if (text.isEmpty()) text = usLocale().toString(local, QLatin1String(kDateTextFallbackFormat));
    return text;
}

QString dateDescription(const QDateTime& date) {
    if (!date.isValid()) return {};
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000");
}
