// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "core/common/file_dates.h"
#include "core/common/windowed_file.h"
#include "media_fixtures.h"

// The windowed device answers every seek, read and position question as the
// unbuffered QFile it replaced does over the same file: across the windows'
// edges, jumping between the start, the end and the middle (each jump after
// the second refills a window), past the end, and with reads larger than a
// window. readAt() leaves the position alone.
TEST(WindowedFile, AnswersAsQFile) {
    QTemporaryDir dir;
    const QByteArray bytes = patternedBytes(40000);
    const QString path = dir.filePath("data.bin");
    ASSERT_TRUE(writeFile(path, bytes));

    WindowedFile ours(path);
    QFile theirs(path);
    ASSERT_TRUE(ours.open(QIODevice::ReadOnly));
    ASSERT_TRUE(theirs.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    EXPECT_EQ(ours.size(), theirs.size());
    struct Step {
        char op;  // s: seek from the start, c: from here, e: from the end, r: read, g: a byte
        qint64 n;
    };
    const Step steps[] = {{'r', 16},    {'s', 39990}, {'r', 8},   {'s', 3},      {'r', 10},
                          {'s', 20000}, {'r', 100},   {'e', -5},  {'r', 10},     {'g', 0},
                          {'s', 16380}, {'r', 10},    {'c', -30}, {'r', 17000},  {'s', 40000},
                          {'g', 0},     {'s', 40001}, {'r', 4},   {'c', -20000}, {'r', 1},
                          {'s', 0},     {'r', 40000}, {'s', -1},  {'s', 12345},  {'g', 0}};
    for (const Step& step : steps) {
        SCOPED_TRACE(std::string(1, step.op) + " " + std::to_string(step.n));
        if (step.op == 'r') {
            EXPECT_EQ(ours.read(step.n), theirs.read(step.n));
        } else if (step.op == 'g') {
            char a = 0, b = 0;
            EXPECT_EQ(ours.getChar(&a), theirs.getChar(&b));
            EXPECT_EQ(a, b);
        } else {
            const qint64 base = step.op == 's' ? 0 : step.op == 'c' ? theirs.pos() : theirs.size();
            EXPECT_EQ(ours.seek(base + step.n), theirs.seek(base + step.n));
        }
        EXPECT_EQ(ours.pos(), theirs.pos());
        EXPECT_EQ(ours.atEnd(), theirs.atEnd());
    }
    char head[4] = {};
    const qint64 before = ours.pos();
    EXPECT_EQ(ours.readAt(39998, head, 4), 2);
    EXPECT_EQ(QByteArray(head, 2), bytes.right(2));
    EXPECT_EQ(ours.pos(), before);

    // The size and dates come from the open, as a status call finds them.
    const FileDates dates = readFileDates(path);
    EXPECT_EQ(ours.dates().size, dates.size);
    EXPECT_EQ(ours.dates().modification, dates.modification);
    EXPECT_EQ(ours.write("x", 1), -1);

    // A file that shrinks while it is open reads short, without a fault.
    WindowedFile shrinking(path);
    ASSERT_TRUE(shrinking.open(QIODevice::ReadOnly));
    ASSERT_TRUE(QFile::resize(path, 100));
    EXPECT_EQ(shrinking.read(30000).size(), 100);
}

// Only regular files open, only for reading, and a pipe never blocks.
TEST(WindowedFile, RefusesWhatIsNoFileToRead) {
    QTemporaryDir dir;
    const QString fifo = dir.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString plain = dir.filePath("plain");
    ASSERT_TRUE(writeFile(plain, {}));
    for (const QString& path : {dir.path(), fifo, dir.filePath("missing")}) {
        WindowedFile file(path);
        EXPECT_FALSE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        EXPECT_FALSE(file.errorString().isEmpty());
    }
    WindowedFile writing(plain);
    EXPECT_FALSE(writing.open(QIODevice::ReadWrite));
    WindowedFile empty(plain);
    ASSERT_TRUE(empty.open(QIODevice::ReadOnly));
    EXPECT_TRUE(empty.read(10).isEmpty());
    EXPECT_TRUE(empty.atEnd());
}
