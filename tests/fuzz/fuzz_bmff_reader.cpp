// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the movie metadata reader: any bytes, read as a whole
// file, must give a list of items without a crash, a sanitizer report or a
// hang. The date and location rules then run on every text value found, as
// the import does.

#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>

#include "core/library/ik_image_item.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/video_metadata_rules.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The reader logs damage; thousands of runs a second need no log.
    QLoggingCategory::setFilterRules(QStringLiteral("tagsmith.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<MetadataItem> items = readMovieMetadataFromData(bytes);
    IKImageItem record;
    for (const MetadataItem& item : items) {
        if (item.identifier != metadataIdentifier(item.keySpace, item.key)) __builtin_trap();
        // An item just read stands for the bytes it came from.
        if (item.origin.form != MetadataOrigin::Form::None &&
            (!item.isUnchanged() || item.origin.bytes().isEmpty())) {
            __builtin_trap();
        }
        if (item.value.typeId() != QMetaType::QString) continue;
        const QString text = item.value.toString();
        applyVideoDateText(record, text);
        applyIso6709Location(record, text);
    }
    return 0;
}
