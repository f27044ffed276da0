// SPDX-License-Identifier: GPL-3.0-or-later
// Exiv2's set-up and the name tables between Exiv2's keys and the
// dictionary's.
#include <QHash>
#include <QStringDecoder>

#include <mutex>

#include "core/common/logging.h"
#include "core/photo/photo_exiv2.h"

namespace photo_exiv2 {

namespace {

void logExiv2(int level, const char* text) {
    QString line = QString::fromUtf8(text).trimmed();
    if (line.isEmpty()) return;
    if (level >= Exiv2::LogMsg::error)
        qCInfo(lcTagsmith).noquote() << "Exiv2 error ==" << line;
    else
        qCDebug(lcTagsmith).noquote() << "Exiv2 ==" << line;
}

// The dataset names users of the dictionary know, beside Exiv2's.
const std::pair<const char*, const char*> kIptcNames[] = {
    {"ObjectName", "ObjectName"},
    {"Keywords", "Keywords"},
    {"Caption", "Caption/Abstract"},
    {"Byline", "By-line"},
    {"BylineTitle", "By-lineTitle"},
    {"Copyright", "CopyrightNotice"},
    {"DateCreated", "DateCreated"},
    {"TimeCreated", "TimeCreated"},
    {"City", "City"},
    {"SubLocation", "Sub-locationName"},
    {"ProvinceState", "Province/State"},
    {"CountryCode", "Country/PrimaryLocationCode"},
    {"CountryName", "Country/PrimaryLocationName"},
    {"Headline", "Headline"},
    {"Credit", "Credit"},
    {"Source", "Source"},
    {"Writer", "Writer/Editor"},
    {"SpecialInstructions", "SpecialInstructions"},
    {"Category", "Category"},
    {"SuppCategory", "SupplementalCategory"},
    {"Urgency", "Urgency"},
    {"TransmissionReference", "OriginalTransmissionReference"},
    {"Contact", "Contact"},
    {"ImageOrientation", "ImageOrientation"},
    {"Language", "LanguageIdentifier"},
    {"EditStatus", "EditStatus"},
    {"FixtureId", "FixtureIdentifier"},
    {"ReleaseDate", "ReleaseDate"},
    {"ReleaseTime", "ReleaseTime"},
    {"ExpirationDate", "ExpirationDate"},
    {"ExpirationTime", "ExpirationTime"},
    {"ReferenceService", "ReferenceService"},
    {"DigitizationDate", "DigitalCreationDate"},
    {"DigitizationTime", "DigitalCreationTime"},
    {"Program", "OriginatingProgram"},
    {"ProgramVersion", "ProgramVersion"},
    {"ObjectCycle", "ObjectCycle"},
    {"ActionAdvised", "ActionAdvised"},
    {"LocationCode", "ContentLocationCode"},
    {"LocationName", "ContentLocationName"},
    {"ObjectType", "ObjectTypeReference"},
    {"ObjectAttribute", "ObjectAttributeReference"},
    {"Subject", "SubjectReference"},
};

const std::pair<const char*, const char*> kExifNames[] = {
    {"SubSecTime", "SubsecTime"},
    {"SubSecTimeOriginal", "SubsecTimeOriginal"},
    {"SubSecTimeDigitized", "SubsecTimeDigitized"},
    {"FocalLengthIn35mmFilm", "FocalLenIn35mmFilm"},
};

const char* const kDescriptiveTiff[] = {
    "ImageDescription",
    "Make",
    "Model",
    "Software",
    "DateTime",
    "Artist",
    "HostComputer",
    "Copyright",
    "DocumentName",
    "PageName",
    "XPTitle",
    "XPComment",
    "XPAuthor",
    "XPKeywords",
    "XPSubject",
    "Rating",
    "RatingPercent",
    "ImageID",
    "CameraSerialNumber",
    "DateTimeOriginal",
    "LocalizedCameraModel",
    "ImageHistory",
    "SecurityClassification",
    "TargetPrinter",
    "ImageResources",
    "ImageNumber",
};

const char* const kStructuralTiff[] = {
    "StripOffsets",
    "StripByteCounts",
    "TileOffsets",
    "TileByteCounts",
    "ExifTag",
    "GPSTag",
    "IPTCNAA",
    "XMLPacket",
    "InterColorProfile",
    "ImageResources",
    "JPEGInterchangeFormat",
    "JPEGInterchangeFormatLength",
    "SubIFDs",
    "PrintImageMatching",
    "DNGPrivateData",
    "JPEGTables",
};

const std::pair<const char*, QString> kMakers[] = {
    {"Canon", PhotoGroup::MakerCanon},     {"Nikon", PhotoGroup::MakerNikon},
    {"Minolta", PhotoGroup::MakerMinolta}, {"Fujifilm", PhotoGroup::MakerFuji},
    {"Olympus", PhotoGroup::MakerOlympus}, {"Pentax", PhotoGroup::MakerPentax},
};

template <size_t N>
bool listed(const char* const (&table)[N], const std::string& name) {
    for (const char* entry : table)
        if (name == entry) return true;
    return false;
}

}  // namespace

void ensureInitialised() {
    static std::once_flag once;
    std::call_once(once, [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::warn);
        Exiv2::LogMsg::setHandler(logExiv2);
        // The XMP toolkit is not thread-safe: photos are read and written on
        // several threads, so its calls take turns.
        static std::mutex xmp;
        Exiv2::XmpParser::initialize(
            [](void* mutex, bool lock) {
                lock ? static_cast<std::mutex*>(mutex)->lock()
                     : static_cast<std::mutex*>(mutex)->unlock();
            },
            &xmp);
        Exiv2::enableBMFF(true);
    });
}

QString typeName(int imageType) {
    switch (imageType) {
        case Exiv2::ImageType::jpeg:
            return QStringLiteral("jpeg");
        case Exiv2::ImageType::png:
            return QStringLiteral("png");
        case Exiv2::ImageType::tiff:
            return QStringLiteral("tiff");
        case Exiv2::ImageType::webp:
            return QStringLiteral("webp");
        case Exiv2::ImageType::bmff:
            return QStringLiteral("heif");
        case Exiv2::ImageType::gif:
            return QStringLiteral("gif");
        case Exiv2::ImageType::bmp:
            return QStringLiteral("bmp");
        case Exiv2::ImageType::cr2:
        case Exiv2::ImageType::crw:
        case Exiv2::ImageType::mrw:
        case Exiv2::ImageType::orf:
        case Exiv2::ImageType::raf:
        case Exiv2::ImageType::rw2:
            return QStringLiteral("raw");
        case Exiv2::ImageType::psd:
            return QStringLiteral("psd");
        case Exiv2::ImageType::jp2:
            return QStringLiteral("jp2");
        default:
            return QStringLiteral("other");
    }
}

const QList<XmpEquivalent>& xmpEquivalents() {
    static const QList<XmpEquivalent> table{
        {QStringLiteral("ObjectName"), "Xmp.dc.title", Exiv2::langAlt},
        {QStringLiteral("Keywords"), "Xmp.dc.subject", Exiv2::xmpBag},
        {QStringLiteral("Caption/Abstract"), "Xmp.dc.description", Exiv2::langAlt},
        {QStringLiteral("By-line"), "Xmp.dc.creator", Exiv2::xmpSeq},
        {QStringLiteral("CopyrightNotice"), "Xmp.dc.rights", Exiv2::langAlt},
    };
    return table;
}

QString iptcDictionaryName(const std::string& exiv2Name) {
    for (const auto& [ours, theirs] : kIptcNames)
        if (exiv2Name == ours) return QLatin1String(theirs);
    return {};
}

std::string iptcExiv2Name(const QString& dictionaryName) {
    for (const auto& [ours, theirs] : kIptcNames)
        if (dictionaryName == QLatin1String(theirs)) return ours;
    return {};
}

QString exifDictionaryName(const std::string& exiv2Name) {
    for (const auto& [ours, theirs] : kExifNames)
        if (exiv2Name == ours) return QLatin1String(theirs);
    return QString::fromStdString(exiv2Name);
}

std::string exifExiv2Name(const QString& dictionaryName) {
    for (const auto& [ours, theirs] : kExifNames)
        if (dictionaryName == QLatin1String(theirs)) return ours;
    return dictionaryName.toStdString();
}

bool isDescriptiveTiffTag(const std::string& tagName) {
    return listed(kDescriptiveTiff, tagName);
}

bool isStructuralTiffTag(const std::string& tagName) {
    return listed(kStructuralTiff, tagName);
}

QString makerGroupOf(const std::string& exiv2Group) {
    for (const auto& [prefix, group] : kMakers)
        if (exiv2Group.rfind(prefix, 0) == 0) return group;
    return {};
}

QString textFromBytes(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    if (!utf8.hasError()) return text;
    return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
}

}  // namespace photo_exiv2
