// SPDX-License-Identifier: GPL-3.0-or-later
// `stamp` and `check-update`: the date stamp and the update check of the
// window, from the command line.
#include <QColor>
#include <QCoreApplication>
#include <QEventLoop>
#include <QSettings>

#include <algorithm>
#include <cstdio>

#include "cli/commands.h"
#include "cli/photo_commands.h"
#include "core/app/update_check.h"
#include "core/app/user_defaults.h"
#include "core/photo/photo_stamp.h"

namespace {

constexpr int kMaxFontSize = 2000;

// The stamp as the app's preferences set it: the stored font, size and
// titles (the size 14 and the titles "Lower left corner" and
// "MM/DD/YYYY HH:MM" until the preferences are confirmed), white.
StampStyle preferredStyle() {
    const QSettings settings;
    StampStyle style;
    if (settings.contains(DefaultsKey::fontName)) {
        style.currentFontname = settings.value(DefaultsKey::fontName).toString();
        style.currentFontSize = settings.value(DefaultsKey::fontsize).toInt();
    }
    style.postion = settings.value(DefaultsKey::position, style.postion).toString();
    style.dateFormat = settings.value(DefaultsKey::dateFormat, style.dateFormat).toString();
    return style;
}

}  // namespace

int runStamp(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Writes a copy of each photo into the storage folder as NAME_date.EXT with the\n"
            "date it was taken drawn into the picture, as the window's date stamp does.\n"
            "The date is the Exif original date when the photo has both an original and a\n"
            "digitized date, else the file's creation date in universal time\n"
            "(\"yyyy-MM-dd HH:mm:ss\", which no layout changes); a photo whose metadata\n"
            "cannot be read is stamped with the current date. The layouts reorder a colon\n"
            "date and keep the seconds. The copy is JPEG data at a low quality, also under a\n"
            ".png name; it is upright (orientation 1), keeps the photo's Exif, GPS, IPTC\n"
            "and XMP, and its file dates are the photo's date. Defaults come from the\n"
            "app's preferences (a stored position that is no corner title puts the text\n"
            "at the lower left).") +
        QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    parser.addOptions(
        {{QStringLiteral("font"), QStringLiteral("Font family."), QStringLiteral("F")},
         {QStringLiteral("size"), QStringLiteral("Font size in pixels."), QStringLiteral("N")},
         {QStringLiteral("color"), QStringLiteral("Text colour (default white)."),
          QStringLiteral("#RRGGBB")},
         {QStringLiteral("position"),
          QStringLiteral("\"Lower left corner\", \"Lower right corner\", \"Upper left corner\" "
                         "or \"Upper right corner\"."),
          QStringLiteral("CORNER")},
         {QStringLiteral("layout"),
          QStringLiteral("\"MM/DD/YYYY HH:MM\", \"DD/MM/YYYY HH:MM\" or \"YYYY/MM/DD HH:MM\"."),
          QStringLiteral("LAYOUT")}});
    const QString command = QStringLiteral("stamp");
    if (const int code = parse(parser, command, args); code >= 0) return code;
    StampStyle style = preferredStyle();
    if (parser.isSet(QStringLiteral("font")))
        style.currentFontname = parser.value(QStringLiteral("font"));
    if (parser.isSet(QStringLiteral("size"))) {
        bool ok = false;
        style.currentFontSize = parser.value(QStringLiteral("size")).toInt(&ok);
        if (!ok || style.currentFontSize < 1 || style.currentFontSize > kMaxFontSize)
            return usageError(
                command, QStringLiteral("--size takes a number from 1 to %1").arg(kMaxFontSize));
    }
    if (parser.isSet(QStringLiteral("color"))) {
        style.currentFontColor = QColor::fromString(parser.value(QStringLiteral("color")));
        if (!style.currentFontColor.isValid())
            return usageError(command, QStringLiteral("--color takes a colour such as #ffcc00"));
    }
    const auto choose = [&](const char* name, const auto& titles, QString* field) {
        if (!parser.isSet(QLatin1String(name))) return true;
        *field = parser.value(QLatin1String(name));
        return std::find(std::begin(titles), std::end(titles), *field) != std::end(titles);
    };
    if (!choose("position", kPositionTitles, &style.postion))
        return usageError(command, QStringLiteral("unknown --position (see --help)"));
    if (!choose("layout", kStampDateFormats, &style.dateFormat))
        return usageError(command, QStringLiteral("unknown --layout (see --help)"));
    return writePhotos(
        parser, [&](const IKImageItem& item, const StorageContext& storage, OutputBatch& batch) {
            return AddDateOnPhotoAction(item, style, storage, batch);
        });
}

int runCheckUpdate(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Fetches the version document and says whether a newer version is published.\n"
        "Versions compare with their dots removed (1.2.10 reads 1210 and is newer than\n"
        "1.3). Prints the texts of the update window and its release notes (each \"*\" a\n"
        "new line), or that no update exists. Exit status: 0 when the document was\n"
        "read, 1 when it could not be fetched or is not a property-list dictionary."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("url"),
                      QStringLiteral("Address of the version document (default: the app's "
                                     "setting \"updateURL\", else the maker's)."),
                      QStringLiteral("URL")});
    QStringList argv = args;
    argv.prepend(QStringLiteral("tagsmith-cli check-update"));
    if (!parser.parse(argv)) return usageError(QStringLiteral("check-update"), parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return usageError(QStringLiteral("check-update"), QStringLiteral("takes no files"));
    const QUrl url = parser.isSet(QStringLiteral("url"))
                         ? QUrl::fromUserInput(parser.value(QStringLiteral("url")))
                         : updateDocumentUrl(QSettings());
    UpdateCheck check;
    UpdateAnswer answer;
    QEventLoop loop;
    QObject::connect(&check, &UpdateCheck::answered, &loop, [&](const UpdateAnswer& a) {
        answer = a;
        loop.quit();
    });
    const QString current = QCoreApplication::applicationVersion();
    check.checkServerVersion(url, current);
    loop.exec();
    switch (answer.kind) {
        case UpdateAnswer::Failed:
            std::puts("failed: the version document could not be fetched");
            return 1;
        case UpdateAnswer::NotDictionary:
            std::puts("failed: the version document is not a property-list dictionary");
            return 1;
        case UpdateAnswer::NotNewer:
            std::printf("No update is available: you are using the latest version (%s).\n",
                        qPrintable(current));
            return 0;
        case UpdateAnswer::Newer:
            break;
    }
    std::printf("%s\n%s\n%s\n", qPrintable(newVersionText(answer.lastestVersion)),
                qPrintable(currentVersionText(current)), qPrintable(answer.whatsnewString));
    return 0;
}
