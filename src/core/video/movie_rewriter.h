// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

#include "core/video/video_export.h"

// The pass-through writer of QuickTime and MPEG-4 files: writes a new file
// from a source movie and a new metadata list. Every media sample byte is
// copied unchanged; only the movie's metadata boxes (moov/udta, moov/meta)
// are rebuilt, the file type box follows the output type and the chunk
// offsets of the tracks follow the boxes they point into. The new file is
// written under a temporary name in the destination folder, synced and then
// renamed into place; on failure nothing appears under the output name and
// the source, only ever opened for reading, is left as it was. A privacy
// strip also leaves out the other metadata boxes and, when asked, the timed
// metadata tracks (movie_strip.h); the samples of a left-out track stay in
// the media data, unreferenced, so every kept track's bytes stay as they were.
//
// Refused, with the reason: fragmented movies, compressed movie boxes,
// media data in other files, no or several movie boxes, and anything
// malformed.

struct RewriteResult {
    bool ok = false;
    bool cancelled = false;
    QString reason;      // why it failed, for the log; empty on success
    QString userReason;  // the same in the user's words ("the disk is full")
};

// Told how many bytes of the new file are written, of how many, as the copy
// goes on (from the writing thread); answering false cancels the rewrite,
// which then leaves nothing under the output name.
using RewriteProgress = std::function<bool(qint64 written, qint64 total)>;

// Whether the first bytes of a file are those of an ISO base-media
// (MPEG-4/QuickTime) file, which the rewriter takes as it is.
bool looksLikeMpeg4File(const QString& path);

// Writes the export and answers how it went.
RewriteResult rewriteMovieFile(const PassthroughExport& request,
                               const RewriteProgress& progress = {});

// The program's exporter: Completed, or Failed with a warning that says why
// (and the reason in the user's words).
ExportOutcome rewriteMovie(const PassthroughExport& request);

// The same with progress: Completed, Failed or Cancelled.
ExportOutcome rewriteMovieWithProgress(const PassthroughExport& request,
                                       const RewriteProgress& progress);
