// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QString>
#include <QUrl>

// Web Mercator tile arithmetic for the small map views.
namespace MapTiles {

inline constexpr int kTileSize = 256;
inline constexpr int kMinZoom = 1;
inline constexpr int kMaxZoom = 18;

// Position in tile units at `zoom` (x to the east, y to the south).
QPointF tileCoordinate(double latitude, double longitude, int zoom);

// The address of one tile from a template with {z}, {x} and {y}.
QUrl tileUrl(const QString& urlTemplate, int zoom, int x, int y);

// The tile address template: the "mapTileUrl" setting, else the
// TAGSMITH_TILE_URL environment variable, else OpenStreetMap's tile server.
QString tileUrlTemplate();

// "48.856600, 2.352200": the signed position as the map's caption.
QString coordinateCaption(double latitude, double longitude);

}  // namespace MapTiles
