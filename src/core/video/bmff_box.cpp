// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/bmff_box.h"

#include <QIODevice>

#include <iterator>

#include "core/common/logging.h"

namespace Bmff {

namespace {

constexpr qint64 kBasicHeaderSize = 8;
constexpr qint64 kLargeHeaderSize = 16;
constexpr qint64 kUserTypeSize = 16;

}  // namespace

quint16 readU16(QByteArrayView data, qint64 pos) {
    const auto* p = reinterpret_cast<const unsigned char*>(data.data() + pos);
    return quint16((p[0] << 8) | p[1]);
}

quint32 readU32(QByteArrayView data, qint64 pos) {
    const auto* p = reinterpret_cast<const unsigned char*>(data.data() + pos);
    return (quint32(p[0]) << 24) | (quint32(p[1]) << 16) | (quint32(p[2]) << 8) | quint32(p[3]);
}

quint64 readU64(QByteArrayView data, qint64 pos) {
    return (quint64(readU32(data, pos)) << 32) | readU32(data, pos + 4);
}

bool BoxIterator::next(Box& box) {
    if (m_done) return false;
    const qint64 remaining = m_data.size() - m_pos;
    if (remaining == 0) {
        m_done = true;
        return false;
    }
    if (remaining < kBasicHeaderSize) {
        m_done = m_damaged = true;
        return false;
    }
    qint64 headerSize = kBasicHeaderSize;
    quint64 size = readU32(m_data, m_pos);
    const QByteArrayView type = m_data.sliced(m_pos + 4, 4);
    if (size == 1) {
        if (remaining < kLargeHeaderSize) {
            m_done = m_damaged = true;
            return false;
        }
        size = readU64(m_data, m_pos + 8);
        headerSize = kLargeHeaderSize;
    } else if (size == 0) {
        size = quint64(remaining);  // runs to the end of the parent
    }
    if (type == QByteArrayView("uuid")) headerSize += kUserTypeSize;
    if (size < quint64(headerSize) || headerSize > remaining) {
        m_done = m_damaged = true;
        return false;
    }
    box.type = type.toByteArray();
    box.truncated = size > quint64(remaining);
    const qint64 boxSize = box.truncated ? remaining : qint64(size);
    box.payload = m_data.sliced(m_pos + headerSize, boxSize - headerSize);
    const bool toTheEnd = readU32(m_data, m_pos) == 0;
    box.bytes = box.truncated || toTheEnd ? QByteArrayView() : m_data.sliced(m_pos, boxSize);
    m_pos += boxSize;
    if (box.truncated) m_done = m_damaged = true;
    return true;
}

QByteArrayView fullBoxBody(QByteArrayView payload) {
    return payload.size() < 4 ? QByteArrayView() : payload.sliced(4);
}

bool isPackedLanguage(quint16 code) {
    return code >= 0x400 && code != 0x7fff;
}

QString languageFromCode(quint16 code) {
    if (isPackedLanguage(code)) {
        QString text;
        for (int shift = 10; shift >= 0; shift -= 5) {
            const int letter = (code >> shift) & 0x1f;
            if (letter < 1 || letter > 26) return QString();
            text += QLatin1Char(char(0x60 + letter));
        }
        return text;
    }
    // The first classic Macintosh language codes, in their fixed order.
    static const char* const macLanguages[] = {"eng", "fra", "deu", "ita", "nld", "swe", "spa",
                                               "dan", "por", "nor", "heb", "jpn", "ara", "fin",
                                               "ell", "isl", "mlt", "tur", "hrv", "zho"};
    if (code < std::size(macLanguages)) return QString::fromLatin1(macLanguages[code]);
    return QString();
}

bool isPlausibleType(QByteArrayView type) {
    if (type.size() != 4) return false;
    for (qsizetype i = 0; i < 4; ++i) {
        const auto c = static_cast<unsigned char>(type[i]);
        if ((c < 0x20 || c > 0x7e) && c != 0xa9) return false;
    }
    return true;
}

QByteArray readMovieBox(QIODevice& device) {
    if (!device.isOpen() || device.isSequential()) return QByteArray();
    const qint64 fileSize = device.size();
    qint64 pos = 0;
    for (int count = 0; count < kMaxTopLevelBoxes && fileSize - pos >= kBasicHeaderSize; ++count) {
        if (!device.seek(pos)) return QByteArray();
        const QByteArray header = device.read(kLargeHeaderSize);
        if (header.size() < kBasicHeaderSize) return QByteArray();
        const QByteArrayView type = QByteArrayView(header).sliced(4, 4);
        if (!isPlausibleType(type)) {
            qCInfo(lcTagsmith) << "Movie reader: no box at offset" << pos << "; stopping";
            return QByteArray();
        }
        qint64 headerSize = kBasicHeaderSize;
        quint64 size = readU32(header, 0);
        if (size == 1) {
            if (header.size() < kLargeHeaderSize) return QByteArray();
            size = readU64(header, 8);
            headerSize = kLargeHeaderSize;
        } else if (size == 0) {
            size = quint64(fileSize - pos);
        }
        if (size < quint64(headerSize)) return QByteArray();
        const qint64 remaining = fileSize - pos;
        const qint64 boxSize = size > quint64(remaining) ? remaining : qint64(size);
        if (type == QByteArrayView("moov")) {
            const qint64 payloadSize = boxSize - headerSize;
            if (payloadSize > kMaxMovieBoxSize) {
                qCInfo(lcTagsmith) << "Movie reader: movie box of" << payloadSize
                                   << "bytes is larger than the limit; not read";
                return QByteArray();
            }
            if (boxSize < qint64(size))
                qCInfo(lcTagsmith) << "Movie reader: movie box is truncated; reading what is there";
            if (!device.seek(pos + headerSize)) return QByteArray();
            return device.read(payloadSize);
        }
        pos += boxSize;
    }
    return QByteArray();
}

}  // namespace Bmff
