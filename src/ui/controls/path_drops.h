// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <functional>

class QDropEvent;
class QMimeData;

// The local files a drag carries, in its order.
QStringList localDropPaths(const QMimeData* mime);

// Answers a drag or a drop of files (entering, moving or dropping): taken
// as a copy when `check` accepts its local paths, else ignored.
void answerPathDrop(QDropEvent* event, const std::function<bool(const QStringList&)>& check);
