// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/app/user_defaults.h"

#include <QDir>
#include <QStandardPaths>

#include "core/common/logging.h"

QString defaultStoragePath() {
    QString movies = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    if (movies.isEmpty()) movies = QDir::homePath() + QStringLiteral("/Videos");
    return movies + QStringLiteral("/com.Brimlark.tagsmith");
}

bool ensureFolder(const QString& path) {
    if (path.isEmpty()) return false;
    if (QDir().mkpath(path)) return true;
    // Not shown to the user: the writers report their own failures later.
    qCWarning(lcTagsmith) << "cannot create the storage folder ==" << path;
    return false;
}

LaunchSettings readLaunchSettings(QSettings& settings) {
    LaunchSettings out;
    if (settings.contains(DefaultsKey::storagePath)) {
        out.storagePath = settings.value(DefaultsKey::storagePath).toString();
    } else {
        out.storagePath = defaultStoragePath();
        settings.setValue(DefaultsKey::storagePath, out.storagePath);
    }
    ensureFolder(out.storagePath);

    if (settings.contains(DefaultsKey::fontName)) {
        out.fontName = settings.value(DefaultsKey::fontName).toString();
        out.fontSize = settings.value(DefaultsKey::fontsize).toInt();
    } else {
        out.fontName = QStringLiteral("Lucida Grande");
        settings.setValue(DefaultsKey::fontName, out.fontName);
        out.fontSize = 14;
    }

    if (settings.contains(DefaultsKey::position)) {
        out.positionTitle = settings.value(DefaultsKey::position).toString();
    } else {
        settings.setValue(DefaultsKey::position, QStringLiteral("lower left corner"));
        out.positionTitle = QStringLiteral("Lower left corner");
    }

    if (settings.contains(DefaultsKey::dateFormat)) {
        out.dateFormatTitle = settings.value(DefaultsKey::dateFormat).toString();
    } else {
        out.dateFormatTitle = QStringLiteral("MM/DD/YYYY HH:MM");
        settings.setValue(DefaultsKey::dateFormat, out.dateFormatTitle);
    }
    out.classicBehaviour = settings.value(DefaultsKey::classicBehaviour, false).toBool();
    settings.sync();
    return out;
}

void storePreferences(QSettings& settings, const LaunchSettings& values) {
    settings.setValue(DefaultsKey::fontName, values.fontName);
    settings.setValue(DefaultsKey::fontsize, values.fontSize);
    settings.setValue(DefaultsKey::position, values.positionTitle);
    settings.setValue(DefaultsKey::dateFormat, values.dateFormatTitle);
    settings.setValue(DefaultsKey::storagePath, values.storagePath);
    settings.setValue(DefaultsKey::classicBehaviour, values.classicBehaviour);
    settings.sync();
    ensureFolder(values.storagePath);
}
