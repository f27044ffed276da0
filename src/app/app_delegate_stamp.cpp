// SPDX-License-Identifier: GPL-3.0-or-later
// The date stamp of the selected photos and the update check.
#include <QComboBox>
#include <QSettings>
#include <QUrl>

#include "app/app_delegate.h"
#include "app/help_links.h"
#include "core/app/update_check.h"
#include "core/app/user_defaults.h"
#include "core/common/desktop_integration.h"
#include "core/photo/photo_stamp.h"
#include "ui/photo/photo_browser.h"
#include "ui/shell/main_window.h"
#include "ui/shell/update_controller.h"

void AppDelegate::AddDateOnPhotoAction(QObject*) {
    StampStyle style;
    style.currentFontname = currentFontname;
    style.currentFontSize = currentFontSize;
    style.currentFontColor = currentFontColor;
    style.postion = postionBtn->currentText();
    style.dateFormat = dateFormatBtn->currentText();
    // The local photos' selection, whichever view is on show.
    const IKImageItemList items = localImageBrowserView->selectedItems();
    runPhotoWrites(items, [style](const IKImageItem& item, PhotoMode, const StorageContext& storage,
                                  OutputBatch& batch) {
        return ::AddDateOnPhotoAction(item, style, storage, batch);
    });
    DesktopIntegration::instance().openUrl(QUrl::fromLocalFile(storagelocation));
}

void AppDelegate::setupUpdateController() {
    updateController = new PRUpdateController(updateDocumentUrl(m_settings),
                                              QUrl(QString::fromLatin1(kDownloadUrl)), m_window);
}

void AppDelegate::CheckforUpdateAction(QObject*) {
    updateController->CheckforUpdateAction();
}
