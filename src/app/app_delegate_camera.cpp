// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's cameras and phones: the camera thread that polls for
// connected devices, the session on the current one, its photos and movies
// in `imageBrowserView`, and the download, download-for-editing and delete
// commands. Every device call runs on the camera thread; its answers come
// back here as queued signals.
#include <QAction>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>

#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/camera/camera_import.h"
#include "core/camera/camera_worker.h"
#include "core/common/logging.h"
#include "ui/photo/photo_browser.h"
#include "ui/photo/photo_panel.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"

namespace {
// The picture a camera record shows until its thumbnail arrives.
QImage placeholderPicture(const QString& kind) {
    QImage picture(128, 128, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(0x2c, 0x2e, 0x32));
    QPainter painter(&picture);
    const QString icon = kind == QLatin1String("Movie") ? QStringLiteral(":/icons/video-file.svg")
                                                        : QStringLiteral(":/icons/camera.svg");
    QIcon(icon).paint(&painter, picture.rect().adjusted(36, 36, -36, -36));
    return picture;
}
}  // namespace

void AppDelegate::setupCameraActions() {
    cameraWindow = m_window->cameraWindow();
    deviceNamelab = m_window->deviceNameLabel();
    m_cameraWorker = new CameraWorker;
    m_cameraWorker->moveToThread(&m_cameraThread);
    m_cameraThread.setObjectName(QStringLiteral("camera"));
    connect(&m_cameraThread, &QThread::finished, m_cameraWorker, &QObject::deleteLater);
    connect(m_cameraWorker, &CameraWorker::camerasChanged, this,
            &AppDelegate::deviceBrowserDidChangeCameras);
    connect(m_cameraWorker, &CameraWorker::sessionOpened, this,
            &AppDelegate::device_didOpenSessionWithError);
    connect(m_cameraWorker, &CameraWorker::fileListed, this, &AppDelegate::cameraDevice_didAddItem);
    connect(m_cameraWorker, &CameraWorker::listingFinished, this, [this] {
        endProgress();
        showListOrHint();
    });
    connect(m_cameraWorker, &CameraWorker::thumbnailReady, this,
            &AppDelegate::cameraDevice_didReceiveThumbnailForItem);
    connect(m_cameraWorker, &CameraWorker::fileDownloaded, this, &AppDelegate::didDownloadFile);
    connect(m_cameraWorker, &CameraWorker::fileRemoved, this,
            [this](const CameraFileEntry& item, const QString& error) {
                --m_cameraRequests;
                if (!error.isEmpty())
                    m_window->showWriteResult(
                        tr("%1 was not deleted from the camera: %2").arg(item.name, error), {}, {});
            });

    const std::pair<ToolbarButton*, const char*> tips[] = {
        {opendeviceBtn, QT_TR_NOOP("Show the photos and movies of the connected camera")},
        {downloadPhotoBtn, QT_TR_NOOP("Download the selected items into the storage folder")},
        {importEditPhotoBtn, QT_TR_NOOP("Download the selected items and add them to the list")},
        {deletePhotoBtn, QT_TR_NOOP("Delete the selected items from the camera")},
    };
    for (const auto& [button, tip] : tips) {
        button->setToolTip(tr(tip));
        button->setAccessibleName(button->text());
    }
    updateCameraButtons();
}

void AppDelegate::stopCameraThread() {
    if (!m_cameraThread.isRunning()) {
        delete m_cameraWorker;  // never started: no thread deletes it
        m_cameraWorker = nullptr;
        return;
    }
    m_cameraThread.quit();
    m_cameraThread.wait();
}

void AppDelegate::pollCameras() {
    if (!m_cameraThread.isRunning()) {
        m_cameraThread.start();
        QMetaObject::invokeMethod(m_cameraWorker, [w = m_cameraWorker] { w->start(); });
        return;
    }
    QMetaObject::invokeMethod(m_cameraWorker, [w = m_cameraWorker] { w->poll(); });
}

void AppDelegate::updateCameraButtons() {
    const bool camera = !currentDevice.model.isEmpty();
    opendeviceBtn->setEnabled(camera);
    for (ToolbarButton* b : {downloadPhotoBtn, importEditPhotoBtn, deletePhotoBtn})
        b->setEnabled(camera && !cameItemArray.isEmpty());
    deviceNamelab->setText(camera ? currentDevice.displayName() : QString());
}

void AppDelegate::deviceBrowserDidChangeCameras(const QList<CameraPort>& cameras) {
    for (const CameraPort& gone : QList<CameraPort>(mCameras))
        if (!cameras.contains(gone)) deviceBrowser_didRemoveDevice(gone);
    for (const CameraPort& added : cameras)
        if (!mCameras.contains(added)) deviceBrowser_didAddDevice(added);
}

void AppDelegate::deviceBrowser_didAddDevice(const CameraPort& device) {
    qCInfo(lcTagsmith).noquote() << "deviceBrowser:didAddDevice: ==" << device.model << device.port;
    mCameras.append(device);
    currentDevice = device;
    m_sessionOpen = false;
    if (changtoiOSmodemenu) changtoiOSmodemenu->setEnabled(true);
    updateCameraButtons();
    // A camera plugged in while its view is shown opens at once.
    if (m_viewMode == ViewMode::CameraPhotos) OpenDeviceAction(nullptr);
    showListOrHint();
}

void AppDelegate::deviceBrowser_didRemoveDevice(const CameraPort& device) {
    qCInfo(lcTagsmith).noquote() << "deviceBrowser:didRemoveDevice: \n" << device.port << "\n";
    mCameras.removeAll(device);
    if (device == currentDevice) {
        // Its items went with it.
        currentDevice = mCameras.isEmpty() ? CameraPort{} : mCameras.last();
        m_sessionOpen = false;
        cameItemArray.clear();
        m_cameraEntries.clear();
        if (!blocalMode) {
            m_shownPhoto.reset();
            photoContentView->clear();
        }
        reloadPhotoBrowsers();
        endProgress();
    }
    updateCameraButtons();
    showListOrHint();
}

void AppDelegate::OpenDeviceAction(QObject*) {
    if (currentDevice.model.isEmpty()) {
        qCInfo(lcTagsmith) << "no camera to open";
        return;
    }
    ensureFolder(storagelocation);
    startProgreess();
    cameItemArray.clear();
    m_cameraEntries.clear();
    reloadPhotoBrowsers();
    m_sessionOpen = true;
    QMetaObject::invokeMethod(m_cameraWorker,
                              [w = m_cameraWorker, d = currentDevice] { w->openCamera(d); });
}

void AppDelegate::device_didOpenSessionWithError(const CameraPort& device, const QString& error) {
    qCInfo(lcTagsmith).noquote() << "device:didOpenSessionWithError: \n"
                                 << "  device:" << device.port << "\n  error :" << error;
    if (error.isEmpty()) {
        qCInfo(lcTagsmith) << "Open device success";
        return;
    }
    qCInfo(lcTagsmith) << "Open device failed";
    m_sessionOpen = false;
    endProgress();
    m_window->showWriteResult(tr("%1 could not be opened: %2").arg(device.displayName(), error), {},
                              {});
}

void AppDelegate::cameraDevice_didAddItem(const CameraFileEntry& item) {
    qCInfo(lcTagsmith).noquote() << "[item UTI]====" << item.mimeType;
    const IKImageItemPtr record = makeCameraRecord(item, placeholderPicture(cameraItemKind(item)));
    m_cameraEntries.insert(record->filePath, item);
    cameItemArray.append(record);
    reloadPhotoBrowsers();
    updateCameraButtons();
    endProgress();
}

void AppDelegate::cameraDevice_didReceiveThumbnailForItem(const CameraFileEntry& item,
                                                          const QImage& image) {
    const QString path = cameraRecordPath(item);
    for (const IKImageItemPtr& record : std::as_const(cameItemArray)) {
        if (record->filePath != path) continue;
        record->fileImage = image;
        imageBrowserView->photoModel()->refreshItem(record);
    }
}

void AppDelegate::downloadSelectedCameraItems(int purpose) {
    const IKImageItemList items = imageBrowserView->selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    ensureFolder(storagelocation);
    startProgreess();
    QList<CameraFileEntry> files;
    for (const IKImageItemPtr& item : items) files << m_cameraEntries.value(item->filePath);
    m_cameraRequests += int(files.size());
    if (purpose == CameraWorker::GpsWindow) m_gpsDownloads += int(files.size());
    const auto batch = std::make_shared<OutputBatch>();
    QMetaObject::invokeMethod(
        m_cameraWorker, [w = m_cameraWorker, files, batch, purpose, storage = storagelocation] {
            w->download(files, storage, CameraWorker::Purpose(purpose), batch);
        });
}

void AppDelegate::DownloadPhotoAction(QObject*) {
    bDownloadandimportToEdit = false;
    downloadSelectedCameraItems(CameraWorker::Save);
}

void AppDelegate::DownloadImportEditePhotoAction(QObject*) {
    if (imageBrowserView->selectedItems().isEmpty()) return showNothingSelected();
    bDownloadandimportToEdit = true;
    // The list's photos are shown, where the downloaded copies will appear.
    applyViewMode(ViewMode::LocalPhotos);
    downloadSelectedCameraItems(CameraWorker::Edit);
}

void AppDelegate::didDownloadFile(const CameraFileEntry& item, const QString& path,
                                  const QString& error, int purpose) {
    qCInfo(lcTagsmith).noquote() << "didDownloadFile called with:\n"
                                 << "  file:       " << item.itemPath() << "\n"
                                 << "  error:      " << error << "\n"
                                 << "  options:    " << path;
    --m_cameraRequests;
    if (m_cameraRequests <= 0) endProgress();
    const bool gps = purpose == CameraWorker::GpsWindow;
    if (gps) --m_gpsDownloads;
    if (path.isEmpty()) {
        m_window->showWriteResult(tr("%1 was not downloaded: %2").arg(item.name, error), {}, {});
    } else {
        // The camera record remembers its copy: the panel and the photo
        // writers read it.
        const QString key = cameraRecordPath(item);
        for (const IKImageItemPtr& record : std::as_const(cameItemArray)) {
            if (record->filePath != key) continue;
            record->bhasCopy = 1;
            record->hasCopy = path;
        }
        if (purpose == CameraWorker::Edit) appendImportedItem(downloadedRecord(path));
        m_window->showWriteResult(tr("Downloaded %1").arg(QFileInfo(path).fileName()), path,
                                  storagelocation);
    }
    if (gps && m_gpsDownloads == 0 && bNeedDisplayPhotoExifWindow) {
        // The window the download was started for, filled from the copy.
        bNeedDisplayPhotoExifWindow = false;
        if (!m_shownPhoto || blocalMode) return;
        ShowPhotoViewWithItem(m_shownPhoto);
        m_gpsAfterDownloadAdd ? AddGPSExifDataPhoto(nullptr) : EditeGPSExifDataPhoto(nullptr);
    }
}

bool AppDelegate::downloadBeforeGpsWindow(bool add) {
    if (blocalMode || !m_shownPhoto || QFileInfo::exists(photoSourcePath(*m_shownPhoto)))
        return false;
    bNeedDisplayPhotoExifWindow = true;
    m_gpsAfterDownloadAdd = add;
    downloadSelectedCameraItems(CameraWorker::GpsWindow);
    return true;
}

void AppDelegate::DeletePhotoAction(QObject*) {
    const IKImageItemList doomed = imageBrowserView->selectedItems();
    if (doomed.isEmpty()) return showNothingSelected();
    QMessageBox alert(QMessageBox::Warning, tr("Delete"),
                      tr("Are you sure you want to delete the selected photo ?"),
                      QMessageBox::NoButton, m_window);
    QPushButton* remove = alert.addButton(tr(" Delete "), QMessageBox::AcceptRole);
    QPushButton* cancel = alert.addButton(tr("Cancel"), QMessageBox::RejectRole);
    alert.setDefaultButton(remove);
    alert.setEscapeButton(cancel);
    if (ask(alert) != remove) return;
    QList<CameraFileEntry> files;
    for (const IKImageItemPtr& item : doomed) {
        files << m_cameraEntries.take(item->filePath);
        cameItemArray.removeOne(item);
    }
    if (doomed.contains(m_shownPhoto)) {
        m_shownPhoto.reset();
        photoContentView->clear();
    }
    m_cameraRequests += int(files.size());
    QMetaObject::invokeMethod(m_cameraWorker, [w = m_cameraWorker, files] { w->remove(files); });
    // The records go without waiting for the camera's answer.
    reloadPhotoBrowsers();
    updateCameraButtons();
    showListOrHint();
}
