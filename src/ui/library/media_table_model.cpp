// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/library/media_table_model.h"

#include "core/library/frame_image.h"
#include "core/library/media_kinds.h"

#include <QColor>
#include <QCoreApplication>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QPixmap>

namespace {
constexpr int kThumbnailSize = 16;
// Frames are decoded for the sharpest screen a row is likely to meet.
constexpr int kLargestScale = 3;

// A thumbnail drawn from device pixels at every common screen scale, so that
// a row's picture stays crisp on high-density screens (and at 1.5x).
QIcon thumbnailIcon(const QImage& picture) {
    QIcon icon;
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const int side = qRound(kThumbnailSize * scale);
        QPixmap pixmap = QPixmap::fromImage(
            picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        pixmap.setDevicePixelRatio(scale);
        icon.addPixmap(pixmap);
    }
    return icon;
}

// The desktop's icon for the file's type; our own for videos and audio when
// the desktop theme has none; the file manager's icon as the last resort.
QIcon fileTypeIcon(const QString& path) {
    static const QMimeDatabase mimes;
    const QMimeType mime = mimes.mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    QIcon icon = QIcon::fromTheme(mime.iconName());
    if (icon.isNull()) icon = QIcon::fromTheme(mime.genericIconName());
    if (!icon.isNull()) return icon;
    if (mime.name().startsWith(QLatin1String("audio/")))
        return QIcon(QStringLiteral(":/icons/audio-file.svg"));
    if (mime.name().startsWith(QLatin1String("video/")))
        return QIcon(QStringLiteral(":/icons/video-file.svg"));
    static const QFileIconProvider provider;
    return provider.icon(QFileInfo(path));
}
}  // namespace

MediaTableModel::MediaTableModel(QObject* parent) : QAbstractTableModel(parent) {
    setObjectName(QStringLiteral("mediaController"));
    m_thumbnails.setMaxThreadCount(1);
}

MediaTableModel::~MediaTableModel() {
    // Pending thumbnails are dropped; one being decoded is waited for.
    m_thumbnails.clear();
    m_thumbnails.waitForDone();
}

void MediaTableModel::startThumbnail(const IKImageItem& item) const {
    // A frame near the start (not the very first, often black), decoded off
    // the main thread; the row is redrawn when it arrives.
    const QString path = item.filePath;
    const double at = std::min(1.0, item.fileduration / 2);
    auto* self = const_cast<MediaTableModel*>(this);
    m_thumbnails.start([self, path, at] {
        const QImage frame = videoFrameImage(
            path, at, QSize(kLargestScale * kThumbnailSize, kLargestScale * kThumbnailSize));
        if (frame.isNull()) return;
        QMetaObject::invokeMethod(
            self, [self, path, frame] { self->thumbnailReady(path, frame); }, Qt::QueuedConnection);
    });
}

void MediaTableModel::thumbnailReady(const QString& path, const QImage& frame) {
    m_iconCache.insert(path, thumbnailIcon(frame));
    for (int row = 0; row < m_content.size(); ++row) {
        if (m_content.at(row)->filePath == path) {
            const QModelIndex cell = index(row, int(MediaColumn::Name));
            Q_EMIT dataChanged(cell, cell, {Qt::DecorationRole});
        }
    }
}

void MediaTableModel::setContent(const IKImageItemList& items) {
    beginResetModel();
    m_content = items;
    endResetModel();
}

void MediaTableModel::refreshRows() {
    if (!m_content.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kMediaColumnCount - 1));
}

IKImageItemPtr MediaTableModel::itemAt(int row) const {
    if (row < 0 || row >= m_content.size()) return nullptr;
    return m_content.at(row);
}

int MediaTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_content.size());
}

int MediaTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kMediaColumnCount;
}

QVariant MediaTableModel::data(const QModelIndex& index, int role) const {
    const IKImageItemPtr item = itemAt(index.row());
    if (!item || index.column() < 0 || index.column() >= kMediaColumnCount) return {};
    const auto column = MediaColumn(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return mediaCellText(*item, column);
        case Qt::ToolTipRole:
            // A file that could not be read says why on every cell.
            if (!item->fileReadProblem.isEmpty())
                return item->filePath + QLatin1Char('\n') + item->fileReadProblem;
            return column == MediaColumn::Name ? item->filePath : QVariant();
        case Qt::ForegroundRole:
            return QColor(Qt::white);
        case Qt::DecorationRole:
            return column == MediaColumn::Name ? QVariant(iconFor(*item)) : QVariant();
        default:
            return {};
    }
}

QVariant MediaTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kMediaColumnCount) return {};
    const auto column = MediaColumn(section);
    if (role == Qt::DisplayRole)
        return QCoreApplication::translate("MediaTableModel", mediaColumnTitle(column));
    if (role == Qt::UserRole) return QString::fromLatin1(mediaColumnIdentifier(column));
    return {};
}

QIcon MediaTableModel::iconFor(const IKImageItem& item) const {
    if (!item.fileReadProblem.isEmpty()) {
        static const QIcon warning(QStringLiteral(":/icons/warning.svg"));
        return warning;
    }
    if (!item.fileImage.isNull()) {
        auto artwork = m_artworkIcons.constFind(item.fileImage.cacheKey());
        if (artwork != m_artworkIcons.constEnd()) return *artwork;
        return *m_artworkIcons.insert(item.fileImage.cacheKey(), thumbnailIcon(item.fileImage));
    }
    auto it = m_iconCache.constFind(item.filePath);
    if (it != m_iconCache.constEnd()) return *it;
    // The type icon stands in until a video's own frame is decoded.
    const QIcon icon = fileTypeIcon(item.filePath);
    m_iconCache.insert(item.filePath, icon);
    if (isVideoPath(item.filePath)) startThumbnail(item);
    return icon;
}
