// Video commands of tagsmith-cli: the editor's save, metadata removal and
// the title and date tools, over the same writers as the app.
#include <QCommandLineParser>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSettings>

#include <cstdio>
#include <functional>

#include "cli/commands.h"
#include "core/app/user_defaults.h"
#include "core/common/file_dates.h"
#include "core/library/media_import.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_tools.h"
#include "core/video/video_writers.h"

namespace {

struct FieldOption {
    const char* name;
    const char* help;
    QString VideoEditorState::*field;
    bool camera;  // belongs to the camera group (else the basic group)
};

const FieldOption kFieldOptions[] = {
    {"title", "title", &VideoEditorState::mediaTitle, false},
    {"album", "album", &VideoEditorState::mediaAlumArtis, false},
    {"artist", "artist", &VideoEditorState::mediaArtist, false},
    {"director", "director", &VideoEditorState::mediaMake, false},
    {"performer", "performer", &VideoEditorState::mediaModel, false},
    {"producer", "producer", &VideoEditorState::mediaProducer, false},
    {"publisher", "publisher", &VideoEditorState::mediaReleaseYear, true},
    {"copyright", "copyright", &VideoEditorState::mediaCopyright, true},
    {"description", "description", &VideoEditorState::mediaSoftware, true},
    {"keywords", "keywords", &VideoEditorState::mediakeywords, true},
    {"shoot-date", "recorded date, \"yyyy:MM:dd HH:mm:ss\"", &VideoEditorState::mediaShootDate,
     true},
};

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
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Video files."),
                                 QStringLiteral("FILE..."));
}

// Parses the command's arguments; answers -1 to go on, else the exit code.
int parse(QCommandLineParser& parser, const QString& command, const QStringList& args) {
    QStringList argv = args;
    argv.prepend(QStringLiteral("tagsmith-cli ") + command);
    if (!parser.parse(argv)) {
        std::fprintf(stderr, "tagsmith-cli %s: %s\n", qPrintable(command),
                     qPrintable(parser.errorText()));
        return 2;
    }
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

// The record of a video file as the list would hold it; null (with a
// message) for a missing file or one of another kind.
IKImageItemPtr loadVideo(const QString& path) {
    if (!QFileInfo::exists(path)) {
        std::fprintf(stderr, "tagsmith-cli: %s: no such file\n", qPrintable(path));
        return nullptr;
    }
    if (!isRegularFile(path)) {
        std::fprintf(stderr, "tagsmith-cli: %s: not a regular file\n", qPrintable(path));
        return nullptr;
    }
    IKImageItemPtr item = MediaImporter::importFile(QFileInfo(path).absoluteFilePath(), true);
    if (!item || item->fileType == QLatin1String("Audio")) {
        std::fprintf(stderr, "tagsmith-cli: %s: not a video file\n", qPrintable(path));
        return nullptr;
    }
    return item;
}

bool runJob(const VideoWriteJob& job, const QString& storage) {
    const ExportStatus status = runVideoWriteJob(job, storage);
    if (status == ExportStatus::Completed) {
        std::printf("%s\n", qPrintable(job.request.outputPath));
        return true;
    }
    std::fprintf(stderr, "tagsmith-cli: %s: the metadata could not be written",
                 qPrintable(job.request.sourcePath));
    if (!job.fallbackCopyPath.isEmpty()) {
        std::fprintf(stderr, "; an unchanged copy is at %s", qPrintable(job.fallbackCopyPath));
    }
    std::fputs("\n", stderr);
    return false;
}

using ToolFunction = std::function<bool(const IKImageItem&, const StorageContext&)>;

int runTool(const QString& command, const QString& description, const QStringList& args,
            const ToolFunction& tool) {
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    addCommonOptions(parser);
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const StorageContext storage{resolveStorage(parser), false, QString()};
    bool allDone = true;
    for (const QString& path : parser.positionalArguments()) {
        const IKImageItemPtr item = loadVideo(path);
        allDone = item && tool(*item, storage) && allDone;
    }
    return allDone ? 0 : 1;
}

ToolFunction exportTool(VideoWriteJob (*build)(const IKImageItem&, const QList<MetadataItem>&,
                                               const StorageContext&)) {
    return [build](const IKImageItem& item, const StorageContext& storage) {
        const VideoWriteJob job = build(item, readExistingMetadata(item.filePath), storage);
        if (job.request.sourcePath.isEmpty()) {
            std::fprintf(stderr, "tagsmith-cli: %s: nothing to write\n", qPrintable(item.filePath));
            return false;
        }
        return runJob(job, storage.storagelocation);
    };
}

}  // namespace

int runSet(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a copy of each video into the storage folder with the given fields "
                       "changed, as the\n"
                       "editor's save does. Fields not given keep their values; the location is "
                       "written when both\n"
                       "--latitude and --longitude are given (signed decimal degrees). "
                       "--created-date sets both file\n"
                       "dates of the copy; otherwise the copy keeps the source's dates."));
    addCommonOptions(parser);
    for (const FieldOption& f : kFieldOptions) {
        parser.addOption({QLatin1String(f.name),
                          QStringLiteral("New %1.").arg(QLatin1String(f.help)),
                          QStringLiteral("TEXT")});
    }
    parser.addOption({QStringLiteral("created-date"),
                      QStringLiteral("File date of the copy, \"yyyy:MM:dd HH:mm:ss\"."),
                      QStringLiteral("DATE")});
    parser.addOption(
        {QStringLiteral("latitude"), QStringLiteral("Latitude."), QStringLiteral("DEG")});
    parser.addOption(
        {QStringLiteral("longitude"), QStringLiteral("Longitude."), QStringLiteral("DEG")});
    parser.addOption(
        {QStringLiteral("altitude"), QStringLiteral("Altitude in metres."), QStringLiteral("M")});
    parser.addOption({QStringLiteral("artwork"),
                      QStringLiteral("Picture file to embed as artwork."),
                      QStringLiteral("IMAGE")});
    if (const int code = parse(parser, QStringLiteral("set"), args); code >= 0) return code;

    QImage artwork;
    if (parser.isSet(QStringLiteral("artwork")) &&
        !artwork.load(parser.value(QStringLiteral("artwork")))) {
        std::fprintf(stderr, "tagsmith-cli set: cannot read the picture %s\n",
                     qPrintable(parser.value(QStringLiteral("artwork"))));
        return 2;
    }
    const StorageContext storage{resolveStorage(parser), false, QString()};
    bool allDone = true;
    for (const QString& path : parser.positionalArguments()) {
        const IKImageItemPtr item = loadVideo(path);
        if (!item) {
            allDone = false;
            continue;
        }
        VideoEditorState editor = videoEditorStateFor(*item);
        for (const FieldOption& f : kFieldOptions) {
            if (!parser.isSet(QLatin1String(f.name))) continue;
            editor.*f.field = parser.value(QLatin1String(f.name));
            (f.camera ? editor.cameraInfoChange : editor.basicInfoChange) = true;
        }
        if (parser.isSet(QStringLiteral("created-date")))
            editor.mediaCreatedDate = parser.value(QStringLiteral("created-date"));
        if (parser.isSet(QStringLiteral("latitude")) || parser.isSet(QStringLiteral("longitude"))) {
            editor.mediaLatitude = parser.value(QStringLiteral("latitude"));
            editor.mediaLongtitude = parser.value(QStringLiteral("longitude"));
            editor.mediaAatitude = parser.value(QStringLiteral("altitude"));
        }
        if (!artwork.isNull()) {
            editor.mediaImage = artwork;
            editor.imageIsPlaceholder = false;
        }
        const VideoWriteJob job = SaveChangedVideoExifDateAction(
            *item, editor, readExistingMetadata(item->filePath), storage);
        allDone = runJob(job, storage.storagelocation) && allDone;
    }
    return allDone ? 0 : 1;
}

int runStrip(const QStringList& args) {
    return runTool(
        QStringLiteral("strip"),
        QStringLiteral(
            "Writes a copy of each video into the storage folder with its title, album, artist,\n"
            "director, performer, producer, publisher, copyright, keywords, description,\n"
            "recorded date and artwork removed. A location is removed when it lies north\n"
            "and east of zero."),
        args, [](const IKImageItem& item, const StorageContext& storage) {
            const VideoWriteJob job = RemoveVideoExifDateAction(
                item, videoEditorStateFor(item), readExistingMetadata(item.filePath), storage);
            return runJob(job, storage.storagelocation);
        });
}

int runVideoTool(const QString& command, const QStringList& args) {
    if (command == QLatin1String("title-to-name")) {
        return runTool(
            command,
            QStringLiteral(
                "Copies each video into the storage folder, named after its recorded title\n"
                "(the extension is kept, \"/\" becomes \"-\"), with the source's file dates."),
            args, [](const IKImageItem& item, const StorageContext& storage) {
                const bool done = CopyvideoTitletoFileNameAction(item, storage);
                if (!done)
                    std::fprintf(stderr, "tagsmith-cli: %s: no title to use\n",
                                 qPrintable(item.filePath));
                return done;
            });
    }
    if (command == QLatin1String("name-to-title")) {
        return runTool(
            command,
            QStringLiteral(
                "Writes a copy of each video whose title is its file name without the extension."),
            args, exportTool(CopyvideofilenametoTitleAction));
    }
    if (command == QLatin1String("created-to-recorded")) {
        return runTool(
            command,
            QStringLiteral(
                "Writes a copy of each video whose recorded date is the file's creation date."),
            args, exportTool(ClickCopyVideoCreatedDateToCameraDateAction));
    }
    if (command == QLatin1String("name-date-to-recorded")) {
        return runTool(
            command,
            QStringLiteral(
                "Writes a copy of each video whose recorded date is a date found in its file "
                "name.\n"
                "The first run of digits and the separators \"_ .-\" that starts with a year\n"
                "(1900-2099), month and day counts: 20210304, 2021-03-04, 2021_03_04 or\n"
                "2021.03.04, optionally followed by hour and minute (and seconds), e.g.\n"
                "VID_20190514_183005 or \"2021-03-04 10.30\". Without a time it is midnight."),
            args, exportTool(ClickSetVideoDateFromFileNameAction));
    }
    if (command == QLatin1String("recorded-to-created")) {
        return runTool(
            command,
            QStringLiteral(
                "Copies each video into the storage folder with both file dates set to its\n"
                "recorded date (the last date item of the file that reads as a date)."),
            args, [](const IKImageItem& item, const StorageContext& storage) {
                const bool done = ClickCopyVideoExifDateToCreateDateAction(
                    item, readExistingMetadata(item.filePath), storage);
                if (!done)
                    std::fprintf(stderr, "tagsmith-cli: %s: no recorded date\n",
                                 qPrintable(item.filePath));
                return done;
            });
    }
    return -1;
}
