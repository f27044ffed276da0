#pragma once

#include <QList>
#include <QString>

#include "core/video/metadata_item.h"

// A movie's metadata items in container order, as the writers merge them;
// empty for a file that cannot be read.
QList<MetadataItem> readExistingMetadata(const QString& path);

// Installs the movie rewriter as the program's exporter. Called once at
// start-up by the app and the command-line tool.
void installMovieExporter();
