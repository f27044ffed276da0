// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// The copying tools of the batch date menu, for photos, audio and video
// alike. Each writes a copy into the storage folder; the listed file is only
// read. Records need their metadata (importFileForWriting, or
// importPhotoFile for photos).

// Recorded date (a photo's original date, a video's or audio file's
// recorded date) → both file dates of an unchanged copy.
VideoWriteResult ClickCopyExifDateToCreateDateAction(const IKImageItem& item,
                                                     const StorageContext& storage,
                                                     OutputBatch& batch);
// Creation date → the recorded date in the copy's metadata (a photo's
// original, digitized and TIFF dates).
VideoWriteResult ClickCopyCreatedDateToCameraDateAction(const IKImageItem& item,
                                                        const StorageContext& storage,
                                                        OutputBatch& batch);
// Creation date → the modification date of an unchanged copy.
VideoWriteResult ClickCopyCreatedDateToModifyDateAction(const IKImageItem& item,
                                                        const StorageContext& storage,
                                                        OutputBatch& batch);
// Modification date → creation date: Linux cannot set a file's birth time,
// so the tool does nothing; its menu item carries this tooltip.
extern const char* const kCreationDateTooltip;
VideoWriteResult ClickCopyModiyDateToCreateDateAction(const IKImageItem& item);
// File name without extension → the comment (a photo's Exif user comment,
// an audio file's comments, a video's description, which is where its
// editor keeps notes), the file's other values kept.
VideoWriteResult ClickCopyFileNameToCommentsAction(const IKImageItem& item,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch);
