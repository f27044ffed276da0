// SPDX-License-Identifier: GPL-3.0-or-later
// The photo commands of the panel, the date window and the GPS window, each
// for one photo: the edit is built, the copy written and published.
#include <QCoreApplication>
#include <QLocale>

#include <cmath>

#include "core/batch/date_check.h"
#include "core/common/dates.h"
#include "core/common/logging.h"
#include "core/photo/photo_job.h"

namespace {

QString storageOutput(const StorageContext& storage, const IKImageItem& item) {
    return storage.storagelocation + QLatin1Char('/') + item.fileName;
}

// The photo's metadata as read, or the result that skips it.
bool readSource(const QString& path, PhotoSource* source, PhotoWriteResult* skipped) {
    *source = readPhotoProperties(path, false);
    if (source->ok()) return true;
    qCInfo(lcTagsmith).noquote() << "photo skipped ==" << path << "==" << source->problem;
    *skipped = PhotoWriteResult::skippedFile(path, source->problem);
    return false;
}

// A new version number only where the photo has none.
void keepGpsVersion(PropertyEdit& edit, const PhotoSource& source) {
    if (!edit.values.contains(PhotoGroup::GPS)) return;
    if (source.properties.value(PhotoGroup::GPS).toMap().contains(QStringLiteral("Version")))
        edit.values[PhotoGroup::GPS].remove(QStringLiteral("Version"));
}

}  // namespace

PhotoWriteResult ClickApplyChangeAction(const IKImageItem& item, const PhotoEditorState& editor,
                                        PhotoMode mode, const StorageContext& storage,
                                        OutputBatch& batch) {
    PhotoJob job;
    job.sourcePath = photoSourcePath(item, mode, storage);
    job.outputPath = storageOutput(storage, item);
    job.rawFallback = true;
    PhotoSource source;
    PhotoWriteResult skipped;
    if (!readSource(job.sourcePath, &source, &skipped)) return skipped;
    job.edit = applyChangeEdit(editor, mode);
    keepGpsVersion(job.edit, source);
    // The camera date sets the file dates only in the program's own form:
    // a dashed date is not taken here.
    const QDateTime date = QLocale(QStringLiteral("en_US"))
                               .toDateTime(editor.cameraDatelab, QLatin1String(kDateTextFormat));
    if (date.isValid() && editor.cameraInfoChange &&
        editor.cameraDatelab != editor.oldCameraDateStr)
        job.dates = {date, date};
    else
        job.dates = readFileDates(job.sourcePath);
    return runPhotoJob(job, storage, batch);
}

PhotoWriteResult ClickDateChangedSaveAction(const IKImageItem& item, const QString& orignalDate,
                                            const QString& diginalDate, PhotoMode mode,
                                            const StorageContext& storage, OutputBatch& batch) {
    QString date = diginalDate;
    date.replace(QLatin1Char('-'), QLatin1Char(':'));
    qCInfo(lcTagsmith).noquote() << QStringLiteral(
                                        "[orignalDatelab stringValue]==%1, [diginalDatelab "
                                        "stringValue]==%2")
                                        .arg(orignalDate, diginalDate);
    PhotoJob job;
    job.sourcePath = photoSourcePath(item, mode, storage);
    job.outputPath = storageOutput(storage, item);
    job.rawFallback = true;
    if (!CheckDateFormatWithDateString(diginalDate))
        return PhotoWriteResult::skippedFile(
            job.sourcePath, QCoreApplication::translate("PhotoWriter",
                                                        "Input the valid date format: YYYY:MM:DD "
                                                        "HH:MM:SS or YYYY-MM-DD HH:MM:SS"));
    PhotoSource source;
    PhotoWriteResult skipped;
    if (!readSource(job.sourcePath, &source, &skipped)) return skipped;
    job.edit.values[PhotoGroup::Exif] = {{QStringLiteral("DateTimeOriginal"), date},
                                         {QStringLiteral("DateTimeDigitized"), date}};
    job.edit.values[PhotoGroup::TIFF] = {{QStringLiteral("DateTime"), date}};
    const QDateTime fileDate = dateFromText(orignalDate);
    job.dates = fileDate.isValid() ? FileDates{fileDate, fileDate} : readFileDates(job.sourcePath);
    return runPhotoJob(job, storage, batch);
}

PhotoWriteResult ClickSaveChangeGPSAction(const IKImageItem& item, const PhotoEditorState& e,
                                          bool bAddGPS, PhotoMode mode,
                                          const StorageContext& storage, OutputBatch& batch) {
    PhotoJob job;
    job.sourcePath = photoSourcePath(item, mode, storage);
    job.outputPath = storageOutput(storage, item);
    PhotoSource source;
    PhotoWriteResult skipped;
    if (!readSource(job.sourcePath, &source, &skipped)) return skipped;
    // The window's values go into the photo's own GPS group, each with its
    // reference (a magnitude alone would lose the hemisphere).
    PhotoEditorState entries;
    entries.gpsLatilab = e.latitudelab;
    entries.gpsLongtlab = e.longtitudelab;
    entries.gpsAitlab = e.altitudelab;
    if (bAddGPS) {
        entries.dateStamplab = e.dateStamplab;
        entries.timeStamplab = e.timeStamplab;
    }
    job.edit = applyChangeEdit(entries, PhotoMode::Camera);
    if (!bAddGPS) job.edit.values[PhotoGroup::GPS].remove(QStringLiteral("Version"));
    keepGpsVersion(job.edit, source);
    const QDateTime date = dateFromText(e.dateStamplab + QLatin1Char(' ') + e.timeStamplab);
    job.dates = date.isValid() ? FileDates{date, date} : readFileDates(job.sourcePath);
    job.reveal = date.isValid();
    return runPhotoJob(job, storage, batch);
}
