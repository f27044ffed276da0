#include "core/video/video_file_ops.h"

#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"
#include "core/video/video_export.h"

QList<MetadataItem> readExistingMetadata(const QString& path) {
    return readMovieMetadata(path);
}

void installMovieExporter() {
    videoExporter() = rewriteMovie;
}
