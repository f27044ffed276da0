// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/help_links.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

QUrl productGuideUrl(const QString& webAddress) {
    if (!webAddress.isEmpty()) return QUrl(webAddress);
    const QString page = QLatin1String(kLocalGuidePage);
    const QString beside =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../share/") + page);
    if (QFileInfo(beside).isFile())
        return QUrl::fromLocalFile(QFileInfo(beside).canonicalFilePath());
    const QString found = QStandardPaths::locate(QStandardPaths::GenericDataLocation, page);
    return found.isEmpty() ? QUrl() : QUrl::fromLocalFile(found);
}
