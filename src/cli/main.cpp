// tagsmith-cli: the program's core for scripting.
#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

#include "cli/commands.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Brimlark"));
    QCoreApplication::setApplicationName(QStringLiteral("tagsmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAGSMITH_VERSION));
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    return runCommand(args);
}
