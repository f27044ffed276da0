// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/map_view.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QPainter>
#include <QPainterPath>
#include <QStandardPaths>
#include <QWheelEvent>

#include <cmath>

#include "ui/controls/map_tiles.h"

namespace {
constexpr int kMaxTilesKept = 256;

QString tileKey(int z, int x, int y) {
    return QStringLiteral("%1/%2/%3").arg(z).arg(x).arg(y);
}
}  // namespace

MapView::MapView(QWidget* parent)
    : QWidget(parent),
      m_urlTemplate(MapTiles::tileUrlTemplate()),
      m_network(new QNetworkAccessManager(this)) {
    auto* cache = new QNetworkDiskCache(this);
    cache->setCacheDirectory(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                             QStringLiteral("/map-tiles"));
    cache->setMaximumCacheSize(50 * 1024 * 1024);
    m_network->setCache(cache);
    setMinimumSize(160, 120);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

MapView::~MapView() {
    for (QNetworkReply* reply : std::as_const(m_pending)) reply->abort();
}

void MapView::setPin(double latitude, double longitude) {
    m_latitude = latitude;
    m_longitude = longitude;
    update();
}

void MapView::setZoom(int zoom) {
    m_zoom = std::clamp(zoom, MapTiles::kMinZoom, MapTiles::kMaxZoom);
    update();
}

void MapView::setTileUrlTemplate(const QString& urlTemplate) {
    m_urlTemplate = urlTemplate;
    for (QNetworkReply* reply : std::as_const(m_pending)) reply->abort();
    m_pending.clear();
    m_tiles.clear();
    update();
}

int MapView::loadedTileCount() const {
    int n = 0;
    for (const QPixmap& p : m_tiles) n += p.isNull() ? 0 : 1;
    return n;
}

void MapView::requestTile(int x, int y) {
    const QString key = tileKey(m_zoom, x, y);
    if (m_tiles.contains(key) || m_pending.contains(key) || m_urlTemplate.isEmpty()) return;
    QNetworkRequest request(MapTiles::tileUrl(m_urlTemplate, m_zoom, x, y));
    // Tile servers ask clients to name themselves and to use cached copies.
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("Tagsmith/" TAGSMITH_VERSION));
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferCache);
    request.setTransferTimeout(15000);
    QNetworkReply* reply = m_network->get(request);
    m_pending.insert(key, reply);
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, key] { tileFinished(reply, key); });
}

void MapView::tileFinished(QNetworkReply* reply, const QString& key) {
    reply->deleteLater();
    if (m_pending.value(key) != reply) return;  // aborted or superseded
    m_pending.remove(key);
    QPixmap tile;
    if (reply->error() == QNetworkReply::NoError) tile.loadFromData(reply->read(4 * 1024 * 1024));
    if (m_tiles.size() >= kMaxTilesKept) m_tiles.clear();
    m_tiles.insert(key, tile);  // a failed tile is remembered and not asked for again
    if (!tile.isNull()) {
        update();
        Q_EMIT tileLoaded();
    }
}

void MapView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor(0x2b, 0x2f, 0x36));

    const QPointF centre = MapTiles::tileCoordinate(m_latitude, m_longitude, m_zoom);
    const QPointF origin(width() / 2.0 - centre.x() * MapTiles::kTileSize,
                         height() / 2.0 - centre.y() * MapTiles::kTileSize);
    const int tiles = 1 << m_zoom;
    const int x0 = static_cast<int>(std::floor(-origin.x() / MapTiles::kTileSize));
    const int y0 = static_cast<int>(std::floor(-origin.y() / MapTiles::kTileSize));
    const int x1 = static_cast<int>(std::floor((width() - origin.x()) / MapTiles::kTileSize));
    const int y1 = static_cast<int>(std::floor((height() - origin.y()) / MapTiles::kTileSize));
    for (int ty = std::max(0, y0); ty <= std::min(tiles - 1, y1); ++ty) {
        for (int tx = x0; tx <= x1; ++tx) {
            const int wrapped = ((tx % tiles) + tiles) % tiles;
            const QPixmap tile = m_tiles.value(tileKey(m_zoom, wrapped, ty));
            const QPointF at(origin.x() + tx * MapTiles::kTileSize,
                             origin.y() + ty * MapTiles::kTileSize);
            if (!tile.isNull()) {
                painter.drawPixmap(QRectF(at, QSizeF(MapTiles::kTileSize, MapTiles::kTileSize)),
                                   tile, QRectF(tile.rect()));
            } else {
                requestTile(wrapped, ty);
            }
        }
    }

    drawPin(painter, QPointF(width() / 2.0, height() / 2.0));

    // Caption: the coordinates and the tiles' attribution.
    const QString caption = MapTiles::coordinateCaption(m_latitude, m_longitude);
    QFont font = painter.font();
    font.setPointSizeF(std::max(7.0, font.pointSizeF() - 1));
    painter.setFont(font);
    const QRectF band(0, height() - 20, width(), 20);
    painter.fillRect(band, QColor(0, 0, 0, 160));
    painter.setPen(Qt::white);
    painter.drawText(band.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignLeft, caption);
    painter.setPen(QColor(200, 200, 200));
    painter.drawText(band.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignRight,
                     QStringLiteral("\u00a9 OpenStreetMap"));
}

void MapView::drawPin(QPainter& painter, QPointF at) const {
    // A teardrop whose point is the position.
    QPainterPath pin;
    pin.moveTo(at);
    pin.cubicTo(at + QPointF(-4, -8), at + QPointF(-10, -14), at + QPointF(-10, -20));
    pin.arcTo(QRectF(at.x() - 10, at.y() - 30, 20, 20), 180, -180);
    pin.cubicTo(at + QPointF(10, -14), at + QPointF(4, -8), at);
    painter.setPen(QPen(QColor(120, 0, 0), 1.5));
    painter.setBrush(QColor(0xe5, 0x39, 0x35));
    painter.drawPath(pin);
    painter.setBrush(Qt::white);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(at.x(), at.y() - 20), 3.5, 3.5);
}

void MapView::wheelEvent(QWheelEvent* event) {
    setZoom(m_zoom + (event->angleDelta().y() > 0 ? 1 : -1));
    event->accept();
}
