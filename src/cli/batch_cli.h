// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "cli/cli_common.h"
#include "core/batch/batch_progress.h"
#include "core/library/ik_image_item.h"

// What the batch commands share.

// The record of a named file as the batch tools need it: a video's or audio
// file's metadata, a photo's dictionary facts; null (reported) for a missing
// file or one of no media kind.
IKImageItemPtr loadBatchRecord(const QString& path, FileReport& report);

// Progress of a batch on a terminal ("3/10" on stderr when it is one) and
// its cancel: Ctrl-C stops the batch after the file in hand, which is
// finished or left whole. `cancelled()` tells whether that happened.
class TerminalProgress {
public:
    TerminalProgress();
    ~TerminalProgress();
    BatchProgress callback();
    bool cancelled() const;
    // Reports a cancelled batch on stderr; answers the exit code to add (1).
    int finish(const QString& command, int done, int total) const;
};

// The commands.
int runRename(const QStringList& args);
int runSetDate(const QStringList& args);
int runShiftDate(const QStringList& args);
int runCopyDate(const QStringList& args);
int runExport(const QStringList& args);
int runImport(const QStringList& args);
int runXmp(const QStringList& args);
