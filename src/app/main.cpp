#include <QApplication>
#include <QSettings>

#include "app/app_delegate.h"
#include "core/common/logging.h"
#include "ui/shell/main_window.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Brimlark"));
    QCoreApplication::setApplicationName(QStringLiteral("tagsmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tagsmith"));
    ActivityLog::install();
    app.setStyle(QStringLiteral("Fusion"));

    QSettings settings(QStringLiteral("Brimlark"), QStringLiteral("tagsmith"));
    AppDelegate delegate(settings);
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    delegate.mainWindow()->show();
    return app.exec();
}
