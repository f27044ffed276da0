// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_metadata_rules.h"

#include <QImage>
#include <QRegularExpression>
#include <QVariantMap>

#include "core/common/dates.h"
#include "core/common/logging.h"
#include "core/library/ik_image_item.h"
#include "core/video/movie_metadata_reader.h"

namespace {

enum class Field {
    Album,
    Artist,
    Id3Picture,
    ItunesPicture,
    Title,
    Location,
    Make,
    Model,
    Software,
    Publisher,
    Copyright,
    Keywords,
    Description,
    Director,
    Performer,
    Producer,
    ReleasedYear,
    Date,
};

struct ReadRule {
    QStringList identifiers;        // import thread
    QStringList folderIdentifiers;  // folder scan (a subset)
    Field field;
};

QStringList both(std::initializer_list<const char*> ids) {
    QStringList list;
    for (const char* id : ids) list.append(QString::fromLatin1(id));
    return list;
}

// Rows are tested in this order; the first row naming the item's identifier
// decides its field.
const QList<ReadRule>& readRules() {
    static const QList<ReadRule> rules = [] {
        QList<ReadRule> r;
        const auto row = [&r](std::initializer_list<const char*> ids,
                              std::initializer_list<const char*> folderIds, Field field) {
            r.append({both(ids), both(folderIds), field});
        };
        const auto same = [&row](std::initializer_list<const char*> ids, Field field) {
            row(ids, ids, field);
        };
        same({"id3/TALB", "itsk/%A9alb"}, Field::Album);
        same({"id3/TPE1", "itsk/%A9ART"}, Field::Artist);
        same({"id3/APIC"}, Field::Id3Picture);
        same({"itsk/covr"}, Field::ItunesPicture);
        same({"id3/TIT2", "itsk/%A9nam"}, Field::Title);
        same({"uiso/loci", "mdta/com.apple.quicktime.location.ISO6709"}, Field::Location);
        row({"mdta/com.apple.quicktime.make", "common/make"}, {"mdta/com.apple.quicktime.make"},
            Field::Make);
        row({"mdta/com.apple.quicktime.model", "common/model"}, {"mdta/com.apple.quicktime.model"},
            Field::Model);
        row({"mdta/com.apple.quicktime.software", "common/software"}, {}, Field::Software);
        same({"mdta/com.apple.quicktime.publisher", "itsk/%A9pub"}, Field::Publisher);
        same({"mdta/com.apple.quicktime.copyright", "itsk/cprt"}, Field::Copyright);
        same({"mdta/com.apple.quicktime.keywords", "udta/%A9key"}, Field::Keywords);
        row({"mdta/com.apple.quicktime.description", "itsk/%A9des", "uiso/dscp"},
            {"mdta/com.apple.quicktime.description", "itsk/%A9des"}, Field::Description);
        same({"mdta/com.apple.quicktime.director", "itsk/%A9dir"}, Field::Director);
        same({"mdta/com.apple.quicktime.performer", "itsk/%A9prf"}, Field::Performer);
        row({"mdta/com.apple.quicktime.producer", "itsk/%A9prd",
             "mdta/com.apple.proapps.manufacturer"},
            {"mdta/com.apple.quicktime.producer", "itsk/%A9prd"}, Field::Producer);
        same({"id3/TYER"}, Field::ReleasedYear);
        same({"uiso/date", "mdta/com.apple.quicktime.creationdate"}, Field::Date);
        return r;
    }();
    return rules;
}

const ReadRule* ruleFor(const QString& identifier, bool folderScan) {
    for (const ReadRule& rule : readRules()) {
        const QStringList& ids = folderScan ? rule.folderIdentifiers : rule.identifiers;
        if (ids.contains(identifier)) return &rule;
    }
    return nullptr;
}

QString valueText(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray) return QString::fromUtf8(value.toByteArray());
    return value.toString();
}

void setImage(IKImageItem& record, const QByteArray& data) {
    if (data.isEmpty()) return;
    const StoredPicture image = StoredPicture::fromData(data);
    if (image.size().isValid()) record.fileImage = image;  // an unreadable picture changes nothing
}

// An ID3 picture comes as its data, or as a frame dictionary whose "data"
// entry holds the picture; the iTunes key space always gives the data.
void applyId3Picture(IKImageItem& record, const MetadataItem& item) {
    if (item.keySpace == QLatin1String("itsk")) {
        setImage(record, item.value.toByteArray());
    } else if (item.value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap frame = item.value.toMap();
        if (frame.contains(QStringLiteral("data")))
            setImage(record, frame.value(QStringLiteral("data")).toByteArray());
    } else if (item.value.typeId() == QMetaType::QByteArray) {
        setImage(record, item.value.toByteArray());
    }
}

void applyField(IKImageItem& record, const MetadataItem& item, Field field, bool folderScan) {
    switch (field) {
        case Field::Album:
            record.fileAblumName = valueText(item.value);
            break;
        case Field::Artist:
            record.fileArist = valueText(item.value);
            break;
        case Field::Id3Picture:
            applyId3Picture(record, item);
            break;
        case Field::ItunesPicture:
            setImage(record, item.value.toByteArray());
            break;
        case Field::Title:
            record.fileTitle = valueText(item.value);
            break;
        case Field::Location:
            if (item.value.typeId() == QMetaType::QString)
                applyIso6709Location(record, item.value.toString());
            break;
        case Field::Make:
            record.fileMake = valueText(item.value);
            break;
        case Field::Model:
            record.fileModel = valueText(item.value);
            break;
        case Field::Software:
            record.fileSoftware = valueText(item.value);
            break;
        case Field::Publisher:
            record.filePublisher = valueText(item.value);
            break;
        case Field::Copyright:
            record.fileCopyright = valueText(item.value);
            break;
        case Field::Keywords:
            record.fileKeyWords = valueText(item.value);
            if (!folderScan) {
                qCInfo(lcTagsmith).noquote()
                    << QStringLiteral("[AVitem value]===%1,=%2=")
                           .arg(QString::fromLatin1(item.value.typeName()), record.fileKeyWords);
            }
            break;
        case Field::Description:
            record.fileDescription = valueText(item.value);
            break;
        case Field::Director:
            record.fileDirector = valueText(item.value);
            break;
        case Field::Performer:
            record.fileActor = valueText(item.value);
            break;
        case Field::Producer:
            record.fileproducer = valueText(item.value);
            break;
        case Field::ReleasedYear:
            record.fileReleasedYear = valueText(item.value);
            break;
        case Field::Date:
            applyVideoDateText(record, valueText(item.value));
            break;
    }
}

// The value of the leading numeric part of a text, 0 when there is none.
double leadingNumber(const QString& text) {
    static const QRegularExpression number(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

}  // namespace

void applyVideoMetadata(IKImageItem& item, const QList<MetadataItem>& items, bool folderScan) {
    for (const MetadataItem& metadata : items) {
        if (const ReadRule* rule = ruleFor(metadata.identifier, folderScan))
            applyField(item, metadata, rule->field, folderScan);
    }
}

void readVideoFileMetadata(IKImageItem& item, bool folderScan) {
    item.fileMetaArray = readMovieMetadata(item.filePath);
    applyVideoMetadata(item, item.fileMetaArray, folderScan);
}

void applyVideoDateText(IKImageItem& item, const QString& text) {
    QString date = text;
    date.replace(QLatin1Char('T'), QLatin1Char(' '));
    const QStringList parts = date.split(QLatin1Char('+'));
    if (parts.size() >= 2) {
        item.shootDateStr = parts.first();
        const QDateTime parsed = dateFromText(parts.first());
        if (parsed.isValid()) item.shootDate = parsed;
        return;
    }
    item.shootDateStr = date;
    const QDateTime parsed = dateFromText(date);
    if (parsed.isValid()) {
        item.shootDate = parsed;
        return;
    }
    QString separated = date;
    separated.replace(QLatin1Char(' '), QLatin1Char('-'))
        .replace(QLatin1Char(':'), QLatin1Char('-'));
    const QStringList fields = separated.split(QLatin1Char('-'));
    if (fields.size() < 6) return;
    const QString rebuilt =
        QStringLiteral("%1-%2-%3 %4:%5:%6")
            .arg(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
    const QDateTime rebuiltDate = QLocale(QStringLiteral("en_US"))
                                      .toDateTime(rebuilt, QLatin1String(kDateTextFallbackFormat));
    if (!rebuiltDate.isValid()) return;
    item.shootDateStr = rebuilt;
    item.shootDate = rebuiltDate;
}

void applyIso6709Location(IKImageItem& item, const QString& text) {
    if (text.isEmpty()) return;
    QStringList pieces;
    int state = 0;
    qsizetype lastSign = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('+') && c != QLatin1Char('-')) continue;
        const QString sign(c);
        if (state == 0) {
            item.latitudeFormat = sign;
            pieces << sign;
            state = 1;
        } else if (state == 1) {
            const QString latitude = text.mid(lastSign + 1, i - lastSign - 1);
            item.filelatitude = leadingNumber(latitude);
            item.longtitudeFormat = sign;
            pieces << latitude << sign;
            state = 2;
        } else {
            const QString longitude = text.mid(lastSign + 1, i - lastSign - 1);
            const QString altitude = text.mid(i + 1);
            item.AtitudeFormat = sign;
            item.filelongtitude = leadingNumber(longitude);
            item.fileAtitude = leadingNumber(altitude);
            pieces << longitude << sign << altitude;
            break;
        }
        lastSign = i;
    }
    qCInfo(lcTagsmith).noquote()
        << QStringLiteral("theStrArry==(%1)").arg(pieces.join(QStringLiteral(", ")));
}
