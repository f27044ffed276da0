// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QImage>
#include <QList>
#include <QString>

#include <memory>

#include "core/library/metadata_item.h"
#include "core/library/stored_picture.h"

// One media file of the list (a video, an audio file, a photo or a camera
// item). Every field starts empty, zero or false, except `fileType`, which
// starts as "Image". Field names are kept as the rest of the program knows
// them, misspellings included.
struct IKImageItem {
    StoredPicture fileImage;                     // embedded artwork, or a camera item's thumbnail
    QString fileImagePath;                       // picture dropped on the photo view
    QString filePath;                            // full path; also the browser identity
    QString fileType = QStringLiteral("Image");  // "Image", "Movie", "Audio" or a kind text
    signed char bhasCopy = 0;
    QString hasCopy;
    QString fileName;
    void* fileNode = nullptr;  // opaque, never owned
    QString fileSize;
    qint64 fileSizeBytes = 0;  // the byte count behind `fileSize`; 0 when not read
    QString shootDateStr;
    QDateTime shootDate;
    QDateTime fileCreateDate;
    QDateTime fileModifyDate;
    QString fileCreateDateStr;
    QString fileReleasedYear;
    QString fileAblumName;
    double fileduration = 0.0;
    QString fileduratStr;
    qint32 filePixWidth = 0;
    qint32 filepixHeigh = 0;
    QString fileArist;
    QString fileCopyright;
    QString fileTitle;
    QString fileMake;
    QString fileModel;
    QString fileSoftware;
    QString fileFormat;
    QString fileKeyWords;
    QString filePublisher;
    QString fileDescription;
    QString fileBitRate;
    QString fileSampleRate;
    QString fileChannels;
    QString fileVideoEncodeFormat;
    QString fileAudioEncodeFormat;
    QString fileVideoDataRate;
    QString latitudeFormat;
    QString longtitudeFormat;
    QString AtitudeFormat;
    double filelatitude = 0.0;
    double filelongtitude = 0.0;
    double fileAtitude = 0.0;
    void* cameraItem = nullptr;  // device-side item, not owned
    QString fileComments;
    QString fileSubTitle;
    QString fileBand;
    QString fileComposer;
    QString fileLyricist;
    QString fileAlbumArist;
    QString fileDirector;
    QString fileActor;
    QString fileproducer;
    QList<MetadataItem> fileMetaArray;
    // Why the file could not be read, in words for the user; empty when it was.
    QString fileReadProblem;

    QString videoResolutionStr, videocodeIDStr, videoBitDepStr, videoCodeFPSStr, videoDataRateStr,
        videoAspectStr, videoCurScaleStr, videoColorPrimStr, videoTransfStr, videoYCbCrStr,
        videoCodePointStr, videoTrackIDStr, videoDurationStr;
    QString audioCodecIDStr, audiolanguageStr, audioDurationStr, audioDataRateStr,
        audioFrameRateStr, audioChanelsStr, audioTrackIDStr;

    // How an image browser should present the record.
    enum class RepresentationType { Path, MoviePath, GenericPreviewPath };
    RepresentationType imageRepresentationType() const;
    QString imageRepresentation() const { return filePath; }
    QString imageUID() const { return filePath; }
    QString imageTitle() const { return fileName; }
};

using IKImageItemPtr = std::shared_ptr<IKImageItem>;
using IKImageItemList = QList<IKImageItemPtr>;
