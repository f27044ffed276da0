// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/batch/batch_dates.h"
#include "core/batch/date_shift.h"
#include "core/common/dates.h"

// Run again under other zones (tests/CMakeLists.txt): the shifts work on
// local components, the fixed way renders universal time.

namespace {
struct Shift {
    const char* from;
    int y, mo, d, h, mi, s;
    const char* added;
    const char* subtracted;
};
}  // namespace

TEST(DatesBatchShift, CarrySchemeTable) {
    const Shift table[] = {
        {"2020:05:31 23:59:59", 0, 0, 0, 0, 0, 1, "2020:06:01 00:00:00", "2020:05:31 23:59:58"},
        {"2020:12:15 10:20:30", 0, 0, 0, 0, 0, 0, "2021:00:15 10:20:30", "2020:12:15 10:20:30"},
        {"2021:02:28 12:00:00", 0, 0, 5, 0, 0, 0, "2021:03:02 12:00:00", "2021:02:23 11:59:60"},
        {"2021:03:01 10:00:00", 0, 0, 1, 0, 0, 0, "2021:03:02 10:00:00", "2021:02:31 09:59:60"},
        {"2021:01:10 10:00:00", 0, 0, 0, 0, 0, 0, "2021:01:10 10:00:00", "2021:01:10 09:59:60"},
        // A carry does not cascade: 59 + 1 wraps once, 60 + 59 minutes once.
        {"2021:06:10 10:59:59", 0, 0, 0, 0, 59, 1, "2021:06:10 11:59:00", "2021:06:10 09:60:58"},
        {"2021:11:30 23:00:00", 1, 1, 1, 1, 0, 0, "2023:01:01 00:00:00", "2020:10:29 21:59:60"},
        {"2021:03:04 05:06:07", 0, 0, 0, 0, 0, -5, "2021:03:04 05:06:02", "2021:03:04 05:06:12"},
        {"2021:03:04 05:06:07", 0, 0, 0, 0, 0, -10, "2021:03:04 05:06:0-3", "2021:03:04 05:06:17"},
        {"2021:03:04 05:06:07", 0, 0, 0, 0, 0, 1000, "2021:03:04 05:07:947",
         "2021:03:04 05:05:0-933"},
        {"2021:03:04 05:06:07", 10, 0, 0, 30, 0, 0, "2031:03:05 11:06:07", "2011:03:03 0-1:06:07"},
    };
    for (const Shift& t : table) {
        const QDateTime date = dateFromText(QString::fromLatin1(t.from));
        ASSERT_TRUE(date.isValid()) << t.from;
        EXPECT_EQ(AddTimeIntwithDate(date, t.y, t.mo, t.d, t.h, t.mi, t.s), t.added) << t.from;
        EXPECT_EQ(SubTimeIntwithDate(date, t.y, t.mo, t.d, t.h, t.mi, t.s), t.subtracted) << t.from;
    }
}

TEST(DatesBatchShift, ExifDateMoveAndUniversalText) {
    const QDateTime local = dateFromText("2020:01:02 03:04:05");
    const QString utc = local.toUTC().toString("yyyy-MM-dd HH:mm:ss");
    EXPECT_EQ(GetChangeDateforExifDate("2020:01:02 03:04:05", 0), utc);
    EXPECT_EQ(GetChangeDateforExifDate("2020-01-02 03:03:05", 60.0), utc);
    EXPECT_EQ(GetChangeDateforExifDate("not a date", 60.0), "not a date");
    EXPECT_EQ(universalDateText(local), QString(utc).replace('-', ':'));
}

TEST(DatesBatchShift, DetectorReadsWrittenForms) {
    const QDateTime want(QDate(2019, 5, 6), QTime(19, 8));
    for (const char* text :
         {"May 6, 2019 7:08 PM", "06.05.2019 19:08", "6 May 2019 19:08", "2019/05/06 19:08:00",
          "2019-05-06T19:08:00", "05/06/2019 7:08 pm", "shot on Monday, May 6th, 2019 at 19.08"}) {
        EXPECT_EQ(detectDate(QString::fromUtf8(text)), want) << text;
    }
    EXPECT_EQ(detectDate("2019/05/06"), QDateTime(QDate(2019, 5, 6), QTime(0, 0)));
    for (const char* text : {"", "no date here", "31.02.2019", "12345678"})
        EXPECT_FALSE(detectDate(QString::fromLatin1(text)).isValid()) << text;
}

TEST(DatesBatchShift, FixedDateStepsPerItemAndShiftFallsBack) {
    BatchDateChange change;
    change.fixedDate = "2020:01:01 10:00:00";
    change.step = true;
    change.stepCount = "2";
    change.stepUnit = "Minute";
    const IKImageItem item;
    for (int i = 0; i < 3; ++i) {
        const QDateTime want = dateFromText("2020:01:01 10:00:00").addSecs(120 * i);
        EXPECT_EQ(batchDateTextFor(item, change, i), universalDateText(want));
        EXPECT_EQ(batchCreationDateFor(item, change, i), want);
    }
    change.stepUnit = "Day";  // no such unit: no step
    EXPECT_EQ(batchDateTextFor(item, change, 2), batchDateTextFor(item, change, 0));
    change.fixedDate = "2020:13:01 10:00:00";
    EXPECT_FALSE(batchDateProblem(change).isEmpty());

    change.fixedDate = "2020";  // under five characters: the shift way
    change.days = 1;
    IKImageItem shot;
    shot.shootDateStr = "May 6, 2019 7:08 PM";
    EXPECT_TRUE(batchDateProblem(change).isEmpty());
    EXPECT_EQ(batchDateTextFor(shot, change, 0), "2019:05:07 19:08:00");
    shot.shootDateStr = "sometime";
    EXPECT_EQ(batchDateTextFor(shot, change, 0), "sometime");
}

TEST(DatesBatchShift, PictureIntervalMovesEachCreationDate) {
    BatchDateChange change;
    change.fixedDate = "2020:01:01 10:00:00";  // the recorded-date way keeps it
    change.pictureShown = true;
    change.beforeOriginal = "2019:05:06 10:00:00";
    change.afterOriginal = "2019-05-07 11:30:15";
    IKImageItem item;  // no file: its listed creation date counts
    item.fileCreateDate = dateFromText("2021:06:10 12:00:00");
    EXPECT_TRUE(batchDateProblem(change, true).isEmpty());
    EXPECT_EQ(batchCreationDateFor(item, change, 3), dateFromText("2021:06:11 13:30:15"));
    EXPECT_EQ(batchDateTextFor(item, change, 0), universalDateText(dateFromText(change.fixedDate)));
    change.afterOriginal = "2019:05:06 09:00:00";  // backwards
    EXPECT_EQ(batchCreationDateFor(item, change, 0), dateFromText("2021:06:10 11:00:00"));
    change.afterOriginal = "tomorrow";
    EXPECT_FALSE(batchDateProblem(change, true).isEmpty());
    EXPECT_TRUE(batchDateProblem(change).isEmpty());
}
