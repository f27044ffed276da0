// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's window subject: paths from the command line or a later
// launch, raising the window, its state between runs, and the keyboard
// (Find, Select All, Enter on a list).
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QSettings>

#include <algorithm>

#include "app/app_delegate.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/library/media_sort.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/photo/photo_browser.h"
#include "ui/photo/photo_panel.h"
#include "ui/shell/main_window.h"
#include "ui/video/video_meta_view.h"

namespace {
// Gives the keyboard to the first field a user can edit in `panel`.
void focusFirstField(QWidget* panel) {
    if (!panel || panel->isHidden()) return;
    for (QLineEdit* field : panel->findChildren<QLineEdit*>()) {
        if (field->isVisibleTo(panel) && field->isEnabled() && !field->isReadOnly()) {
            field->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}
}  // namespace

void AppDelegate::openPaths(const QStringList& paths) {
    // Split by kind as the window's drops are: photos to the photo import,
    // videos and audio files to the media import. A folder goes through the
    // photo import, which lists its photos and its videos and audio files.
    QStringList media, photos;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        if (!info.exists()) {
            qCWarning(lcTagsmithUser).noquote() << tr("%1 was not found.").arg(path);
            continue;
        }
        (info.isDir() || isImagePath(path) ? photos : media) << path;
    }
    if (!media.isEmpty()) {
        if (photoMode()) ShowMediaListAction(nullptr);
        m_window->showList(true);
        importMediaItemsThreader(media);
    }
    if (photos.isEmpty()) return;
    // Photos alone bring the photo view, as a drop on it would.
    const bool photoFilesOnly =
        media.isEmpty() && std::none_of(photos.cbegin(), photos.cend(), [](const QString& path) {
            return QFileInfo(path).isDir();
        });
    if (photoFilesOnly) return importPhotoItemsThreader(photos);
    startImport(photos, true);
}

void AppDelegate::raiseMainWindow() {
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void AppDelegate::saveWindowState() {
    m_window->saveWindowState(m_settings);
}

void AppDelegate::setupKeyboard() {
    // Tab leaves the lists rather than walking their cells.
    dragtableView->setTabKeyNavigation(false);
    // Enter (or a double click) on a row or photo goes to its panel's fields.
    // The row under the cursor is selected first when it is not yet.
    connect(dragtableView, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
        if (!dragtableView->selectionModel()->isRowSelected(index.row()))
            dragtableView->selectRow(index.row());
        focusFirstField(audioPanelShown() ? static_cast<QWidget*>(audioContentView)
                                          : videoMetaView);
    });
    connect(localImageBrowserView, &QAbstractItemView::activated, this,
            [this](const QModelIndex& index) {
                if (!localImageBrowserView->selectionModel()->isSelected(index))
                    localImageBrowserView->selectionModel()->select(
                        index, QItemSelectionModel::ClearAndSelect);
                focusFirstField(photoContentView);
            });
    connect(m_window->filterField(), &QLineEdit::textChanged, this, [this](const QString& text) {
        m_listFilter = text.trimmed();
        LoadImportedMediasonMainThread();
    });
}

void AppDelegate::FindInListAction(QObject*) {
    QLineEdit* field = m_window->filterField();
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

void AppDelegate::SelectAllAction(QObject*) {
    if (photoMode())
        activeBrowser()->selectAll();
    else
        dragtableView->selectAll();
}

bool AppDelegate::listedUnderFilter(const IKImageItem& item) const {
    return mediaItemMatches(item, m_listFilter);
}
