// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <QPalette>

#include <functional>

class QDockWidget;
class QLabel;
class QLineEdit;
class QSettings;
class QSplitter;
class QStackedWidget;
class QToolBar;
class QToolButton;
class ActivityView;
class AudioPanel;
class BusyIndicator;
class DropHintView;
class PhotoBrowserView;
class PhotoPanel;
class PRDragTableView;
class ToolbarButton;
class VideoMetaView;

// The main window: toolbar, the media list (or the hint while it is empty)
// on the left, the panel of the selected file on the right, and the
// activity view at the bottom. It holds the views; the controller fills
// them and answers their actions.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);

    // Adds a button to the toolbar; hidden buttons exist but take no room.
    void addToolbarButton(ToolbarButton* button, bool visible);
    void setToolbarButtonVisible(ToolbarButton* button, bool visible);
    void addToolbarSeparator();
    void addToolbarStretch();

    // Shows the list (true) or the hint of the empty list (false).
    void showList(bool list);
    bool listShown() const;
    // What the left side shows: the media table or its hint, the photos of
    // the list or their hint, the camera's photos or the camera hint.
    enum class LeftPage { MediaHint, Media, PhotoHint, Photos, CameraHint, CameraPhotos };
    void showLeftPage(LeftPage page);
    LeftPage leftPage() const;
    // The photo panel in place of the video and audio panels (photo mode).
    void showPhotoPanel(bool photo);
    // Shows the placeholder of the right side when neither panel is visible.
    void updateContentPlaceholder();
    void setItemCount(int count);
    // Tells the outcome of a write in the status bar; when `path` is not
    // empty a "Show in Folder" button reveals it (`root`: the storage folder).
    void showWriteResult(const QString& message, const QString& path, const QString& root);

    // Asked when the close box is pressed; false keeps the window open.
    std::function<bool()> shouldClose;

    QToolBar* toolbar() const { return m_toolbar; }
    PRDragTableView* dragTable() const { return m_table; }
    DropHintView* hintView() const { return m_hint; }
    QWidget* cameraHintView() const { return m_cameraHint; }
    QWidget* listArea() const;
    VideoMetaView* videoPanel() const { return m_video; }
    AudioPanel* audioPanel() const { return m_audio; }
    PhotoPanel* photoPanel() const { return m_photo; }
    PhotoBrowserView* localImageBrowserView() const { return m_photos; }
    PhotoBrowserView* imageBrowserView() const { return m_cameraPhotos; }
    QWidget* cameraWindow() const { return m_cameraWindow; }
    QLabel* deviceNameLabel() const { return m_deviceName; }
    DropHintView* photoHintView() const { return m_photoHint; }
    BusyIndicator* busyIndicator() const { return m_busy; }
    ActivityView* activityView() const { return m_activity; }
    QDockWidget* activityDock() const { return m_activityDock; }

    // The field over the list that filters it (Find).
    QLineEdit* filterField() const { return m_filter; }
    QSplitter* splitter() const { return m_splitter; }

    // Sizes the window to the screen it is on, centred.
    void fitToScreen();
    // Size, position, docks, splitter and the media table's columns, kept
    // between runs beside the preferences.
    void saveWindowState(QSettings& settings) const;
    // Restores what `saveWindowState` kept, pulled back inside the screen.
    void restoreWindowState(QSettings& settings);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QToolBar* m_toolbar = nullptr;
    QSplitter* m_splitter = nullptr;
    QLineEdit* m_filter = nullptr;
    QStackedWidget* m_left = nullptr;
    PRDragTableView* m_table = nullptr;
    DropHintView* m_hint = nullptr;
    QWidget* m_cameraHint = nullptr;
    QWidget* m_placeholder = nullptr;
    DropHintView* m_photoHint = nullptr;
    PhotoBrowserView* m_photos = nullptr;
    PhotoBrowserView* m_cameraPhotos = nullptr;
    QWidget* m_cameraWindow = nullptr;
    QLabel* m_deviceName = nullptr;
    PhotoPanel* m_photo = nullptr;
    VideoMetaView* m_video = nullptr;
    AudioPanel* m_audio = nullptr;
    BusyIndicator* m_busy = nullptr;
    ActivityView* m_activity = nullptr;
    QDockWidget* m_activityDock = nullptr;
    QLabel* m_count = nullptr;
    QLabel* m_result = nullptr;
    QToolButton* m_showResult = nullptr;
    QString m_resultPath, m_resultRoot;
};

// `window` moved, and shrunk where it is larger, to lie within `available`.
QRect keepInside(QRect window, const QRect& available);

// Loads the program's style sheet from the resources.
QString tagsmithStyleSheet();

// The program's dark colours for every widget, Qt's own dialogs included.
QPalette tagsmithPalette();
