// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

// The batch tools' date arithmetic. The shifts are a component-wise carry
// scheme, not calendar arithmetic: each component carries or borrows at most
// once into the next, every month counts as 31 days, and nothing is
// normalised afterwards. A December date therefore rolls to month 0 of the
// next year on any addition, and subtracting zero from a zero second,
// minute or hour still borrows. Users' scripts depend on these results;
// keep them exactly.

// The date split into local components, shifted forward, written
// "%d:%@:%@ %@:%@:%@" (each component below 10 gets a leading "0", so -5
// is written "0-5").
QString AddTimeIntwithDate(const QDateTime& date, qint32 year, qint32 month, qint32 day,
                           qint32 hour, qint32 minute, qint32 second);
// The mirror, with a less-or-equal test for each borrow.
QString SubTimeIntwithDate(const QDateTime& date, qint32 year, qint32 month, qint32 day,
                           qint32 hour, qint32 minute, qint32 second);

// A date text moved by `seconds`, as the universal-time text
// "yyyy-MM-dd HH:mm:ss"; an unreadable text comes back unchanged.
QString GetChangeDateforExifDate(const QString& dateText, double seconds);

// The universal-time text of a date, "yyyy:MM:dd HH:mm:ss": the date's
// standard description with "-" made ":" and the offset dropped.
QString universalDateText(const QDateTime& date);

// A date found in the written forms people use, in local time: the
// program's own forms, ISO 8601 ("2019-05-06T19:08:00"), "2019/05/06",
// "May 6, 2019 7:08 PM", "6 May 2019 19:08", "05/06/2019" (month first) and
// dotted dates, which are read day first ("06.05.2019 19:08"). A time is
// optional; without one it is midnight. Invalid when no date is found.
QDateTime detectDate(const QString& text);
