// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <functional>

#include "core/common/output_files.h"
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
    // A remark on stderr about the file in hand: "tagsmith-cli: PATH: TEXT".
    void remark(const QString& path, const QString& text);
    int exitCode() const { return m_allWritten ? 0 : 1; }

    // The report of one file written on another thread: its lines are kept
    // until they are printed through the command's report with add().
    static FileReport kept();
    void add(const FileReport& part);

private:
    void line(const QString& text);
    struct Line {
        bool error;
        QString text;
    };
    bool m_keep = false;
    QList<Line> m_lines;
    bool m_allWritten = true;
};

// Writes the `count` files of a command on as many threads as there are
// cores: `write(index, report)` handles file number `index` and reports into
// a report of its own. The reports are printed in the files' order as they
// are done, and the batch hands out names in that order too, so the output
// is what writing the files one after the other gives.
void writeEachFile(qsizetype count, OutputBatch& batch, FileReport& report,
                   const std::function<void(qsizetype index, FileReport& report)>& write);

// Checks that a named path is an existing regular file; reports it otherwise.
bool checkRegularFile(const QString& path, FileReport& report);
