// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the photo property reader (Exiv2 behind our adapter):
// any bytes give a dictionary or a problem without a crash, a sanitizer
// report, an escaped exception or a hang. A dictionary read then fills the
// outline, the photo panel and a photo record as photo mode does, and keeps
// the documented value forms (unsigned GPS magnitudes, groups as maps).

#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "core/library/ik_image_item.h"
#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_import.h"
#include "core/photo/photo_writers.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")
Q_LOGGING_CATEGORY(lcTagsmithUser, "tagsmith.user")

namespace {

void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "fuzz_photo_properties: %s\n", what);
    __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Exiv2's and the image plug-ins' complaints about every damaged input
    // would only slow the run down.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const PhotoSource source = readPhotoPropertiesFromData(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!source.ok()) return 0;
    const PropertyDictionary& properties = source.properties;
    for (auto it = properties.begin(); it != properties.end(); ++it)
        if (it.key().startsWith(QLatin1Char('{')))
            check(it->typeId() == QMetaType::QVariantMap, "a group that is not a map");
    const QVariantMap gps = properties.value(PhotoGroup::GPS).toMap();
    for (const char* key : {"Latitude", "Longitude", "Altitude"})
        if (gps.contains(QLatin1String(key)))
            check(!(gps.value(QLatin1String(key)).toDouble() < 0), "a signed GPS magnitude");
    check(source.imageCount >= 0, "a negative image count");

    (void)propTree(properties);
    (void)photoEditorStateFor(properties);
    double latitude = 0, longitude = 0;
    (void)photoPosition(properties, &latitude, &longitude);
    IKImageItem record;
    fillPhotoRecord(record, source);
    (void)photoPanelTextsFor(record, properties);
    return 0;
}
