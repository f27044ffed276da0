// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

#include "core/video/video_export.h"

// XMP sidecars applied to videos: every ".xmp" or ".XMP" file under the
// chosen folders is read, the video of the same base name beside it is
// found, and the sidecar's title, position and creation date are written
// into that video, which is replaced by its new copy.

// The nine extractors. Each answers the text between the first opening tag
// and the first closing tag of its element, as it stands (no XML parsing:
// nested markup comes back too), or "" when the opening tag is missing or no
// closing tag follows it.
QString getTitlewithXMPStr(const QString& xmp);
QString getDescriptionwithXMPStr(const QString& xmp);
QString getPhotoDatewithXMPStr(const QString& xmp);
// The keyword sequence as "a,b": blanks and line breaks deleted, the list
// markup taken out.
QString getKeywordswithXMPStr(const QString& xmp);
QString getGPSLatitudewithXMPStr(const QString& xmp);
QString getGPSLongitudewithXMPStr(const QString& xmp);
QString getGPSLatitudeRefwithXMPStr(const QString& xmp);
QString getGPSLongitudeRefwithXMPStr(const QString& xmp);
QString getGPSAltitudewithJsonStr(const QString& xmp);

// What a sidecar says, as extracted.
struct XmpSidecarValues {
    QString title, description, dateCreated, keywords;
    QString latitude, longitude, altitude, latitudeRef, longitudeRef, altitudeRef;
};
XmpSidecarValues readXmpSidecarValues(const QString& xmp);

// A coordinate as XMP holds it ("48,51.396N", "2,21,7.92E", or a decimal
// number with its reference "S"/"W" beside it) as signed decimal degrees
// ("48.8566"); "" when the text is no coordinate within `limit` degrees.
QString xmpCoordinateDegrees(const QString& value, const QString& ref, double limit);
// An altitude as XMP holds it (a rational "35/1" or a number) in metres,
// negative below sea level (reference "1"); "" when unreadable.
QString xmpAltitudeMetres(const QString& value, const QString& ref);

// The video of a sidecar: its path without the extension plus ".mov",
// ".MOV", ".mp4", ".MP4", ".Mov", ".Mp4", the first that is a regular
// file; "" when none is.
QString xmpVideoFor(const QString& sidecarPath);

// The date to write from a date-created text: "T", "+", "-" and ":" read as
// blanks, "Z" dropped, the first six parts read in local time (an offset is
// dropped). No text, or one that does not read: the video's creation date.
// Fewer than six parts: no date (invalid).
QDateTime xmpSidecarDate(const QString& dateCreated, const QString& videoPath);

// What the batch tells its caller. Every callback may be empty; they run on
// the batch's thread.
struct XmpBatchCallbacks {
    // A sidecar is about to be handled (`writeXmplocation`).
    std::function<void(const QString& sidecar)> started;
    // A sidecar's outcome: the video written (its `outputPath` is the video),
    // or skipped (no video beside it) or failed (unreadable sidecar, failed
    // write), with the reason in the user's words; `sourcePath` is the
    // sidecar, or the video for a failed write.
    std::function<void(const VideoWriteResult& result)> finished;
    const std::atomic<bool>* cancel = nullptr;  // stops before the next sidecar
};

// The batch over folders (scanned recursively; links to folders followed,
// none scanned twice) and sidecar files, in the given order. Each video is
// written beside itself under a hidden temporary name and then renamed over
// the source in one step; a failed write leaves the source as it was.
// Answers the path of the last sidecar handled ("" when none).
QString ScnXmpPhotosItemThreader(const QStringList& paths, const XmpBatchCallbacks& callbacks,
                                 const PassthroughExporter& exporter = videoExporter());
