// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QPixmap>
#include <QWidget>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

// A small map with one pin: raster tiles around the pinned position, the pin
// and its coordinates. Tiles come over the network into a disk cache;
// without them (offline, or before they arrive) the map still draws the pin
// and the coordinates on a plain background.
class MapView : public QWidget {
    Q_OBJECT
public:
    explicit MapView(QWidget* parent = nullptr);
    ~MapView() override;

    // Puts the one pin at a signed position and centres the map on it.
    void setPin(double latitude, double longitude);
    double pinLatitude() const { return m_latitude; }
    double pinLongitude() const { return m_longitude; }

    void setZoom(int zoom);
    int zoom() const { return m_zoom; }

    // Replaces the tile address template ({z}, {x}, {y}); clears loaded tiles.
    void setTileUrlTemplate(const QString& urlTemplate);

    // Tiles loaded so far (for tests and diagnostics).
    int loadedTileCount() const;

    QSize sizeHint() const override { return {320, 220}; }

Q_SIGNALS:
    void tileLoaded();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void requestTile(int x, int y);
    void tileFinished(QNetworkReply* reply, const QString& key);
    void drawPin(QPainter& painter, QPointF at) const;

    double m_latitude = 0.0;
    double m_longitude = 0.0;
    int m_zoom = 13;
    QString m_urlTemplate;
    QNetworkAccessManager* m_network = nullptr;
    QHash<QString, QPixmap> m_tiles;  // "z/x/y" -> picture; a null picture marks a failed tile
    QHash<QString, QNetworkReply*> m_pending;
};
