// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_items.h"

#include <QVariantMap>

#include "core/common/logging.h"
#include "core/video/movie_metadata_reader.h"

namespace {

// An ID3 chunk of a WAV or AIFF file larger than this is not read.
constexpr qint64 kMaxId3ChunkBytes = qint64(256) << 20;

const char* encodingName(quint8 encoding) {
    switch (encoding) {
        case 1:
            return "UTF-16";
        case 2:
            return "UTF-16BE";
        case 3:
            return "UTF-8";
        default:
            return "ISO-8859-1";
    }
}

QString withDescription(const QString& description, const QStringList& values) {
    const QString value = values.join(QStringLiteral("; "));
    return description.isEmpty() ? value : QStringLiteral("(%1) %2").arg(description, value);
}

// Fills the value of an item from its frame; false when the frame's body is
// not what its id promises, and the raw body is shown instead.
bool decodeFrame(const Id3Frame& frame, MetadataItem& item) {
    const QByteArray& id = frame.id;
    const bool v22 = frame.version == 2;
    if (frame.isText()) {
        item.value = id3TextValues(frame.body).join(QStringLiteral("; "));
        item.dataType =
            QString::fromLatin1(encodingName(frame.body.isEmpty() ? 0 : quint8(frame.body[0])));
        return true;
    }
    if (id == "COMM" || id == "USLT" || id == "COM" || id == "ULT") {
        Id3CommentFrame comment;
        if (!id3Comment(frame.body, &comment)) return false;
        item.value = comment.text;
        item.language = QString::fromLatin1(comment.language).trimmed();
        item.dataType = QString::fromLatin1(encodingName(comment.encoding));
        return true;
    }
    if (id == "APIC" || id == "PIC") {
        Id3PictureFrame picture;
        if (!id3Picture(frame.body, v22, &picture)) return false;
        item.value = QVariantMap{{QStringLiteral("MIME"), picture.mimeType},
                                 {QStringLiteral("data"), picture.data},
                                 {QStringLiteral("picturetype"), int(picture.pictureType)},
                                 {QStringLiteral("description"), picture.description}};
        item.dataType = picture.mimeType;
        return true;
    }
    const bool url = id == "WXXX" || id == "WXX";
    if (url || id == "TXXX" || id == "TXX") {
        Id3UserTextFrame user;
        if (!id3UserText(frame.body, url, &user)) return false;
        item.value = withDescription(user.description, user.values);
        return true;
    }
    if (id.startsWith('W')) {
        item.value = id3DecodeText(frame.body, 0);
        return true;
    }
    return false;
}

}  // namespace

QList<MetadataItem> id3MetadataItems(const Id3Tag& tag) {
    QList<MetadataItem> items;
    for (const Id3Frame& frame : tag.frames) {
        MetadataItem item;
        item.keySpace = QStringLiteral("org.id3");
        item.key = frame.id;
        item.identifier = metadataIdentifier(QStringLiteral("id3"), frame.id);
        if (frame.encrypted || frame.compressedBody || !decodeFrame(frame, item)) {
            item.value = frame.body;
            item.dataType = QStringLiteral("raw");
        }
        items.append(item);
    }
    return items;
}

QList<MetadataItem> cafMetadataItems(const CafInfo& info) {
    QList<MetadataItem> items;
    for (const auto& [key, value] : info) {
        MetadataItem item;
        item.keySpace = QStringLiteral("caaf");
        item.key = "info-" + key.toUtf8();
        item.identifier = metadataIdentifier(item.keySpace, item.key);
        item.value = value;
        item.dataType = QStringLiteral("UTF-8");
        items.append(item);
    }
    return items;
}

MetadataItem audioTextItem(const QString& keySpace, const QByteArray& key, const QString& value) {
    MetadataItem item;
    item.keySpace = keySpace;
    item.key = key;
    item.identifier = metadataIdentifier(keySpace, key);
    item.value = value;
    item.dataType = QStringLiteral("UTF-8");
    return item;
}

QList<MetadataItem> id3ChunkMetadataItems(QIODevice& file, AudioContainer container) {
    const QByteArray chunk =
        readContainerChunk(file, container, {"id3 ", "ID3 "}, kMaxId3ChunkBytes);
    if (chunk.isEmpty()) return {};
    const Id3Tag tag = parseId3v2Tag(chunk);
    if (!tag.problems.isEmpty()) qCInfo(lcTagsmith) << "ID3 chunk ==" << tag.problems;
    return id3MetadataItems(tag);
}

QList<MetadataItem> cafFileMetadataItems(QIODevice& file) {
    QString problem;
    const CafInfo info = readCafInfo(file, &problem);
    if (!problem.isEmpty()) qCInfo(lcTagsmith) << "CAF info chunk ==" << problem;
    return cafMetadataItems(info);
}

QList<MetadataItem> audioMetadataItems(QIODevice& file, AudioContainer container) {
    switch (container) {
        case AudioContainer::Mpeg4:
            return readMovieMetadata(file);
        case AudioContainer::Caf:
            return cafFileMetadataItems(file);
        case AudioContainer::Wav:
        case AudioContainer::Aiff:
            return id3ChunkMetadataItems(file, container);
        default: {
            // Leading ID3v2 tags: MP3, and any stream with a tag in front.
            QList<MetadataItem> items;
            for (const Id3Tag& tag : readLeadingId3v2Tags(file)) {
                if (!tag.problems.isEmpty()) qCInfo(lcTagsmith) << "ID3 tag ==" << tag.problems;
                items += id3MetadataItems(tag);
            }
            return items;
        }
    }
}
