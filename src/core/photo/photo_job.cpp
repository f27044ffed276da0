// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_job.h"

#include <QCoreApplication>

#include "core/common/logging.h"
#include "core/library/media_kinds.h"

namespace {

PhotoCopyWriter& copyWriter() {
    static PhotoCopyWriter writer;
    return writer;
}

bool isCameraRaw(const QString& path) {
    return GetImageType(fileExtension(path).toUtf8().constData()) >= 0;
}

}  // namespace

void setPhotoCopyWriter(PhotoCopyWriter writer) {
    copyWriter() = std::move(writer);
}

QString photoSourcePath(const IKImageItem& item, PhotoMode mode, const StorageContext& storage) {
    if (mode == PhotoMode::Local) return item.filePath;
    // A camera item is read from its downloaded copy, which may have had to
    // take a free name.
    if (item.bhasCopy && !item.hasCopy.isEmpty()) return item.hasCopy;
    return storage.storagelocation + QLatin1Char('/') + item.fileName;
}

PhotoWriteResult runPhotoJob(const PhotoJob& job, const StorageContext& storage,
                             OutputBatch& batch) {
    const auto fill = [&job](const QString& temporaryPath) -> QString {
        const PhotoCopyWriter& writer = copyWriter();
        const PhotoWriteOutcome outcome =
            writer ? writer(job.sourcePath, temporaryPath, job.edit)
                   : writePhotoCopy(job.sourcePath, temporaryPath, job.edit);
        if (outcome.status != PhotoWriteStatus::CannotWriteType || !job.rawFallback ||
            !isCameraRaw(job.sourcePath))
            return outcome.reason;
        qCInfo(lcTagsmith).noquote()
            << "camera raw written as TIFF data ==" << job.sourcePath << "==" << outcome.reason;
        return writeRawFallback(job.sourcePath, temporaryPath, job.edit);
    };
    CopyPlan plan{job.sourcePath, job.outputPath, job.dates, job.reveal};
    plan.unnamedTemporary = true;  // the photo writers only open the path and write
    return photoResultOf(publishCopy(plan, storage.storagelocation, batch, fill), job.sourcePath);
}

PhotoWriteResult photoResultOf(const PublishedCopy& copy, const QString& sourcePath) {
    PhotoWriteResult result;
    result.sourcePath = sourcePath;
    result.reason = copy.reason;
    result.note = copy.note;
    if (copy.ok()) {
        result.status = ExportStatus::Completed;
        result.outputPath = copy.outputPath;
    }
    return result;
}
