// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/batch_cli.h"

#include <QFileInfo>

#include <unistd.h>
#include <atomic>
#include <csignal>
#include <cstdio>

#include "cli/audio_commands.h"
#include "cli/commands.h"
#include "cli/photo_commands.h"
#include "core/import/media_import.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_import.h"

namespace {

std::atomic<bool> g_cancelled{false};

extern "C" void onInterrupt(int) {
    g_cancelled = true;
}

}  // namespace

IKImageItemPtr loadBatchRecord(const QString& path, FileReport& report) {
    if (!checkRegularFile(path, report)) return nullptr;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    IKImageItemPtr item;
    if (isAudioPath(absolute))
        item = audioRecordForWriting(absolute);
    else if (isPhotoPath(absolute))
        item = importPhotoFile(absolute);
    else
        item = MediaImporter::importFileForWriting(absolute);
    if (!item) report.skipped(QStringLiteral("not a video, audio or photo file"));
    return item;
}

TerminalProgress::TerminalProgress() {
    g_cancelled = false;
    std::signal(SIGINT, onInterrupt);
}

TerminalProgress::~TerminalProgress() {
    std::signal(SIGINT, SIG_DFL);
}

BatchProgress TerminalProgress::callback() {
    const bool terminal = ::isatty(STDERR_FILENO);
    return [terminal](int done, int total) {
        if (terminal) {
            std::fprintf(stderr, "\r%d/%d", done, total);
            if (done == total) std::fputc('\n', stderr);
        }
        return !g_cancelled.load();
    };
}

bool TerminalProgress::cancelled() const {
    return g_cancelled.load();
}

int TerminalProgress::finish(const QString& command, int done, int total) const {
    if (!cancelled()) return 0;
    std::fprintf(stderr, "\ntagsmith-cli %s: cancelled after %d of %d files\n", qPrintable(command),
                 done, total);
    return 1;
}

int runBatchTool(const QString& command, const QStringList& args) {
    if (command == QLatin1String("rename")) return runRename(args);
    if (command == QLatin1String("set-date")) return runSetDate(args);
    if (command == QLatin1String("shift-date")) return runShiftDate(args);
    if (command == QLatin1String("copy-date")) return runCopyDate(args);
    if (command == QLatin1String("export")) return runExport(args);
    if (command == QLatin1String("import")) return runImport(args);
    if (command == QLatin1String("xmp")) return runXmp(args);
    return -1;
}
