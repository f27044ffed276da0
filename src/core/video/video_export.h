#pragma once

#include <QList>
#include <QString>

#include <functional>

#include "core/common/file_dates.h"
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
};

// Carries out an export; answers Completed or Failed (a failure is logged
// with its reason by the exporter).
using PassthroughExporter = std::function<ExportStatus(const PassthroughExport&)>;

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
    // After a completed export the output replaces the source file.
    bool replaceSource = false;
    bool reveal = true;
};

// Runs a job on the calling thread: removes an existing output, exports,
// then sets dates, falls back, replaces and reveals as the job says. An
// output that is the source file itself (the storage folder is the source's
// folder) is refused: the source is never deleted to make room for its copy.
// `storageFolder` is the root of the file-manager view.
ExportStatus runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                              const PassthroughExporter& exporter = videoExporter());

// Output path of a file in the storage folder: storage + "/" + file name,
// or, after a folder import, storage + the path below the imported folder's
// parent (the sub-folders mirrored and created).
QString mirroredOutputPath(const QString& storage, const QString& sourcePath, bool importedFolder,
                           const QString& importedParent);

// Whether two paths name the same existing file.
bool isSameFile(const QString& a, const QString& b);
