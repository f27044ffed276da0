// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "core/video/bmff_tree.h"

// Where everything goes in a rewritten movie file. The new file holds the
// new file type box, then the source's top-level boxes in their order with
// the movie box replaced by its edited tree; the media data is copied
// unchanged, so every chunk offset moves by as much as the box that holds
// its chunk has moved. A large media data box is preceded by a free box that
// puts it at the same offset within a 4 KiB block as in the source.
namespace MovieLayout {

// One stretch of the new file: a range of the source copied as it is, or
// bytes made in memory.
struct Piece {
    qint64 sourceOffset = -1;  // >= 0 for a copied range
    qint64 size = 0;
    QByteArray bytes;  // the bytes when not copied
};

struct Plan {
    QList<Piece> pieces;
    qint64 outputSize = 0;
    int widenedTables = 0;  // 32-bit chunk offset tables that became 64-bit
};

// Fixes the chunk offset tables (stco, co64) and the auxiliary information
// offsets (saio) of every track of `moov` for the new positions and answers
// the pieces of the new file. `source` lists
// the source's top-level boxes; its ftyp boxes are left out and its single
// moov box is replaced by `moov`. A 32-bit table becomes a 64-bit one where
// a new offset needs it; the layout is worked out again until it settles.
// Offsets into a box of the movie box that keeps its bytes (auxiliary
// information stored in a sample table) move with that box. Fails with a
// reason for a malformed table or an offset that points anywhere else.
bool planRewrite(const QList<Bmff::FileBox>& source, Bmff::TreeBox& moov,
                 const QByteArray& fileTypeBox, Plan& plan, QString* reason);

// The chunk offsets (not the auxiliary ones) of every table of the tree, in
// track order, for tests and checks; false for a malformed table.
bool chunkOffsets(const Bmff::TreeBox& moov, QList<quint64>& offsets, QString* reason = nullptr);

}  // namespace MovieLayout
