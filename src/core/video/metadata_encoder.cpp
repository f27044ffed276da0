// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/metadata_encoder.h"

#include <QBuffer>
#include <QDateTime>
#include <QImage>

#include <algorithm>
#include <cstring>

#include "core/common/logging.h"
#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/bmff_values.h"
#include "core/video/mac_roman.h"
#include "core/video/metadata_encoder_private.h"
#include "core/video/video_items.h"

namespace MetadataEncoder {

using Bmff::appendU16;
using Bmff::appendU32;
using Bmff::makeBox;
using Bmff::makeFullBox;

namespace {

using namespace Bmff;  // the data atom types

struct TypedValue {
    quint32 type = kImplicit;
    QByteArray bytes;
};

bool isEmptyValue(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
            return true;
        case QMetaType::QString:
            return value.toString().isEmpty();
        case QMetaType::QByteArray:
            return value.toByteArray().isEmpty();
        case QMetaType::QImage:
            return value.value<QImage>().isNull();
        default:
            return value.isNull();
    }
}

bool startsWith(const QByteArray& data, QByteArrayView magic) {
    return data.startsWith(magic);
}

// A picture as JPEG or PNG data; other formats (TIFF, BMP, ...) are
// converted to PNG, the types every player reads.
std::optional<TypedValue> pictureValue(const QVariant& value, const QString& dataType) {
    QImage image;
    if (value.typeId() == QMetaType::QImage) {
        image = value.value<QImage>();
    } else {
        const QByteArray data = value.toByteArray();
        if (dataType == QLatin1String("public.jpeg") || startsWith(data, "\xff\xd8\xff"))
            return TypedValue{kJpeg, data};
        if (dataType == QLatin1String("public.png") || startsWith(data, "\x89PNG\r\n\x1a\n"))
            return TypedValue{kPng, data};
        image = QImage::fromData(data);
    }
    if (image.isNull()) return std::nullopt;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) return std::nullopt;
    return TypedValue{kPng, png};
}

// Width in bytes named by an integer data type ("...int16" gives 2), or 0.
int integerWidth(const QString& dataType) {
    for (int bits : {8, 16, 32, 64}) {
        if (dataType.endsWith(QStringLiteral("int%1").arg(bits))) return bits / 8;
    }
    return 0;
}

TypedValue integerValue(const QVariant& value, const QByteArray& key, const QString& dataType) {
    // iTunes flags and kinds are single bytes; other numbers take four
    // bytes unless the item says otherwise or the number needs eight.
    static const QList<QByteArray> byteKeys{"cpil", "pgap", "stik", "rtng", "hdvd",
                                            "shwm", "pcst", "akID", "itnu"};
    const qint64 number = value.toLongLong();
    const bool isSigned = !dataType.contains(QLatin1String(".uint"));
    int width = integerWidth(dataType);
    if (width == 0) width = byteKeys.contains(key) ? 1 : 4;
    if (width < 8) {
        const qint64 span = qint64(1) << (width * 8);
        const qint64 low = isSigned ? -span / 2 : 0;
        const qint64 high = isSigned ? span / 2 - 1 : span - 1;
        if (number < low || number > high) width = 8;  // keep the number whole
    }
    TypedValue out;
    out.type = isSigned ? kSignedBE : kUnsignedBE;
    for (int i = width - 1; i >= 0; --i) out.bytes.append(char(quint64(number) >> (i * 8)));
    return out;
}

// Track and disc numbers given as text ("3/9" or "3") in their binary form:
// a reserved word, the number, the count and, for tracks, a reserved word.
std::optional<TypedValue> numberPairValue(const QVariant& value, const QByteArray& key) {
    const QStringList parts = textOf(value).split(QLatin1Char('/'));
    bool ok = false;
    const int number = parts.value(0).trimmed().toInt(&ok);
    bool countOk = true;
    const int count = parts.size() == 2 ? parts.at(1).trimmed().toInt(&countOk) : 0;
    if (!ok || !countOk || parts.size() > 2 || number < 0 || number > 0xffff || count < 0 ||
        count > 0xffff) {
        return std::nullopt;
    }
    TypedValue out;
    appendU16(out.bytes, 0);
    appendU16(out.bytes, quint16(number));
    appendU16(out.bytes, quint16(count));
    if (key == "trkn") appendU16(out.bytes, 0);
    return out;
}

std::optional<TypedValue> dataAtomValue(const MetadataItem& item, const QByteArray& key,
                                        bool isPicture) {
    const QVariant& v = item.value;
    const bool pictureType = item.dataType.startsWith(QLatin1String("public.")) &&
                             item.dataType != QLatin1String("public.utf8-plain-text");
    if (isPicture || v.typeId() == QMetaType::QImage ||
        (v.typeId() == QMetaType::QByteArray && pictureType)) {
        return pictureValue(v, item.dataType);
    }
    switch (v.typeId()) {
        case QMetaType::QByteArray:
            if (item.dataType.endsWith(QLatin1String("UTF-8")))
                return TypedValue{kUtf8, v.toByteArray()};
            return TypedValue{kImplicit, v.toByteArray()};
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return integerValue(v, key, item.dataType);
        case QMetaType::Float:
        case QMetaType::Double: {
            TypedValue out;
            if (item.dataType.endsWith(QLatin1String("float32"))) {
                const float f = v.toFloat();
                quint32 raw;
                std::memcpy(&raw, &f, sizeof raw);
                out.type = kFloat32BE;
                appendU32(out.bytes, raw);
            } else {
                const double d = v.toDouble();
                quint64 raw;
                std::memcpy(&raw, &d, sizeof raw);
                out.type = kFloat64BE;
                Bmff::appendU64(out.bytes, raw);
            }
            return out;
        }
        default:
            return TypedValue{kUtf8, textOf(v).toUtf8()};
    }
}

QByteArray dataAtom(const TypedValue& value, const QString& language) {
    QByteArray body;
    appendU32(body, value.type);
    appendU16(body, 0);  // country
    appendU16(body, packedLanguage(language).value_or(0));
    body += value.bytes;
    return makeBox("data", body);
}

struct Target {
    QString space;   // "itsk", "mdta", "udta", "uiso", "common", "id3", ...
    QByteArray key;  // unescaped
};

Target targetOf(const MetadataItem& item, VideoFileType fileType) {
    QString id = item.identifier;
    if (id.isEmpty()) {
        QString space = item.keySpace;
        if (space == QLatin1String("comn")) space = QStringLiteral("common");
        if (space == QLatin1String("org.id3")) space = QStringLiteral("id3");
        id = metadataIdentifier(space, item.key);
    }
    if (id.startsWith(QLatin1String("common/"))) {
        MetadataItem common = item;
        common.identifier = id;
        id = VideoItems::nativeIdentifier(common, fileType);
        // Common keys without an iTunes item go to the QuickTime keys, which
        // every output type can carry.
        if (id.startsWith(QLatin1String("common/")))
            id = QStringLiteral("mdta/com.apple.quicktime.") + id.mid(7);
    }
    const qsizetype slash = id.indexOf(QLatin1Char('/'));
    if (slash < 0) return {id, {}};
    return {id.left(slash), identifierKey(id.mid(slash + 1))};
}

using Form = MetadataOrigin::Form;

// The boxes before an entry's first data atom, when the item came from an
// entry of the same key.
QByteArray entryHead(const MetadataItem& item) {
    const MetadataOrigin& o = item.origin;
    return o.form == Form::DataAtom && o.identifier == item.identifier ? o.entryHead : QByteArray();
}

// The language code of a QuickTime text entry the item was read from, or -1.
int storedTextLanguage(const MetadataItem& item) {
    const MetadataOrigin& o = item.origin;
    if (o.form != Form::TextEntry || o.prefix.size() < 4 || o.language != item.language) return -1;
    return Bmff::readU16(o.prefix, 2);
}

// One entry of a QuickTime user-data text box: 16-bit length, 16-bit
// language, the text. A text read with a Macintosh language code goes back
// in Mac Roman under that code when every character has a Mac Roman byte;
// otherwise it is UTF-8 under a packed language, which readers take as such.
std::optional<QByteArray> textEntry(const MetadataItem& item) {
    QByteArray text;
    quint16 language = languageOrUndetermined(item.language);
    const int stored = storedTextLanguage(item);
    std::optional<QByteArray> mac;
    if (stored >= 0 && !Bmff::isPackedLanguage(quint16(stored)))
        mac = MacRoman::encode(textOf(item.value));
    if (item.value.typeId() == QMetaType::QByteArray) {
        text = item.value.toByteArray();
    } else if (mac) {
        text = *mac;
        language = quint16(stored);
    } else {
        text = textOf(item.value).toUtf8();
    }
    if (text.size() > 0xffff) return std::nullopt;
    QByteArray entry;
    appendU16(entry, quint16(text.size()));
    appendU16(entry, language);
    return entry + text;
}

// Builds the boxes while walking the items in order. Items read from the
// file and left unchanged go back as the bytes they came in.
class Encoder {
public:
    explicit Encoder(VideoFileType type) : m_fileType(type) {}
    void add(const MetadataItem& item);
    MovieMetadataBoxes finish() const;

private:
    // A box being built from parts: kept whole (`verbatim`), or the body of
    // a box of `key` that collects the entries or data atoms of that key
    // (several boxes of one key would be duplicates to other readers).
    struct Part {
        QByteArray key;
        QByteArray body;
        bool verbatim = false;
    };
    static void addToPart(QList<Part>& parts, const QByteArray& key, const QByteArray& head,
                          const QByteArray& bytes);
    void addItunes(const MetadataItem& item, const QByteArray& key);
    void addQuickTime(const MetadataItem& item, const QByteArray& key);
    void addUserData(const MetadataItem& item, const QByteArray& key);

    VideoFileType m_fileType;
    QList<Part> m_userData;   // children of udta, in order
    QList<Part> m_itunes;     // udta/meta/ilst
    QList<Part> m_quickTime;  // moov/meta: keys and ilst
};

void Encoder::addToPart(QList<Part>& parts, const QByteArray& key, const QByteArray& head,
                        const QByteArray& bytes) {
    for (Part& part : parts) {
        if (!part.verbatim && part.key == key) {
            part.body += bytes;
            return;
        }
    }
    parts.append({key, head + bytes, false});
}

void Encoder::add(const MetadataItem& item) {
    const bool unchanged = item.isUnchanged();
    if (!unchanged && isEmptyValue(item.value)) return;
    const Target target = targetOf(item, m_fileType);
    if (target.key.isEmpty()) {
        qCWarning(lcTagsmith) << "Movie rewriter: item without a key left out:" << item.identifier;
    } else if (target.space == QLatin1String("itsk")) {
        addItunes(item, target.key);
    } else if (target.space == QLatin1String("mdta")) {
        addQuickTime(item, target.key);
    } else if (target.space == QLatin1String("udta")) {
        addUserData(item, target.key);
    } else if (target.space == QLatin1String("uiso")) {
        const QByteArray type = isoUserDataType(target.key);
        if (unchanged && item.origin.form == Form::Box) {
            m_userData.append({type, item.origin.bytes(), true});
        } else if (type.size() != 4) {
            qCWarning(lcTagsmith) << "Movie rewriter: unknown ISO user data left out:"
                                  << target.key;
        } else if (const auto box = isoUserDataBox(type, item)) {
            m_userData.append({type, *box, true});
        }
    } else {
        qCWarning(lcTagsmith) << "Movie rewriter: a movie has no place for" << target.space
                              << "items; left out:" << item.identifier;
    }
}

void Encoder::addItunes(const MetadataItem& item, const QByteArray& key) {
    const bool unchanged = item.isUnchanged();
    if (unchanged && item.origin.form == Form::Box) {
        m_itunes.append({key, item.origin.bytes(), true});  // an entry not understood
        return;
    }
    const bool freeform = key.startsWith("----:");
    if (!freeform && key.size() != 4) {
        qCWarning(lcTagsmith) << "Movie rewriter: not an iTunes item key, left out:" << key;
        return;
    }
    QByteArray atom;
    if (unchanged && item.origin.form == Form::DataAtom) {
        atom = item.origin.bytes();
    } else {
        const bool numberPair =
            (key == "trkn" || key == "disk") && item.value.typeId() != QMetaType::QByteArray;
        const std::optional<TypedValue> value =
            numberPair ? numberPairValue(item.value, key) : dataAtomValue(item, key, key == "covr");
        if (!value) {
            qCWarning(lcTagsmith) << "Movie rewriter: value not usable for" << item.identifier
                                  << "; left out";
            return;
        }
        atom = dataAtom(*value, item.language);
    }
    QByteArray head = entryHead(item);
    if (freeform && head.isEmpty()) {
        // "----:mean:name": the reverse-domain owner, then the item's name.
        const QByteArray rest = key.mid(5);
        const qsizetype colon = rest.indexOf(':');
        head += makeFullBox("mean", 0, 0, colon < 0 ? QByteArray() : rest.left(colon));
        head += makeFullBox("name", 0, 0, colon < 0 ? rest : rest.mid(colon + 1));
    }
    addToPart(m_itunes, key, head, atom);
}

void Encoder::addQuickTime(const MetadataItem& item, const QByteArray& key) {
    QByteArray atom;
    if (item.isUnchanged() && item.origin.form == Form::DataAtom) {
        atom = item.origin.bytes();
    } else {
        const bool picture = key.endsWith(".artwork");
        const std::optional<TypedValue> value = dataAtomValue(item, key, picture);
        if (!value) {
            qCWarning(lcTagsmith) << "Movie rewriter: unreadable picture left out:"
                                  << item.identifier;
            return;
        }
        atom = dataAtom(*value, item.language);
    }
    addToPart(m_quickTime, key, entryHead(item), atom);
}

void Encoder::addUserData(const MetadataItem& item, const QByteArray& key) {
    const bool unchanged = item.isUnchanged();
    if (unchanged && item.origin.form == Form::Box) {
        m_userData.append({key, item.origin.bytes(), true});
        return;
    }
    if (key.size() != 4 || key == "meta") {
        qCWarning(lcTagsmith) << "Movie rewriter: user data key left out:" << key;
        return;
    }
    if (static_cast<unsigned char>(key[0]) == 0xa9) {
        if (unchanged && item.origin.form == Form::DataAtom) {
            addToPart(m_userData, key, entryHead(item), item.origin.bytes());
            return;
        }
        const std::optional<QByteArray> entry = unchanged && item.origin.form == Form::TextEntry
                                                    ? item.origin.bytes()
                                                    : textEntry(item);
        if (!entry) {
            qCWarning(lcTagsmith) << "Movie rewriter: text too long for" << key << "; left out";
            return;
        }
        // Entries of one key share a box, placed where its first entry is;
        // the key of text parts is marked so they do not join data atoms.
        addToPart(m_userData, key + QByteArray(1, '\0'), {}, *entry);
        return;
    }
    // Anything else is kept as the box's raw payload.
    const QByteArray payload = item.value.typeId() == QMetaType::QByteArray
                                   ? item.value.toByteArray()
                                   : textOf(item.value).toUtf8();
    m_userData.append({key, makeBox(key, payload), true});
}

MovieMetadataBoxes Encoder::finish() const {
    MovieMetadataBoxes out;
    QByteArray userData;
    for (const Part& part : m_userData)
        userData += part.verbatim ? part.body : makeBox(part.key.left(4), part.body);
    if (!m_itunes.isEmpty()) {
        QByteArray handler;
        appendU32(handler, 0);  // pre-defined
        handler += "mdir";
        handler += "appl";
        handler += QByteArray(9, '\0');  // reserved and an empty name
        QByteArray list;
        for (const Part& part : m_itunes) {
            list += part.verbatim
                        ? part.body
                        : makeBox(part.key.startsWith("----:") ? QByteArray("----") : part.key,
                                  part.body);
        }
        userData +=
            makeFullBox("meta", 0, 0, makeFullBox("hdlr", 0, 0, handler) + makeBox("ilst", list));
    }
    if (!userData.isEmpty()) out.userData = makeBox("udta", userData);
    if (!m_quickTime.isEmpty()) {
        QByteArray handler;
        appendU32(handler, 0);
        handler += "mdta";
        handler += QByteArray(13, '\0');
        QByteArray keys;
        appendU32(keys, quint32(m_quickTime.size()));
        QByteArray list;
        for (qsizetype i = 0; i < m_quickTime.size(); ++i) {
            keys += makeBox("mdta", m_quickTime[i].key);
            QByteArray index;
            appendU32(index, quint32(i + 1));  // items name their key by number
            list += makeBox(index, m_quickTime[i].body);
        }
        out.metadata = makeBox("meta", makeFullBox("hdlr", 0, 0, handler) +
                                           makeFullBox("keys", 0, 0, keys) + makeBox("ilst", list));
    }
    return out;
}

}  // namespace

QString textOf(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QByteArray:
            return QString::fromUtf8(value.toByteArray());
        case QMetaType::QDateTime:
            return value.toDateTime().toString(Qt::ISODate);
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate);
        default:
            return value.toString();
    }
}

QByteArray identifierKey(const QString& escaped) {
    const QByteArray bytes = escaped.toUtf8();
    QByteArray key;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '%' && i + 2 < bytes.size()) {
            bool ok = false;
            const int byte = bytes.mid(i + 1, 2).toInt(&ok, 16);
            if (ok) {
                key.append(char(byte));
                i += 2;
                continue;
            }
        }
        key.append(bytes[i]);
    }
    return key;
}

QByteArray fileTypeBox(VideoFileType fileType) {
    QList<QByteArray> brands;
    switch (fileType) {
        case VideoFileType::QuickTimeMovie:
            brands = {"qt  ", "qt  "};
            break;
        case VideoFileType::AppleM4V:
            brands = {"M4V ", "M4V ", "M4A ", "mp42", "isom"};
            break;
        case VideoFileType::AppleM4A:
            brands = {"M4A ", "M4A ", "mp42", "isom"};
            break;
        case VideoFileType::MPEG4:
            brands = {"mp42", "mp42", "isom"};
            break;
    }
    QByteArray body = brands.takeFirst();
    appendU32(body, fileType == VideoFileType::QuickTimeMovie ? 0x20050300 : 0);
    for (const QByteArray& brand : brands) body += brand;
    return makeBox("ftyp", body);
}

MovieMetadataBoxes encodeMovieMetadata(const QList<MetadataItem>& items, VideoFileType fileType,
                                       const QList<MetadataItem>& storedInTracks) {
    QList<MetadataItem> inTracks = storedInTracks;
    Encoder encoder(fileType);
    for (const MetadataItem& item : items) {
        const auto stored = std::find_if(inTracks.begin(), inTracks.end(), [&](const auto& t) {
            return t.identifier == item.identifier && t.value == item.value;
        });
        if (stored != inTracks.end()) {
            inTracks.erase(stored);
            continue;
        }
        encoder.add(item);
    }
    return encoder.finish();
}

}  // namespace MetadataEncoder
