// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a dictionary edit into a copy of a photo through Exiv2: the
// source's bytes are opened in memory, the metadata changed and written
// there, and the result saved to the target. The picture data are copied
// by Exiv2 as they are; HEIC and AVIF through our own item rewriter.
#include <QBuffer>
#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <QImageReader>

#include <algorithm>
#include <cmath>

#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/photo/photo_exiv2.h"
#include "core/photo/photo_file_groups.h"
#include "core/photo/photo_png_text.h"

using namespace photo_exiv2;

namespace {

// Photos are edited in memory; larger files are refused.
constexpr qint64 kMaxPhotoBytes = qint64(1) << 30;

bool isAscii(const QString& text) {
    for (const QChar c : text)
        if (c.unicode() > 0x7f) return false;
    return true;
}

Exiv2::Rational rationalOf(double value, int denominator = 10000) {
    return {int(std::lround(value * denominator)), denominator};
}

// The value of a tag written from the dictionary's form.
Exiv2::Value::AutoPtr valueFor(Exiv2::TypeId type, const QVariant& variant) {
    Exiv2::Value::AutoPtr value = Exiv2::Value::create(type);
    if (type == Exiv2::comment) {
        const QString text = variant.toString();
        value->read((isAscii(text) ? "charset=Ascii " : "charset=Unicode ") + text.toStdString());
        return value;
    }
    if (type == Exiv2::asciiString || type == Exiv2::string || type == Exiv2::xmpText) {
        value->read(variant.toString().toStdString());
        return value;
    }
    const QVariantList items =
        variant.typeId() == QMetaType::QVariantList ? variant.toList() : QVariantList{variant};
    std::string text;
    for (const QVariant& item : items) {
        if (!text.empty()) text += ' ';
        if (type == Exiv2::unsignedRational || type == Exiv2::signedRational) {
            const Exiv2::Rational r = rationalOf(item.toDouble());
            text += std::to_string(r.first) + '/' + std::to_string(r.second);
        } else {
            text += item.toString().toStdString();
        }
    }
    if (value->read(text) != 0) throw Exiv2::Error(Exiv2::kerInvalidTypeValue);
    return value;
}

void setExif(Exiv2::ExifData& exif, const std::string& name, const QVariant& variant) {
    const Exiv2::ExifKey key(name);
    for (auto it = exif.findKey(key); it != exif.end(); it = exif.findKey(key)) exif.erase(it);
    if (variant.isNull()) return;
    exif.add(key, valueFor(key.defaultTypeId(), variant).get());
}

// Degrees as degrees, minutes and seconds.
void setDegrees(Exiv2::ExifData& exif, const std::string& name, double degrees) {
    degrees = std::fabs(degrees);
    const double whole = std::floor(degrees);
    const double minutes = std::floor((degrees - whole) * 60.0);
    const double seconds = (degrees - whole - minutes / 60.0) * 3600.0;
    Exiv2::URationalValue value;
    value.value_ = {{uint32_t(whole), 1},
                    {uint32_t(minutes), 1},
                    {uint32_t(std::lround(seconds * 10000)), 10000}};
    exif[name].setValue(&value);
}

void setGps(Exiv2::ExifData& exif, const QString& key, const QVariant& variant) {
    QString tag = key == QLatin1String("Version") ? QStringLiteral("VersionID") : key;
    const std::string name = "Exif.GPSInfo.GPS" + tag.toStdString();
    if (variant.isNull()) {
        setExif(exif, name, {});
        return;
    }
    if (key.endsWith(QLatin1String("Latitude")) || key.endsWith(QLatin1String("Longitude"))) {
        setDegrees(exif, name, variant.toDouble());
    } else if (key == QLatin1String("TimeStamp")) {
        const QStringList parts = variant.toString().split(QLatin1Char(':'));
        bool ok[3] = {false, false, false};
        const double h = parts.value(0).toDouble(&ok[0]), m = parts.value(1).toDouble(&ok[1]),
                     s = parts.value(2).toDouble(&ok[2]);
        if (parts.size() != 3 || !ok[0] || !ok[1] || !ok[2] || h < 0 || h >= 24 || m < 0 ||
            m >= 60 || s < 0 || s >= 61) {
            qCInfo(lcTagsmith) << "GPS time stamp not a time, not written ==" << variant;
            return;
        }
        Exiv2::URationalValue value;
        value.value_ = {
            {uint32_t(h), 1}, {uint32_t(m), 1}, {uint32_t(std::lround(s * 1000)), 1000}};
        exif[name].setValue(&value);
    } else if (key == QLatin1String("DateStamp")) {
        QString date = variant.toString().trimmed();
        date.replace(QLatin1Char('-'), QLatin1Char(':'));
        if (!QDate::fromString(date, QStringLiteral("yyyy:MM:dd")).isValid()) {
            qCInfo(lcTagsmith) << "GPS date stamp not a date, not written ==" << variant;
            return;
        }
        setExif(exif, name, date);
    } else if (key == QLatin1String("Altitude")) {
        setExif(exif, name, std::fabs(variant.toDouble()));
    } else {
        setExif(exif, name, variant);
    }
}

void eraseExifIf(Exiv2::ExifData& exif, const std::function<bool(const Exiv2::Exifdatum&)>& test) {
    for (auto it = exif.begin(); it != exif.end();) it = test(*it) ? exif.erase(it) : std::next(it);
}

void eraseXmpIf(Exiv2::XmpData& xmp, const std::function<bool(const std::string&)>& test) {
    for (auto it = xmp.begin(); it != xmp.end();)
        it = test(it->key()) ? xmp.erase(it) : std::next(it);
}

// WebP, HEIC and AVIF hold no IPTC: its XMP equivalents stand for it.
bool holdsIptc(const Exiv2::Image& image) {
    return image.imageType() != Exiv2::ImageType::webp &&
           image.imageType() != Exiv2::ImageType::bmff;
}

void removeGroup(Exiv2::Image& image, const QString& group) {
    Exiv2::ExifData& exif = image.exifData();
    if (group == PhotoGroup::Exif) {
        eraseExifIf(exif, [](const Exiv2::Exifdatum& d) {
            const std::string g = d.groupName();
            return g == "Photo" || g == "Iop" || g == "MakerNote" ||
                   Exiv2::ExifTags::isMakerGroup(g);
        });
    } else if (group == PhotoGroup::GPS) {
        eraseExifIf(exif, [](const Exiv2::Exifdatum& d) { return d.groupName() == "GPSInfo"; });
    } else if (group == PhotoGroup::TIFF) {
        eraseExifIf(exif, [](const Exiv2::Exifdatum& d) {
            return d.groupName() == "Image" && isDescriptiveTiffTag(d.tagName());
        });
    } else if (group == PhotoGroup::IPTC) {
        image.iptcData().clear();
        if (!holdsIptc(image))
            for (const XmpEquivalent& e : xmpEquivalents())
                eraseXmpIf(image.xmpData(), [&](const std::string& k) { return k == e.xmp; });
    } else if (group == PhotoGroup::EightBIM) {
        setExif(exif, "Exif.Image.ImageResources", {});
    } else if (group == PhotoGroup::ExifAux) {
        removeExifAux(image);
    } else if (group == PhotoGroup::PNG) {
        image.clearComment();
    } else if (group.startsWith(QLatin1String("{Maker"))) {
        bool present = false;
        for (const Exiv2::Exifdatum& d : exif) present |= makerGroupOf(d.groupName()) == group;
        if (present)
            eraseExifIf(exif, [](const Exiv2::Exifdatum& d) {
                const std::string g = d.groupName();
                return g == "MakerNote" || Exiv2::ExifTags::isMakerGroup(g) ||
                       (g == "Photo" && d.tagName() == "MakerNote");
            });
    }
}

QString langAltText(const QString& text) {
    return QStringLiteral("lang=x-default ") + text;
}

// An IPTC value, or where the type holds no IPTC (or XMP already holds the
// field, which readers prefer) its XMP equivalent too.
void setIptc(Exiv2::Image& image, const QString& key, const QVariant& variant, bool iptcAllowed) {
    const QStringList texts =
        variant.typeId() == QMetaType::QVariantList
            ? variant.toStringList()
            : (variant.isNull() ? QStringList() : QStringList{variant.toString()});
    if (iptcAllowed) {
        const std::string name = iptcExiv2Name(key);
        if (name.empty()) {
            qCInfo(lcTagsmith) << "no IPTC dataset, not written ==" << key;
        } else {
            Exiv2::IptcData& iptc = image.iptcData();
            const Exiv2::IptcKey iptcKey("Iptc.Application2." + name);
            for (auto it = iptc.findKey(iptcKey); it != iptc.end(); it = iptc.findKey(iptcKey))
                iptc.erase(it);
            for (const QString& text : texts) {
                Exiv2::StringValue value(text.toStdString());
                iptc.add(iptcKey, &value);
                if (!isAscii(text)) iptc["Iptc.Envelope.CharacterSet"] = "\x1b%G";
            }
        }
    }
    const auto& table = xmpEquivalents();
    const auto xmp = std::find_if(table.cbegin(), table.cend(),
                                  [&](const XmpEquivalent& e) { return e.iptc == key; });
    if (xmp == table.cend()) return;
    Exiv2::XmpData& data = image.xmpData();
    const Exiv2::XmpKey xmpKey(xmp->xmp);
    const bool present = data.findKey(xmpKey) != data.end();
    if (iptcAllowed && !present) return;
    eraseXmpIf(data, [&](const std::string& k) { return k == xmp->xmp; });
    if (texts.isEmpty()) return;
    Exiv2::Value::AutoPtr value = Exiv2::Value::create(xmp->type);
    for (const QString& text : texts)
        value->read((xmp->type == Exiv2::langAlt ? langAltText(text) : text).toStdString());
    data.add(xmpKey, value.get());
}

void applyEdit(Exiv2::Image& image, const PropertyEdit& edit) {
    for (const QString& group : edit.removedGroups) removeGroup(image, group);
    if (edit.removeXmp) {
        image.xmpData().clear();
        image.clearXmpPacket();
    } else if (edit.removeXmpGps) {
        eraseXmpIf(image.xmpData(),
                   [](const std::string& k) { return k.rfind("Xmp.exif.GPS", 0) == 0; });
    }
    const bool iptcAllowed = holdsIptc(image);
    Exiv2::ExifData& exif = image.exifData();
    for (auto group = edit.values.cbegin(); group != edit.values.cend(); ++group) {
        for (auto it = group.value().cbegin(); it != group.value().cend(); ++it) {
            const QString& key = it.key();
            try {
                if (group.key().isEmpty())
                    setExif(exif, "Exif.Image." + key.toStdString(), it.value());
                else if (group.key() == PhotoGroup::TIFF)
                    setExif(exif, "Exif.Image." + key.toStdString(), it.value());
                else if (group.key() == PhotoGroup::Exif)
                    setExif(exif, "Exif.Photo." + exifExiv2Name(key), it.value());
                else if (group.key() == PhotoGroup::GPS)
                    setGps(exif, key, it.value());
                else if (group.key() == PhotoGroup::IPTC)
                    setIptc(image, key, it.value(), iptcAllowed);
                else
                    qCInfo(lcTagsmith) << "group not written ==" << group.key() << key;
            } catch (const Exiv2::AnyError& error) {
                // One unknown key or unreadable value leaves the others.
                qCInfo(lcTagsmith).noquote() << "key not written ==" << group.key() << key
                                             << "== Exiv2 error" << error.what();
            }
        }
    }
}

int pageCount(const QByteArray& bytes) {
    QByteArray copy = bytes;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "tiff");
    return reader.imageCount();
}

QByteArray contentsOf(Exiv2::BasicIo& io) {
    io.open();
    io.seek(0, Exiv2::BasicIo::beg);
    Exiv2::DataBuf data = io.read(io.size());
    io.close();
    return QByteArray(reinterpret_cast<const char*>(data.pData_), data.size_);
}

}  // namespace

PhotoWriteOutcome writePhotoBytes(const QByteArray& source, const QString& target,
                                  const PropertyEdit& edit) {
    ensureInitialised();
    QByteArray written;
    try {
        Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(
            reinterpret_cast<const Exiv2::byte*>(source.constData()), long(source.size()));
        image->readMetadata();
        readHeifMetadata(*image);
        const int type = image->imageType();
        const Exiv2::AccessMode mode = Exiv2::ImageFactory::checkMode(type, Exiv2::mdExif);
        const bool heif = isHeif(*image);
        if (!heif && mode != Exiv2::amReadWrite && mode != Exiv2::amWrite)
            return {PhotoWriteStatus::CannotWriteType,
                    PhotoWriter::tr("This kind of photo cannot be written.")};
        const HeifBefore before = heif ? heifBefore(*image, edit.removeXmp) : HeifBefore();
        applyEdit(*image, edit);
        if (heif) {
            QString reason;
            if (!writeHeifItems(*image, source, before, written, &reason)) {
                qCInfo(lcTagsmith).noquote()
                    << "HEIF photo not written ==" << target << "==" << reason;
                return {PhotoWriteStatus::Failed, reason};
            }
        } else {
            image->writeMetadata();
            written = contentsOf(image->io());
        }
        if (type == Exiv2::ImageType::tiff && pageCount(written) != pageCount(source)) {
            qCWarning(lcTagsmith) << "TIFF pages lost in writing, not written ==" << target;
            return {
                PhotoWriteStatus::Failed,
                PhotoWriter::tr("The photo's pages could not all be kept, so it was not written.")};
        }
        if (type == Exiv2::ImageType::png && edit.removedGroups.contains(PhotoGroup::PNG))
            written = withoutPngTexts(written);
        if (type == Exiv2::ImageType::jpeg && edit.removedGroups.contains(PhotoGroup::EightBIM))
            written = withoutJpegImageResources(written);
    } catch (const Exiv2::AnyError& error) {
        qCInfo(lcTagsmith).noquote()
            << "photo not written ==" << target << "== Exiv2 error" << error.code() << error.what();
        return {PhotoWriteStatus::Failed,
                PhotoWriter::tr("The photo is damaged or cannot be written.")};
    } catch (const std::exception& error) {
        qCInfo(lcTagsmith).noquote() << "photo not written ==" << target << "==" << error.what();
        return {PhotoWriteStatus::Failed,
                PhotoWriter::tr("The photo is damaged or cannot be written.")};
    } catch (...) {
        qCInfo(lcTagsmith).noquote() << "photo not written ==" << target;
        return {PhotoWriteStatus::Failed,
                PhotoWriter::tr("The photo is damaged or cannot be written.")};
    }
    // The target is the publisher's new empty file. Truncating it anyway would
    // make ext4 flush it to the disk when it is closed (its guard for files
    // rewritten in place), a wait per photo.
    QFile out(target);
    if (!out.open(QIODevice::Append) || out.write(written) != written.size() || !out.flush())
        return {PhotoWriteStatus::Failed,
                PhotoWriter::tr("The copy could not be written: %1").arg(out.errorString())};
    return {PhotoWriteStatus::Written, {}};
}

PhotoWriteOutcome writePhotoCopy(const QString& sourcePath, const QString& target,
                                 const PropertyEdit& edit) {
    QFile in(sourcePath);
    if (!in.open(QIODevice::ReadOnly))
        return {PhotoWriteStatus::Failed,
                PhotoWriter::tr("The photo cannot be read: %1").arg(in.errorString())};
    if (in.size() > kMaxPhotoBytes)
        return {PhotoWriteStatus::Failed, PhotoWriter::tr("The photo is too large to be written.")};
    const QByteArray bytes = in.readAll();
    if (bytes.isEmpty()) return {PhotoWriteStatus::Failed, PhotoWriter::tr("The photo is empty.")};
    return writePhotoBytes(bytes, target, edit);
}

QByteArray withSourceMetadata(const QByteArray& encoded, const QString& sourcePath) {
    ensureInitialised();
    try {
        Exiv2::Image::AutoPtr source =
            Exiv2::ImageFactory::open(QFile::encodeName(sourcePath).toStdString());
        source->readMetadata();
        Exiv2::Image::AutoPtr target = Exiv2::ImageFactory::open(
            reinterpret_cast<const Exiv2::byte*>(encoded.constData()), long(encoded.size()));
        target->readMetadata();
        for (const Exiv2::Exifdatum& datum : source->exifData()) {
            const std::string group = datum.groupName();
            if (group == "Photo" || group == "GPSInfo" ||
                (group == "Image" && isDescriptiveTiffTag(datum.tagName())))
                if (datum.tagName() != "MakerNote") target->exifData().add(datum);
        }
        target->setIptcData(source->iptcData());
        target->setXmpData(source->xmpData());
        // What described the old picture's layout does not hold for the new one.
        eraseXmpIf(target->xmpData(), [](const std::string& k) {
            return k == "Xmp.tiff.Orientation" || k == "Xmp.tiff.ImageWidth" ||
                   k == "Xmp.tiff.ImageLength" || k == "Xmp.exif.PixelXDimension" ||
                   k == "Xmp.exif.PixelYDimension";
        });
        Exiv2::ExifData& exif = target->exifData();
        if (exif.findKey(Exiv2::ExifKey("Exif.Photo.PixelXDimension")) != exif.end()) {
            exif["Exif.Photo.PixelXDimension"] = uint32_t(target->pixelWidth());
            exif["Exif.Photo.PixelYDimension"] = uint32_t(target->pixelHeight());
        }
        target->writeMetadata();
        return contentsOf(target->io());
    } catch (const std::exception& error) {
        qCInfo(lcTagsmith).noquote()
            << "metadata not carried over ==" << sourcePath << "==" << error.what();
    }
    return encoded;
}
