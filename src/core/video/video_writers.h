// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QImage>

#include <QString>
#include <QVariantMap>
#include "core/library/stored_picture.h"

#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"

// What the video editor shows and what it showed before editing. Field
// names are the editor's: several hold other values than their names say
// (`mediaMake` is the director, `mediaReleaseYear` the publisher).
struct VideoEditorState {
    QString mediaTitle, mediaAlumArtis, mediaArtist, mediaMake, mediaModel, mediaProducer;
    QString mediaCreatedDate, mediaShootDate, mediaReleaseYear, mediaCopyright, mediaSoftware,
        mediakeywords;
    QString mediaLatitude, mediaLongtitude, mediaAatitude;
    StoredPicture mediaImage;  // the picture shown; null when it is the placeholder
    bool imageIsPlaceholder = true;

    QString oldMovieTitle, oldMovieAlbumArtist, oldMovieArtist, oldMovieMake, oldMovieModel,
        oldMovieProducer, oldMovieCreatedDate, oldMovieShootDate, oldMoviePublisher,
        oldMovieCopyright, oldMovieDescription, oldMovieKeywords;

    bool basicInfoChange = false;
    bool cameraInfoChange = false;
};

// Where writers put their output.
struct StorageContext {
    QString storagelocation;
    bool bImportLocalFolder = false;
    QString bImportLocalPath;
};

// Each builder reads what it needs from the file (its existing metadata,
// its dates) and answers the job to run; `existing` is the file's metadata
// in container order.

// The editor's save: changed fields of the edited groups, the date items,
// the location and the artwork.
VideoWriteJob SaveChangedVideoExifDateAction(const IKImageItem& item,
                                             const VideoEditorState& editor,
                                             const QList<MetadataItem>& existing,
                                             const StorageContext& storage);

// A metadata dictionary imported from a property list ("Title", "Album",
// "Artist", "Director", "Producer", "Copyright", "Keywords", "Description",
// "Camera Date", "Latitude", "Longitude", "Altitude"), compared with the
// editor's remembered values.
VideoWriteJob ReloadChangedVideoExifDateAction(const IKImageItem& item, const QVariantMap& exif,
                                               const VideoEditorState& remembered,
                                               const QList<MetadataItem>& existing,
                                               const StorageContext& storage);

// The XMP batch: title, location and date from a sidecar; the new file is
// written beside the source under a hidden name (".clip.mov.new") and then
// replaces it. Texts may be empty; an invalid date writes no date.
VideoWriteJob SaveChangedVideoExifWith(const QString& path, const QString& title,
                                       const QString& altitude, const QString& latitude,
                                       const QString& longitude, const QDateTime& date,
                                       const QList<MetadataItem>& existing);

// The batch date change: every date item replaced by the new date text.
VideoWriteJob SetVideoFileWithFilePath(const QString& sourcePath, const QString& outputPath,
                                       const QString& dateStr, const QList<MetadataItem>& existing);

// Metadata removal: an empty item for every field the record holds.
VideoWriteJob RemoveVideoExifDateAction(const IKImageItem& item, const VideoEditorState& editor,
                                        const QList<MetadataItem>& existing,
                                        const StorageContext& storage);

// The privacy strip: a copy (sub-folders mirrored as by the removal) with no
// descriptive item in any key space, no location, no cover and no XMP, in
// the source's own kind of file and with its dates; with `tracks` the timed
// metadata tracks are left out too. When the strip fails nothing is copied:
// an unchanged copy would pass for a stripped one.
VideoWriteJob RemoveAllVideoMetadataAction(const IKImageItem& item, const StorageContext& storage,
                                           bool tracks);

// The location strip: a copy (placed as by the removal, with the source's
// own file type box and dates) without any location item: the user
// data's "©xyz", the 3GPP "loci", the QuickTime location keys, the iTunes
// "©xyz", and the location boxes of the tracks' user data. Every other item
// is written back as its own bytes. XMP is left as it is. When the strip
// fails nothing is copied.
VideoWriteJob RemoveVideoLocationAction(const IKImageItem& item,
                                        const QList<MetadataItem>& existing,
                                        const StorageContext& storage);

// The date text the XMP batch writes: the universal-time description with
// "-" turned into ":" and the offset dropped ("2021:03:04 05:06:07").
QString xmpDateText(const QDateTime& date);

// The editor as it shows a record: each field's text, with the remembered
// value equal to it. Location fields show the magnitudes ("%lf"), or "" for
// zero; the picture is the record's artwork, or the placeholder.
VideoEditorState videoEditorStateFor(const IKImageItem& item);
