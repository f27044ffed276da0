// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/movie_metadata_reader.h"

#include <QBuffer>
#include <QFile>

#include "core/common/logging.h"
#include "core/video/bmff_box.h"
#include "core/video/bmff_values.h"

namespace {

using Bmff::Box;
using Bmff::BoxIterator;
using Bmff::DecodedValue;

const QString kItunesSpace = QStringLiteral("itsk");
const QString kQuickTimeMetadataSpace = QStringLiteral("mdta");
const QString kUserDataSpace = QStringLiteral("udta");
const QString kIsoUserDataSpace = QStringLiteral("uiso");

// Keys of a `keys` box can be numerous in camera files, but not unbounded.
constexpr quint32 kMaxKeys = 65536;

bool isType(const Box& box, const char* type) {
    return box.type == QByteArrayView(type);
}

MetadataItem makeItem(const QString& keySpace, const QByteArray& key, const DecodedValue& value) {
    MetadataItem item;
    item.keySpace = keySpace;
    item.key = key;
    item.identifier = metadataIdentifier(keySpace, key);
    item.value = value.value;
    item.dataType = value.dataType;
    item.language = value.language;
    return item;
}

// Remembers the bytes the item was read from: `stored` is all of them; when
// the item's value is the tail part `valueBytes` of them (raw data, pictures),
// that part is not held twice.
void remember(MetadataItem& item, MetadataOrigin::Form form, QByteArrayView stored,
              QByteArrayView valueBytes = {}, QByteArrayView entryHead = {}) {
    if (stored.isEmpty()) return;
    MetadataOrigin& o = item.origin;
    o.form = form;
    const qint64 at = valueBytes.isEmpty() ? -1 : valueBytes.data() - stored.data();
    if (at >= 0 && at + valueBytes.size() <= stored.size() &&
        item.value.typeId() == QMetaType::QByteArray && item.value.toByteArray() == valueBytes) {
        o.prefix = stored.first(at).toByteArray();
        o.suffix = stored.sliced(at + valueBytes.size()).toByteArray();
        o.valueInBetween = true;
    } else {
        o.prefix = stored.toByteArray();
    }
    o.entryHead = entryHead.toByteArray();
    o.identifier = item.identifier;
    o.value = item.value;
    o.dataType = item.dataType;
    o.language = item.language;
}

// A whole box read as raw data, kept as it is.
MetadataItem rawBoxItem(const QString& keySpace, const Box& box) {
    // A uuid box's value keeps its 16-byte user type (which the iterator
    // leaves out of the payload), so that a box cut short in the source is
    // written back as a whole uuid box, not as one that stops every reader.
    const QByteArrayView body =
        box.type == "uuid" ? QByteArrayView(box.payload.data() - 16, box.payload.size() + 16)
                           : box.payload;
    DecodedValue value;
    value.value = body.toByteArray();
    value.dataType = Bmff::DataType::kRaw;
    MetadataItem item = makeItem(keySpace, box.type, value);
    remember(item, MetadataOrigin::Form::Box, box.bytes, body);
    return item;
}

class MovieBoxReader {
public:
    QList<MetadataItem> read(QByteArrayView moov);

private:
    void readTrack(QByteArrayView trak);
    void readUserData(QByteArrayView udta);
    // Answers whether the handler is one whose items are read.
    bool readMeta(QByteArrayView meta);
    void readItunesList(QByteArrayView ilst);
    void readItunesItem(const Box& item);
    void readQuickTimeList(QByteArrayView ilst, const QList<QPair<QString, QByteArray>>& keys);
    QList<QPair<QString, QByteArray>> readKeys(QByteArrayView keys);
    // Answers how many items the data atoms gave.
    int readDataAtoms(QByteArrayView itemPayload, const QString& keySpace, const QByteArray& key);

    QList<MetadataItem> m_items;
};

QList<MetadataItem> MovieBoxReader::read(QByteArrayView moov) {
    BoxIterator children(moov);
    Box box;
    while (children.next(box)) {
        if (isType(box, "trak")) {
            readTrack(box.payload);
        } else if (isType(box, "udta")) {
            readUserData(box.payload);
        } else if (isType(box, "meta")) {
            readMeta(box.payload);
        } else if (isType(box, "cmov")) {
            qCInfo(lcTagsmith) << "Movie reader: compressed movie box; metadata not read";
        }
    }
    if (children.damaged()) qCInfo(lcTagsmith) << "Movie reader: movie box is damaged";
    return m_items;
}

void MovieBoxReader::readTrack(QByteArrayView trak) {
    BoxIterator children(trak);
    Box box;
    while (children.next(box)) {
        if (isType(box, "meta")) readMeta(box.payload);
    }
}

void MovieBoxReader::readUserData(QByteArrayView udta) {
    BoxIterator children(udta);
    Box box;
    while (children.next(box)) {
        if (isType(box, "meta")) {
            // A metadata box of another kind (an ID3 tag, say) is kept whole.
            if (!readMeta(box.payload) && !box.bytes.isEmpty())
                m_items.append(rawBoxItem(kUserDataSpace, box));
        } else if (isType(box, "free") || isType(box, "skip") || isType(box, "wide")) {
            continue;  // padding, not metadata
        } else if (static_cast<unsigned char>(box.type[0]) == 0xa9) {
            // A text box may also hold typed data atoms instead of entries.
            const QByteArrayView p = box.payload;
            if (p.size() >= 16 && p.sliced(4, 4) == QByteArrayView("data") &&
                Bmff::readU32(p, 0) <= quint64(p.size())) {
                if (readDataAtoms(p, kUserDataSpace, box.type) == 0 && !box.bytes.isEmpty())
                    m_items.append(rawBoxItem(kUserDataSpace, box));
            } else {
                const QList<DecodedValue> values = Bmff::decodeInternationalText(p);
                if (values.isEmpty() && !box.bytes.isEmpty())
                    m_items.append(rawBoxItem(kUserDataSpace, box));
                for (const DecodedValue& value : values) {
                    MetadataItem item = makeItem(kUserDataSpace, box.type, value);
                    // Cut short or padded boxes would not come back whole from their entries.
                    if (!box.bytes.isEmpty()) {
                        const qint64 used = value.stored.data() + value.stored.size() - p.data();
                        if (values.size() == 1 && used != p.size())
                            remember(item, MetadataOrigin::Form::Box, box.bytes);
                        else
                            remember(item, MetadataOrigin::Form::TextEntry, value.stored);
                    }
                    m_items.append(item);
                }
            }
        } else if (Bmff::isIsoUserDataType(box.type)) {
            DecodedValue value;
            if (Bmff::decodeIsoUserData(box.type, box.payload, value)) {
                MetadataItem item = makeItem(kIsoUserDataSpace, box.type, value);
                remember(item, MetadataOrigin::Form::Box, box.bytes);
                m_items.append(item);
            } else if (!box.bytes.isEmpty()) {
                m_items.append(rawBoxItem(kIsoUserDataSpace, box));
            }
        } else {
            m_items.append(rawBoxItem(kUserDataSpace, box));
        }
    }
}

bool MovieBoxReader::readMeta(QByteArrayView meta) {
    // The ISO meta box is a full box; the QuickTime one is a plain container.
    // A version-and-flags word of zero tells them apart (a child box cannot
    // start with a zero size there).
    if (meta.size() >= 4 && Bmff::readU32(meta, 0) == 0) meta = meta.sliced(4);
    // The handler and the keys may follow the item list: find them first.
    QByteArray handler;
    QList<QPair<QString, QByteArray>> keys;
    BoxIterator children(meta);
    Box box;
    while (children.next(box)) {
        if (isType(box, "hdlr") && handler.isEmpty() && box.payload.size() >= 12)
            handler = box.payload.sliced(8, 4).toByteArray();
        else if (isType(box, "keys") && keys.isEmpty())
            keys = readKeys(box.payload);
    }
    BoxIterator lists(meta);
    while (lists.next(box)) {
        if (!isType(box, "ilst")) continue;
        if (handler == "mdta")
            readQuickTimeList(box.payload, keys);
        else if (handler == "mdir" || handler.isEmpty())
            readItunesList(box.payload);
    }
    return handler == "mdta" || handler == "mdir" || handler.isEmpty();
}

QList<QPair<QString, QByteArray>> MovieBoxReader::readKeys(QByteArrayView keysPayload) {
    QList<QPair<QString, QByteArray>> keys;
    const QByteArrayView body = Bmff::fullBoxBody(keysPayload);
    if (body.size() < 4) return keys;
    const quint32 count = Bmff::readU32(body, 0);
    qint64 pos = 4;
    for (quint32 i = 0; i < count && i < kMaxKeys && body.size() - pos >= 8; ++i) {
        const quint32 size = Bmff::readU32(body, pos);
        if (size < 8 || size > quint64(body.size() - pos)) break;
        const QByteArrayView space = body.sliced(pos + 4, 4);
        QString keySpace = kQuickTimeMetadataSpace;
        if (space != QByteArrayView("mdta") && Bmff::isPlausibleType(space))
            keySpace = QString::fromLatin1(space).trimmed();
        keys.append({keySpace, body.sliced(pos + 8, size - 8).toByteArray()});
        pos += size;
    }
    return keys;
}

void MovieBoxReader::readQuickTimeList(QByteArrayView ilst,
                                       const QList<QPair<QString, QByteArray>>& keys) {
    BoxIterator items(ilst);
    Box item;
    while (items.next(item)) {
        const quint32 index = Bmff::readU32(item.type, 0);  // 1-based key number
        if (index == 0 || index > quint32(keys.size())) {
            // Some writers add iTunes items to the same list; a four-character
            // item type is read as one of those rather than dropped.
            if (index > 0xffff && Bmff::isPlausibleType(item.type)) readItunesItem(item);
            continue;
        }
        const auto& [keySpace, key] = keys.at(index - 1);
        readDataAtoms(item.payload, keySpace, key);
    }
}

void MovieBoxReader::readItunesList(QByteArrayView ilst) {
    BoxIterator items(ilst);
    Box item;
    while (items.next(item)) readItunesItem(item);
}

void MovieBoxReader::readItunesItem(const Box& item) {
    QByteArray key = item.type;
    if (isType(item, "----")) {
        // Freeform item: the reverse-domain `mean` and the `name` come before
        // the data atoms; both are full boxes holding text.
        QString mean;
        QString name;
        BoxIterator children(item.payload);
        Box box;
        while (children.next(box)) {
            if (isType(box, "mean")) mean = QString::fromUtf8(Bmff::fullBoxBody(box.payload));
            if (isType(box, "name")) name = QString::fromUtf8(Bmff::fullBoxBody(box.payload));
        }
        key = "----:" + mean.toUtf8() + ':' + name.toUtf8();
    }
    // An entry without data atoms is not understood, but kept whole.
    if (readDataAtoms(item.payload, kItunesSpace, key) == 0 && !item.bytes.isEmpty()) {
        MetadataItem raw = rawBoxItem(kItunesSpace, item);
        raw.key = key;
        raw.identifier = raw.origin.identifier = metadataIdentifier(kItunesSpace, key);
        m_items.append(raw);
    }
}

int MovieBoxReader::readDataAtoms(QByteArrayView itemPayload, const QString& keySpace,
                                  const QByteArray& key) {
    // Each data atom owns the boxes that follow it up to the next one (a
    // picture's `name`); the boxes before the first belong to the entry.
    QList<Box> boxes;
    bool whole = true;
    BoxIterator children(itemPayload);
    Box box;
    while (children.next(box)) {
        boxes.append(box);
        whole = whole && !box.bytes.isEmpty();
    }
    QByteArrayView head;
    bool first = true;
    int count = 0;
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        if (!isType(boxes[i], "data")) continue;
        if (first && whole) head = itemPayload.first(boxes[i].bytes.data() - itemPayload.data());
        first = false;
        DecodedValue value;
        if (!Bmff::decodeDataAtom(boxes[i].payload, value)) continue;
        ++count;
        MetadataItem item = makeItem(keySpace, key, value);
        if (whole) {
            qsizetype end = i + 1;
            while (end < boxes.size() && !isType(boxes[end], "data")) ++end;
            const QByteArrayView last = end < boxes.size() ? boxes[end].bytes : QByteArrayView();
            const char* stop = last.isEmpty()
                                   ? boxes[end - 1].bytes.data() + boxes[end - 1].bytes.size()
                                   : last.data();
            const QByteArrayView stored(boxes[i].bytes.data(), stop - boxes[i].bytes.data());
            remember(item, MetadataOrigin::Form::DataAtom, stored, boxes[i].payload.sliced(8),
                     head);
        }
        m_items.append(item);
    }
    return count;
}

}  // namespace

QList<MetadataItem> readMovieBoxMetadata(QByteArrayView moovPayload) {
    return MovieBoxReader().read(moovPayload);
}

QList<MetadataItem> readMovieMetadata(QIODevice& device) {
    const QByteArray moov = Bmff::readMovieBox(device);
    if (moov.isEmpty()) return {};
    return readMovieBoxMetadata(moov);
}

QList<MetadataItem> readMovieMetadataFromData(const QByteArray& fileData) {
    QBuffer buffer;
    buffer.setData(fileData);
    if (!buffer.open(QIODevice::ReadOnly)) return {};
    return readMovieMetadata(buffer);
}

QList<MetadataItem> readMovieMetadata(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCInfo(lcTagsmith) << "Movie reader: cannot open" << path;
        return {};
    }
    return readMovieMetadata(file);
}
