// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/heif_items.h"

#include <QCoreApplication>
#include <QSet>

#include "core/common/ui_texts.h"
#include "core/video/bmff_box.h"

namespace Heif {

namespace {

bool fail(QString* reason, const QString& text) {
    if (reason) *reason = text;
    return false;
}

QString damaged() {
    return PhotoWriter::tr("The photo's item list is damaged, so it was not written.");
}

// A bounded big-endian reader: every read past the end sets `bad`.
struct Cursor {
    QByteArrayView data;
    qint64 pos = 0;
    bool bad = false;

    quint64 read(int bytes) {
        if (bytes == 0) return 0;
        if (bad || pos < 0 || bytes > data.size() - pos) {
            bad = true;
            return 0;
        }
        quint64 value = 0;
        for (int i = 0; i < bytes; ++i) value = (value << 8) | quint8(data[pos + i]);
        pos += bytes;
        return value;
    }
    QByteArray take(int bytes) {
        if (bad || bytes > data.size() - pos) {
            bad = true;
            return {};
        }
        const QByteArray out = data.sliced(pos, bytes).toByteArray();
        pos += bytes;
        return out;
    }
    // A zero-terminated text; a missing terminator ends at the data's end.
    QByteArray text() {
        const qint64 end = data.indexOf('\0', pos);
        const QByteArray out = data.sliced(pos, (end < 0 ? data.size() : end) - pos).toByteArray();
        pos = end < 0 ? data.size() : end + 1;
        return out;
    }
};

// The children of a payload, strictly: a damaged or cut box is an error.
bool listBoxes(QByteArrayView payload, QList<StoredBox>& out, QString* reason) {
    Bmff::BoxIterator it(payload);
    Bmff::Box box;
    while (it.next(box)) {
        if (box.truncated || box.bytes.isEmpty() || out.size() >= kMaxItems)
            return fail(reason, damaged());
        out.append({box.type, box.bytes, box.payload});
    }
    return it.damaged() ? fail(reason, damaged()) : true;
}

bool parseInfe(const StoredBox& box, ItemInfo& info) {
    Cursor c{box.payload};
    const int version = int(c.read(1));
    c.read(3);
    if (version < 2 || version > 3) return false;
    info.id = quint32(c.read(version == 2 ? 2 : 4));
    c.read(2);  // protection index
    info.type = c.take(4);
    if (c.bad) return false;
    c.text();  // name
    if (info.type == "mime" && c.pos < c.data.size()) info.contentType = c.text();
    info.box = box.bytes;
    return true;
}

bool parseIinf(QByteArrayView payload, ItemFile& out, QString* reason) {
    Cursor c{payload};
    const int version = int(c.read(1));
    c.read(3);
    c.read(version == 0 ? 2 : 4);
    if (c.bad || version > 1) return fail(reason, damaged());
    QList<StoredBox> entries;
    if (!listBoxes(payload.sliced(c.pos), entries, reason)) return false;
    for (const StoredBox& entry : entries) {
        ItemInfo info;
        if (entry.type != "infe" || !parseInfe(entry, info))
            return fail(reason,
                        PhotoWriter::tr("The photo lists its items in a form this program cannot "
                                        "write, so it was not written."));
        out.items.append(info);
    }
    return true;
}

bool parseIloc(QByteArrayView payload, qint64 fileSize, ItemFile& out, QString* reason) {
    Cursor c{payload};
    const int version = int(c.read(1));
    c.read(3);
    if (version > 2)
        return fail(reason,
                    PhotoWriter::tr("The photo stores its items in a way this program does not "
                                    "know, so it was not written."));
    const int sizes = int(c.read(1)), more = int(c.read(1));
    const int offsetSize = sizes >> 4, lengthSize = sizes & 15, baseSize = more >> 4;
    const int indexSize = version > 0 ? (more & 15) : 0;
    for (int s : {offsetSize, lengthSize, baseSize, indexSize})
        if (s != 0 && s != 4 && s != 8) return fail(reason, damaged());
    const quint64 count = c.read(version < 2 ? 2 : 4);
    if (count > quint64(kMaxItems)) return fail(reason, damaged());
    int extents = 0;
    for (quint64 i = 0; i < count && !c.bad; ++i) {
        ItemLocation loc;
        loc.id = quint32(c.read(version < 2 ? 2 : 4));
        if (version > 0) loc.method = int(c.read(2) & 15);
        const quint64 dataRef = c.read(2), base = c.read(baseSize);
        const quint64 n = c.read(2);
        if (loc.method > 1 || dataRef != 0)
            return fail(reason,
                        PhotoWriter::tr("The photo keeps some of its data in a way this program "
                                        "cannot move, so it was not written."));
        for (quint64 e = 0; e < n && !c.bad; ++e) {
            c.read(indexSize);
            Extent extent{c.read(offsetSize), c.read(lengthSize)};
            if (++extents > kMaxExtents || extent.length == 0 || extent.offset > ~quint64(0) - base)
                return fail(reason, damaged());
            extent.offset += base;
            const quint64 limit = quint64(loc.method == 0 ? fileSize : 0);
            if (loc.method == 0 && (extent.offset > limit || extent.length > limit - extent.offset))
                return fail(reason,
                            PhotoWriter::tr("The photo is cut short: some of its data is missing, "
                                            "so it was not written."));
            loc.extents.append(extent);
        }
        out.locations.append(loc);
    }
    return c.bad ? fail(reason, damaged()) : true;
}

bool parseIref(QByteArrayView payload, ItemFile& out, QString* reason) {
    Cursor c{payload};
    out.irefVersion = int(c.read(1));
    c.read(3);
    if (c.bad || out.irefVersion > 1) return fail(reason, damaged());
    const int idSize = out.irefVersion == 0 ? 2 : 4;
    QList<StoredBox> boxes;
    if (!listBoxes(payload.sliced(c.pos), boxes, reason)) return false;
    for (const StoredBox& box : boxes) {
        Cursor r{box.payload};
        Reference ref{box.type, quint32(r.read(idSize)), {}};
        const quint64 n = r.read(2);
        for (quint64 i = 0; i < n && !r.bad; ++i) ref.to.append(quint32(r.read(idSize)));
        if (r.bad) return fail(reason, damaged());
        out.references.append(ref);
    }
    return true;
}

bool parseMeta(ItemFile& out, qint64 fileSize, QString* reason) {
    const QByteArrayView payload = out.topLevel[out.metaIndex].payload;
    Cursor c{payload};
    out.metaVersionFlags = quint32(c.read(4));
    if (c.bad || !listBoxes(payload.sliced(4), out.metaChildren, reason)) return false;
    bool hasPitm = false;
    // Each of these comes once in a meta box; with a second one, the file
    // would keep a stale copy beside the one the rewriter rebuilds.
    static const QSet<QByteArray> once = {"pitm", "iinf", "iloc", "iref", "idat", "iprp", "hdlr"};
    QSet<QByteArray> seen;
    for (const StoredBox& box : out.metaChildren) {
        if (once.contains(box.type)) {
            if (seen.contains(box.type)) return fail(reason, damaged());
            seen.insert(box.type);
        }
        Cursor b{box.payload};
        if (box.type == "pitm") {
            const int version = int(b.read(1));
            b.read(3);
            out.primary = quint32(b.read(version == 0 ? 2 : 4));
            hasPitm = !b.bad;
        } else if (box.type == "iinf") {
            if (!parseIinf(box.payload, out, reason)) return false;
        } else if (box.type == "iloc") {
            if (!parseIloc(box.payload, fileSize, out, reason)) return false;
        } else if (box.type == "iref") {
            if (!parseIref(box.payload, out, reason)) return false;
        } else if (box.type == "idat") {
            out.idat = box.payload;
        }
    }
    for (qsizetype i = 0; i < out.items.size(); ++i)
        if (out.itemIndex.contains(out.items[i].id))
            return fail(reason, damaged());
        else
            out.itemIndex[out.items[i].id] = i;
    for (qsizetype i = 0; i < out.locations.size(); ++i)
        if (out.locationIndex.contains(out.locations[i].id))
            return fail(reason, damaged());
        else
            out.locationIndex[out.locations[i].id] = i;
    if (!hasPitm || !out.item(out.primary))
        return fail(reason,
                    PhotoWriter::tr("The photo names no main picture, so it was not written."));
    for (const ItemLocation& loc : out.locations)
        for (const Extent& e : loc.extents)
            if (loc.method == 1 && (e.offset > quint64(out.idat.size()) ||
                                    e.length > quint64(out.idat.size()) - e.offset))
                return fail(reason, damaged());
    return true;
}

}  // namespace

const ItemInfo* ItemFile::item(quint32 id) const {
    const auto it = itemIndex.constFind(id);
    return it == itemIndex.cend() ? nullptr : &items[*it];
}

const ItemLocation* ItemFile::location(quint32 id) const {
    const auto it = locationIndex.constFind(id);
    return it == locationIndex.cend() ? nullptr : &locations[*it];
}

QList<quint32> ItemFile::metadataOfPrimary(QByteArrayView type, QByteArrayView contentType) const {
    QList<quint32> ids;
    QSet<quint32> seen;
    for (const Reference& ref : references) {
        const ItemInfo* info = item(ref.from);
        if (ref.type != "cdsc" || !ref.to.contains(primary) || !info || info->type != type ||
            (!contentType.isEmpty() && info->contentType != contentType) || seen.contains(ref.from))
            continue;
        seen.insert(ref.from);
        ids.append(ref.from);
    }
    return ids;
}

bool parseItemFile(QByteArrayView file, ItemFile& out, QString* reason) {
    out = {};
    if (!listBoxes(file, out.topLevel, reason)) return false;
    for (int i = 0; i < out.topLevel.size(); ++i) {
        const QByteArray& type = out.topLevel[i].type;
        if (type == "moov" || type == "moof" || type == "meco" ||
            (type == "meta" && out.metaIndex >= 0))
            return fail(reason,
                        PhotoWriter::tr("This kind of HEIF file (a sequence, or several sets of "
                                        "items) cannot be written."));
        if (type == "meta") out.metaIndex = i;
    }
    if (out.topLevel.isEmpty() || out.topLevel[0].type != "ftyp" || out.metaIndex < 0)
        return fail(reason,
                    PhotoWriter::tr("The file is not a HEIF photo this program can write."));
    return parseMeta(out, file.size(), reason);
}

bool itemData(const ItemFile& items, QByteArrayView file, quint32 id, QByteArray& out) {
    out.clear();
    const ItemLocation* loc = items.location(id);
    if (!loc) return false;
    const QByteArrayView store = loc->method == 1 ? items.idat : file;
    for (const Extent& e : loc->extents)
        out.append(store.sliced(qint64(e.offset), qint64(e.length)));
    return true;
}

QByteArray primaryExifTiff(QByteArrayView file) {
    ItemFile items;
    QByteArray data;
    if (!parseItemFile(file, items, nullptr)) return {};
    const QList<quint32> exif = items.metadataOfPrimary("Exif");
    if (exif.size() != 1 || !itemData(items, file, exif[0], data) || data.size() < 4) return {};
    const quint32 skip = Bmff::readU32(data, 0);
    return skip > quint32(data.size() - 4) ? QByteArray() : data.mid(4 + skip);
}

}  // namespace Heif
