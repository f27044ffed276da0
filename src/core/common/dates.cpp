#include "core/common/dates.h"

#include <QLocale>

namespace {
const QLocale& usLocale() {
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}
}  // namespace

QDateTime dateFromText(const QString& text) {
    for (const char* format : {kDateTextFormat, kDateTextFallbackFormat}) {
        const QDateTime d = usLocale().toDateTime(text, QLatin1String(format));
        if (d.isValid()) return d;  // local time
    }
    return {};
}

QString dateText(const QDateTime& date) {
    if (!date.isValid()) return {};
    const QDateTime local = date.toLocalTime();
    QString text = usLocale().toString(local, QLatin1String(kDateTextFormat));
    if (text.isEmpty()) text = usLocale().toString(local, QLatin1String(kDateTextFallbackFormat));
    return text;
}

QString dateDescription(const QDateTime& date) {
    if (!date.isValid()) return {};
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000");
}
