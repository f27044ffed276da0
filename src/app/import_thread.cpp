// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/import_thread.h"

#include <QMetaObject>

#include "app/app_delegate.h"

ImportThread::ImportThread(const QStringList& paths, AppDelegate* delegate, bool photos)
    : m_paths(paths), m_delegate(delegate), m_importer(*this, photos) {
    setObjectName(QStringLiteral("importMediaItemsThreader"));
}

void ImportThread::cancel() {
    m_cancelled = true;
    m_importer.cancel();
}

void ImportThread::run() {
    m_importer.importMediaItemsThreader(m_paths);
}

template <typename F>
void ImportThread::toMainThread(F&& step) {
    if (m_cancelled) return;
    // The controller lives on the main thread: this call runs `step` there
    // and returns when it is done.
    QMetaObject::invokeMethod(
        m_delegate,
        [this, step = std::forward<F>(step)] {
            if (!m_cancelled) step();
        },
        Qt::BlockingQueuedConnection);
}

void ImportThread::itemImported(const IKImageItemPtr& item) {
    toMainThread([this, item] { m_delegate->appendImportedItem(item); });
}

void ImportThread::pathFinished() {
    toMainThread([this] { m_delegate->LoadImportedMediasonMainThread(); });
}

void ImportThread::folderImported(const QString& parent) {
    toMainThread([this, parent] { m_delegate->noteFolderImported(parent); });
}
