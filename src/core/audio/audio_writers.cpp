// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_writers.h"

#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"

namespace {

bool hasExtension(const QString& path, std::initializer_list<const char*> extensions) {
    const QString ext = fileExtension(path);
    for (const char* e : extensions) {
        if (ext.compare(QLatin1String(e), Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

}  // namespace

AudioEditorState audioEditorStateFor(const IKImageItem& item) {
    AudioEditorState e;
    e.titlelab = e.oldTitleStr = item.fileTitle;
    e.subtitlelab = e.oldSubtitleStr = item.fileSubTitle;
    e.abulmlab = e.oldAlbumStr = item.fileAblumName;
    e.artistlab = e.oldArtistStr = item.fileArist;
    e.ablumAristlab = e.oldAlbumArtistStr = item.fileAlbumArist;
    e.composerlab = e.oldComposerStr = item.fileComposer;
    e.recordDatelab = e.oldRecordDateStr = item.shootDateStr;
    e.releaseYearlab = e.oldReleaseYearStr = item.fileReleasedYear;
    e.copyrightlab = e.oldCopyrightStr = item.fileCopyright;
    e.publishlab = e.oldPublisherStr = item.filePublisher;
    e.bandlab = e.oldBandStr = item.fileBand;
    e.commentslab = e.oldCommentStr = item.fileComments;
    e.lyricslab = e.oldLyricStr = item.fileLyricist;
    e.createdDatelab = e.oldCreateDateStr = item.fileCreateDateStr;
    e.audioArtImage = item.fileImage;
    e.imageIsPlaceholder = !item.fileImage.hasPicture();
    return e;
}

AudioWriteResult saveAudioItem(const IKImageItem& item, const AudioEditorState& editor,
                               const StorageContext& storage, OutputBatch& batch, bool direct) {
    const QString& path = item.filePath;
    if (!isAudioPath(path))
        return AudioWriteResult::skippedFile(path, WriteResult::tr("not an audio file"));
    if (hasExtension(path, {"mp3"}))
        return SaveChangedMp3MetadateItem(item, editor, storage, batch);
    if (hasExtension(path, {"flac"}))
        return SaveChangedFlaCAuidoExifItem(item, editor, storage, batch);
    if (direct) {
        if (hasExtension(path, {"wav"}))
            return writeWAVAuidoMetadatawithFileItem(item, editor, storage, batch);
        if (hasExtension(path, {"aiff", "aif"}))
            return writeAiffAuidoMetadatawithFileItem(item, editor, storage, batch);
        if (hasExtension(path, {"caf"}))
            return SaveChangedCAFAuidoExifItem(item, editor, storage, batch);
    }
    return SaveChangedAuidoExifDateItem(item, editor, storage, batch);
}

AudioWriteResult removeAudioMetadata(const IKImageItem& item, const AudioEditorState& editor,
                                     const StorageContext& storage, OutputBatch& batch) {
    const QString& path = item.filePath;
    if (!isAudioPath(path))
        return AudioWriteResult::skippedFile(path, WriteResult::tr("not an audio file"));
    if (hasExtension(path, {"mp3"})) return RemoveMp3metadataItem(item, editor, storage, batch);
    return RemoveAuidoExifDateItem(item, storage, batch);
}
