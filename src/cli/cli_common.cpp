// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/cli_common.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

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
    if (!r.note.isEmpty()) remark(r.sourcePath, r.note);
    if (r.ok()) return written(r.outputPath);
    if (r.skipped) return skipped(r.reason);
    QString reason = r.status == ExportStatus::Cancelled ? QStringLiteral("cancelled") : r.reason;
    if (!r.outputPath.isEmpty())
        reason += QStringLiteral("; an unchanged copy was saved as %1").arg(r.outputPath);
    failed(reason);
}

void FileReport::remark(const QString& path, const QString& text) {
    const QString line = QStringLiteral("tagsmith-cli: %1: %2").arg(path, text);
    if (m_keep)
        m_lines.append({true, line});
    else
        std::fprintf(stderr, "%s\n", qPrintable(line));
}

void FileReport::line(const QString& text) {
    if (m_keep) {
        m_lines.append({false, text});
        return;
    }
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

FileReport FileReport::kept() {
    FileReport report;
    report.m_keep = true;
    return report;
}

void FileReport::add(const FileReport& part) {
    for (const Line& l : part.m_lines) {
        if (m_keep) {
            m_lines.append(l);
        } else if (l.error) {
            std::fprintf(stderr, "%s\n", qPrintable(l.text));
        } else {
            std::printf("%s\n", qPrintable(l.text));
            std::fflush(stdout);
        }
    }
    m_allWritten = m_allWritten && part.m_allWritten;
}

void writeEachFile(qsizetype count, OutputBatch& batch, FileReport& report,
                   const std::function<void(qsizetype, FileReport&)>& write) {
    std::vector<FileReport> reports(size_t(count), FileReport::kept());
    std::vector<char> done(size_t(count), 0);
    std::mutex mutex;
    qsizetype printed = 0;
    std::atomic<qsizetype> next{0};
    const auto work = [&] {
        for (qsizetype i = next++; i < count; i = next++) {
            {
                const OutputBatch::Turn turn(batch, i);
                write(i, reports[size_t(i)]);
            }
            std::lock_guard lock(mutex);
            done[size_t(i)] = 1;
            while (printed < count && done[size_t(printed)]) report.add(reports[size_t(printed++)]);
        }
    };
    std::vector<std::thread> helpers;
    for (int t = 1; t < QThread::idealThreadCount() && t < count; ++t) helpers.emplace_back(work);
    work();
    for (std::thread& helper : helpers) helper.join();
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
