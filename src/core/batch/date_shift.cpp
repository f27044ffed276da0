// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/date_shift.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>

#include "core/common/dates.h"
#include "core/common/logging.h"

namespace {

struct Parts {
    qint64 year, month, day, hour, minute, second;
};

Parts partsOf(const QDateTime& date) {
    const QDateTime local = date.toLocalTime();
    const QDate d = local.date();
    const QTime t = local.time();
    return {d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second()};
}

QString twoDigits(qint64 value) {
    return value < 10 ? QStringLiteral("0%1").arg(value) : QString::number(value);
}

QString partsText(const Parts& p) {
    return QStringLiteral("%1:%2:%3 %4:%5:%6")
        .arg(QString::number(p.year), twoDigits(p.month), twoDigits(p.day), twoDigits(p.hour),
             twoDigits(p.minute), twoDigits(p.second));
}

// One carry step: the value grows by `amount`; past `limit` it wraps by
// `span` and the next component takes one.
void carry(qint64& value, qint64 amount, qint64 limit, qint64 span, qint64& next) {
    if (value + amount > limit) {
        value = value + amount - span;
        ++next;
    } else {
        value += amount;
    }
}

// One borrow step: a value not above `amount` borrows `span` from the next.
void borrow(qint64& value, qint64 amount, qint64 span, qint64& next) {
    if (value <= amount) {
        value = value - amount + span;
        --next;
    } else {
        value -= amount;
    }
}

}  // namespace

QString AddTimeIntwithDate(const QDateTime& date, qint32 year, qint32 month, qint32 day,
                           qint32 hour, qint32 minute, qint32 second) {
    Parts p = partsOf(date);
    carry(p.second, second, 59, 60, p.minute);
    carry(p.minute, minute, 59, 60, p.hour);
    carry(p.hour, hour, 23, 24, p.day);
    carry(p.day, day, 30, 31, p.month);
    carry(p.month, month, 11, 12, p.year);
    p.year += year;
    return partsText(p);
}

QString SubTimeIntwithDate(const QDateTime& date, qint32 year, qint32 month, qint32 day,
                           qint32 hour, qint32 minute, qint32 second) {
    Parts p = partsOf(date);
    borrow(p.second, second, 60, p.minute);
    borrow(p.minute, minute, 60, p.hour);
    borrow(p.hour, hour, 24, p.day);
    borrow(p.day, day, 31, p.month);
    borrow(p.month, month, 12, p.year);
    p.year -= year;
    return partsText(p);
}

QString GetChangeDateforExifDate(const QString& dateText, double seconds) {
    QString result = dateText;
    const QDateTime date = dateFromText(dateText);
    if (date.isValid()) {
        const QStringList parts =
            dateDescription(date.addMSecs(qRound64(seconds * 1000.0))).split(QLatin1Char(' '));
        if (parts.size() == 3) result = parts[0] + QLatin1Char(' ') + parts[1];
    }
    qCInfo(lcTagsmith, "origStampString==%s==", qPrintable(result));
    return result;
}

QString universalDateText(const QDateTime& date) {
    const QStringList parts = dateDescription(date).split(QLatin1Char(' '));
    if (parts.size() < 3) return {};
    QString text = parts[0] + QLatin1Char(' ') + parts[1];
    return text.replace(QLatin1Char('-'), QLatin1Char(':'));
}

namespace {

int monthNumber(const QString& name) {
    static const std::array<const char*, 12> kMonths = {"jan", "feb", "mar", "apr", "may", "jun",
                                                        "jul", "aug", "sep", "oct", "nov", "dec"};
    const QString prefix = name.left(3).toLower();
    for (int i = 0; i < 12; ++i) {
        if (prefix == QLatin1String(kMonths[i])) return i + 1;
    }
    return 0;
}

// A written date form: its pattern and which captures hold year, month and
// day (a month capture of letters is a month name).
struct DateForm {
    QRegularExpression pattern;
    int year, month, day;
};

const QList<DateForm>& dateForms() {
    static const QString month = QStringLiteral(
        "(Jan(?:uary)?|Feb(?:ruary)?|Mar(?:ch)?|Apr(?:il)?|May|June?|July?|Aug(?:ust)?|"
        "Sep(?:t|tember)?|Oct(?:ober)?|Nov(?:ember)?|Dec(?:ember)?)\\.?");
    static const QList<DateForm> forms = {
        {QRegularExpression(
             QStringLiteral("(?<!\\d)(\\d{4})[-/:_](\\d{1,2})[-/:_](\\d{1,2})(?!\\d)")),
         1, 2, 3},
        {QRegularExpression(QStringLiteral("(?<!\\d)(\\d{1,2})\\.(\\d{1,2})\\.(\\d{4})(?!\\d)")), 3,
         2, 1},
        {QRegularExpression(QStringLiteral("(?<!\\d)(\\d{1,2})/(\\d{1,2})/(\\d{4})(?!\\d)")), 3, 1,
         2},
        {QRegularExpression(QStringLiteral("\\b") + month +
                                QStringLiteral("\\s+(\\d{1,2})(?:st|nd|rd|th)?,?\\s+(\\d{4})\\b"),
                            QRegularExpression::CaseInsensitiveOption),
         3, 1, 2},
        {QRegularExpression(QStringLiteral("\\b(\\d{1,2})(?:st|nd|rd|th)?\\s+") + month +
                                QStringLiteral(",?\\s+(\\d{4})\\b"),
                            QRegularExpression::CaseInsensitiveOption),
         3, 2, 1},
    };
    return forms;
}

QTime timeAfter(const QString& text, qsizetype from) {
    static const QRegularExpression time(QStringLiteral(
        "(?<!\\d)(\\d{1,2})[:.](\\d{2})(?:[:.](\\d{2}))?(?:\\s*([AaPp])\\.?[Mm]\\.?)?"));
    const QRegularExpressionMatch m = time.match(text, from);
    if (!m.hasMatch()) return QTime(0, 0);
    int hour = m.captured(1).toInt();
    const QString half = m.captured(4).toLower();
    if (half == QLatin1String("p") && hour < 12) hour += 12;
    if (half == QLatin1String("a") && hour == 12) hour = 0;
    const QTime t(hour, m.captured(2).toInt(), m.captured(3).toInt());
    return t.isValid() ? t : QTime(0, 0);
}

}  // namespace

QDateTime detectDate(const QString& text) {
    if (const QDateTime own = dateFromText(text.trimmed()); own.isValid()) return own;
    QRegularExpressionMatch best;
    const DateForm* bestForm = nullptr;
    for (const DateForm& form : dateForms()) {
        const QRegularExpressionMatch m = form.pattern.match(text);
        if (m.hasMatch() && (!bestForm || m.capturedStart() < best.capturedStart())) {
            best = m;
            bestForm = &form;
        }
    }
    if (!bestForm) return {};
    const QString monthText = best.captured(bestForm->month);
    const int month = monthText.at(0).isDigit() ? monthText.toInt() : monthNumber(monthText);
    const QDate day(best.captured(bestForm->year).toInt(), month,
                    best.captured(bestForm->day).toInt());
    if (!day.isValid()) return {};
    return QDateTime(day, timeAfter(text, best.capturedEnd()));
}
