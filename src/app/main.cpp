#include <QApplication>
#include <QSettings>

#include "app/app_delegate.h"
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
    ActivityLog::install();
    installTranslations(app);
    installMovieExporter();
    app.setStyle(QStringLiteral("Fusion"));

    QSettings settings(QStringLiteral("Brimlark"), QStringLiteral("tagsmith"));
    AppDelegate delegate(settings);
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    delegate.mainWindow()->show();
    return app.exec();
}
