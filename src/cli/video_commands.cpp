// SPDX-License-Identifier: GPL-3.0-or-later
// Video commands of tagsmith-cli: the editor's save, metadata removal and
// the title and date tools, over the same writers as the app. `set` and
// `strip` hand audio files and photos to their own writers.
#include <QCommandLineParser>
#include <QFileInfo>
#include <QImage>

#include <cstdio>
#include <functional>

#include "cli/audio_commands.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/photo_commands.h"
#include "core/import/media_import.h"
#include "core/library/media_kinds.h"
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

// The record of a video file as the writers need it (file attributes and
// every metadata item; the file is not probed as media); null (reported)
// for a missing file or one of another kind. Its item list is the file's
// existing metadata: the commands do not read it a second time. Audio files
// and photos are taken where the command writes them too.
IKImageItemPtr loadVideo(const QString& path, FileReport& report, bool acceptOthers = false) {
    if (!checkRegularFile(path, report)) return nullptr;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    // Audio is asked first, as at import.
    if (isAudioPath(path) || isPhotoPath(path)) {
        if (acceptOthers)
            return isAudioPath(path) ? audioRecordForWriting(absolute)
                                     : photoRecordForWriting(absolute);
        report.skipped(QStringLiteral("this command takes video files only"));
        return nullptr;
    }
    IKImageItemPtr item = MediaImporter::importFileForWriting(absolute);
    if (!item) {
        report.skipped(QStringLiteral("not a video, audio or photo file"));
        return nullptr;
    }
    return item;
}

using ToolFunction =
    std::function<VideoWriteResult(const IKImageItem&, const StorageContext&, OutputBatch&)>;

int runTool(const QString& command, const QString& description, const QStringList& args,
            const ToolFunction& tool) {
    QCommandLineParser parser;
    parser.setApplicationDescription(description + QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    for (const QString& path : parser.positionalArguments()) {
        if (const IKImageItemPtr item = loadVideo(path, report))
            report.result(tool(*item, storage, batch));
    }
    return report.exitCode();
}

ToolFunction exportTool(VideoWriteJob (*build)(const IKImageItem&, const QList<MetadataItem>&,
                                               const StorageContext&),
                        const char* nothingToDo) {
    return [build, nothingToDo](const IKImageItem& item, const StorageContext& storage,
                                OutputBatch& batch) {
        const VideoWriteJob job = build(item, item.fileMetaArray, storage);
        if (job.request.sourcePath.isEmpty())
            return VideoWriteResult::skippedFile(item.filePath, QLatin1String(nothingToDo));
        return runVideoWriteJob(job, storage.storagelocation, batch);
    };
}

// The location options given replace their part of the file's position; a
// part not given keeps the file's own value with its hemisphere, so setting
// the altitude alone neither drops nor flips the latitude and longitude.
void setLocationOptions(const QCommandLineParser& parser, const IKImageItem& item,
                        VideoEditorState& editor) {
    const bool any = parser.isSet(QStringLiteral("latitude")) ||
                     parser.isSet(QStringLiteral("longitude")) ||
                     parser.isSet(QStringLiteral("altitude"));
    if (!any) return;
    const auto part = [&](const char* name, double magnitude, const QString& sign) {
        if (parser.isSet(QLatin1String(name))) return parser.value(QLatin1String(name));
        if (magnitude == 0.0) return QString();
        return (sign == QLatin1String("-") ? QStringLiteral("-") : QString()) +
               QString::asprintf("%lf", magnitude);
    };
    editor.mediaLatitude = part("latitude", item.filelatitude, item.latitudeFormat);
    editor.mediaLongtitude = part("longitude", item.filelongtitude, item.longtitudeFormat);
    editor.mediaAatitude = part("altitude", item.fileAtitude, item.AtitudeFormat);
}

}  // namespace

int runSet(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a copy of each video into the storage folder with the given fields "
                       "changed, as the\n"
                       "editor's save does. Fields not given keep their values; the location is "
                       "written when\n"
                       "both latitude and longitude are known (signed decimal degrees): a part "
                       "not given keeps\n"
                       "the file's own value. --created-date sets both file dates of the copy; "
                       "otherwise the\n"
                       "copy keeps the source's dates.\n"
                       "\n"
                       "Audio files are saved as the window saves them: MP3 through its ID3v2 "
                       "tag (only the\n"
                       "fields given change; every other frame is kept; ID3v1 and trailing tags "
                       "are left\n"
                       "behind), FLAC through its Vorbis comments (the copy keeps the source's "
                       "dates), every\n"
                       "other audio file through an MPEG-4 audio export.\n"
                       "\n"
                       "Photos get the apply of photo mode: --title is the IPTC object name, "
                       "--artist,\n"
                       "--description, --copyright, --make and --model the TIFF fields, "
                       "--comments the Exif\n"
                       "user comment, --keywords the IPTC keywords (split at commas), "
                       "--shoot-date the Exif\n"
                       "original and digitized dates. The position options are merged into the "
                       "photo's GPS\n"
                       "group (its other GPS tags are kept; a part not given keeps the photo's "
                       "value), with\n"
                       "--gps-date and --gps-time as its date and time stamps. The copy's file "
                       "dates are the\n"
                       "--shoot-date when it reads as \"yyyy:MM:dd HH:mm:ss\", else the "
                       "source's. The picture\n"
                       "data are copied as they are, never re-encoded.\n"
                       "\n"
                       "Options that do not apply to a file's kind are reported and that file is "
                       "skipped.") +
        QLatin1String(kOutputHelp));
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
    addAudioSetOptions(parser);
    addPhotoSetOptions(parser);
    if (const int code = parse(parser, QStringLiteral("set"), args); code >= 0) return code;
    if (const QString problem = photoSetUsageError(parser); !problem.isEmpty())
        return usageError(QStringLiteral("set"), problem);

    QImage artwork;
    if (parser.isSet(QStringLiteral("artwork")) &&
        !artwork.load(parser.value(QStringLiteral("artwork")))) {
        std::fprintf(stderr, "tagsmith-cli set: cannot read the picture %s\n",
                     qPrintable(parser.value(QStringLiteral("artwork"))));
        return 2;
    }
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const QStringList paths = parser.positionalArguments();
    writeEachFile(paths.size(), batch, report, [&](qsizetype index, FileReport& report) {
        const QString& path = paths.at(index);
        const IKImageItemPtr item = loadVideo(path, report, true);
        if (!item) return;
        const bool audio = isAudioPath(item->filePath);
        QString wrong = inapplicablePhotoOptions(parser, item->filePath);
        if (wrong.isEmpty() && !isPhotoPath(item->filePath))
            wrong = inapplicableSetOptions(parser, item->filePath);
        if (!wrong.isEmpty()) return report.skipped(wrong);
        if (isPhotoPath(item->filePath))
            return report.result(setPhotoFile(parser, *item, storage, batch));
        if (audio) {
            QStringList notes;
            const AudioWriteResult result =
                setAudioFile(parser, *item, artwork, storage, batch, &notes);
            for (const QString& note : notes) report.remark(path, note);
            return report.result(result);
        }
        VideoEditorState editor = videoEditorStateFor(*item);
        for (const FieldOption& f : kFieldOptions) {
            if (!parser.isSet(QLatin1String(f.name))) continue;
            editor.*f.field = parser.value(QLatin1String(f.name));
            (f.camera ? editor.cameraInfoChange : editor.basicInfoChange) = true;
        }
        if (parser.isSet(QStringLiteral("created-date")))
            editor.mediaCreatedDate = parser.value(QStringLiteral("created-date"));
        setLocationOptions(parser, *item, editor);
        if (!artwork.isNull()) {
            editor.mediaImage = artwork;
            editor.imageIsPlaceholder = false;
        }
        const VideoWriteJob job =
            SaveChangedVideoExifDateAction(*item, editor, item->fileMetaArray, storage);
        report.result(runVideoWriteJob(job, storage.storagelocation, batch));
    });
    return report.exitCode();
}

int runStrip(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Writes a copy of each video into the storage folder with its title, album, artist,\n"
            "director, performer, producer, publisher, copyright, keywords, description,\n"
            "recorded date and artwork removed, from every key space that holds them. A\n"
            "location is removed when it lies north and east of zero.\n"
            "\n"
            "--all removes every metadata item instead: QuickTime keys, user data (the\n"
            "location included), iTunes items, 3GPP boxes, XMP and every other vendor box\n"
            "of the movie, the tracks' own metadata, cover art and every location. Track\n"
            "structure, edit lists, handler names, chapter tracks and the media are kept,\n"
            "and so are the file's kind and dates. --tracks (with --all) also drops the\n"
            "timed metadata tracks (GPS telemetry, camera motion, chapter texts); their\n"
            "samples stay in the file, unreferenced. When --all fails no copy is left.\n"
            "\n"
            "--gps removes every location item and nothing else: the user data's \"\u00A9xyz\",\n"
            "the 3GPP \"loci\" box, the QuickTime location keys (com.apple.quicktime.location.*,\n"
            "the position as well as its accuracy, name and date), the iTunes \"\u00A9xyz\" and\n"
            "the location boxes of the tracks' user data. Every other item is kept as its own\n"
            "bytes, and the media, the file's kind and its dates are kept. XMP is left as it\n"
            "is, GPS tags included, and so are timed GPS tracks (use --all --tracks). With\n"
            "--all, --gps is the same as --all. When --gps fails no copy is left.\n"
            "\n"
            "Audio files: without flags, the window's Remove Metadata (an MP3 copy keeps\n"
            "its picture and an empty frame for each field it showed; other audio goes\n"
            "through an MPEG-4 audio export without metadata). --all removes every tag and\n"
            "picture. --gps does not apply to audio files.\n"
            "\n"
            "Photos take one of the flags below, with photo mode's removal actions; a\n"
            "photo without a flag is skipped. The picture data are copied as they are.\n"
            "--iptc removes the IPTC group, --exif the Exif group, --gps the GPS group and\n"
            "the XMP GPS properties, --exif-gps (or --exif --gps) the Exif and GPS groups.\n"
            "--all removes every metadata group (Exif, GPS, TIFF, IPTC, JFIF, PNG texts,\n"
            "maker notes, ...) and XMP; the orientation and the colour profile are kept.\n"
            "--iptc, --exif and --exif-gps do not apply to video and audio files.") +
        QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    parser.addOption({QStringLiteral("all"), QStringLiteral("Remove every metadata item.")});
    parser.addOption({QStringLiteral("tracks"),
                      QStringLiteral("With --all: drop the timed metadata tracks too.")});
    parser.addOption({QStringLiteral("gps"),
                      QStringLiteral("Remove every location item and nothing else (not XMP).")});
    addPhotoStripOptions(parser);
    if (const int code = parse(parser, QStringLiteral("strip"), args); code >= 0) return code;
    if (const QString problem = photoStripUsageError(parser); !problem.isEmpty())
        return usageError(QStringLiteral("strip"), problem);
    const bool all = parser.isSet(QStringLiteral("all"));
    const bool tracks = parser.isSet(QStringLiteral("tracks"));
    const bool gps = parser.isSet(QStringLiteral("gps"));
    if (tracks && !all) {
        std::fputs("tagsmith-cli strip: --tracks needs --all\n", stderr);
        return 2;
    }
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const QStringList paths = parser.positionalArguments();
    writeEachFile(paths.size(), batch, report, [&](qsizetype index, FileReport& report) {
        const IKImageItemPtr item = loadVideo(paths.at(index), report, true);
        if (!item) return;
        if (isPhotoPath(item->filePath))
            return report.result(stripPhotoFile(parser, *item, storage, batch));
        const QString kind =
            isAudioPath(item->filePath) ? QStringLiteral("audio") : QStringLiteral("video");
        if (const QString wrong = inapplicablePhotoStripFlags(parser, kind); !wrong.isEmpty())
            return report.skipped(wrong);
        if (isAudioPath(item->filePath)) {
            if (gps && !all)
                return report.skipped(QStringLiteral("--gps does not apply to audio files"));
            return report.result(stripAudioFile(*item, all, storage, batch));
        }
        const VideoWriteJob job =
            all   ? RemoveAllVideoMetadataAction(*item, storage, tracks)
            : gps ? RemoveVideoLocationAction(*item, item->fileMetaArray, storage)
                  : RemoveVideoExifDateAction(*item, videoEditorStateFor(*item),
                                              item->fileMetaArray, storage);
        report.result(runVideoWriteJob(job, storage.storagelocation, batch));
    });
    return report.exitCode();
}

int runVideoTool(const QString& command, const QStringList& args) {
    if (command == QLatin1String("title-to-name")) {
        return runTool(
            command,
            QStringLiteral(
                "Copies each video into the storage folder, named after its recorded title\n"
                "(the extension is kept, \"/\" becomes \"-\"), with the source's file dates."),
            args, [](const IKImageItem& item, const StorageContext& storage, OutputBatch& batch) {
                return CopyvideoTitletoFileNameAction(item, storage, &batch);
            });
    }
    if (command == QLatin1String("name-to-title")) {
        return runTool(
            command,
            QStringLiteral(
                "Writes a copy of each video whose title is its file name without the extension."),
            args, exportTool(CopyvideofilenametoTitleAction, ""));
    }
    if (command == QLatin1String("created-to-recorded")) {
        return runTool(
            command,
            QStringLiteral(
                "Writes a copy of each video whose recorded date is the file's creation date."),
            args, exportTool(ClickCopyVideoCreatedDateToCameraDateAction, ""));
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
            args, exportTool(ClickSetVideoDateFromFileNameAction, "the file name holds no date"));
    }
    if (command == QLatin1String("recorded-to-created")) {
        return runTool(
            command,
            QStringLiteral(
                "Copies each video into the storage folder with both file dates set to its\n"
                "recorded date (the last date item of the file that reads as a date)."),
            args, [](const IKImageItem& item, const StorageContext& storage, OutputBatch& batch) {
                return ClickCopyVideoExifDateToCreateDateAction(item, item.fileMetaArray, storage,
                                                                &batch);
            });
    }
    return -1;
}
