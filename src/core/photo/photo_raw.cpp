// The raw fallback: a camera raw that Exiv2 cannot write is decoded by
// LibRaw and written as TIFF data, carrying the source's metadata.
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageWriter>

#include <libraw/libraw.h>

#include <memory>

#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/photo/photo_exiv2.h"
#include "core/photo/photo_job.h"

namespace {

// The decoded picture; null (logged) when LibRaw refuses the file or
// reports damaged data on the way.
QImage decodeRaw(const QString& path) {
    auto raw = std::make_unique<LibRaw>();
    bool dataError = false;
    raw->set_dataerror_handler(
        [](void* flag, const char*, const int) { *static_cast<bool*>(flag) = true; }, &dataError);
    raw->imgdata.params.output_bps = 8;
    raw->imgdata.params.use_camera_wb = 1;
    int code = raw->open_file(QFile::encodeName(path).constData());
    if (code == LIBRAW_SUCCESS) code = raw->unpack();
    if (code == LIBRAW_SUCCESS) code = raw->dcraw_process();
    if (code != LIBRAW_SUCCESS || dataError) {
        qCInfo(lcTagsmith).noquote()
            << "LibRaw cannot decode ==" << path
            << "==" << (dataError ? "damaged data" : libraw_strerror(code));
        return {};
    }
    libraw_processed_image_t* processed = raw->dcraw_make_mem_image(&code);
    QImage image;
    if (processed && processed->type == LIBRAW_IMAGE_BITMAP && processed->colors == 3 &&
        processed->bits == 8)
        image = QImage(processed->data, processed->width, processed->height, processed->width * 3,
                       QImage::Format_RGB888)
                    .copy();
    if (processed) LibRaw::dcraw_clear_mem(processed);
    return image;
}

// The source's metadata that means the same in a new file: the Exif
// sub-directory, GPS, descriptive TIFF tags, IPTC and XMP.
QByteArray withSourceMetadata(const QByteArray& tiff, const QString& sourcePath) {
    Exiv2::Image::AutoPtr source =
        Exiv2::ImageFactory::open(QFile::encodeName(sourcePath).toStdString());
    source->readMetadata();
    Exiv2::Image::AutoPtr target = Exiv2::ImageFactory::open(
        reinterpret_cast<const Exiv2::byte*>(tiff.constData()), long(tiff.size()));
    target->readMetadata();
    for (const Exiv2::Exifdatum& datum : source->exifData()) {
        const std::string group = datum.groupName();
        if (group == "Photo" || group == "GPSInfo" ||
            (group == "Image" && photo_exiv2::isDescriptiveTiffTag(datum.tagName())))
            if (datum.tagName() != "MakerNote") target->exifData().add(datum);
    }
    target->setIptcData(source->iptcData());
    target->setXmpData(source->xmpData());
    target->writeMetadata();
    Exiv2::BasicIo& io = target->io();
    io.open();
    Exiv2::DataBuf data = io.read(io.size());
    io.close();
    return QByteArray(reinterpret_cast<const char*>(data.pData_), data.size_);
}

}  // namespace

QString writeRawFallback(const QString& sourcePath, const QString& target,
                         const PropertyEdit& edit) {
    QImage picture;
    try {
        picture = decodeRaw(sourcePath);
    } catch (const std::exception& error) {
        qCInfo(lcTagsmith).noquote() << "LibRaw failed ==" << sourcePath << "==" << error.what();
    }
    if (picture.isNull()) return PhotoWriter::tr("The camera raw picture could not be decoded.");
    QByteArray tiff;
    QBuffer buffer(&tiff);
    buffer.open(QIODevice::WriteOnly);
    if (!QImageWriter(&buffer, "tiff").write(picture))
        return PhotoWriter::tr("The picture could not be written as TIFF data.");
    photo_exiv2::ensureInitialised();
    try {
        tiff = withSourceMetadata(tiff, sourcePath);
    } catch (const std::exception& error) {
        qCInfo(lcTagsmith).noquote()
            << "raw metadata not carried over ==" << sourcePath << "==" << error.what();
    }
    PropertyEdit withOrientation = edit;
    withOrientation.values[QString()].insert(QStringLiteral("Orientation"), 4);
    const PhotoWriteOutcome outcome = writePhotoBytes(tiff, target, withOrientation);
    return outcome.reason;
}
