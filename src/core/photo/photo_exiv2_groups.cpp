// SPDX-License-Identifier: GPL-3.0-or-later
// The dictionary's auxiliary groups over what Exiv2 read: "{ExifAux}",
// "{Raw}" and a TIFF's "{8BIM}".
#include <climits>
#include <unordered_map>
#include <vector>

#include "core/photo/photo_exiv2.h"
#include "core/photo/photo_file_groups.h"

namespace photo_exiv2 {

namespace {

// Where each "{ExifAux}" key is found, best first: the Exif tags, the XMP
// auxiliary namespace, then the maker notes that Exiv2 decodes.
struct AuxKey {
    const char* name;
    bool text;  // shown as text whatever the tag's type (serial numbers)
    std::initializer_list<const char*> sources;
};
const AuxKey kAuxKeys[] = {
    {"LensInfo", false, {"Exif.Photo.LensSpecification", "Xmp.aux.LensInfo"}},
    {"LensModel", true, {"Exif.Photo.LensModel", "Xmp.aux.Lens", "Exif.Canon.LensModel"}},
    {"LensID",
     false,
     {"Xmp.aux.LensID", "Exif.CanonCs.LensType", "Exif.NikonLd3.LensIDNumber",
      "Exif.NikonLd2.LensIDNumber", "Exif.NikonLd1.LensIDNumber"}},
    {"LensSerialNumber", true, {"Exif.Photo.LensSerialNumber", "Xmp.aux.LensSerialNumber"}},
    {"SerialNumber",
     true,
     {"Exif.Photo.BodySerialNumber", "Exif.Image.CameraSerialNumber", "Xmp.aux.SerialNumber",
      "Exif.Canon.SerialNumber", "Exif.Nikon3.SerialNumber", "Exif.Pentax.SerialNumber",
      "Exif.Fujifilm.SerialNumber", "Exif.OlympusEq.SerialNumber"}},
    {"ImageNumber",
     false,
     {"Exif.Image.ImageNumber", "Exif.Photo.0x9211", "Xmp.aux.ImageNumber",
      "Exif.Canon.FileNumber"}},
    {"FlashCompensation", false, {"Xmp.aux.FlashCompensation"}},
    {"OwnerName",
     true,
     {"Exif.Photo.CameraOwnerName", "Xmp.aux.OwnerName", "Exif.Canon.OwnerName"}},
    {"Firmware", true, {"Xmp.aux.Firmware", "Exif.Canon.FirmwareVersion"}},
};

// Source key -> (entry of kAuxKeys, rank among its sources).
const std::unordered_map<std::string, std::pair<int, int>>& auxSources() {
    static const auto table = [] {
        std::unordered_map<std::string, std::pair<int, int>> map;
        for (int i = 0; i < int(std::size(kAuxKeys)); ++i) {
            int rank = 0;
            for (const char* source : kAuxKeys[i].sources) map[source] = {i, rank++};
        }
        return map;
    }();
    return table;
}

// An XMP number is a text: "42", "-2/3".
QVariant xmpNumber(const QString& text) {
    const QStringList parts = text.trimmed().split(QLatin1Char('/'));
    bool ok = false, denominatorOk = parts.size() == 1;
    const double numerator = parts.value(0).toDouble(&ok);
    const double denominator = parts.size() == 2 ? parts[1].toDouble(&denominatorOk) : 1.0;
    if (!ok || !denominatorOk || denominator == 0) return text;
    return numerator / denominator;
}

QVariant auxValue(const AuxKey& key, const Exiv2::Value& value, bool xmp) {
    if (key.text) return textFromBytes(value.toString()).trimmed();
    if (!xmp) return dictionaryValue(value);
    const QString text = textFromBytes(value.toString());
    if (qstrcmp(key.name, "LensInfo") != 0) return xmpNumber(text);
    QVariantList numbers;
    for (const QString& part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        numbers << xmpNumber(part);
    return numbers;
}

void addExifAux(PropertyDictionary& properties, const Exiv2::Image& image) {
    const auto& sources = auxSources();
    QVariantMap group;
    std::vector<int> ranks(std::size(kAuxKeys), INT_MAX);
    const auto take = [&](const std::string& key, const Exiv2::Value& value, bool xmp) {
        const auto found = sources.find(key);
        if (found == sources.end()) return;
        const auto [entry, rank] = found->second;
        if (rank >= ranks[entry]) return;
        const QVariant v = auxValue(kAuxKeys[entry], value, xmp);
        if (!v.isValid() || (v.toString().isEmpty() && v.toList().isEmpty())) return;
        ranks[entry] = rank;
        group.insert(QLatin1String(kAuxKeys[entry].name), v);
    };
    for (const Exiv2::Exifdatum& datum : image.exifData()) take(datum.key(), datum.value(), false);
    for (const Exiv2::Xmpdatum& datum : image.xmpData())
        if (datum.key().rfind("Xmp.aux.", 0) == 0) take(datum.key(), datum.value(), true);
    if (!group.isEmpty()) properties.insert(PhotoGroup::ExifAux, group);
}

// A DNG's raw-data tags (from DNGVersion, 50706, on) describe the raw
// picture, not the photo: they are "{Raw}" rather than "{TIFF}".
void addRaw(PropertyDictionary& properties, const Exiv2::ExifData& exif) {
    QVariantMap raw, tiff = properties.value(PhotoGroup::TIFF).toMap();
    for (const Exiv2::Exifdatum& datum : exif) {
        if (datum.tag() < 50706 || datum.groupName() != "Image" ||
            isStructuralTiffTag(datum.tagName()))
            continue;
        const QString name = QString::fromStdString(datum.tagName());
        tiff.remove(name);
        if (const QVariant v = dictionaryValue(datum.value()); v.isValid() && !raw.contains(name))
            raw.insert(name, v);
    }
    if (raw.isEmpty()) return;
    properties.insert(PhotoGroup::Raw, raw);
    if (tiff.isEmpty())
        properties.remove(PhotoGroup::TIFF);
    else
        properties.insert(PhotoGroup::TIFF, tiff);
}

void addTiffImageResources(PropertyDictionary& properties, const Exiv2::ExifData& exif) {
    const auto found = exif.findKey(Exiv2::ExifKey("Exif.Image.ImageResources"));
    if (found == exif.end() || found->size() == 0) return;
    QByteArray bytes(qsizetype(found->size()), '\0');
    found->copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::bigEndian);
    const QVariantMap group = imageResourceProperties(bytes);
    if (!group.isEmpty()) properties.insert(PhotoGroup::EightBIM, group);
}

}  // namespace

void addAuxiliaryGroups(PropertyDictionary& properties, const Exiv2::Image& image) {
    addExifAux(properties, image);
    addRaw(properties, image.exifData());
    addTiffImageResources(properties, image.exifData());
}

void removeExifAux(Exiv2::Image& image) {
    const auto& sources = auxSources();
    Exiv2::ExifData& exif = image.exifData();
    for (auto it = exif.begin(); it != exif.end();)
        it = sources.count(it->key()) ? exif.erase(it) : std::next(it);
    Exiv2::XmpData& xmp = image.xmpData();
    for (auto it = xmp.begin(); it != xmp.end();)
        it = it->key().rfind("Xmp.aux.", 0) == 0 ? xmp.erase(it) : std::next(it);
}

}  // namespace photo_exiv2
