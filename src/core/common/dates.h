// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

// The program's own date text form, in the local time zone.
inline constexpr const char* kDateTextFormat = "yyyy:MM:dd HH:mm:ss";
inline constexpr const char* kDateTextFallbackFormat = "yyyy-MM-dd HH:mm:ss";

// Reads a date text: first "yyyy:MM:dd HH:mm:ss", then "yyyy-MM-dd HH:mm:ss",
// en_US, local time. An unreadable text gives an invalid date.
QDateTime dateFromText(const QString& text);

// Writes a date as "yyyy:MM:dd HH:mm:ss" in local time (the second form if
// the first yields nothing); an invalid date gives "".
QString dateText(const QDateTime& date);

// The standard description of a date: "yyyy-MM-dd HH:mm:ss +0000", always in
// universal time. An invalid date gives "".
QString dateDescription(const QDateTime& date);
