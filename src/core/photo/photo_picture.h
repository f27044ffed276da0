#pragma once

#include <QImage>
#include <QString>

// The one way photo pictures are decoded for drawing and thumbnails: the
// picture upright (the EXIF orientation applied), scaled so that its longer
// side is at most `maxSide` when `maxSide` > 0. A null image (logged) when
// the file cannot be decoded.
QImage loadPhotoPicture(const QString& path, int maxSide = 0);
