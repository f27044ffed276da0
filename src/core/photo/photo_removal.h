// SPDX-License-Identifier: GPL-3.0-or-later
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

// Removes the action's groups from a copy of one photo (a GPS removal takes
// the XMP position too). Where the type cannot be written, actions with the
// raw fallback write, for a camera raw (GetImageType), the picture decoded
// by LibRaw as TIFF data under the raw file's name with the removal applied;
// anything else is not written (an unchanged copy would pass for a stripped
// one) and the result says why. The copy keeps the source's file dates and
// is revealed in local mode.
PhotoWriteResult removePhotoMetadata(const IKImageItem& item, PhotoRemoval action, PhotoMode mode,
                                     const StorageContext& storage, OutputBatch& batch);
