// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include "core/library/ik_image_item.h"

// The information lines of the side panels. A line whose value is present
// is the label with the value; otherwise the bare label. The blanks inside
// the video panel's labels keep the values in one column.
struct VideoInfoBlock {
    QString recordDate;   // "Record Date:         %@" / "Record Date:   "
    QString pixelSize;    // "%d x %d", or "" without a size
    QString resolution;   // "Resolution:           %@" / "Resolution:"
    QString videoFormat;  // "Video Format:        %@" / "Video Format:"
    QString createdDate;  // "Created Date:        %@" / "Created Date:"
    QString duration;     // "Duration: %@", or "" without a player duration
};

// `playerSeconds` is the duration of the panel player's asset, when known.
VideoInfoBlock videoInfoBlock(const IKImageItem& item, std::optional<double> playerSeconds);

struct AudioInfoBlock {
    QString fileName, modifiedDate, fileSize, location, kind, channels, duration, bitrate,
        sampleRate, createdDate;
    QStringList lines() const;
};

AudioInfoBlock audioInfoBlock(const IKImageItem& item);

// Whole seconds of a player duration as the panels show them: narrowed to
// single precision, then truncated.
qint32 playerWholeSeconds(double seconds);
