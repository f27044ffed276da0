// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

// A photo's picture for showing (thumbnails, the preview): upright, scaled
// so its longer side is at most `maxSide` pixels when that is above 0. Qt
// decodes the ordinary types and turns them by their Exif orientation;
// HEIC and AVIF go through libheif, whose picture is upright already. A null
// image when the file cannot be decoded: the caller shows the type's icon.
QImage loadPhotoPicture(const QString& path, int maxSide = 0);
