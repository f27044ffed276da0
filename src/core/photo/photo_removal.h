#pragma once

#include <QString>
#include <QStringList>

#include "core/photo/photo_writers.h"

// The five removal actions of photo mode, and the privacy strip beside them.
enum class PhotoRemoval {
    IPTC,        // RemoveIPTCDataFromPhoto
    Exif,        // RemoveExifDataFromPhoto
    GPS,         // RemoveGPSDataFromPhoto
    ExifAndGPS,  // DeleteExifAndGPSData
    All,         // DeleteAllPhotoMetadataData
    Privacy,  // `strip --all`: everything All removes, XMP too; orientation and colour profile kept
};

// The groups an action removes in a mode, in the order they are removed.
QStringList photoRemovalGroups(PhotoRemoval action, PhotoMode mode);
// The output's file name: the photo's own in local mode, with the action's
// prefix in camera mode ("NoIPTC_", "NoExif_", "NoGPS_", "NoExifAndGPS_").
QString photoRemovalOutputName(PhotoRemoval action, PhotoMode mode, const QString& fileName);
// Whether the action falls back to TIFF data for a camera raw it cannot write.
bool photoRemovalHasRawFallback(PhotoRemoval action);

// Removes the action's groups from a copy of one photo. Where the type
// cannot be written, actions with the raw fallback copy the source and, for
// a camera raw (GetImageType), write the picture decoded by LibRaw as TIFF
// data under the raw file's name with the removal applied; the others write
// nothing and say so.
PhotoWriteResult removePhotoMetadata(const IKImageItem& item, PhotoRemoval action, PhotoMode mode,
                                     const StorageContext& storage, OutputBatch& batch);
