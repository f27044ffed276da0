// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_items.h"

#include <QBuffer>
#include <QHash>
#include <QMap>
#include <QSet>

namespace VideoItems {

MetadataItem make(const QString& keySpace, const QString& key, const QString& identifier,
                  const QVariant& value) {
    MetadataItem item;
    item.keySpace = keySpace;
    item.key = key.toUtf8();
    item.identifier = identifier;
    item.value = value;
    return item;
}

MetadataItem title(const QString& text) {
    return make(QStringLiteral("itsk"), QStringLiteral("title"), kItunesTitle, text);
}
MetadataItem album(const QString& text) {
    return make(QStringLiteral("itsk"), QStringLiteral("albumName"), QStringLiteral("itsk/%A9alb"),
                text);
}
MetadataItem artist(const QString& text) {
    return make(QStringLiteral("itsk"), QStringLiteral("artist"), QStringLiteral("itsk/%A9ART"),
                text);
}

namespace {
MetadataItem quickTime(const char* name, const QString& text) {
    const QString key = QStringLiteral("com.apple.quicktime.") + QLatin1String(name);
    return make(QStringLiteral("mdta"), key, QStringLiteral("mdta/") + key, text);
}
MetadataItem common(const char* key, const QVariant& value) {
    return make(QStringLiteral("comn"), QLatin1String(key),
                QStringLiteral("common/") + QLatin1String(key), value);
}
}  // namespace

MetadataItem director(const QString& text) {
    return quickTime("director", text);
}
MetadataItem performer(const QString& text) {
    return quickTime("performer", text);
}
MetadataItem producer(const QString& text) {
    return quickTime("producer", text);
}
MetadataItem publisher(const QString& text) {
    return common("publisher", text);
}
MetadataItem copyrights(const QString& text) {
    return common("copyrights", text);
}
MetadataItem description(const QString& text) {
    return common("description", text);
}

MetadataItem keywords(const QString& text) {
    MetadataItem item = quickTime("keywords", QString());
    item.value = text.toUtf8();
    item.dataType = QStringLiteral("com.apple.metadata.datatype.raw-data");
    item.language = QStringLiteral("und");
    return item;
}

MetadataItem keywordList(const QString& text) {
    return make(QStringLiteral("uiso"), QStringLiteral("keywords"), QStringLiteral("uiso/kywd"),
                text);
}

MetadataItem artwork(const QImage& picture) {
    QByteArray tiff;
    if (!picture.isNull()) {
        QBuffer buffer(&tiff);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, "TIFF");
    }
    MetadataItem item = common("artwork", tiff);
    item.dataType = QStringLiteral("public.tiff");
    return item;
}

MetadataItem location(const QString& iso6709) {
    return make(QStringLiteral("uiso"), QStringLiteral("loci"), QStringLiteral("uiso/loci"),
                iso6709);
}

bool isDateIdentifier(const QString& identifier) {
    return identifier == kUisoDate || identifier == kUdtaDate ||
           identifier == kQuickTimeCreationDate;
}

QString locationText(const QString& latitude, const QString& longitude, const QString& altitude) {
    const auto signedPart = [](const QString& part) {
        return part.contains(QLatin1Char('-')) ? part : QStringLiteral("+") + part;
    };
    return signedPart(latitude) + signedPart(longitude) + signedPart(altitude);
}

QList<MetadataItem> dateItems(const QList<MetadataItem>& existing, const QString& dateText,
                              bool* rewroteQuickTimeDate) {
    QList<MetadataItem> out;
    bool quickTimeDate = false;
    for (const MetadataItem& item : existing) {
        if (item.identifier == kUisoDate) {
            out.append(make(QStringLiteral("uiso"), QStringLiteral("date"), kUisoDate, dateText));
        } else if (item.identifier == kUdtaDate) {
            out.append(make(QStringLiteral("udta"), QStringLiteral("date"), kUdtaDate, dateText));
        } else if (item.identifier == kQuickTimeCreationDate) {
            out.append(quickTime("creationdate", dateText));
            quickTimeDate = true;
        }
    }
    if (out.isEmpty())
        out.append(make(QStringLiteral("uiso"), QStringLiteral("date"), kUisoDate, dateText));
    if (rewroteQuickTimeDate) *rewroteQuickTimeDate = quickTimeDate;
    return out;
}

QList<MetadataItem> replaceDateItems(const QList<MetadataItem>& existing, const QString& dateText) {
    return merge({make(QStringLiteral("uiso"), QStringLiteral("date"), kUisoDate, dateText)},
                 existing, VideoFileType::QuickTimeMovie);
}

QString nativeIdentifier(const MetadataItem& item, VideoFileType type) {
    const QString id =
        item.identifier.isEmpty() ? metadataIdentifier(item.keySpace, item.key) : item.identifier;
    if (!id.startsWith(QLatin1String("common/"))) return id;
    const QString key = id.mid(7);
    if (type == VideoFileType::QuickTimeMovie) {
        static const QHash<QString, QString> movie{
            {QStringLiteral("copyrights"), QStringLiteral("copyright")},
            {QStringLiteral("creationDate"), QStringLiteral("creationdate")},
        };
        return QStringLiteral("mdta/com.apple.quicktime.") + movie.value(key, key);
    }
    static const QHash<QString, QString> itunes{
        {QStringLiteral("title"), QStringLiteral("itsk/%A9nam")},
        {QStringLiteral("publisher"), QStringLiteral("itsk/%A9pub")},
        {QStringLiteral("copyrights"), QStringLiteral("itsk/cprt")},
        {QStringLiteral("description"), QStringLiteral("itsk/%A9des")},
        {QStringLiteral("artwork"), QStringLiteral("itsk/covr")},
        {QStringLiteral("creationDate"), QStringLiteral("itsk/%A9day")},
        {QStringLiteral("artist"), QStringLiteral("itsk/%A9ART")},
        {QStringLiteral("albumName"), QStringLiteral("itsk/%A9alb")},
    };
    return itunes.value(key, id);
}

namespace {

// Where each field lives: its QuickTime key names (matched with and without
// the "com.apple.quicktime." prefix) and its identifiers in the other key
// spaces. User-data "©aut" is an artist to the common readers; the 3GPP
// "perf" box is the performer; the professional cameras' manufacturer is
// shown as the producer, so it is replaced with it.
struct FieldPlaces {
    Field field;
    QStringList quickTimeKeys;
    QStringList identifiers;
};

const QList<FieldPlaces>& fieldPlaces() {
    static const QList<FieldPlaces> places{
        {Field::Title,
         {"title"},
         {"udta/%A9nam", "itsk/%A9nam", "uiso/titl", "common/title", "id3/TIT2"}},
        {Field::Album,
         {"album"},
         {"udta/%A9alb", "itsk/%A9alb", "uiso/albm", "common/albumName", "id3/TALB"}},
        {Field::Artist,
         {"artist"},
         {"udta/%A9ART", "udta/%A9aut", "itsk/%A9ART", "common/artist", "id3/TPE1"}},
        {Field::Director, {"director"}, {"udta/%A9dir", "itsk/%A9dir"}},
        {Field::Performer, {"performer"}, {"udta/%A9prf", "itsk/%A9prf", "uiso/perf"}},
        {Field::Producer,
         {"producer"},
         {"udta/%A9prd", "itsk/%A9prd", "mdta/com.apple.proapps.manufacturer"}},
        {Field::Publisher, {"publisher"}, {"udta/%A9pub", "itsk/%A9pub", "common/publisher"}},
        {Field::Copyright,
         {"copyright"},
         {"udta/%A9cpy", "itsk/cprt", "uiso/cprt", "common/copyrights"}},
        {Field::Description,
         {"description"},
         {"udta/%A9des", "itsk/%A9des", "itsk/desc", "uiso/dscp", "common/description"}},
        {Field::Keywords, {"keywords"}, {"udta/%A9key", "itsk/keyw", "uiso/kywd"}},
        {Field::Date,
         {"creationdate"},
         {"uiso/date", "udta/date", "udta/%A9day", "itsk/%A9day", "uiso/yrrc",
          "common/creationDate"}},
        {Field::Artwork, {"artwork"}, {"itsk/covr", "common/artwork", "id3/APIC"}},
        {Field::Location, {"location.ISO6709", "location"}, {"uiso/loci", "udta/%A9xyz"}},
    };
    return places;
}

// The key spaces a movie file holds (ID3 items have no place in one).
const QStringList kMovieSpaces{"itsk", "mdta", "udta", "uiso"};

std::optional<Field> fieldOfIdentifier(const QString& id) {
    static const QHash<QString, Field> byIdentifier = [] {
        QHash<QString, Field> map;
        for (const FieldPlaces& p : fieldPlaces()) {
            for (const QString& key : p.quickTimeKeys) {
                map.insert(QStringLiteral("mdta/") + key, p.field);
                map.insert(QStringLiteral("mdta/com.apple.quicktime.") + key, p.field);
            }
            for (const QString& identifier : p.identifiers) map.insert(identifier, p.field);
        }
        return map;
    }();
    const auto it = byIdentifier.constFind(id);
    if (it == byIdentifier.cend()) return std::nullopt;
    return *it;
}

QString identifierOf(const MetadataItem& item) {
    return item.identifier.isEmpty() ? metadataIdentifier(item.keySpace, item.key)
                                     : item.identifier;
}

bool isEmptyValue(const QVariant& value) {
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray().isEmpty()
                                                   : value.toString().isEmpty();
}

// The new value of a field in the place of an existing item: its key
// space, key and language. Pictures stay data; every other value is text
// there (the QuickTime keywords are stored as UTF-8 data, other places
// hold them as text).
MetadataItem placedLike(const MetadataItem& place, const MetadataItem& value, Field field) {
    MetadataItem item;
    item.keySpace = place.keySpace;
    item.key = place.key;
    item.identifier = place.identifier;
    item.language = place.language;
    // What the place was read from goes along: a text stored in Mac Roman
    // stays in Mac Roman where it fits, an entry keeps its leading boxes,
    // and a value equal to the old one keeps its bytes.
    item.origin = place.origin;
    if (field == Field::Artwork) {
        item.value = value.value;
        item.dataType = value.dataType;
    } else {
        item.value = value.value.typeId() == QMetaType::QByteArray
                         ? QString::fromUtf8(value.value.toByteArray())
                         : value.value.toString();
    }
    return item;
}

}  // namespace

std::optional<Field> fieldOf(const MetadataItem& item, VideoFileType type) {
    const QString id = identifierOf(item);
    if (const auto field = fieldOfIdentifier(id)) return field;
    return fieldOfIdentifier(nativeIdentifier(item, type));
}

bool isLocationItem(const MetadataItem& item, VideoFileType type) {
    if (fieldOf(item, type) == Field::Location) return true;
    if (identifierOf(item) == QLatin1String("itsk/%A9xyz")) return true;
    if (item.keySpace != QLatin1String("mdta")) return false;
    QByteArray key = item.key;
    if (key.startsWith("com.apple.quicktime.")) key.remove(0, 20);
    return key.startsWith("location.");
}

QList<MetadataItem> merge(const QList<MetadataItem>& newItems, const QList<MetadataItem>& existing,
                          VideoFileType type) {
    QSet<QString> replaced;
    QMap<Field, const MetadataItem*> newFields;  // the first new item of each field
    for (const MetadataItem& item : newItems) {
        replaced.insert(identifierOf(item));
        replaced.insert(nativeIdentifier(item, type));
        if (const auto field = fieldOf(item, type); field && !newFields.contains(*field))
            newFields.insert(*field, &item);
    }
    QList<MetadataItem> out = newItems;
    // The new value also where the file holds the field in other places.
    for (const MetadataItem& item : existing) {
        const auto field = fieldOf(item, type);
        if (!field || !newFields.contains(*field)) continue;
        const MetadataItem& value = *newFields.value(*field);
        const QString id = nativeIdentifier(item, type);
        if (replaced.contains(id) || isEmptyValue(value.value) ||
            !kMovieSpaces.contains(item.keySpace))
            continue;
        replaced.insert(id);
        out.append(placedLike(item, value, *field));
    }
    for (const MetadataItem& item : existing) {
        const auto field = fieldOf(item, type);
        if (field && newFields.contains(*field)) continue;  // an older value of a new field
        if (!replaced.contains(identifierOf(item)) &&
            !replaced.contains(nativeIdentifier(item, type))) {
            out.append(item);
        }
    }
    return out;
}

}  // namespace VideoItems
