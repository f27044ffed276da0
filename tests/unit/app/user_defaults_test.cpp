// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "core/app/user_defaults.h"

namespace {

QStringList fieldsOf(const LaunchSettings& s) {
    return {s.storagePath,   s.fontName,        QString::number(s.fontSize),
            s.positionTitle, s.dateFormatTitle, s.classicBehaviour ? "classic" : "current"};
}

QStringList stored(QSettings& s) {
    QStringList keyValues;
    for (const QString& key : s.allKeys()) keyValues << key + "=" + s.value(key).toString();
    keyValues.sort();
    return keyValues;
}

}  // namespace

TEST(UserDefaults, FirstAndSecondLaunch) {
    QTemporaryDir tmp;
    const QString ini = tmp.path() + "/defaults.ini";
    const QString storage = tmp.path() + "/store/nested";
    QSettings s(ini, QSettings::IniFormat);
    s.setValue(DefaultsKey::storagePath, storage);  // keep the test out of the home folder
    EXPECT_EQ(fieldsOf(readLaunchSettings(s)),
              (QStringList{storage, "Lucida Grande", "14", "Lower left corner", "MM/DD/YYYY HH:MM",
                           "current"}));  // the pop-up's capital L
    // Never "fontsize" nor "classicBehaviour" until the preferences' OK.
    EXPECT_EQ(stored(s), (QStringList{"Dateformat=MM/DD/YYYY HH:MM", "Postion=lower left corner",
                                      "fontName=Lucida Grande", "storagePath=" + storage}));
    EXPECT_TRUE(QDir(storage).exists());

    LaunchSettings chosen = readLaunchSettings(s);
    EXPECT_EQ(fieldsOf(chosen), (QStringList{storage, "Lucida Grande", "0", "lower left corner",
                                             "MM/DD/YYYY HH:MM", "current"}));
    chosen.fontSize = 18;
    chosen.positionTitle = "Upper right corner";
    chosen.storagePath = tmp.path() + "/other";
    chosen.classicBehaviour = true;
    storePreferences(s, chosen);
    EXPECT_EQ(fieldsOf(readLaunchSettings(s)), fieldsOf(chosen));
    EXPECT_TRUE(QDir(chosen.storagePath).exists());
}

TEST(UserDefaults, DefaultStorageIsInTheVideosFolder) {
    EXPECT_TRUE(defaultStoragePath().endsWith("/com.Brimlark.tagsmith"));
}
