// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's photo subject: the three views of the list (videos and
// audio, the list's photos, the camera's photos), adding photos, the photo
// panel with its remembered values and group flags, the apply and the five
// removal actions. The date, GPS and map windows are in
// app_delegate_photo_windows.cpp.
#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>

#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_picture.h"
#include "core/photo/photo_removal.h"
#include "core/photo/photo_writers.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/media_open_dialog.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/photo/photo_browser.h"
#include "ui/photo/photo_panel.h"
#include "ui/photo/photo_windows.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

namespace {
// The controller's remembered values and their places in an editor state.
const std::pair<QString AppDelegate::*, QString PhotoEditorState::*> kRemembered[] = {
    {&AppDelegate::oldArtistStr, &PhotoEditorState::oldArtistStr},
    {&AppDelegate::oldImageDescStr, &PhotoEditorState::oldImageDescStr},
    {&AppDelegate::oldCopyrightStr, &PhotoEditorState::oldCopyrightStr},
    {&AppDelegate::oldCommentStr, &PhotoEditorState::oldCommentStr},
    {&AppDelegate::oldKeywordStr, &PhotoEditorState::oldKeywordStr},
    {&AppDelegate::oldCameraMakeStr, &PhotoEditorState::oldCameraMakeStr},
    {&AppDelegate::oldCameraModeStr, &PhotoEditorState::oldCameraModeStr},
    {&AppDelegate::oldCameraDateStr, &PhotoEditorState::oldCameraDateStr},
    {&AppDelegate::oldGpsDateStr, &PhotoEditorState::oldGpsDateStr},
    {&AppDelegate::oldGpsTimeStr, &PhotoEditorState::oldGpsTimeStr},
    {&AppDelegate::oldGpsLatiStr, &PhotoEditorState::oldGpsLatiStr},
    {&AppDelegate::oldGpsAitStr, &PhotoEditorState::oldGpsAitStr},
    {&AppDelegate::oldGpsLongtStr, &PhotoEditorState::oldGpsLongtStr},
    {&AppDelegate::oldTitleStr, &PhotoEditorState::oldTitleStr},
};

// The texts a user can change in the panel.
bool samePhotoEdits(const PhotoEditorState& a, const PhotoEditorState& b) {
    static constexpr QString PhotoEditorState::*kTexts[] = {
        &PhotoEditorState::artistlab,     &PhotoEditorState::imageDescrilab,
        &PhotoEditorState::copyrightlab,  &PhotoEditorState::keywordslab,
        &PhotoEditorState::titlelab,      &PhotoEditorState::commentslab,
        &PhotoEditorState::cameraMakelab, &PhotoEditorState::cameraModelab,
        &PhotoEditorState::cameraDatelab, &PhotoEditorState::gpsLatilab,
        &PhotoEditorState::gpsLongtlab,   &PhotoEditorState::gpsAitlab,
        &PhotoEditorState::gpsDatelab,    &PhotoEditorState::gpsTimelab,
    };
    for (const auto text : kTexts)
        if (a.*text != b.*text) return false;
    return true;
}
}  // namespace

void AppDelegate::setupPhotoActions() {
    photoContentView = m_window->photoPanel();
    localImageBrowserView = m_window->localImageBrowserView();
    imageBrowserView = m_window->imageBrowserView();
    for (PhotoBrowserView* browser : {localImageBrowserView, imageBrowserView})
        connect(browser, &PhotoBrowserView::imageBrowserSelectionDidChange, this,
                [this, browser] { imageBrowserSelectionDidChange(browser); });
    // The photo view and its hint take photos and folders; the table keeps
    // its own rules (it refuses a drop that starts with an image).
    auto validate = [this](const QStringList& paths) { return photoViewValidateDrop(paths); };
    auto accept = [this](const QStringList& paths) { return photoViewAcceptDrop(paths); };
    localImageBrowserView->validateDrop = validate;
    localImageBrowserView->acceptDrop = accept;
    m_window->photoHintView()->validateDrop = validate;
    m_window->photoHintView()->acceptDrop = accept;

    connect(photoContentView, &PhotoPanel::basicFieldEdited, this,
            [this] { basicInfoChange = true; });
    connect(photoContentView, &PhotoPanel::cameraFieldEdited, this,
            [this] { cameraInfoChange = true; });
    connect(photoContentView, &PhotoPanel::gpsFieldEdited, this, [this] { gpsInfoChange = true; });
    connect(photoContentView, &PhotoPanel::applyRequested, this,
            [this] { ClickApplyChangeAction(photoContentView); });
    connect(photoContentView, &PhotoPanel::editGpsRequested, this,
            [this] { EditeGPSExifDataPhoto(photoContentView); });
    connect(photoContentView, &PhotoPanel::changeDateRequested, this,
            [this] { ShowChangeDateWindowAction(photoContentView); });

    const QList<QAction*> edit = editExifMenu->actions();
    const std::array<void (AppDelegate::*)(QObject*), 4> editActions = {
        &AppDelegate::ClickApplyChangeAction, &AppDelegate::EditeGPSExifDataPhoto,
        &AppDelegate::AddGPSExifDataPhoto, &AppDelegate::ShowMapAction};
    for (size_t i = 0; i < editActions.size(); ++i) {
        edit.at(qsizetype(i))->setEnabled(true);
        connect(edit.at(qsizetype(i)), &QAction::triggered, this,
                [this, a = editActions[i]] { (this->*a)(editExifMenu); });
    }
    QAction* date = changePhotoDateMenu->actions().constFirst();
    date->setEnabled(true);
    connect(date, &QAction::triggered, this, [this] { ShowChangeDateWindowAction(nullptr); });

    // The photo removal actions join the menu's media commands; each view
    // shows its own.
    m_photoRemovalActions << removeExifMenu->addSeparator();
    const std::pair<const char*, void (AppDelegate::*)(QObject*)> removals[] = {
        {QT_TR_NOOP("Remove IPTC Data"), &AppDelegate::RemoveIPTCDataFromPhoto},
        {QT_TR_NOOP("Remove EXIF Data"), &AppDelegate::RemoveExifDataFromPhoto},
        {QT_TR_NOOP("Remove GPS Data"), &AppDelegate::RemoveGPSDataFromPhoto},
        {QT_TR_NOOP("Remove EXIF and GPS Data"), &AppDelegate::DeleteExifAndGPSData},
        {QT_TR_NOOP("Remove All Photo Metadata"), &AppDelegate::DeleteAllPhotoMetadataData},
    };
    for (const auto& [text, action] : removals)
        m_photoRemovalActions << removeExifMenu->addAction(
            tr(text), this, [this, a = action] { (this->*a)(removeExifMenu); });
    setupPhotoWindows();
    applyViewMode(ViewMode::Media);
}

bool AppDelegate::photoMode() const {
    return m_viewMode != ViewMode::Media;
}

void AppDelegate::ShowMediaListAction(QObject*) {
    applyViewMode(ViewMode::Media);
}

void AppDelegate::ChangeToImportComputerPhoto(QObject*) {
    applyViewMode(ViewMode::LocalPhotos);
}

void AppDelegate::ChangeToImportiOSDevicePhoto(QObject*) {
    // The camera's photos; without a camera the camera hint stands in. A
    // camera not opened yet is opened at once.
    applyViewMode(ViewMode::CameraPhotos);
    if (m_viewMode == ViewMode::CameraPhotos && !m_sessionOpen && !currentDevice.model.isEmpty())
        OpenDeviceAction(nullptr);
}

bool AppDelegate::mayLeaveShownPhoto() {
    if (!photoEditsUnsaved()) return true;
    switch (askAboutUnsavedEdits()) {
        case UnsavedAnswer::Cancel:
            return false;
        case UnsavedAnswer::Save:
            applyPhotoEdits({m_shownPhoto});
            return true;
        case UnsavedAnswer::Discard:
            qCInfo(lcTagsmith) << "unsaved edits discarded ==" << m_shownPhoto->filePath;
            // Given up: the panel, kept as it was behind another view, no
            // longer counts them.
            markPhotoSaved();
            return true;
    }
    return true;
}

void AppDelegate::applyViewMode(ViewMode mode) {
    // The shown photo's edits are saved or dropped before another view
    // replaces the panel; Cancel stays where it is.
    if (mode != m_viewMode && !mayLeaveShownPhoto()) mode = m_viewMode;
    const bool changed = mode != m_viewMode;
    m_viewMode = mode;
    blocalMode = mode != ViewMode::CameraPhotos;
    const bool photos = photoMode();
    mediaListBtn->setChecked(mode == ViewMode::Media);
    localphotoBtn->setChecked(mode == ViewMode::LocalPhotos);
    cameraphotoBtn->setChecked(mode == ViewMode::CameraPhotos);
    for (ToolbarButton* b : {SaveMediaChangesBtn, videoBatchEditBtn, importandExportBtn})
        m_window->setToolbarButtonVisible(b, !photos);
    for (ToolbarButton* b : {editApplyBtn, editMetaDataLocalBtn, changePhotoDateBtn})
        m_window->setToolbarButtonVisible(b, photos);
    for (ToolbarButton* b : {opendeviceBtn, downloadPhotoBtn, importEditPhotoBtn, deletePhotoBtn})
        m_window->setToolbarButtonVisible(b, mode == ViewMode::CameraPhotos);
    addMediaBtn->setEnabled(mode != ViewMode::CameraPhotos);
    for (QAction* action : removeExifMenu->actions())
        action->setVisible(m_photoRemovalActions.contains(action) == photos);

    reloadPhotoBrowsers();
    showListOrHint();
    if (photos) {
        m_window->showPhotoPanel(true);
        if (changed) {
            m_shownPhoto.reset();
            photoContentView->clear();
            imageBrowserSelectionDidChange(activeBrowser());
        }
    } else {
        m_window->showPhotoPanel(false);
        // The media panel of the shown record comes back as it was left.
        if (m_shownItem && !m_shownItem->filePath.isEmpty())
            (audioPanelShown() ? static_cast<QWidget*>(audioContentView) : videoMetaView)->show();
        m_window->updateContentPlaceholder();
    }
}

IKImageItemList AppDelegate::mediaListItems() const {
    IKImageItemList items;
    for (const IKImageItemPtr& item : localPhotoItemArray)
        if (!isImagePath(item->filePath) && listedUnderFilter(*item)) items << item;
    return items;
}

void AppDelegate::reloadPhotoBrowsers() {
    IKImageItemList photos;
    for (const IKImageItemPtr& item : localPhotoItemArray)
        if (isImagePath(item->filePath) && listedUnderFilter(*item)) photos << item;
    localImageBrowserView->photoModel()->setContent(photos);
    imageBrowserView->photoModel()->setContent(cameItemArray);
}

PhotoBrowserView* AppDelegate::activeBrowser() const {
    return blocalMode ? localImageBrowserView : imageBrowserView;
}

PhotoMode AppDelegate::photoSourceMode() const {
    return blocalMode ? PhotoMode::Local : PhotoMode::Camera;
}

QString AppDelegate::photoSourcePath(const IKImageItem& item) const {
    // A camera item is read from its downloaded copy in the storage folder.
    if (blocalMode) return item.filePath;
    if (item.bhasCopy && QFileInfo::exists(item.hasCopy)) return item.hasCopy;
    const QString copy = storagelocation + QLatin1Char('/') + item.fileName;
    return QFileInfo::exists(copy) ? copy : item.filePath;
}

IKImageItemList AppDelegate::selectedPhotoItems() const {
    return activeBrowser()->selectedItems();
}

void AppDelegate::ClickImportLocalPhotosAction(QObject*) {
    auto* panel = new MediaOpenDialog(m_window, tr("Please select photos to import."));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setNameFilters(
        {tr("Photos (%1)")
             .arg(QStringLiteral("*.jpg *.jpeg *.png *.tif *.tiff *.webp *.heic *.heif *.avif "
                                 "*.dng *.cr2 *.nef *.arw *.orf *.rw2 *.raf *.gif *.bmp")),
         tr("All files (*)")});
    connect(panel, &QDialog::finished, this, [this, panel](int result) {
        if (result == QDialog::Accepted && !panel->chosenPaths().isEmpty())
            importPhotoItemsThreader(panel->chosenPaths());
    });
    panel->open();
}

void AppDelegate::importPhotoItemsThreader(const QStringList& paths) {
    if (m_viewMode != ViewMode::LocalPhotos) ChangeToImportComputerPhoto(nullptr);
    startImport(paths, true);
}

bool AppDelegate::photoViewValidateDrop(const QStringList& paths) const {
    if (paths.isEmpty()) return false;
    return isImagePath(paths.first()) || QFileInfo(paths.first()).isDir();
}

bool AppDelegate::photoViewAcceptDrop(const QStringList& paths) {
    qCInfo(lcTagsmith).noquote() << "photo urls==(" << paths.join(QStringLiteral(", ")) << ")";
    importPhotoItemsThreader(paths);
    return true;
}

void AppDelegate::imageBrowserSelectionDidChange(QObject* browser) {
    if (browser != activeBrowser() || !photoMode() || m_restoringSelection) return;
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty() || items.first() == m_shownPhoto) return;
    if (photoEditsUnsaved()) {
        // Asked once the browser has finished its own selection work.
        if (!m_leavePending) {
            m_leavePending = true;
            QTimer::singleShot(0, this, &AppDelegate::answerLeavingEditedPhoto);
        }
        return;
    }
    ShowPhotoViewWithItem(items.first());
}

void AppDelegate::answerLeavingEditedPhoto() {
    m_leavePending = false;
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty() || items.first() == m_shownPhoto) return;
    if (!mayLeaveShownPhoto()) {
        const QScopedValueRollback<bool> restoring(m_restoringSelection, true);
        activeBrowser()->selectItem(m_shownPhoto);
        return;
    }
    ShowPhotoViewWithItem(items.first());
}

void AppDelegate::ShowPhotoViewWithItem(const IKImageItemPtr& item) {
    m_shownPhoto = item;
    const QString path = photoSourcePath(*item);
    currentChooseFilePath = path;
    currentFileName = item->fileName;
    const PhotoSource source = readPhotoProperties(path);
    if (!source.ok())
        qCWarning(lcTagsmith).noquote() << "photo not read ==" << path << source.problem;
    // An unreadable photo shows its file facts and empty fields.
    currentExifDictionary = source.ok() ? source.properties : PropertyDictionary();
    bMapPreview = photoPosition(currentExifDictionary, &currentCoords[0], &currentCoords[1]);
    const PhotoEditorState state = photoEditorStateFor(currentExifDictionary);
    photoContentView->showPhoto(photoPanelTextsFor(*item, currentExifDictionary), state,
                                propTree(currentExifDictionary),
                                bMapPreview ? currentCoords : nullptr);
    // A camera item not yet downloaded shows the thumbnail the camera gave.
    const QImage picture = loadPhotoPicture(path, PhotoPanel::kPreviewSide);
    photoContentView->setPicture(picture.isNull() ? item->fileImage.image() : picture);
    // What the panel shows now is what an apply compares against.
    for (const auto& [mine, theirs] : kRemembered) this->*mine = state.*theirs;
    basicInfoChange = cameraInfoChange = gpsInfoChange = false;
    fillGpsWindow(state);
    markPhotoSaved();
}

PhotoEditorState AppDelegate::photoEditorState() const {
    PhotoEditorState s = photoContentView->editorState();
    for (const auto& [mine, theirs] : kRemembered) s.*theirs = this->*mine;
    s.latitudelab = changeGPSWindow->latitudelab->text();
    s.longtitudelab = changeGPSWindow->longtitudelab->text();
    s.altitudelab = changeGPSWindow->altitudelab->text();
    s.dateStamplab = changeGPSWindow->dateStamplab->text();
    s.timeStamplab = changeGPSWindow->timeStamplab->text();
    s.basicInfoChange = basicInfoChange;
    s.cameraInfoChange = cameraInfoChange;
    s.gpsInfoChange = gpsInfoChange;
    return s;
}

void AppDelegate::markPhotoSaved() {
    *m_photoBaseline = photoContentView->editorState();
}

bool AppDelegate::photoEditsUnsaved() const {
    return photoMode() && photoPanelEdited();
}

bool AppDelegate::photoPanelEdited() const {
    return m_shownPhoto && !samePhotoEdits(photoContentView->editorState(), *m_photoBaseline);
}

void AppDelegate::runPhotoWrites(const IKImageItemList& items, const PhotoWrite& write) {
    ensureFolder(storagelocation);
    const StorageContext storage = storageContext();
    const PhotoMode mode = photoSourceMode();
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        const IKImageItem record = *item;
        runAudioWriteLater([record, write, mode,
                            storage](OutputBatch& b) { return write(record, mode, storage, b); },
                           batch);
    }
}

void AppDelegate::applyPhotoEdits(const IKImageItemList& items) {
    const PhotoEditorState editor = photoEditorState();
    if (items.contains(m_shownPhoto)) markPhotoSaved();
    runPhotoWrites(items, [editor](const IKImageItem& item, PhotoMode mode,
                                   const StorageContext& storage, OutputBatch& batch) {
        return ::ClickApplyChangeAction(item, editor, mode, storage, batch);
    });
}

void AppDelegate::ClickApplyChangeAction(QObject*) {
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty()) return showNothingSelected();
    if (!blocalMode) {
        // Camera mode writes the GPS entry fields as they stand: all five.
        const PhotoEditorState s = photoEditorState();
        for (const QString* text :
             {&s.latitudelab, &s.longtitudelab, &s.altitudelab, &s.timeStamplab, &s.dateStamplab})
            if (text->isEmpty())
                return showPhotoSheet(tr("Vaule Error"), tr("Each value cannot be empty."));
    }
    applyPhotoEdits(items);
}

void AppDelegate::removePhotoGroups(PhotoRemoval action) {
    const IKImageItemList items = selectedPhotoItems();
    if (items.isEmpty()) return showNothingSelected();
    runPhotoWrites(items, [action](const IKImageItem& item, PhotoMode mode,
                                   const StorageContext& storage, OutputBatch& batch) {
        return removePhotoMetadata(item, action, mode, storage, batch);
    });
}

void AppDelegate::RemoveIPTCDataFromPhoto(QObject*) {
    removePhotoGroups(PhotoRemoval::IPTC);
}

void AppDelegate::RemoveExifDataFromPhoto(QObject*) {
    removePhotoGroups(PhotoRemoval::Exif);
}

void AppDelegate::RemoveGPSDataFromPhoto(QObject*) {
    removePhotoGroups(PhotoRemoval::GPS);
}

void AppDelegate::DeleteExifAndGPSData(QObject*) {
    removePhotoGroups(PhotoRemoval::ExifAndGPS);
}

void AppDelegate::DeleteAllPhotoMetadataData(QObject*) {
    removePhotoGroups(PhotoRemoval::All);
}

void AppDelegate::removePhotosFromList() {
    // Camera items leave their list through the camera's own commands.
    if (!blocalMode) return;
    const IKImageItemList doomed = selectedPhotoItems();
    if (doomed.isEmpty()) return;
    if (doomed.contains(m_shownPhoto) && !mayLeaveShownPhoto()) return;
    for (const IKImageItemPtr& item : doomed) {
        localPhotoItemArray.removeOne(item);
        qCInfo(lcTagsmith) << "removed from the list ==" << item->filePath;
    }
    if (doomed.contains(m_shownPhoto)) {
        m_shownPhoto.reset();
        photoContentView->clear();
    }
    reloadPhotoBrowsers();
    showListOrHint();
}

void AppDelegate::showPhotoSheet(const QString& title, const QString& text) {
    QMessageBox box(QMessageBox::Warning, title, title, QMessageBox::NoButton,
                    static_cast<QWidget*>(m_window));
    box.setInformativeText(text);
    QPushButton* ok = box.addButton(tr(" Ok "), QMessageBox::AcceptRole);
    box.setEscapeButton(ok);
    box.setWindowModality(Qt::WindowModal);
    ask(box);
}
