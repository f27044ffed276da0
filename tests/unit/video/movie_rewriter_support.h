// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "core/video/metadata_item.h"
#include "core/video/movie_rewriter.h"
#include "metadata_test_items.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"

// Helpers of the movie rewriter tests: the checks that the media survived a
// rewrite, read with our own box parser and with ffmpeg.
namespace RewriterTest {

QByteArray sha256Of(const QString& path);

// ffmpeg's per-packet checksums of every stream, without the header lines
// that name the file.
QString streamChecksums(const QString& path);

// The chunk offsets of every track, read with the rewriter's own parser.
QList<quint64> chunkOffsetsOf(const QString& path);

// The top-level box types in file order.
QList<QByteArray> topLevelTypes(const QString& path);

// Compares a window of bytes at every chunk offset of the two files; answers
// "" when they all agree, else a description of the first difference.
QString compareChunks(const QString& source, const QString& output);

PassthroughExport request(const QString& source, const QString& output,
                          const QList<MetadataItem>& metadata,
                          VideoFileType type = VideoFileType::AppleM4V);

// Clips made once per build: 2 s H.264/AAC with some metadata, with the
// movie box before or after the media data.
QString faststartClip();
QString trailingMoovClip();

}  // namespace RewriterTest
