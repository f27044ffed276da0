// SPDX-License-Identifier: GPL-3.0-or-later
// tagsmith-rewrite-bench [--type mov|m4v|m4a|mp4] [--title TEXT] SOURCE OUTPUT
//
// Rewrites SOURCE into OUTPUT with its existing metadata, the title replaced
// when --title is given, as the video writers do. Exit status 0 on success;
// the reason of a failure goes to stderr.
#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"
#include "core/video/video_items.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    VideoFileType type = VideoFileType::AppleM4V;
    QString title;
    bool haveTitle = false;
    while (args.size() > 2) {
        const QString option = args.takeFirst();
        const QString value = args.takeFirst();
        if (option == QLatin1String("--title")) {
            title = value;
            haveTitle = true;
        } else if (option == QLatin1String("--type")) {
            if (value == QLatin1String("mov")) type = VideoFileType::QuickTimeMovie;
            if (value == QLatin1String("m4a")) type = VideoFileType::AppleM4A;
            if (value == QLatin1String("mp4")) type = VideoFileType::MPEG4;
        }
    }
    if (args.size() != 2) {
        std::fputs(
            "usage: tagsmith-rewrite-bench [--type mov|m4v|m4a|mp4] [--title TEXT] "
            "SOURCE OUTPUT\n",
            stderr);
        return 2;
    }
    PassthroughExport request;
    request.sourcePath = args.at(0);
    request.outputPath = args.at(1);
    request.fileType = type;
    QList<MetadataItem> changes;
    if (haveTitle) changes.append(VideoItems::title(title));
    request.metadata = VideoItems::merge(changes, readMovieMetadata(request.sourcePath), type);
    const RewriteResult result = rewriteMovieFile(request);
    if (!result.ok) {
        std::fprintf(stderr, "tagsmith-rewrite-bench: %s\n", qPrintable(result.reason));
        return 1;
    }
    return 0;
}
