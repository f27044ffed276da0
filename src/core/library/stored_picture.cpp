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
    if (d.startsWith("II*") || d.startsWith("MM\0*")) return "tiff";
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
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = formatOf(data);
    QImageReader reader(&buffer, format);
    const QSize size = reader.canRead() ? reader.size() : QSize();
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
