// SPDX-License-Identifier: GPL-3.0-or-later
// The XMP sheet: the user picks a folder, and the sidecars in it are applied
// to the videos beside them on a worker thread, behind the sheet with its
// progress indicator. The sheet closes when the batch ends, whatever became
// of each sidecar; each outcome is told in the status bar.
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "app/app_delegate.h"
#include "core/batch/xmp_sidecars.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"

void AppDelegate::setupXmpSheet() {
    writeXmpWindow = new QDialog(m_window);
    writeXmpWindow->setObjectName(QStringLiteral("writeXmpWindow"));
    writeXmpWindow->setWindowTitle(tr("Write XMP"));
    writeXmpWindow->setAccessibleName(tr("Write XMP sidecars to videos"));
    writeXmpWindow->setToolTip(tr("Sidecars without a video beside them are skipped"));
    auto* text = new QLabel(
        tr("Choose a folder of XMP sidecars. The title, position and date of each sidecar are "
           "written into the video of the same name beside it (.mov or .mp4), which is "
           "replaced by its new copy."),
        writeXmpWindow);
    text->setWordWrap(true);
    text->setAccessibleName(tr("What writing XMP does"));
    text->setToolTip(tr("Only .xmp and .XMP files are read, in the folder and its sub-folders"));
    writeXmpProcesser = new QProgressBar(writeXmpWindow);
    writeXmpProcesser->setObjectName(QStringLiteral("writeXmpProcesser"));
    writeXmpProcesser->setRange(0, 0);  // turns until the batch ends
    writeXmpProcesser->setAccessibleName(tr("XMP sidecars being applied"));
    writeXmpProcesser->setToolTip(
        tr("The sidecars are being applied; the sheet closes when "
           "all are done."));
    writeXmpProcesser->hide();
    // The buttons are the toolbar's kind: a press goes through the dispatcher.
    writeXmpBtn->setEnabled(true);
    writeXmpBtn->setToolTip(tr("Choose the folder of sidecars to apply"));
    writeXmpBtn->setAccessibleName(tr("Write XMP"));
    CancelXmpBtn->setEnabled(true);
    CancelXmpBtn->setToolTip(tr("Close without writing anything"));
    CancelXmpBtn->setAccessibleName(tr("Cancel XMP"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(CancelXmpBtn);
    buttons->addWidget(writeXmpBtn);
    auto* layout = new QVBoxLayout(writeXmpWindow);
    layout->addWidget(text);
    layout->addWidget(writeXmpProcesser);
    layout->addLayout(buttons);
}

void AppDelegate::WriteXMPMetadataToPhotosAction(QObject*) {
    dispatched("WriteXMPMetadataToPhotosAction:");
    writeXmpWindow->open();
}

void AppDelegate::CanelXMPMetadataToPhotosAction(QObject*) {
    if (!m_xmpRunning) writeXmpWindow->hide();
}

void AppDelegate::BatchWriteXMPFileToVideoAction(QObject*) {
    writeXmpWindow->hide();
    const QString folder =
        QFileDialog::getExistingDirectory(m_window, tr("Choose a xmp folder to open."));
    openPanelDidEnd9(folder.isEmpty() ? QDialog::Rejected : QDialog::Accepted,
                     folder.isEmpty() ? QStringList() : QStringList{folder});
}

void AppDelegate::openPanelDidEnd9(int returnCode9, const QStringList& paths) {
    if (returnCode9 != QDialog::Accepted || paths.isEmpty() || m_xmpRunning) return;
    m_xmpRunning = true;
    // The sheet stays up, buttons hidden, while the batch runs.
    writeXmpBtn->hide();
    CancelXmpBtn->hide();
    writeXmpProcesser->show();
    writeXmpWindow->open();
    qCInfo(lcTagsmith) << "XMP folder ==" << paths;
    m_exportPool.start([this, paths] {
        XmpBatchCallbacks callbacks;
        callbacks.started = [this](const QString& sidecar) {
            QMetaObject::invokeMethod(this, [this, sidecar] { writeXmplocation = sidecar; });
        };
        callbacks.finished = [this](const VideoWriteResult& result) {
            QMetaObject::invokeMethod(this, [this, result] { reportWrite(result); });
        };
        ScnXmpPhotosItemThreader(paths, callbacks);
        QMetaObject::invokeMethod(this, [this] { BatchScanXmpPhotosItemToMainThread(); });
    });
}

void AppDelegate::BatchScanXmpPhotosItemToMainThread() {
    m_xmpRunning = false;
    writeXmpBtn->show();
    CancelXmpBtn->show();
    writeXmpProcesser->hide();
    writeXmpWindow->hide();
    if (!writeXmplocation.isEmpty())
        DesktopIntegration::instance().openUrl(
            QUrl::fromLocalFile(QFileInfo(writeXmplocation).absolutePath()));
}
