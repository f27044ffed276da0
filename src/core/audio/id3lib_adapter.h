// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class ID3_Tag;

// The one place that talks to id3lib. id3lib is old: it writes UTF-16 with
// a little-endian byte-order mark but big-endian code units, writes no mark
// for an empty UTF-16 string (and some readers then drop the frame), pads a
// tag it renders into memory, cannot build some frames without crashing and
// crashes on malformed tags. So this adapter never gives it a file or a tag
// to parse: it builds an ID3v2.3 tag from values frame by frame, only with
// frame types known to be safe, swaps the code units before handing texts
// over, renders into memory, and mends the rendered bytes (padding taken
// off, empty UTF-16 strings given their mark). Every call is guarded; an
// exception becomes a false answer with a reason.
class Id3TagWriter {
public:
    Id3TagWriter();
    ~Id3TagWriter();
    Id3TagWriter(const Id3TagWriter&) = delete;
    Id3TagWriter& operator=(const Id3TagWriter&) = delete;

    // Whether id3lib can build a frame of this four-character id (v2.3).
    static bool canBuild(const QByteArray& id);

    // A text information frame (T***, not TXXX) in UTF-16.
    bool addText(const QByteArray& id, const QString& text);
    // COMM or USLT.
    bool addComment(const QByteArray& id, const QByteArray& language, const QString& description,
                    const QString& text);
    // TXXX (a text) or WXXX (a URL).
    bool addUserText(const QByteArray& id, const QString& description, const QString& value);
    // W*** other than WXXX.
    bool addUrl(const QByteArray& id, const QString& url);
    // APIC with the picture's bytes as given.
    bool addPicture(const QString& mimeType, quint8 pictureType, const QString& description,
                    const QByteArray& data);
    // APIC whose bytes id3lib loads from a file.
    bool addPictureFile(const QString& path, const QString& mimeType, quint8 pictureType);
    // PRIV or UFID: an owner and binary data.
    bool addOwnerData(const QByteArray& id, const QByteArray& owner, const QByteArray& data);
    // GEOB.
    bool addObject(const QString& mimeType, const QString& fileName, const QString& description,
                   const QByteArray& data);

    int frameCount() const { return m_frames; }
    // Why the last add failed.
    QString lastError() const { return m_error; }

    // The tag: header and frames, version 2.3, no padding, no
    // unsynchronisation, no extended header; empty when no frame was added
    // or id3lib failed (`error` says why).
    QByteArray render(QString* error) const;

private:
    std::unique_ptr<ID3_Tag> m_tag;
    int m_frames = 0;
    QString m_error;
};

// Mends a v2.3 tag as id3lib renders it: the padding is cut off and every
// empty UTF-16 description or text of COMM, USLT, TXXX, WXXX and APIC frames
// gets its byte-order mark. Answers "" when the bytes are not such a tag.
QByteArray mendRenderedId3Tag(const QByteArray& rendered);
