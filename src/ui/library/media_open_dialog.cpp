// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/library/media_open_dialog.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>

MediaOpenDialog::MediaOpenDialog(QWidget* parent, const QString& message)
    : QFileDialog(parent, message) {
    setObjectName(QStringLiteral("mediaOpenDialog"));
    // Only Qt's own dialog lets us take folders and files at once.
    setOption(QFileDialog::DontUseNativeDialog, true);
    setFileMode(QFileDialog::ExistingFiles);
    setLabelText(QFileDialog::Accept, tr("Open"));
    setWindowModality(Qt::WindowModal);
}

void MediaOpenDialog::accept() {
    QStringList chosen;
    if (auto* list = findChild<QListView*>(QStringLiteral("listView"))) {
        // The list and detail views share one selection model.
        const QModelIndexList rows = list->selectionModel()->selectedRows();
        for (const QModelIndex& index : rows) {
            const QString path = index.data(QFileSystemModel::FilePathRole).toString();
            if (!path.isEmpty() && !chosen.contains(path)) chosen << path;
        }
    }
    if (chosen.isEmpty()) {
        // Names typed into the name field, or the folder shown when nothing
        // is selected.
        for (const QString& path : selectedFiles())
            if (QFileInfo::exists(path)) chosen << path;
    }
    if (chosen.isEmpty()) return;
    m_chosen = chosen;
    QDialog::accept();
}
