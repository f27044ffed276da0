// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QSettings>

#include "app/app_delegate.h"
#include "app/single_instance.h"
#include "core/common/logging.h"
#include "core/video/video_file_ops.h"
#include "ui/shell/main_window.h"
#include "ui/shell/translations.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Brimlark"));
    QCoreApplication::setApplicationName(QStringLiteral("tagsmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAGSMITH_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tagsmith"));
    // Ties the window to its menu entry and icon (the Wayland app id).
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tagsmith.Tagsmith"));
    ActivityLog::install();
    installTranslations(app);

    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate(
        "main", "Edits the metadata of videos, audio files and photos."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("paths"),
        QCoreApplication::translate("main", "Files and folders to add to the list."),
        QStringLiteral("[PATH...]"));
    parser.process(app);
    // Absolute here: a running window resolves nothing against our folder.
    QStringList paths;
    for (const QString& path : parser.positionalArguments())
        paths << QDir::cleanPath(QDir::current().absoluteFilePath(path));
    if (handToRunningInstance(paths)) return 0;

    installMovieExporter();
    app.setStyle(QStringLiteral("Fusion"));
    QSettings settings(QStringLiteral("Brimlark"), QStringLiteral("tagsmith"));
    AppDelegate delegate(settings);
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    WindowBusObject busObject(delegate);
    // Another launch may have taken the name since we looked: it gets the paths.
    if (!busObject.registerOnBus() && handToRunningInstance(paths)) return 0;
    delegate.mainWindow()->show();
    delegate.openPaths(paths);
    return app.exec();
}
