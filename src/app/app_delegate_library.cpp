// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>
#include <QFileInfo>
#include <QHeaderView>
#include <QItemSelectionModel>

#include <algorithm>

#include "app/app_delegate.h"
#include "app/import_thread.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/media_open_dialog.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/photo/photo_browser.h"
#include "ui/shell/main_window.h"
#include "ui/video/video_meta_view.h"

namespace {
const char* const kImportMessage =
    QT_TRANSLATE_NOOP("AppDelegate", "Please select videos or auidos to import.");
}

void AppDelegate::AddMediaFileAction(QObject* sender) {
    if (photoMode()) return ClickImportLocalPhotosAction(sender);
    ClickImportPhotosAction(sender);
}

void AppDelegate::ClickImportPhotosAction(QObject*) {
    // A sheet on the main window: files and folders, several at once.
    auto* panel = new MediaOpenDialog(m_window, tr(kImportMessage));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    connect(panel, &QDialog::finished, this,
            [this, panel](int result) { openPanelDidEnd1(result, panel->chosenPaths()); });
    panel->open();
}

void AppDelegate::openPanelDidEnd1(int returnCode1, const QStringList& paths) {
    if (returnCode1 != QDialog::Accepted || paths.isEmpty()) return;
    m_window->showList(true);
    importMediaItemsThreader(paths);
    blocalMode = true;
}

void AppDelegate::OpenComputerFoldertoImportAction(QObject*) {
    auto* panel = new QFileDialog(m_window, tr(kImportMessage));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::ExistingFiles);
    panel->setWindowModality(Qt::WindowModal);
    connect(panel, &QDialog::finished, this,
            [this, panel](int result) { openPanelDidEnd(result, panel->selectedFiles()); });
    panel->open();
}

void AppDelegate::openPanelDidEnd(int returnCode, const QStringList& paths) {
    if (returnCode != QDialog::Accepted) return;
    // The quick variant lists the files as they are, without reading them.
    for (const QString& path : paths) {
        auto item = std::make_shared<IKImageItem>();
        if (isImagePath(path))
            item->fileType = QStringLiteral("Image");
        else if (isVideoPath(path))
            item->fileType = QStringLiteral("Movie");
        item->fileName = QFileInfo(path).fileName();
        item->filePath = path;
        localPhotoItemArray.append(item);
        LoadImportedMediasonMainThread();
    }
    // The list's own photos are shown rather than the camera's.
    if (m_viewMode == ViewMode::CameraPhotos) applyViewMode(ViewMode::LocalPhotos);
    blocalMode = true;
    ensureFolder(storagelocation);
}

void AppDelegate::importMediaItemsThreader(const QStringList& paths) {
    startImport(paths, false);
}

void AppDelegate::startImport(const QStringList& paths, bool photos) {
    auto* thread = new ImportThread(paths, this, photos);
    m_importThreads.append(thread);
    connect(thread, &QThread::finished, this, [this, thread] { importThreadFinished(thread); });
    startProgreess();
    thread->start();
}

void AppDelegate::importThreadFinished(ImportThread* thread) {
    if (!m_importThreads.removeOne(thread)) return;
    thread->deleteLater();
    if (m_importThreads.isEmpty()) endProgress();
    qCInfo(lcTagsmith) << "import finished ==" << localPhotoItemArray.size() << "files listed";
}

void AppDelegate::stopImports() {
    for (ImportThread* thread : std::as_const(m_importThreads)) thread->cancel();
    // A thread may be waiting for the main thread to take its last record:
    // keep the main thread answering until every thread has ended.
    while (!m_importThreads.isEmpty()) {
        ImportThread* thread = m_importThreads.takeFirst();
        while (!thread->wait(20)) QCoreApplication::processEvents();
        delete thread;
    }
}

void AppDelegate::appendImportedItem(const IKImageItemPtr& item) {
    // The table grows row by row, inside a folder scan too.
    localPhotoItemArray.append(item);
    LoadImportedMediasonMainThread();
}

void AppDelegate::noteFolderImported(const QString& parent) {
    // Never set back during a run: later single files count as folder imports too.
    bImportLocalFolder = true;
    bImportLocalPath = parent;
}

void AppDelegate::LoadImportedMediasonMainThread() {
    // The content is rebuilt from the list, so a column sort is lost here;
    // the highlighted records stay highlighted wherever their rows move, and
    // the panel keeps showing what it showed (edits included).
    const IKImageItemList highlighted = highlightedItems();
    const IKImageItemPtr current =
        mediaController->itemAt(dragtableView->selectionModel()->currentIndex().row());
    mediaController->removeAllObjects();
    mediaController->setContent(mediaListItems());
    selectItems(highlighted, current);
    reloadPhotoBrowsers();
    dragtableView->horizontalHeader()->setSortIndicatorShown(false);
    showListOrHint();
    dragtableView->viewport()->update();
}

void AppDelegate::showListOrHint() {
    using Page = MainWindow::LeftPage;
    int count = 0;
    switch (m_viewMode) {
        case ViewMode::Media:
            count = mediaController->rowCount();
            m_window->showList(count > 0);
            break;
        case ViewMode::LocalPhotos:
            count = localImageBrowserView->model()->rowCount();
            m_window->showLeftPage(count > 0 ? Page::Photos : Page::PhotoHint);
            break;
        case ViewMode::CameraPhotos:
            // The camera window while a camera is connected, even an empty one.
            count = int(cameItemArray.size());
            m_window->showLeftPage(mCameras.isEmpty() ? Page::CameraHint : Page::CameraPhotos);
            break;
    }
    m_window->setItemCount(count);
}

int AppDelegate::numberOfRowsInTableView() const {
    return mediaController->rowCount();
}

bool AppDelegate::tableViewValidateDrop(const QStringList& paths) const {
    if (paths.isEmpty()) return false;
    const QString& first = paths.first();
    return isAudioPath(first) || isVideoPath(first) || QFileInfo(first).isDir();
}

bool AppDelegate::tableViewAcceptDrop(const QStringList& paths) {
    qCInfo(lcTagsmith).noquote() << "urls==(" << paths.join(QStringLiteral(", ")) << ")";
    m_window->showList(true);
    importMediaItemsThreader(paths);
    return true;
}

void AppDelegate::PRDragOperationMediaNoteHandle(QObject* sender) {
    auto* table = qobject_cast<PRDragTableView*>(sender);
    if (!table) return;
    for (const QUrl& url : table->geturlArray()) {
        const QString path = url.toLocalFile();
        if (!isAudioPath(path) && !isVideoPath(path)) continue;
        auto item = std::make_shared<IKImageItem>();
        item->fileType = isAudioPath(path) ? QStringLiteral("Audio") : QStringLiteral("Movie");
        item->fileName = QFileInfo(path).fileName();
        item->filePath = path;
        localPhotoItemArray.append(item);
    }
    LoadImportedMediasonMainThread();
    blocalMode = true;
}

void AppDelegate::tableViewDidClickTableColumn(MediaColumn column) {
    bool& flag = columnSortFlags[size_t(column)];
    flag = !flag;
    const bool f = flag;
    IKImageItemList sorted = mediaController->content();
    const SizeSortKey sizeKey = classicBehaviour ? SizeSortKey::SizeText : SizeSortKey::ByteCount;
    sortMediaItems(sorted, [column, f, sizeKey](const IKImageItem& a, const IKImageItem& b) {
        return compareMediaItems(a, b, column, f, sizeKey);
    });
    mediaController->removeAllObjects();
    mediaController->setContent(sorted);
    // The header's arrow shows the order that came out: the text columns sort
    // descending when their flag is set, the number and date columns ascending.
    const bool textColumn = column == MediaColumn::Name || column == MediaColumn::Type ||
                            column == MediaColumn::Artist || column == MediaColumn::Album;
    dragtableView->horizontalHeader()->setSortIndicator(
        int(column), (textColumn ? !f : f) ? Qt::AscendingOrder : Qt::DescendingOrder);
    dragtableView->horizontalHeader()->setSortIndicatorShown(true);
    dragtableView->clearSelection();
    if (!sorted.isEmpty())
        dragtableView->selectionModel()->select(
            mediaController->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    dragtableView->viewport()->update();
}

QList<int> AppDelegate::selectedContentRows() const {
    QList<int> rows;
    for (const QModelIndex& index : dragtableView->selectionModel()->selectedRows())
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void AppDelegate::RemoveMediaFileAction(QObject*) {
    if (photoMode()) return removePhotosFromList();
    const IKImageItemList doomed = selectedItems();
    if (doomed.isEmpty()) return;
    // Unsaved edits of a removed record are saved or dropped as the user says.
    if (doomed.contains(m_shownItem) && hasUnsavedEdits()) {
        const UnsavedAnswer answer = askAboutUnsavedEdits();
        if (answer == UnsavedAnswer::Cancel) return;
        if (answer == UnsavedAnswer::Save) saveEdits({m_shownItem});
    }
    for (const IKImageItemPtr& item : std::as_const(doomed)) {
        localPhotoItemArray.removeOne(item);
        qCInfo(lcTagsmith) << "removed from the list ==" << item->filePath;
    }
    mediaController->setContent(mediaListItems());
    showListOrHint();
    dragtableView->viewport()->update();
    // Both panels are cleared, so none goes on showing a removed record.
    ShowVideoViewWithItem(std::make_shared<IKImageItem>());
    ShowAudioViewWithItem(std::make_shared<IKImageItem>());
}
