// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <QToolBar>
#include "app/app_delegate.h"
#include "app/help_links.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "ui/shell/busy_indicator.h"
#include "ui/shell/main_window.h"

#include "ui/shell/toolbar_button.h"

namespace {
QIcon icon(const char* name) {
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
}
}  // namespace

void AppDelegate::setupToolbar() {
    struct Spec {
        ToolbarButton** field;
        const char* name;
        const char* icon;
        const char* text;
        bool visible;
        bool enabled;
    };
    // Buttons whose work comes later exist (the dispatcher knows them) but
    // are disabled; the ones of other modes are kept off the toolbar.
    const Spec specs[] = {
        {&mediaListBtn, "mediaListBtn", "video-file", QT_TR_NOOP("Media"), true, true},
        {&localphotoBtn, "localphotoBtn", "computer", QT_TR_NOOP("Computer"), true, true},
        {&cameraphotoBtn, "cameraphotoBtn", "camera", QT_TR_NOOP("Camera"), true, true},
        {&addMediaBtn, "addMediaBtn", "add", QT_TR_NOOP("Add"), true, true},
        {&removeMediaBtn, "removeMediaBtn", "remove", QT_TR_NOOP("Remove"), true, true},
        {&SaveMediaChangesBtn, "SaveMediaChangesBtn", "save", QT_TR_NOOP("Save"), true, false},
        {&videoBatchEditBtn, "videoBatchEditBtn", "batch", QT_TR_NOOP("Video Tools"), true, true},
        {&importandExportBtn, "importandExportBtn", "import-export", QT_TR_NOOP("Import/Export"),
         true, true},
        {&remoMetaDataLocalBtn, "remoMetaDataLocalBtn", "erase", QT_TR_NOOP("Remove Metadata"),
         true, true},
        {&editApplyBtn, "editApplyBtn", "save", QT_TR_NOOP("Apply"), false, true},
        {&editMetaDataLocalBtn, "editMetaDataLocalBtn", "edit", QT_TR_NOOP("Edit"), false, true},
        {&changePhotoDateBtn, "changePhotoDateBtn", "batch", QT_TR_NOOP("Date"), false, true},
        {&extractMetaBtn, "extractMetaBtn", "import-export", QT_TR_NOOP("Extract"), false, false},
        {&importPhotobtn, "importPhotobtn", "add", QT_TR_NOOP("Import Photos"), false, false},
        {&opendeviceBtn, "opendeviceBtn", "camera", QT_TR_NOOP("Open Device"), false, false},
        {&deletePhotoBtn, "deletePhotoBtn", "remove", QT_TR_NOOP("Delete"), false, false},
        {&downloadPhotoBtn, "downloadPhotoBtn", "save", QT_TR_NOOP("Download"), false, false},
        {&importEditPhotoBtn, "importEditPhotoBtn", "edit", QT_TR_NOOP("Import to Edit"), false,
         false},
        {&viewExifBtn, "viewExifBtn", "edit", QT_TR_NOOP("Edit EXIF"), false, false},
        {&removeExifBtn, "removeExifBtn", "erase", QT_TR_NOOP("Remove EXIF"), false, false},
        {&editBackBtn, "editBackBtn", "computer", QT_TR_NOOP("Back"), false, false},
        {&editTemplateBtn, "editTemplateBtn", "import-export", QT_TR_NOOP("Template"), false,
         false},
        {&starteditBtn, "starteditBtn", "edit", QT_TR_NOOP("Edit"), false, false},
        {&localeditexifBtn, "localeditexifBtn", "edit", QT_TR_NOOP("Edit EXIF"), false, false},
        {&changeMutiPhotoDateBtn, "changeMutiPhotoDateBtn", "batch", QT_TR_NOOP("Dates"), false,
         false},
        {&writeXmpBtn, "writeXmpBtn", "save", QT_TR_NOOP("Write XMP"), false, false},
        {&CancelXmpBtn, "CancelXmpBtn", "remove", QT_TR_NOOP("Cancel XMP"), false, false},
    };
    for (const Spec& s : specs) {
        auto* button = new ToolbarButton(QString::fromLatin1(s.name), icon(s.icon), tr(s.text),
                                         m_window->toolbar());
        button->setEnabled(s.enabled);
        *s.field = button;
        connect(button, &ToolbarButton::PRbuttonMouseEntered, this,
                &AppDelegate::PRbuttonMouseEnteredHandle);
        connect(button, &ToolbarButton::PRbuttonMouseExited, this,
                &AppDelegate::PRbuttonMouseExitedHandle);
        if (button == addMediaBtn || button == removeMediaBtn || button == mediaListBtn) continue;
        connect(button, &ToolbarButton::MybuttonMouseDown, this,
                &AppDelegate::MybuttonMouseDownHandle);
    }
    connect(addMediaBtn, &ToolbarButton::MybuttonMouseDown, this, &AppDelegate::AddMediaFileAction);
    connect(removeMediaBtn, &ToolbarButton::MybuttonMouseDown, this,
            &AppDelegate::RemoveMediaFileAction);
    connect(mediaListBtn, &ToolbarButton::MybuttonMouseDown, this,
            &AppDelegate::ShowMediaListAction);

    for (const Spec& s : specs) {
        // The XMP sheet's two buttons live in the sheet (setupXmpSheet).
        if (*s.field == writeXmpBtn || *s.field == CancelXmpBtn) continue;
        if (*s.field == addMediaBtn) m_window->addToolbarSeparator();
        if (*s.field == SaveMediaChangesBtn) m_window->addToolbarSeparator();
        if (*s.field == editApplyBtn) m_window->addToolbarSeparator();
        if (*s.field == extractMetaBtn) m_window->addToolbarStretch();
        m_window->addToolbarButton(*s.field, s.visible);
    }
    // The three views of the list, one of them on.
    for (ToolbarButton* b : {mediaListBtn, localphotoBtn, cameraphotoBtn}) b->setCheckable(true);
    mediaListBtn->setChecked(true);
    mediaListBtn->setToolTip(tr("Videos and audio files of the list"));
    localphotoBtn->setToolTip(tr("Photos of the list"));
    cameraphotoBtn->setToolTip(tr("Photos of a connected camera"));
}

void AppDelegate::setupMenus() {
    auto menu = [this](QMenu*& field, const char* name, std::initializer_list<const char*> items) {
        field = new QMenu(m_window);
        field->setObjectName(QString::fromLatin1(name));
        for (const char* text : items) field->addAction(tr(text))->setEnabled(false);
    };
    menu(editExifMenu, "editExifMenu",
         {QT_TR_NOOP("Apply Changes"), QT_TR_NOOP("Edit GPS..."), QT_TR_NOOP("Add GPS..."),
          QT_TR_NOOP("Show on Map...")});
    menu(removeExifMenu, "removeExifMenu",
         {QT_TR_NOOP("Remove Metadata of Selected Files"),
          QT_TR_NOOP("Remove Metadata of All Files")});
    menu(importPhotoMenu, "importPhotoMenu",
         {QT_TR_NOOP("Import Photos"), QT_TR_NOOP("Import Folder")});
    menu(extractMetaMenu, "extractMetaMenu", {QT_TR_NOOP("Extract Metadata")});
    menu(videoBatchEditMenu, "videoBatchEditMenu",
         {QT_TR_NOOP("Convert"), QT_TR_NOOP("Compress"), QT_TR_NOOP("Make GIF"),
          QT_TR_NOOP("Change Speed"), QT_TR_NOOP("Extract Frames"), QT_TR_NOOP("Extract Audio"),
          QT_TR_NOOP("Remove Audio")});
    menu(importandExportMenu, "importandExportMenu",
         {QT_TR_NOOP("Export Metadata"), QT_TR_NOOP("Import Metadata"),
          QT_TR_NOOP("Export Template")});
    menu(changePhotoDateMenu, "changePhotoDateMenu", {QT_TR_NOOP("Change Date...")});
    menu(changeMutiPhotoDateMenu, "changeMutiPhotoDateMenu", {QT_TR_NOOP("Change Dates")});
    // The metadata removal commands are listed, waiting for their writers.
    const QList<QAction*> removal = removeExifMenu->actions();
    connect(removal.at(0), &QAction::triggered, this,
            [this] { RemoveSelectedMediaFileAction(removeExifMenu); });
    connect(removal.at(1), &QAction::triggered, this,
            [this] { RemoveAllMediaFileAction(removeExifMenu); });

    QMenuBar* bar = m_window->menuBar();
    QMenu* app = bar->addMenu(tr("&Tagsmith"));
    app->addAction(tr("About Tagsmith"), this, [this] { ClickAbout(nullptr); });
    // The shortcuts are spelled out: the platform's standard keys are empty
    // for some of these commands on some desktops.
    app->addAction(tr("Preferences..."), QKeySequence(Qt::CTRL | Qt::Key_Comma), this,
                   [this] { ShowPreferenceSetting(nullptr); });
    app->addSeparator();
    app->addAction(tr("Quit Tagsmith"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                   [this] { CloseTheMainWindow(); });
    QMenu* file = bar->addMenu(tr("&File"));
    file->addAction(tr("Add Files or Folders..."), QKeySequence(Qt::CTRL | Qt::Key_O), this,
                    [this] { AddMediaFileAction(nullptr); });
    file->addAction(tr("Add Files Quickly..."), this,
                    [this] { OpenComputerFoldertoImportAction(nullptr); });
    // Delete takes rows off the list; no file is ever deleted. A field with
    // the keyboard keeps the key for its text.
    file->addAction(tr("Remove from List"), QKeySequence(Qt::Key_Delete), this,
                    [this] { RemoveMediaFileAction(nullptr); })
        ->setObjectName(QStringLiteral("removeFromListAction"));
    // The toolbar's Save and Remove Metadata, also here with their shortcuts.
    file->addSeparator();
    QAction* save = file->addAction(tr("Save"), QKeySequence(Qt::CTRL | Qt::Key_S), this, [this] {
        MybuttonMouseDownHandle(photoMode() ? editApplyBtn : SaveMediaChangesBtn);
    });
    save->setObjectName(QStringLiteral("saveMenuAction"));
    removeExifMenu->setTitle(tr("Remove Metadata"));
    file->addMenu(removeExifMenu);
    removal.at(0)->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete));
    QMenu* edit = bar->addMenu(tr("&Edit"));
    edit->addAction(tr("Select All"), QKeySequence(Qt::CTRL | Qt::Key_A), this,
                    [this] { SelectAllAction(nullptr); });
    edit->addAction(tr("Find in the List"), QKeySequence(Qt::CTRL | Qt::Key_F), this,
                    [this] { FindInListAction(nullptr); });
    QMenu* view = bar->addMenu(tr("&View"));
    view->addAction(tr("Videos and Audio"), QKeySequence(Qt::CTRL | Qt::Key_1), this,
                    [this] { ShowMediaListAction(nullptr); });
    view->addAction(tr("Photos"), QKeySequence(Qt::CTRL | Qt::Key_2), this,
                    [this] { ChangeToImportComputerPhoto(nullptr); });
    changtoiOSmodemenu = view->addAction(tr("Camera"), QKeySequence(Qt::CTRL | Qt::Key_3), this,
                                         [this] { ChangeToImportiOSDevicePhoto(nullptr); });
    view->addSeparator();
    QAction* activity = m_window->activityDock()->toggleViewAction();
    activity->setText(tr("Activity"));
    view->addAction(activity);
    QMenu* help = bar->addMenu(tr("&Help"));
    help->addAction(tr("User Guide"), QKeySequence(Qt::Key_F1), this,
                    [this] { CLICkProductGuide(nullptr); });
    help->addAction(tr("Support"), this, [this] { CLICkSupport(nullptr); });
    help->addSeparator();
    QAction* update = help->addAction(tr("Check for Updates..."), this,
                                      [this] { CheckforUpdateAction(nullptr); });
    update->setObjectName(QStringLiteral("checkUpdateAction"));
    update->setToolTip(tr("Ask the maker's server whether a newer version is published"));
}

void AppDelegate::setupAboutWindow() {
    aboutWindow = new QDialog(m_window);
    aboutWindow->setObjectName(QStringLiteral("aboutWindow"));
    aboutWindow->setWindowTitle(tr("About Tagsmith"));
    auto* layout = new QVBoxLayout(aboutWindow);
    layout->setContentsMargins(32, 24, 32, 24);
    auto* logo = new QLabel(aboutWindow);
    logo->setPixmap(QIcon(QStringLiteral(":/icons/tagsmith.svg")).pixmap(72, 72));
    logo->setAlignment(Qt::AlignCenter);
    auto* name = new QLabel(QStringLiteral("Tagsmith"), aboutWindow);
    name->setObjectName(QStringLiteral("aboutName"));
    name->setAlignment(Qt::AlignCenter);
    auto* text =
        new QLabel(tr("Edits the metadata of videos, audio files and photos."), aboutWindow);
    text->setAlignment(Qt::AlignCenter);
    auto* version =
        new QLabel(tr("Version %1").arg(QCoreApplication::applicationVersion()), aboutWindow);
    version->setAlignment(Qt::AlignCenter);
    layout->addWidget(logo);
    layout->addWidget(name);
    layout->addWidget(text);
    layout->addWidget(version);
}

void AppDelegate::dispatched(const char* action) {
    m_lastDispatchedAction = QString::fromLatin1(action);
    qCInfo(lcTagsmith) << "toolbar ==" << action;
}

void AppDelegate::popUpMenu(QMenu* menu, QWidget* button) {
    // The menu's top-left corner goes to the button's lower-left corner.
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void AppDelegate::MybuttonMouseDownHandle(QObject* sender) {
    if (!sender) return;
    // Compared by identity, in this order; the first match acts.
    if (sender == opendeviceBtn) return OpenDeviceAction(sender), dispatched("OpenDeviceAction");
    if (sender == deletePhotoBtn) return DeletePhotoAction(sender), dispatched("DeletePhotoAction");
    if (sender == downloadPhotoBtn)
        return DownloadPhotoAction(sender), dispatched("DownloadPhotoAction");
    if (sender == importEditPhotoBtn)
        return DownloadImportEditePhotoAction(sender), dispatched("DownloadImportEditePhotoAction");
    if (sender == viewExifBtn)
        return popUpMenu(editExifMenu, viewExifBtn), dispatched("editExifMenu");
    if (sender == removeExifBtn)
        return popUpMenu(removeExifMenu, removeExifBtn), dispatched("removeExifMenu");
    if (sender == importPhotobtn)
        return popUpMenu(importPhotoMenu, importPhotobtn), dispatched("importPhotoMenu");
    if (sender == remoMetaDataLocalBtn)
        return popUpMenu(removeExifMenu, remoMetaDataLocalBtn), dispatched("removeExifMenu");
    if (sender == extractMetaBtn)
        return popUpMenu(extractMetaMenu, extractMetaBtn), dispatched("extractMetaMenu");
    if (sender == SaveMediaChangesBtn)
        return SaveMeidaFileChangesAction(sender), dispatched("SaveMeidaFileChangesAction");
    if (sender == editMetaDataLocalBtn)
        return popUpMenu(editExifMenu, editMetaDataLocalBtn), dispatched("editExifMenu");
    if (sender == videoBatchEditBtn)
        return popUpMenu(videoBatchEditMenu, videoBatchEditBtn), dispatched("videoBatchEditMenu");
    if (sender == importandExportBtn)
        return popUpMenu(importandExportMenu, importandExportBtn),
               dispatched("importandExportMenu");
    if (sender == cameraphotoBtn)
        return ChangeToImportiOSDevicePhoto(sender), dispatched("ChangeToImportiOSDevicePhoto");
    if (sender == localphotoBtn)
        return ChangeToImportComputerPhoto(sender), dispatched("ChangeToImportComputerPhoto");
    if (sender == editBackBtn) return dispatched("HideEditViewAction");
    if (sender == editTemplateBtn) return dispatched("ExportTemplateDataToPlist");
    if (sender == editApplyBtn)
        return ClickApplyChangeAction(sender), dispatched("ClickApplyChangeAction");
    if (sender == starteditBtn) return dispatched("StartEditViewAction");
    if (sender == localeditexifBtn) return dispatched("StartEditViewAction");
    if (sender == changePhotoDateBtn)
        return popUpMenu(changePhotoDateMenu, changePhotoDateBtn),
               dispatched("changePhotoDateMenu");
    if (sender == changeMutiPhotoDateBtn)
        return popUpMenu(changeMutiPhotoDateMenu, changeMutiPhotoDateBtn),
               dispatched("changeMutiPhotoDateMenu");
    if (sender == writeXmpBtn)
        return BatchWriteXMPFileToVideoAction(sender), dispatched("BatchWriteXMPFileToVideoAction");
    if (sender == CancelXmpBtn)
        return CanelXMPMetadataToPhotosAction(sender), dispatched("CanelXMPMetadataToPhotosAction");
    // Any other sender is ignored.
}

void AppDelegate::MyClosebuttonMouseDownHandle(QObject*) {
    CloseTheMainWindow();
}

void AppDelegate::PRbuttonMouseEnteredHandle(QObject*) {}

void AppDelegate::PRbuttonMouseExitedHandle(QObject*) {}

QMessageBox* AppDelegate::makeExitAlert(QPushButton** exitButton) {
    auto* alert = new QMessageBox(m_window);
    alert->setIcon(QMessageBox::Question);
    alert->setText(tr("Are you sure you want to Exit ?"));
    QPushButton* exit = alert->addButton(tr(" Exit "), QMessageBox::AcceptRole);
    QPushButton* cancel = alert->addButton(tr("Cancel"), QMessageBox::RejectRole);
    alert->setDefaultButton(exit);
    alert->setEscapeButton(cancel);
    if (exitButton) *exitButton = exit;
    return alert;
}

void AppDelegate::CloseTheMainWindow() {
    if (!confirmQuit(true)) return;
    // Quitting closes the window, which must not ask a second time.
    m_quitConfirmed = true;
    QCoreApplication::quit();
}

bool AppDelegate::windowShouldClose() {
    if (m_quitConfirmed) return true;
    // The close box quits at once unless edits or running work would be lost.
    if (!confirmQuit(false)) return false;
    m_quitConfirmed = true;
    QCoreApplication::quit();
    return true;
}

void AppDelegate::ClickAbout(QObject*) {
    if (!aboutWindow->isVisible()) aboutWindow->show();
}

void AppDelegate::CLICkProductGuide(QObject*) {
    const QUrl guide = productGuideUrl(QString::fromLatin1(kProductGuideUrl));
    if (guide.isEmpty()) {
        qCWarning(lcTagsmithUser, "The user guide is not installed (no %s in the data folders).",
                  kLocalGuidePage);
        return;
    }
    DesktopIntegration::instance().openUrl(guide);
}

void AppDelegate::CLICkSupport(QObject*) {
    DesktopIntegration::instance().openUrl(QUrl(QString::fromLatin1(kSupportUrl)));
}

void AppDelegate::startProgreess() {
    progressIndicator->show();
    progressIndicator->startAnimation();
}

void AppDelegate::endProgress() {
    progressIndicator->hide();
    // Started again, not stopped: the hidden indicator keeps turning.
    progressIndicator->startAnimation();
}
