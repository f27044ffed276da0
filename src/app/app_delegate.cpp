// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/app_delegate.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QOperatingSystemVersion>
#include <QRegularExpression>
#include <QSettings>
#include <QSysInfo>
#include <QVBoxLayout>

#include "app/import_thread.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "core/photo/photo_writers.h"
#include "core/video/video_writers.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/busy_indicator.h"
#include "ui/shell/main_window.h"
#include "ui/shell/preferences_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

namespace {
AppDelegate* g_appDelegate = nullptr;
}

AppDelegate::AppDelegate(QSettings& settings, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_panelBaseline(std::make_unique<VideoEditorState>()),
      m_audioBaseline(std::make_unique<AudioEditorState>()),
      m_photoBaseline(std::make_unique<PhotoEditorState>()) {
    setObjectName(QStringLiteral("AppDelegate"));
    // The buttons and drop views tell the controller about themselves through
    // signals; they are connected as each view is made (awakeFromNib).
    g_appDelegate = this;
    currentExifDictionary.clear();
    currentChooseFilePath.clear();
    blocalMode = true;
    mCameras.clear();
    // Every old value, and the XMP location text, starts as "" (not null), so
    // that a field compared with its old value tells "unchanged" correctly.
    for (QString* old :
         {&oldTitleStr,         &oldArtistStr,      &oldImageDescStr,   &oldCopyrightStr,
          &oldCommentStr,       &oldKeywordStr,     &oldCameraDateStr,  &oldCameraMakeStr,
          &oldCameraModeStr,    &oldGpsAitStr,      &oldGpsDateStr,     &oldGpsLatiStr,
          &oldGpsTimeStr,       &oldGpsLongtStr,    &oldMovieTitle,     &oldMovieMake,
          &oldMovieAlbumArtist, &oldMovieArtist,    &oldMovieModel,     &oldMovieCreatedDate,
          &oldMovieShootDate,   &oldMoviePublisher, &oldMovieCopyright, &oldMovieDescription,
          &oldMovieKeywords,    &oldAlbumStr,       &oldAlbumArtistStr, &oldPublisherStr,
          &oldBandStr,          &oldLyricStr,       &oldSubtitleStr,    &oldRecordDateStr,
          &oldCreateDateStr,    &oldReleaseYearStr, &oldComposerStr,    &oldMovieProducer,
          &writeXmplocation})
        *old = QStringLiteral("");
    bImportLocalFolder = false;
    bImportLocalPath = QStringLiteral("");
    if (qApp) {
        connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::stopImports);
        connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::stopRename);
        connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
            if (m_window) saveWindowState();
        });
    }
}

AppDelegate::~AppDelegate() {
    stopCameraThread();
    stopImports();
    stopRename();
    cancelVideoTools();
    waitForVideoJobs();
    delete m_window;
    if (g_appDelegate == this) g_appDelegate = nullptr;
}

AppDelegate* AppDelegate::GetAppDelegater() {
    return g_appDelegate;
}

void AppDelegate::getSystemVersionMajor(int* major, int* minor, int* bugFix) {
    int values[3] = {10, 0, 0};
    const QOperatingSystemVersion os = QOperatingSystemVersion::current();
    if (os.majorVersion() > 0) {
        values[0] = os.majorVersion();
        values[1] = std::max(os.minorVersion(), 0);
        values[2] = std::max(os.microVersion(), 0);
    } else {
        // Linux reports no system version of its own; the kernel's release
        // ("6.1.0-18-amd64") stands for it.
        static const QRegularExpression release(QStringLiteral("^(\\d+)\\.(\\d+)(?:\\.(\\d+))?"));
        const QRegularExpressionMatch m = release.match(QSysInfo::kernelVersion());
        if (m.hasMatch()) {
            values[0] = m.captured(1).toInt();
            values[1] = m.captured(2).toInt();
            values[2] = m.captured(3).toInt();
        } else {
            const long code = -1;
            qCWarning(lcTagsmith, "Unable to obtain system version: %ld", code);
        }
    }
    if (major) *major = values[0];
    if (minor) *minor = values[1];
    if (bugFix) *bugFix = values[2];
}

void AppDelegate::awakeFromNib() {
    if (m_window) return;
    getSystemVersionMajor(nullptr, &macOsVer, nullptr);

    QApplication::setPalette(tagsmithPalette());
    m_window = new MainWindow;
    m_window->setStyleSheet(tagsmithStyleSheet());
    m_window->shouldClose = [this] { return windowShouldClose(); };

    dragtableView = m_window->dragTable();
    leftTipView = m_window->hintView();
    leftTipCameraImageView = m_window->cameraHintView();
    leftphotoScrView = m_window->listArea();
    videoMetaView = m_window->videoPanel();
    audioContentView = m_window->audioPanel();
    progressIndicator = m_window->busyIndicator();

    mediaController = new MediaTableModel(this);
    dragtableView->setModel(mediaController);
    QHeaderView* header = dragtableView->horizontalHeader();
    header->resizeSection(int(MediaColumn::Name), 220);
    header->resizeSection(int(MediaColumn::Size), 100);
    header->resizeSection(int(MediaColumn::Time), 115);
    header->resizeSection(int(MediaColumn::Type), 130);
    header->resizeSection(int(MediaColumn::Artist), 120);
    header->resizeSection(int(MediaColumn::Album), 120);
    connect(header, &QHeaderView::sectionClicked, this,
            [this](int section) { tableViewDidClickTableColumn(MediaColumn(section)); });
    connect(dragtableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { tableViewSelectionDidChange(); });

    // Drops on the table, and on the hint that stands in for the empty table,
    // are answered by the table-delegate path, which imports with full reading.
    auto validate = [this](const QStringList& paths) { return tableViewValidateDrop(paths); };
    auto accept = [this](const QStringList& paths) { return tableViewAcceptDrop(paths); };
    dragtableView->validateDrop = validate;
    dragtableView->acceptDrop = accept;
    m_window->hintView()->validateDrop = validate;
    m_window->hintView()->acceptDrop = accept;
    // The table also tells of its drops by itself ("NSDragOperationMediaNote");
    // the controller has no handler for that under the name it listens for,
    // so that path stays quiet and PRDragOperationMediaNoteHandle is not reached.

    progressIndicator->hide();
    setupToolbar();
    setupMenus();
    setupPreferences();
    setupAboutWindow();
    setupVideoActions();
    setupVideoToolActions();
    setupAudioActions();
    setupPhotoActions();
    setupCameraActions();
    setupBatchActions();
    setupKeyboard();
    m_window->restoreWindowState(m_settings);
    setupUpdateController();

    // Camera buttons wait for an open camera.
    for (ToolbarButton* b : {deletePhotoBtn, downloadPhotoBtn, viewExifBtn, removeExifBtn})
        b->setEnabled(false);

    for (const char* title : kPositionTitles)
        postionBtn->addItem(QCoreApplication::translate("PreferencesWindow", title),
                            QString::fromLatin1(title));
    for (const char* format : kStampDateFormats)
        dateFormatBtn->addItem(QString::fromLatin1(format));
}

void AppDelegate::applicationDidFinishLaunching() {
    if (m_launched) return;
    m_launched = true;
    theImageData.clear();
    cameItemArray.clear();
    localPhotoItemArray.clear();

    // The list area starts with the hint of the empty list.
    m_window->showList(false);
    dragtableView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    videoMetaView->hide();
    audioContentView->hide();
    m_window->updateContentPlaceholder();

    const LaunchSettings launch = readLaunchSettings(m_settings);
    storagelocation = launch.storagePath;
    storePathlab->setText(launch.storagePath);
    currentFontname = launch.fontName;
    currentFontSize = launch.fontSize;
    showFontlab->setText(QStringLiteral("%1 %2").arg(currentFontname).arg(currentFontSize));
    classicBehaviour = launch.classicBehaviour;
    currentFontColor = QColor(Qt::white);
    colorwell->setColor(Qt::white);
    // A stored title that matches no item leaves the pop-up without a selection.
    postionBtn->setCurrentIndex(postionBtn->findData(launch.positionTitle));
    dateFormatBtn->setCurrentIndex(dateFormatBtn->findText(launch.dateFormatTitle));

    qCInfo(lcTagsmith) << "storagelocation ==" << storagelocation;
    // The device browser: connected cameras are polled from now on.
    pollCameras();
}
