#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>

#include "core/audio/audio_writers.h"
#include "core/common/file_dates.h"

// How every audio writer publishes its copy: the output goes beside its
// planned name in a hidden temporary file, is filled, dated, and renamed
// over the planned name (or the free name the batch gives) in one step, so
// a reader never sees half a file and a failed write leaves nothing behind.
struct AudioCopyPlan {
    QString sourcePath;
    QString outputPath;  // the name wanted in the storage folder
    FileDates dates;     // the output's dates
    bool reveal = true;
};

// Writes the temporary file at the given path (it exists, empty); answers ""
// on success, else why not in the user's words.
using AudioCopyFill = std::function<QString(const QString& temporaryPath)>;

AudioWriteResult publishAudioCopy(const AudioCopyPlan& plan, const QString& storageFolder,
                                  OutputBatch& batch, const AudioCopyFill& fill);

// Copies the source's bytes (from `begin`, up to `end` when it is not -1)
// into `target`, appending with `append`; "" or why not.
QString copyFileBytes(const QString& source, const QString& target, qint64 begin = 0,
                      qint64 end = -1, bool append = false);

// The dates of an output: the created-date box's when it was changed and
// reads as a date, otherwise the source's own.
FileDates changedOrSourceDates(const FileDates& source, const QString& now, const QString& before);

// Where a save goes: the storage folder and the source's file name.
QString audioSaveOutput(const StorageContext& storage, const QString& sourcePath);
// Where a removal goes: sub-folders of an imported folder mirrored.
QString audioRemovalOutput(const StorageContext& storage, const QString& sourcePath);

// A new cover as stored: JPEG for an opaque picture, PNG when it has
// transparency; `mimeType` says which.
QByteArray encodeCover(const QImage& image, QString* mimeType);
