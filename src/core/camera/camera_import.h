// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include "core/camera/camera_device.h"
#include "core/common/copy_publish.h"
#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"

// What the program does with a camera's files: which are taken (photos and
// movies), the records the camera browser lists, and downloads into the
// storage folder as outputs of the program.

// "Image" or "Movie" by the name's extension (image list first, then the
// video list), else by the driver's type ("image/...", "video/..."); ""
// for anything else (sound recordings, documents), which is not listed.
QString cameraItemKind(const CameraFileEntry& entry);

// The files of a listing that are photos or movies, in the listing's order.
QList<CameraFileEntry> cameraMediaFiles(const QList<CameraFileEntry>& files);

// The path that stands for a camera file in its record: "camera:" and the
// item's path on the camera (never a local file).
QString cameraRecordPath(const CameraFileEntry& entry);

// The record of a camera file for the camera browser: name, kind, size and
// date from the camera, the thumbnail as its picture. `filePath` is the
// item's path on the camera under "camera:" (never a local file), and
// `fileNode` carries nothing: the entry itself stays with the caller.
IKImageItemPtr makeCameraRecord(const CameraFileEntry& entry, const QImage& thumbnail);

// A picture for the browser: the driver's preview, else (a photo of at most
// `maxBytes`) the photo itself decoded small. Null when there is none.
QImage cameraThumbnail(CameraSession& session, const CameraFileEntry& entry,
                       qint64 maxBytes = qint64(24) << 20);

// Downloads one file into the storage folder under its own name, or the free
// name the batch gives when a file the program did not write is there. The
// copy is complete before it appears under its name, carries the camera's
// date, and is marked as the program's output. A file of another size than
// the camera announced is refused.
PublishedCopy downloadCameraFile(CameraSession& session, const CameraFileEntry& entry,
                                 const QString& storageFolder, OutputBatch& batch, bool reveal);

// The list's record of a downloaded copy, read as the import reads a file.
IKImageItemPtr downloadedRecord(const QString& path);
