// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/heif_rewriter.h"

#include <QCoreApplication>
#include <QSet>

#include <limits>

#include "core/common/ui_texts.h"
#include "core/photo/heif_items.h"
#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"

namespace Heif {

namespace {

bool fail(QString* reason, const QString& text) {
    if (reason) *reason = text;
    return false;
}

// One item of the written file: its data, where it goes, and its infe box.
struct Placed {
    quint32 id = 0;
    int method = 0;
    QByteArray data;
    bool hasLocation = false;
    qint64 offset = 0;  // in the new mdat's payload or the new idat
};

QByteArray newInfe(quint32 id, QByteArrayView type, QByteArrayView contentType) {
    QByteArray body;
    Bmff::appendU16(body, quint16(id));
    Bmff::appendU16(body, 0);
    body.append(type.data(), 4);
    body.append('\0');  // no name
    if (!contentType.isEmpty()) body.append(contentType.toByteArray()).append('\0');
    return Bmff::makeFullBox("infe", 2, 0, body);
}

QByteArray buildIinf(const ItemFile& file, const QSet<quint32>& removed,
                     const QList<QByteArray>& added) {
    QByteArray body;
    QByteArray entries;
    int count = 0;
    for (const ItemInfo& info : file.items) {
        if (removed.contains(info.id)) continue;
        entries.append(info.box.data(), info.box.size());
        ++count;
    }
    for (const QByteArray& infe : added) {
        entries.append(infe);
        ++count;
    }
    const bool wide = count > 0xffff;
    wide ? Bmff::appendU32(body, quint32(count)) : Bmff::appendU16(body, quint16(count));
    return Bmff::makeFullBox("iinf", wide ? 1 : 0, 0, body + entries);
}

QByteArray buildIloc(const QList<Placed>& placed, quint64 mdatStart) {
    bool idat = false, wide = false;
    for (const Placed& p : placed) {
        idat |= p.method == 1;
        wide |= p.id > 0xffff;
    }
    const int version = wide ? 2 : (idat ? 1 : 0);
    QByteArray body;
    Bmff::appendU8(body, 0x44);  // 4-byte offsets and lengths
    Bmff::appendU8(body, 0);     // no base offset, no extent index
    QByteArray entries;
    int count = 0;
    for (const Placed& p : placed) {
        if (!p.hasLocation) continue;
        ++count;
        version < 2 ? Bmff::appendU16(entries, quint16(p.id)) : Bmff::appendU32(entries, p.id);
        if (version > 0) Bmff::appendU16(entries, quint16(p.method));
        Bmff::appendU16(entries, 0);  // data reference: this file
        Bmff::appendU16(entries, p.data.isEmpty() ? 0 : 1);
        if (p.data.isEmpty()) continue;
        Bmff::appendU32(entries, quint32(quint64(p.offset) + (p.method == 0 ? mdatStart : 0)));
        Bmff::appendU32(entries, quint32(p.data.size()));
    }
    version < 2 ? Bmff::appendU16(body, quint16(count)) : Bmff::appendU32(body, quint32(count));
    return Bmff::makeFullBox("iloc", quint8(version), 0, body + entries);
}

QByteArray buildIref(const ItemFile& file, const QSet<quint32>& removed,
                     const QList<Reference>& added) {
    const int idSize = file.irefVersion == 0 ? 2 : 4;
    QByteArray body;
    for (Reference ref : file.references + added) {
        ref.to.removeIf([&](quint32 id) { return removed.contains(id); });
        if (removed.contains(ref.from) || ref.to.isEmpty()) continue;
        QByteArray payload;
        auto put = [&](quint32 id) {
            idSize == 2 ? Bmff::appendU16(payload, quint16(id)) : Bmff::appendU32(payload, id);
        };
        put(ref.from);
        Bmff::appendU16(payload, quint16(ref.to.size()));
        for (quint32 id : ref.to) put(id);
        body.append(Bmff::makeBox(ref.type, payload));
    }
    return body.isEmpty() ? QByteArray()
                          : Bmff::makeFullBox("iref", quint8(file.irefVersion), 0, body);
}

// The ipma box without the entries of removed items; false when damaged.
bool filterIpma(QByteArrayView payload, const QSet<quint32>& removed, QByteArray& out) {
    if (payload.size() < 8) return false;
    const int version = quint8(payload[0]);
    const quint32 flags = Bmff::readU32(payload, 0) & 0xffffff;
    const quint32 count = Bmff::readU32(payload, 4);
    const int idSize = version < 1 ? 2 : 4, assocSize = (flags & 1) ? 2 : 1;
    qint64 pos = 8;
    QByteArray entries;
    quint32 kept = 0;
    for (quint32 i = 0; i < count; ++i) {
        if (payload.size() - pos < idSize + 1) return false;
        const quint32 id = idSize == 2 ? Bmff::readU16(payload, pos) : Bmff::readU32(payload, pos);
        const qint64 length = idSize + 1 + qint64(quint8(payload[pos + idSize])) * assocSize;
        if (payload.size() - pos < length) return false;
        if (!removed.contains(id)) {
            entries.append(payload.sliced(pos, length));
            ++kept;
        }
        pos += length;
    }
    QByteArray body;
    Bmff::appendU32(body, kept);
    out = Bmff::makeFullBox("ipma", quint8(version), flags, body + entries);
    return true;
}

QByteArray buildIprp(const StoredBox& iprp, const QSet<quint32>& removed, bool* ok) {
    Bmff::BoxIterator it(iprp.payload);
    Bmff::Box box;
    QByteArray body;
    int boxes = 0;
    while (it.next(box) && ++boxes < kMaxItems) {
        QByteArray ipma;
        if (box.type == "ipma" && !box.truncated && filterIpma(box.payload, removed, ipma))
            body.append(ipma);
        else if (box.type != "ipma" && !box.truncated && !box.bytes.isEmpty())
            body.append(box.bytes);
        else
            *ok = false;
    }
    if (it.damaged() || boxes >= kMaxItems) *ok = false;
    return Bmff::makeBox("iprp", body);
}

QByteArray exifItemData(const QByteArray& tiff) {
    QByteArray data;
    Bmff::appendU32(data, 6);
    data.append("Exif\0\0", 6);
    return data + tiff;
}

}  // namespace

bool rewriteMetadata(QByteArrayView source, const MetadataEdit& edit, QByteArray& out,
                     QString* reason) {
    ItemFile file;
    if (!parseItemFile(source, file, reason)) return false;
    QSet<quint32> removed;
    struct NewItem {
        QByteArrayView type, contentType;
        QByteArray data;
    };
    QList<NewItem> newItems;
    auto replace = [&](const std::optional<QByteArray>& value, QByteArrayView type,
                       QByteArrayView contentType, const QByteArray& data) {
        if (!value) return true;
        const QList<quint32> old = file.metadataOfPrimary(type, contentType);
        if (old.size() > 1) return false;
        for (quint32 id : old) removed.insert(id);
        // New contents go to the media data, even where the old item was in
        // idat: readers that find no Exif in idat (exiftool) then see it.
        if (!value->isEmpty()) newItems.append({type, contentType, data});
        return true;
    };
    if (!replace(edit.exifTiff, "Exif", {}, exifItemData(edit.exifTiff.value_or(QByteArray()))) ||
        !replace(edit.xmp, "mime", kXmpContentType, edit.xmp.value_or(QByteArray())))
        return fail(reason,
                    PhotoWriter::tr("The photo holds several sets of the same metadata, so it was "
                                    "not written."));

    // Every kept item's bytes, in item order; new items get the next ids.
    QList<Placed> placed;
    quint32 maxId = 0;
    qint64 mdatSize = 0, idatSize = 0;
    for (const ItemInfo& info : file.items) maxId = std::max(maxId, info.id);
    for (const ItemLocation& loc : file.locations) {
        maxId = std::max(maxId, loc.id);
        if (removed.contains(loc.id)) continue;
        Placed p{loc.id, loc.method, {}, true, 0};
        itemData(file, source, loc.id, p.data);
        placed.append(p);
    }
    QList<QByteArray> addedInfe;
    QList<Reference> addedRefs;
    for (const NewItem& item : newItems) {
        if (maxId >= 0xffff)
            return fail(reason, PhotoWriter::tr("The photo has too many items to add one."));
        placed.append({++maxId, 0, item.data, true, 0});
        addedInfe.append(newInfe(maxId, item.type, item.contentType));
        addedRefs.append({"cdsc", maxId, {file.primary}});
    }
    for (Placed& p : placed) {
        qint64& size = p.method == 1 ? idatSize : mdatSize;
        p.offset = size;
        size += p.data.size();
    }
    if (mdatSize + source.size() > qint64(std::numeric_limits<quint32>::max()) - 4096)
        return fail(reason, PhotoWriter::tr("The photo is too large to be written."));

    // The meta box, rebuilt where the items changed; its size does not depend
    // on the offsets, so it is built once to learn where the data will start.
    bool ok = true;
    auto buildMeta = [&](quint64 mdatStart) {
        QByteArray body;
        Bmff::appendU32(body, file.metaVersionFlags);
        bool hasIref = false, hasIdat = false, hasIloc = false;
        for (const StoredBox& box : file.metaChildren) {
            if (box.type == "iinf") {
                body.append(buildIinf(file, removed, addedInfe));
            } else if (box.type == "iloc") {
                hasIloc = true;
                body.append(buildIloc(placed, mdatStart));
            } else if (box.type == "iref") {
                hasIref = true;
                body.append(buildIref(file, removed, addedRefs));
            } else if (box.type == "idat") {
                hasIdat = true;
                if (idatSize > 0) {
                    QByteArray idat;
                    for (const Placed& p : placed)
                        if (p.method == 1) idat.append(p.data);
                    body.append(Bmff::makeBox("idat", idat));
                }
            } else if (box.type == "iprp") {
                body.append(buildIprp(box, removed, &ok));
            } else {
                body.append(box.bytes);
            }
        }
        if (!hasIloc) body.append(buildIloc(placed, mdatStart));
        if (!hasIref) body.append(buildIref(file, removed, addedRefs));
        if (!hasIdat && idatSize > 0) ok = false;
        return Bmff::makeBox("meta", body);
    };
    const qint64 metaSize = buildMeta(0).size();
    qint64 mdatStart = 8;
    for (int i = 0; i < file.topLevel.size(); ++i) {
        const QByteArray& type = file.topLevel[i].type;
        if (type != "mdat")
            mdatStart += i == file.metaIndex ? metaSize : file.topLevel[i].bytes.size();
    }
    const QByteArray meta = buildMeta(quint64(mdatStart));
    if (!ok || meta.size() != metaSize)
        return fail(reason,
                    PhotoWriter::tr("The photo's item list is damaged, so it was not written."));

    out.clear();
    out.reserve(mdatStart + mdatSize);
    for (int i = 0; i < file.topLevel.size(); ++i) {
        if (i == file.metaIndex)
            out.append(meta);
        else if (file.topLevel[i].type != "mdat")
            out.append(file.topLevel[i].bytes);
    }
    Bmff::appendU32(out, quint32(8 + mdatSize));
    out.append("mdat");
    for (const Placed& p : placed)
        if (p.method == 0) out.append(p.data);
    return true;
}

}  // namespace Heif
