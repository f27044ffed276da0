// SPDX-License-Identifier: GPL-3.0-or-later
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
#include "core/photo/photo_job.h"

namespace {

// The decoded picture; null (logged) when LibRaw refuses the file or
// reports damaged data on the way. LibRaw's C interface, so that the library
// can be loaded on first use (raw_loader.cpp).
QImage decodeRaw(const QString& path) {
    const std::unique_ptr<libraw_data_t, void (*)(libraw_data_t*)> raw(libraw_init(0),
                                                                       libraw_close);
    if (!raw) {
        qCInfo(lcTagsmith).noquote() << "LibRaw cannot decode ==" << path << "== not loaded";
        return {};
    }
    bool dataError = false;
    libraw_set_dataerror_handler(
        raw.get(), [](void* flag, const char*, const int) { *static_cast<bool*>(flag) = true; },
        &dataError);
    raw->params.output_bps = 8;
    raw->params.use_camera_wb = 1;
    int code = libraw_open_file(raw.get(), QFile::encodeName(path).constData());
    if (code == LIBRAW_SUCCESS) code = libraw_unpack(raw.get());
    if (code == LIBRAW_SUCCESS) code = libraw_dcraw_process(raw.get());
    if (code != LIBRAW_SUCCESS || dataError) {
        qCInfo(lcTagsmith).noquote()
            << "LibRaw cannot decode ==" << path
            << "==" << (dataError ? "damaged data" : libraw_strerror(code));
        return {};
    }
    libraw_processed_image_t* processed = libraw_dcraw_make_mem_image(raw.get(), &code);
    QImage image;
    if (processed && processed->type == LIBRAW_IMAGE_BITMAP && processed->colors == 3 &&
        processed->bits == 8)
        image = QImage(processed->data, processed->width, processed->height, processed->width * 3,
                       QImage::Format_RGB888)
                    .copy();
    if (processed) libraw_dcraw_clear_mem(processed);
    return image;
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
    tiff = withSourceMetadata(tiff, sourcePath);
    PropertyEdit withOrientation = edit;
    withOrientation.values[QString()].insert(QStringLiteral("Orientation"), 4);
    const PhotoWriteOutcome outcome = writePhotoBytes(tiff, target, withOrientation);
    return outcome.reason;
}
