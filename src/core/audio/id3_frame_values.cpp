// SPDX-License-Identifier: GPL-3.0-or-later
// Decoding the bodies of the ID3v2 frames the program reads: texts in their
// four encodings, comments and lyrics, pictures, user texts and links.

#include "core/audio/id3_frames.h"

namespace {

bool wide(quint8 encoding) {
    return encoding == 1 || encoding == 2;
}

// Where the terminator of a text in `encoding` starts at or after `from`, or -1.
qsizetype findTerminator(const QByteArray& bytes, qsizetype from, quint8 encoding) {
    if (!wide(encoding)) return bytes.indexOf('\0', from);
    for (qsizetype i = from; i + 1 < bytes.size(); i += 2)
        if (bytes[i] == 0 && bytes[i + 1] == 0) return i;
    return -1;
}

// The text from `*pos` to its terminator; `*pos` moves past the terminator
// (or to the end when there is none).
QString takeTerminated(const QByteArray& bytes, qsizetype* pos, quint8 encoding) {
    const qsizetype end = findTerminator(bytes, *pos, encoding);
    const qsizetype stop = end < 0 ? bytes.size() : end;
    const QString text = id3DecodeText(bytes.mid(*pos, stop - *pos), encoding);
    *pos = end < 0 ? bytes.size() : end + (wide(encoding) ? 2 : 1);
    return text;
}

QString utf16(const QByteArray& bytes, qsizetype from, bool bigEndian) {
    QString out;
    out.reserve((bytes.size() - from) / 2);
    for (qsizetype i = from; i + 1 < bytes.size(); i += 2) {
        const auto a = static_cast<uchar>(bytes[i]);
        const auto b = static_cast<uchar>(bytes[i + 1]);
        out.append(QChar(bigEndian ? char16_t((a << 8) | b) : char16_t((b << 8) | a)));
    }
    return out;
}

}  // namespace

QString id3DecodeText(const QByteArray& bytes, quint8 encoding) {
    QString text;
    switch (encoding) {
        case 0:
            text = QString::fromLatin1(bytes);
            break;
        case 3:
            text = QString::fromUtf8(bytes);
            break;
        case 1:
        case 2: {
            const auto b0 = bytes.size() >= 2 ? static_cast<uchar>(bytes[0]) : 0;
            const auto b1 = bytes.size() >= 2 ? static_cast<uchar>(bytes[1]) : 0;
            if (b0 == 0xFF && b1 == 0xFE) {
                text = utf16(bytes, 2, false);
            } else if (b0 == 0xFE && b1 == 0xFF) {
                text = utf16(bytes, 2, true);
            } else {
                // No byte-order mark: UTF-16BE by definition; a UTF-16 text
                // without one is most often little-endian.
                text = utf16(bytes, 0, encoding == 2);
            }
            break;
        }
        default:
            text = QString::fromLatin1(bytes);  // an unknown encoding: read as bytes
    }
    while (text.endsWith(QChar(0))) text.chop(1);
    return text;
}

QStringList id3TextValues(const QByteArray& body) {
    QStringList values;
    if (body.isEmpty()) return values;
    const auto encoding = static_cast<quint8>(body[0]);
    qsizetype pos = 1;
    while (pos < body.size()) values << takeTerminated(body, &pos, encoding);
    while (values.size() > 1 && values.last().isEmpty()) values.removeLast();
    if (values.isEmpty()) values << QString();
    return values;
}

bool id3Comment(const QByteArray& body, Id3CommentFrame* out) {
    if (body.size() < 4) return false;
    out->encoding = static_cast<quint8>(body[0]);
    out->language = body.mid(1, 3);
    qsizetype pos = 4;
    out->description = takeTerminated(body, &pos, out->encoding);
    out->text = id3DecodeText(body.mid(pos), out->encoding);
    return true;
}

bool id3Picture(const QByteArray& body, bool v22, Id3PictureFrame* out) {
    if (body.size() < (v22 ? 6 : 3)) return false;
    out->encoding = static_cast<quint8>(body[0]);
    qsizetype pos = 1;
    if (v22) {
        const QByteArray format = body.mid(1, 3).toUpper();
        out->mimeType = format == "JPG" ? QStringLiteral("image/jpeg")
                                        : QStringLiteral("image/") +
                                              QString::fromLatin1(format).toLower().trimmed();
        pos = 4;
    } else {
        out->mimeType = takeTerminated(body, &pos, 0);
    }
    if (pos >= body.size()) return false;
    out->pictureType = static_cast<quint8>(body[pos++]);
    out->description = takeTerminated(body, &pos, out->encoding);
    out->data = body.mid(pos);
    return true;
}

bool id3UserText(const QByteArray& body, bool isUrl, Id3UserTextFrame* out) {
    if (body.isEmpty()) return false;
    out->encoding = static_cast<quint8>(body[0]);
    qsizetype pos = 1;
    out->description = takeTerminated(body, &pos, out->encoding);
    out->values.clear();
    if (isUrl) {
        out->values << id3DecodeText(body.mid(pos), 0);
        return true;
    }
    while (pos < body.size()) out->values << takeTerminated(body, &pos, out->encoding);
    while (out->values.size() > 1 && out->values.last().isEmpty()) out->values.removeLast();
    if (out->values.isEmpty()) out->values << QString();
    return true;
}
