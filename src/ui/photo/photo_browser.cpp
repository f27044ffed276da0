// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/photo/photo_browser.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>

#include "core/photo/photo_picture.h"
#include "ui/controls/path_drops.h"

namespace {
QPixmap placeholderTile(int side) {
    QPixmap tile(side, side);
    tile.fill(QColor(0x2c, 0x2e, 0x32));
    return tile;
}
}  // namespace

PhotoBrowserModel::PhotoBrowserModel(QObject* parent) : QAbstractListModel(parent) {
    m_pool.setMaxThreadCount(2);
}

PhotoBrowserModel::~PhotoBrowserModel() {
    m_pool.clear();
    m_pool.waitForDone();
}

void PhotoBrowserModel::setContent(const IKImageItemList& items) {
    const bool grows = items.size() > m_content.size() &&
                       std::equal(m_content.cbegin(), m_content.cend(), items.cbegin());
    if (grows) {
        beginInsertRows({}, int(m_content.size()), int(items.size()) - 1);
        m_content = items;
        endInsertRows();
        return;
    }
    if (items == m_content) return;
    beginResetModel();
    m_content = items;
    endResetModel();
}

IKImageItemPtr PhotoBrowserModel::itemAt(int row) const {
    if (row < 0 || row >= m_content.size()) return nullptr;
    return m_content.at(row);
}

void PhotoBrowserModel::refreshItem(const IKImageItemPtr& item) {
    const int row = rowOf(item);
    if (row >= 0) Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole});
}

int PhotoBrowserModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_content.size());
}

QVariant PhotoBrowserModel::data(const QModelIndex& index, int role) const {
    const IKImageItemPtr item = itemAt(index.row());
    if (!item) return {};
    switch (role) {
        case Qt::DisplayRole:
            return item->fileName;
        case Qt::ToolTipRole:
            return item->fileReadProblem.isEmpty()
                       ? item->filePath
                       : item->filePath + QLatin1Char('\n') + item->fileReadProblem;
        case Qt::DecorationRole: {
            // A camera item brings its own thumbnail.
            if (!item->fileImage.isNull())
                return QPixmap::fromImage(item->fileImage.image().scaled(
                    kThumbnailSide, kThumbnailSide, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            const auto found = m_thumbnails.constFind(item->filePath);
            if (found != m_thumbnails.constEnd()) return *found;
            startThumbnail(item->filePath);
            static const QPixmap placeholder = placeholderTile(kThumbnailSide);
            return placeholder;
        }
        default:
            return {};
    }
}

void PhotoBrowserModel::startThumbnail(const QString& path) const {
    if (m_pending.contains(path)) return;
    m_pending.insert(path);
    auto* self = const_cast<PhotoBrowserModel*>(this);
    m_pool.start([self, path] {
        const QImage picture = loadPhotoPicture(path, kThumbnailSide);
        QMetaObject::invokeMethod(
            self, [self, path, picture] { self->thumbnailReady(path, picture); },
            Qt::QueuedConnection);
    });
}

void PhotoBrowserModel::thumbnailReady(const QString& path, const QImage& picture) {
    // A photo Qt cannot decode keeps a warning tile rather than asking again.
    QPixmap tile = picture.isNull() ? placeholderTile(kThumbnailSide) : QPixmap::fromImage(picture);
    if (picture.isNull()) {
        QPainter painter(&tile);
        QIcon(QStringLiteral(":/icons/warning.svg"))
            .paint(&painter, tile.rect().adjusted(40, 40, -40, -40));
    }
    m_thumbnails.insert(path, tile);
    for (int row = 0; row < m_content.size(); ++row) {
        if (m_content.at(row)->filePath != path) continue;
        const QModelIndex cell = index(row);
        Q_EMIT dataChanged(cell, cell, {Qt::DecorationRole});
    }
}

PhotoBrowserView::PhotoBrowserView(const QString& name, QWidget* parent)
    : QListView(parent), m_model(new PhotoBrowserModel(this)) {
    setObjectName(name);
    setModel(m_model);
    setViewMode(QListView::IconMode);
    setResizeMode(QListView::Adjust);
    setMovement(QListView::Static);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIconSize(QSize(PhotoBrowserModel::kThumbnailSide, PhotoBrowserModel::kThumbnailSide));
    setGridSize(
        QSize(PhotoBrowserModel::kThumbnailSide + 24, PhotoBrowserModel::kThumbnailSide + 40));
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setDropIndicatorShown(false);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PhotoBrowserView::imageBrowserSelectionDidChange);
}

IKImageItemList PhotoBrowserView::selectedItems() const {
    QList<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows << index.row();
    std::sort(rows.begin(), rows.end());
    IKImageItemList items;
    for (int row : rows)
        if (const IKImageItemPtr item = m_model->itemAt(row)) items << item;
    return items;
}

void PhotoBrowserView::selectItem(const IKImageItemPtr& item) {
    const int row = m_model->rowOf(item);
    if (row < 0) return clearSelection();
    const QModelIndex index = m_model->index(row);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void PhotoBrowserView::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void PhotoBrowserView::dragMoveEvent(QDragMoveEvent* event) {
    answerPathDrop(event, validateDrop);
}

void PhotoBrowserView::dropEvent(QDropEvent* event) {
    answerPathDrop(event, acceptDrop);
}
