// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QVariantMap>

#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// What the audio editor shows and what it showed when the record was
// opened. Field names are the editor's: `ablumAristlab` holds the track
// number (the album-artist box and the track number are one value).
struct AudioEditorState {
    // Title block (`basicInfoChange`).
    QString titlelab, subtitlelab, abulmlab, artistlab, ablumAristlab, composerlab;
    // Dates, rights and notes block (`cameraInfoChange`).
    QString recordDatelab, releaseYearlab, copyrightlab, publishlab, bandlab, commentslab,
        lyricslab;
    QString createdDatelab;  // always examined

    StoredPicture audioArtImage;  // the picture shown; null when it is the placeholder
    bool imageIsPlaceholder = true;
    // The user chose a new picture; an untouched cover keeps its own bytes.
    bool imageChanged = false;

    QString oldTitleStr, oldSubtitleStr, oldAlbumStr, oldArtistStr, oldAlbumArtistStr,
        oldComposerStr, oldRecordDateStr, oldReleaseYearStr, oldCopyrightStr, oldPublisherStr,
        oldBandStr, oldCommentStr, oldLyricStr, oldCreateDateStr;

    bool basicInfoChange = false;
    bool cameraInfoChange = false;
};

// The editor as it shows a record: each field's text, with the remembered
// value equal to it; the picture is the record's artwork, or the placeholder.
AudioEditorState audioEditorStateFor(const IKImageItem& item);

// Audio writes end as the video ones do: the file written (or why not), the
// free name used, and one sentence for the status bar.
using AudioWriteResult = VideoWriteResult;

// Each writer works on a copy in the storage folder (the source is never
// opened for writing), publishes it atomically, marks it as the program's own
// and gives it a free name where the planned one is taken by a file the
// program did not write (see OutputBatch).

// MP3 (id3lib): save, reload from a metadata dictionary, date stamp, removal.
AudioWriteResult SaveChangedMp3MetadateItem(const IKImageItem& item, const AudioEditorState& editor,
                                            const StorageContext& storage, OutputBatch& batch);
AudioWriteResult ReloadMp3MetadateItem(const IKImageItem& item, const QVariantMap& exif,
                                       const AudioEditorState& remembered,
                                       const StorageContext& storage, OutputBatch& batch);
AudioWriteResult SetMp3MetadateItem(const IKImageItem& item, const QString& dateStr,
                                    const StorageContext& storage, OutputBatch& batch);
AudioWriteResult RemoveMp3metadataItem(const IKImageItem& item, const AudioEditorState& editor,
                                       const StorageContext& storage, OutputBatch& batch);

// The direct writers no window command reaches: WAV in place on the copy,
// AIFF re-exported into a CAF container under its own name.
AudioWriteResult writeWAVAuidoMetadatawithFileItem(const IKImageItem& item,
                                                   const AudioEditorState& editor,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch);
AudioWriteResult writeAiffAuidoMetadatawithFileItem(const IKImageItem& item,
                                                    const AudioEditorState& editor,
                                                    const StorageContext& storage,
                                                    OutputBatch& batch);

// FLAC (Vorbis comments and pictures) and CAF (the info chunk).
AudioWriteResult SaveChangedFlaCAuidoExifItem(const IKImageItem& item,
                                              const AudioEditorState& editor,
                                              const StorageContext& storage, OutputBatch& batch);
AudioWriteResult ReloadChangedFlaCAuidoExifItem(const IKImageItem& item, const QVariantMap& exif,
                                                const AudioEditorState& remembered,
                                                const StorageContext& storage, OutputBatch& batch);
AudioWriteResult SetFlaCAuidoExifItem(const IKImageItem& item, const QString& dateStr,
                                      const AudioEditorState& editor, const StorageContext& storage,
                                      OutputBatch& batch);
AudioWriteResult SaveChangedCAFAuidoExifItem(const IKImageItem& item,
                                             const AudioEditorState& editor,
                                             const StorageContext& storage, OutputBatch& batch);

// Every other audio file through a pass-through export into MPEG-4 audio.
AudioWriteResult SaveChangedAuidoExifDateItem(const IKImageItem& item,
                                              const AudioEditorState& editor,
                                              const StorageContext& storage, OutputBatch& batch);
AudioWriteResult ReloadChangedAuidoExifDateItem(const IKImageItem& item, const QVariantMap& exif,
                                                const AudioEditorState& remembered,
                                                const StorageContext& storage, OutputBatch& batch);
AudioWriteResult SetAuidoExifDateItem(const IKImageItem& item, const QString& dateStr,
                                      const AudioEditorState& editor, const StorageContext& storage,
                                      OutputBatch& batch);
AudioWriteResult RemoveAuidoExifDateItem(const IKImageItem& item, const StorageContext& storage,
                                         OutputBatch& batch);

// The save command's routing for one audio record: mp3 → the MP3 writer,
// flac → the FLAC writer, every other extension → the MPEG-4 export. With
// `direct`, WAV, AIFF and CAF files go to their direct writers instead.
AudioWriteResult saveAudioItem(const IKImageItem& item, const AudioEditorState& editor,
                               const StorageContext& storage, OutputBatch& batch,
                               bool direct = false);
// Metadata removal: mp3 → RemoveMp3metadataItem, other audio →
// RemoveAuidoExifDateItem.
AudioWriteResult removeAudioMetadata(const IKImageItem& item, const AudioEditorState& editor,
                                     const StorageContext& storage, OutputBatch& batch);
