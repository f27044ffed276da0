// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct Id3Frame;
class Id3TagWriter;

// One frame of an MP3 copy's tag as the MP3 writers keep it: a version 2.3
// frame id and its decoded values, so it can be rebuilt through id3lib.
struct Mp3Frame {
    enum class Kind { Text, Comment, UserText, Url, Picture, OwnerData, Object };
    QByteArray id;  // v2.3 id: "TIT2", "COMM", "APIC", ...
    Kind kind = Kind::Text;
    QString text;         // text, comment text, user text or URL value
    QString description;  // COMM/USLT/TXXX/WXXX/APIC/GEOB
    QByteArray language;  // COMM/USLT
    QString mimeType;     // APIC/GEOB
    QString fileName;     // GEOB
    quint8 pictureType = 0;
    QByteArray owner;  // PRIV/UFID
    QByteArray data;   // APIC/GEOB/PRIV/UFID bytes, kept as stored

    static Mp3Frame textFrame(const QByteArray& id, const QString& text);
};

// The frames of a file's ID3v2 tags (any version) as v2.3 frames. Frames
// that id3lib cannot write (v2.4-only frames, encrypted or undecodable ones)
// are left out and named in `dropped`; a v2.4 recording time becomes the
// v2.3 year, date and time frames, and v2.2 ids their v2.3 names.
QList<Mp3Frame> mp3FramesFrom(const QList<Id3Frame>& stored, QStringList* dropped);

// Adds a frame to the tag; false (the writer says why) when id3lib refused it.
bool addMp3Frame(Id3TagWriter& writer, const Mp3Frame& frame);
