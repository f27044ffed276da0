// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// One-click tools of the video menu. Each works on a copy in the storage
// folder (sub-folders mirrored after a folder import), never on the listed
// file itself.

// The folder a tool writes an item's copy into.
QString videoToolOutputFolder(const IKImageItem& item, const StorageContext& storage);

// The plain copies below go under a free name where the planned one is
// taken (see OutputBatch); `batch` is the batch they belong to, or none.

// Copies the file under its recorded title (keeping its extension), with the
// source's dates, and reveals it. Skipped, with a log line, when the record
// has no title.
VideoWriteResult CopyvideoTitletoFileNameAction(const IKImageItem& item,
                                                const StorageContext& storage,
                                                OutputBatch* batch = nullptr);

// Re-export with the file name (without extension) as the title, in every
// key space that holds a title and as an iTunes title.
VideoWriteJob CopyvideofilenametoTitleAction(const IKImageItem& item,
                                             const QList<MetadataItem>& existing,
                                             const StorageContext& storage);

// Re-export with the file's creation date as the recorded date.
VideoWriteJob ClickCopyVideoCreatedDateToCameraDateAction(const IKImageItem& item,
                                                          const QList<MetadataItem>& existing,
                                                          const StorageContext& storage);

// Re-export with a date found in the file name as the recorded date. Empty
// job (no request path) when the name holds no date.
VideoWriteJob ClickSetVideoDateFromFileNameAction(const IKImageItem& item,
                                                  const QList<MetadataItem>& existing,
                                                  const StorageContext& storage);

// Copies the file with both file dates set to its recorded date. Skipped,
// with a log line, when the file has no readable recorded date.
VideoWriteResult ClickCopyVideoExifDateToCreateDateAction(const IKImageItem& item,
                                                          const QList<MetadataItem>& existing,
                                                          const StorageContext& storage,
                                                          OutputBatch* batch = nullptr);

// The date a file name holds, as "yyyy:MM:dd HH:mm:ss", or "". The name is
// cut into runs of the characters "0123456789_ .-"; the first run that
// starts with a year (1900-2099), month and day, written as eight digits
// (20210304) or separated (2021-03-04, 2021_03_04, 2021.03.04), gives the
// date. Hour and minute directly after it (103015, 10-30, 10.30.15) give the
// time, seconds are kept when present; without a time it is midnight.
QString dateTextFromFileName(const QString& fileName);

// The recorded date of a file's items: the last date item in container
// order that reads as a date ("T" and offsets handled as at import).
QDateTime recordedDate(const QList<MetadataItem>& existing);

// The save of an MXF video: no metadata is written, only a copy in the
// storage folder, dated with the editor's created date when it was changed
// and reads as a date, else with the source's dates; then revealed.
VideoWriteResult saveUnchangedVideoCopy(const IKImageItem& item, const VideoEditorState& editor,
                                        const StorageContext& storage,
                                        OutputBatch* batch = nullptr);
