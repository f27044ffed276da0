// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/movie_strip.h"

#include <QSet>

#include "core/common/logging.h"
#include "core/video/bmff_box.h"

namespace MovieStrip {

namespace {

using Bmff::TreeBox;

// The user type of an XMP box (BE7ACFCB-97A9-42E8-9C71-999491E3AFAC).
const QByteArray kXmpUuid = QByteArray::fromHex("be7acfcb97a942e89c71999491e3afac");

bool isPadding(QByteArrayView type) {
    return type == QByteArrayView("free") || type == QByteArrayView("skip") ||
           type == QByteArrayView("wide");
}

bool isXmpBox(const TreeBox& box) {
    return box.type() == "uuid" && box.payload().startsWith(kXmpUuid);
}

const TreeBox* descend(const TreeBox& from, std::initializer_list<const char*> path) {
    const TreeBox* box = &from;
    for (const char* type : path) {
        box = box->child(type);
        if (!box) return nullptr;
    }
    return box;
}

// Takes the dropped tracks out of a track's references; a reference type
// left without tracks goes, and so does an empty reference box.
void dropReferences(TreeBox& trak, const QSet<quint32>& dropped) {
    TreeBox* tref = trak.child("tref");
    if (!tref || tref->isContainer()) return;
    const QByteArray& in = tref->payload();
    QByteArray out;
    qint64 pos = 0;
    while (in.size() - pos >= 8) {
        const quint32 size = Bmff::readU32(in, pos);
        if (size < 8 || size > in.size() - pos) {
            qCInfo(lcTagsmith) << "Movie strip: malformed track reference kept as it is";
            return;
        }
        QByteArray ids;
        for (qint64 at = pos + 8; at + 4 <= pos + size; at += 4) {
            const quint32 id = Bmff::readU32(in, at);
            if (!dropped.contains(id)) Bmff::appendU32(ids, id);
        }
        if (!ids.isEmpty()) out += Bmff::makeBox(in.mid(pos + 4, 4), ids);
        pos += size;
    }
    if (out.isEmpty())
        trak.removeChildren("tref");
    else
        tref->setPayload(out);
}

// The IDs the tracks name with a reference of the type.
QSet<quint32> referencedTracks(const TreeBox& moov, QByteArrayView type) {
    QSet<quint32> ids;
    for (const TreeBox* trak : moov.childrenOf("trak")) {
        const TreeBox* tref = trak->child("tref");
        if (!tref || tref->isContainer()) continue;
        const QByteArray& p = tref->payload();
        qint64 pos = 0;
        while (p.size() - pos >= 8) {
            const quint32 size = Bmff::readU32(p, pos);
            if (size < 8 || size > p.size() - pos) break;
            if (QByteArrayView(p).sliced(pos + 4, 4) == type) {
                for (qint64 at = pos + 8; at + 4 <= pos + size; at += 4)
                    ids.insert(Bmff::readU32(p, at));
            }
            pos += size;
        }
    }
    return ids;
}

bool isTimedMetadata(const TreeBox& trak) {
    static const QSet<QByteArray> handlers{"meta", "camm"};
    static const QSet<QByteArray> formats{"gpmd", "camm", "mebx", "mett",
                                          "metx", "urim", "rtmd", "djmd"};
    return handlers.contains(handlerType(trak)) || formats.contains(sampleFormat(trak));
}

}  // namespace

QByteArray handlerType(const TreeBox& trak) {
    const TreeBox* hdlr = descend(trak, {"mdia", "hdlr"});
    if (!hdlr || hdlr->payload().size() < 12) return {};
    return hdlr->payload().mid(8, 4);
}

QByteArray sampleFormat(const TreeBox& trak) {
    const TreeBox* stsd = descend(trak, {"mdia", "minf", "stbl", "stsd"});
    if (!stsd || stsd->payload().size() < 16 || Bmff::readU32(stsd->payload(), 4) == 0) return {};
    return stsd->payload().mid(12, 4);
}

quint32 trackId(const TreeBox& trak) {
    const TreeBox* tkhd = trak.child("tkhd");
    if (!tkhd) return 0;
    const QByteArray& p = tkhd->payload();
    const qint64 at = (!p.isEmpty() && p[0] == 1) ? 20 : 12;
    return p.size() >= at + 4 ? Bmff::readU32(p, at) : 0;
}

int dropMetadataBoxes(TreeBox& moov) {
    int dropped = moov.removeChildrenIf([](const TreeBox& box) {
        return box.type() == "udta" || box.type() == "meta" || box.type() == "uuid" ||
               isPadding(box.type());
    });
    for (TreeBox* trak : moov.childrenOf("trak")) {
        // A track's own uuid boxes other than XMP can be needed to play it
        // (spherical video); they stay.
        dropped += trak->removeChildrenIf([](const TreeBox& box) {
            return box.type() == "udta" || box.type() == "meta" || isXmpBox(box) ||
                   isPadding(box.type());
        });
    }
    return dropped;
}

int dropTrackLocations(TreeBox& moov) {
    int dropped = 0;
    for (TreeBox* trak : moov.childrenOf("trak")) {
        TreeBox* udta = trak->child("udta");
        if (!udta || udta->isContainer()) continue;
        const QByteArray& in = udta->payload();
        QByteArray out;
        qint64 pos = 0;
        int here = 0;
        while (in.size() - pos >= 8) {
            const quint32 size = Bmff::readU32(in, pos);
            if (size < 8 || size > in.size() - pos) break;  // kept from here on as it is
            const QByteArrayView type = QByteArrayView(in).sliced(pos + 4, 4);
            if (type == QByteArrayView("\xA9xyz") || type == QByteArrayView("loci"))
                ++here;
            else
                out += in.mid(pos, size);
            pos += size;
        }
        if (here == 0) continue;
        out += in.mid(pos);  // an old movie's closing zero word, or bytes not understood
        dropped += here;
        if (out.isEmpty() || out == QByteArray(4, '\0'))
            trak->removeChildren("udta");
        else
            udta->setPayload(out);
    }
    return dropped;
}

bool isDroppedTopLevelBox(QByteArrayView type) {
    return type == QByteArrayView("uuid") || type == QByteArrayView("meta") ||
           type == QByteArrayView("pnot") || type == QByteArrayView("PICT") || isPadding(type);
}

int dropTimedMetadataTracks(TreeBox& moov) {
    const QSet<quint32> chapters = referencedTracks(moov, "chap");
    QSet<const TreeBox*> tracks;
    QSet<quint32> ids;
    for (const TreeBox* trak : moov.childrenOf("trak")) {
        const quint32 id = trackId(*trak);
        if (!isTimedMetadata(*trak) && (id == 0 || !chapters.contains(id))) continue;
        tracks.insert(trak);
        if (id != 0) ids.insert(id);
    }
    if (tracks.isEmpty()) return 0;
    const int count =
        moov.removeChildrenIf([&](const TreeBox& box) { return tracks.contains(&box); });
    for (TreeBox* trak : moov.childrenOf("trak")) dropReferences(*trak, ids);
    return count;
}

}  // namespace MovieStrip
