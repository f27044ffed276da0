// SPDX-License-Identifier: GPL-3.0-or-later
// Which metadata item or info key fills which field of an audio record.

#include <QHash>
#include <QVariantMap>

#include "core/audio/audio_readers.h"
#include "core/common/logging.h"
#include "core/video/video_metadata_rules.h"

namespace {

enum class Field {
    Album,
    Artist,
    Image,
    Title,
    Location,
    Year,
    Publisher,
    Copyright,
    Description,
    Comments,
    SubTitle,
    Band,
    Lyricist,
    Composer,
    AlbumArtist,  // the track number, by design
    ShootDate,
};

using Table = QHash<QString, Field>;

// The identifiers both tables share.
Table sharedTable() {
    return {
        {"id3/TALB", Field::Album},
        {"itsk/%A9alb", Field::Album},
        {"id3/TPE1", Field::Artist},
        {"itsk/%A9ART", Field::Artist},
        {"id3/TOPE", Field::Artist},
        {"id3/APIC", Field::Image},
        {"itsk/covr", Field::Image},
        {"id3/TIT2", Field::Title},
        {"itsk/%A9nam", Field::Title},
        {"uiso/loci", Field::Location},
        {"mdta/com.apple.quicktime.location.ISO6709", Field::Location},
        {"mdta/com.apple.quicktime.publisher", Field::Publisher},
        {"itsk/%A9pub", Field::Publisher},
        {"mdta/com.apple.quicktime.copyright", Field::Copyright},
        {"itsk/cprt", Field::Copyright},
        {"mdta/com.apple.quicktime.description", Field::Description},
        {"id3/COMM", Field::Comments},
        {"id3/TIT3", Field::SubTitle},
        {"id3/TPE2", Field::Band},
        {"id3/TEXT", Field::Lyricist},
        {"itsk/%A9lyr", Field::Lyricist},
        {"id3/TCOM", Field::Composer},
        {"uiso/date", Field::ShootDate},
        {"mdta/com.apple.quicktime.creationdate", Field::ShootDate},
        {"id3/TRDA", Field::ShootDate},
    };
}

const Table& aiffTable() {
    static const Table table = [] {
        Table t = sharedTable();
        t.insert({{"caaf/info-album", Field::Album},
                  {"caaf/info-artist", Field::Artist},
                  {"caaf/info-title", Field::Title},
                  {"caaf/info-year", Field::Year},
                  {"caaf/info-comments", Field::Comments},
                  {"caaf/info-composer", Field::Composer},
                  {"caaf/info-track%20number", Field::AlbumArtist}});
        return t;
    }();
    return table;
}

const Table& mp3Table() {
    static const Table table = [] {
        Table t = sharedTable();
        t.insert({{"id3/TYER", Field::Year},
                  {"itsk/%A9day", Field::Year},
                  {"id3/TPUB", Field::Publisher},
                  {"id3/TCOP", Field::Copyright},
                  {"itsk/%A9cmt", Field::Comments},
                  {"itsk/%A9st3", Field::SubTitle},
                  {"itsk/%A9wrt", Field::Composer},
                  {"id3/TRCK", Field::AlbumArtist},
                  {"itsk/trkn", Field::AlbumArtist}});
        return t;
    }();
    return table;
}

// Pictures larger than this are not decoded (and logged).
constexpr qsizetype kMaxPictureBytes = qsizetype(32) << 20;

// The picture of an artwork item: an ID3 picture's dictionary gives its
// "data" entry, raw data is the picture itself; other shapes give nothing.
QByteArray pictureData(const QVariant& value) {
    if (value.typeId() == QMetaType::QVariantMap) {
        return value.toMap().value(QStringLiteral("data")).toByteArray();
    }
    if (value.typeId() == QMetaType::QByteArray) return value.toByteArray();
    return {};
}

QString textOf(const MetadataItem& item) {
    if (item.value.typeId() != QMetaType::QByteArray) return item.value.toString();
    const QByteArray raw = item.value.toByteArray();
    if (item.key == "trkn" && raw.size() >= 6) {
        // Track number and count, 16 bits each after two reserved bytes.
        const int number = (uchar(raw[2]) << 8) | uchar(raw[3]);
        const int count = (uchar(raw[4]) << 8) | uchar(raw[5]);
        return count ? QStringLiteral("%1/%2").arg(number).arg(count) : QString::number(number);
    }
    return QString::fromUtf8(raw);
}

void setField(IKImageItem& record, Field field, const MetadataItem& item) {
    if (field == Field::Image) {
        const QByteArray data = pictureData(item.value);
        if (data.size() > kMaxPictureBytes) {
            qCInfo(lcTagsmith) << "picture too large, not shown ==" << data.size() << "bytes";
            return;
        }
        const StoredPicture image = StoredPicture::fromData(data);
        if (image.size().isValid()) record.fileImage = image;
        return;
    }
    const QString text = textOf(item);
    switch (field) {
        case Field::Album:
            record.fileAblumName = text;
            break;
        case Field::Artist:
            record.fileArist = text;
            break;
        case Field::Title:
            record.fileTitle = text;
            break;
        case Field::Location:
            applyIso6709Location(record, text);
            break;
        case Field::Year:
            record.fileReleasedYear = text;
            break;
        case Field::Publisher:
            record.filePublisher = text;
            break;
        case Field::Copyright:
            record.fileCopyright = text;
            break;
        case Field::Description:
            record.fileDescription = text;
            break;
        case Field::Comments:
            record.fileComments = text;
            break;
        case Field::SubTitle:
            record.fileSubTitle = text;
            break;
        case Field::Band:
            record.fileBand = text;
            break;
        case Field::Lyricist:
            record.fileLyricist = text;
            break;
        case Field::Composer:
            record.fileComposer = text;
            break;
        case Field::AlbumArtist:
            record.fileAlbumArist = text;
            break;
        case Field::ShootDate:
            applyVideoDateText(record, text);
            break;
        case Field::Image:
            break;
    }
}

}  // namespace

void applyAudioMetadata(IKImageItem& record, const QList<MetadataItem>& items,
                        AudioItemTable which) {
    const Table& table = which == AudioItemTable::Aiff ? aiffTable() : mp3Table();
    for (const MetadataItem& item : items) {
        const auto found = table.constFind(item.identifier);
        if (found != table.constEnd()) setField(record, *found, item);
    }
}

void applyAudioInfoDictionary(IKImageItem& record, const AudioInfoEntries& info) {
    static const QHash<QString, Field> keys = {
        {"album", Field::Album},
        {"artist", Field::Artist},
        {"title", Field::Title},
        {"subtitle", Field::SubTitle},
        {"track number", Field::AlbumArtist},
        {"recorded date", Field::ShootDate},
        {"year", Field::Year},
        {"copyright", Field::Copyright},
        {"composer", Field::Composer},
        {"comments", Field::Comments},
        {"lyricist", Field::Lyricist},
    };
    for (const auto& [key, value] : info) {
        const auto found = keys.constFind(key);
        if (found == keys.constEnd()) continue;
        MetadataItem item;
        item.value = value;
        setField(record, *found, item);
    }
}
