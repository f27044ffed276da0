// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_readers.h"

#include <QFileInfo>

extern "C" {
#include <libavformat/avformat.h>
}

#include "core/audio/audio_facts.h"
#include "core/audio/audio_info_keys.h"
#include "core/audio/audio_items.h"
#include "core/audio/caf_file.h"
#include "core/audio/id3_frames.h"
#include "core/audio/taglib_info.h"
#include "core/common/logging.h"
#include "core/common/windowed_file.h"
#include "core/library/media_kinds.h"
#include "core/library/media_probe.h"
#include "core/library/media_record.h"

namespace {

// Pictures larger than this are not decoded (and logged).
constexpr qsizetype kMaxPictureBytes = qsizetype(32) << 20;

// What the file's own headers give when it has no tags we read: the album
// and the year, as a desktop search index would report them.
struct FallbackTags {
    QString album;
    QString year;
};

// Steps every audio reader shares: the record, its file facts and its
// probed facts (one open of the file).
// FFmpeg's demuxer for a container recognised by its bytes, so the probing
// of every format is skipped; null where FFmpeg should probe.
const char* demuxerFor(AudioContainer container) {
    switch (container) {
        case AudioContainer::Wav:
            return "wav";
        case AudioContainer::Flac:
            return "flac";
        case AudioContainer::Au:
            return "au";
        case AudioContainer::Aiff:
            return "aiff";
        case AudioContainer::Caf:
            return "caf";
        case AudioContainer::Mpeg4:
            return "mov";
        case AudioContainer::Ogg:
            return "ogg";
        case AudioContainer::Mp3:
            return "mp3";
        case AudioContainer::Unknown:
            break;
    }
    return nullptr;
}

FallbackTags fallbackTags(const OpenedMedia& media) {
    FallbackTags fallback;
    if (!media.isOpen()) return fallback;
    auto tag = [&](const char* key) {
        const AVDictionaryEntry* e = av_dict_get(media.context()->metadata, key, nullptr, 0);
        return e ? QString::fromUtf8(e->value) : QString();
    };
    fallback.album = tag("album");
    fallback.year = tag("date").left(4);
    return fallback;
}

// Without `probe` (a record for writing) the file's sound is not read: the
// facts are left out and `fallback` is not filled. The headers are read
// without FFmpeg where they can be; FFmpeg probes the rest. `info`, when
// given, receives the info dictionary TagLib read along with the sound.
IKImageItemPtr newAudioRecord(WindowedFile& file, AudioContainer container, bool probe,
                              FallbackTags* fallback, bool tagsWanted = true,
                              std::optional<TagLibInfo>* info = nullptr) {
    const QString path = file.fileName();
    auto item = std::make_shared<IKImageItem>();
    item->fileType = QStringLiteral("Audio");
    item->fileName = QFileInfo(path).fileName();
    item->filePath = path;
    if (file.isOpen())
        fillFileAttributes(*item, file.dates());
    else
        fillFileAttributes(*item);
    if (!probe) return item;
    if (auto facts = file.isOpen() ? readAudioFacts(file, container, tagsWanted, info != nullptr)
                                   : std::nullopt) {
        fillProbeFacts(*item, facts->facts, &file);
        *fallback = {facts->album, facts->year.left(4)};
        if (info) *info = std::move(facts->info);
        return item;
    }
    const OpenedMedia media(path, demuxerFor(container));
    fillProbeFacts(*item, probeMediaFile(media));
    *fallback = fallbackTags(media);
    return item;
}

// A probed record tells whether the file has a sound; the writers' record
// (not probed) does not judge.
IKImageItemPtr finish(IKImageItemPtr item, bool probe, bool opened) {
    if (!probe) return item;
    item->fileReadProblem = readProblemOf(*item, true, opened);
    logReadProblem(*item);
    return item;
}

// The info dictionary of the WAV reader, with the items the All Tags list
// shows for it and the artwork.
struct InfoDictionary {
    bool opened = false;
    AudioInfoEntries entries;
    QList<MetadataItem> items;
    QByteArray artwork;
};

// `known`: what TagLib has read already.
InfoDictionary readInfoDictionary(WindowedFile& file, AudioContainer container,
                                  const std::optional<TagLibInfo>& known) {
    InfoDictionary dict;
    auto take = [&](const TagLibInfo& info, const QString& space, bool riff) {
        dict.opened = info.opened;
        for (const auto& [name, value] : info.fields) {
            dict.items.append(audioTextItem(space, name, value));
            const AudioInfoKey* key =
                riff ? audioInfoKeyForRiff(name) : audioInfoKeyForVorbis(QString::fromUtf8(name));
            if (key) dict.entries.append({QString::fromLatin1(key->infoKey), value});
        }
        dict.artwork = info.artwork;
    };
    switch (container) {
        case AudioContainer::Wav: {
            take(known ? *known : readRiffInfo(file), QStringLiteral("riff"), true);
            // The ID3 chunk: listed, and its picture is the artwork.
            const QList<MetadataItem> id3 = id3ChunkMetadataItems(file, container);
            for (const MetadataItem& item : id3)
                if (item.key == "APIC")
                    dict.artwork = item.value.toMap().value(QStringLiteral("data")).toByteArray();
            dict.items += id3;
            break;
        }
        case AudioContainer::Flac:
            take(known ? *known : readFlacInfo(file), QStringLiteral("vorbis"), false);
            break;
        case AudioContainer::Caf:
            dict.opened = true;
            dict.items = cafFileMetadataItems(file);
            for (const MetadataItem& item : dict.items)
                dict.entries.append({QString::fromUtf8(item.key.mid(5)), item.value.toString()});
            break;
        case AudioContainer::Au:
            dict.opened = true;  // AU files have no info dictionary
            break;
        default:
            break;
    }
    return dict;
}

}  // namespace

IKImageItemPtr readSomeWAVAudioFileWithFilePath(const QString& path, bool probe) {
    FallbackTags fallback;
    WindowedFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    const AudioContainer container = opened ? sniffAudioContainer(file) : AudioContainer::Unknown;
    // The info dictionary below, not the generic tag, gives these files' tags.
    std::optional<TagLibInfo> known;
    IKImageItemPtr item = newAudioRecord(file, container, probe, &fallback, false, &known);
    if (!opened) {
        qCInfo(lcTagsmith) << "AudioFileOpenURL failed" << path;
        return finish(item, probe, opened);
    }
    const InfoDictionary dict = readInfoDictionary(file, container, known);
    if (!dict.opened) qCInfo(lcTagsmith) << "AudioFileOpenURL failed" << path;
    if (dict.entries.isEmpty())
        qCDebug(lcTagsmith) << "AudioFileGetProperty failed for property info dictionary";
    if (dict.artwork.size() > kMaxPictureBytes)
        qCInfo(lcTagsmith) << "picture too large, not shown ==" << dict.artwork.size() << "bytes";
    else if (!dict.artwork.isEmpty())
        item->fileImage = StoredPicture::fromData(dict.artwork);
    applyAudioInfoDictionary(*item, dict.entries);
    item->fileMetaArray = dict.items;
    return finish(item, probe, opened);
}

namespace {

IKImageItemPtr readByWalk(const QString& path, AudioItemTable table, bool probe) {
    FallbackTags fallback;
    WindowedFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    const AudioContainer container = opened ? sniffAudioContainer(file) : AudioContainer::Unknown;
    QList<MetadataItem> items;
    if (opened) items = audioMetadataItems(file, container);
    // The generic tag stands in only for a file without items.
    IKImageItemPtr item = newAudioRecord(file, container, probe, &fallback, items.isEmpty());
    if (items.isEmpty()) {
        // No items: what the file's headers give stands in.
        if (!probe) {
            const auto facts = opened ? readAudioFacts(file, container) : std::nullopt;
            fallback = facts ? FallbackTags{facts->album, facts->year.left(4)}
                             : fallbackTags(OpenedMedia(path, demuxerFor(container)));
        }
        if (!fallback.album.isEmpty()) item->fileAblumName = fallback.album;
        if (!fallback.year.isEmpty()) item->fileReleasedYear = fallback.year;
        return finish(item, probe, opened);
    }
    applyAudioMetadata(*item, items, table);
    item->fileMetaArray = items;
    return finish(item, probe, opened);
}

}  // namespace

IKImageItemPtr readSomeAiffAudioFileWithFilePath(const QString& path, bool probe) {
    return readByWalk(path, AudioItemTable::Aiff, probe);
}

IKImageItemPtr readSomeMp3AudioFileWithFilePath(const QString& path, bool probe) {
    return readByWalk(path, AudioItemTable::Mp3, probe);
}

IKImageItemPtr readAudioFile(const QString& path, bool probe) {
    switch (audioReaderForExtension(fileExtension(path))) {
        case AudioReader::Wav:
            return readSomeWAVAudioFileWithFilePath(path, probe);
        case AudioReader::Aiff:
            return readSomeAiffAudioFileWithFilePath(path, probe);
        case AudioReader::Mp3:
            break;
    }
    return readSomeMp3AudioFileWithFilePath(path, probe);
}
