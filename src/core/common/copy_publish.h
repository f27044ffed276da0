// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

#include "core/common/file_dates.h"
#include "core/common/output_files.h"

// How the writers that build their copy themselves (audio, photos) publish
// it: the output goes beside its planned name in a hidden temporary file, is
// filled, dated, and renamed over the planned name (or the free name the
// batch gives) in one step, so a reader never sees half a file and a failed
// write leaves nothing behind. The source is only ever opened for reading.
struct CopyPlan {
    QString sourcePath;
    QString outputPath;  // the name wanted in the storage folder
    FileDates dates;     // the output's dates
    bool reveal = true;
    // What the log calls a failed fill, in the caller's words ("conversion
    // failed").
    const char* failedText = "write failed";
    // The fill only opens the temporary file by its path and writes it (no
    // file beside it, no rename): it may then be an unnamed file in the
    // folder, linked under its name once it is complete. Its inode is made
    // outside the folder's lock, so the threads of a batch can make theirs
    // at once, and nothing of it is left if the program dies.
    bool unnamedTemporary = false;
};

// Writes the temporary file at the given path (it exists, empty); answers ""
// on success, else why not in the user's words.
using CopyFill = std::function<QString(const QString& temporaryPath)>;

struct PublishedCopy {
    QString outputPath;  // the file written; "" when nothing was
    QString reason;      // why not, in the user's words
    QString note;        // why the output has another name than planned
    bool ok() const { return !outputPath.isEmpty(); }
};

PublishedCopy publishCopy(const CopyPlan& plan, const QString& storageFolder, OutputBatch& batch,
                          const CopyFill& fill);
