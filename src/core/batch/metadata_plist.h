// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include "core/batch/batch_progress.h"
#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"
#include "core/photo/photo_properties.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// Metadata exported to property lists in the storage folder and applied
// back from them. Each export answers one result per file that was left
// out (skipped, with the reason) and, last, the property list written.

// The photo dictionaries a list can hold, with their file names.
enum class PhotoPlistKind { TIFF, Exif, ExifAndTIFF, ExifAndGPS, All };
QString photoPlistFileName(PhotoPlistKind kind);  // "ExportTiffInfo.plist", ...

// `ExportTIFFtoPlistAction:` and kin: each photo's group (or groups, or
// whole dictionary) under its `fileName`.
QList<VideoWriteResult> exportPhotoPlist(const IKImageItemList& photos, PhotoPlistKind kind,
                                         const StorageContext& storage, OutputBatch& batch,
                                         const BatchProgress& progress = {});

// `WriteSelectedItemsExifDataToPlist:`: one photo's whole dictionary in
// "<name without extension>.plist".
VideoWriteResult WriteSelectedItemsExifDataToPlist(const IKImageItem& photo,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch);

// The template's flat dictionary from a photo's dictionary, as the photo
// panel shows it: "Artist", "ImageDescription", "Copyright", "Make",
// "Model", "LensMake", "LensModel", "DateTimeDigitized", "UserComment",
// "Keywords", "ObjectName", "DateStamp", "TimeStamp", "Altitude" (a
// number), "Latitude"/"LatitudeRef" and "Longitude"/"LongitudeRef".
QVariantMap templateFromProperties(const PropertyDictionary& properties);
// `ExportTemplateDataToPlist:` from the first photo: "templatefile.plist".
QList<VideoWriteResult> ExportTemplateDataToPlist(const IKImageItemList& photos,
                                                  const StorageContext& storage,
                                                  OutputBatch& batch);

// One item's metadata.plist entry (video or audio keys); empty for any other
// kind. Numbers are written only when non-zero, as "%lf" texts.
QVariantMap metadataPlistEntry(const IKImageItem& item);
// `ExportSelectedItemAllmetadataAction:`: "metadata.plist", each entry under
// the name without extension and, for audio, also under the full name.
QList<VideoWriteResult> exportMetadataPlist(const IKImageItemList& items,
                                            const StorageContext& storage, OutputBatch& batch,
                                            const BatchProgress& progress = {});

// `ExportSelectedArtWokrmetadataAction:`: each item's artwork as TIFF data
// in "<file name>.jpg"; one result per item.
QList<VideoWriteResult> exportArtwork(const IKImageItemList& items, const StorageContext& storage,
                                      OutputBatch& batch, const BatchProgress& progress = {});

// How an import went: `problem` when the list was refused (not a property
// list, or not of the shape the import reads; nothing is written), else one
// result per item.
struct PlistImport {
    QString problem;
    QList<VideoWriteResult> results;
};

// Imports 10, 11, 12, the GPS twin of 12, and 14: the first value of the
// list, in the file's order, goes to every photo (the entries are not
// matched by name): its keys set in the groups the kind names.
PlistImport importPhotoPlist(const QString& plistPath, PhotoPlistKind kind,
                             const IKImageItemList& photos, const StorageContext& storage,
                             OutputBatch& batch, const BatchProgress& progress = {});

// The template import (13): the flat keys put into the TIFF, Exif, IPTC and
// GPS groups of every photo (the GPS version where the photo has none).
PropertyEdit templateEdit(const QVariantMap& flat, const PropertyDictionary& photo);
PlistImport ImportTemplateDataPlistAction(const QString& plistPath, const IKImageItemList& photos,
                                          const StorageContext& storage, OutputBatch& batch,
                                          const BatchProgress& progress = {});

// The metadata reload (16): each item's entry (by its name without
// extension) handed to the reload writer of its kind; items without an entry
// are skipped. Items need their metadata (importFileForWriting).
PlistImport ReloadMetaDataPlistAction(const QString& plistPath, const IKImageItemList& items,
                                      const StorageContext& storage, OutputBatch& batch,
                                      const BatchProgress& progress = {});
