// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileDialog>
#include <QStringList>

// An open dialog in which files and folders can be chosen together, several
// at once. Double-clicking a folder still opens it; pressing Open with a
// folder selected chooses the folder.
class MediaOpenDialog : public QFileDialog {
    Q_OBJECT
public:
    MediaOpenDialog(QWidget* parent, const QString& message);

    // What was chosen when the dialog ended with Open.
    QStringList chosenPaths() const { return m_chosen; }

public Q_SLOTS:
    void accept() override;

private:
    QStringList m_chosen;
};
