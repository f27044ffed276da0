// SPDX-License-Identifier: GPL-3.0-or-later
// Batch commands of tagsmith-cli: rename, the batch date change, the date
// copying tools and the XMP sidecars, over the same core calls as the
// window's dialogs.
#include <QCommandLineParser>
#include <QFileInfo>
#include <QStandardPaths>

#include <atomic>
#include <cstdio>

#include "cli/batch_cli.h"
#include "cli/commands.h"
#include "core/batch/batch_dates.h"
#include "core/batch/batch_rename.h"
#include "core/batch/copy_tools.h"
#include "core/batch/xmp_sidecars.h"
#include "core/import/media_import.h"

namespace {

QString journalPath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/last-rename.json");
}

int runUndo() {
    const QList<RenameStep> undone = undoRename(loadRenameJournal(journalPath()));
    FileReport report;
    for (const RenameStep& s : undone) {
        if (s.problem.isEmpty())
            report.written(s.newPath);
        else
            report.failed(s.problem);
    }
    if (undone.isEmpty()) std::fputs("tagsmith-cli rename: nothing to undo\n", stderr);
    saveRenameJournal(journalPath(), {});
    return report.exitCode();
}

// The record a rename needs: tags and pixel size where the file has them;
// any other file is renamed by its name alone.
IKImageItemPtr renameRecord(const QString& path) {
    const QString absolute = QFileInfo(path).absoluteFilePath();
    IKImageItemPtr item = MediaImporter::importFile(absolute, false, true);
    if (!item) {
        item = std::make_shared<IKImageItem>();
        item->filePath = absolute;
        item->fileName = QFileInfo(absolute).fileName();
    }
    return item;
}

const char* const kRenameHelp =
    "Renames files in their own folders, to a custom text or to a name made from\n"
    "their metadata. Unlike the other commands this one moves the named files.\n"
    "\n"
    "--text TEXT gives every file the name TEXT; with --number each gets TEXT and\n"
    "a six-digit running number from 1 (Trip000001, Trip000002, ...).\n"
    "--template \"TEMPLATE\" builds each name from the tags {Existing File Name},\n"
    "{Title}, {Artist}, {Description}, {Copyright}, {Dimensions}, {Keywords},\n"
    "{Camera Make}, {Camera Model} and {Camera Date} (the recorded date, else the\n"
    "creation date, in the --date-format LAYOUT: \"MM:DD:YYYY HH:MM:ss\",\n"
    "\"DD:MM:YYYY HH:MM:ss\", \"YYYY:MM:DD HH:MM:ss\", \"YYYYMMDD HHMMss\",\n"
    "\"YYYY_MM_DD HH.MM.ss\", \"YYYY_MM_DD\", \"MMDDYYYY HHMMss\",\n"
    "\"MM_DD_YYYY HH.MM.ss\", \"DDMMYYYY HHMMss\" or \"DD_MM_YYYY HH.MM.ss\").\n"
    "After substitution the characters { } , ( ) / are removed; a tag the file\n"
    "has no value for leaves nothing (and no double blank). With --number the\n"
    "template name gets a blank and the running number; --suffix TEXT is put\n"
    "after every new name. --replace-invalid turns the characters that removable\n"
    "drives and network shares refuse (\\ / : * ? \" < > | and control characters)\n"
    "into \"_\".\n"
    "\n"
    "Each file keeps its extension and its file dates. When the new name is taken,\n"
    "the running number is added after a blank (\"Trip 3.jpg\"); when that is taken\n"
    "too, the file keeps its name and is reported as failed. Nothing is ever\n"
    "overwritten.\n"
    "\n"
    "Prints the new path of each file, or \"skipped: REASON\" / \"failed: REASON\";\n"
    "with --dry-run nothing moves and each line is \"OLD -> NEW\". --undo (alone)\n"
    "puts the files of the last rename back under their old names. Ctrl-C stops\n"
    "after the file in hand. Exit status: 0 when every file was renamed, 1 when\n"
    "any was not, 2 for a usage error.";

}  // namespace

int runRename(const QStringList& args) {
    if (args == QStringList{QStringLiteral("--undo")}) return runUndo();
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(kRenameHelp));
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("text"), QStringLiteral("Custom text."), QStringLiteral("TEXT")});
    parser.addOption(
        {QStringLiteral("template"), QStringLiteral("Name template."), QStringLiteral("TEMPLATE")});
    parser.addOption({QStringLiteral("date-format"), QStringLiteral("Layout of {Camera Date}."),
                      QStringLiteral("LAYOUT")});
    parser.addOption({QStringLiteral("number"), QStringLiteral("Add the running number.")});
    parser.addOption({QStringLiteral("suffix"), QStringLiteral("Text after every name."),
                      QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("replace-invalid"),
                      QStringLiteral("Replace characters other systems refuse with _.")});
    parser.addOption({QStringLiteral("dry-run"), QStringLiteral("Print old and new names only.")});
    parser.addOption({QStringLiteral("undo"), QStringLiteral("Undo the last rename.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Files to rename."),
                                 QStringLiteral("FILE..."));
    const QString command = QStringLiteral("rename");
    if (const int code = parse(parser, command, args); code >= 0) return code;
    if (parser.isSet(QStringLiteral("undo")))
        return usageError(command, QStringLiteral("--undo takes no other arguments"));
    const bool text = parser.isSet(QStringLiteral("text"));
    if (text == parser.isSet(QStringLiteral("template")))
        return usageError(command, QStringLiteral("give either --text or --template"));
    RenameOptions options;
    options.useCustomName = text;
    options.customText = parser.value(QStringLiteral("text"));
    options.templateText = parser.value(QStringLiteral("template"));
    options.startNumber = options.sequence = parser.isSet(QStringLiteral("number"));
    options.suffix = parser.value(QStringLiteral("suffix"));
    options.replaceInvalid = parser.isSet(QStringLiteral("replace-invalid"));
    options.dateFormat = parser.value(QStringLiteral("date-format"));
    if (!options.dateFormat.isEmpty() && !renameDateFormatTitles().contains(options.dateFormat))
        return usageError(command,
                          QStringLiteral("unknown date format \"%1\"").arg(options.dateFormat));

    FileReport report;
    IKImageItemList items;
    for (const QString& path : parser.positionalArguments()) {
        if (checkRegularFile(path, report)) items.append(renameRecord(path));
    }
    if (parser.isSet(QStringLiteral("dry-run"))) {
        for (const RenameStep& s : previewRename(items, options)) {
            if (s.ok())
                report.written(s.oldPath + QStringLiteral(" -> ") + s.newPath);
            else
                report.failed(s.problem);
        }
        return report.exitCode();
    }
    TerminalProgress progress;
    const QList<RenameStep> done = renameItems(items, options, progress.callback());
    for (const RenameStep& s : done) {
        if (s.ok())
            report.written(s.newPath);
        else
            report.failed(s.problem);
    }
    saveRenameJournal(journalPath(), done);
    return report.exitCode() | progress.finish(command, int(done.size()), int(items.size()));
}

namespace {

const char* const kDateHelpTail =
    "\n\n"
    "Videos get the new date in every date item, MP3, FLAC and other audio files\n"
    "in their record date; every other tag stays as the file has it. Photos are\n"
    "skipped (their dates are set with photo-date). With --created the date\n"
    "becomes instead the file date of an unchanged copy of each file, photos\n"
    "included; Linux cannot set a creation time, so it is the modification time.";

void addDateOptions(QCommandLineParser& parser) {
    addCommonOptions(parser);
    parser.addOption(
        {QStringLiteral("created"), QStringLiteral("Change the copies' file date instead.")});
}

int runBatchDate(const QString& command, const QCommandLineParser& parser,
                 const BatchDateChange& change) {
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    IKImageItemList items;
    for (const QString& path : parser.positionalArguments()) {
        if (const IKImageItemPtr item = loadBatchRecord(path, report)) items.append(item);
    }
    TerminalProgress progress;
    const QList<VideoWriteResult> results =
        parser.isSet(QStringLiteral("created"))
            ? ClickMutiCreatedDateChangedSaveAction(items, change, storage, batch,
                                                    progress.callback())
            : ClickMutiDateChangedSaveAction(items, change, storage, batch, progress.callback());
    for (const VideoWriteResult& r : results) report.result(r);
    return report.exitCode() | progress.finish(command, int(results.size()), int(items.size()));
}

bool readAmount(const QCommandLineParser& parser, const char* name, qint32* value) {
    if (!parser.isSet(QLatin1String(name))) return true;
    bool ok = false;
    *value = parser.value(QLatin1String(name)).toInt(&ok);
    return ok;
}

}  // namespace

int runSetDate(const QStringList& args) {
    const QString command = QStringLiteral("set-date");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Gives every file one recorded date, optionally stepped from file to file:\n"
            "with --step N --unit U the first file gets the date itself, the second the\n"
            "date plus N units, and so on. The date is read in local time and written\n"
            "as its universal-time text, \"yyyy:MM:dd HH:mm:ss\".") +
        QLatin1String(kDateHelpTail) + QLatin1String(kOutputHelp));
    addDateOptions(parser);
    parser.addOption(
        {QStringLiteral("date"),
         QStringLiteral("The date, \"yyyy:MM:dd HH:mm:ss\" or \"yyyy-MM-dd HH:mm:ss\"."),
         QStringLiteral("DATE")});
    parser.addOption(
        {QStringLiteral("step"), QStringLiteral("Step between files."), QStringLiteral("N")});
    parser.addOption({QStringLiteral("unit"), QStringLiteral("second, minute or hour."),
                      QStringLiteral("UNIT"), QStringLiteral("second")});
    if (const int code = parse(parser, command, args); code >= 0) return code;
    BatchDateChange change;
    change.fixedDate = parser.value(QStringLiteral("date"));
    if (!change.fixedWay())
        return usageError(command, QStringLiteral("--date \"yyyy:MM:dd HH:mm:ss\" is needed"));
    if (const QString problem = batchDateProblem(change); !problem.isEmpty())
        return usageError(command, problem);
    const QString unit = parser.value(QStringLiteral("unit")).toLower();
    if (unit != QLatin1String("second") && unit != QLatin1String("minute") &&
        unit != QLatin1String("hour"))
        return usageError(command, QStringLiteral("--unit is second, minute or hour"));
    change.step = parser.isSet(QStringLiteral("step"));
    change.stepCount = parser.value(QStringLiteral("step"));
    qint32 steps = 0;
    if (!readAmount(parser, "step", &steps))
        return usageError(command, QStringLiteral("--step takes a whole number"));
    change.stepUnit = unit.left(1).toUpper() + unit.mid(1);
    return runBatchDate(command, parser, change);
}

int runShiftDate(const QStringList& args) {
    const QString command = QStringLiteral("shift-date");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Moves each file's own recorded date (else its creation date) forward with\n"
            "--add or back with --subtract. The amounts carry component by component,\n"
            "each at most once, with every month counted as 31 days and no calendar\n"
            "correction: 23:59:59 plus one second is 00:00:00 of the next day, adding\n"
            "anything to a December date gives month 00 of the next year, and\n"
            "subtracting from a zero second, minute or hour borrows even when the\n"
            "amount is 0 (10:00:00 minus nothing is 09:59:60). A date is looked for in\n"
            "common written forms (\"May 6, 2019 7:08 PM\", \"06.05.2019 19:08\" read day\n"
            "first, \"2019/05/06\"); a file without one gets its date text unchanged.") +
        QLatin1String(kDateHelpTail) + QLatin1String(kOutputHelp));
    addDateOptions(parser);
    parser.addOption({QStringLiteral("add"), QStringLiteral("Move the dates forward.")});
    parser.addOption({QStringLiteral("subtract"), QStringLiteral("Move the dates back.")});
    const char* const amounts[] = {"years", "months", "days", "hours", "minutes", "seconds"};
    for (const char* a : amounts)
        parser.addOption({QLatin1String(a), QStringLiteral("Amount of %1.").arg(QLatin1String(a)),
                          QStringLiteral("N")});
    if (const int code = parse(parser, command, args); code >= 0) return code;
    if (parser.isSet(QStringLiteral("add")) == parser.isSet(QStringLiteral("subtract")))
        return usageError(command, QStringLiteral("give either --add or --subtract"));
    BatchDateChange change;
    change.add = parser.isSet(QStringLiteral("add"));
    qint32* const fields[] = {&change.years, &change.months,  &change.days,
                              &change.hours, &change.minutes, &change.seconds};
    for (int i = 0; i < 6; ++i) {
        if (!readAmount(parser, amounts[i], fields[i]))
            return usageError(
                command,
                QStringLiteral("--%1 takes a whole number").arg(QLatin1String(amounts[i])));
    }
    return runBatchDate(command, parser, change);
}

int runCopyDate(const QStringList& args) {
    const QString command = QStringLiteral("copy-date");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Copies one date or text field of each file into another, in a copy in the\n"
            "storage folder. FIELD pairs:\n"
            "  --from recorded --to created   file dates of the copy = recorded date\n"
            "  --from created --to recorded   recorded date (photos: original,\n"
            "                                 digitized and TIFF dates) = creation date\n"
            "  --from created --to modified   modification date of the copy = creation\n"
            "                                 date\n"
            "  --from name --to comment       comment = file name without extension\n"
            "                                 (photos: Exif user comment, audio:\n"
            "                                 comments, videos: description)\n"
            "--from modified --to created is refused: Linux cannot set a file's\n"
            "creation date.") +
        QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    parser.addOption(
        {QStringLiteral("from"), QStringLiteral("Field to read."), QStringLiteral("FIELD")});
    parser.addOption(
        {QStringLiteral("to"), QStringLiteral("Field to write."), QStringLiteral("FIELD")});
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const QString pair = parser.value(QStringLiteral("from")) + QLatin1Char('>') +
                         parser.value(QStringLiteral("to"));
    using Tool = VideoWriteResult (*)(const IKImageItem&, const StorageContext&, OutputBatch&);
    Tool tool = nullptr;
    if (pair == QLatin1String("recorded>created")) tool = ClickCopyExifDateToCreateDateAction;
    if (pair == QLatin1String("created>recorded")) tool = ClickCopyCreatedDateToCameraDateAction;
    if (pair == QLatin1String("created>modified")) tool = ClickCopyCreatedDateToModifyDateAction;
    if (pair == QLatin1String("name>comment")) tool = ClickCopyFileNameToCommentsAction;
    if (pair == QLatin1String("modified>created"))
        return usageError(command, QLatin1String(kCreationDateTooltip));
    if (!tool) return usageError(command, QStringLiteral("unknown --from/--to pair"));
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const QStringList paths = parser.positionalArguments();
    TerminalProgress progress;
    const BatchProgress step = progress.callback();
    int done = 0;
    for (const QString& path : paths) {
        if (const IKImageItemPtr item = loadBatchRecord(path, report))
            report.result(tool(*item, storage, batch));
        if (!step(++done, int(paths.size()))) break;
    }
    return report.exitCode() | progress.finish(command, done, int(paths.size()));
}

int runXmp(const QStringList& args) {
    const QString command = QStringLiteral("xmp");
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Applies XMP sidecars to videos. Every file ending in .xmp or .XMP in the\n"
        "folders (scanned recursively) is read; the video beside it with the same\n"
        "name is the first of NAME.mov, NAME.MOV, NAME.mp4, NAME.MP4, NAME.Mov and\n"
        "NAME.Mp4 that exists. Its title (dc:title), position (exif:GPSLatitude,\n"
        "exif:GPSLongitude, exif:GPSAltitude, as \"48,51.396N\" and \"35/1\", written as\n"
        "decimal degrees and metres) and date (photoshop:DateCreated, read as local\n"
        "time with any offset dropped; a date with fewer than six parts such as\n"
        "\"2019-05-06\" writes no date, one that does not read gives the video's\n"
        "creation date) are written into the video. The values are read from the\n"
        "elements' text as it stands: a title in the alternative-language form keeps\n"
        "its inner markup, and properties written as attributes are not read.\n"
        "\n"
        "Unlike the other commands this one replaces the videos: each new file is\n"
        "written beside its video under a hidden name and renamed over it once\n"
        "complete, with the sidecar's date (else the video's own dates) as file\n"
        "dates. A failed write leaves the video as it was.\n"
        "\n"
        "Prints one line per sidecar: the path of the video replaced, \"skipped:\n"
        "REASON\" for a sidecar with no video beside it, or \"failed: REASON\" for a\n"
        "sidecar that is not valid XML or a video that could not be written.\n"
        "Ctrl-C stops after the sidecar in hand. Exit status: 0 when nothing failed\n"
        "(sidecars without a video are no failure), 1 otherwise, 2 for a usage\n"
        "error."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FOLDER"),
                                 QStringLiteral("Folders (or sidecar files) to apply."),
                                 QStringLiteral("FOLDER..."));
    if (const int code = parse(parser, command, args); code >= 0) return code;
    FileReport report;
    QStringList paths;
    for (const QString& path : parser.positionalArguments()) {
        if (QFileInfo::exists(path))
            paths << QFileInfo(path).absoluteFilePath();
        else
            report.failed(QStringLiteral("%1: no such file or folder").arg(path));
    }
    TerminalProgress progress;
    std::atomic<bool> cancel{false};
    int done = 0;
    XmpBatchCallbacks callbacks;
    callbacks.cancel = &cancel;
    callbacks.finished = [&](VideoWriteResult r) {
        ++done;
        // Several sidecars come from one folder: each line names its file.
        if (!r.ok())
            r.reason = QFileInfo(r.sourcePath).fileName() + QStringLiteral(": ") + r.reason;
        if (r.skipped)
            report.noted(QStringLiteral("skipped: ") + r.reason);
        else
            report.result(r);
        cancel = progress.cancelled();
    };
    ScnXmpPhotosItemThreader(paths, callbacks);
    return report.exitCode() | progress.finish(command, done, done);
}
