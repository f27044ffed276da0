// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <functional>

#include "core/common/file_dates.h"
#include "core/common/output_files.h"
#include "core/video/metadata_item.h"

// Output file types of a pass-through export; each has its own file type box
// and its own native form for "common" items.
enum class VideoFileType { QuickTimeMovie, AppleM4V, AppleM4A, MPEG4 };

// How an export ended, numbered as the completion handlers have always seen it.
enum class ExportStatus : int {
    Unknown = 0,
    Waiting = 1,
    Exporting = 2,
    Completed = 3,
    Failed = 4,
    Cancelled = 5
};

// A pass-through export: the source's media copied unchanged into a new
// file at `outputPath`, with `metadata` as its whole metadata list.
struct PassthroughExport {
    QString sourcePath;
    QString outputPath;
    QList<MetadataItem> metadata;
    VideoFileType fileType = VideoFileType::AppleM4V;
    // Privacy strip: besides the movie's own metadata boxes, the tracks'
    // metadata boxes, every XMP box and the padding boxes (which can hold
    // stale metadata) are left out.
    bool dropAllMetadataBoxes = false;
    // The timed metadata tracks (GPS telemetry, camera motion, chapter
    // texts) are left out with every track reference to them; their samples
    // stay in the media data, unreferenced.
    bool dropTimedMetadataTracks = false;
    // The location boxes of the tracks' user data are left out (the movie's
    // own location items are left out of `metadata` by the writer).
    bool dropTrackLocations = false;
    // The source's own file type box is kept (brands and version) instead of
    // the one of `fileType`; a source without a readable one gets that.
    bool keepFileTypeBox = false;
    // The movie box goes in front of the media data ("optimise for network
    // use"), wherever the source has it.
    bool movieBoxInFront = false;
};

// How an export ended and, for a failure, why in the user's words ("the
// disk is full"); the details are in the log.
struct ExportOutcome {
    ExportOutcome(ExportStatus s = ExportStatus::Failed, QString why = {})
        : status(s), reason(std::move(why)) {}
    ExportStatus status;
    QString reason;
    friend bool operator==(const ExportOutcome& o, ExportStatus s) { return o.status == s; }
};

// Carries out an export; answers Completed or Failed (a failure is logged
// with its reason by the exporter).
using PassthroughExporter = std::function<ExportOutcome(const PassthroughExport&)>;

// The program's exporter (the movie rewriter). Installed once at start-up;
// tests install their own.
PassthroughExporter& videoExporter();

// Everything a writer does with one export: the export itself and what
// happens to the files after it.
struct VideoWriteJob {
    PassthroughExport request;
    FileDates sourceDates;  // the source's dates, read before the export
    // When valid, both dates of the output become this date; otherwise the
    // output gets the source's own dates.
    QDateTime newDate;
    // When the export fails the source is copied here unchanged (with the
    // same dates); empty: nothing is done beyond the log.
    QString fallbackCopyPath;
    // After a completed export the output (made beside the source) is given
    // the source's permissions and renamed over it; it is not marked as an
    // output of ours. When the rename fails the output is removed and the
    // job fails, the source untouched.
    bool replaceSource = false;
    bool reveal = true;
};

// What became of a job, for the log, the window's status bar and the
// command line.
struct VideoWriteResult {
    ExportStatus status = ExportStatus::Failed;
    // The file written: the new file, or after a failed export the unchanged
    // copy; empty when nothing was written.
    QString outputPath;
    QString reason;  // why the write failed, in the user's words; "" on success
    QString note;    // why the output has another name than planned; usually ""
    QString sourcePath;
    bool skipped = false;  // nothing to do for this file (`reason` says why)

    bool ok() const { return status == ExportStatus::Completed; }
    // A file left alone, and why.
    static VideoWriteResult skippedFile(const QString& source, const QString& why);
    // One sentence for the status bar: what was saved where, or what failed and why.
    QString message() const;
    friend bool operator==(const VideoWriteResult& r, ExportStatus s) { return r.status == s; }
};

// Runs a job on the calling thread: exports, then sets dates, marks the
// output as the program's own, falls back, replaces and reveals as the job
// says. The output goes under its planned name only when nothing is there
// or the file there is an earlier output of the program that this batch has
// not written; otherwise (a file the program did not write, the source
// itself, an earlier output of the same batch) under a free name beside it.
// `storageFolder` is the root of the file-manager view.
VideoWriteResult runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                                  OutputBatch& batch,
                                  const PassthroughExporter& exporter = videoExporter());
// The same as a batch of one.
VideoWriteResult runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                                  const PassthroughExporter& exporter = videoExporter());

// Copies a file unchanged to `target` (or the free name the batch gives),
// with the given dates, marks it as ours and reveals it when asked.
VideoWriteResult copyVideoFile(const QString& source, const QString& target,
                               const QDateTime& creation, const QDateTime& modification,
                               const QString& storageFolder, OutputBatch& batch,
                               bool reveal = true);

// Output path of a file in the storage folder: storage + "/" + file name,
// or, after a folder import, storage + the path below the imported folder's
// parent (the sub-folders mirrored and created).
QString mirroredOutputPath(const QString& storage, const QString& sourcePath, bool importedFolder,
                           const QString& importedParent);

// Whether two paths name the same existing file.
bool isSameFile(const QString& a, const QString& b);
