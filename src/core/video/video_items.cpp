#include "core/video/video_items.h"

#include <QBuffer>
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
    QList<MetadataItem> items;
    bool replaced = false;
    for (const MetadataItem& item : existing) {
        if (!isDateIdentifier(item.identifier)) {
            items.append(item);
        } else if (!dateText.isEmpty()) {
            items.append(make(QStringLiteral("uiso"), QStringLiteral("date"), QString(), dateText));
            replaced = true;
        }
    }
    if (!replaced)
        items.append(make(QStringLiteral("uiso"), QStringLiteral("date"), kUisoDate, dateText));
    return items;
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

QList<MetadataItem> merge(const QList<MetadataItem>& newItems, const QList<MetadataItem>& existing,
                          VideoFileType type) {
    QSet<QString> replaced;
    for (const MetadataItem& item : newItems) {
        replaced.insert(item.identifier);
        replaced.insert(nativeIdentifier(item, type));
    }
    QList<MetadataItem> out = newItems;
    for (const MetadataItem& item : existing) {
        if (!replaced.contains(item.identifier) &&
            !replaced.contains(nativeIdentifier(item, type))) {
            out.append(item);
        }
    }
    return out;
}

}  // namespace VideoItems
