// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/movie_layout.h"

#include <QSet>

#include <algorithm>
#include <limits>

#include "core/video/bmff_box.h"

namespace MovieLayout {

namespace {

using Bmff::TreeBox;

// Rounds of layout before giving up; each round can only widen tables, so
// it settles after at most one round per table.
constexpr int kMaxRounds = 64;

// Large media data is put at the same offset within a file-system block as
// in the source, behind a free box: the kernel then copies it block by block
// (or shares the blocks, where the file system can) instead of shifting every
// byte, which halves the time of a write on ext4.
constexpr qint64 kBlockSize = 4096;
constexpr qint64 kAlignedMediaMinimum = qint64(1) << 20;

// The size of the free box that aligns `box` when it would start at `pos`;
// 0 when it needs none.
qint64 alignmentPadding(const Bmff::FileBox& box, qint64 pos) {
    if (box.type != "mdat" || box.size < kAlignedMediaMinimum) return 0;
    qint64 padding = (box.offset - pos) % kBlockSize;
    if (padding < 0) padding += kBlockSize;
    if (padding > 0 && padding < 8) padding += kBlockSize;  // a box has at least a header
    return padding;
}

void setReason(QString* reason, const QString& text) {
    if (reason) *reason = text;
}

// A table of file offsets: the chunk offsets (stco 32-bit, co64 64-bit)
// or the offsets of sample auxiliary information (saio, version 0 32-bit,
// version 1 64-bit), which in a sample table are file offsets as well.
struct OffsetTable {
    TreeBox* box = nullptr;
    QByteArray head;  // the bytes before the entry count
    QList<quint64> offsets;
    bool wide = false;
    bool auxiliary = false;  // saio
};

bool readTable(TreeBox* box, OffsetTable& table, QString* reason) {
    const QByteArray& p = box->payload();
    table.box = box;
    table.auxiliary = box->type() == "saio";
    qint64 headSize = 4;  // version and flags
    if (table.auxiliary) {
        if (p.size() >= 4 && (Bmff::readU32(p, 0) & 1)) headSize += 8;  // type and parameter
        table.wide = !p.isEmpty() && p[0] != 0;
    } else {
        table.wide = box->type() == "co64";
    }
    const qint64 width = table.wide ? 8 : 4;
    if (p.size() < headSize + 4) {
        setReason(
            reason,
            QStringLiteral("offset table '%1' cut short").arg(QString::fromLatin1(box->type())));
        return false;
    }
    table.head = p.left(headSize);
    const quint32 count = Bmff::readU32(p, headSize);
    if (quint64(count) * quint64(width) > quint64(p.size() - headSize - 4)) {
        setReason(reason, QStringLiteral("offset table '%1' lists %2 entries it does not hold")
                              .arg(QString::fromLatin1(box->type()))
                              .arg(count));
        return false;
    }
    table.offsets.reserve(count);
    for (quint32 i = 0; i < count; ++i) {
        const qint64 at = headSize + 4 + qint64(i) * width;
        table.offsets.append(table.wide ? Bmff::readU64(p, at) : Bmff::readU32(p, at));
    }
    return true;
}

bool collectTables(const TreeBox& moov, QList<OffsetTable>& tables, QString* reason) {
    for (TreeBox* trak : moov.childrenOf("trak")) {
        for (TreeBox* mdia : trak->childrenOf("mdia")) {
            for (TreeBox* minf : mdia->childrenOf("minf")) {
                for (TreeBox* stbl : minf->childrenOf("stbl")) {
                    for (const auto& child : stbl->children()) {
                        if (child->type() != "stco" && child->type() != "co64" &&
                            child->type() != "saio") {
                            continue;
                        }
                        OffsetTable table;
                        if (!readTable(child.get(), table, reason)) return false;
                        tables.append(table);
                    }
                }
            }
        }
    }
    return true;
}

void writeTable(OffsetTable& table, const QList<quint64>& offsets) {
    QByteArray p = table.head;
    if (table.auxiliary) p[0] = table.wide ? 1 : 0;  // the version gives the width
    p.reserve(p.size() + 4 + offsets.size() * (table.wide ? 8 : 4));
    Bmff::appendU32(p, quint32(offsets.size()));
    for (quint64 offset : offsets) {
        if (table.wide)
            Bmff::appendU64(p, offset);
        else
            Bmff::appendU32(p, quint32(offset));
    }
    if (!table.auxiliary) table.box->setType(table.wide ? "co64" : "stco");
    table.box->setPayload(p);
}

struct Moved {
    qint64 oldOffset;
    qint64 size;
    qint64 newOffset;
};

// The boxes of the movie box that keep their bytes, by old and new position
// in the file: some files point into them (auxiliary information kept in
// the sample table). Offset tables are left out: their bytes change.
void addMovieLeaves(const TreeBox& box, qint64 oldMoov, qint64 newPos,
                    const QSet<const TreeBox*>& tables, QList<Moved>& out) {
    if (!box.isContainer()) {
        if (box.sourceOffset() >= 0 && !tables.contains(&box))
            out.append({oldMoov + box.sourceOffset(), box.sourceSize(), newPos});
        return;
    }
    qint64 childPos = newPos + box.writtenHeaderSize();
    for (const auto& child : box.children()) {
        addMovieLeaves(*child, oldMoov, childPos, tables, out);
        childPos += child->size();
    }
}

}  // namespace

bool chunkOffsets(const Bmff::TreeBox& moov, QList<quint64>& offsets, QString* reason) {
    QList<OffsetTable> tables;
    if (!collectTables(moov, tables, reason)) return false;
    for (const OffsetTable& t : tables) {
        if (!t.auxiliary) offsets += t.offsets;
    }
    return true;
}

bool planRewrite(const QList<Bmff::FileBox>& source, Bmff::TreeBox& moov,
                 const QByteArray& fileTypeBox, Plan& plan, QString* reason) {
    QList<OffsetTable> tables;
    if (!collectTables(moov, tables, reason)) return false;
    QSet<const TreeBox*> tableBoxes;
    for (const OffsetTable& t : tables) tableBoxes.insert(t.box);
    plan = Plan();

    for (int round = 0; round < kMaxRounds; ++round) {
        // Positions of the boxes in the new file.
        const qint64 moovSize = moov.size();
        QList<Moved> moved;
        QList<qint64> padding(source.size(), 0);
        qint64 pos = fileTypeBox.size();
        for (qsizetype i = 0; i < source.size(); ++i) {
            const Bmff::FileBox& box = source[i];
            if (box.type == "ftyp") continue;
            if (box.type == "moov") {
                addMovieLeaves(moov, box.offset, pos, tableBoxes, moved);
                pos += moovSize;
                continue;
            }
            padding[i] = alignmentPadding(box, pos);
            pos += padding[i];
            moved.append({box.offset, box.size, pos});
            pos += box.size;
        }
        std::sort(moved.begin(), moved.end(),
                  [](const Moved& a, const Moved& b) { return a.oldOffset < b.oldOffset; });
        const qint64 outputSize = pos;

        // Each offset moves with the copied box it points into.
        bool widened = false;
        QList<QList<quint64>> mapped;
        for (OffsetTable& table : tables) {
            QList<quint64> out;
            out.reserve(table.offsets.size());
            for (quint64 offset : table.offsets) {
                auto it = std::upper_bound(
                    moved.begin(), moved.end(), offset,
                    [](quint64 o, const Moved& m) { return o < quint64(m.oldOffset); });
                if (it == moved.begin() ||
                    offset >= quint64((it - 1)->oldOffset) + quint64((it - 1)->size)) {
                    setReason(reason, QStringLiteral("offset %1 of '%2' points outside the "
                                                     "media data")
                                          .arg(offset)
                                          .arg(QString::fromLatin1(table.box->type())));
                    return false;
                }
                --it;
                out.append(quint64(it->newOffset) + (offset - quint64(it->oldOffset)));
            }
            if (!table.wide && !out.isEmpty() &&
                *std::max_element(out.begin(), out.end()) > std::numeric_limits<quint32>::max()) {
                table.wide = true;
                ++plan.widenedTables;
                widened = true;
            }
            mapped.append(out);
        }
        for (qsizetype i = 0; i < tables.size(); ++i) writeTable(tables[i], mapped[i]);
        if (widened) continue;  // the movie box grew: lay it out again

        plan.outputSize = outputSize;
        plan.pieces.append({-1, fileTypeBox.size(), fileTypeBox});
        for (qsizetype i = 0; i < source.size(); ++i) {
            const Bmff::FileBox& box = source[i];
            if (box.type == "ftyp") continue;
            if (box.type == "moov") {
                const QByteArray bytes = moov.serialize();
                plan.pieces.append({-1, bytes.size(), bytes});
                continue;
            }
            if (padding[i] > 0) {
                const QByteArray free = Bmff::makeBox("free", QByteArray(padding[i] - 8, '\0'));
                plan.pieces.append({-1, free.size(), free});
            }
            plan.pieces.append({box.offset, box.size, {}});
        }
        return true;
    }
    setReason(reason, QStringLiteral("the chunk offsets do not settle"));
    return false;
}

}  // namespace MovieLayout
