// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/taglib_stream.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "core/common/file_copy.h"

namespace {

constexpr long kWindow = 16 * 1024;

}  // namespace

TagLibReadStream::TagLibReadStream(const QString& path) : m_path(QFile::encodeName(path)) {
    m_fd = ::open(m_path.constData(), O_RDONLY | O_CLOEXEC);
    struct stat st {};
    if (m_fd >= 0 && (::fstat(m_fd, &st) != 0 || !S_ISREG(st.st_mode))) {
        ::close(m_fd);
        m_fd = -1;
    }
    if (m_fd >= 0) m_length = long(st.st_size);
}

TagLibReadStream::TagLibReadStream(QFile& file)
    : m_path(QFile::encodeName(file.fileName())), m_fd(file.handle()), m_owned(false) {
    if (m_fd >= 0) m_length = long(file.size());
}

TagLibReadStream::~TagLibReadStream() {
    if (m_fd >= 0 && m_owned) ::close(m_fd);
}

TagLib::ByteVector TagLibReadStream::readBlock(unsigned long length) {
    if (m_fd < 0 || m_pos >= m_length || length == 0) return {};
    const long wanted = long(std::min(length, static_cast<unsigned long>(m_length - m_pos)));
    const long windowEnd = m_windowStart + long(m_window.size());
    if (m_pos < m_windowStart || m_pos + wanted > windowEnd) {
        if (wanted > kWindow) {
            TagLib::ByteVector out(uint(wanted), 0);
            out.resize(uint(readAt(m_fd, out.data(), wanted, m_base + m_pos)));
            m_pos += long(out.size());
            return out;
        }
        m_window.resize(kWindow);
        m_window.resize(readAt(m_fd, m_window.data(), kWindow, m_base + m_pos));
        m_windowStart = m_pos;
    }
    const long from = m_pos - m_windowStart;
    const long count = std::min<long>(wanted, long(m_window.size()) - from);
    if (count <= 0) return {};
    m_pos += count;
    return TagLib::ByteVector(m_window.constData() + from, uint(count));
}

void TagLibReadStream::startAt(long offset) {
    offset = std::clamp(offset, 0L, m_base + m_length);
    m_length += m_base - offset;
    m_base = offset;
    m_pos = 0;
    m_window.clear();
    m_windowStart = 0;
}

void TagLibReadStream::seek(long offset, Position p) {
    switch (p) {
        case Beginning:
            m_pos = offset;
            break;
        case Current:
            m_pos += offset;
            break;
        case End:
            m_pos = m_length + offset;
            break;
    }
    m_pos = std::max(0L, m_pos);
}
