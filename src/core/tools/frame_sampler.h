// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include <functional>

#include "core/tools/media_transcoder.h"

// Pictures of a movie at regular times for the GIF and frame jobs. The
// movie is decoded once from its start and only the pictures asked for are
// converted, so memory stays bounded whatever the movie's length.

struct SamplingResult {
    double duration = 0;  // the movie's duration in seconds (0: unknown or none)
    bool cancelled = false;
    bool stopped = false;  // `take` asked to stop
};

// Calls `take(t, picture)` for t = 0, interval, 2 * interval, ... while
// t < the movie's duration, in order, with the exact picture shown at t
// (the last frame starting at or before t; the first frame for times
// before it), the display rotation applied. A null picture means none could
// be had at t (no decodable video). `take` answers false to stop.
SamplingResult sampleFrames(const QString& path, double interval,
                            const std::function<bool(double, const QImage&)>& take,
                            const JobControl& control = {});
