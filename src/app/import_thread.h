// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QStringList>
#include <QThread>

#include <atomic>

#include "core/import/media_import.h"

class AppDelegate;

// One import: a worker thread that reads the given files and folders. Every
// record, every finished path and every imported folder is handed to the
// controller on the main thread, and the thread waits until the main thread
// has taken it, so the media list is only ever touched on the main thread.
class ImportThread : public QThread, private ImportSink {
    Q_OBJECT
public:
    // With `photos`, image files are imported too, as photo records.
    ImportThread(const QStringList& paths, AppDelegate* delegate, bool photos = false);

    // Stops after the current file; nothing more reaches the controller.
    void cancel();
    const QStringList& paths() const { return m_paths; }

protected:
    void run() override;

private:
    void itemImported(const IKImageItemPtr& item) override;
    void pathFinished() override;
    void folderImported(const QString& parent) override;
    template <typename F>
    void toMainThread(F&& step);

    QStringList m_paths;
    AppDelegate* m_delegate;
    MediaImporter m_importer;
    std::atomic<bool> m_cancelled{false};
};
