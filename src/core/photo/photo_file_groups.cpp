// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_file_groups.h"

#include <QIODevice>
#include <QVariantList>
#include <QtEndian>

#include <functional>

#include "core/common/logging.h"

namespace {

constexpr qsizetype kMaxResourceBytes = qsizetype(16) << 20;
constexpr int kMaxBlocks = 4096;
constexpr quint16 kIptcResource = 0x0404;
constexpr quint16 kVersionResource = 0x0421;
const QByteArray kPhotoshopId("Photoshop 3.0\0", 14);

quint16 be16(const QByteArray& b, qsizetype at) {
    return qFromBigEndian<quint16>(b.constData() + at);
}
quint32 be32(const QByteArray& b, qsizetype at) {
    return qFromBigEndian<quint32>(b.constData() + at);
}

// Calls `block` with each resource's id, its whole block and its data, in
// order; stops at the first block that does not fit.
void forEachResource(const QByteArray& resources,
                     const std::function<void(quint16, QByteArrayView, QByteArrayView)>& block) {
    qsizetype at = 0;
    for (int n = 0; n < kMaxBlocks && at + 12 <= resources.size(); ++n) {
        const QByteArray signature = resources.mid(at, 4);
        if (signature != "8BIM" && signature != "AgHg" && signature != "DCSR" &&
            signature != "PHUT" && signature != "MeSa")
            return;
        const quint16 id = be16(resources, at + 4);
        const qsizetype name = (1 + quint8(resources[at + 6]) + 1) & ~qsizetype(1);
        if (at + 6 + name + 4 > resources.size()) return;
        const qsizetype size = be32(resources, at + 6 + name);
        const qsizetype data = at + 6 + name + 4;
        if (size > resources.size() - data) return;
        const qsizetype end = qMin(resources.size(), data + size + (size & 1));
        block(id, QByteArrayView(resources).sliced(at, end - at),
              QByteArrayView(resources).sliced(data, size));
        at = end;
    }
}

// The segments of a JPEG up to the start of its scan: `segment` gets each
// marker with its payload's offset and length. False when the walk does not
// reach the scan (a damaged file).
bool forEachJpegSegment(const QByteArray& jpeg,
                        const std::function<void(quint8, qsizetype, qsizetype)>& segment,
                        qsizetype* scan) {
    if (!jpeg.startsWith("\xff\xd8")) return false;
    qsizetype at = 2;
    for (int n = 0; n < kMaxBlocks && at + 4 <= jpeg.size(); ++n) {
        if (quint8(jpeg[at]) != 0xff) return false;
        const quint8 marker = quint8(jpeg[at + 1]);
        if (marker == 0xda) {
            *scan = at;
            return true;
        }
        const qsizetype length = be16(jpeg, at + 2);
        if (length < 2 || at + 2 + length > jpeg.size()) return false;
        segment(marker, at + 4, length - 2);
        at += 2 + length;
    }
    return false;
}

}  // namespace

QVariantMap gifProperties(const QByteArray& head) {
    if (head.size() < 13 || !(head.startsWith("GIF87a") || head.startsWith("GIF89a"))) return {};
    const auto le16 = [&](qsizetype at) {
        return qFromLittleEndian<quint16>(head.constData() + at);
    };
    const quint8 flags = quint8(head[10]);
    QVariantMap gif{{QStringLiteral("CanvasPixelWidth"), qlonglong(le16(6))},
                    {QStringLiteral("CanvasPixelHeight"), qlonglong(le16(8))},
                    {QStringLiteral("HasGlobalColorMap"), bool(flags & 0x80)}};
    qsizetype at = 13 + ((flags & 0x80) ? 3 * (qsizetype(2) << (flags & 7)) : 0);
    // Extensions until the first picture: the loop and the first delay.
    for (int n = 0; n < kMaxBlocks && at + 2 <= head.size() && head[at] == '\x21'; ++n) {
        const quint8 label = quint8(head[at + 1]);
        at += 2;
        bool application = false;
        for (int sub = 0; at < head.size(); ++sub) {
            const int length = quint8(head[at]);
            if (length == 0 || at + 1 + length > head.size()) {
                at += 1 + length;
                break;
            }
            const QByteArray data = head.mid(at + 1, length);
            if (label == 0xf9 && sub == 0 && length >= 4 &&
                !gif.contains(QStringLiteral("DelayTime"))) {
                const double delay = qFromLittleEndian<quint16>(data.constData() + 1) / 100.0;
                gif.insert(QStringLiteral("UnclampedDelayTime"), delay);
                gif.insert(QStringLiteral("DelayTime"), delay < 0.011 ? 0.1 : delay);
            } else if (label == 0xff && sub == 0) {
                application = data == "NETSCAPE2.0" || data == "ANIMEXTS1.0";
            } else if (application && sub == 1 && length >= 3 && data[0] == '\x01') {
                gif.insert(QStringLiteral("LoopCount"),
                           qlonglong(qFromLittleEndian<quint16>(data.constData() + 1)));
            }
            at += 1 + length;
        }
    }
    return gif;
}

void addFileGroups(PhotoSource& source, QIODevice& device) {
    QVariantMap group;
    if (source.type == QLatin1String("gif")) {
        if (device.seek(0)) group = gifProperties(device.peek(64 * 1024));
        if (!group.isEmpty()) source.properties.insert(PhotoGroup::GIF, group);
        return;
    }
    int version = 0;
    if (source.type == QLatin1String("jpeg"))
        group = imageResourceProperties(jpegImageResources(device));
    else if (source.type == QLatin1String("psd"))
        group = imageResourceProperties(psdImageResources(device, &version), version);
    if (!group.isEmpty()) source.properties.insert(PhotoGroup::EightBIM, group);
    device.seek(0);
}

QByteArray jpegImageResources(QIODevice& device) {
    QByteArray resources;
    if (!device.seek(0) || device.read(2) != "\xff\xd8") return {};
    for (int n = 0; n < kMaxBlocks; ++n) {
        const QByteArray head = device.read(4);
        if (head.size() < 4 || quint8(head[0]) != 0xff) break;
        const quint8 marker = quint8(head[1]);
        const qsizetype length = be16(head, 2);
        if (marker == 0xda || marker == 0xd9 || length < 2) break;
        if (marker != 0xed) {
            if (!device.seek(device.pos() + length - 2)) break;
            continue;
        }
        const QByteArray payload = device.read(length - 2);
        if (payload.startsWith(kPhotoshopId)) resources += payload.mid(kPhotoshopId.size());
        if (resources.size() > kMaxResourceBytes) return {};
    }
    return resources;
}

QByteArray psdImageResources(QIODevice& device, int* version) {
    if (!device.seek(0)) return {};
    const QByteArray head = device.read(30);
    if (head.size() < 30 || !head.startsWith("8BPS")) return {};
    *version = be16(head, 4);
    const qint64 at = 30 + qint64(be32(head, 26));
    if (!device.seek(at)) return {};
    const QByteArray size = device.read(4);
    if (size.size() < 4 || be32(size, 0) > quint32(kMaxResourceBytes)) return {};
    return device.read(be32(size, 0));
}

QVariantMap imageResourceProperties(const QByteArray& resources, int fileVersion) {
    QVariantMap group;
    QVariantList ids;
    forEachResource(resources, [&](quint16 id, QByteArrayView, QByteArrayView data) {
        if (id == kIptcResource) return;
        ids << qlonglong(id);
        if (id == kVersionResource && data.size() >= 4)
            group.insert(QStringLiteral("Version"),
                         qlonglong(qFromBigEndian<quint32>(data.constData())));
    });
    if (fileVersion > 0) group.insert(QStringLiteral("Version"), qlonglong(fileVersion));
    if (!ids.isEmpty()) group.insert(QStringLiteral("ImageResources"), ids);
    return ids.isEmpty() ? QVariantMap() : group;
}

QByteArray withoutJpegImageResources(const QByteArray& jpeg) {
    QByteArray kept, out("\xff\xd8", 2);
    qsizetype place = -1, scan = 0;
    QByteArray resources;
    const bool walked = forEachJpegSegment(
        jpeg,
        [&](quint8 marker, qsizetype payload, qsizetype length) {
            const QByteArray data = jpeg.mid(payload, length);
            if (marker == 0xed && data.startsWith(kPhotoshopId)) {
                resources += data.mid(kPhotoshopId.size());
                if (place < 0) place = out.size();
                return;
            }
            out += jpeg.mid(payload - 4, length + 4);
        },
        &scan);
    if (!walked) {
        qCInfo(lcTagsmith) << "JPEG segments not walked, image resources kept";
        return jpeg;
    }
    if (place < 0) return jpeg;
    forEachResource(resources, [&](quint16 id, QByteArrayView block, QByteArrayView) {
        if (id == kIptcResource) kept += block.toByteArray();
    });
    QByteArray segments;
    constexpr qsizetype kChunk = 0xffff - 2 - 14;
    for (qsizetype at = 0; at < kept.size(); at += kChunk) {
        const QByteArray chunk = kept.mid(at, kChunk);
        const quint16 length = quint16(2 + kPhotoshopId.size() + chunk.size());
        segments += QByteArray("\xff\xed", 2);
        segments += char(length >> 8);
        segments += char(length & 0xff);
        segments += kPhotoshopId + chunk;
    }
    out.insert(place, segments);
    return out + jpeg.mid(scan);
}
