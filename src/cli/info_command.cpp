// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <cstdio>

#include "cli/commands.h"
#include "core/import/item_json.h"
#include "core/import/media_import.h"

namespace {

const char* const kInfoHelp =
    "Usage: tagsmith-cli info [--json] [--items] PATH...\n"
    "\n"
    "Imports the given files and folders as the editor's list and the photo\n"
    "view do (folders recursively, files of other kinds skipped) and prints one\n"
    "JSON array with an object per media record. Each object holds the record's\n"
    "non-empty fields under their field names (fileName, fileSize, fileduration,\n"
    "...). Photos are read for their metadata only: pixel size, make, model,\n"
    "GPS fields, title and keywords; a photo that cannot be read is still listed\n"
    "with its file facts and the reason in fileReadProblem.\n"
    "\n"
    "  --json    the output form (the default and, for now, the only one)\n"
    "  --items   add every metadata item of each file in container order, as\n"
    "            the window's \"All Tags\" list shows them, under \"items\":\n"
    "            keySpace, key, value (pictures as \"JPEG picture, W x H\"; XMP\n"
    "            property by property), the item's identifier, and \"bytes\"\n"
    "            for binary values\n"
    "\n"
    "A path that does not exist is reported on stderr and makes the exit code\n"
    "1; the other paths are still printed.\n";

// Collects the records in import order.
class CollectingSink : public ImportSink {
public:
    void itemImported(const IKImageItemPtr& item) override { items.append(item); }
    void pathMissing(const QString& path) override {
        std::fprintf(stderr, "tagsmith-cli: %s: no such file or folder\n", qPrintable(path));
        missing = true;
    }
    IKImageItemList items;
    bool missing = false;
};

}  // namespace

int runInfo(const QStringList& args) {
    QStringList paths;
    bool optionsEnded = false;
    bool withItems = false;
    for (const QString& arg : args) {
        if (!optionsEnded && arg == QLatin1String("--")) {
            optionsEnded = true;
        } else if (!optionsEnded &&
                   (arg == QLatin1String("--help") || arg == QLatin1String("-h"))) {
            std::fputs(kInfoHelp, stdout);
            return 0;
        } else if (!optionsEnded && arg == QLatin1String("--json")) {
        } else if (!optionsEnded && arg == QLatin1String("--items")) {
            withItems = true;
        } else if (!optionsEnded && arg.startsWith(QLatin1Char('-')) && arg.size() > 1) {
            std::fprintf(stderr, "tagsmith-cli info: unknown option '%s'\n\n%s", qPrintable(arg),
                         kInfoHelp);
            return 2;
        } else {
            paths.append(arg);
        }
    }
    if (paths.isEmpty()) {
        std::fputs(kInfoHelp, stderr);
        return 2;
    }

    CollectingSink sink;
    MediaImporter importer(sink, true);
    importer.setReadingThreads(QThread::idealThreadCount());
    importer.importMediaItemsThreader(paths);

    QJsonArray array;
    for (const IKImageItemPtr& item : sink.items) {
        QJsonObject record = itemToJson(*item);
        if (withItems)
            record.insert(QStringLiteral("items"), metadataRowsToJson(videoMetadataRows(*item)));
        array.append(record);
    }
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Indented);
    std::fwrite(json.constData(), 1, static_cast<size_t>(json.size()), stdout);
    return sink.missing ? 1 : 0;
}
