// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/ik_image_item.h"

IKImageItem::RepresentationType IKImageItem::imageRepresentationType() const {
    // Exact comparisons: a video whose kind word was replaced by the system's
    // kind text is shown through the generic preview.
    if (fileType == QLatin1String("Image")) return RepresentationType::Path;
    if (fileType == QLatin1String("Movie")) return RepresentationType::MoviePath;
    return RepresentationType::GenericPreviewPath;
}
