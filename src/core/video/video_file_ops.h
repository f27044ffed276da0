// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include "core/video/metadata_item.h"
#include "core/video/video_export.h"

// A movie's metadata items in container order, as the writers merge them;
// empty for a file that cannot be read.
QList<MetadataItem> readExistingMetadata(const QString& path);

// The kind of movie file a source is, by the major brand of its file type
// box: QuickTime for "qt  " or no file type box, the Apple video and audio
// types for theirs, MPEG-4 for every other brand.
VideoFileType movieFileType(const QString& path);

// Installs the movie rewriter as the program's exporter. Called once at
// start-up by the app and the command-line tool.
void installMovieExporter();
