// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the ID3 frame lister and the TagLib read adapter:
// any bytes, read as an ID3v2 tag, as a whole audio file (leading and
// trailing tags, WAV and AIFF ID3 chunks) and through TagLib as WAV and FLAC,
// give frames, items and byte ranges without a crash, a sanitizer report or
// a hang. Every range lies inside the file, in order, and none overlaps.

#include <QBuffer>
#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>

#include "core/audio/audio_items.h"
#include "core/audio/audio_readers.h"
#include "core/audio/id3_frames.h"
#include "core/audio/taglib_info.h"
#include "core/library/ik_image_item.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    QLoggingCategory::setFilterRules(QStringLiteral("tagsmith.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    IKImageItem record;
    applyAudioMetadata(record, id3MetadataItems(parseId3v2Tag(bytes)), AudioItemTable::Mp3);

    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const FileTagRanges ranges = findTagRanges(file);
    qint64 at = 0;
    auto next = [&](const TagByteRange& r) {
        if (r.offset < at || r.size <= 0) __builtin_trap();
        at = r.offset + r.size;
    };
    for (const TagByteRange& r : ranges.leading) next(r);
    if (ranges.audioBegin != at || ranges.audioEnd < at) __builtin_trap();
    at = ranges.audioEnd;
    for (const TagByteRange& r : ranges.trailing) next(r);
    if (at != (ranges.trailing.isEmpty() ? ranges.audioEnd : qint64(size))) __builtin_trap();

    const AudioContainer container = sniffAudioContainer(file);
    applyAudioMetadata(record, audioMetadataItems(file, container), AudioItemTable::Aiff);
    readRiffInfoFromData(bytes);
    readFlacInfoFromData(bytes);
    return 0;
}
