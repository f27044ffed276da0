// SPDX-License-Identifier: GPL-3.0-or-later
// Where the tags of an audio file lie: ID3v2 tags at the start, and ID3v1,
// Lyrics3, APE and appended ID3v2 tags at the end. Only the head and the tail
// of the file are read; every size is checked against the file.

#include "core/audio/id3_frames.h"

namespace {

constexpr int kMaxLeadingTags = 16;
constexpr int kMaxTrailingTags = 16;

QByteArray readAt(QIODevice& file, qint64 offset, qint64 length) {
    if (offset < 0 || length <= 0 || !file.seek(offset)) return {};
    return file.read(length);
}

quint32 le32(const QByteArray& b, qsizetype at) {
    const auto* p = reinterpret_cast<const uchar*>(b.constData() + at);
    return quint32(p[0]) | (quint32(p[1]) << 8) | (quint32(p[2]) << 16) | (quint32(p[3]) << 24);
}

// The trailing tag that ends at `end`, if any, starting no earlier than `floor`.
bool trailingTagBefore(QIODevice& file, qint64 floor, qint64 end, TagByteRange* out) {
    using Kind = TagByteRange::Kind;
    auto accept = [&](Kind kind, qint64 start) {
        if (start < floor || start >= end) return false;
        *out = {kind, start, end - start};
        return true;
    };
    if (end - floor >= 128 && readAt(file, end - 128, 3) == "TAG")
        return accept(Kind::Id3v1, end - 128);

    const QByteArray tail =
        readAt(file, std::max(floor, end - 32), std::min<qint64>(32, end - floor));
    if (tail.size() >= 32 && tail.startsWith("APETAGEX")) {
        const qint64 size = le32(tail, 12);
        const bool header = le32(tail, 20) & 0x80000000u;
        const qint64 start = end - size - (header ? 32 : 0);
        if (size >= 32 && (!header || readAt(file, start, 8) == "APETAGEX"))
            return accept(Kind::Ape, start);
    }
    if (tail.endsWith("LYRICS200") && tail.size() >= 15) {
        const QByteArray digits = tail.mid(tail.size() - 15, 6);
        bool ok = false;
        const qint64 size = digits.toLongLong(&ok);
        const qint64 start = end - 15 - size;
        if (ok && size >= 11 && readAt(file, start, 11) == "LYRICSBEGIN")
            return accept(Kind::Lyrics3, start);
    }
    if (tail.endsWith("LYRICSEND")) {
        // Lyrics3 v1: no size; its text is at most 5100 bytes.
        const qint64 from = std::max(floor, end - 9 - 5100 - 11);
        const qsizetype at = readAt(file, from, end - from).lastIndexOf("LYRICSBEGIN");
        if (at >= 0) return accept(Kind::Lyrics3, from + at);
    }
    if (tail.size() >= 10 && tail.mid(tail.size() - 10).startsWith("3DI")) {
        QByteArray header = tail.mid(tail.size() - 10);
        header.replace(0, 3, "ID3");
        const qint64 size = id3v2TagSize(header);
        if (size > 0 && readAt(file, end - size, 3) == "ID3")
            return accept(Kind::Id3v2, end - size);
    }
    return false;
}

}  // namespace

FileTagRanges findTagRanges(QIODevice& file, bool trailing) {
    FileTagRanges ranges;
    const qint64 fileSize = file.size();
    qint64 pos = 0;
    for (int i = 0; i < kMaxLeadingTags; ++i) {
        const qint64 size = id3v2TagSize(readAt(file, pos, 10));
        if (size == 0 || size > fileSize - pos) break;
        ranges.leading.append({TagByteRange::Kind::Id3v2, pos, size});
        pos += size;
    }
    ranges.audioBegin = pos;
    qint64 end = fileSize;
    TagByteRange range;
    for (int i = 0; trailing && i < kMaxTrailingTags && trailingTagBefore(file, pos, end, &range);
         ++i) {
        ranges.trailing.prepend(range);
        end = range.offset;
    }
    ranges.audioEnd = end;
    return ranges;
}

QList<Id3Tag> readLeadingId3v2Tags(QIODevice& file) {
    QList<Id3Tag> tags;
    const qint64 fileSize = file.size();
    qint64 pos = 0;
    for (int i = 0; i < kMaxLeadingTags && pos < fileSize; ++i) {
        const qint64 size = id3v2TagSize(readAt(file, pos, 10));
        if (size == 0) break;
        // A tag cut short by the end of the file is still read as far as it goes.
        const Id3Tag tag = parseId3v2Tag(readAt(file, pos, std::min(size, fileSize - pos)));
        if (!tag.valid) break;
        tags.append(tag);
        pos += size;
    }
    return tags;
}
