// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "core/library/ik_image_item.h"
#include "core/photo/photo_properties.h"

// The record of one photo, as the photo browser lists it: file name, size,
// dates, pixel size, make, model, GPS fields, title and keywords (from the
// dictionary). Never null for a regular file of the image list: an
// unreadable photo is still listed with its file facts and the reason in
// `fileReadProblem`. Null for anything else. No picture is decoded: the
// browser loads thumbnails lazily.
IKImageItemPtr importPhotoFile(const QString& path);

// The same from an already read dictionary (the panel's refresh after a save).
void fillPhotoRecord(IKImageItem& item, const PhotoSource& source);
