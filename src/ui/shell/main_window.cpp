// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/main_window.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "core/common/desktop_integration.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/photo/photo_browser.h"
#include "ui/photo/photo_panel.h"
#include "ui/shell/activity_view.h"
#include "ui/shell/busy_indicator.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

// The resources live in a static library: nothing would pull them into the
// program unless they are asked for by name.
static void initResources() {
    static const bool done = [] {
        Q_INIT_RESOURCE(resources);
        return true;
    }();
    Q_UNUSED(done);
}

QString tagsmithStyleSheet() {
    initResources();
    QFile file(QStringLiteral(":/style/tagsmith.qss"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

QPalette tagsmithPalette() {
    // The style sheet colours the program's own views; the palette colours
    // everything it does not name, such as Qt's file and font dialogs.
    QPalette p;
    const QColor window(0x20, 0x21, 0x24), base(0x16, 0x17, 0x19), text(0xe8, 0xe8, 0xe8);
    const QColor button(0x34, 0x36, 0x3a), accent(0x2a, 0x6f, 0xdb), muted(0x6c, 0x6e, 0x73);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, QColor(0x1d, 0x1e, 0x21));
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::PlaceholderText, muted);
    p.setColor(QPalette::Button, button);
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(0x2b, 0x2d, 0x31));
    p.setColor(QPalette::ToolTipText, QColor(0xf0, 0xf0, 0xf0));
    p.setColor(QPalette::Highlight, accent);
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, QColor(0x6a, 0xa5, 0xff));
    p.setColor(QPalette::Light, QColor(0x4a, 0x4c, 0x52));
    p.setColor(QPalette::Midlight, QColor(0x3d, 0x3f, 0x44));
    p.setColor(QPalette::Mid, QColor(0x2c, 0x2e, 0x32));
    p.setColor(QPalette::Dark, QColor(0x10, 0x11, 0x12));
    p.setColor(QPalette::Shadow, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, muted);
    return p;
}

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
    initResources();
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Tagsmith"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/tagsmith.svg")));
    fitToScreen();

    m_toolbar = new QToolBar(tr("Toolbar"), this);
    m_toolbar->setObjectName(QStringLiteral("mainToolbar"));
    m_toolbar->setMovable(false);
    m_toolbar->setFloatable(false);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(Qt::TopToolBarArea, m_toolbar);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setObjectName(QStringLiteral("mainSplitter"));
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    m_splitter = splitter;

    // The list side: the filter field over the list (or its hint).
    auto* listSide = new QWidget(splitter);
    listSide->setObjectName(QStringLiteral("listSide"));
    auto* listLayout = new QVBoxLayout(listSide);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->setSpacing(0);
    m_filter = new QLineEdit(listSide);
    m_filter->setObjectName(QStringLiteral("listFilter"));
    m_filter->setPlaceholderText(tr("Find in the list"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setToolTip(
        tr("Shows only the files whose name, type, artist or album contains "
           "this text (Ctrl+F; Escape clears it)"));
    m_filter->setAccessibleName(tr("Find in the list"));
    m_left = new QStackedWidget(listSide);
    listLayout->addWidget(m_filter);
    listLayout->addWidget(m_left, 1);
    // Escape in the field empties it and goes back to the list.
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), m_filter);
    escape->setContext(Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, [this] {
        m_filter->clear();
        if (QWidget* list = m_left->currentWidget()) list->setFocus(Qt::ShortcutFocusReason);
    });

    m_left->setObjectName(QStringLiteral("leftContentView"));
    m_hint = new DropHintView(
        QStringLiteral(":/icons/drop-here.svg"),
        tr("Drop videos, audio files or folders here\nor press Add to choose them"), m_left);
    m_hint->setObjectName(QStringLiteral("leftTipView"));
    m_cameraHint = new DropHintView(QStringLiteral(":/icons/camera.svg"),
                                    tr("Connect a camera or phone to see its photos"), m_left);
    m_cameraHint->setObjectName(QStringLiteral("leftTipCameraImageView"));
    m_table = new PRDragTableView(m_left);
    m_table->setToolTip(
        tr("The videos and audio files of the list: Enter edits the selected "
           "file, Delete takes rows off the list (the files stay)"));
    m_table->setAccessibleName(tr("Videos and audio files"));
    m_photoHint = new DropHintView(
        QStringLiteral(":/icons/drop-here.svg"),
        tr("Drop photos or folders of photos here\nor press Add to choose them"), m_left);
    m_photoHint->setObjectName(QStringLiteral("photoTipView"));
    m_photos = new PhotoBrowserView(QStringLiteral("localImageBrowserView"), m_left);
    m_photos->setToolTip(
        tr("The photos of the list: Enter edits the selected photo, Delete "
           "takes photos off the list (the files stay)"));
    m_photos->setAccessibleName(tr("Photos"));
    // The camera window: the connected camera's name over its photos and movies.
    m_cameraWindow = new QWidget(m_left);
    m_cameraWindow->setObjectName(QStringLiteral("cameraWindow"));
    m_cameraWindow->setAccessibleName(tr("Camera"));
    auto* cameraLayout = new QVBoxLayout(m_cameraWindow);
    cameraLayout->setContentsMargins(0, 0, 0, 0);
    m_deviceName = new QLabel(m_cameraWindow);
    m_deviceName->setObjectName(QStringLiteral("deviceNamelab"));
    m_deviceName->setAccessibleName(tr("Camera name"));
    m_deviceName->setToolTip(tr("The camera or phone whose photos and movies are shown"));
    m_deviceName->setContentsMargins(8, 4, 8, 4);
    m_cameraPhotos = new PhotoBrowserView(QStringLiteral("imageBrowserView"), m_cameraWindow);
    m_cameraPhotos->setAccessibleName(tr("Camera photos and movies"));
    m_cameraPhotos->setToolTip(tr("Select photos and movies to download or delete"));
    cameraLayout->addWidget(m_deviceName);
    cameraLayout->addWidget(m_cameraPhotos, 1);
    // The order of the pages is LeftPage's.
    for (QWidget* page : {static_cast<QWidget*>(m_hint), static_cast<QWidget*>(m_table),
                          static_cast<QWidget*>(m_photoHint), static_cast<QWidget*>(m_photos),
                          m_cameraHint, m_cameraWindow})
        m_left->addWidget(page);

    auto* content = new QWidget(splitter);
    content->setObjectName(QStringLiteral("mediaContentView"));
    auto* contentLayout = new QVBoxLayout(content);
    contentLayout->setContentsMargins(0, 0, 0, 0);
    m_placeholder = new QLabel(tr("Select a file to see its details"), content);
    m_placeholder->setObjectName(QStringLiteral("contentPlaceholder"));
    static_cast<QLabel*>(m_placeholder)->setAlignment(Qt::AlignCenter);
    m_video = new VideoMetaView(content);
    m_audio = new AudioPanel(content);
    m_photo = new PhotoPanel(content);
    contentLayout->addWidget(m_placeholder, 1);
    contentLayout->addWidget(m_video, 1);
    contentLayout->addWidget(m_audio, 1);
    contentLayout->addWidget(m_photo, 1);
    m_video->hide();
    m_audio->hide();
    m_photo->hide();

    splitter->addWidget(listSide);
    splitter->addWidget(content);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({620, 560});
    setCentralWidget(splitter);

    auto* dock = new QDockWidget(tr("Activity"), this);
    dock->setObjectName(QStringLiteral("activityDock"));
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    m_activity = new ActivityView(dock);
    dock->setWidget(m_activity);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    m_activityDock = dock;
    resizeDocks({dock}, {120}, Qt::Vertical);
    // The pane waits until the user opens it (View > Activity).
    dock->hide();

    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("itemCount"));
    m_busy = new BusyIndicator(this);
    m_busy->hide();
    m_result = new QLabel(this);
    m_result->setObjectName(QStringLiteral("writeResult"));
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_showResult = new QToolButton(this);
    m_showResult->setObjectName(QStringLiteral("showWrittenFile"));
    m_showResult->setText(tr("Show in Folder"));
    m_showResult->setToolTip(tr("Show the written file in the file manager"));
    m_showResult->hide();
    connect(m_showResult, &QToolButton::clicked, this,
            [this] { DesktopIntegration::instance().revealFile(m_resultPath, m_resultRoot); });
    statusBar()->addWidget(m_count);
    statusBar()->addWidget(m_result, 1);
    statusBar()->addWidget(m_showResult);
    statusBar()->addPermanentWidget(m_busy);
    statusBar()->setSizeGripEnabled(false);
    setItemCount(0);
}

void MainWindow::fitToScreen() {
    // The preferred size, but never larger than the screen's free area (a
    // 1920 x 1080 screen at 1.5x scaling has 1280 x 720 to offer), centred.
    QSize size(1180, 740);
    const QScreen* on = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!on) return resize(size);
    const QRect free = on->availableGeometry();
    size = size.boundedTo(QSize(free.width() * 19 / 20, free.height() * 9 / 10));
    resize(size);
    move(free.center() - QPoint(size.width() / 2, size.height() / 2));
}

QRect keepInside(QRect window, const QRect& available) {
    if (!available.isValid()) return window;
    window.setSize(window.size().boundedTo(available.size()));
    window.moveLeft(
        std::clamp(window.left(), available.left(), available.right() - window.width() + 1));
    window.moveTop(
        std::clamp(window.top(), available.top(), available.bottom() - window.height() + 1));
    return window;
}

namespace {
// The keys of the window's state, beside the preferences'.
constexpr const char* kGeometryKey = "windowGeometry";
constexpr const char* kStateKey = "windowState";
constexpr const char* kSplitterKey = "windowSplitter";
constexpr const char* kColumnsKey = "mediaTableColumns";
}  // namespace

void MainWindow::saveWindowState(QSettings& settings) const {
    settings.setValue(kGeometryKey, saveGeometry());
    settings.setValue(kStateKey, saveState());
    settings.setValue(kSplitterKey, m_splitter->saveState());
    settings.setValue(kColumnsKey, m_table->horizontalHeader()->saveState());
}

void MainWindow::restoreWindowState(QSettings& settings) {
    // Each part on its own: a damaged value leaves that part as it is.
    if (settings.contains(kGeometryKey)) {
        if (restoreGeometry(settings.value(kGeometryKey).toByteArray())) {
            // On the screen the window was on, else the primary one: a screen
            // unplugged since, or smaller now, does not hide the window.
            const QRect saved = geometry();
            const QScreen* on = QGuiApplication::screenAt(saved.center());
            if (!on) on = QGuiApplication::primaryScreen();
            if (on && !isMaximized() && !isFullScreen())
                setGeometry(keepInside(saved, on->availableGeometry()));
        } else {
            fitToScreen();
        }
    }
    if (settings.contains(kStateKey)) restoreState(settings.value(kStateKey).toByteArray());
    if (settings.contains(kSplitterKey))
        m_splitter->restoreState(settings.value(kSplitterKey).toByteArray());
    QHeaderView* header = m_table->horizontalHeader();
    if (settings.contains(kColumnsKey) &&
        header->restoreState(settings.value(kColumnsKey).toByteArray()))
        // The list starts in import order whatever the last sort was.
        header->setSortIndicatorShown(false);
}

void MainWindow::addToolbarButton(ToolbarButton* button, bool visible) {
    QAction* action = m_toolbar->addWidget(button);
    action->setObjectName(button->objectName() + QStringLiteral("Action"));
    action->setVisible(visible);
}

void MainWindow::setToolbarButtonVisible(ToolbarButton* button, bool visible) {
    for (QAction* action : m_toolbar->actions()) {
        if (m_toolbar->widgetForAction(action) == button) action->setVisible(visible);
    }
}

void MainWindow::addToolbarSeparator() {
    m_toolbar->addSeparator();
}

void MainWindow::addToolbarStretch() {
    auto* spacer = new QWidget(m_toolbar);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    spacer->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_toolbar->addWidget(spacer);
}

void MainWindow::showList(bool list) {
    showLeftPage(list ? LeftPage::Media : LeftPage::MediaHint);
}

void MainWindow::showLeftPage(LeftPage page) {
    m_left->setCurrentIndex(int(page));
}

MainWindow::LeftPage MainWindow::leftPage() const {
    return LeftPage(m_left->currentIndex());
}

void MainWindow::showPhotoPanel(bool photo) {
    if (photo) {
        m_video->hide();
        m_audio->hide();
    }
    m_photo->setVisible(photo);
    updateContentPlaceholder();
}

QWidget* MainWindow::listArea() const {
    return m_table;
}

bool MainWindow::listShown() const {
    return m_left->currentWidget() == m_table;
}

void MainWindow::updateContentPlaceholder() {
    m_placeholder->setVisible(m_video->isHidden() && m_audio->isHidden() && m_photo->isHidden());
}

void MainWindow::setItemCount(int count) {
    m_count->setText(count == 1 ? tr("1 file") : tr("%1 files").arg(count));
}

void MainWindow::showWriteResult(const QString& message, const QString& path, const QString& root) {
    m_result->setText(message);
    m_result->setToolTip(message);
    m_resultPath = path;
    m_resultRoot = root;
    m_showResult->setVisible(!path.isEmpty());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (shouldClose && !shouldClose()) {
        event->ignore();
        return;
    }
    event->accept();
}
