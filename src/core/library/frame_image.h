// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

// A still picture of a video: the first frame at or after `seconds` of the
// first video stream, scaled to fit `maxSize` with its aspect kept and the
// container's display rotation applied. A null image when the file has no
// decodable video. Reads at most a bounded number of packets.
QImage videoFrameImage(const QString& path, double seconds, QSize maxSize);

struct AVFrame;
struct AVStream;

// A decoded frame as a picture scaled to fit `maxSize`; null when it cannot
// be converted.
QImage decodedFrameImage(const AVFrame* frame, QSize maxSize);

// Degrees to turn a stream's decoded pictures clockwise for display.
double streamDisplayRotation(const AVStream* stream);
