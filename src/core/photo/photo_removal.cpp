// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_removal.h"

#include "core/common/logging.h"
#include "core/photo/photo_job.h"

namespace {

// The groups of the delete-all action in local mode, in the order removed.
const QStringList& allGroups() {
    static const QStringList groups{
        PhotoGroup::Exif,         PhotoGroup::GPS,          PhotoGroup::TIFF,
        PhotoGroup::GIF,          PhotoGroup::JFIF,         PhotoGroup::PNG,
        PhotoGroup::IPTC,         PhotoGroup::Raw,          PhotoGroup::MakerCanon,
        PhotoGroup::MakerNikon,   PhotoGroup::MakerMinolta, PhotoGroup::MakerFuji,
        PhotoGroup::MakerOlympus, PhotoGroup::MakerPentax,  PhotoGroup::EightBIM,
        PhotoGroup::ExifAux,      PhotoGroup::OpenEXR,
    };
    return groups;
}

}  // namespace

QStringList photoRemovalGroups(PhotoRemoval action, PhotoMode mode) {
    switch (action) {
        case PhotoRemoval::IPTC:
            return {PhotoGroup::IPTC};
        case PhotoRemoval::Exif:
            return {PhotoGroup::Exif};
        case PhotoRemoval::GPS:
            return {PhotoGroup::GPS};
        case PhotoRemoval::ExifAndGPS:
            return {PhotoGroup::Exif, PhotoGroup::GPS};
        case PhotoRemoval::All:
            return mode == PhotoMode::Local ? allGroups()
                                            : QStringList{PhotoGroup::Exif, PhotoGroup::GPS};
        case PhotoRemoval::Privacy:
            return allGroups();
    }
    return {};
}

QString photoRemovalOutputName(PhotoRemoval action, PhotoMode mode, const QString& fileName) {
    if (mode == PhotoMode::Local) return fileName;
    switch (action) {
        case PhotoRemoval::IPTC:
            return QStringLiteral("NoIPTC_") + fileName;
        case PhotoRemoval::Exif:
            return QStringLiteral("NoExif_") + fileName;
        case PhotoRemoval::GPS:
            return QStringLiteral("NoGPS_") + fileName;
        case PhotoRemoval::ExifAndGPS:
        case PhotoRemoval::All:
            return QStringLiteral("NoExifAndGPS_") + fileName;
        case PhotoRemoval::Privacy:
            return fileName;
    }
    return fileName;
}

bool photoRemovalHasRawFallback(PhotoRemoval action) {
    return action != PhotoRemoval::IPTC;
}

PhotoWriteResult removePhotoMetadata(const IKImageItem& item, PhotoRemoval action, PhotoMode mode,
                                     const StorageContext& storage, OutputBatch& batch) {
    PhotoJob job;
    job.sourcePath = photoSourcePath(item, mode, storage);
    job.outputPath = storage.storagelocation + QLatin1Char('/') +
                     photoRemovalOutputName(action, mode, item.fileName);
    const PhotoSource source = readPhotoProperties(job.sourcePath);
    if (!source.ok()) {
        qCInfo(lcTagsmith).noquote()
            << "photo skipped ==" << job.sourcePath << "==" << source.problem;
        return PhotoWriteResult::skippedFile(job.sourcePath, source.problem);
    }
    job.edit.removedGroups = photoRemovalGroups(action, mode);
    job.edit.removeXmp = action == PhotoRemoval::Privacy;
    // Where the GPS group goes, the position XMP repeats goes with it.
    job.edit.removeXmpGps = job.edit.removedGroups.contains(PhotoGroup::GPS);
    job.rawFallback = photoRemovalHasRawFallback(action);
    job.dates = readFileDates(job.sourcePath);
    job.reveal = mode == PhotoMode::Local;
    return runPhotoJob(job, storage, batch);
}
