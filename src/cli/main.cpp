// tagsmith-cli: the program's core for scripting.
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QStringList>

#include "cli/commands.h"
#include "core/common/desktop_integration.h"
#include "core/video/video_file_ops.h"

int main(int argc, char** argv) {
    // Without TZ, the C library checks /etc/localtime again (a stat) in every
    // local-time conversion, and a command converts several dates per file.
    // Naming that same file keeps the zone and spares the checks.
    if (!qEnvironmentVariableIsSet("TZ")) qputenv("TZ", ":/etc/localtime");
    QCoreApplication app(argc, argv);
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
