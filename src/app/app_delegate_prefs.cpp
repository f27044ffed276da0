// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>

#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "ui/shell/main_window.h"
#include "ui/shell/preferences_window.h"

void AppDelegate::setupPreferences() {
    preferencesWindow = new PreferencesWindow(m_window);
    preferencesWindow->setStyleSheet(tagsmithStyleSheet());
    storePathlab = preferencesWindow->storePathlab;
    showFontlab = preferencesWindow->showFontlab;
    colorwell = preferencesWindow->colorwell;
    postionBtn = preferencesWindow->postionBtn;
    dateFormatBtn = preferencesWindow->dateFormatBtn;
    connect(preferencesWindow->okButton, &QPushButton::clicked, this,
            [this] { ResetPreferenceSetting(preferencesWindow->okButton); });
    connect(preferencesWindow->cancelButton, &QPushButton::clicked, this,
            [this] { CancelPreferenceSetting(preferencesWindow->cancelButton); });
    connect(preferencesWindow->changeLocationButton, &QPushButton::clicked, this,
            [this] { ChangeStoreLocation(preferencesWindow->changeLocationButton); });
    connect(preferencesWindow->fontButton, &QPushButton::clicked, this,
            [this] { ShowFontPanelAction(preferencesWindow->fontButton); });
}

void AppDelegate::ShowPreferenceSetting(QObject*) {
    // The window shows what is in effect, not what a cancelled visit left.
    storePathlab->setText(storagelocation);
    showFontlab->setText(QStringLiteral("%1 %2").arg(currentFontname).arg(currentFontSize));
    preferencesWindow->classicBehaviourBox->setChecked(classicBehaviour);
    preferencesWindow->show();
    preferencesWindow->raise();
    preferencesWindow->activateWindow();
}

void AppDelegate::CancelPreferenceSetting(QObject*) {
    preferencesWindow->hide();
}

void AppDelegate::ResetPreferenceSetting(QObject*) {
    currentFontColor = colorwell->color();
    LaunchSettings values;
    values.fontName = currentFontname;
    values.fontSize = currentFontSize;
    values.positionTitle = postionBtn->currentData().toString();
    values.dateFormatTitle = dateFormatBtn->currentText();
    storagelocation = storePathlab->text();
    values.storagePath = storagelocation;
    classicBehaviour = preferencesWindow->classicBehaviourBox->isChecked();
    values.classicBehaviour = classicBehaviour;
    storePreferences(m_settings, values);
    qCInfo(lcTagsmith) << "storagelocation ==" << storagelocation;
    preferencesWindow->hide();
}

void AppDelegate::ChangeStoreLocation(QObject*) {
    auto* panel = new QFileDialog(preferencesWindow, tr("Choose the storage folder"));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly, true);
    panel->setDirectory(storePathlab->text());
    panel->setWindowModality(Qt::WindowModal);
    connect(panel, &QDialog::finished, this,
            [this, panel](int result) { openPanelDidEnd5(result, panel->selectedFiles()); });
    panel->open();
}

void AppDelegate::openPanelDidEnd5(int returnCode5, const QStringList& paths) {
    // Only shown here; the preferences' OK makes it the storage folder.
    if (returnCode5 == QDialog::Accepted && !paths.isEmpty()) storePathlab->setText(paths.first());
}

// The panel opens on "Lucida Grande" at 14 points whatever the current font,
// as it always has; the label keeps showing the font in effect until one is
// chosen.
void AppDelegate::ShowFontPanelAction(QObject*) {
    bool ok = false;
    const QFont initial(QStringLiteral("Lucida Grande"), 14);
    const QFont font = QFontDialog::getFont(&ok, initial, preferencesWindow, tr("Stamp Font"));
    if (ok) setStampFont(font.family(), font.pointSize());
}

void AppDelegate::setStampFont(const QString& family, int size) {
    currentFontname = family;
    currentFontSize = size;
    showFontlab->setText(QStringLiteral("%1 %2").arg(currentFontname).arg(currentFontSize));
}
