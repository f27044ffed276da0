// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>
#include <QTableView>
#include <QUrl>

#include <functional>

// The media list table. It takes drops of files and folders: whether a drop
// is welcome and what happens to it is asked of the controller through the
// two hooks, so the table itself keeps no import logic.
class PRDragTableView : public QTableView {
    Q_OBJECT
public:
    explicit PRDragTableView(QWidget* parent = nullptr);

    // Asked while a drag moves over the table; true accepts a copy.
    std::function<bool(const QStringList& paths)> validateDrop;
    // Handed every dropped path, in the order of the drag; true when taken.
    std::function<bool(const QStringList& paths)> acceptDrop;

    // The file URLs of the last drop.
    QList<QUrl> geturlArray() const { return m_urlArray; }

Q_SIGNALS:
    // Told after each drop that carried URLs, with the table as sender.
    void NSDragOperationMediaNote(QObject* sender);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QList<QUrl> m_urlArray;
};

// The hint shown in place of the empty list: a picture and a line of text.
// It takes the same drops as the table.
class DropHintView : public QWidget {
    Q_OBJECT
public:
    DropHintView(const QString& iconPath, const QString& text, QWidget* parent = nullptr);
    std::function<bool(const QStringList& paths)> validateDrop;
    std::function<bool(const QStringList& paths)> acceptDrop;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};
