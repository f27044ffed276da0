// SPDX-License-Identifier: GPL-3.0-or-later
// tagsmith-cli: the program's core for scripting.
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QStringList>

#include <malloc.h>

#include <memory>

#include "cli/commands.h"
#include "core/common/desktop_integration.h"
#include "core/video/video_file_ops.h"

namespace {

// Drawing text (the date stamp) needs Qt's GUI side; a command line shows no
// window, so that command gets the offscreen platform.
std::unique_ptr<QCoreApplication> applicationFor(int& argc, char** argv) {
    int command = 1;
    if (command < argc &&
        (qstrcmp(argv[command], "--verbose") == 0 || qstrcmp(argv[command], "-v") == 0))
        ++command;
    if (command < argc && qstrcmp(argv[command], "stamp") == 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QGuiApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    // A batch reads and writes one file's bytes after another: the heap keeps
    // what it freed rather than giving it back to the system after every file.
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    mallopt(M_TOP_PAD, 4 << 20);
    // Without TZ, the C library checks /etc/localtime again (a stat) in every
    // local-time conversion, and a command converts several dates per file.
    // Naming that same file keeps the zone and spares the checks.
    if (!qEnvironmentVariableIsSet("TZ")) qputenv("TZ", ":/etc/localtime");
    const std::unique_ptr<QCoreApplication> app = applicationFor(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Brimlark"));
    QCoreApplication::setApplicationName(QStringLiteral("tagsmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAGSMITH_VERSION));
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    // Informational and debugging log lines (skipped folders, unreadable
    // files, Exiv2's and the image readers' remarks on damaged photos) only
    // with --verbose; our warnings always reach stderr.
    if (!args.isEmpty() &&
        (args.first() == QLatin1String("--verbose") || args.first() == QLatin1String("-v"))) {
        args.removeFirst();
    } else {
        QLoggingCategory::setFilterRules(
            QStringLiteral("tagsmith*.debug=false\ntagsmith*.info=false\n"
                           "qt.gui.imageio*.warning=false"));
    }
    // New files are not shown in a file manager from the command line.
    DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    installMovieExporter();
    return runCommand(args);
}
