#include "core/video/movie_layout.h"

#include <algorithm>
#include <limits>

#include "core/video/bmff_box.h"

namespace MovieLayout {

namespace {

using Bmff::TreeBox;

// Rounds of layout before giving up; each round can only widen tables, so
// it settles after at most one round per table.
constexpr int kMaxRounds = 64;

void setReason(QString* reason, const QString& text) {
    if (reason) *reason = text;
}

struct OffsetTable {
    TreeBox* box = nullptr;
    QList<quint64> offsets;
    bool wide = false;
};

bool readTable(TreeBox* box, OffsetTable& table, QString* reason) {
    const QByteArray& p = box->payload();
    table.box = box;
    table.wide = box->type() == "co64";
    const qint64 width = table.wide ? 8 : 4;
    if (p.size() < 8) {
        setReason(reason, QStringLiteral("chunk offset table cut short"));
        return false;
    }
    const quint32 count = Bmff::readU32(p, 4);
    if (quint64(count) * quint64(width) > quint64(p.size() - 8)) {
        setReason(
            reason,
            QStringLiteral("chunk offset table lists %1 entries it does not hold").arg(count));
        return false;
    }
    table.offsets.reserve(count);
    for (quint32 i = 0; i < count; ++i) {
        const qint64 at = 8 + qint64(i) * width;
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
                        if (child->type() != "stco" && child->type() != "co64") continue;
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
    QByteArray p = table.box->payload().left(4);  // version and flags
    p.reserve(8 + offsets.size() * (table.wide ? 8 : 4));
    Bmff::appendU32(p, quint32(offsets.size()));
    for (quint64 offset : offsets) {
        if (table.wide)
            Bmff::appendU64(p, offset);
        else
            Bmff::appendU32(p, quint32(offset));
    }
    table.box->setType(table.wide ? "co64" : "stco");
    table.box->setPayload(p);
}

struct Moved {
    qint64 oldOffset;
    qint64 size;
    qint64 newOffset;
};

}  // namespace

bool chunkOffsets(const Bmff::TreeBox& moov, QList<quint64>& offsets, QString* reason) {
    QList<OffsetTable> tables;
    if (!collectTables(moov, tables, reason)) return false;
    for (const OffsetTable& t : tables) offsets += t.offsets;
    return true;
}

bool planRewrite(const QList<Bmff::FileBox>& source, Bmff::TreeBox& moov,
                 const QByteArray& fileTypeBox, Plan& plan, QString* reason) {
    QList<OffsetTable> tables;
    if (!collectTables(moov, tables, reason)) return false;
    plan = Plan();

    for (int round = 0; round < kMaxRounds; ++round) {
        // Positions of the boxes in the new file.
        const qint64 moovSize = moov.size();
        QList<Moved> moved;
        qint64 pos = fileTypeBox.size();
        for (const Bmff::FileBox& box : source) {
            if (box.type == "ftyp") continue;
            if (box.type == "moov") {
                pos += moovSize;
                continue;
            }
            moved.append({box.offset, box.size, pos});
            pos += box.size;
        }
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
                    setReason(reason, QStringLiteral("chunk offset %1 points outside the media "
                                                     "data")
                                          .arg(offset));
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
        for (const Bmff::FileBox& box : source) {
            if (box.type == "ftyp") continue;
            if (box.type == "moov") {
                const QByteArray bytes = moov.serialize();
                plan.pieces.append({-1, bytes.size(), bytes});
            } else {
                plan.pieces.append({box.offset, box.size, {}});
            }
        }
        return true;
    }
    setReason(reason, QStringLiteral("the chunk offsets do not settle"));
    return false;
}

}  // namespace MovieLayout
