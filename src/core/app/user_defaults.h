// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QString>

// The per-user defaults: five keys, spelled as the program has always
// stored them ("Postion" included), and the "Classic behaviour" switch,
// written only by the preferences' OK.
namespace DefaultsKey {
inline constexpr const char* storagePath = "storagePath";
inline constexpr const char* fontName = "fontName";
inline constexpr const char* fontsize = "fontsize";
inline constexpr const char* position = "Postion";
inline constexpr const char* dateFormat = "Dateformat";
inline constexpr const char* classicBehaviour = "classicBehaviour";
}  // namespace DefaultsKey

// Titles of the stamp pop-ups, in their order.
// Stored in English; the preferences show them translated (context
// "PreferencesWindow").
inline constexpr const char* kPositionTitles[] = {
    QT_TRANSLATE_NOOP("PreferencesWindow", "Upper left corner"),
    QT_TRANSLATE_NOOP("PreferencesWindow", "Upper right corner"),
    QT_TRANSLATE_NOOP("PreferencesWindow", "Lower left corner"),
    QT_TRANSLATE_NOOP("PreferencesWindow", "Lower right corner")};
inline constexpr const char* kStampDateFormats[] = {"MM/DD/YYYY HH:MM", "DD/MM/YYYY HH:MM",
                                                    "YYYY/MM/DD HH:MM"};

// What the launch reads or, on the first launch, writes.
struct LaunchSettings {
    QString storagePath;
    QString fontName;
    int fontSize = 0;
    QString positionTitle;    // the pop-up title to select
    QString dateFormatTitle;  // the pop-up title to select
    // Commands take the selected row numbers against the list in import
    // order, and the Size column sorts by the parsed size text. Off unless set.
    bool classicBehaviour = false;
};

// The default storage folder: the user's videos folder + "/com.Brimlark.tagsmith".
QString defaultStoragePath();

// Reads the launch settings, writing the defaults of the absent keys as the
// first launch does: "storagePath", "fontName", "Postion" and "Dateformat",
// but never "fontsize" (the size is 14 at the first launch and reads 0 on
// later launches until the preferences are confirmed once). The position
// pop-up selects "Lower left corner" at the first launch while the stored
// value reads "lower left corner". Creates the storage folder.
LaunchSettings readLaunchSettings(QSettings& settings);

// The preferences' OK: stores every setting and creates the storage folder.
void storePreferences(QSettings& settings, const LaunchSettings& values);

// Creates a folder with its intermediate folders; an existing one is fine.
bool ensureFolder(const QString& path);
