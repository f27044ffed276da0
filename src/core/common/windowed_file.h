// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QString>

#include "core/common/file_dates.h"

// A file's bytes read with pread() through two windows of up to 16 KiB. A
// header walk reads a few bytes here and there, mostly near the start and
// near the end of the file; while they lie in a window they cost no system
// call, and a read larger than a window goes straight into the caller's
// buffer. A miss refills the window used less recently, so the start and the
// end of a file each keep theirs. The windows are part of the object (no
// allocation per file). It reads the descriptor it is given and never moves
// that descriptor's offset.
class ReadWindow {
public:
    static constexpr qint64 kWindow = 16 * 1024;  // the most a window holds

    // Reads `fd` (up to `size`) from now on; forgets what the windows held.
    void reset(int fd, qint64 size);

    int fd() const { return m_fd; }
    // The size the file had when it was opened: reads end there.
    qint64 size() const { return m_size; }
    // Copies up to `length` bytes from `offset` into `into`; the count, short
    // at the end of the file, or where the file has shrunk since.
    qint64 read(qint64 offset, char* into, qint64 length);

private:
    struct Window {
        char bytes[kWindow];  // the file's bytes from `start`
        qint64 start = 0;
        qint64 size = 0;
        bool holds(qint64 at) const { return at >= start && at < start + size; }
    };
    // The window that holds `at`, filled for a read of `length` if neither
    // does; null at the end.
    const Window* windowAt(qint64 at, qint64 length);

    int m_fd = -1;
    qint64 m_size = 0;
    Window m_windows[2];
    int m_recent = 0;  // the window read last
};

// A regular file opened for reading as a device over a ReadWindow: one
// descriptor and one status call for the readers that walk a file's headers
// (the audio readers, TagLib through TagLibReadStream). QFile asks the
// system for the size on every size() and reads and seeks with a call each.
// Writing is refused; a pipe, device or folder does not open.
class WindowedFile : public QIODevice {
public:
    explicit WindowedFile(const QString& path);
    ~WindowedFile() override;

    // Only ReadOnly (Unbuffered is implied).
    bool open(OpenMode mode) override;
    void close() override;

    QString fileName() const { return m_path; }
    // The size and dates read when the file was opened.
    const FileDates& dates() const { return m_dates; }
    // Bytes at `offset` without moving the device's position.
    qint64 readAt(qint64 offset, char* into, qint64 length) {
        return m_window.read(offset, into, length);
    }

    bool isSequential() const override { return false; }
    qint64 size() const override { return m_window.size(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QString m_path;
    ReadWindow m_window;
    FileDates m_dates;
};
