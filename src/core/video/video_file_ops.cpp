// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_file_ops.h"

#include <QFile>

#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"
#include "core/video/video_export.h"

QList<MetadataItem> readExistingMetadata(const QString& path) {
    return readMovieMetadata(path);
}

VideoFileType movieFileType(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return VideoFileType::QuickTimeMovie;
    const QByteArray head = file.read(12);
    if (head.size() < 12 || head.mid(4, 4) != "ftyp") return VideoFileType::QuickTimeMovie;
    const QByteArray brand = head.mid(8, 4);
    if (brand == "qt  ") return VideoFileType::QuickTimeMovie;
    if (brand == "M4V " || brand == "M4VH" || brand == "M4VP") return VideoFileType::AppleM4V;
    if (brand == "M4A " || brand == "M4B ") return VideoFileType::AppleM4A;
    return VideoFileType::MPEG4;
}

void installMovieExporter() {
    videoExporter() = rewriteMovie;
}
