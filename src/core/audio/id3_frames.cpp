// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/id3_frames.h"

#include <zlib.h>

namespace {

constexpr int kMaxFrames = 8192;
// A compressed frame never inflates past this (a picture of 64 MiB is
// already far beyond any cover).
constexpr qint64 kMaxInflated = qint64(64) << 20;

quint32 be32(const QByteArray& b, qsizetype at) {
    const auto* p = reinterpret_cast<const uchar*>(b.constData() + at);
    return (quint32(p[0]) << 24) | (quint32(p[1]) << 16) | (quint32(p[2]) << 8) | quint32(p[3]);
}

// A syncsafe integer (7 bits a byte), or -1 when a byte has its top bit set.
qint64 syncsafe(const QByteArray& b, qsizetype at) {
    qint64 v = 0;
    for (int i = 0; i < 4; ++i) {
        const auto c = static_cast<uchar>(b[at + i]);
        if (c & 0x80) return -1;
        v = (v << 7) | c;
    }
    return v;
}

// Unsynchronisation put a zero byte after every 0xFF; take them out.
QByteArray undoUnsync(const QByteArray& in) {
    QByteArray out;
    out.reserve(in.size());
    for (qsizetype i = 0; i < in.size(); ++i) {
        out.append(in[i]);
        if (static_cast<uchar>(in[i]) == 0xFF && i + 1 < in.size() && in[i + 1] == 0) ++i;
    }
    return out;
}

bool validFrameId(const QByteArray& id) {
    for (const char c : id)
        if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))) return false;
    return !id.isEmpty();
}

bool inflateBounded(const QByteArray& in, qint64 expected, QByteArray* out) {
    const qint64 cap = expected > 0 ? std::min(expected, kMaxInflated) : kMaxInflated;
    z_stream zs{};
    if (inflateInit(&zs) != Z_OK) return false;
    QByteArray result;
    result.resize(qsizetype(std::min<qint64>(cap, std::max<qint64>(in.size() * 4, 4096))));
    zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.constData()));
    zs.avail_in = uInt(in.size());
    int rc = Z_OK;
    while (rc == Z_OK) {
        if (zs.total_out == uLong(result.size())) {
            if (result.size() >= cap) break;
            result.resize(qsizetype(std::min<qint64>(cap, qint64(result.size()) * 2)));
        }
        zs.next_out = reinterpret_cast<Bytef*>(result.data() + zs.total_out);
        zs.avail_out = uInt(result.size() - qsizetype(zs.total_out));
        rc = inflate(&zs, Z_NO_FLUSH);
    }
    const bool ok = rc == Z_STREAM_END;
    result.resize(qsizetype(zs.total_out));
    inflateEnd(&zs);
    if (ok) *out = result;
    return ok;
}

// v2.4 frame sizes are syncsafe, but some writers stored plain integers. Take
// the syncsafe reading unless it lands off a frame boundary and the plain one
// does not.
qint64 v24FrameSize(const QByteArray& body, qsizetype pos) {
    const qint64 safe = syncsafe(body, pos + 4);
    const qint64 plain = be32(body, pos + 4);
    auto boundary = [&](qint64 size) {
        const qint64 next = pos + 10 + size;
        if (next == body.size()) return true;
        if (next + 4 > body.size()) return next < body.size() && body[qsizetype(next)] == 0;
        return body[qsizetype(next)] == 0 || validFrameId(body.mid(qsizetype(next), 4));
    };
    if (safe < 0) return plain;
    if (safe == plain || boundary(safe) || !boundary(plain)) return safe;
    return plain;
}

}  // namespace

bool Id3Frame::isText() const {
    return id.startsWith('T') && id != "TXXX" && id != "TXX";
}

bool Id3Frame::discardOnTagAlter() const {
    return statusFlags & (version == 3 ? 0x80 : 0x40);
}

bool Id3Frame::discardOnFileAlter() const {
    return statusFlags & (version == 3 ? 0x40 : 0x20);
}

bool Id3Frame::readOnly() const {
    return statusFlags & (version == 3 ? 0x20 : 0x10);
}

qint64 id3v2TagSize(const QByteArray& header) {
    if (header.size() < 10 || !header.startsWith("ID3")) return 0;
    const int version = static_cast<uchar>(header[3]);
    if (version < 2 || version > 4 || static_cast<uchar>(header[4]) == 0xFF) return 0;
    const qint64 body = syncsafe(header, 6);
    if (body < 0) return 0;
    const bool footer = version == 4 && (static_cast<uchar>(header[5]) & 0x10);
    return 10 + body + (footer ? 10 : 0);
}

namespace {

// Takes the extra header bytes off a v2.3 or v2.4 frame and undoes what was
// done to its content. False when the frame is too short for its flags.
bool unpackFrame(Id3Frame& frame, QByteArray raw, bool tagUnsync, QStringList& problems) {
    const bool v3 = frame.version == 3;
    const quint8 f = frame.formatFlags;
    const bool compressed = v3 ? f & 0x80 : f & 0x08;
    frame.encrypted = v3 ? f & 0x40 : f & 0x04;
    frame.grouped = v3 ? f & 0x20 : f & 0x40;
    const bool lengthIndicator = !v3 && (f & 0x01);
    qint64 declared = -1;
    qsizetype off = 0;
    auto need = [&](qsizetype n) { return off + n <= raw.size(); };
    if (v3) {
        if (compressed) {
            if (!need(4)) return false;
            declared = be32(raw, off);
            off += 4;
        }
        if (frame.encrypted) {
            if (!need(1)) return false;
            frame.encryptionMethod = static_cast<quint8>(raw[off++]);
        }
        if (frame.grouped) {
            if (!need(1)) return false;
            frame.groupId = static_cast<quint8>(raw[off++]);
        }
    } else {
        if (frame.grouped) {
            if (!need(1)) return false;
            frame.groupId = static_cast<quint8>(raw[off++]);
        }
        if (frame.encrypted) {
            if (!need(1)) return false;
            frame.encryptionMethod = static_cast<quint8>(raw[off++]);
        }
        if (lengthIndicator) {
            if (!need(4)) return false;
            declared = syncsafe(raw, off);
            off += 4;
        }
    }
    QByteArray data = raw.mid(off);
    if (!v3 && ((f & 0x02) || tagUnsync)) data = undoUnsync(data);
    if (compressed && !frame.encrypted) {
        QByteArray inflated;
        if (inflateBounded(data, declared, &inflated)) {
            data = inflated;
        } else {
            frame.compressedBody = true;
            problems << QStringLiteral("frame %1: compressed data could not be inflated")
                            .arg(QString::fromLatin1(frame.id));
        }
    } else if (compressed) {
        frame.compressedBody = true;
    }
    frame.body = data;
    return true;
}

}  // namespace

Id3Tag parseId3v2Tag(const QByteArray& data) {
    Id3Tag tag;
    tag.size = id3v2TagSize(data);
    if (tag.size == 0) return tag;
    tag.valid = true;
    tag.version = static_cast<uchar>(data[3]);
    tag.revision = static_cast<uchar>(data[4]);
    tag.flags = static_cast<uchar>(data[5]);
    const qint64 declared = syncsafe(data, 6);
    if (10 + declared > data.size())
        tag.problems << QStringLiteral("the tag runs past the end of the data");
    if (tag.version == 2 && (tag.flags & 0x40)) {
        tag.problems << QStringLiteral("a compressed ID3v2.2 tag is not read");
        return tag;
    }
    QByteArray body = data.mid(10, qsizetype(std::min<qint64>(declared, data.size() - 10)));
    const bool tagUnsync = tag.flags & 0x80;
    if (tagUnsync && tag.version < 4) body = undoUnsync(body);

    qsizetype pos = 0;
    if (tag.version >= 3 && (tag.flags & 0x40)) {
        qint64 ext = -1;
        if (body.size() >= 4)
            ext = tag.version == 3 ? qint64(be32(body, 0)) + 4 : syncsafe(body, 0);
        if (ext < 6 || ext > body.size()) {
            tag.problems << QStringLiteral("the extended header's size is damaged");
            return tag;
        }
        pos = qsizetype(ext);
    }

    const int idLength = tag.version == 2 ? 3 : 4;
    const int headerLength = tag.version == 2 ? 6 : 10;
    while (pos + headerLength <= body.size() && tag.frames.size() < kMaxFrames) {
        if (body[pos] == 0) break;  // padding
        Id3Frame frame;
        frame.version = tag.version;
        frame.id = body.mid(pos, idLength);
        if (!validFrameId(frame.id)) {
            tag.problems << QStringLiteral("unreadable frame id at byte %1 of the tag").arg(pos);
            break;
        }
        qint64 size = 0;
        if (tag.version == 2) {
            const auto* p = reinterpret_cast<const uchar*>(body.constData() + pos + 3);
            size = (qint64(p[0]) << 16) | (qint64(p[1]) << 8) | p[2];
        } else if (tag.version == 3) {
            size = be32(body, pos + 4);
        } else {
            size = v24FrameSize(body, pos);
        }
        if (size > body.size() - pos - headerLength) {
            tag.problems << QStringLiteral("frame %1 runs past the end of the tag")
                                .arg(QString::fromLatin1(frame.id));
            break;
        }
        const QByteArray raw = body.mid(pos + headerLength, qsizetype(size));
        if (tag.version > 2) {
            frame.statusFlags = static_cast<uchar>(body[pos + 8]);
            frame.formatFlags = static_cast<uchar>(body[pos + 9]);
        }
        pos += headerLength + qsizetype(size);
        if (size == 0) continue;  // an empty frame says nothing
        if (tag.version == 2) {
            frame.body = raw;
        } else if (!unpackFrame(frame, raw, tagUnsync, tag.problems)) {
            tag.problems << QStringLiteral("frame %1 is shorter than its flags say")
                                .arg(QString::fromLatin1(frame.id));
            continue;
        }
        tag.frames.append(frame);
    }
    if (tag.frames.size() >= kMaxFrames) tag.problems << QStringLiteral("too many frames");
    return tag;
}
