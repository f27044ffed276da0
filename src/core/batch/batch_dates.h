// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "core/batch/batch_progress.h"
#include "core/common/output_files.h"
#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"
#include "core/video/video_writers.h"

// The batch date dialog's choices. A fixed date of five characters or more
// selects the fixed way (optionally stepped from file to file); otherwise
// each file's own date is shifted by the six amounts.
struct BatchDateChange {
    QString fixedDate;                            // `mutSetDatelab`
    bool step = false;                            // `AddDateNumBtn`
    QString stepCount = QStringLiteral("1");      // `AddDateNumlab`
    QString stepUnit = QStringLiteral("Second");  // `AddDateUnitBtn`: Second, Minute, Hour
    bool add = true;                              // `AddTimeBtn`, else "Subtract Time"
    qint32 years = 0, months = 0, days = 0, hours = 0, minutes = 0, seconds = 0;
    // The creation-date variant's picture case: while the dialog shows a
    // photo (`dateImageview`), the interval from its original date as read
    // (`beforeorignalDatelab`) to the date as edited (`afterorignalDatelab`)
    // is added to each file's creation date instead of either way's date.
    bool pictureShown = false;
    QString beforeOriginal, afterOriginal;

    bool fixedWay() const { return fixedDate.size() >= 5; }
};

// The alert's message when the fixed date (or, for the creation-date
// variant with a picture shown, the before or after date) does not read as
// a date, else "".
QString batchDateProblem(const BatchDateChange& change, bool creationDate = false);

// The date text handed to the writers for the `stepIndex`-th selected item
// (counting from 0): the fixed date moved by the step, in its universal-time
// rendering; or the item's own date (its recorded date, else its creation
// date) shifted. A base date that cannot be found is passed on unchanged.
QString batchDateTextFor(const IKImageItem& item, const BatchDateChange& change, int stepIndex);

// The same as a date, for the creation-date variant: the fixed date (local
// time) moved by the step, or the shifted creation date; with a picture
// shown, the creation date moved by the picture's interval. Invalid when the
// shift lands on no calendar date (the scheme can give month 0).
QDateTime batchCreationDateFor(const IKImageItem& item, const BatchDateChange& change,
                               int stepIndex);

// Writes a copy of one file whose recorded date is `dateText` and whose
// other items are its own: videos through the video date writer, MP3, FLAC
// and other audio through their date writers, each given the file's own
// values so that nothing but the date changes. Photos and other kinds are
// skipped with a reason (photo dates belong to the photo date window).
// A video's items are read from the file as it is now.
VideoWriteResult writeBatchDate(const IKImageItem& item, const QString& dateText,
                                const StorageContext& storage, OutputBatch& batch);

// `ClickMutiDateChangedSaveAction:` over the selected items, in order; one
// result per item handled. Stops early when `progress` says so.
QList<VideoWriteResult> ClickMutiDateChangedSaveAction(const IKImageItemList& selected,
                                                       const BatchDateChange& change,
                                                       const StorageContext& storage,
                                                       OutputBatch& batch,
                                                       const BatchProgress& progress = {});

// `ClickMutiCreatedDateChangedSaveAction:`: an unchanged copy of each item
// (photos included) in the storage folder carrying the computed date as its
// file date. Linux cannot set a birth time, so the date becomes the copy's
// modification time.
QList<VideoWriteResult> ClickMutiCreatedDateChangedSaveAction(const IKImageItemList& selected,
                                                              const BatchDateChange& change,
                                                              const StorageContext& storage,
                                                              OutputBatch& batch,
                                                              const BatchProgress& progress = {});
