// SPDX-License-Identifier: GPL-3.0-or-later
// The jobs of the Video Tools menu: conversion, compression, sound
// extraction and removal, GIF, speed change, slow motion and frames. Each
// menu item starts a batch over the highlighted rows on a worker pool; the
// status bar shows each running batch (the file, its progress and the
// batch's) with a button that cancels it.
#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

#include <atomic>

#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/common/logging.h"
#include "core/tools/video_tool_jobs.h"
#include "ui/shell/main_window.h"

// One running batch, shared by the worker and the window.
struct VideoToolJob {
    QString title;
    QStringList sources;
    std::atomic<bool> cancel{false};
    std::atomic<int> file{0};
    std::atomic<int> permille{0};  // of the current file
    QPointer<QWidget> row;         // its line in the status bar
    QPointer<QLabel> label;
    QPointer<QProgressBar> bar;
};

namespace {

struct MenuEntry {
    const char* placeholder;  // the item's title in the menu
    VideoTool tool;
    void (AppDelegate::*action)(QObject*);
};

const MenuEntry kEntries[] = {
    {QT_TRANSLATE_NOOP("AppDelegate", "Convert"), VideoTool::Convert,
     &AppDelegate::ConvertSelectedMediaFileFormatAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Compress"), VideoTool::Compress,
     &AppDelegate::CompressSelectedMediaFileAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Make GIF"), VideoTool::Gif,
     &AppDelegate::ConvertSelectedMediaFileToGIFAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Change Speed"), VideoTool::Speed,
     &AppDelegate::SpeedSelectedMediaFileFormatAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Slow Motion"), VideoTool::Slow,
     &AppDelegate::SlowDownVideoMediaFileFormatAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Extract Frames"), VideoTool::Frames,
     &AppDelegate::ExtractImagesSelectedMediaFileAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Extract Audio"), VideoTool::ExtractAudio,
     &AppDelegate::ExtractSelectedMediaFileAction},
    {QT_TRANSLATE_NOOP("AppDelegate", "Remove Audio"), VideoTool::RemoveAudio,
     &AppDelegate::removeSoundFromMediaFileFormatAction},
};

// The variant the job reads: the English title behind a translated item.
QString senderVariant(QObject* sender) {
    const auto* action = qobject_cast<QAction*>(sender);
    if (!action) return {};
    return action->data().isValid() ? action->data().toString() : action->text();
}

}  // namespace

void AppDelegate::setupVideoToolActions() {
    m_toolPool.setMaxThreadCount(2);
    const QList<QAction*> placeholders = videoBatchEditMenu->actions();
    for (const MenuEntry& entry : kEntries) {
        QAction* item = nullptr;
        for (QAction* a : placeholders)
            if (a->text() == tr(entry.placeholder)) item = a;
        if (!item) {  // slow motion has no placeholder: it follows the speed change
            item = new QAction(tr(entry.placeholder), videoBatchEditMenu);
            videoBatchEditMenu->insertAction(placeholders.value(4), item);
        }
        item->setEnabled(true);
        const QStringList variants = videoToolVariants(entry.tool);
        if (variants.isEmpty()) {
            connect(item, &QAction::triggered, this,
                    [this, item, action = entry.action] { (this->*action)(item); });
            continue;
        }
        auto* sub = new QMenu(item->text(), videoBatchEditMenu);
        for (const QString& variant : variants) {
            // The item's data is the variant the job reads.
            QAction* choice = sub->addAction(
                QCoreApplication::translate("VideoTools", variant.toUtf8().constData()));
            choice->setData(variant);
            connect(choice, &QAction::triggered, this,
                    [this, choice, action = entry.action] { (this->*action)(choice); });
        }
        item->setMenu(sub);
    }
}

void AppDelegate::ConvertSelectedMediaFileFormatAction(QObject* sender) {
    startVideoTool(VideoTool::Convert, sender);
}
void AppDelegate::CompressSelectedMediaFileAction(QObject* sender) {
    startVideoTool(VideoTool::Compress, sender);
}
void AppDelegate::ExtractSelectedMediaFileAction(QObject* sender) {
    startVideoTool(VideoTool::ExtractAudio, sender);
}
void AppDelegate::removeSoundFromMediaFileFormatAction(QObject* sender) {
    startVideoTool(VideoTool::RemoveAudio, sender);
}
void AppDelegate::ConvertSelectedMediaFileToGIFAction(QObject* sender) {
    startVideoTool(VideoTool::Gif, sender);
}
void AppDelegate::SpeedSelectedMediaFileFormatAction(QObject* sender) {
    startVideoTool(VideoTool::Speed, sender);
}
void AppDelegate::SlowDownVideoMediaFileFormatAction(QObject* sender) {
    startVideoTool(VideoTool::Slow, sender);
}
void AppDelegate::ExtractImagesSelectedMediaFileAction(QObject* sender) {
    startVideoTool(VideoTool::Frames, sender);
}

void AppDelegate::BatchVideosItemCompleteToMainThread(QObject*) {
    qCInfo(lcTagsmith) << "video tool batch ended";
}

bool AppDelegate::videoToolsRunning() const {
    return !m_toolJobs.isEmpty();
}

void AppDelegate::cancelVideoTools() {
    for (const auto& job : m_toolJobs) job->cancel = true;
}

void AppDelegate::startVideoTool(VideoTool tool, QObject* sender) {
    const IKImageItemList items = selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    ensureFolder(storagelocation);
    auto job = std::make_shared<VideoToolJob>();
    const QString variant = senderVariant(sender);
    for (const MenuEntry& entry : kEntries)
        if (entry.tool == tool) job->title = tr(entry.placeholder);
    if (!videoToolVariants(tool).isEmpty())
        job->title += QStringLiteral(" ") +
                      QCoreApplication::translate("VideoTools", variant.toUtf8().constData());
    for (const IKImageItemPtr& item : items) job->sources << item->filePath;
    qCInfo(lcTagsmith).noquote() << job->title << "==" << job->sources.size() << "files";

    if (m_window) {
        job->row = new QWidget;
        auto* layout = new QHBoxLayout(job->row);
        layout->setContentsMargins(0, 0, 0, 0);
        job->label = new QLabel(job->row);
        job->bar = new QProgressBar(job->row);
        job->bar->setObjectName(QStringLiteral("videoToolProgress"));
        job->bar->setRange(0, 1000);
        job->bar->setMaximumWidth(160);
        auto* stop = new QPushButton(tr("Cancel"), job->row);
        stop->setObjectName(QStringLiteral("videoToolCancel"));
        stop->setToolTip(tr("Stop this job; its unfinished files are removed"));
        connect(stop, &QPushButton::clicked, this, [job] { job->cancel = true; });
        layout->addWidget(job->label);
        layout->addWidget(job->bar);
        layout->addWidget(stop);
        m_window->statusBar()->addPermanentWidget(job->row);
    }
    m_toolJobs << job;
    showVideoToolProgress();

    VideoToolRequest request;
    request.tool = tool;
    request.variant = variant;
    request.storage = storageContext();
    m_toolPool.start([this, job, request] {
        VideoToolCallbacks callbacks;
        callbacks.cancel = &job->cancel;
        callbacks.progress = [this, job](int index, double done) {
            const int permille = int(done * 1000);
            job->file = index;
            if (job->permille.exchange(permille) / 10 == permille / 10) return;
            QMetaObject::invokeMethod(this, [this] { showVideoToolProgress(); });
        };
        callbacks.finished = [this](int, const VideoToolResult& result) {
            QMetaObject::invokeMethod(this, [this, result] { reportWrite(result); });
        };
        OutputBatch batch;
        runVideoToolBatch(request, job->sources, batch, callbacks);
        QMetaObject::invokeMethod(this, [this, job] {
            m_toolJobs.removeOne(job);
            if (job->row) job->row->deleteLater();
            BatchVideosItemCompleteToMainThread(nullptr);
        });
    });
}

void AppDelegate::showVideoToolProgress() {
    for (const auto& job : m_toolJobs) {
        if (!job->label || !job->bar) continue;
        const int file = job->file;
        const int permille = job->permille;
        const qsizetype count = job->sources.size();
        job->label->setText(tr("%1: %2 (%3 of %4) %5%")
                                .arg(job->title, QFileInfo(job->sources.value(file)).fileName())
                                .arg(file + 1)
                                .arg(count)
                                .arg(permille / 10));
        job->bar->setValue(int((file * 1000 + permille) / qMax<qsizetype>(1, count)));
    }
}
