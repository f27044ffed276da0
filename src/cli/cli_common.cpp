// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/cli_common.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <cstdio>

#include "core/app/user_defaults.h"
#include "core/common/file_dates.h"

const char* const kOutputHelp =
    "\n\n"
    "Prints one line per file: the path of the new file, or \"skipped: REASON\" or\n"
    "\"failed: REASON\". A file already in the storage folder is replaced only when\n"
    "tagsmith wrote it and it has not changed since; otherwise, and for a second\n"
    "file of the same name, the new file gets a free name (\"clip (2).mov\"). A\n"
    "failed write leaves an unchanged copy where the command says so. Exit status:\n"
    "0 when every file was written, 1 when any was skipped or failed, 2 for a\n"
    "usage error.";

QString resolveStorage(const QCommandLineParser& parser) {
    QString folder = parser.value(QStringLiteral("storage"));
    if (folder.isEmpty()) folder = QSettings().value(DefaultsKey::storagePath).toString();
    if (folder.isEmpty()) folder = defaultStoragePath();
    ensureFolder(folder);
    return folder;
}

void addCommonOptions(QCommandLineParser& parser) {
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("storage"),
         QStringLiteral("Folder for the new files (default: the app's storage folder)."),
         QStringLiteral("DIR")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Files to write."),
                                 QStringLiteral("FILE..."));
}

int parse(QCommandLineParser& parser, const QString& command, const QStringList& args) {
    QStringList argv = args;
    argv.prepend(QStringLiteral("tagsmith-cli ") + command);
    if (!parser.parse(argv)) return usageError(command, parser.errorText());
    QString help = parser.helpText();
    help.replace(QRegularExpression(QStringLiteral("^Usage: \\S+")),
                 QStringLiteral("Usage: tagsmith-cli ") + command);
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(help), stdout);
        return 0;
    }
    if (parser.positionalArguments().isEmpty()) {
        std::fputs(qPrintable(help), stderr);
        return 2;
    }
    return -1;
}

int usageError(const QString& command, const QString& message) {
    std::fprintf(stderr, "tagsmith-cli %s: %s\n", qPrintable(command), qPrintable(message));
    return 2;
}

void FileReport::skipped(const QString& reason) {
    m_allWritten = false;
    line(QStringLiteral("skipped: ") + reason);
}

void FileReport::failed(const QString& reason) {
    m_allWritten = false;
    line(QStringLiteral("failed: ") + reason);
}

void FileReport::result(const VideoWriteResult& r) {
    if (!r.note.isEmpty())
        std::fprintf(stderr, "tagsmith-cli: %s: %s\n", qPrintable(r.sourcePath),
                     qPrintable(r.note));
    if (r.ok()) return written(r.outputPath);
    if (r.skipped) return skipped(r.reason);
    QString reason = r.status == ExportStatus::Cancelled ? QStringLiteral("cancelled") : r.reason;
    if (!r.outputPath.isEmpty())
        reason += QStringLiteral("; an unchanged copy was saved as %1").arg(r.outputPath);
    failed(reason);
}

void FileReport::line(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

bool checkRegularFile(const QString& path, FileReport& report) {
    if (!QFileInfo::exists(path)) {
        report.failed(QStringLiteral("no such file"));
        return false;
    }
    if (!isRegularFile(path)) {
        report.failed(QStringLiteral("not a regular file"));
        return false;
    }
    return true;
}
