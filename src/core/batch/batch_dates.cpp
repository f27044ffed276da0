// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/batch_dates.h"

#include <QFileInfo>

#include "core/audio/audio_writers.h"
#include "core/batch/date_check.h"
#include "core/batch/date_shift.h"
#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/video/video_file_ops.h"

namespace {

qint64 stepOffsetSeconds(const BatchDateChange& change, int stepIndex) {
    if (!change.step) return 0;
    qint64 unit = 0;
    if (change.stepUnit == QLatin1String("Second")) unit = 1;
    if (change.stepUnit == QLatin1String("Minute")) unit = 60;
    if (change.stepUnit == QLatin1String("Hour")) unit = 3600;
    return qint64(stepIndex) * change.stepCount.trimmed().toInt() * unit;
}

QDateTime steppedFixedDate(const BatchDateChange& change, int stepIndex) {
    return dateFromText(change.fixedDate).addSecs(stepOffsetSeconds(change, stepIndex));
}

// The item's own date text: its recorded date, else its creation date's
// universal-time description cut to date and time.
QString baseDateText(const IKImageItem& item) {
    if (!item.shootDateStr.isEmpty()) return item.shootDateStr;
    QDateTime created = item.fileCreateDate;
    if (!created.isValid()) created = readFileDates(item.filePath).creation;
    const QStringList parts = dateDescription(created).split(QLatin1Char(' '));
    return parts.size() == 3 ? parts[0] + QLatin1Char(' ') + parts[1] : QString();
}

QString shiftedText(const QDateTime& date, const BatchDateChange& c) {
    return c.add
               ? AddTimeIntwithDate(date, c.years, c.months, c.days, c.hours, c.minutes, c.seconds)
               : SubTimeIntwithDate(date, c.years, c.months, c.days, c.hours, c.minutes, c.seconds);
}

template <typename Step>
QList<VideoWriteResult> forEachSelected(const IKImageItemList& selected,
                                        const BatchProgress& progress, Step step) {
    QList<VideoWriteResult> results;
    int index = 0;
    for (const IKImageItemPtr& item : selected) {
        if (!item) continue;
        results.append(step(*item, index));
        ++index;
        if (!reportProgress(progress, index, int(selected.size()))) break;
    }
    return results;
}

}  // namespace

QString batchDateProblem(const BatchDateChange& change, bool creationDate) {
    bool valid = !change.fixedWay() || CheckDateFormatWithDateString(change.fixedDate);
    if (creationDate && change.pictureShown)
        valid = CheckDateFormatWithDateString(change.beforeOriginal) &&
                CheckDateFormatWithDateString(change.afterOriginal);
    if (valid) return {};
    return QStringLiteral(
        "Input the valid date format: YYYY:MM:DD HH:MM:SS or YYYY-MM-DD HH:MM:SS");
}

QString batchDateTextFor(const IKImageItem& item, const BatchDateChange& change, int stepIndex) {
    if (change.fixedWay()) return universalDateText(steppedFixedDate(change, stepIndex));
    const QString base = baseDateText(item);
    const QDateTime date = detectDate(base);
    if (!date.isValid()) {
        qCInfo(lcTagsmith) << "no date found to shift ==" << item.filePath << base;
        return base;
    }
    return shiftedText(date, change);
}

QDateTime batchCreationDateFor(const IKImageItem& item, const BatchDateChange& change,
                               int stepIndex) {
    if (change.fixedWay() && !change.pictureShown) return steppedFixedDate(change, stepIndex);
    QDateTime created = readFileDates(item.filePath).creation;
    if (!created.isValid()) created = item.fileCreateDate;
    if (!created.isValid()) return {};
    if (change.pictureShown) {
        const QDateTime before = dateFromText(change.beforeOriginal);
        const QDateTime after = dateFromText(change.afterOriginal);
        if (!before.isValid() || !after.isValid()) return {};
        return created.addSecs(before.secsTo(after));
    }
    return dateFromText(shiftedText(created, change));
}

VideoWriteResult writeBatchDate(const IKImageItem& item, const QString& dateText,
                                const StorageContext& storage, OutputBatch& batch) {
    const QString ext = fileExtension(item.filePath).toLower();
    if (isAudioPath(item.filePath)) {
        const AudioEditorState own = audioEditorStateFor(item);
        if (ext == QLatin1String("mp3")) return SetMp3MetadateItem(item, dateText, storage, batch);
        if (ext == QLatin1String("flac"))
            return SetFlaCAuidoExifItem(item, dateText, own, storage, batch);
        return SetAuidoExifDateItem(item, dateText, own, storage, batch);
    }
    if (isVideoPath(item.filePath)) {
        const QString output = storage.storagelocation + QLatin1Char('/') + item.fileName;
        const VideoWriteJob job = SetVideoFileWithFilePath(item.filePath, output, dateText,
                                                           readExistingMetadata(item.filePath));
        return runVideoWriteJob(job, storage.storagelocation, batch);
    }
    if (isImagePath(item.filePath))
        return VideoWriteResult::skippedFile(
            item.filePath, WriteResult::tr("photo dates are changed in the photo date window"));
    return VideoWriteResult::skippedFile(item.filePath,
                                         WriteResult::tr("neither a video nor an audio file"));
}

QList<VideoWriteResult> ClickMutiDateChangedSaveAction(const IKImageItemList& selected,
                                                       const BatchDateChange& change,
                                                       const StorageContext& storage,
                                                       OutputBatch& batch,
                                                       const BatchProgress& progress) {
    // Every selected item takes a step, a skipped photo too.
    return forEachSelected(selected, progress, [&](const IKImageItem& item, int index) {
        return writeBatchDate(item, batchDateTextFor(item, change, index), storage, batch);
    });
}

QList<VideoWriteResult> ClickMutiCreatedDateChangedSaveAction(const IKImageItemList& selected,
                                                              const BatchDateChange& change,
                                                              const StorageContext& storage,
                                                              OutputBatch& batch,
                                                              const BatchProgress& progress) {
    return forEachSelected(selected, progress, [&](const IKImageItem& item, int index) {
        const QDateTime date = batchCreationDateFor(item, change, index);
        if (!date.isValid())
            return VideoWriteResult::skippedFile(
                item.filePath, WriteResult::tr("the shifted date is not a calendar date"));
        const QString target = storage.storagelocation + QLatin1Char('/') + item.fileName;
        return copyVideoFile(item.filePath, target, date, date, storage.storagelocation, batch);
    });
}
