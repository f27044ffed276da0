// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QString>

#include <utility>

// Our own reading and writing of Core Audio Format files: the chunk list and
// the `info` chunk, an ordered list of key/value texts ("title", "artist",
// "track number", ...). Every chunk size is checked against the file.

struct CafChunk {
    QByteArray type;           // four characters: "desc", "data", "info", ...
    qint64 offset = 0;         // where its 12-byte header starts
    qint64 size = 0;           // its content's size; for a `data` chunk of unknown size, to the end
    bool sizeUnknown = false;  // stored as -1 (only the last chunk, `data`, may say so)

    qint64 contentOffset() const { return offset + 12; }
    qint64 end() const { return offset + 12 + size; }
};

struct CafLayout {
    bool isCaf = false;      // the file starts with a CAF header ("caff", version 1)
    QList<CafChunk> chunks;  // in file order
    QString problem;         // why the walk stopped early, for the log; "" when it did not

    const CafChunk* find(const char* type) const;
};

// True when `head` (the file's first bytes) starts a CAF file.
bool looksLikeCaf(const QByteArray& head);

// Walks the chunks of a CAF file (a bounded number of them).
CafLayout readCafLayout(QIODevice& file);

using CafInfo = QList<std::pair<QString, QString>>;

// The entries of the file's `info` chunk, in stored order; empty when there
// is none. `problem` (optional) says what was damaged: the chunk, or (second
// form) the chunk list.
CafInfo readCafInfo(QIODevice& file, const CafLayout& layout, QString* problem = nullptr);
CafInfo readCafInfo(QIODevice& file, QString* problem = nullptr);

// The content of an `info` chunk holding `info` (entry count, then each key
// and value as UTF-8 with a terminating zero).
QByteArray encodeCafInfo(const CafInfo& info);

// Writes a copy of the CAF file `source` to `out` with its `info` chunk's
// content replaced by `info` (at the first info chunk's place; further info
// chunks are left out), or a new info chunk after the `desc` chunk when the
// source has none. Every other chunk is copied byte for byte, streamed. An
// empty `info` still writes an info chunk with no entries. False with
// `error` set when the source is no CAF file, is damaged, or a read or write
// fails.
bool writeCafCopyWithInfo(QIODevice& source, QIODevice& out, const CafInfo& info, QString* error);
