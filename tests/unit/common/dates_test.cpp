// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QLocale>
#include <QTemporaryFile>
#include <QTimeZone>

#include "core/common/dates.h"
#include "core/common/file_dates.h"

// These run once in the machine's zone and again under zones with whole and
// half-hour offsets (see tests/CMakeLists.txt), so a mix-up of local and
// universal time shows.

TEST(Dates, ParsesBothPatternsAsLocalTime) {
    const QDateTime a = dateFromText("2020:01:02 03:04:05");
    const QDateTime b = dateFromText("2020-01-02 03:04:05");
    EXPECT_EQ(a, QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.timeSpec(), Qt::LocalTime);
    for (const char* bad :
         {"", "2020-01-02T03:04:05Z", "2020/01/02 03:04:05", "2020:13:02 03:04:05",
          "2020:02:30 03:04:05", "2020:01-02 03:04:05", "2020:01:02", "garbage"}) {
        EXPECT_FALSE(dateFromText(QString::fromLatin1(bad)).isValid()) << bad;
    }
}

TEST(Dates, TextIsLocalAndDescriptionIsUniversal) {
    const QDateTime local = dateFromText("2021:07:15 12:30:00");
    EXPECT_EQ(dateText(local), "2021:07:15 12:30:00");
    const QDateTime utc = local.toUTC();
    EXPECT_EQ(dateText(utc), "2021:07:15 12:30:00");  // rendered back in local time
    EXPECT_EQ(dateDescription(local), utc.toString("yyyy-MM-dd HH:mm:ss") + " +0000");
    const QDateTime noonUtc(QDate(2021, 7, 15), QTime(12, 0), QTimeZone::utc());
    EXPECT_EQ(dateDescription(noonUtc), "2021-07-15 12:00:00 +0000");
    EXPECT_EQ(dateDescription(noonUtc.toLocalTime()), "2021-07-15 12:00:00 +0000");
    EXPECT_EQ(dateText(QDateTime()), "");
    EXPECT_EQ(dateDescription(QDateTime()), "");
    // Four-digit years are written without the locale's formatter: the same text.
    const QLocale us(QLocale::English, QLocale::UnitedStates);
    for (const QDateTime& d : {QDateTime(QDate(999, 12, 31), QTime(23, 59, 59)),
                               QDateTime(QDate(1000, 1, 1), QTime(0, 0)),
                               QDateTime(QDate(2024, 2, 29), QTime(7, 8, 9, 999), QTimeZone::utc()),
                               QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59)),
                               QDateTime(QDate(10000, 1, 1), QTime(0, 0, 1))})
        EXPECT_EQ(dateText(d), us.toString(d.toLocalTime(), "yyyy:MM:dd HH:mm:ss"))
            << d.toString().toStdString();
}

TEST(FileDates, WritingSetsModificationAndReadingFindsIt) {
    QTemporaryFile f;
    ASSERT_TRUE(f.open());
    const QDateTime when = dateFromText("2019:05:04 10:11:12");
    ASSERT_TRUE(setFileDates(f.fileName(), QDateTime(), when));
    EXPECT_EQ(readFileDates(f.fileName()).modification, when);
    // With only a creation date, the creation date becomes the modification time.
    const QDateTime created = dateFromText("2001:02:03 04:05:06");
    ASSERT_TRUE(setFileDates(f.fileName(), created, QDateTime()));
    EXPECT_EQ(readFileDates(f.fileName()).modification, created);
    EXPECT_TRUE(readFileDates(f.fileName()).creation.isValid());
    EXPECT_FALSE(setFileDates(f.fileName(), QDateTime(), QDateTime()));
    EXPECT_FALSE(setFileDates("/no/such/file", created, created));
    EXPECT_FALSE(readFileDates("/no/such/file").modification.isValid());
    EXPECT_EQ(fileSizeOf("/no/such/file"), -1);
}
