// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"
#include "core/photo/photo_properties.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// Photo writes end as the video and audio ones do: the file written (or why
// not), the free name used, and one sentence for the status bar.
using PhotoWriteResult = VideoWriteResult;

// Which list the photo commands act on: local photos or the camera's
// downloaded copies (`blocalMode`).
enum class PhotoMode { Local, Camera };

// What the photo panel and the GPS window show, and what they showed when
// the photo was opened. Field names are the panel's.
struct PhotoEditorState {
    // Basic block (`basicInfoChange`) and camera block (`cameraInfoChange`).
    QString artistlab, imageDescrilab, copyrightlab, keywordslab, titlelab, commentslab;
    QString cameraMakelab, cameraModelab, cameraDatelab;
    // The panel's GPS texts (`gpsInfoChange`).
    QString gpsLatilab, gpsLongtlab, gpsAitlab, gpsDatelab, gpsTimelab;
    // The GPS window's entry fields.
    QString latitudelab, longtitudelab, altitudelab, dateStamplab, timeStamplab;

    QString oldArtistStr, oldImageDescStr, oldCopyrightStr, oldCommentStr, oldKeywordStr,
        oldCameraMakeStr, oldCameraModeStr, oldCameraDateStr, oldGpsDateStr, oldGpsTimeStr,
        oldGpsLatiStr, oldGpsAitStr, oldGpsLongtStr, oldTitleStr;

    bool basicInfoChange = false;
    bool cameraInfoChange = false;
    bool gpsInfoChange = false;
};

// The panel's read-only lines for a photo.
struct PhotoPanelTexts {
    QString photoNamelab, photoFileSizelab, photoImageSizelab, photoDPIlab, photoCreateDatelab,
        photoModDatelab;
};

// The writer the commands use: writePhotoCopy unless tests put another in
// its place (one that says a type cannot be written, for the raw fallback).
// An empty function restores writePhotoCopy.
using PhotoCopyWriter = std::function<PhotoWriteOutcome(
    const QString& sourcePath, const QString& target, const PropertyEdit& edit)>;
void setPhotoCopyWriter(PhotoCopyWriter writer);

// The panel as it shows a photo: every field filled from the dictionary
// (TIFF, then Exif, then GPS, then IPTC), the remembered values equal to the
// fields, the flags clear. The lens make and model stand in for an empty
// TIFF make; a southern latitude, a western longitude and an altitude below
// sea level show negative; keywords show joined by ", ". The GPS window's
// entry fields start as the panel's GPS texts ("" without a GPS group: the
// window puts its own placeholders there).
PhotoEditorState photoEditorStateFor(const PropertyDictionary& properties);
PhotoPanelTexts photoPanelTextsFor(const IKImageItem& item, const PropertyDictionary& properties);

// The signed position of a dictionary's GPS group; false without one.
bool photoPosition(const PropertyDictionary& properties, double* latitude, double* longitude);

// The edit an apply makes of one photo (which keys, in which groups), from
// the editor's texts, remembered values and flags. The GPS values the user
// changed are merged into the photo's own GPS group, each number stored
// unsigned beside its reference (camera mode too: a negative number in the
// file would read as the other hemisphere); no speed or track is invented.
// The lens make and model change only with an edit of the make and model
// fields; a changed title is written with or without keywords; keywords
// typed with commas become separate keywords; a camera date typed with
// dashes is stored with colons.
PropertyEdit applyChangeEdit(const PhotoEditorState& editor, PhotoMode mode);

// The apply (`ClickApplyChangeAction:`) for one photo: the copy in the
// storage folder under the photo's name (or the free name the batch gives), dated from the
// camera-date field when it was changed and reads as "yyyy:MM:dd HH:mm:ss", else with the source's
// dates. In camera mode the source is the downloaded copy in the storage folder and the GPS entry
// fields are taken as typed.
PhotoWriteResult ClickApplyChangeAction(const IKImageItem& item, const PhotoEditorState& editor,
                                        PhotoMode mode, const StorageContext& storage,
                                        OutputBatch& batch);

// The date window's save (`ClickDateChangedSaveAction:`) for one photo: the
// original, digitized and TIFF dates set to `diginalDate` (dashes made
// colons; a text CheckDateFormatWithDateString refuses skips the photo with
// the date window's message), the file dates from `orignalDate` (the
// source's when it is no date).
PhotoWriteResult ClickDateChangedSaveAction(const IKImageItem& item, const QString& orignalDate,
                                            const QString& diginalDate, PhotoMode mode,
                                            const StorageContext& storage, OutputBatch& batch);

// The GPS window's save (`ClickSaveChangeGPSAction:`) for one photo: the
// entry fields (all five non-empty, checked by the caller) merged into the
// photo's GPS group with their references and, with `bAddGPS`, the version
// (where the photo has none) and the date and time stamps (where they read
// as a date and a time); the file dates from the GPS date and time when
// they read as a date (then the copy is revealed), else the source's.
PhotoWriteResult ClickSaveChangeGPSAction(const IKImageItem& item, const PhotoEditorState& editor,
                                          bool bAddGPS, PhotoMode mode,
                                          const StorageContext& storage, OutputBatch& batch);
