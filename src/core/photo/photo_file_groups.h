// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QVariantMap>

#include "core/photo/photo_properties.h"

class QIODevice;

// Groups of the property dictionary that Exiv2 does not read, taken from the
// file's own bytes by small bounded readers.

// Adds "{GIF}" to a GIF's dictionary and "{8BIM}" to a JPEG's or PSD's,
// reading `device` (open, at any position).
void addFileGroups(PhotoSource& source, QIODevice& device);

// "{GIF}" of a GIF's start (the header, the screen descriptor and the
// extensions before the first picture): "CanvasPixelWidth",
// "CanvasPixelHeight", "HasGlobalColorMap", "LoopCount" (0 = forever; only
// when the file loops), "DelayTime" (seconds, at least 0.1 as viewers
// show it) and "UnclampedDelayTime" (as stored) of the first picture.
// Empty when `head` is not a GIF.
QVariantMap gifProperties(const QByteArray& head);

// The Photoshop image resources ("8BIM" blocks) of a JPEG (its APP13
// segments, joined) or of a PSD (its resource section); "" when there are
// none. Reads at most 16 MiB of them and stops at the picture data.
QByteArray jpegImageResources(QIODevice& device);
// `version` takes the PSD header's version (1, or 2 for a large document).
QByteArray psdImageResources(QIODevice& device, int* version);

// "{8BIM}" of an image-resource block: "Version" (a PSD's header version
// when given as `fileVersion`, else the version-info resource's) and
// "ImageResources", the ids of the resources other than IPTC's own (which
// is the "{IPTC}" group). Empty when nothing but IPTC is there.
QVariantMap imageResourceProperties(const QByteArray& resources, int fileVersion = 0);

// A JPEG without its Photoshop image resources, the IPTC block kept (the
// IPTC group has its own removal); `jpeg` unchanged when it cannot be
// walked safely.
QByteArray withoutJpegImageResources(const QByteArray& jpeg);
