#pragma once

#include <QStringList>

// Runs one command line (without the program name); answers the exit code.
// 0 success, 1 some input could not be handled, 2 a usage error.
int runCommand(const QStringList& args);

// The commands.
int runInfo(const QStringList& args);
int runSet(const QStringList& args);
int runStrip(const QStringList& args);
// The video title and date tools; -1 when `command` is none of them.
int runVideoTool(const QString& command, const QStringList& args);
// The video tools (convert, compress, extract-audio, remove-audio, gif,
// speed, slow, frames); -1 when `command` is none of them.
int runMediaTool(const QString& command, const QStringList& args);
