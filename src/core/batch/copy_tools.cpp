// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/copy_tools.h"

#include <QFileInfo>

#include "core/audio/audio_writers.h"
#include "core/batch/batch_dates.h"
#include "core/batch/date_shift.h"
#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_writers.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_tools.h"

const char* const kCreationDateTooltip = QT_TRANSLATE_NOOP(
    "BatchTools", "Linux cannot set a file's creation date: this tool is not available.");

namespace {

QString storageTarget(const IKImageItem& item, const StorageContext& storage) {
    return storage.storagelocation + QLatin1Char('/') + QFileInfo(item.filePath).fileName();
}

QDateTime creationOf(const IKImageItem& item) {
    const QDateTime created = readFileDates(item.filePath).creation;
    return created.isValid() ? created : item.fileCreateDate;
}

VideoWriteResult noCreationDate(const IKImageItem& item) {
    return VideoWriteResult::skippedFile(item.filePath,
                                         WriteResult::tr("the file's dates cannot be read"));
}

}  // namespace

VideoWriteResult ClickCopyExifDateToCreateDateAction(const IKImageItem& item,
                                                     const StorageContext& storage,
                                                     OutputBatch& batch) {
    if (isVideoPath(item.filePath) && !isAudioPath(item.filePath))
        return ClickCopyVideoExifDateToCreateDateAction(item, readExistingMetadata(item.filePath),
                                                        storage, &batch);
    const QDateTime when = detectDate(item.shootDateStr);
    if (item.shootDateStr.isEmpty() || !when.isValid())
        return VideoWriteResult::skippedFile(item.filePath,
                                             WriteResult::tr("the file has no recorded date"));
    return copyVideoFile(item.filePath, storageTarget(item, storage), when, when,
                         storage.storagelocation, batch);
}

VideoWriteResult ClickCopyCreatedDateToCameraDateAction(const IKImageItem& item,
                                                        const StorageContext& storage,
                                                        OutputBatch& batch) {
    if (isImagePath(item.filePath)) {
        const QString created = dateText(creationOf(item));
        if (created.isEmpty()) return noCreationDate(item);
        return ClickDateChangedSaveAction(item, created, created, PhotoMode::Local, storage, batch);
    }
    if (isAudioPath(item.filePath)) {
        const QString created = dateText(creationOf(item));
        if (created.isEmpty()) return noCreationDate(item);
        return writeBatchDate(item, created, storage, batch);
    }
    if (isVideoPath(item.filePath))
        return runVideoWriteJob(ClickCopyVideoCreatedDateToCameraDateAction(
                                    item, readExistingMetadata(item.filePath), storage),
                                storage.storagelocation, batch);
    return VideoWriteResult::skippedFile(item.filePath, WriteResult::tr("not a media file"));
}

VideoWriteResult ClickCopyCreatedDateToModifyDateAction(const IKImageItem& item,
                                                        const StorageContext& storage,
                                                        OutputBatch& batch) {
    const QDateTime created = creationOf(item);
    if (!created.isValid()) return noCreationDate(item);
    return copyVideoFile(item.filePath, storageTarget(item, storage), created, created,
                         storage.storagelocation, batch);
}

VideoWriteResult ClickCopyModiyDateToCreateDateAction(const IKImageItem& item) {
    return VideoWriteResult::skippedFile(
        item.filePath, WriteResult::tr("Linux cannot set a file's creation date"));
}

VideoWriteResult ClickCopyFileNameToCommentsAction(const IKImageItem& item,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch) {
    const QString name = QFileInfo(item.filePath).completeBaseName();
    if (isImagePath(item.filePath)) {
        const PhotoSource source = readPhotoProperties(item.filePath);
        if (!source.ok()) return VideoWriteResult::skippedFile(item.filePath, source.problem);
        PhotoEditorState editor = photoEditorStateFor(source.properties);
        editor.commentslab = name;
        editor.basicInfoChange = true;
        return ClickApplyChangeAction(item, editor, PhotoMode::Local, storage, batch);
    }
    if (isAudioPath(item.filePath)) {
        AudioEditorState editor = audioEditorStateFor(item);
        editor.commentslab = name;
        editor.cameraInfoChange = true;
        return saveAudioItem(item, editor, storage, batch);
    }
    if (isVideoPath(item.filePath)) {
        VideoEditorState editor = videoEditorStateFor(item);
        editor.mediaSoftware = name;
        editor.cameraInfoChange = true;
        return runVideoWriteJob(SaveChangedVideoExifDateAction(
                                    item, editor, readExistingMetadata(item.filePath), storage),
                                storage.storagelocation, batch);
    }
    return VideoWriteResult::skippedFile(item.filePath, WriteResult::tr("not a media file"));
}
