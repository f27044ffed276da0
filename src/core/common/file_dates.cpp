// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/file_dates.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "core/common/logging.h"

namespace {
QDateTime fromTimestamp(const statx_timestamp& t) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(t.tv_sec) * 1000 +
                                          t.tv_nsec / 1000000);
}
}  // namespace

FileDates readFileDates(const QString& path) {
    struct statx sx {};
    const QByteArray native = QFile::encodeName(path);
    if (statx(AT_FDCWD, native.constData(), 0, STATX_BTIME | STATX_MTIME | STATX_SIZE, &sx) != 0)
        return {};
    return fileDatesOf(sx);
}

FileDates fileDatesOf(const struct statx& sx) {
    FileDates dates;
    if (sx.stx_mask & STATX_SIZE) dates.size = qint64(sx.stx_size);
    if (sx.stx_mask & STATX_MTIME) dates.modification = fromTimestamp(sx.stx_mtime);
    dates.creation = (sx.stx_mask & STATX_BTIME) ? fromTimestamp(sx.stx_btime) : dates.modification;
    return dates;
}

bool setFileDates(const QString& path, const QDateTime& creation, const QDateTime& modification) {
    const QDateTime when = modification.isValid() ? modification : creation;
    if (!when.isValid()) return false;
    const qint64 ms = when.toMSecsSinceEpoch();
    struct timespec times[2];
    times[0].tv_sec = 0;
    times[0].tv_nsec = UTIME_OMIT;  // access time stays
    times[1].tv_sec = static_cast<time_t>(ms / 1000);
    times[1].tv_nsec = static_cast<long>((ms % 1000) * 1000000);
    if (times[1].tv_nsec < 0) {
        times[1].tv_sec -= 1;
        times[1].tv_nsec += 1000000000;
    }
    const QByteArray native = QFile::encodeName(path);
    if (utimensat(AT_FDCWD, native.constData(), times, 0) != 0) {
        qCWarning(lcTagsmith) << "cannot set the dates of" << path << "==" << std::strerror(errno);
        return false;
    }
    return true;
}

qint64 fileSizeOf(const QString& path) {
    struct stat st {};
    const QByteArray native = QFile::encodeName(path);
    if (stat(native.constData(), &st) != 0) return -1;
    return static_cast<qint64>(st.st_size);
}

bool isRegularFile(const QString& path) {
    struct stat st {};
    const QByteArray native = QFile::encodeName(path);
    return stat(native.constData(), &st) == 0 && S_ISREG(st.st_mode);
}
