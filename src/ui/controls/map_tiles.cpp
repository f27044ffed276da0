// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/map_tiles.h"

#include <QSettings>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace MapTiles {

QPointF tileCoordinate(double latitude, double longitude, int zoom) {
    // Mercator is undefined at the poles; clamp to the projection's limit.
    const double lat = std::clamp(latitude, -85.05112878, 85.05112878) * std::numbers::pi / 180.0;
    const double n = std::ldexp(1.0, zoom);
    const double x = (longitude + 180.0) / 360.0 * n;
    const double y =
        (1.0 - std::log(std::tan(lat) + 1.0 / std::cos(lat)) / std::numbers::pi) / 2.0 * n;
    return {x, y};
}

QUrl tileUrl(const QString& urlTemplate, int zoom, int x, int y) {
    QString url = urlTemplate;
    url.replace(QLatin1String("{z}"), QString::number(zoom));
    url.replace(QLatin1String("{x}"), QString::number(x));
    url.replace(QLatin1String("{y}"), QString::number(y));
    return QUrl(url);
}

QString tileUrlTemplate() {
    const QString configured = QSettings().value(QStringLiteral("mapTileUrl")).toString();
    if (!configured.isEmpty()) return configured;
    const QString fromEnv = qEnvironmentVariable("TAGSMITH_TILE_URL");
    if (!fromEnv.isEmpty()) return fromEnv;
    return QStringLiteral("https://tile.openstreetmap.org/{z}/{x}/{y}.png");
}

QString coordinateCaption(double latitude, double longitude) {
    return QStringLiteral("%1, %2").arg(latitude, 0, 'f', 6).arg(longitude, 0, 'f', 6);
}

}  // namespace MapTiles
