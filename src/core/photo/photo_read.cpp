// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a photo's dictionary through Exiv2 (and Qt's image readers for
// what Exiv2 does not expose: pixel size, page count, PNG texts).
#include <QBuffer>
#include <QColorSpace>
#include <QCoreApplication>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <cmath>

#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_exiv2.h"
#include "core/photo/photo_file_groups.h"
#include "core/photo/photo_file_io.h"

using namespace photo_exiv2;

namespace {

// Longer lists than this (tables, curves, blobs) are not listed.
constexpr long kMaxListed = 256;

double rationalValue(const Exiv2::Value& value, long i) {
    const Exiv2::Rational r = value.toRational(i);
    return r.second == 0 ? 0.0 : double(r.first) / double(r.second);
}

bool isRationalType(Exiv2::TypeId type) {
    return type == Exiv2::unsignedRational || type == Exiv2::signedRational ||
           type == Exiv2::tiffFloat || type == Exiv2::tiffDouble;
}

// An Exiv2 value as the dictionary holds it; invalid when it is not listed.
QVariant variantOf(const Exiv2::Value& value) {
    const long count = value.count();
    const Exiv2::TypeId type = value.typeId();
    switch (type) {
        case Exiv2::asciiString:
        case Exiv2::string:
        case Exiv2::date:
        case Exiv2::time:
        case Exiv2::xmpText:
            return textFromBytes(value.toString()).trimmed();
        case Exiv2::comment: {
            const auto* comment = dynamic_cast<const Exiv2::CommentValue*>(&value);
            return comment ? textFromBytes(comment->comment()).trimmed() : QVariant();
        }
        default:
            break;
    }
    if (count <= 0 || count > kMaxListed) return {};
    if (type == Exiv2::undefined && count > 16) return {};
    QVariantList list;
    for (long i = 0; i < count; ++i) {
        if (isRationalType(type))
            list << rationalValue(value, i);
        else
            list << qlonglong(value.toLong(i));
    }
    if (type == Exiv2::undefined) return list;
    return list.size() == 1 ? list.first() : QVariant(list);
}

// A comment's text after its character-set header, whatever type the file
// gave the tag.
QString commentOf(const Exiv2::Value& value) {
    if (const auto* comment = dynamic_cast<const Exiv2::CommentValue*>(&value))
        return textFromBytes(comment->comment()).trimmed();
    Exiv2::DataBuf bytes(value.size());
    value.copy(bytes.pData_, Exiv2::littleEndian);
    Exiv2::CommentValue comment;
    comment.read(bytes.pData_, bytes.size_, Exiv2::littleEndian);
    return textFromBytes(comment.comment()).remove(QChar(0)).trimmed();
}

// Degrees, minutes and seconds as one number; unsigned, as the reference
// carries the hemisphere (a damaged file may hold negative parts).
double degreesOf(const Exiv2::Value& value) {
    double degrees = 0;
    for (long i = 0; i < value.count() && i < 3; ++i)
        degrees += rationalValue(value, i) / std::pow(60.0, double(i));
    return std::fabs(degrees);
}

QString timeStampOf(const Exiv2::Value& value) {
    if (value.count() < 3) return {};
    const double seconds = rationalValue(value, 2);
    const int whole = int(std::floor(seconds));
    QString text = QStringLiteral("%1:%2:%3")
                       .arg(int(rationalValue(value, 0)), 2, 10, QLatin1Char('0'))
                       .arg(int(rationalValue(value, 1)), 2, 10, QLatin1Char('0'))
                       .arg(whole, 2, 10, QLatin1Char('0'));
    if (seconds > whole) text += QString::number(seconds - whole, 'g', 6).mid(1);
    return text;
}

void addGpsEntry(QVariantMap& gps, const Exiv2::Exifdatum& datum) {
    std::string tag = datum.tagName();
    if (tag.rfind("GPS", 0) == 0) tag = tag.substr(3);
    QString name = QString::fromStdString(tag);
    if (name == QLatin1String("VersionID")) name = QStringLiteral("Version");
    const Exiv2::Value& value = datum.value();
    if (name.endsWith(QLatin1String("Latitude")) || name.endsWith(QLatin1String("Longitude")))
        gps.insert(name, degreesOf(value));
    else if (name == QLatin1String("Altitude"))  // unsigned beside AltitudeRef
        gps.insert(name, value.count() > 0 ? std::fabs(rationalValue(value, 0)) : 0.0);
    else if (name == QLatin1String("TimeStamp"))
        gps.insert(name, timeStampOf(value));
    else if (name == QLatin1String("Version"))
        gps.insert(name, variantOf(value).toList());
    else if (const QVariant v = variantOf(value); v.isValid())
        gps.insert(name, v);
}

void addExif(PropertyDictionary& properties, const Exiv2::ExifData& exif) {
    QMap<QString, QVariantMap> groups;
    for (const Exiv2::Exifdatum& datum : exif) {
        const std::string group = datum.groupName();
        const std::string tag = datum.tagName();
        if (group == "GPSInfo") {
            addGpsEntry(groups[PhotoGroup::GPS], datum);
            continue;
        }
        QString target;
        QString name = QString::fromStdString(tag);
        if (group == "Image") {
            if (isStructuralTiffTag(tag)) continue;
            target = PhotoGroup::TIFF;
        } else if (group == "Photo") {
            if (tag == "MakerNote" || tag == "InteroperabilityTag") continue;
            target = PhotoGroup::Exif;
            name = exifDictionaryName(tag);
        } else {
            target = makerGroupOf(group);
            if (target.isEmpty()) continue;
        }
        QVariantMap& map = groups[target];
        if (map.contains(name)) continue;
        if (tag == "UserComment") {
            map.insert(name, commentOf(datum.value()));
        } else if (const QVariant v = variantOf(datum.value()); v.isValid()) {
            map.insert(name, v);
        }
    }
    for (auto it = groups.cbegin(); it != groups.cend(); ++it)
        if (!it.value().isEmpty()) properties.insert(it.key(), it.value());
}

// The texts of an XMP property: the default language of an alternative,
// every item of a list.
QStringList xmpTexts(const Exiv2::Value& value) {
    if (const auto* alt = dynamic_cast<const Exiv2::LangAltValue*>(&value)) {
        auto it = alt->value_.find("x-default");
        if (it == alt->value_.end()) it = alt->value_.begin();
        return it == alt->value_.end() ? QStringList() : QStringList{textFromBytes(it->second)};
    }
    QStringList texts;
    for (long i = 0; i < value.count() && i < kMaxListed; ++i)
        texts << textFromBytes(value.toString(i));
    return texts;
}

void addIptc(PropertyDictionary& properties, const Exiv2::IptcData& iptc,
             const Exiv2::XmpData& xmp) {
    QVariantMap group;
    for (const Exiv2::Iptcdatum& datum : iptc) {
        if (datum.recordName() != "Application2") continue;
        QString name = iptcDictionaryName(datum.tagName());
        if (name.isEmpty()) name = QString::fromStdString(datum.tagName());
        const QString text = textFromBytes(datum.toString()).trimmed();
        if (name == QLatin1String("Keywords")) {
            QVariantList words = group.value(name).toList();
            group.insert(name, words << text);
        } else if (group.contains(name)) {
            QVariant& existing = group[name];
            QVariantList list = existing.typeId() == QMetaType::QVariantList
                                    ? existing.toList()
                                    : QVariantList{existing};
            existing = list << text;
        } else {
            group.insert(name, text);
        }
    }
    // Where IPTC lacks a field (or the type holds none), XMP says it.
    for (const XmpEquivalent& equivalent : xmpEquivalents()) {
        const auto found = xmp.findKey(Exiv2::XmpKey(equivalent.xmp));
        if (group.contains(equivalent.iptc) || found == xmp.end()) continue;
        const QStringList texts = xmpTexts(found->value());
        if (texts.isEmpty()) continue;
        if (equivalent.iptc == QLatin1String("Keywords"))
            group.insert(equivalent.iptc, QVariant(texts).toList());
        else
            group.insert(equivalent.iptc, texts.first());
    }
    if (!group.isEmpty()) properties.insert(PhotoGroup::IPTC, group);
}

// A JFIF segment right after the start of a JPEG: version and density.
void addJfif(PropertyDictionary& properties, const QByteArray& head) {
    if (head.size() < 18 || !head.startsWith("\xff\xd8\xff\xe0") ||
        head.mid(6, 5) != QByteArray("JFIF\0", 5))
        return;
    const auto* b = reinterpret_cast<const uchar*>(head.constData());
    const QVariantMap jfif{
        {QStringLiteral("JFIFVersion"), QVariantList{int(b[11]), int(b[12])}},
        {QStringLiteral("DensityUnit"), int(b[13])},
        {QStringLiteral("XDensity"), int(qFromBigEndian<quint16>(b + 14))},
        {QStringLiteral("YDensity"), int(qFromBigEndian<quint16>(b + 16))},
    };
    properties.insert(PhotoGroup::JFIF, jfif);
}

// What Qt's reader tells without decoding: size, pages, PNG texts, depth.
void addFromQtReader(PhotoSource& source, QIODevice& device) {
    QImageReader reader(&device);
    reader.setAutoTransform(false);
    PropertyDictionary& properties = source.properties;
    if (!properties.contains(QStringLiteral("PixelWidth")) && reader.canRead()) {
        const QSize size = reader.size();
        if (size.isValid()) {
            properties.insert(QStringLiteral("PixelWidth"), qlonglong(size.width()));
            properties.insert(QStringLiteral("PixelHeight"), qlonglong(size.height()));
        }
    }
    if (source.type == QLatin1String("tiff")) source.imageCount = qMax(1, reader.imageCount());
    const QImage::Format format = reader.imageFormat();
    // A damaged file can make a reader answer a number outside the format list.
    if (format > QImage::Format_Invalid && format < QImage::NImageFormats) {
        const QPixelFormat pixels = QImage::toPixelFormat(format);
        const bool gray = pixels.colorModel() == QPixelFormat::Grayscale ||
                          format == QImage::Format_Mono || format == QImage::Format_MonoLSB;
        properties.insert(QStringLiteral("ColorModel"),
                          gray ? QStringLiteral("Gray") : QStringLiteral("RGB"));
        properties.insert(QStringLiteral("Depth"),
                          qlonglong(gray ? pixels.bitsPerPixel() : pixels.redSize()));
        properties.insert(QStringLiteral("HasAlpha"),
                          pixels.alphaUsage() == QPixelFormat::UsesAlpha);
    }
    if (source.type == QLatin1String("png")) {
        QVariantMap png;
        for (const QString& key : reader.textKeys()) {
            if (key.startsWith(QLatin1String("Raw profile")) ||
                key.startsWith(QLatin1String("XML:")))
                continue;
            png.insert(key, reader.text(key));
        }
        if (!png.isEmpty()) properties.insert(PhotoGroup::PNG, png);
    }
}

void addTopLevel(PropertyDictionary& properties, Exiv2::Image& image) {
    if (image.pixelWidth() > 0 && image.pixelHeight() > 0) {
        properties.insert(QStringLiteral("PixelWidth"), qlonglong(image.pixelWidth()));
        properties.insert(QStringLiteral("PixelHeight"), qlonglong(image.pixelHeight()));
    }
    if (image.iccProfileDefined()) {
        const Exiv2::DataBuf* icc = image.iccProfile();
        const QColorSpace space = QColorSpace::fromIccProfile(
            QByteArray(reinterpret_cast<const char*>(icc->pData_), icc->size_));
        if (space.isValid() && !space.description().isEmpty())
            properties.insert(QStringLiteral("ProfileName"), space.description());
    }
    const Exiv2::ExifData& exif = image.exifData();
    const auto orientation = exif.findKey(Exiv2::ExifKey("Exif.Image.Orientation"));
    if (orientation != exif.end() && orientation->count() > 0)
        properties.insert(QStringLiteral("Orientation"), qlonglong(orientation->toLong()));
    const auto x = exif.findKey(Exiv2::ExifKey("Exif.Image.XResolution"));
    const auto y = exif.findKey(Exiv2::ExifKey("Exif.Image.YResolution"));
    const auto unit = exif.findKey(Exiv2::ExifKey("Exif.Image.ResolutionUnit"));
    if (x != exif.end() && y != exif.end() && x->count() > 0 && y->count() > 0) {
        const double scale = unit != exif.end() && unit->toLong() == 3 ? 2.54 : 1.0;
        properties.insert(QStringLiteral("DPIWidth"), rationalValue(x->value(), 0) * scale);
        properties.insert(QStringLiteral("DPIHeight"), rationalValue(y->value(), 0) * scale);
    }
}

PhotoSource readWith(Exiv2::Image::AutoPtr (*open)(const void*), const void* argument,
                     QIODevice* device, const QString& label) {
    ensureInitialised();
    PhotoSource source;
    try {
        Exiv2::Image::AutoPtr image = open(argument);
        if (!image.get()) throw Exiv2::Error(Exiv2::kerFileContainsUnknownImageType);
        // Exiv2's video readers are no photo readers, and its RIFF reader never
        // ends on some damaged files: movies are refused here. (Their type
        // numbers, from riffvideo.hpp, matroskavideo.hpp, quicktimevideo.hpp
        // and asfvideo.hpp, which do not compile on their own.)
        const int type = image->imageType();
        if (type == 20 || type == 21 || type == 22 || type == 24)
            throw Exiv2::Error(Exiv2::kerFileContainsUnknownImageType);
        image->readMetadata();
        const QSize heifSize = readHeifMetadata(*image);
        source.type = typeName(image->imageType());
        source.imageCount = 1;
        const Exiv2::AccessMode mode =
            Exiv2::ImageFactory::checkMode(image->imageType(), Exiv2::mdExif);
        source.writable =
            isHeif(*image) || (image->imageType() != Exiv2::ImageType::bmff &&
                               (mode == Exiv2::amReadWrite || mode == Exiv2::amWrite));
        addTopLevel(source.properties, *image);
        if (heifSize.isValid() && !heifSize.isEmpty()) {
            source.properties.insert(QStringLiteral("PixelWidth"), qlonglong(heifSize.width()));
            source.properties.insert(QStringLiteral("PixelHeight"), qlonglong(heifSize.height()));
        }
        addExif(source.properties, image->exifData());
        addIptc(source.properties, image->iptcData(), image->xmpData());
        addAuxiliaryGroups(source.properties, *image);
    } catch (const Exiv2::AnyError& error) {
        qCInfo(lcTagsmith).noquote()
            << "photo not read ==" << label << "== Exiv2 error" << error.code() << error.what();
        source.problem = error.code() == Exiv2::kerFileContainsUnknownImageType ||
                                 error.code() == Exiv2::kerNotAnImage
                             ? PhotoProperties::tr("The file is not a photo this program can read.")
                             : PhotoProperties::tr("The photo is damaged or incomplete.");
        return source;
    } catch (const std::exception& error) {
        qCInfo(lcTagsmith).noquote() << "photo not read ==" << label << "==" << error.what();
        source.problem = PhotoProperties::tr("The photo is damaged or incomplete.");
        return source;
    } catch (...) {
        qCInfo(lcTagsmith).noquote() << "photo not read ==" << label;
        source.problem = PhotoProperties::tr("The photo is damaged or incomplete.");
        return source;
    }
    if (device && device->open(QIODevice::ReadOnly)) {
        if (source.type == QLatin1String("jpeg")) addJfif(source.properties, device->peek(20));
        addFileGroups(source, *device);
        addFromQtReader(source, *device);
    }
    return source;
}

}  // namespace

QVariant photo_exiv2::dictionaryValue(const Exiv2::Value& value) {
    return variantOf(value);
}

PhotoSource readPhotoProperties(const QString& path, bool pictureFacts) {
    QFile file(path);
    if (!isRegularFile(path))
        return {{},
                {},
                0,
                false,
                PhotoProperties::tr("The file does not exist or is not a regular file.")};
    if (file.size() == 0) return {{}, {}, 0, false, PhotoProperties::tr("The file is empty.")};
    const std::string name = QFile::encodeName(path).toStdString();
    PhotoSource source = readWith(
        [](const void* p) {
            return Exiv2::ImageFactory::open(
                Exiv2::BasicIo::AutoPtr(new PhotoFileIo(*static_cast<const std::string*>(p))));
        },
        &name, pictureFacts ? &file : nullptr, path);
    // A camera raw built on TIFF (DNG, NEF, ...) is a raw all the same.
    if (source.ok() && GetImageType(fileExtension(path).toUtf8().constData()) >= 0) {
        source.type = QStringLiteral("raw");
        source.imageCount = 1;
    }
    return source;
}

PhotoSource readPhotoPropertiesFromData(const QByteArray& data) {
    QByteArray copy = data;
    QBuffer buffer(&copy);
    if (data.isEmpty()) return {{}, {}, 0, false, PhotoProperties::tr("The file is empty.")};
    return readWith(
        [](const void* p) {
            const auto* bytes = static_cast<const QByteArray*>(p);
            return Exiv2::ImageFactory::open(
                reinterpret_cast<const Exiv2::byte*>(bytes->constData()), long(bytes->size()));
        },
        &data, &buffer, QStringLiteral("(data)"));
}
