// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/file_copy.h"

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qint64 kCopyBuffer = qint64(8) * 1024 * 1024;

}  // namespace

qint64 readAt(int fd, char* into, qint64 size, qint64 offset) {
    qint64 done = 0;
    while (done < size) {
        const ssize_t got = ::pread(fd, into + done, size_t(size - done), off_t(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += got;
    }
    return done;
}

bool writeAll(int fd, const char* data, qint64 size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size_t(qMin<qint64>(size, kCopyBuffer)));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        data += n;
        size -= n;
    }
    return true;
}

// Copies a range of the source to the end of the output: in the kernel
// where it can, else through a buffer.
bool copyRange(int in, qint64 offset, qint64 size, int out, QByteArray& buffer) {
    static std::atomic<bool> kernelCopy = true;
    while (size > 0 && kernelCopy) {
        loff_t from = offset;
        const ssize_t n = ::copy_file_range(in, &from, out, nullptr,
                                            size_t(qMin<qint64>(size, qint64(1) << 30)), 0);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 &&
            (errno == EXDEV || errno == ENOSYS || errno == EINVAL || errno == EOPNOTSUPP)) {
            kernelCopy = false;
            break;
        }
        if (n <= 0) return false;
        offset += n;
        size -= n;
    }
    if (buffer.isEmpty()) buffer.resize(kCopyBuffer);
    while (size > 0) {
        const ssize_t n =
            ::pread(in, buffer.data(), size_t(qMin<qint64>(size, buffer.size())), off_t(offset));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;  // the source got shorter
        if (!writeAll(out, buffer.constData(), n)) return false;
        offset += n;
        size -= n;
    }
    return true;
}
