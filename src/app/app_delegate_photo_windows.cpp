// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of photo mode: the date window, the GPS window with its
// preview map, and the map window of the shown photo.
#include <QLineEdit>
#include <QPushButton>

#include "app/app_delegate.h"
#include "core/batch/date_check.h"
#include "core/common/logging.h"
#include "core/photo/photo_writers.h"
#include "ui/controls/map_view.h"
#include "ui/photo/photo_panel.h"
#include "ui/photo/photo_windows.h"
#include "ui/shell/main_window.h"

namespace {
// The GPS window's placeholders for a photo without a GPS date and time.
const char* const kNoGpsDate = "YYYY:MM:DD";
const char* const kNoGpsTime = "HH:MM:SS";
}  // namespace

void AppDelegate::setupPhotoWindows() {
    changeDateWindow = new PhotoDateWindow(m_window);
    connect(changeDateWindow->saveButton, &QPushButton::clicked, this,
            [this] { ClickDateChangedSaveAction(changeDateWindow->saveButton); });
    changeGPSWindow = new GpsWindow(m_window);
    connect(changeGPSWindow->previewButton, &QPushButton::clicked, this,
            [this] { PreviewCurrentGPSInMap(changeGPSWindow->previewButton); });
    connect(changeGPSWindow->saveButton, &QPushButton::clicked, this,
            [this] { ClickSaveChangeGPSAction(changeGPSWindow->saveButton); });
    connect(changeGPSWindow->cancelButton, &QPushButton::clicked, this,
            [this] { ClickCancleSaveGPSAction(changeGPSWindow->cancelButton); });
    mapWindow = new PhotoMapWindow(m_window);
}

void AppDelegate::fillGpsWindow(const PhotoEditorState& state) {
    changeGPSWindow->latitudelab->setText(state.latitudelab);
    changeGPSWindow->longtitudelab->setText(state.longtitudelab);
    changeGPSWindow->altitudelab->setText(state.altitudelab);
    changeGPSWindow->dateStamplab->setText(state.dateStamplab);
    changeGPSWindow->timeStamplab->setText(state.timeStamplab);
}

void AppDelegate::ShowChangeDateWindowAction(QObject*) {
    if (selectedPhotoItems().isEmpty()) return showNothingSelected();
    // Both dates start as the shown photo's date taken.
    changeDateWindow->orignalDatelab->setText(oldCameraDateStr);
    changeDateWindow->diginalDatelab->setText(oldCameraDateStr);
    changeDateWindow->open();
}

void AppDelegate::ClickDateChangedSaveAction(QObject*) {
    const QString orignal = changeDateWindow->orignalDatelab->text();
    const QString diginal = changeDateWindow->diginalDatelab->text();
    if (!CheckDateFormatWithDateString(diginal))
        return showPhotoSheet(
            tr("Invalid date format"),
            tr("Input the valid date format: YYYY:MM:DD HH:MM:SS or YYYY-MM-DD HH:MM:SS"));
    qCInfo(lcTagsmith).noquote() << "[orignalDatelab stringValue]==" << orignal
                                 << ", [diginalDatelab stringValue]==" << diginal;
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty()) return showNothingSelected();
    changeDateWindow->accept();
    runPhotoWrites(items, [orignal, diginal](const IKImageItem& item, PhotoMode mode,
                                             const StorageContext& storage, OutputBatch& batch) {
        return ::ClickDateChangedSaveAction(item, orignal, diginal, mode, storage, batch);
    });
}

void AppDelegate::EditeGPSExifDataPhoto(QObject*) {
    if (selectedPhotoItems().isEmpty()) return showNothingSelected();
    if (downloadBeforeGpsWindow(false)) return;
    // An unreadable photo opens the window without a position.
    if (!currentExifDictionary.isEmpty() && !currentExifDictionary.contains(PhotoGroup::GPS))
        return showPhotoSheet(tr("No GPS Data"),
                              tr("The selected photo does not contain GPS information."));
    fillGpsWindow(photoEditorStateFor(currentExifDictionary));
    changeGPSWindow->previewMapView->setPin(currentCoords[0], currentCoords[1]);
    bAddGPS = true;
    changeGPSWindow->open();
}

void AppDelegate::AddGPSExifDataPhoto(QObject*) {
    if (selectedPhotoItems().isEmpty()) return showNothingSelected();
    if (downloadBeforeGpsWindow(true)) return;
    PhotoEditorState state = photoEditorStateFor(currentExifDictionary);
    if (!currentExifDictionary.contains(PhotoGroup::GPS)) {
        state.dateStamplab = QString::fromLatin1(kNoGpsDate);
        state.timeStamplab = QString::fromLatin1(kNoGpsTime);
    }
    fillGpsWindow(state);
    changeGPSWindow->previewMapView->setPin(currentCoords[0], currentCoords[1]);
    bAddGPS = true;
    changeGPSWindow->open();
}

void AppDelegate::PreviewCurrentGPSInMap(QObject*) {
    changeGPSWindow->previewMapView->setPin(changeGPSWindow->latitudelab->text().toDouble(),
                                            changeGPSWindow->longtitudelab->text().toDouble());
    changeGPSWindow->previewMapView->update();
}

void AppDelegate::ClickSaveChangeGPSAction(QObject*) {
    const PhotoEditorState editor = photoEditorState();
    for (const QString* text : {&editor.latitudelab, &editor.longtitudelab, &editor.altitudelab,
                                &editor.dateStamplab, &editor.timeStamplab})
        if (text->trimmed().isEmpty())
            return showPhotoSheet(tr("Vaule Error"), tr("Each value cannot be empty."));
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty()) return showNothingSelected();
    changeGPSWindow->accept();
    const bool addGps = bAddGPS;
    runPhotoWrites(items, [editor, addGps](const IKImageItem& item, PhotoMode mode,
                                           const StorageContext& storage, OutputBatch& batch) {
        return ::ClickSaveChangeGPSAction(item, editor, addGps, mode, storage, batch);
    });
}

void AppDelegate::ClickCancleSaveGPSAction(QObject*) {
    changeGPSWindow->reject();
}

void AppDelegate::ShowMapAction(QObject*) {
    if (!bMapPreview)
        return showPhotoSheet(tr("No GPS Data"),
                              tr("This photo does not contain GPS information."));
    if (!mapWindow->isVisible()) mapWindow->show();
    mapWindow->currentMapView->setPin(currentCoords[0], currentCoords[1]);
}
