// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/gif_writer.h"

#include <array>
#include <cstring>
#include <vector>

namespace {

void appendWord(QByteArray& out, int value) {
    out.append(char(value & 0xff));
    out.append(char((value >> 8) & 0xff));
}

// GIF's variable-length LZW over 8-bit pixel indexes, cut into sub-blocks.
class LzwEncoder {
public:
    QByteArray encode(const std::vector<uint8_t>& pixels) {
        m_bytes.clear();
        reset();
        put(kClear);
        int prefix = pixels.empty() ? 0 : pixels.front();
        for (size_t i = 1; i < pixels.size(); ++i) {
            const uint8_t c = pixels[i];
            const uint32_t key = (uint32_t(prefix) << 8) | c;
            const int found = lookup(key);
            if (found >= 0) {
                prefix = found;
                continue;
            }
            put(prefix);
            if (m_next < kMaxCodes) {
                insert(key, m_next++);
            } else {
                put(kClear);
                reset();
            }
            prefix = c;
        }
        put(prefix);
        put(kEnd);
        if (m_bitCount > 0) m_bytes.append(char(m_bits & 0xff));
        QByteArray blocks;
        blocks.append(char(8));  // minimum code size
        for (qsizetype at = 0; at < m_bytes.size(); at += 255) {
            const qsizetype n = qMin<qsizetype>(255, m_bytes.size() - at);
            blocks.append(char(n));
            blocks.append(m_bytes.constData() + at, n);
        }
        blocks.append(char(0));
        return blocks;
    }

private:
    static constexpr int kClear = 256;
    static constexpr int kEnd = 257;
    static constexpr int kMaxCodes = 4096;
    static constexpr uint32_t kSlots = 8192;  // a power of two above kMaxCodes
    static constexpr uint32_t kEmpty = 0xffffffff;

    void reset() {
        m_keys.fill(kEmpty);
        m_next = kEnd + 1;
        m_codeSize = 9;
    }
    int lookup(uint32_t key) const {
        for (uint32_t slot = hash(key);; slot = (slot + 1) & (kSlots - 1)) {
            if (m_keys[slot] == kEmpty) return -1;
            if (m_keys[slot] == key) return m_codes[slot];
        }
    }
    void insert(uint32_t key, int code) {
        uint32_t slot = hash(key);
        while (m_keys[slot] != kEmpty) slot = (slot + 1) & (kSlots - 1);
        m_keys[slot] = key;
        m_codes[slot] = uint16_t(code);
    }
    static uint32_t hash(uint32_t key) { return (key * 2654435761u) >> 19; }
    void put(int code) {
        // The reader widens its codes once its table passes the current width.
        if (m_next > (1 << m_codeSize) && m_codeSize < 12) ++m_codeSize;
        m_bits |= uint32_t(code) << m_bitCount;
        m_bitCount += m_codeSize;
        while (m_bitCount >= 8) {
            m_bytes.append(char(m_bits & 0xff));
            m_bits >>= 8;
            m_bitCount -= 8;
        }
    }

    std::array<uint32_t, kSlots> m_keys{};
    std::array<uint16_t, kSlots> m_codes{};
    QByteArray m_bytes;
    uint32_t m_bits = 0;
    int m_bitCount = 0;
    int m_next = 0;
    int m_codeSize = 9;
};

}  // namespace

GifWriter::GifWriter(const QString& path) : m_file(path) {
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) m_error = m_file.errorString();
}

bool GifWriter::put(const QByteArray& bytes) {
    if (m_file.write(bytes) == bytes.size()) return true;
    m_error = m_file.errorString();
    return false;
}

bool GifWriter::addFrame(const QImage& picture) {
    if (!isOpen() || picture.isNull()) return false;
    const QImage indexed =
        picture.convertToFormat(QImage::Format_RGB32).convertToFormat(QImage::Format_Indexed8);
    const int width = qMin(indexed.width(), 0xffff);
    const int height = qMin(indexed.height(), 0xffff);
    QByteArray out;
    if (m_frames == 0) {
        out.append("GIF89a", 6);
        appendWord(out, width);
        appendWord(out, height);
        out.append("\x00\x00\x00", 3);  // no global colour table
        // Application extension: loop forever.
        out.append("\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    }
    out.append(char(0x2c));
    appendWord(out, 0);
    appendWord(out, 0);
    appendWord(out, width);
    appendWord(out, height);
    out.append(char(0x87));  // local colour table of 256 entries
    QList<QRgb> colours = indexed.colorTable();
    colours.resize(256);
    for (const QRgb c : colours) {
        out.append(char(qRed(c)));
        out.append(char(qGreen(c)));
        out.append(char(qBlue(c)));
    }
    std::vector<uint8_t> pixels(size_t(width) * size_t(height));
    for (int y = 0; y < height; ++y)
        std::memcpy(pixels.data() + size_t(y) * size_t(width), indexed.constScanLine(y),
                    size_t(width));
    LzwEncoder encoder;
    out.append(encoder.encode(pixels));
    if (!put(out)) return false;
    ++m_frames;
    return true;
}

bool GifWriter::finish() {
    if (!isOpen()) return false;
    if (m_frames == 0) {
        m_error = QStringLiteral("no picture could be taken from the movie");
        return false;
    }
    const bool ok = put(QByteArray(1, char(0x3b))) && m_file.flush();
    m_file.close();
    return ok;
}
