// SPDX-License-Identifier: GPL-3.0-or-later
#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <cmath>

#include "core/batch/metadata_plist.h"
#include "core/batch/plist_io.h"
#include "core/common/copy_publish.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_writers.h"

namespace {

VideoWriteResult writtenResult(const PublishedCopy& copy, const QString& source) {
    VideoWriteResult r;
    r.sourcePath = source;
    r.outputPath = copy.outputPath;
    r.reason = copy.reason;
    r.note = copy.note;
    r.status = copy.ok() ? ExportStatus::Completed : ExportStatus::Failed;
    return r;
}

// Publishes bytes as a new file of ours in the storage folder.
VideoWriteResult publishBytes(const QString& path, const QByteArray& bytes,
                              const StorageContext& storage, OutputBatch& batch,
                              const QString& source = {}) {
    const QDateTime now = QDateTime::currentDateTime();
    const CopyPlan plan{source, path, {now, now}, true};
    return writtenResult(publishCopy(plan, storage.storagelocation, batch,
                                     [&](const QString& temporary) {
                                         QFile file(temporary);
                                         if (!file.open(QIODevice::WriteOnly) ||
                                             file.write(bytes) != bytes.size() || !file.flush())
                                             return file.errorString();
                                         return QString();
                                     }),
                         source);
}

VideoWriteResult publishPlist(const QString& name, const QVariant& root,
                              const StorageContext& storage, OutputBatch& batch) {
    const QByteArray xml = plistXml(root);
    if (xml.isEmpty()) {
        VideoWriteResult r;
        r.reason = WriteResult::tr("the property list could not be made");
        return r;
    }
    return publishBytes(storage.storagelocation + QLatin1Char('/') + name, xml, storage, batch);
}

QVariantMap photoEntry(const PropertyDictionary& p, PhotoPlistKind kind) {
    switch (kind) {
        case PhotoPlistKind::TIFF:
            return p.value(PhotoGroup::TIFF).toMap();
        case PhotoPlistKind::Exif:
            return p.value(PhotoGroup::Exif).toMap();
        case PhotoPlistKind::ExifAndTIFF:
            return {{PhotoGroup::Exif, p.value(PhotoGroup::Exif).toMap()},
                    {PhotoGroup::TIFF, p.value(PhotoGroup::TIFF).toMap()}};
        case PhotoPlistKind::ExifAndGPS:
            return {{PhotoGroup::Exif, p.value(PhotoGroup::Exif).toMap()},
                    {PhotoGroup::GPS, p.value(PhotoGroup::GPS).toMap()}};
        case PhotoPlistKind::All:
            break;
    }
    return p;
}

QString baseName(const QString& fileName) {
    return QFileInfo(fileName).completeBaseName();
}

void putText(QVariantMap& entry, const char* key, const QString& value) {
    if (!value.isEmpty()) entry.insert(QLatin1String(key), value);
}

void putNumber(QVariantMap& entry, const char* key, double value) {
    if (value != 0.0) entry.insert(QLatin1String(key), QString::asprintf("%lf", value));
}

QByteArray tiffBytes(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    return writer.write(image) ? bytes : QByteArray();
}

}  // namespace

QString photoPlistFileName(PhotoPlistKind kind) {
    switch (kind) {
        case PhotoPlistKind::TIFF:
            return QStringLiteral("ExportTiffInfo.plist");
        case PhotoPlistKind::Exif:
            return QStringLiteral("ExportExifInfo.plist");
        case PhotoPlistKind::ExifAndTIFF:
            return QStringLiteral("ExportExifandTiffInfo.plist");
        case PhotoPlistKind::ExifAndGPS:
            return QStringLiteral("ExportExifandGPSInfo.plist");
        case PhotoPlistKind::All:
            break;
    }
    return QStringLiteral("ExportAllMetadataInfo.plist");
}

QList<VideoWriteResult> exportPhotoPlist(const IKImageItemList& photos, PhotoPlistKind kind,
                                         const StorageContext& storage, OutputBatch& batch,
                                         const BatchProgress& progress) {
    QList<VideoWriteResult> results;
    QVariantMap top;
    int done = 0;
    for (const IKImageItemPtr& item : photos) {
        const PhotoSource source = readPhotoProperties(item->filePath);
        if (source.ok())
            top.insert(item->fileName, photoEntry(source.properties, kind));
        else
            results.append(VideoWriteResult::skippedFile(item->filePath, source.problem));
        if (!reportProgress(progress, ++done, int(photos.size()))) return results;
    }
    results.append(publishPlist(photoPlistFileName(kind), top, storage, batch));
    return results;
}

VideoWriteResult WriteSelectedItemsExifDataToPlist(const IKImageItem& photo,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch) {
    const PhotoSource source = readPhotoProperties(photo.filePath);
    if (!source.ok()) return VideoWriteResult::skippedFile(photo.filePath, source.problem);
    return publishPlist(baseName(photo.fileName) + QStringLiteral(".plist"), source.properties,
                        storage, batch);
}

QVariantMap templateFromProperties(const PropertyDictionary& properties) {
    const PhotoEditorState s = photoEditorStateFor(properties);
    QVariantMap t{{QStringLiteral("Artist"), s.artistlab},
                  {QStringLiteral("ImageDescription"), s.imageDescrilab},
                  {QStringLiteral("Copyright"), s.copyrightlab},
                  {QStringLiteral("Make"), s.cameraMakelab},
                  {QStringLiteral("Model"), s.cameraModelab},
                  {QStringLiteral("LensMake"), s.cameraMakelab},
                  {QStringLiteral("LensModel"), s.cameraModelab},
                  {QStringLiteral("DateTimeDigitized"), s.cameraDatelab},
                  {QStringLiteral("UserComment"), s.commentslab},
                  {QStringLiteral("Keywords"), s.keywordslab},
                  {QStringLiteral("ObjectName"), s.titlelab},
                  {QStringLiteral("DateStamp"), s.gpsDatelab},
                  {QStringLiteral("TimeStamp"), s.gpsTimelab},
                  {QStringLiteral("Altitude"), s.gpsAitlab.toDouble()}};
    if (!s.gpsLatilab.isEmpty()) {
        const double latitude = s.gpsLatilab.toDouble();
        t.insert(QStringLiteral("Latitude"), std::fabs(latitude));
        t.insert(QStringLiteral("LatitudeRef"), latitude < 0 ? "S" : "N");
    }
    if (!s.gpsLongtlab.isEmpty()) {
        const double longitude = s.gpsLongtlab.toDouble();
        t.insert(QStringLiteral("Longitude"), std::fabs(longitude));
        t.insert(QStringLiteral("LongitudeRef"), longitude < 0 ? "W" : "E");
    }
    return t;
}

QList<VideoWriteResult> ExportTemplateDataToPlist(const IKImageItemList& photos,
                                                  const StorageContext& storage,
                                                  OutputBatch& batch) {
    if (photos.isEmpty()) return {};
    const PhotoSource source = readPhotoProperties(photos.first()->filePath);
    if (!source.ok())
        return {VideoWriteResult::skippedFile(photos.first()->filePath, source.problem)};
    return {publishPlist(QStringLiteral("templatefile.plist"),
                         templateFromProperties(source.properties), storage, batch)};
}

QVariantMap metadataPlistEntry(const IKImageItem& item) {
    QVariantMap e;
    if (isAudioPath(item.filePath)) {
        putText(e, "Created Date", item.fileCreateDateStr);
        putText(e, "Record Date", item.shootDateStr);
        putText(e, "Title", item.fileTitle);
        putText(e, "Subtitle", item.fileSubTitle);
        putText(e, "Artist", item.fileArist);
        putText(e, "Album", item.fileAblumName);
        putText(e, "Release Year", item.fileReleasedYear);
        putText(e, "Copyright", item.fileCopyright);
        putText(e, "Keywords", item.fileKeyWords);
        putText(e, "Publisher", item.filePublisher);
        putText(e, "Track Number", item.fileAlbumArist);
        putText(e, "Composer", item.fileComposer);
        putText(e, "Band", item.fileBand);
        putText(e, "Comments", item.fileComments);
        putText(e, "Lyrics", item.fileLyricist);
    } else if (isVideoPath(item.filePath)) {
        putText(e, "Created Date", item.fileCreateDateStr);
        putText(e, "Camera Date", item.shootDateStr);
        putText(e, "Title", item.fileTitle);
        putText(e, "Artist", item.fileArist);
        putText(e, "Publisher", item.filePublisher);
        putText(e, "Director", item.fileDirector);
        putText(e, "Copyright", item.fileCopyright);
        putText(e, "Keywords", item.fileKeyWords);
        putText(e, "Producer", item.fileproducer);
        putText(e, "Actors", item.fileActor);
        putText(e, "Description", item.fileDescription);
        if (!item.fileImage.isNull()) {
            if (const QByteArray tiff = tiffBytes(item.fileImage); !tiff.isEmpty())
                e.insert(QStringLiteral("Artwork Data"), tiff);
        }
        putNumber(e, "Altitude", item.fileAtitude);
        putNumber(e, "Latitude", item.filelatitude);
        putNumber(e, "Longitude", item.filelongtitude);
    }
    return e;
}

QList<VideoWriteResult> exportMetadataPlist(const IKImageItemList& items,
                                            const StorageContext& storage, OutputBatch& batch,
                                            const BatchProgress& progress) {
    QList<VideoWriteResult> results;
    QVariantMap top;
    int done = 0;
    for (const IKImageItemPtr& item : items) {
        const QVariantMap entry = metadataPlistEntry(*item);
        if (!isAudioPath(item->filePath) && !isVideoPath(item->filePath))
            results.append(VideoWriteResult::skippedFile(
                item->filePath, WriteResult::tr("neither a video nor an audio file")));
        else if (!entry.isEmpty())
            top.insert(baseName(item->fileName), entry);
        // Audio entries also stand under the full name.
        if (!entry.isEmpty() && isAudioPath(item->filePath)) top.insert(item->fileName, entry);
        if (!reportProgress(progress, ++done, int(items.size()))) return results;
    }
    results.append(publishPlist(QStringLiteral("metadata.plist"), top, storage, batch));
    return results;
}

QList<VideoWriteResult> exportArtwork(const IKImageItemList& items, const StorageContext& storage,
                                      OutputBatch& batch, const BatchProgress& progress) {
    QList<VideoWriteResult> results;
    int done = 0;
    for (const IKImageItemPtr& item : items) {
        const QByteArray tiff =
            item->fileImage.isNull() ? QByteArray() : tiffBytes(item->fileImage);
        if (tiff.isEmpty()) {
            results.append(VideoWriteResult::skippedFile(
                item->filePath, WriteResult::tr("the file has no artwork")));
        } else {
            // TIFF data under a ".jpg" name, as the artwork files have always been.
            const QString name = QFileInfo(item->filePath).fileName() + QStringLiteral(".jpg");
            results.append(publishBytes(storage.storagelocation + QLatin1Char('/') + name, tiff,
                                        storage, batch, item->filePath));
        }
        if (!reportProgress(progress, ++done, int(items.size()))) break;
    }
    return results;
}
