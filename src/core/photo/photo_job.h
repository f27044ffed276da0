// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

#include "core/common/copy_publish.h"
#include "core/common/file_dates.h"
#include "core/photo/photo_writers.h"

// One photo write of the editing, GPS, date and removal commands: the edit
// written into a copy published in the storage folder.
struct PhotoJob {
    QString sourcePath;
    QString outputPath;  // the name wanted
    PropertyEdit edit;
    FileDates dates;
    bool reveal = true;
    // Where the type cannot be written: for a camera raw, the picture
    // decoded into TIFF data under the raw file's name (the edit applied);
    // anything else is refused with the writer's reason.
    bool rawFallback = false;
};

PhotoWriteResult runPhotoJob(const PhotoJob& job, const StorageContext& storage,
                             OutputBatch& batch);

// A published copy as the photo commands answer it.
PhotoWriteResult photoResultOf(const PublishedCopy& copy, const QString& sourcePath);

// The source of a command for one photo: the item's own file in local mode,
// its downloaded copy in the storage folder in camera mode.
QString photoSourcePath(const IKImageItem& item, PhotoMode mode, const StorageContext& storage);

// The raw fallback itself: the camera raw at `sourcePath` decoded by LibRaw,
// written to `target` as TIFF data (8 bits per channel, orientation 4) with
// the source's portable metadata and the edit; "" or why not.
QString writeRawFallback(const QString& sourcePath, const QString& target,
                         const PropertyEdit& edit);
