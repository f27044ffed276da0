// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/camera/camera_import.h"

#include <QFileInfo>
#include <QImageReader>
#include <QTemporaryFile>

#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/import/media_import.h"
#include "core/library/formatters.h"
#include "core/library/media_kinds.h"
#include "core/library/media_record.h"

namespace {
constexpr int kThumbnailSide = 256;
}

QString cameraItemKind(const CameraFileEntry& entry) {
    if (isImagePath(entry.name)) return QStringLiteral("Image");
    if (isVideoPath(entry.name)) return QStringLiteral("Movie");
    if (isAudioPath(entry.name)) return {};
    // A name without a known extension: the driver's type decides.
    if (entry.mimeType.startsWith(QLatin1String("image/"))) return QStringLiteral("Image");
    if (entry.mimeType.startsWith(QLatin1String("video/"))) return QStringLiteral("Movie");
    return {};
}

QList<CameraFileEntry> cameraMediaFiles(const QList<CameraFileEntry>& files) {
    QList<CameraFileEntry> media;
    for (const CameraFileEntry& f : files) {
        if (!cameraItemKind(f).isEmpty())
            media << f;
        else
            qCInfo(lcTagsmith).noquote()
                << "camera file not a photo or movie, skipped ==" << f.itemPath() << f.mimeType;
    }
    return media;
}

QString cameraRecordPath(const CameraFileEntry& entry) {
    return QStringLiteral("camera:") + entry.itemPath();
}

IKImageItemPtr makeCameraRecord(const CameraFileEntry& entry, const QImage& thumbnail) {
    auto item = std::make_shared<IKImageItem>();
    item->fileName = entry.name;
    item->fileType = cameraItemKind(entry);
    item->filePath = cameraRecordPath(entry);
    item->fileImage = thumbnail;
    if (entry.size >= 0) {
        item->fileSizeBytes = entry.size;
        item->fileSize = sizeText(entry.size);
    }
    item->fileCreateDate = item->fileModifyDate = entry.modified;
    return item;
}

QImage cameraThumbnail(CameraSession& session, const CameraFileEntry& entry, qint64 maxBytes) {
    QImage picture = session.preview(entry);
    if (picture.isNull() && cameraItemKind(entry) == QLatin1String("Image") && entry.size > 0 &&
        entry.size <= maxBytes) {
        QTemporaryFile file;
        if (file.open() && session.download(entry, file.fileName()).isEmpty()) {
            QImageReader reader(file.fileName());
            reader.setAutoTransform(true);
            const QSize full = reader.size();
            if (full.isValid() && (full.width() > kThumbnailSide || full.height() > kThumbnailSide))
                reader.setScaledSize(
                    full.scaled(kThumbnailSide, kThumbnailSide, Qt::KeepAspectRatio));
            picture = reader.read();
        }
    }
    if (picture.width() > kThumbnailSide || picture.height() > kThumbnailSide)
        picture = picture.scaled(kThumbnailSide, kThumbnailSide, Qt::KeepAspectRatio,
                                 Qt::SmoothTransformation);
    return picture;
}

PublishedCopy downloadCameraFile(CameraSession& session, const CameraFileEntry& entry,
                                 const QString& storageFolder, OutputBatch& batch, bool reveal) {
    CopyPlan plan;
    // Never a local file, so it names no file in the storage folder.
    plan.sourcePath = cameraRecordPath(entry);
    plan.outputPath = storageFolder + QLatin1Char('/') + entry.name;
    plan.reveal = reveal;
    plan.dates = {entry.modified, entry.modified};
    if (!entry.modified.isValid()) plan.dates = {QDateTime::currentDateTime(), {}};
    return publishCopy(plan, storageFolder, batch, [&](const QString& temporary) {
        const QString problem = session.download(entry, temporary);
        if (!problem.isEmpty()) return problem;
        const qint64 got = fileSizeOf(temporary);
        if (entry.size >= 0 && got != entry.size)
            return QStringLiteral("the camera gave %1 of %2 bytes").arg(got).arg(entry.size);
        return QString();
    });
}

IKImageItemPtr downloadedRecord(const QString& path) {
    if (IKImageItemPtr record = MediaImporter::importFile(path, true, true)) return record;
    // A kind the import does not take (a photo by the driver's type alone).
    auto item = std::make_shared<IKImageItem>();
    item->filePath = path;
    item->fileName = QFileInfo(path).fileName();
    item->fileType = isVideoPath(path) ? QStringLiteral("Movie") : item->fileType;
    fillFileAttributes(*item);
    return item;
}
