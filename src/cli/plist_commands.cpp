// SPDX-License-Identifier: GPL-3.0-or-later
// export and import of tagsmith-cli: the property lists of the metadata
// export, import and template tools.
#include <QCommandLineParser>

#include <cstdio>

#include "cli/batch_cli.h"
#include "core/batch/metadata_plist.h"

namespace {

// The flags of export and import, exactly one of which is given.
struct PlistFlag {
    const char* name;
    const char* help;
};

const PlistFlag kPhotoFlags[] = {
    {"tiff", "photos' TIFF groups (ExportTiffInfo.plist)"},
    {"exif", "photos' Exif groups (ExportExifInfo.plist)"},
    {"exif-tiff", "photos' Exif and TIFF groups (ExportExifandTiffInfo.plist)"},
    {"exif-gps", "photos' Exif and GPS groups (ExportExifandGPSInfo.plist)"},
    {"all-photo", "photos' whole dictionaries (ExportAllMetadataInfo.plist)"},
};

PhotoPlistKind photoKind(const QString& flag) {
    if (flag == QLatin1String("tiff")) return PhotoPlistKind::TIFF;
    if (flag == QLatin1String("exif")) return PhotoPlistKind::Exif;
    if (flag == QLatin1String("exif-tiff")) return PhotoPlistKind::ExifAndTIFF;
    if (flag == QLatin1String("exif-gps")) return PhotoPlistKind::ExifAndGPS;
    return PhotoPlistKind::All;
}

// The one flag given, or "" (reported) when none or several were.
QString chosenFlag(const QCommandLineParser& parser, const QStringList& flags,
                   const QString& command) {
    QStringList given;
    for (const QString& f : flags)
        if (parser.isSet(f)) given << f;
    if (given.size() == 1) return given.first();
    usageError(command,
               QStringLiteral("give exactly one of --%1").arg(flags.join(QStringLiteral(", --"))));
    return {};
}

IKImageItemList loadAll(const QStringList& paths, FileReport& report) {
    IKImageItemList items;
    for (const QString& path : paths)
        if (const IKImageItemPtr item = loadBatchRecord(path, report)) items.append(item);
    return items;
}

int finish(const QString& command, const QList<VideoWriteResult>& results, FileReport& report,
           const TerminalProgress& progress, int total) {
    for (const VideoWriteResult& r : results) report.result(r);
    return report.exitCode() | progress.finish(command, int(results.size()), total);
}

// `WriteSelectedItemsExifDataToPlist:` for every photo: one list each.
QList<VideoWriteResult> exportEachPhoto(const IKImageItemList& items, const StorageContext& storage,
                                        OutputBatch& batch, const BatchProgress& progress) {
    QList<VideoWriteResult> results;
    for (const IKImageItemPtr& item : items) {
        results << WriteSelectedItemsExifDataToPlist(*item, storage, batch);
        if (!reportProgress(progress, int(results.size()), int(items.size()))) break;
    }
    return results;
}

}  // namespace

int runExport(const QStringList& args) {
    const QString command = QStringLiteral("export");
    QCommandLineParser parser;
    QString description = QStringLiteral(
        "Writes the metadata of the files into a property list in the storage folder.\n"
        "Exactly one of:\n"
        "  --metadata   videos' and audio files' fields (metadata.plist), each under\n"
        "               its name without extension; audio files also under the full\n"
        "               name\n"
        "  --template   the first photo's panel fields (templatefile.plist)\n");
    for (const PlistFlag& f : kPhotoFlags)
        description +=
            QStringLiteral("  --%1%2\n")
                .arg(QString::fromLatin1(f.name).leftJustified(11), QLatin1String(f.help));
    description += QStringLiteral(
        "  --per-photo  each photo's whole dictionary in a list of its own, named\n"
        "               after the photo without extension (\"IMG_1.plist\")\n"
        "  --artwork    each file's artwork, as TIFF data named \"FILE.jpg\"\n"
        "Photo lists hold each photo under its file name. Files a list leaves out are\n"
        "reported as skipped; the last line is the list written.");
    parser.setApplicationDescription(description + QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    QStringList flags{QStringLiteral("metadata"), QStringLiteral("template"),
                      QStringLiteral("per-photo"), QStringLiteral("artwork")};
    for (const PlistFlag& f : kPhotoFlags) flags << QLatin1String(f.name);
    for (const QString& f : flags) parser.addOption({f, QStringLiteral("Export %1.").arg(f)});
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const QString flag = chosenFlag(parser, flags, command);
    if (flag.isEmpty()) return 2;

    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const IKImageItemList items = loadAll(parser.positionalArguments(), report);
    TerminalProgress progress;
    QList<VideoWriteResult> results;
    if (flag == QLatin1String("metadata"))
        results = exportMetadataPlist(items, storage, batch, progress.callback());
    else if (flag == QLatin1String("template"))
        results = ExportTemplateDataToPlist(items, storage, batch);
    else if (flag == QLatin1String("per-photo"))
        results = exportEachPhoto(items, storage, batch, progress.callback());
    else if (flag == QLatin1String("artwork"))
        results = exportArtwork(items, storage, batch, progress.callback());
    else
        results = exportPhotoPlist(items, photoKind(flag), storage, batch, progress.callback());
    return finish(command, results, report, progress, int(items.size()));
}

int runImport(const QStringList& args) {
    const QString command = QStringLiteral("import");
    QCommandLineParser parser;
    QString description = QStringLiteral(
        "Applies a property list to the files, writing copies into the storage folder.\n"
        "Exactly one of:\n"
        "  --metadata   reload a metadata.plist: each video or audio file takes the\n"
        "               entry under its name without extension (files without one\n"
        "               are skipped)\n"
        "  --template   a templatefile.plist's fields go into every photo's TIFF,\n"
        "               Exif, IPTC and GPS groups\n");
    for (const PlistFlag& f : kPhotoFlags)
        description +=
            QStringLiteral("  --%1%2\n")
                .arg(QString::fromLatin1(f.name).leftJustified(11), QLatin1String(f.help));
    description += QStringLiteral(
        "A photo list's first entry, in the file's order, goes to every photo: the\n"
        "entries are not matched by name. Its keys replace the photo's keys of the same\n"
        "names; the picture data and every other key stay. A file that is not a property\n"
        "list, or a list of another shape, is refused and nothing is written.");
    parser.setApplicationDescription(description + QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    parser.addPositionalArgument(QStringLiteral("PLIST"), QStringLiteral("The property list."),
                                 QStringLiteral("PLIST"));
    QStringList flags{QStringLiteral("metadata"), QStringLiteral("template")};
    for (const PlistFlag& f : kPhotoFlags) flags << QLatin1String(f.name);
    for (const QString& f : flags) parser.addOption({f, QStringLiteral("Import %1.").arg(f)});
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const QString flag = chosenFlag(parser, flags, command);
    if (flag.isEmpty()) return 2;
    QStringList paths = parser.positionalArguments();
    const QString plist = paths.takeFirst();
    if (paths.isEmpty()) return usageError(command, QStringLiteral("name the files after PLIST"));

    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const IKImageItemList items = loadAll(paths, report);
    TerminalProgress progress;
    PlistImport outcome;
    if (flag == QLatin1String("metadata"))
        outcome = ReloadMetaDataPlistAction(plist, items, storage, batch, progress.callback());
    else if (flag == QLatin1String("template"))
        outcome = ImportTemplateDataPlistAction(plist, items, storage, batch, progress.callback());
    else
        outcome =
            importPhotoPlist(plist, photoKind(flag), items, storage, batch, progress.callback());
    if (!outcome.problem.isEmpty()) {
        std::fprintf(stderr, "tagsmith-cli import: %s: %s\n", qPrintable(plist),
                     qPrintable(outcome.problem));
        return 1;
    }
    return finish(command, outcome.results, report, progress, int(items.size()));
}
