#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "core/app/user_defaults.h"

TEST(UserDefaults, FirstAndSecondLaunch) {
    QTemporaryDir tmp;
    const QString ini = tmp.path() + "/defaults.ini";
    const QString storage = tmp.path() + "/store/nested";
    LaunchSettings first;
    {
        QSettings s(ini, QSettings::IniFormat);
        s.setValue(DefaultsKey::storagePath, storage);  // keep the test out of the home folder
        first = readLaunchSettings(s);
        EXPECT_TRUE(s.contains("fontName"));
        EXPECT_TRUE(s.contains("Postion"));
        EXPECT_TRUE(s.contains("Dateformat"));
        EXPECT_FALSE(s.contains("fontsize"));
        EXPECT_FALSE(s.contains("classicBehaviour"));
        EXPECT_EQ(s.value("Postion").toString(), "lower left corner");
        EXPECT_EQ(s.value("Dateformat").toString(), "MM/DD/YYYY HH:MM");
    }
    EXPECT_EQ(first.storagePath, storage);
    EXPECT_TRUE(QDir(storage).exists());
    EXPECT_EQ(first.fontName, "Lucida Grande");
    EXPECT_EQ(first.fontSize, 14);
    EXPECT_EQ(first.positionTitle, "Lower left corner");  // the pop-up's capital L
    EXPECT_EQ(first.dateFormatTitle, "MM/DD/YYYY HH:MM");
    EXPECT_FALSE(first.classicBehaviour);

    QSettings s(ini, QSettings::IniFormat);
    const LaunchSettings second = readLaunchSettings(s);
    EXPECT_EQ(second.fontName, "Lucida Grande");
    EXPECT_EQ(second.fontSize, 0);  // "fontsize" was never written
    EXPECT_EQ(second.positionTitle, "lower left corner");

    LaunchSettings chosen = second;
    chosen.fontSize = 18;
    chosen.positionTitle = "Upper right corner";
    chosen.storagePath = tmp.path() + "/other";
    chosen.classicBehaviour = true;
    storePreferences(s, chosen);
    const LaunchSettings third = readLaunchSettings(s);
    EXPECT_EQ(third.fontSize, 18);
    EXPECT_EQ(third.positionTitle, "Upper right corner");
    EXPECT_EQ(third.storagePath, tmp.path() + "/other");
    EXPECT_TRUE(third.classicBehaviour);
    EXPECT_TRUE(QDir(third.storagePath).exists());
}

TEST(UserDefaults, DefaultStorageIsInTheVideosFolder) {
    EXPECT_TRUE(defaultStoragePath().endsWith("/com.Brimlark.tagsmith"));
}
