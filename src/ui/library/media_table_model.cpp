#include "ui/library/media_table_model.h"

#include <QColor>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QPixmap>

namespace {
constexpr int kThumbnailSize = 16;

// A 16 x 16 preview of the file itself. Decoded video frames come with the
// frame grabber of the video tools; until then this answers no picture and
// the file's type icon stands in.
QIcon mediaThumbnail(const QString& path) {
    Q_UNUSED(path);
    return {};
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
}

void MediaTableModel::setContent(const IKImageItemList& items) {
    beginResetModel();
    m_content = items;
    endResetModel();
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
    if (role == Qt::DisplayRole) return QString::fromLatin1(mediaColumnTitle(column));
    if (role == Qt::UserRole) return QString::fromLatin1(mediaColumnIdentifier(column));
    return {};
}

QIcon MediaTableModel::iconFor(const IKImageItem& item) const {
    if (!item.fileImage.isNull()) {
        return QIcon(QPixmap::fromImage(item.fileImage.scaled(
            kThumbnailSize, kThumbnailSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    }
    auto it = m_iconCache.constFind(item.filePath);
    if (it != m_iconCache.constEnd()) return *it;
    QIcon icon = mediaThumbnail(item.filePath);
    if (icon.isNull()) icon = fileTypeIcon(item.filePath);
    m_iconCache.insert(item.filePath, icon);
    return icon;
}
