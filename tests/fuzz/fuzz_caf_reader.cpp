// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for our CAF code: any bytes, read as a CAF file, give a
// chunk list and info items without a crash, a sanitizer report or a hang;
// the items then fill a record as the import does. Where a copy with a new
// info chunk can be written, it must read back with exactly that chunk and
// the same chunks otherwise.

#include <QBuffer>
#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>

#include "core/audio/audio_items.h"
#include "core/audio/audio_readers.h"
#include "core/audio/caf_file.h"
#include "core/library/ik_image_item.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    QLoggingCategory::setFilterRules(QStringLiteral("tagsmith.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    const CafLayout layout = readCafLayout(in);
    for (const CafChunk& chunk : layout.chunks)
        if (chunk.offset < 8 || chunk.size < 0 || chunk.end() > qint64(size)) __builtin_trap();
    const QList<MetadataItem> items = cafFileMetadataItems(in);
    IKImageItem record;
    applyAudioMetadata(record, items, AudioItemTable::Aiff);

    const CafInfo info = {{QStringLiteral("title"), QStringLiteral("T\u00e9")},
                          {QStringLiteral("track number"), QStringLiteral("1")}};
    QByteArray outBytes;
    QBuffer out(&outBytes);
    out.open(QIODevice::WriteOnly);
    if (!writeCafCopyWithInfo(in, out, info, nullptr)) return 0;
    out.close();
    out.open(QIODevice::ReadOnly);
    const CafLayout copied = readCafLayout(out);
    if (!copied.problem.isEmpty() || readCafInfo(out, copied) != info) __builtin_trap();
    qsizetype others = 0;
    for (const CafChunk& chunk : layout.chunks) others += chunk.type != "info";
    for (const CafChunk& chunk : copied.chunks) others -= chunk.type != "info";
    if (others != 0) __builtin_trap();
    return 0;
}
