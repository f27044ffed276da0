// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

// A PNG file without its text chunks (tEXt, zTXt, iTXt), except the ones
// that carry Exif, IPTC or XMP data. Malformed chunk lists come back as
// they are.
QByteArray withoutPngTexts(const QByteArray& png);
