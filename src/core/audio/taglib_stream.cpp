// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/taglib_stream.h"

#include <QFile>

#include <algorithm>

#include "core/common/windowed_file.h"

TagLibReadStream::TagLibReadStream(WindowedFile& file)
    : m_file(file), m_path(QFile::encodeName(file.fileName())) {
    if (file.isOpen()) m_length = long(file.size());
}

bool TagLibReadStream::isOpen() const {
    return m_file.isOpen();
}

TagLib::ByteVector TagLibReadStream::readBlock(unsigned long length) {
    if (!m_file.isOpen() || m_pos >= m_length || length == 0) return {};
    const long wanted = long(std::min(length, static_cast<unsigned long>(m_length - m_pos)));
    TagLib::ByteVector out(uint(wanted), 0);
    out.resize(uint(m_file.readAt(m_base + m_pos, out.data(), wanted)));
    m_pos += long(out.size());
    return out;
}

void TagLibReadStream::startAt(long offset) {
    offset = std::clamp(offset, 0L, m_base + m_length);
    m_length += m_base - offset;
    m_base = offset;
    m_pos = 0;
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
