// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_file_io.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

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
        m_window.reset(m_fd, m_size);
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
    const long done = long(m_window.read(m_pos, reinterpret_cast<char*>(buf), rcount));
    // Past the end, or the file shrank under us.
    if (done < rcount) m_eof = true;
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
