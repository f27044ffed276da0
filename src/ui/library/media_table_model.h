// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QThreadPool>

#include "core/library/ik_image_item.h"
#include "core/library/media_sort.h"

// The content behind the media table: a list of records that mirrors the
// media list and may be re-sorted by the column headers. Column i is
// MediaColumn(i); the column identifier is kept in Qt::UserRole of the header.
class MediaTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit MediaTableModel(QObject* parent = nullptr);
    ~MediaTableModel() override;

    // Replaces the content (the table is reset).
    void setContent(const IKImageItemList& items);
    const IKImageItemList& content() const { return m_content; }
    void removeAllObjects() { setContent({}); }
    IKImageItemPtr itemAt(int row) const;
    // Redraws every row after records changed in place (a rename): the
    // order and the selection stay.
    void refreshRows();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The small picture of a record in the Name column.
    QIcon iconFor(const IKImageItem& item) const;

private:
    void startThumbnail(const IKImageItem& item) const;
    void thumbnailReady(const QString& path, const QImage& frame);

    IKImageItemList m_content;
    mutable QHash<QString, QIcon> m_iconCache;
    mutable QHash<qint64, QIcon> m_artworkIcons;  // by the picture's cache key
    mutable QThreadPool m_thumbnails;
};
