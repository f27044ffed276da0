// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include "core/audio/audio_writers.h"
#include "core/common/copy_publish.h"
#include "core/common/file_dates.h"

// Every audio writer publishes its copy through publishCopy
// (core/common/copy_publish.h).
using AudioCopyPlan = CopyPlan;
using AudioCopyFill = CopyFill;

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
