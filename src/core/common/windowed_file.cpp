// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/windowed_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "core/common/file_copy.h"

namespace {

constexpr qint64 kPage = 4096;  // the least a window reads

}  // namespace

void ReadWindow::reset(int fd, qint64 size) {
    m_fd = fd;
    m_size = size;
    m_windows[0].size = m_windows[1].size = 0;
}

const ReadWindow::Window* ReadWindow::windowAt(qint64 at, qint64 length) {
    for (int i : {m_recent, 1 - m_recent}) {
        if (m_windows[i].holds(at)) {
            m_recent = i;
            return &m_windows[i];
        }
    }
    m_recent = 1 - m_recent;
    Window& window = m_windows[m_recent];
    // Whole pages of the cache, as many as the read needs: most reads want a
    // few bytes, and copying more than a page costs more than a second call.
    const qint64 start = at & ~(kPage - 1);
    const qint64 end = std::min((at + length + kPage - 1) & ~(kPage - 1), start + kWindow);
    const qint64 wanted = std::min(end, m_size) - start;
    window.size = ::readAt(m_fd, window.bytes, wanted, start);
    window.start = start;
    if (!window.holds(at)) return nullptr;  // the file shrank under us
    return &window;
}

qint64 ReadWindow::read(qint64 offset, char* into, qint64 length) {
    if (m_fd < 0 || offset < 0 || length <= 0) return 0;
    const qint64 wanted = std::min(length, std::max<qint64>(0, m_size - offset));
    qint64 done = 0;
    while (done < wanted) {
        const qint64 at = offset + done;
        const bool held = m_windows[0].holds(at) || m_windows[1].holds(at);
        if (!held && wanted - done >= kWindow)  // a large read goes straight in
            return done + ::readAt(m_fd, into + done, wanted - done, at);
        const Window* window = windowAt(at, wanted - done);
        if (!window) break;
        const qint64 from = at - window->start;
        const qint64 count = std::min(wanted - done, window->size - from);
        std::memcpy(into + done, window->bytes + from, size_t(count));
        done += count;
    }
    return done;
}

WindowedFile::WindowedFile(const QString& path) : m_path(path) {}

WindowedFile::~WindowedFile() {
    close();
}

bool WindowedFile::open(OpenMode mode) {
    if (isOpen() || (mode & ~(ReadOnly | Unbuffered)) != 0 || !(mode & ReadOnly)) return false;
    const QByteArray native = QFile::encodeName(m_path);
    // Not blocking: a pipe's open would wait for a writer. Regular files do
    // not block either way.
    const int fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        setErrorString(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    struct statx sx {};
    if (::statx(fd, "", AT_EMPTY_PATH, STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME, &sx) !=
            0 ||
        !S_ISREG(sx.stx_mode)) {
        setErrorString(QStringLiteral("not a regular file"));
        ::close(fd);
        return false;
    }
    m_dates = fileDatesOf(sx);
    m_window.reset(fd, qint64(sx.stx_size));
    return QIODevice::open(ReadOnly | Unbuffered);
}

void WindowedFile::close() {
    if (m_window.fd() >= 0) ::close(m_window.fd());
    m_window.reset(-1, 0);
    if (isOpen()) QIODevice::close();
}

qint64 WindowedFile::readData(char* data, qint64 maxSize) {
    return m_window.read(pos(), data, maxSize);
}
