// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/stored_picture.h"

#include <QBuffer>
#include <QImageReader>

#include <mutex>

struct StoredPicture::State {
    QByteArray data;  // empty for a picture given decoded
    QByteArray format;
    QSize size;
    std::once_flag decoded;
    QImage image;
};

namespace {

// The format by the data's first bytes, so that only its image plug-in is
// loaded (an empty name makes the reader ask every plug-in).
QByteArray formatOf(const QByteArray& d) {
    if (d.startsWith("\xFF\xD8\xFF")) return "jpeg";
    if (d.startsWith("\x89PNG")) return "png";
    if (d.startsWith("GIF8")) return "gif";
    if (d.startsWith("BM")) return "bmp";
    if (d.startsWith("RIFF") && d.mid(8, 4) == "WEBP") return "webp";
    if (d.startsWith("II*") || d.startsWith(QByteArrayView("MM\0*", 4))) return "tiff";
    return {};
}

// The size a JPEG or PNG header states, read here rather than through an
// image plug-in, which costs more to load than a folder's covers take to
// read; invalid for other data.
QSize headerSize(const QByteArray& d) {
    auto be16 = [&](qsizetype at) { return (uchar(d[at]) << 8) | uchar(d[at + 1]); };
    if (d.startsWith("\x89PNG\r\n\x1a\n") && d.size() >= 24 && d.mid(12, 4) == "IHDR") {
        const qint64 w = (qint64(be16(16)) << 16) | be16(18);
        const qint64 h = (qint64(be16(20)) << 16) | be16(22);
        return w > 0 && h > 0 && w < (1 << 30) && h < (1 << 30) ? QSize(int(w), int(h)) : QSize();
    }
    if (!d.startsWith("\xFF\xD8")) return {};
    qsizetype at = 2;
    for (int segments = 0; segments < 1024 && at + 4 <= d.size(); ++segments) {
        if (uchar(d[at]) != 0xFF) return {};
        const uchar marker = uchar(d[at + 1]);
        if (marker == 0xFF) {  // fill byte
            ++at;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {
            at += 2;
            continue;
        }
        const int length = be16(at + 2);
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame && length >= 7 && at + 9 <= d.size()) {
            const QSize size(be16(at + 7), be16(at + 5));
            return size.isEmpty() ? QSize() : size;
        }
        if (length < 2) return {};
        at += 2 + length;
    }
    return {};
}

}  // namespace

StoredPicture::StoredPicture(const QImage& image) {
    if (image.isNull()) return;
    m_state = std::make_shared<State>();
    m_state->image = image;
    m_state->size = image.size();
}

StoredPicture StoredPicture::fromData(const QByteArray& data) {
    StoredPicture picture;
    if (data.isEmpty()) return picture;
    const QByteArray format = formatOf(data);
    QSize size = headerSize(data);
    if (!size.isValid()) {
        QBuffer buffer;
        buffer.setData(data);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, format);
        if (reader.canRead()) size = reader.size();
    }
    if (!size.isValid() || size.isEmpty()) {
        // A header that tells no size: decode now to know.
        const QImage image =
            QImage::fromData(data, format.isEmpty() ? nullptr : format.constData());
        return StoredPicture(image);
    }
    picture.m_state = std::make_shared<State>();
    picture.m_state->data = data;
    picture.m_state->format = format;
    picture.m_state->size = size;
    return picture;
}

QSize StoredPicture::size() const {
    return m_state ? m_state->size : QSize();
}

const QImage& StoredPicture::image() const {
    static const QImage none;
    if (!m_state) return none;
    State* s = m_state.get();
    std::call_once(s->decoded, [s] {
        if (s->data.isEmpty()) return;
        s->image = QImage::fromData(s->data, s->format.isEmpty() ? nullptr : s->format.constData());
        s->data.clear();
    });
    return s->image;
}
