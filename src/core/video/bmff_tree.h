// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QIODevice;

// The box structure of a movie as the rewriter needs it: the top-level boxes
// of a file as positions (media data is never loaded), and the movie box as
// an editable tree in memory. Unlike the metadata reader, which reads what it
// can from a damaged file, everything here is strict: a size that does not
// fit its parent, a header cut short or nesting that goes too deep is an
// error, because a file written from a misread structure would be damaged.
namespace Bmff {

// Deepest nesting accepted inside a movie box.
inline constexpr int kMaxTreeDepth = 32;

// Top-level boxes accepted in one file before it is treated as damaged.
inline constexpr int kMaxFileBoxes = 1 << 20;

// One box of the file's top level, by position.
struct FileBox {
    QByteArray type;
    qint64 offset = 0;         // of the header
    qint64 size = 0;           // header included
    int headerSize = 8;        // 8, 16 with a 64-bit size
    bool toEndOfFile = false;  // stored with size 0: runs to the end of the file
};

// Lists the top-level boxes of a seekable device of `fileSize` bytes.
// Answers false with a reason for a header that does not fit, a size that
// reaches past the end of the file, or too many boxes.
bool scanFileBoxes(QIODevice& device, qint64 fileSize, QList<FileBox>& boxes, QString* reason);

// A box of an in-memory tree. Containers the rewriter walks into hold their
// children; every other box keeps its payload bytes untouched.
class TreeBox {
public:
    TreeBox(QByteArray type, QByteArray payload = {})
        : m_type(std::move(type)), m_payload(std::move(payload)) {}

    const QByteArray& type() const { return m_type; }
    void setType(const QByteArray& type) { m_type = type; }

    bool isContainer() const { return m_container; }
    const QByteArray& payload() const { return m_payload; }
    void setPayload(const QByteArray& payload) { m_payload = payload; }

    // The source wrote this box with a 64-bit size; it is written so again.
    bool largeHeader() const { return m_largeHeader; }
    void setLargeHeader(bool large) { m_largeHeader = large; }

    const std::vector<std::unique_ptr<TreeBox>>& children() const { return m_children; }
    void appendChild(std::unique_ptr<TreeBox> child);
    // Removes every direct child of the type; answers how many.
    int removeChildren(QByteArrayView type);
    // Removes every direct child the predicate names; answers how many.
    int removeChildrenIf(const std::function<bool(const TreeBox&)>& remove);
    // The first direct child of the type, or null.
    TreeBox* child(QByteArrayView type) const;
    QList<TreeBox*> childrenOf(QByteArrayView type) const;

    // Size of the whole box as serialize() writes it.
    qint64 size() const;
    QByteArray serialize() const;
    void appendTo(QByteArray& out) const;

    // Where the box was in the parsed data (header included), counted from
    // the start of the root box; -1 for a box made in memory.
    qint64 sourceOffset() const { return m_sourceOffset; }
    qint64 sourceSize() const { return m_sourceSize; }
    void setSource(qint64 offset, qint64 size) {
        m_sourceOffset = offset;
        m_sourceSize = size;
    }

    // The header as the source had it (8, or 16 with a 64-bit size) and as
    // serialize() writes it (16 also when the box has outgrown 32 bits).
    qint64 headerSize() const;
    qint64 writtenHeaderSize() const;

    // Parses a box's payload into children, walking into the given container
    // types (at any depth below this box). `payloadOffset` is where the
    // payload starts, counted as sourceOffset() is. Fails on anything
    // malformed.
    bool parseChildren(QByteArrayView payload, const QList<QByteArray>& containers, int depth,
                       QString* reason, qint64 payloadOffset = 0);

private:
    qint64 bodySize() const;

    QByteArray m_type;
    QByteArray m_payload;
    QByteArray m_padding;  // zero bytes after the last child, kept as found
    bool m_container = false;
    bool m_largeHeader = false;
    qint64 m_sourceOffset = -1;
    qint64 m_sourceSize = 0;
    std::vector<std::unique_ptr<TreeBox>> m_children;
};

// The container boxes of a movie box that lead to the sample tables and
// data references: trak, mdia, minf, stbl, dinf, edts.
const QList<QByteArray>& movieContainers();

// Parses the payload of a movie box into a tree whose root has type "moov";
// `headerSize` is the size of the movie box's header in the file (source
// offsets count from the start of the box).
std::unique_ptr<TreeBox> parseMovieBox(QByteArrayView payload, QString* reason,
                                       qint64 headerSize = 8);

// A whole box: 32-bit size (64-bit when it does not fit), type, payload.
QByteArray makeBox(QByteArrayView type, QByteArrayView payload);
// A full box: as makeBox with version and flags in front of the payload.
QByteArray makeFullBox(QByteArrayView type, quint8 version, quint32 flags, QByteArrayView payload);

void appendU8(QByteArray& out, quint8 value);
void appendU16(QByteArray& out, quint16 value);
void appendU32(QByteArray& out, quint32 value);
void appendU64(QByteArray& out, quint64 value);

}  // namespace Bmff
