// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QString>

// The pictures of HEIC and AVIF photos, which neither Qt nor FFmpeg decodes,
// through libheif. The picture comes upright: libheif applies the file's
// rotation and mirroring (irot, imir), so the Exif orientation must not be
// applied a second time.

// The primary picture's size as shown (rotation applied), from a file in
// memory; invalid when libheif cannot read it. Nothing is decoded.
QSize heifPictureSize(QByteArrayView file);

// Is this file a HEIF image (HEIC, AVIF) by its bytes?
bool isHeifPicture(const QString& path);

// The primary picture, scaled to fit `maxSide` pixels when that is above 0
// (a stored thumbnail that large enough is used in place of the full
// picture). A null image when the file cannot be decoded; the caller then
// shows the file-type icon.
QImage decodeHeifPicture(const QString& path, int maxSide = 0);
