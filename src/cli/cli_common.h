// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include "core/library/ik_image_item.h"
#include "core/video/video_export.h"

// What the writing commands share: their common options, the parse with
// --help, the storage folder and the one line reported per file.

// How every writing command reports, added to each --help.
extern const char* const kOutputHelp;

// The storage folder: --storage, else the app's preference (created).
QString resolveStorage(const QCommandLineParser& parser);
// --help, --storage and the FILE arguments.
void addCommonOptions(QCommandLineParser& parser);
// Parses the command's arguments; answers -1 to go on, else the exit code
// (0 after --help, 2 for a usage error or no file named).
int parse(QCommandLineParser& parser, const QString& command, const QStringList& args);
// A usage error of `command`: the message on stderr; answers 2.
int usageError(const QString& command, const QString& message);

// The outcome of each named file, one line on stdout: the new file's path,
// or "skipped: REASON" / "failed: REASON". The exit code is 1 when any file
// was not written.
class FileReport {
public:
    void written(const QString& path) { line(path); }
    void skipped(const QString& reason);
    void failed(const QString& reason);
    void result(const VideoWriteResult& r);
    // A line that is no failure (a file the command has nothing to do with).
    void noted(const QString& text) { line(text); }
    int exitCode() const { return m_allWritten ? 0 : 1; }

private:
    static void line(const QString& text);
    bool m_allWritten = true;
};

// Checks that a named path is an existing regular file; reports it otherwise.
bool checkRegularFile(const QString& path, FileReport& report);
