// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <cstdio>
#include <mutex>

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

// Collects the records in import order, each as the indented JSON text of
// an array element, made on the thread that read it.
class CollectingSink : public ImportSink {
public:
    explicit CollectingSink(bool withItems) : m_withItems(withItems) {}
    void itemRead(const IKImageItemPtr& item) override {
        QByteArray text;
        if (m_withItems) {
            QJsonObject record = itemToJson(*item);
            record.insert(QStringLiteral("items"), metadataRowsToJson(videoMetadataRows(*item)));
            text = QJsonDocument(record).toJson(QJsonDocument::Indented);
            text.chop(1);  // the last line break
            text = "    " + text.replace("\n", "\n    ");
        } else {
            text = itemToJsonText(*item, 1);
        }
        std::lock_guard lock(m_mutex);
        m_texts.insert(item.get(), text);
    }
    void itemImported(const IKImageItemPtr& item) override {
        std::lock_guard lock(m_mutex);
        records.append(m_texts.take(item.get()));
    }
    void pathMissing(const QString& path) override {
        std::fprintf(stderr, "tagsmith-cli: %s: no such file or folder\n", qPrintable(path));
        missing = true;
    }
    QByteArrayList records;
    bool missing = false;

private:
    const bool m_withItems;
    std::mutex m_mutex;
    QHash<const IKImageItem*, QByteArray> m_texts;
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

    CollectingSink sink(withItems);
    MediaImporter importer(sink, true);
    importer.setReadingThreads(QThread::idealThreadCount());
    importer.importMediaItemsThreader(paths);

    // The array as QJsonDocument indents it, element by element.
    QByteArray json =
        sink.records.isEmpty() ? QByteArray("[\n]\n") : "[\n" + sink.records.join(",\n") + "\n]\n";
    std::fwrite(json.constData(), 1, static_cast<size_t>(json.size()), stdout);
    return sink.missing ? 1 : 0;
}
