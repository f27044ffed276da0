// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QListView>
#include <QPixmap>
#include <QSet>
#include <QStringList>
#include <QThreadPool>

#include <algorithm>

#include <functional>

#include "core/library/ik_image_item.h"

// The photos of a list as a grid of thumbnails with the file name under
// each. Thumbnails are decoded lazily, off the main thread and scaled while
// decoding, when a cell is first drawn; a grey tile stands in until then.
class PhotoBrowserModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit PhotoBrowserModel(QObject* parent = nullptr);
    ~PhotoBrowserModel() override;

    // Replaces the content; a list that only grows at its end inserts rows,
    // so the selection and the scroll position stay.
    void setContent(const IKImageItemList& items);
    const IKImageItemList& content() const { return m_content; }
    IKImageItemPtr itemAt(int row) const;
    // Redraws the cell of a record whose picture changed (a camera thumbnail).
    void refreshItem(const IKImageItemPtr& item);
    int rowOf(const IKImageItemPtr& item) const { return int(m_content.indexOf(item)); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Thumbnails decoded so far (tests).
    int thumbnailCount() const { return int(m_thumbnails.size()); }

    static constexpr int kThumbnailSide = 128;

private:
    void startThumbnail(const QString& path) const;
    void thumbnailReady(const QString& path, const QImage& picture);

    IKImageItemList m_content;
    mutable QHash<QString, QPixmap> m_thumbnails;
    mutable QSet<QString> m_pending;
    mutable QThreadPool m_pool;
};

// The browser view (`localImageBrowserView`, and `imageBrowserView` for the
// camera list). Several photos can be selected; files and folders dropped on
// it are handed to the controller through the two hooks.
class PhotoBrowserView : public QListView {
    Q_OBJECT
public:
    explicit PhotoBrowserView(const QString& name, QWidget* parent = nullptr);

    PhotoBrowserModel* photoModel() const { return m_model; }
    // The selected records, in the browser's (import) order.
    IKImageItemList selectedItems() const;
    void selectItem(const IKImageItemPtr& item);

    std::function<bool(const QStringList& paths)> validateDrop;
    std::function<bool(const QStringList& paths)> acceptDrop;

Q_SIGNALS:
    void imageBrowserSelectionDidChange();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    PhotoBrowserModel* m_model;
};
