// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

// The two file dates the program reads and writes. Linux reports a birth
// time only on some file systems and cannot set one, so:
//  - creation reads as the birth time where known, else the modification time;
//  - writing sets the modification time; where only a creation date is
//    given, that date becomes the modification time.
struct FileDates {
    QDateTime creation;
    QDateTime modification;
    qint64 size = -1;  // read with the dates; -1 when not known
};

// Invalid dates when the file cannot be examined.
FileDates readFileDates(const QString& path);
// The same from a status already read (size, modification and birth time).
FileDates fileDatesOf(const struct statx& status);

// Sets the file's dates as described above. Returns false (and logs why)
// when the file's times cannot be changed or no valid date is given.
bool setFileDates(const QString& path, const QDateTime& creation, const QDateTime& modification);

// The file's size in bytes, or -1 when it cannot be examined.
qint64 fileSizeOf(const QString& path);

// Whether the path (after following links) is a regular file. Pipes, devices
// and sockets are not: reading them could block or never end.
bool isRegularFile(const QString& path);
