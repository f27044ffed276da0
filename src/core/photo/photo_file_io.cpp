// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/common/file_copy.h"

namespace {

constexpr long kWindow = 16 * 1024;

}  // namespace

PhotoFileIo::PhotoFileIo(const std::string& path) : m_path(path) {}

PhotoFileIo::~PhotoFileIo() {
    munmap();
    if (m_fd >= 0) ::close(m_fd);
}

int PhotoFileIo::open() {
    if (m_fd < 0) {
        m_fd = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat st {};
        if (m_fd >= 0 && (::fstat(m_fd, &st) != 0 || !S_ISREG(st.st_mode))) {
            ::close(m_fd);
            m_fd = -1;
            errno = EINVAL;
        }
        if (m_fd < 0) return 1;
        m_size = long(st.st_size);
    }
    m_open = true;
    m_pos = 0;
    m_eof = false;
    return 0;
}

int PhotoFileIo::close() {
    munmap();
    m_open = false;
    return 0;
}

long PhotoFileIo::read(Exiv2::byte* buf, long rcount) {
    if (m_fd < 0 || rcount <= 0) return 0;
    const long avail = std::max(0L, m_size - m_pos);
    const long wanted = std::min(rcount, avail);
    if (rcount > avail) m_eof = true;
    long done = 0;
    while (done < wanted) {
        const long at = m_pos + done;
        const long windowEnd = m_windowStart + long(m_window.size());
        if (at < m_windowStart || at >= windowEnd) {
            if (wanted - done >= kWindow) {  // a large read goes straight in
                const long got =
                    readAt(m_fd, reinterpret_cast<char*>(buf) + done, wanted - done, at);
                if (got < wanted - done) m_eof = true;  // the file shrank under us
                done += got;
                break;
            }
            m_window.resize(kWindow);
            m_window.resize(readAt(m_fd, m_window.data(), kWindow, at));
            m_windowStart = at;
            if (m_window.isEmpty()) {  // the file shrank under us
                m_eof = true;
                break;
            }
        }
        const long from = at - m_windowStart;
        const long count = std::min(wanted - done, long(m_window.size()) - from);
        if (count <= 0) break;
        std::memcpy(buf + done, m_window.constData() + from, size_t(count));
        done += count;
    }
    m_pos += done;
    return done;
}

Exiv2::DataBuf PhotoFileIo::read(long rcount) {
    // A count from a damaged file is not allocated beyond the file.
    if (rcount < 0 || rcount > m_size) throw Exiv2::Error(Exiv2::kerInvalidMalloc);
    Exiv2::DataBuf buf(rcount);
    buf.size_ = read(buf.pData_, rcount);
    return buf;
}

int PhotoFileIo::getb() {
    Exiv2::byte b = 0;
    if (m_pos >= m_size) {
        m_eof = true;
        return EOF;
    }
    return read(&b, 1) == 1 ? b : EOF;
}

void PhotoFileIo::transfer(Exiv2::BasicIo&) {
    throw Exiv2::Error(Exiv2::kerFunctionNotSupported, "PhotoFileIo::transfer");
}

int PhotoFileIo::seek(long offset, Position pos) {
    long to = offset;
    if (pos == cur) to += m_pos;
    if (pos == end) to += m_size;
    if (to < 0) return 1;
    if (to > m_size) {
        m_eof = true;
        return 1;
    }
    m_pos = to;
    m_eof = false;
    return 0;
}

Exiv2::byte* PhotoFileIo::mmap(bool isWriteable) {
    if (isWriteable) throw Exiv2::Error(Exiv2::kerFunctionNotSupported, "PhotoFileIo::mmap");
    if (m_map) return static_cast<Exiv2::byte*>(m_map);
    void* map = m_fd >= 0 && m_size > 0
                    ? ::mmap(nullptr, size_t(m_size), PROT_READ, MAP_PRIVATE, m_fd, 0)
                    : MAP_FAILED;
    if (map == MAP_FAILED)
        throw Exiv2::Error(Exiv2::kerCallFailed, m_path, std::strerror(errno), "mmap");
    m_map = map;
    return static_cast<Exiv2::byte*>(m_map);
}

int PhotoFileIo::munmap() {
    if (!m_map) return 0;
    const int rc = ::munmap(m_map, size_t(m_size));
    m_map = nullptr;
    return rc;
}
