// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_stamp.h"
#include "core/common/ui_texts.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QTemporaryFile>
#include <QTransform>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/photo/photo_job.h"
#include "core/photo/photo_picture.h"

namespace {

// The JPEG quality of the stamped copy (a compression factor of 0.1), and
// the encoder's own default for a PNG's.
constexpr int kStampJpegQuality = 10;
constexpr int kPngAsJpegQuality = -1;
constexpr int kDefaultFontSize = 12;

const QString kExifOriginal = QStringLiteral("DateTimeOriginal");
const QString kExifDigitized = QStringLiteral("DateTimeDigitized");

// The Exif original date when both dates are there; "" otherwise.
QString exifOriginalDate(const PhotoSource& source) {
    const QVariantMap exif = source.properties.value(PhotoGroup::Exif).toMap();
    const QString original = exif.value(kExifOriginal).toString();
    return exif.value(kExifDigitized).toString().isEmpty() ? QString() : original;
}

QFont stampFont(const StampStyle& style) {
    QFont font(style.currentFontname);
    font.setPixelSize(style.currentFontSize > 0 ? style.currentFontSize : kDefaultFontSize);
    return font;
}

// The drawing's bytes re-encoded as JPEG with the source's metadata and
// orientation 1, written to `target`; "" or why not.
QString compressPhotowithFilePath(const QString& drawingPath, const QString& sourcePath,
                                  bool pngName, const QString& target) {
    QImageReader reader(drawingPath);
    const QImage drawing = reader.read();
    if (drawing.isNull()) return PhotoWriter::tr("The stamped picture could not be read back.");
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(pngName ? kPngAsJpegQuality : kStampJpegQuality);
    writer.setProgressiveScanWrite(false);
    if (!writer.write(drawing))
        return PhotoWriter::tr("The stamped picture could not be encoded as JPEG.");
    PropertyEdit upright;
    upright.values[QString()].insert(QStringLiteral("Orientation"), 1);
    return writePhotoBytes(withSourceMetadata(jpeg, sourcePath), target, upright).reason;
}

// The photo upright. Qt's readers turn pictures by their orientation, but
// its PNG reader leaves the orientation of a PNG's eXIf chunk unapplied:
// such a PNG is turned here by the orientation the metadata holds. (Other
// types are left to the decoder: a HEIF picture is turned by its own boxes
// and its Exif orientation must not be applied again.)
QImage uprightPicture(const QString& path, const PhotoSource& source) {
    QImage picture = loadPhotoPicture(path);
    const int orientation = source.properties.value(QStringLiteral("Orientation")).toInt();
    if (picture.isNull() || source.type != QLatin1String("png") || orientation < 2 ||
        orientation > 8 ||
        QImageReader(path).transformation() != QImageIOHandler::TransformationNone)
        return picture;
    const bool mirror = orientation == 2 || orientation == 3 || orientation == 7;
    const bool flip = orientation == 3 || orientation == 4 || orientation == 5;
    picture = picture.mirrored(mirror, flip);
    if (orientation >= 5) {
        const int quarter = orientation == 8 ? 270 : 90;
        picture = picture.transformed(QTransform().rotate(quarter));
    }
    return picture;
}

}  // namespace

QString stampDateSource(const PhotoSource& source, const QDateTime& creation) {
    if (!source.ok()) return dateDescription(QDateTime::currentDateTime());
    const QString original = exifOriginalDate(source);
    if (!original.isEmpty()) return original;
    const QString description = dateDescription(creation);
    const QStringList parts = description.split(QLatin1Char(' '));
    return parts.size() == 3 ? parts.at(0) + QLatin1Char(' ') + parts.at(1) : description;
}

QString stampDateText(const QString& dateText, const QString& layout) {
    static const QStringList kLayouts = {QStringLiteral("MM/DD/YYYY HH:MM"),
                                         QStringLiteral("DD/MM/YYYY HH:MM"),
                                         QStringLiteral("YYYY/MM/DD HH:MM")};
    const int which = int(kLayouts.indexOf(layout));
    const QStringList parts = dateText.split(QLatin1Char(' '));
    if (which < 0 || parts.size() < 2) return dateText;
    const QString time = parts.at(1);
    // Only a colon date is turned around; a dashed one stays as it is.
    const QStringList d = parts.at(0).split(QLatin1Char(':'));
    if (d.size() != 3) return parts.at(0) + QLatin1Char(' ') + time;
    const QString slash = QStringLiteral("%1/%2/%3 %4");
    switch (which) {
        case 0:
            return slash.arg(d.at(1), d.at(2), d.at(0), time);
        case 1:
            return slash.arg(d.at(2), d.at(1), d.at(0), time);
        default:
            return slash.arg(d.at(0), d.at(1), d.at(2), time);
    }
}

QRectF stampTextRect(const QSizeF& picture, const QSizeF& text, const QString& position) {
    const qreal w = picture.width(), h = picture.height();
    const int corner =
        int(QStringList{QStringLiteral("Lower left corner"), QStringLiteral("Lower right corner"),
                        QStringLiteral("Upper left corner"), QStringLiteral("Upper right corner")}
                .indexOf(position));
    const bool right = corner == 1 || corner == 3;
    const bool upper = corner >= 2;
    // The box's left edge and its distance from the top; a text that does
    // not measure takes a box of 400 x 50, as does any other title.
    if (text.width() > 0 && text.height() > 0) {
        const qreal tw = text.width(), th = text.height();
        if (corner < 0) return QRectF(50, h - 80, 400, 50);
        return QRectF(right ? w - tw - 20 : 50, upper ? 10 : h - 2 * th - 30, tw + 20, th + 20);
    }
    return QRectF(right ? w - 400 : 50, upper ? 0 : h - 80, 400, 50);
}

QImage drawDateStamp(const QImage& photo, const QString& text, const StampStyle& style) {
    QImage canvas(photo.size(), QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.drawImage(0, 0, photo);
    const QFont font = stampFont(style);
    const QSizeF measured = QFontMetricsF(font).size(Qt::TextSingleLine, text);
    painter.setFont(font);
    painter.setPen(style.currentFontColor);
    painter.drawText(stampTextRect(canvas.size(), measured, style.postion),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
    painter.end();
    return canvas;
}

PhotoWriteResult AddDateOnPhotoAction(const IKImageItem& item, const StampStyle& style,
                                      const StorageContext& storage, OutputBatch& batch) {
    const QString source = item.filePath;
    const PhotoSource properties = readPhotoProperties(source);
    FileDates dates = readFileDates(source);
    const QString text =
        stampDateText(stampDateSource(properties, dates.creation), style.dateFormat);
    qCInfo(lcTagsmith).noquote() << "date stamp ==" << source << "==" << text;

    // The drawing waits in a private temporary file, never in the storage
    // folder under the photo's own name (which may be the photo itself).
    QTemporaryFile drawing;
    {
        const QImage photo = uprightPicture(source, properties);
        if (photo.isNull())
            return PhotoWriteResult::skippedFile(
                source, PhotoWriter::tr("The photo's picture cannot be decoded."));
        QImageWriter writer(&drawing, "tiff");
        if (!drawing.open() || !writer.write(drawDateStamp(photo, text, style))) {
            qCWarning(lcTagsmith).noquote()
                << "stamp not drawn ==" << source << "==" << drawing.errorString()
                << writer.errorString();
            PhotoWriteResult failed;
            failed.sourcePath = source;
            failed.reason = PhotoWriter::tr("The stamped picture could not be written.");
            return failed;
        }
        drawing.close();
    }

    // The copy's dates are the photo's: its Exif original date, else its
    // creation date.
    const QDateTime taken = dateFromText(exifOriginalDate(properties));
    if (taken.isValid())
        dates = {taken, taken};
    else
        dates.modification = dates.creation;

    const QFileInfo info(source);
    const bool pngName = info.suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) == 0;
    const QString output = storage.storagelocation + QLatin1Char('/') + info.completeBaseName() +
                           QStringLiteral("_date.") + info.suffix();
    return photoResultOf(publishCopy({source, output, dates, false}, storage.storagelocation, batch,
                                     [&](const QString& target) {
                                         return compressPhotowithFilePath(drawing.fileName(),
                                                                          source, pngName, target);
                                     }),
                         source);
}
