// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QString>
#include <QStringList>

// A small, bounded ID3v2 reader of our own. It lists the frames of a tag as
// they are stored (a v2.3 "TYER" stays "TYER", a v2.2 "TT2" stays "TT2"), so
// the identifiers the program shows and matches name the file's own frames,
// and a writer can rebuild every frame it did not change. Every size is
// checked against the bytes at hand; nothing is read past them.

struct Id3Frame {
    QByteArray id;           // as stored: three characters in v2.2, four in v2.3 and v2.4
    int version = 0;         // the tag's major version: 2, 3 or 4
    quint8 statusFlags = 0;  // the frame's two flag bytes as stored (none in v2.2);
    quint8 formatFlags = 0;  // their meaning depends on `version`
    // The frame's content: unsynchronisation undone, the extra header bytes
    // (group, encryption method, data length) taken off and, when the frame
    // was compressed, inflated. An encrypted frame keeps its stored bytes.
    QByteArray body;
    bool encrypted = false;
    quint8 encryptionMethod = 0;
    bool grouped = false;
    quint8 groupId = 0;
    // The frame was compressed and could not be inflated within the bounds:
    // `body` holds the stored, compressed bytes.
    bool compressedBody = false;

    bool isText() const;  // a text information frame (T***, not TXXX/TXX)
    bool discardOnTagAlter() const;
    bool discardOnFileAlter() const;
    bool readOnly() const;
};

struct Id3Tag {
    bool valid = false;
    int version = 0;  // 2, 3 or 4
    int revision = 0;
    quint8 flags = 0;        // the header's flags as stored
    qint64 size = 0;         // bytes the whole tag takes: header, body and footer
    QList<Id3Frame> frames;  // in stored order
    QStringList problems;    // what was damaged or left out, for the log
};

// Reads one tag from `data`, which starts with its "ID3" header and may go on
// past it. An invalid header gives `valid` false.
Id3Tag parseId3v2Tag(const QByteArray& data);

// The size of the tag whose 10-byte header starts `header` ("ID3", version,
// syncsafe size), footer included; 0 when it is no ID3v2 header.
qint64 id3v2TagSize(const QByteArray& header);

// The tags a file carries at its start (ID3v2, possibly several in a row) and
// at its end (ID3v1, Lyrics3, APE, an appended ID3v2), with their byte ranges,
// so a writer can cut them off a copy. Sizes are checked against the file.
struct TagByteRange {
    enum class Kind { Id3v2, Id3v1, Lyrics3, Ape };
    Kind kind = Kind::Id3v2;
    qint64 offset = 0;
    qint64 size = 0;
};
struct FileTagRanges {
    QList<TagByteRange> leading;   // in file order
    QList<TagByteRange> trailing;  // in file order
    qint64 audioBegin = 0;         // the bytes between the two groups
    qint64 audioEnd = 0;
};
// Without `trailing` only the leading tags are looked for (audioEnd is then
// the file's end).
FileTagRanges findTagRanges(QIODevice& file, bool trailing = true);

// The leading ID3v2 tags of a file, read in order (at most a bounded number).
QList<Id3Tag> readLeadingId3v2Tags(QIODevice& file);

// Frame bodies decoded.

// The values of a text frame (T***): one per null-separated value, in the
// frame's encoding (ISO-8859-1, UTF-16 with byte-order mark, UTF-16BE, UTF-8).
QStringList id3TextValues(const QByteArray& body);

// COMM and USLT (and v2.2 COM, ULT).
struct Id3CommentFrame {
    quint8 encoding = 0;
    QByteArray language;  // three characters, as stored
    QString description;
    QString text;
};
bool id3Comment(const QByteArray& body, Id3CommentFrame* out);

// APIC (and v2.2 PIC, whose three-letter image format becomes a MIME type).
struct Id3PictureFrame {
    quint8 encoding = 0;
    QString mimeType;  // "image/jpeg"
    quint8 pictureType = 0;
    QString description;
    QByteArray data;
};
bool id3Picture(const QByteArray& body, bool v22, Id3PictureFrame* out);

// TXXX and WXXX (and v2.2 TXX, WXX): a description and its value(s).
struct Id3UserTextFrame {
    quint8 encoding = 0;
    QString description;
    QStringList values;  // WXXX: one URL
};
bool id3UserText(const QByteArray& body, bool isUrl, Id3UserTextFrame* out);

// Bytes of text in an ID3 `encoding` (0 ISO-8859-1, 1 UTF-16 with byte-order
// mark, 2 UTF-16BE, 3 UTF-8) as a string; trailing terminators are dropped.
QString id3DecodeText(const QByteArray& bytes, quint8 encoding);
