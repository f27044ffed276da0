// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/path_drops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

QStringList localDropPaths(const QMimeData* mime) {
    QStringList paths;
    if (!mime || !mime->hasUrls()) return paths;
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile()) paths << url.toLocalFile();
    return paths;
}

void answerPathDrop(QDropEvent* event, const std::function<bool(const QStringList&)>& check) {
    const QStringList paths = localDropPaths(event->mimeData());
    if (!paths.isEmpty() && check && check(paths)) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->ignore();
    }
}
