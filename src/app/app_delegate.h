// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <QHash>
#include <QThread>
#include <QThreadPool>

#include <array>
#include <atomic>
#include <functional>
#include <memory>

#include "core/camera/camera_device.h"
#include "core/library/ik_image_item.h"
#include "core/library/media_sort.h"

class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QAbstractButton;
class QAction;
class QMenu;
class QMessageBox;
class QProgressBar;
class QProgressDialog;
class QPushButton;
class QSettings;
class QWidget;
class AudioPanel;
class GpsWindow;
class PhotoBrowserView;
class PhotoDateWindow;
class PhotoMapWindow;
class PhotoPanel;
class BusyIndicator;
class CameraWorker;
class ColorWell;
class PRUpdateController;
class ImportThread;
class MainWindow;
class MediaTableModel;
class PRDragTableView;
class PreferencesWindow;
class ToolbarButton;
class VideoMetaView;
struct AudioEditorState;
struct PhotoEditorState;
struct PhotoWriteOutcome;
enum class PhotoMode;
enum class PhotoRemoval;
struct StorageContext;
struct VideoEditorState;
struct VideoWriteJob;
struct VideoWriteResult;
class OutputBatch;
class QAction;
struct RenameOptions;
struct RenameStep;
enum class VideoTool;
struct VideoToolJob;

// The one controller of the program: it owns the main window, every view and
// panel, the media list and the settings, and carries out every action.
// Member functions live in one source file per subject:
//   app_delegate.cpp          construction, interface set-up, launch
//   app_delegate_library.cpp  import, the media table, removal
//   app_delegate_selection.cpp the highlighted rows, the panel they show,
//                             unsaved edits and what quitting asks
//   app_delegate_prefs.cpp    preferences and the storage folder
//   app_delegate_toolbar.cpp  toolbar dispatcher, quitting, help, busy indicator
//   app_delegate_video.cpp    the video panel, saving, metadata removal, video tools
//   app_delegate_audio.cpp    the audio panel, saving and metadata removal of audio files
//   app_delegate_photo.cpp    photo mode: its lists, adding photos, the photo panel,
//                             the apply and the removal actions
//   app_delegate_photo_windows.cpp the date, GPS and map windows of photo mode
//   app_delegate_batch.cpp    the Batch menu, batch dates, property-list export and import
//   app_delegate_rename.cpp   the rename dialog, its thread and "Undo Rename"
//   app_delegate_window.cpp   paths of the command line and of later launches,
//                             the window's state between runs, the keyboard
//   app_delegate_xmp.cpp      the XMP sheet: sidecars applied to videos
//   app_delegate_camera.cpp   cameras and phones: hot-plug, listing, download, delete
class AppDelegate : public QObject {
    Q_OBJECT
public:
    // `settings` is the per-user defaults store; it must outlive the controller.
    explicit AppDelegate(QSettings& settings, QObject* parent = nullptr);
    ~AppDelegate() override;

    static AppDelegate* GetAppDelegater();

    // Interface set-up once the window exists, then the launch work.
    void awakeFromNib();
    void applicationDidFinishLaunching();

    // Writes the running system's version into the given places (each may be null).
    void getSystemVersionMajor(int* major, int* minor, int* bugFix);

    MainWindow* mainWindow() const { return m_window; }

    // --- the window (app_delegate_window.cpp) ---
    // Imports files and folders as if dropped on the window, split by kind
    // (command line, later launches); a missing path is told and skipped.
    void openPaths(const QStringList& paths);
    // Brings the window to the front, restored if minimised.
    void raiseMainWindow();
    // Keeps the window's size, position, splitter and columns (at quit).
    void saveWindowState();
    // Find: the filter field over the list; Select All: the whole list on show.
    void FindInListAction(QObject* sender);
    void SelectAllAction(QObject* sender);

    // --- import and the media table ---
    void AddMediaFileAction(QObject* sender);
    void ClickImportPhotosAction(QObject* sender);
    void openPanelDidEnd1(int returnCode1, const QStringList& paths);
    void OpenComputerFoldertoImportAction(QObject* sender);
    void openPanelDidEnd(int returnCode, const QStringList& paths);
    // Starts an import thread over files and folders (open panel and drops).
    void importMediaItemsThreader(const QStringList& paths);
    void LoadImportedMediasonMainThread();
    bool tableViewValidateDrop(const QStringList& paths) const;
    bool tableViewAcceptDrop(const QStringList& paths);
    void PRDragOperationMediaNoteHandle(QObject* sender);
    void tableViewDidClickTableColumn(MediaColumn column);
    void tableViewSelectionDidChange();
    void RemoveMediaFileAction(QObject* sender);
    void RemoveSelectedMediaFileAction(QObject* sender);
    void RemoveAllMediaFileAction(QObject* sender);
    // The privacy strip of the selected videos ("Remove All Metadata").
    void RemoveAllMetadataAction(QObject* sender);
    // Every location item of the selected videos, and nothing else ("Remove
    // Location").
    void RemoveLocationAction(QObject* sender);
    int numberOfRowsInTableView() const;
    bool importRunning() const { return !m_importThreads.isEmpty(); }
    // Stops every running import and waits for its thread.
    void stopImports();

    // --- video ---
    // Shows a record in the video panel and remembers what it shows.
    void ShowVideoViewWithItem(const IKImageItemPtr& item);
    // The panel's texts with the remembered values and the group flags.
    VideoEditorState videoEditorState() const;
    StorageContext storageContext() const;
    void SaveMeidaFileChangesAction(QObject* sender);
    void CopyvideoTitletoFileNameAction(QObject* sender);
    void CopyvideofilenametoTitleAction(QObject* sender);
    void ClickCopyVideoCreatedDateToCameraDateAction(QObject* sender);
    void ClickCopyVideoExifDateToCreateDateAction(QObject* sender);
    void ClickSetVideoDateFromFileNameAction(QObject* sender);
    // Waits until every started export has finished (tests, quitting).
    void waitForVideoJobs();

    // --- the jobs of the Video Tools menu (app_delegate_tools.cpp) ---
    // Each takes the menu item whose title chooses the variant.
    void ConvertSelectedMediaFileFormatAction(QObject* sender);
    void CompressSelectedMediaFileAction(QObject* sender);
    void ExtractSelectedMediaFileAction(QObject* sender);
    void removeSoundFromMediaFileFormatAction(QObject* sender);
    void ConvertSelectedMediaFileToGIFAction(QObject* sender);
    void SpeedSelectedMediaFileFormatAction(QObject* sender);
    void SlowDownVideoMediaFileFormatAction(QObject* sender);
    void ExtractImagesSelectedMediaFileAction(QObject* sender);
    // The hook run on the main thread when a batch of these jobs has ended.
    void BatchVideosItemCompleteToMainThread(QObject* sender);
    bool videoToolsRunning() const;
    // Asks every running job to stop; their partial files are removed.
    void cancelVideoTools();
    // Alerts are logged instead of shown (tests).
    void setQuietAlerts(bool quiet) { m_quietAlerts = quiet; }

    // --- audio ---
    // Shows a record in the audio panel and remembers what it shows.
    void ShowAudioViewWithItem(const IKImageItemPtr& item);
    // The panel's texts with the remembered values and the group flags.
    AudioEditorState audioEditorState() const;

    // --- photo mode ---
    // The three views of the list: videos and audio in the table, the
    // list's photos in `localImageBrowserView`, the camera's photos.
    void ShowMediaListAction(QObject* sender);
    void ChangeToImportComputerPhoto(QObject* sender);
    void ChangeToImportiOSDevicePhoto(QObject* sender);
    bool photoMode() const;
    // The photo open panel (files and folders) and the drops on the photo view.
    void ClickImportLocalPhotosAction(QObject* sender);
    void importPhotoItemsThreader(const QStringList& paths);
    bool photoViewValidateDrop(const QStringList& paths) const;
    bool photoViewAcceptDrop(const QStringList& paths);
    // Shows the first selected photo of the active browser.
    void imageBrowserSelectionDidChange(QObject* browser);
    void ShowPhotoViewWithItem(const IKImageItemPtr& item);
    // The panel's and the GPS window's texts with the remembered values and flags.
    PhotoEditorState photoEditorState() const;
    // The selected records of the active browser, in the list's order.
    IKImageItemList selectedPhotoItems() const;
    IKImageItemPtr shownPhoto() const { return m_shownPhoto; }
    void ClickApplyChangeAction(QObject* sender);
    void ShowChangeDateWindowAction(QObject* sender);
    void ClickDateChangedSaveAction(QObject* sender);
    void EditeGPSExifDataPhoto(QObject* sender);
    void AddGPSExifDataPhoto(QObject* sender);
    void PreviewCurrentGPSInMap(QObject* sender);
    void ClickSaveChangeGPSAction(QObject* sender);
    void ClickCancleSaveGPSAction(QObject* sender);
    void ShowMapAction(QObject* sender);
    void RemoveIPTCDataFromPhoto(QObject* sender);
    void RemoveExifDataFromPhoto(QObject* sender);
    void RemoveGPSDataFromPhoto(QObject* sender);
    void DeleteExifAndGPSData(QObject* sender);
    void DeleteAllPhotoMetadataData(QObject* sender);
    // Stamps the selected local photos with their dates (the preferences'
    // font, colour, corner and layout), then opens the storage folder.
    void AddDateOnPhotoAction(QObject* sender);
    // --- cameras and phones (app_delegate_camera.cpp) ---
    // The device work runs on the camera thread; the answers arrive here.
    void deviceBrowserDidChangeCameras(const QList<CameraPort>& cameras);
    void deviceBrowser_didAddDevice(const CameraPort& device);
    void deviceBrowser_didRemoveDevice(const CameraPort& device);
    void device_didOpenSessionWithError(const CameraPort& device, const QString& error);
    void cameraDevice_didAddItem(const CameraFileEntry& item);
    void cameraDevice_didReceiveThumbnailForItem(const CameraFileEntry& item, const QImage& image);
    void didDownloadFile(const CameraFileEntry& item, const QString& path, const QString& error,
                         int purpose);
    void OpenDeviceAction(QObject* sender);
    void DownloadPhotoAction(QObject* sender);
    void DownloadImportEditePhotoAction(QObject* sender);
    void DeletePhotoAction(QObject* sender);
    // Looks for connected cameras now rather than at the next poll (tests).
    void pollCameras();
    // Downloads and deletions asked for and not yet answered.
    int cameraRequestsPending() const { return m_cameraRequests; }

    // --- batch tools ---
    // The rename dialog, with the new names shown before anything moves; its
    // OK starts the rename thread behind a modal progress whose Cancel stops
    // after the file in hand.
    void ShowRenameWindowAction(QObject* sender);
    // Puts the files of the last rename back under their old names.
    void UndoRenameAction(QObject* sender);
    bool renameRunning() const { return m_renameThread != nullptr; }
    // The batch date dialog: a fixed (stepped) date or a shift.
    void EditvideofileDateInfoAction(QObject* sender);
    // --- XMP sidecars (app_delegate_xmp.cpp) ---
    // Shows the sheet; its write button asks for a folder of sidecars, which
    // are applied on a worker thread behind the sheet's progress indicator.
    void WriteXMPMetadataToPhotosAction(QObject* sender);
    void CanelXMPMetadataToPhotosAction(QObject* sender);
    void BatchWriteXMPFileToVideoAction(QObject* sender);
    void openPanelDidEnd9(int returnCode9, const QStringList& paths);
    // Closes the sheet when the batch has ended and opens the last sidecar's folder.
    void BatchScanXmpPhotosItemToMainThread();
    bool xmpBatchRunning() const { return m_xmpRunning; }

    // --- what the user sees: selection, unsaved edits, quitting ---
    // The records the commands act on: those on the highlighted rows, in the
    // table's order; with "Classic behaviour" the selected row numbers taken
    // against the list in import order, whatever order the table shows.
    IKImageItemList selectedItems() const;
    // The record the panel shows (an empty record when none).
    IKImageItemPtr shownItem() const { return m_shownItem; }
    // The panel on show holds edits of a listed file that were not saved.
    bool hasUnsavedEdits() const;
    bool exportRunning() const;
    // Answers the controller's questions in place of the user (tests): it is
    // given the question and returns the button to press.
    using QuestionAnswerer = std::function<QAbstractButton*(QMessageBox&)>;
    void setQuestionAnswerer(QuestionAnswerer answerer) { m_answerer = std::move(answerer); }

    // --- preferences ---
    void ShowPreferenceSetting(QObject* sender);
    void CancelPreferenceSetting(QObject* sender);
    void ResetPreferenceSetting(QObject* sender);
    void ChangeStoreLocation(QObject* sender);
    void openPanelDidEnd5(int returnCode5, const QStringList& paths);
    void ShowFontPanelAction(QObject* sender);
    void setStampFont(const QString& family, int size);

    // --- toolbar, quitting, help ---
    void MybuttonMouseDownHandle(QObject* sender);
    void MyClosebuttonMouseDownHandle(QObject* sender);
    void PRbuttonMouseEnteredHandle(QObject* sender);
    void PRbuttonMouseExitedHandle(QObject* sender);
    void CloseTheMainWindow();
    // The question CloseTheMainWindow asks; `exitButton` receives its " Exit " button.
    QMessageBox* makeExitAlert(QPushButton** exitButton);
    bool windowShouldClose();
    // Asks at most one question before quitting: about unsaved edits, else
    // about running imports and exports, else (from the menu only) the exit
    // question. Answers whether to quit.
    bool confirmQuit(bool fromMenu);
    void ClickAbout(QObject* sender);
    void CLICkProductGuide(QObject* sender);
    void CLICkSupport(QObject* sender);
    // Help > Check for Updates.
    void CheckforUpdateAction(QObject* sender);
    PRUpdateController* updateController = nullptr;
    void startProgreess();
    void endProgress();

    // Name of the last action the dispatcher ran ("" when none); lets the
    // activity view and the tests see what a button did.
    QString lastDispatchedAction() const { return m_lastDispatchedAction; }

    // --- state, named as the rest of the program knows it ---
    QString storagelocation;
    QString currentFontname;
    qint32 currentFontSize = 0;
    QColor currentFontColor;
    qint32 macOsVer = 0;
    bool blocalMode = false;
    bool bImportLocalFolder = false;
    QString bImportLocalPath;
    bool basicInfoChange = false, cameraInfoChange = false, gpsInfoChange = false;
    // "Classic behaviour" of the preferences (see selectedItems and the Size sort).
    bool classicBehaviour = false;
    QVariantMap currentExifDictionary;
    QString currentChooseFilePath;
    QString writeXmplocation;  // the sidecar being applied; then the last one
    QByteArray theImageData;
    IKImageItemList cameItemArray;
    IKImageItemList localPhotoItemArray;
    QList<CameraPort> mCameras;
    CameraPort currentDevice;  // empty model when there is none
    QLabel* deviceNamelab = nullptr;
    QWidget* cameraWindow = nullptr;
    QAction* changtoiOSmodemenu = nullptr;
    bool bDownloadandimportToEdit = false;
    bool bNeedDisplayPhotoExifWindow = false;
    QString currentFileName;
    double currentCoords[2] = {0.0, 0.0};
    bool bMapPreview = false;
    bool bAddGPS = false;
    // One direction flag per column (Name, Size, Time, Type, Artist, Album, Date).
    std::array<bool, kMediaColumnCount> columnSortFlags{};

    QString oldTitleStr, oldArtistStr, oldImageDescStr, oldCopyrightStr, oldCommentStr,
        oldKeywordStr, oldCameraDateStr, oldCameraMakeStr, oldCameraModeStr, oldGpsAitStr,
        oldGpsDateStr, oldGpsLatiStr, oldGpsTimeStr, oldGpsLongtStr, oldMovieTitle, oldMovieMake,
        oldMovieAlbumArtist, oldMovieArtist, oldMovieModel, oldMovieCreatedDate, oldMovieShootDate,
        oldMoviePublisher, oldMovieCopyright, oldMovieDescription, oldMovieKeywords, oldAlbumStr,
        oldAlbumArtistStr, oldPublisherStr, oldBandStr, oldLyricStr, oldSubtitleStr,
        oldRecordDateStr, oldCreateDateStr, oldReleaseYearStr, oldComposerStr, oldMovieProducer,
        oldMovieDeviceMake, oldMovieDeviceModel, oldMovieDeviceSoftware;

    // Views and controls (owned by the windows).
    PRDragTableView* dragtableView = nullptr;
    MediaTableModel* mediaController = nullptr;
    QWidget* leftphotoScrView = nullptr;
    QWidget* leftTipView = nullptr;
    QWidget* leftTipCameraImageView = nullptr;
    VideoMetaView* videoMetaView = nullptr;
    AudioPanel* audioContentView = nullptr;
    PhotoPanel* photoContentView = nullptr;
    PhotoBrowserView* localImageBrowserView = nullptr;
    PhotoBrowserView* imageBrowserView = nullptr;
    PhotoDateWindow* changeDateWindow = nullptr;
    GpsWindow* changeGPSWindow = nullptr;
    PhotoMapWindow* mapWindow = nullptr;
    BusyIndicator* progressIndicator = nullptr;
    PreferencesWindow* preferencesWindow = nullptr;
    QDialog* aboutWindow = nullptr;
    QDialog* writeXmpWindow = nullptr;
    QProgressBar* writeXmpProcesser = nullptr;
    QLineEdit* storePathlab = nullptr;
    QLabel* showFontlab = nullptr;
    ColorWell* colorwell = nullptr;
    QComboBox* postionBtn = nullptr;
    QComboBox* dateFormatBtn = nullptr;

    // Toolbar buttons, in the dispatcher's order.
    ToolbarButton *opendeviceBtn = nullptr, *deletePhotoBtn = nullptr, *downloadPhotoBtn = nullptr,
                  *importEditPhotoBtn = nullptr, *viewExifBtn = nullptr, *removeExifBtn = nullptr,
                  *importPhotobtn = nullptr, *remoMetaDataLocalBtn = nullptr,
                  *extractMetaBtn = nullptr, *SaveMediaChangesBtn = nullptr,
                  *editMetaDataLocalBtn = nullptr, *videoBatchEditBtn = nullptr,
                  *importandExportBtn = nullptr, *cameraphotoBtn = nullptr,
                  *localphotoBtn = nullptr, *editBackBtn = nullptr, *editTemplateBtn = nullptr,
                  *editApplyBtn = nullptr, *starteditBtn = nullptr, *localeditexifBtn = nullptr,
                  *changePhotoDateBtn = nullptr, *changeMutiPhotoDateBtn = nullptr,
                  *writeXmpBtn = nullptr, *CancelXmpBtn = nullptr;
    ToolbarButton *addMediaBtn = nullptr, *removeMediaBtn = nullptr, *mediaListBtn = nullptr;

    QMenu *editExifMenu = nullptr, *removeExifMenu = nullptr, *importPhotoMenu = nullptr,
          *extractMetaMenu = nullptr, *videoBatchEditMenu = nullptr, *importandExportMenu = nullptr,
          *changePhotoDateMenu = nullptr, *changeMutiPhotoDateMenu = nullptr;

private:
    friend class ImportThread;
    void appendImportedItem(const IKImageItemPtr& item);
    void noteFolderImported(const QString& parent);
    void importThreadFinished(ImportThread* thread);
    void startImport(const QStringList& paths, bool photos);
    void showListOrHint();
    void setupToolbar();
    void setupMenus();
    void setupPreferences();
    void setupAboutWindow();
    void popUpMenu(QMenu* menu, QWidget* button);
    void dispatched(const char* action);
    QList<int> selectedContentRows() const;
    IKImageItemList highlightedItems() const;
    void selectItems(const IKImageItemList& items, const IKImageItemPtr& current);
    void showItem(const IKImageItemPtr& item);
    void answerLeavingEditedRow();
    enum class UnsavedAnswer { Save, Discard, Cancel };
    // Names `shown`, else the record whose panel holds the edits.
    UnsavedAnswer askAboutUnsavedEdits(const IKImageItemPtr& shown = nullptr);
    QAbstractButton* ask(QMessageBox& question);
    void markPanelSaved();
    // Saves the panel's edits into the given files: the audio panel's into
    // audio files, the video panel's into videos; others are skipped.
    void saveEdits(const IKImageItemList& items);
    void saveVideoEdits(const IKImageItemList& items);
    void saveAudioEdits(const IKImageItemList& items);
    bool audioPanelShown() const;
    void setupAudioActions();
    void setupVideoActions();
    void setupBatchActions();
    // The records a batch command acts on: the table's highlighted rows, or
    // in photo mode the browser's selected photos.
    IKImageItemList batchSelection() const;
    // The rename thread: `copies` (of `listed`, made on the main thread) are
    // renamed there; each file's outcome is handed to the main thread, which
    // alone touches the listed records.
    void SaveChangesRenameWindowAction(const IKImageItemList& listed, const RenameOptions& options);
    void ReNameLocalphotowithFileThreader(const IKImageItemList& listed,
                                          const IKImageItemList& copies,
                                          const RenameOptions& options);
    bool RefreshRenamePhotoProcessToMainThread(const IKImageItemPtr& listed,
                                               const IKImageItem& renamed, int done, int total);
    void RenamePhotoFinishedHanderToMainThread();
    // Cancels a running rename and waits for it (quitting).
    void stopRename();
    void setupKeyboard();
    // The record is listed under the filter of the list (Find).
    bool listedUnderFilter(const IKImageItem& item) const;
    void setupXmpSheet();
    void setupUpdateController();
    using Batch = std::shared_ptr<OutputBatch>;
    void runVideoJobLater(std::function<VideoWriteJob()> build, const Batch& batch);
    void runVideoTool(const char* name,
                      const std::function<void(const IKImageItemPtr&, const Batch&)>& tool);
    void runAudioWriteLater(std::function<VideoWriteResult(OutputBatch&)> write,
                            const Batch& batch);
    void removeAudioMetadataOf(const IKImageItemPtr& item, const Batch& batch);
    void reportWrite(const VideoWriteResult& result);
    void removeMetadataOf(const IKImageItemList& items);
    // Runs a strip job for each selected movie; other rows are reported as
    // skipped with `skipReason`.
    void stripSelectedMovies(
        const std::function<VideoWriteJob(const IKImageItem&, const StorageContext&)>& job,
        const QString& skipReason);
    void showNothingSelected();
    void setupVideoToolActions();
    void startVideoTool(VideoTool tool, QObject* sender);
    void showVideoToolProgress();

    // Photo mode.
    enum class ViewMode { Media, LocalPhotos, CameraPhotos };
    void setupPhotoActions();
    void setupPhotoWindows();
    void applyViewMode(ViewMode mode);
    void reloadPhotoBrowsers();
    IKImageItemList mediaListItems() const;
    PhotoBrowserView* activeBrowser() const;
    PhotoMode photoSourceMode() const;
    QString photoSourcePath(const IKImageItem& item) const;
    void answerLeavingEditedPhoto();
    // Asks about the shown photo's unsaved edits (applying them on Save);
    // false when the user cancelled.
    bool mayLeaveShownPhoto();
    // The photo panel on show holds unsaved edits.
    bool photoEditsUnsaved() const;
    // The photo panel holds unsaved edits, shown or not.
    bool photoPanelEdited() const;
    void markPhotoSaved();
    void applyPhotoEdits(const IKImageItemList& items);
    // One write per photo on the export pool, each told in the status bar.
    using PhotoWrite = std::function<VideoWriteResult(const IKImageItem&, PhotoMode,
                                                      const StorageContext&, OutputBatch&)>;
    void runPhotoWrites(const IKImageItemList& items, const PhotoWrite& write);
    void removePhotoGroups(PhotoRemoval action);
    void removePhotosFromList();
    // A sheet with one " Ok " button (answered through `ask`).
    void showPhotoSheet(const QString& title, const QString& text);
    void fillGpsWindow(const PhotoEditorState& state);
    // Cameras.
    void setupCameraActions();
    void stopCameraThread();
    void updateCameraButtons();
    void downloadSelectedCameraItems(int purpose);
    // In camera mode, downloads the selection before the GPS window opens
    // (`bNeedDisplayPhotoExifWindow`); true when it did.
    bool downloadBeforeGpsWindow(bool add);

    QSettings& m_settings;
    MainWindow* m_window = nullptr;
    QList<ImportThread*> m_importThreads;
    QString m_lastDispatchedAction;
    bool m_launched = false;
    bool m_quietAlerts = false;
    QThreadPool m_exportPool;
    QThreadPool m_toolPool;
    QList<std::shared_ptr<VideoToolJob>> m_toolJobs;
    QuestionAnswerer m_answerer;
    // The record the panel shows, and the panel's texts when it was filled
    // or last saved: what differs from them is unsaved.
    IKImageItemPtr m_shownItem;
    std::shared_ptr<QList<RenameStep>> m_lastRename;  // the last rename's moves
    QAction* m_undoRename = nullptr;
    QThread* m_renameThread = nullptr;
    std::atomic<bool> m_renameCancelled{false};
    std::shared_ptr<QList<RenameStep>> m_renameResult;  // written by the thread, read once it ended
    QProgressDialog* m_renameProgress = nullptr;
    std::unique_ptr<VideoEditorState> m_panelBaseline;
    std::unique_ptr<AudioEditorState> m_audioBaseline;
    ViewMode m_viewMode = ViewMode::Media;
    IKImageItemPtr m_shownPhoto;
    std::unique_ptr<PhotoEditorState> m_photoBaseline;
    QList<QAction*> m_photoRemovalActions;
    IKImageItemList m_lastSelection;
    bool m_restoringSelection = false;
    bool m_leavePending = false;
    bool m_quitConfirmed = false;
    QString m_listFilter;
    bool m_xmpRunning = false;
    QThread m_cameraThread;
    CameraWorker* m_cameraWorker = nullptr;
    // The camera file behind each camera record, by the record's path.
    QHash<QString, CameraFileEntry> m_cameraEntries;
    bool m_sessionOpen = false;
    int m_cameraRequests = 0;
    int m_gpsDownloads = 0;
    bool m_gpsAfterDownloadAdd = false;
};
