// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

// Runs one command line (without the program name); answers the exit code.
// 0 success, 1 some input could not be handled, 2 a usage error.
int runCommand(const QStringList& args);

// The commands.
int runInfo(const QStringList& args);
int runSet(const QStringList& args);
int runStrip(const QStringList& args);
// The photo commands.
int runTree(const QStringList& args);
int runGps(const QStringList& args);
int runPhotoDate(const QStringList& args);
int runStamp(const QStringList& args);
// The update check.
int runCheckUpdate(const QStringList& args);
// Lists, downloads or deletes the photos and movies of a camera.
int runCamera(const QStringList& args);
// The video title and date tools; -1 when `command` is none of them.
int runVideoTool(const QString& command, const QStringList& args);
// The batch tools (rename, set-date, shift-date, copy-date, export,
// import, xmp); -1 when `command` is none of them.
int runBatchTool(const QString& command, const QStringList& args);
// The video tools (convert, compress, extract-audio, remove-audio, gif,
// speed, slow, frames); -1 when `command` is none of them.
int runMediaTool(const QString& command, const QStringList& args);
