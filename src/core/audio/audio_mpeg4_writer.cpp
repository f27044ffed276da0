// SPDX-License-Identifier: GPL-3.0-or-later
// The MPEG-4 audio writers: every audio file that has no writer of its own
// is written as an MPEG-4 audio file under its own name. An MPEG-4 source
// goes through the movie rewriter as it is; any other is first re-packed
// into MPEG-4 without re-encoding (when its codec can live there), its tags
// carried over as the items a reader finds the same fields in.

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include "core/audio/audio_mpeg4_items.h"
#include "core/audio/audio_remux.h"
#include "core/audio/audio_writers.h"
#include "core/common/dates.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"

namespace {

using namespace AudioMpeg4Items;

struct Mpeg4AudioEdit {
    QList<Change> changes;
    std::optional<QImage> cover;
    bool removeAll = false;
};

void finishList(PassthroughExport& out, const Mpeg4AudioEdit& edit,
                const QList<MetadataItem>& existing) {
    out.fileType = VideoFileType::AppleM4A;
    out.dropAllMetadataBoxes = edit.removeAll;
    out.metadata =
        edit.removeAll ? QList<MetadataItem>{} : merged(edit.changes, edit.cover, existing);
}

ExportOutcome exportMpeg4Audio(const PassthroughExport& request, const Mpeg4AudioEdit& edit) {
    PassthroughExport out = request;
    QList<MetadataItem> existing;
    const bool mpeg4 = looksLikeMpeg4File(request.sourcePath);
    if (mpeg4) {
        existing = readMovieMetadata(request.sourcePath);
        finishList(out, edit, existing);
        const RewriteResult direct = rewriteMovieFile(out);
        if (direct.ok) return ExportStatus::Completed;
        // A fragmented file is re-packed whole first; its items stay.
        if (!direct.reason.startsWith(QLatin1String("fragmented"))) {
            qCWarning(lcTagsmith).noquote()
                << "Movie rewriter: cannot rewrite" << request.sourcePath << "-" << direct.reason;
            return {ExportStatus::Failed, direct.userReason};
        }
        qCInfo(lcTagsmith) << "a fragmented file is re-packed first ==" << request.sourcePath;
    }
    // A private file beside the output for the re-packed audio; it goes
    // when the export ends, whatever the outcome.
    QTemporaryFile repacked(QFileInfo(request.outputPath).absolutePath() +
                            QStringLiteral("/.tagsmith-repack-XXXXXX.m4a"));
    if (!repacked.open()) {
        qCWarning(lcTagsmith) << "cannot make a temporary file in ==" << repacked.fileTemplate();
        return {ExportStatus::Failed, WriteResult::tr("the storage folder cannot be written")};
    }
    repacked.close();
    const RemuxResult remux =
        remuxAudio(request.sourcePath, repacked.fileName(), RemuxContainer::Mpeg4Audio);
    if (!remux.ok) return {ExportStatus::Failed, remux.reason};
    if (!mpeg4) existing = itemsFromTags(remux.tags, remux.cover, remux.vorbisComments);
    out.sourcePath = repacked.fileName();
    finishList(out, edit, existing);
    return rewriteMovie(out);
}

AudioWriteResult runMpeg4AudioExport(const IKImageItem& item, const Mpeg4AudioEdit& edit,
                                     const QString& output, const QDateTime& newDate,
                                     const StorageContext& storage, OutputBatch& batch) {
    VideoWriteJob job;
    job.request.sourcePath = item.filePath;
    job.request.outputPath = output;
    job.request.fileType = VideoFileType::AppleM4A;
    job.sourceDates = readFileDates(item.filePath);
    job.newDate = newDate;
    // No fallback copy: a file that cannot become MPEG-4 audio is not saved.
    return runVideoWriteJob(
        job, storage.storagelocation, batch,
        [edit](const PassthroughExport& request) { return exportMpeg4Audio(request, edit); });
}

QString storageOutput(const StorageContext& storage, const IKImageItem& item) {
    return storage.storagelocation + QLatin1Char('/') + QFileInfo(item.filePath).fileName();
}

// The typed created date when it was changed and reads as a date.
QDateTime changedDate(const QString& now, const QString& before) {
    return now == before ? QDateTime() : dateFromText(now);
}

}  // namespace

AudioWriteResult SaveChangedAuidoExifDateItem(const IKImageItem& item,
                                              const AudioEditorState& editor,
                                              const StorageContext& storage, OutputBatch& batch) {
    const Mpeg4AudioEdit edit{editorChanges(editor), coverChange(editor)};
    return runMpeg4AudioExport(item, edit, storageOutput(storage, item),
                               changedDate(editor.createdDatelab, editor.oldCreateDateStr), storage,
                               batch);
}

AudioWriteResult ReloadChangedAuidoExifDateItem(const IKImageItem& item, const QVariantMap& exif,
                                                const AudioEditorState& remembered,
                                                const StorageContext& storage, OutputBatch& batch) {
    const QString created = exif.value(QStringLiteral("Created Date")).toString();
    const QDateTime newDate = exif.contains(QStringLiteral("Created Date"))
                                  ? changedDate(created, remembered.oldCreateDateStr)
                                  : QDateTime();
    // A dictionary carries no picture: the file's own cover stays.
    const Mpeg4AudioEdit edit{dictionaryChanges(exif, remembered), std::nullopt};
    return runMpeg4AudioExport(item, edit, storageOutput(storage, item), newDate, storage, batch);
}

AudioWriteResult SetAuidoExifDateItem(const IKImageItem& item, const QString& dateStr,
                                      const AudioEditorState& editor, const StorageContext& storage,
                                      OutputBatch& batch) {
    // The editor's save, with the record date taken from the given text
    // whenever that differs from the remembered one.
    Mpeg4AudioEdit edit{editorChanges(editor), coverChange(editor)};
    const FieldPlaces* recordDate = nullptr;
    for (const FieldPlaces& f : fields()) {
        if (f.now == &AudioEditorState::recordDatelab) recordDate = &f;
    }
    edit.changes.removeIf([&](const Change& c) { return c.field == recordDate; });
    if (dateStr != editor.oldRecordDateStr) edit.changes.append({recordDate, dateStr});
    return runMpeg4AudioExport(item, edit, storageOutput(storage, item), dateFromText(dateStr),
                               storage, batch);
}

AudioWriteResult RemoveAuidoExifDateItem(const IKImageItem& item, const StorageContext& storage,
                                         OutputBatch& batch) {
    Mpeg4AudioEdit edit;
    edit.removeAll = true;
    const QString output = mirroredOutputPath(storage.storagelocation, item.filePath,
                                              storage.bImportLocalFolder, storage.bImportLocalPath);
    return runMpeg4AudioExport(item, edit, output, QDateTime(), storage, batch);
}
