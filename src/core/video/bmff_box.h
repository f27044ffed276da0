// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

class QIODevice;

// A small walker over the boxes (atoms) of ISO base-media and QuickTime
// files. Everything read from the file is distrusted: a box never reaches
// past its parent, and a walker stops at the first header that does not fit.
namespace Bmff {

// Largest movie box read into memory. Real movie boxes stay far below this;
// anything larger is treated as damage rather than allocated.
inline constexpr qint64 kMaxMovieBoxSize = qint64(256) * 1024 * 1024;

// Top-level boxes looked at before giving up on a file (fragmented movies
// have many, but not millions).
inline constexpr int kMaxTopLevelBoxes = 1 << 20;

struct Box {
    QByteArray type;         // four bytes, as stored
    QByteArrayView payload;  // the bytes after the header (and after a uuid's user type)
    bool truncated = false;  // the declared size reached past the parent; payload was cut
    // The whole box as stored, header included; empty when it cannot be
    // copied as it is (truncated, or sized "to the end of the parent").
    QByteArrayView bytes;
};

// Iterates the child boxes of one payload in order. A box whose declared
// size reaches past the end is cut to what remains and ends the walk; a
// header that does not fit ends it at once.
class BoxIterator {
public:
    explicit BoxIterator(QByteArrayView data) : m_data(data) {}

    // Fills `box` with the next child and answers true, or answers false at
    // the end of the data or at a damaged header.
    bool next(Box& box);

    bool damaged() const { return m_damaged; }

private:
    QByteArrayView m_data;
    qint64 m_pos = 0;
    bool m_done = false;
    bool m_damaged = false;
};

// Big-endian readers; the caller has checked that the bytes are there.
quint16 readU16(QByteArrayView data, qint64 pos);
quint32 readU32(QByteArrayView data, qint64 pos);
quint64 readU64(QByteArrayView data, qint64 pos);

// A full box's payload without its version and flags, or an empty view when
// there are fewer than four bytes.
QByteArrayView fullBoxBody(QByteArrayView payload);

// A 16-bit language code as three ISO 639-2 letters: packed codes (three
// 5-bit letters) are unpacked, the classic Macintosh codes of the common
// languages are mapped, "" for anything else.
QString languageFromCode(quint16 code);

// True for a packed ISO 639-2 language code (as opposed to a Macintosh code).
bool isPackedLanguage(quint16 code);

// Are these four bytes a plausible box type (printable, or the copyright
// sign that starts QuickTime user-data types)?
bool isPlausibleType(QByteArrayView type);

// Walks the top-level boxes of a seekable device and reads the payload of
// the first movie box ("moov") into memory, skipping everything else by
// seeking. A truncated movie box gives what the file holds of it. Answers an
// empty array when there is no readable movie box.
QByteArray readMovieBox(QIODevice& device);

}  // namespace Bmff
