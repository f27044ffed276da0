// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QtEndian>

#include "audio_fixtures.h"
#include "core/audio/id3_frames.h"
#include "media_fixtures.h"

namespace {

QByteArray syncsafe(quint32 v) {
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i) b[i] = char((v >> (21 - 7 * i)) & 0x7f);
    return b;
}
QByteArray be32(quint32 v) {
    QByteArray b(4, '\0');
    qToBigEndian(v, b.data());
    return b;
}
QByteArray tag(int version, char flags, const QByteArray& body) {
    return QByteArray("ID3") + char(version) + '\0' + flags + syncsafe(body.size()) + body;
}
// A frame of a v2.3 (plain size) or v2.4 (syncsafe size) tag.
QByteArray frame(int version, const char* id, const QByteArray& body, char format = 0) {
    return id + (version == 3 ? be32(body.size()) : syncsafe(body.size())) + '\0' + format + body;
}
QByteArray bytes(const char* s, int n) {
    return QByteArray(s, n);
}

TEST(Id3Frames, ListsFfmpegTagsAsStoredWithTheirRanges) {
    const struct {
        int version;
        QList<QByteArray> ids;
    } cases[] = {
        {3, {"TIT2", "TPE1", "TYER", "TRCK", "TXXX", "TRDA", "TSSE", "APIC"}},
        {4, {"TIT2", "TPE1", "TDRC", "TRCK", "TXXX", "TXXX", "TSSE", "APIC"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        QFile file(audiofix::mp3(c.version));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << lastToolOutput().toStdString();
        const QList<Id3Tag> tags = readLeadingId3v2Tags(file);
        ASSERT_EQ(tags.size(), 1);
        EXPECT_EQ(tags[0].version, c.version);
        QList<QByteArray> ids;
        for (const Id3Frame& f : tags[0].frames) ids << f.id;
        EXPECT_EQ(ids, c.ids);
        EXPECT_EQ(id3TextValues(tags[0].frames[0].body),
                  QStringList{QString::fromUtf8(audiofix::kTitle)});
        Id3PictureFrame picture;
        ASSERT_TRUE(id3Picture(tags[0].frames.last().body, false, &picture));
        EXPECT_EQ(picture.mimeType, QStringLiteral("image/png"));
        EXPECT_EQ(picture.data, readFile(audiofix::coverPng()));

        const FileTagRanges ranges = findTagRanges(file);
        ASSERT_EQ(ranges.leading.size(), 1);
        EXPECT_EQ(ranges.leading[0].size, tags[0].size);
        ASSERT_EQ(ranges.trailing.size(), 1);
        EXPECT_EQ(ranges.trailing[0].kind, TagByteRange::Kind::Id3v1);
        EXPECT_EQ(ranges.audioEnd, file.size() - 128);
    }
}

TEST(Id3Frames, UndoesWhatTheStoredFormDid) {
    const QByteArray unsynced = bytes("\0a\xff\0b", 5);  // "aÿb" as unsynchronisation stores it
    const QByteArray text = bytes("\0zipped", 7);
    const QByteArray zipped = qCompress(text).mid(4);  // qCompress puts a size first
    const struct {
        const char* name;
        QByteArray tag;
        const char* values;  // separated by '|'
    } cases[] = {
        {"v2.2", bytes("ID3\2\0\0", 6) + syncsafe(10) + bytes("TT2\0\0\4\0abc", 10), "abc"},
        {"v2.3 tag unsync", tag(3, char(0x80), "TIT2" + be32(4) + bytes("\0\0", 2) + unsynced),
         "aÿb"},
        {"v2.3 extended header", tag(3, 0x40, be32(6) + QByteArray(6, 0) + frame(3, "TIT2", text)),
         "zipped"},
        {"v2.4 unsync, length", tag(4, 0, frame(4, "TIT2", syncsafe(4) + unsynced, 0x03)), "aÿb"},
        {"v2.4 compressed", tag(4, 0, frame(4, "TIT2", syncsafe(7) + zipped, 0x09)), "zipped"},
        {"v2.3 compressed", tag(3, 0, frame(3, "TIT2", be32(7) + zipped, char(0x80))), "zipped"},
        {"UTF-16BE, two values", tag(4, 0, frame(4, "TIT2", bytes("\2\0a\0\0\4\x36", 7))), "a|ж"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Id3Tag parsed = parseId3v2Tag(c.tag);
        ASSERT_EQ(parsed.frames.size(), 1) << parsed.problems.join(u';').toStdString();
        EXPECT_EQ(id3TextValues(parsed.frames[0].body), QString::fromUtf8(c.values).split(u'|'));
    }
}

TEST(Id3Frames, DecodesCommentsAndStopsAtDamage) {
    Id3CommentFrame comment;
    ASSERT_TRUE(id3Comment(bytes("\1eng\xff\xfe"
                                 "d\0\0\0\xff\xfe\x36\4",
                                 14),
                           &comment));
    EXPECT_EQ(comment.language + comment.description.toUtf8() + comment.text.toUtf8(), "engdж");

    const QByteArray good = frame(3, "TIT2", bytes("\0ok", 3));
    const struct {
        const char* name;
        QByteArray data;
        int frames;
    } cases[] = {
        {"frame past the tag", tag(3, 0, good + "TALB" + be32(1000) + bytes("\0\0\0x", 4)), 1},
        {"tag past the data", tag(3, 0, good + good).left(10 + good.size() + 5), 1},
        {"bad extended header", tag(3, 0x40, be32(9999) + good), 0},
        {"a bomb inflates only so far",
         tag(4, 0,
             frame(4, "TIT2", syncsafe(5) + qCompress(QByteArray(1 << 20, 'a')).mid(4), 0x09)),
         1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Id3Tag parsed = parseId3v2Tag(c.data);
        EXPECT_EQ(parsed.frames.size(), c.frames);
        EXPECT_FALSE(parsed.problems.isEmpty());
        for (const Id3Frame& f : parsed.frames) EXPECT_TRUE(f.body.size() <= 5 || f.compressedBody);
    }
}

TEST(Id3Frames, FindsTrailingTagsInFileOrder) {
    const QByteArray mp3 = readFile(audiofix::mp3(3));
    const QByteArray audio = mp3.left(mp3.size() - 128);
    QByteArray ape = QByteArray("APETAGEX") + bytes("\xd0\7\0\0", 4);
    ape += QByteArray(4, '\0');  // size, set below
    ape += QByteArray(16, '\0');
    qToLittleEndian<quint32>(32, ape.data() + 12);
    const QByteArray lyrics = QByteArray("LYRICSBEGININDhello") + "000019LYRICS200";
    QByteArray data = audio + ape + lyrics + mp3.right(128);
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    const FileTagRanges ranges = findTagRanges(buffer);
    QList<TagByteRange::Kind> kinds;
    for (const TagByteRange& r : ranges.trailing) kinds << r.kind;
    using K = TagByteRange::Kind;
    EXPECT_EQ(kinds, (QList<K>{K::Ape, K::Lyrics3, K::Id3v1}));
    EXPECT_EQ(ranges.audioEnd, audio.size());
    EXPECT_EQ(ranges.trailing[1].size, lyrics.size());
}

}  // namespace
