// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's video subject: the video panel with its remembered
// values, the save command, metadata removal and the title and date tools.
#include <QAction>
#include <QMenu>
#include <QMessageBox>

#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_tools.h"
#include "core/video/video_writers.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

namespace {
bool isMxf(const QString& path) {
    return fileExtension(path).compare(QLatin1String("mxf"), Qt::CaseInsensitive) == 0;
}

// The controller's remembered values and their places in an editor state.
// (`oldMovieMake` holds the shown director, `oldMovieModel` the performer.)
const std::pair<QString AppDelegate::*, QString VideoEditorState::*> kRemembered[] = {
    {&AppDelegate::oldMovieTitle, &VideoEditorState::oldMovieTitle},
    {&AppDelegate::oldMovieAlbumArtist, &VideoEditorState::oldMovieAlbumArtist},
    {&AppDelegate::oldMovieArtist, &VideoEditorState::oldMovieArtist},
    {&AppDelegate::oldMovieMake, &VideoEditorState::oldMovieMake},
    {&AppDelegate::oldMovieModel, &VideoEditorState::oldMovieModel},
    {&AppDelegate::oldMovieProducer, &VideoEditorState::oldMovieProducer},
    {&AppDelegate::oldMovieCreatedDate, &VideoEditorState::oldMovieCreatedDate},
    {&AppDelegate::oldMovieShootDate, &VideoEditorState::oldMovieShootDate},
    {&AppDelegate::oldMoviePublisher, &VideoEditorState::oldMoviePublisher},
    {&AppDelegate::oldMovieCopyright, &VideoEditorState::oldMovieCopyright},
    {&AppDelegate::oldMovieDescription, &VideoEditorState::oldMovieDescription},
    {&AppDelegate::oldMovieKeywords, &VideoEditorState::oldMovieKeywords},
};
}  // namespace

void AppDelegate::ShowVideoViewWithItem(const IKImageItemPtr& item) {
    const IKImageItemPtr shown = item ? item : std::make_shared<IKImageItem>();
    const VideoEditorState state = videoEditorStateFor(*shown);
    // What the panel shows now is what the writers compare against.
    for (const auto& [mine, theirs] : kRemembered) this->*mine = state.*theirs;
    oldMovieDeviceMake = shown->fileMake;
    oldMovieDeviceModel = shown->fileModel;
    oldMovieDeviceSoftware = shown->fileSoftware;
    basicInfoChange = false;
    cameraInfoChange = false;
    videoMetaView->ShowVideoViewWithItem(shown, state);
    m_shownItem = shown;
    markPanelSaved();
}

VideoEditorState AppDelegate::videoEditorState() const {
    VideoEditorState s = videoMetaView->editorState();
    for (const auto& [mine, theirs] : kRemembered) s.*theirs = this->*mine;
    s.basicInfoChange = basicInfoChange;
    s.cameraInfoChange = cameraInfoChange;
    return s;
}

StorageContext AppDelegate::storageContext() const {
    return {storagelocation, bImportLocalFolder, bImportLocalPath};
}

void AppDelegate::runVideoJobLater(std::function<VideoWriteJob()> build, const Batch& batch) {
    // Writers return at once; the export and its completion run on a worker.
    const QString storage = storagelocation;
    m_exportPool.start([this, build = std::move(build), storage, batch] {
        const VideoWriteJob job = build();
        if (job.request.sourcePath.isEmpty()) return;
        const VideoWriteResult result = runVideoWriteJob(job, storage, *batch);
        QMetaObject::invokeMethod(this, [this, result] { reportWrite(result); });
    });
}

void AppDelegate::reportWrite(const VideoWriteResult& result) {
    // Every save and every failure is told in the status bar; the written
    // file (or the unchanged copy of a failed save) can be shown from there.
    const QString message = result.message();
    if (result.ok())
        qCInfo(lcTagsmith).noquote() << message;
    else
        qCWarning(lcTagsmith).noquote() << message;
    if (m_window) m_window->showWriteResult(message, result.outputPath, storagelocation);
}

void AppDelegate::waitForVideoJobs() {
    m_exportPool.waitForDone();
    m_toolPool.waitForDone();
}

void AppDelegate::SaveMeidaFileChangesAction(QObject*) {
    if (localPhotoItemArray.isEmpty()) return;
    saveEdits(selectedItems());
}

void AppDelegate::saveVideoEdits(const IKImageItemList& items) {
    if (items.isEmpty()) return;
    ensureFolder(storagelocation);
    const VideoEditorState editor = videoEditorState();
    const StorageContext storage = storageContext();
    if (items.contains(m_shownItem)) markPanelSaved();
    // The location goes into the other rows only when the user edited it in
    // the panel; otherwise each file keeps its own.
    const VideoEditorState shown = m_shownItem ? videoEditorStateFor(*m_shownItem) : editor;
    const bool locationEdited = editor.mediaLatitude != shown.mediaLatitude ||
                                editor.mediaLongtitude != shown.mediaLongtitude ||
                                editor.mediaAatitude != shown.mediaAatitude;
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        if (isAudioPath(item->filePath)) {
            reportWrite(VideoWriteResult::skippedFile(item->filePath,
                                                      tr("the panel's edits are for videos")));
        } else if (isVideoPath(item->filePath) && isMxf(item->filePath)) {
            reportWrite(saveUnchangedVideoCopy(*item, editor, storage, batch.get()));
        } else if (isVideoPath(item->filePath)) {
            // Each record's artwork is its own picture: the panel's picture
            // goes only into the record the panel shows.
            VideoEditorState forItem = editor;
            if (item != m_shownItem) {
                forItem.mediaImage = QImage();
                forItem.imageIsPlaceholder = true;
                if (!locationEdited) {
                    const VideoEditorState own = videoEditorStateFor(*item);
                    forItem.mediaLatitude = own.mediaLatitude;
                    forItem.mediaLongtitude = own.mediaLongtitude;
                    forItem.mediaAatitude = own.mediaAatitude;
                }
            }
            runVideoJobLater(
                [item, forItem, storage] {
                    return SaveChangedVideoExifDateAction(
                        *item, forItem, readExistingMetadata(item->filePath), storage);
                },
                batch);
        }
    }
}

void AppDelegate::removeMetadataOf(const IKImageItemList& items) {
    const VideoEditorState editor = videoEditorState();
    const StorageContext storage = storageContext();
    ensureFolder(storagelocation);
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        if (isAudioPath(item->filePath)) {
            removeAudioMetadataOf(item, batch);
        } else if (isVideoPath(item->filePath)) {
            runVideoJobLater(
                [item, editor, storage] {
                    return RemoveVideoExifDateAction(*item, editor,
                                                     readExistingMetadata(item->filePath), storage);
                },
                batch);
        }
    }
}

void AppDelegate::RemoveSelectedMediaFileAction(QObject*) {
    const IKImageItemList items = selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    removeMetadataOf(items);
}

void AppDelegate::RemoveAllMediaFileAction(QObject*) {
    removeMetadataOf(localPhotoItemArray);
}

void AppDelegate::stripSelectedMovies(
    const std::function<VideoWriteJob(const IKImageItem&, const StorageContext&)>& job,
    const QString& skipReason) {
    const IKImageItemList items = selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    const StorageContext storage = storageContext();
    ensureFolder(storagelocation);
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        if (isVideoPath(item->filePath) && !isMxf(item->filePath)) {
            runVideoJobLater([item, storage, job] { return job(*item, storage); }, batch);
        } else {
            reportWrite(VideoWriteResult::skippedFile(item->filePath, skipReason));
        }
    }
}

void AppDelegate::RemoveAllMetadataAction(QObject*) {
    stripSelectedMovies(
        [](const IKImageItem& item, const StorageContext& storage) {
            return RemoveAllVideoMetadataAction(item, storage, false);
        },
        tr("removing all metadata is available for movies only"));
}

void AppDelegate::RemoveLocationAction(QObject*) {
    stripSelectedMovies(
        [](const IKImageItem& item, const StorageContext& storage) {
            return RemoveVideoLocationAction(item, readExistingMetadata(item.filePath), storage);
        },
        tr("removing the location is available for movies only"));
}

void AppDelegate::showNothingSelected() {
    if (m_quietAlerts) {
        qCInfo(lcTagsmith) << "No Item has been selected";
        return;
    }
    QMessageBox box(QMessageBox::Warning, tr("No Item has been selected"),
                    tr("Please select at least one item to process."), QMessageBox::NoButton,
                    static_cast<QWidget*>(m_window));
    box.addButton(tr(" Ok "), QMessageBox::AcceptRole);
    box.setWindowModality(Qt::WindowModal);
    box.exec();
}

void AppDelegate::runVideoTool(
    const char* name, const std::function<void(const IKImageItemPtr&, const Batch&)>& tool) {
    const IKImageItemList items = selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    ensureFolder(storagelocation);
    qCInfo(lcTagsmith) << name << "==" << items.size() << "videos";
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        if (isVideoPath(item->filePath))
            tool(item, batch);
        else
            reportWrite(VideoWriteResult::skippedFile(item->filePath,
                                                      tr("the video tools work on videos only")));
    }
}

void AppDelegate::CopyvideoTitletoFileNameAction(QObject*) {
    const StorageContext storage = storageContext();
    runVideoTool("CopyvideoTitletoFileNameAction",
                 [this, storage](const IKImageItemPtr& item, const Batch& batch) {
                     reportWrite(::CopyvideoTitletoFileNameAction(*item, storage, batch.get()));
                 });
}

void AppDelegate::CopyvideofilenametoTitleAction(QObject*) {
    const StorageContext storage = storageContext();
    runVideoTool("CopyvideofilenametoTitleAction",
                 [this, storage](const IKImageItemPtr& item, const Batch& batch) {
                     runVideoJobLater(
                         [item, storage] {
                             return ::CopyvideofilenametoTitleAction(
                                 *item, readExistingMetadata(item->filePath), storage);
                         },
                         batch);
                 });
}

void AppDelegate::ClickCopyVideoCreatedDateToCameraDateAction(QObject*) {
    const StorageContext storage = storageContext();
    runVideoTool("ClickCopyVideoCreatedDateToCameraDateAction",
                 [this, storage](const IKImageItemPtr& item, const Batch& batch) {
                     runVideoJobLater(
                         [item, storage] {
                             return ::ClickCopyVideoCreatedDateToCameraDateAction(
                                 *item, readExistingMetadata(item->filePath), storage);
                         },
                         batch);
                 });
}

void AppDelegate::ClickCopyVideoExifDateToCreateDateAction(QObject*) {
    const StorageContext storage = storageContext();
    runVideoTool("ClickCopyVideoExifDateToCreateDateAction",
                 [this, storage](const IKImageItemPtr& item, const Batch& batch) {
                     reportWrite(::ClickCopyVideoExifDateToCreateDateAction(
                         *item, readExistingMetadata(item->filePath), storage, batch.get()));
                 });
}

void AppDelegate::ClickSetVideoDateFromFileNameAction(QObject*) {
    const StorageContext storage = storageContext();
    runVideoTool("ClickSetVideoDateFromFileNameAction",
                 [this, storage](const IKImageItemPtr& item, const Batch& batch) {
                     runVideoJobLater(
                         [item, storage] {
                             return ::ClickSetVideoDateFromFileNameAction(
                                 *item, readExistingMetadata(item->filePath), storage);
                         },
                         batch);
                 });
}

void AppDelegate::setupVideoActions() {
    videoBatchEditMenu->addSeparator();
    const std::pair<const char*, void (AppDelegate::*)(QObject*)> tools[] = {
        {QT_TR_NOOP("Copy Title to File Name"), &AppDelegate::CopyvideoTitletoFileNameAction},
        {QT_TR_NOOP("Copy File Name to Title"), &AppDelegate::CopyvideofilenametoTitleAction},
        {QT_TR_NOOP("Copy Created Date to Recorded Date"),
         &AppDelegate::ClickCopyVideoCreatedDateToCameraDateAction},
        {QT_TR_NOOP("Copy Recorded Date to File Date"),
         &AppDelegate::ClickCopyVideoExifDateToCreateDateAction},
        {QT_TR_NOOP("Set Recorded Date from File Name"),
         &AppDelegate::ClickSetVideoDateFromFileNameAction},
    };
    for (const auto& [title, action] : tools) {
        QAction* a = videoBatchEditMenu->addAction(tr(title));
        connect(a, &QAction::triggered, this,
                [this, action = action] { (this->*action)(videoBatchEditMenu); });
    }
    for (QAction* a : removeExifMenu->actions()) a->setEnabled(true);
    removeExifMenu->addSeparator();
    connect(removeExifMenu->addAction(tr("Remove All Metadata")), &QAction::triggered, this,
            [this] { RemoveAllMetadataAction(removeExifMenu); });
    connect(removeExifMenu->addAction(tr("Remove Location")), &QAction::triggered, this,
            [this] { RemoveLocationAction(removeExifMenu); });
    SaveMediaChangesBtn->setEnabled(true);
    connect(videoMetaView, &VideoMetaView::basicFieldEdited, this,
            [this] { basicInfoChange = true; });
    connect(videoMetaView, &VideoMetaView::cameraFieldEdited, this,
            [this] { cameraInfoChange = true; });
    connect(videoMetaView, &VideoMetaView::saveRequested, this,
            [this] { MybuttonMouseDownHandle(SaveMediaChangesBtn); });
}
