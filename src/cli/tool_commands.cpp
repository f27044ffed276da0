// SPDX-License-Identifier: GPL-3.0-or-later
// The video tools of tagsmith-cli: conversion, compression, sound
// extraction and removal, GIF, speed change, slow motion and frames, over
// the same batch jobs as the window's Video Tools menu.
#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <unistd.h>
#include <cstdio>

#include "cli/commands.h"
#include "core/app/user_defaults.h"
#include "core/tools/video_tool_jobs.h"

namespace {

struct ToolCommand {
    const char* name;
    VideoTool tool;
    const char* option;  // the variant's option, or nullptr
    const char* valueName;
    // Option values and the menu titles they stand for; the first is the default
    // when `required` is false.
    QList<QPair<QString, QString>> values;
    bool required;
    const char* description;
};

const char* const kToolOutputHelp =
    "\n\n"
    "Prints one line per file: the path of each new file, or \"skipped: REASON\" or\n"
    "\"failed: REASON\"; on a terminal a progress line is shown on stderr. Each new\n"
    "file is written under a temporary name and renamed when complete, so a failed\n"
    "or interrupted job leaves nothing under its name. A file already in the\n"
    "storage folder is replaced only when tagsmith wrote it and it has not changed\n"
    "since; otherwise, and for a second file of the same name, the new file gets\n"
    "a free name (\"clip (2).mov\"). Exit status: 0 when every file was written, 1\n"
    "when any was skipped or failed, 2 for a usage error.";

QList<ToolCommand> toolCommands() {
    using P = QPair<QString, QString>;
    return {
        {"convert",
         VideoTool::Convert,
         "to",
         "TYPE",
         {P("mp4", "Convert to MP4"), P("mov", "Convert to MOV"), P("m4v", "Convert to M4V")},
         false,
         "Copies each video into a new container (mp4, mov or m4v; default mp4)\n"
         "without re-encoding: the packets are copied. Output: NAME.TYPE in the storage\n"
         "folder. Files that are not videos are skipped."},
        {"compress",
         VideoTool::Compress,
         "quality",
         "LEVEL",
         {P("high", "High video quality"), P("medium", "Medium video quality"),
          P("low", "Low video quality")},
         false,
         "Re-encodes each video (H.264 and AAC) at the quality LEVEL: high (x264 crf 18,\n"
         "AAC 192 kb/s; the default), medium (crf 23, 128 kb/s) or low (crf 28, preset\n"
         "fast, 64 kb/s), keeping the pixel size. The output has the source's name\n"
         "and extension; only .mp4, .mpeg, .mov and .m4v files can be compressed,\n"
         "any other extension fails. Files that are not videos are skipped."},
        {"extract-audio",
         VideoTool::ExtractAudio,
         nullptr,
         nullptr,
         {},
         false,
         "Writes the sound of each video as NAME.m4a (AAC, 192 kb/s). An earlier\n"
         "output of tagsmith named like the video itself (NAME.EXT, for example a\n"
         "converted copy) is removed from the storage folder first. Files that are\n"
         "not videos are skipped."},
        {"remove-audio",
         VideoTool::RemoveAudio,
         nullptr,
         nullptr,
         {},
         false,
         "Writes each file without its sound: the picture re-encoded at the high\n"
         "quality, rotation kept, always as a QuickTime movie, under the source's name\n"
         "(also when that ends in .mp4). A file without video fails."},
        {"gif",
         VideoTool::Gif,
         nullptr,
         nullptr,
         {},
         false,
         "Writes an animated NAME.gif of one picture per second of film (t = 0, 1,\n"
         "2, ... while t is less than the duration: a 3.5 s clip gives 4 pictures),\n"
         "looping forever. The GIF holds no frame delay, so viewers show each picture\n"
         "for their default time (0.1 s in common viewers). A file without video\n"
         "fails."},
        {"speed",
         VideoTool::Speed,
         "factor",
         "F",
         {P("0.2", "0.2X"), P("0.5", "0.5X"), P("1", "1X"), P("2", "2X"), P("4", "4X"),
          P("8", "8X"), P("20", "20X")},
         true,
         "Speed change, as the app has always done it: the movie is NOT retimed.\n"
         "For F above 1 the output is the first 1/F of the movie at normal speed\n"
         "(2 on a 10 s clip gives its first 5 s); for F of 1 or less it is the whole\n"
         "movie unchanged. Re-encoded at the high quality into a QuickTime movie under\n"
         "the source's name. Use 'slow' to retime. A file without video fails."},
        {"slow",
         VideoTool::Slow,
         "factor",
         "F",
         {P("0.2", "0.2X"), P("0.5", "0.5X")},
         true,
         "Slow motion: the movie is made 1/F times longer (0.5 turns a 10 s clip into\n"
         "20 s, 0.2 into 50 s). The video packets are copied with new times; the sound\n"
         "is re-encoded (AAC) to the new length with its pitch kept. Written as a\n"
         "QuickTime movie under the source's name. At a file without video the whole\n"
         "batch ends: that file and the ones after it are skipped."},
        {"frames",
         VideoTool::Frames,
         "every",
         "SECONDS",
         {P("1", "1 picture per second"), P("0.2", "5 pics per second"),
          P("5", "1 picture every 5 seconds"), P("10", "1 picture every 10 seconds"),
          P("30", "1 picture every 30 seconds")},
         false,
         "Writes a picture every SECONDS (0.2, 1, 5, 10 or 30; default 1) as\n"
         "NAME_S.jpg, S being the time in whole seconds. The files hold TIFF data\n"
         "despite the .jpg name, and at 0.2 the five pictures of one second share one\n"
         "name, each replacing the one before: one picture per second remains, the\n"
         "last of that second."},
    };
}

QString storageFolder(const QCommandLineParser& parser) {
    QString folder = parser.value(QStringLiteral("storage"));
    if (folder.isEmpty()) folder = QSettings().value(DefaultsKey::storagePath).toString();
    if (folder.isEmpty()) folder = defaultStoragePath();
    ensureFolder(folder);
    return QFileInfo(folder).absoluteFilePath();
}

// The progress line on a terminal: "[2/5] clip.mov 43%".
class ProgressLine {
public:
    explicit ProgressLine(int total) : m_total(total), m_shown(isatty(fileno(stderr))) {}
    void update(int index, const QString& name, double fraction) {
        if (!m_shown) return;
        std::fprintf(stderr, "\r\033[K[%d/%d] %s %d%%", index + 1, m_total, qPrintable(name),
                     int(fraction * 100));
        std::fflush(stderr);
    }
    void clear() {
        if (m_shown) std::fputs("\r\033[K", stderr);
    }

private:
    int m_total;
    bool m_shown;
};

int runTool(const ToolCommand& command, const QStringList& args) {
    QCommandLineParser parser;
    QString description = QLatin1String(command.description);
    if (command.option) {
        QStringList names;
        for (const auto& v : command.values) names << v.first;
        description.prepend(QStringLiteral("%1 --%2 %3 FILE...\n\n")
                                .arg(QLatin1String(command.name), QLatin1String(command.option),
                                     names.join(QLatin1Char('|'))));
        parser.addOption({QLatin1String(command.option),
                          QStringLiteral("One of: %1.").arg(names.join(QStringLiteral(", "))),
                          QLatin1String(command.valueName)});
    }
    parser.setApplicationDescription(description + QLatin1String(kToolOutputHelp));
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("storage"),
         QStringLiteral("Folder for the new files (default: the app's storage folder)."),
         QStringLiteral("DIR")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Video files."),
                                 QStringLiteral("FILE..."));
    const QString name = QLatin1String(command.name);
    if (!parser.parse(QStringList{QStringLiteral("tagsmith-cli ") + name} + args)) {
        std::fprintf(stderr, "tagsmith-cli %s: %s\n", command.name, qPrintable(parser.errorText()));
        return 2;
    }
    QString help = parser.helpText();
    help.replace(QRegularExpression(QStringLiteral("^Usage: \\S+")),
                 QStringLiteral("Usage: tagsmith-cli ") + name);
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(help), stdout);
        return 0;
    }
    VideoToolRequest request;
    request.tool = command.tool;
    if (command.option) {
        const QString value = parser.value(QLatin1String(command.option));
        if (value.isEmpty() && !command.required) request.variant = command.values.first().second;
        for (const auto& v : command.values)
            if (v.first == value) request.variant = v.second;
        if (request.variant.isEmpty()) {
            std::fprintf(stderr, "tagsmith-cli %s: --%s needs one of the values shown\n\n%s",
                         command.name, command.option, qPrintable(help));
            return 2;
        }
    }
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) {
        std::fputs(qPrintable(help), stderr);
        return 2;
    }
    request.storage.storagelocation = storageFolder(parser);
    QStringList sources;
    for (const QString& f : files) sources << QFileInfo(f).absoluteFilePath();

    ProgressLine progress(int(sources.size()));
    bool allWritten = true;
    int reported = 0;
    VideoToolCallbacks callbacks;
    callbacks.progress = [&](int index, double fraction) {
        progress.update(index, QFileInfo(sources[index]).fileName(), fraction);
    };
    callbacks.finished = [&](int, const VideoToolResult& r) {
        progress.clear();
        ++reported;
        if (!r.note.isEmpty())
            std::fprintf(stderr, "tagsmith-cli: %s: %s\n", qPrintable(r.sourcePath),
                         qPrintable(r.note));
        if (r.ok()) {
            for (const QString& out : r.outputs) std::printf("%s\n", qPrintable(out));
        } else {
            allWritten = false;
            std::printf("%s: %s\n", r.skipped ? "skipped" : "failed", qPrintable(r.reason));
        }
        std::fflush(stdout);
    };
    OutputBatch batch;
    runVideoToolBatch(request, sources, batch, callbacks);
    for (; reported < sources.size(); ++reported) {
        allWritten = false;
        std::printf("skipped: not tried, the batch ended at an earlier file\n");
    }
    return allWritten ? 0 : 1;
}

}  // namespace

int runMediaTool(const QString& command, const QStringList& args) {
    for (const ToolCommand& c : toolCommands())
        if (command == QLatin1String(c.name)) return runTool(c, args);
    return -1;
}
