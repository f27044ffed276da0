// SPDX-License-Identifier: GPL-3.0-or-later
#include "movie_rewriter_support.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>

#include "core/video/bmff_tree.h"
#include "core/video/movie_layout.h"
#include "support/media_fixtures.h"

namespace RewriterTest {

namespace {
const QString kClip =
    "-f lavfi -i testsrc=size=320x240:rate=25:duration=2 -f lavfi -i "
    "sine=frequency=440:sample_rate=44100:duration=2 -c:v libx264 -preset ultrafast -pix_fmt "
    "yuv420p -c:a aac -shortest -metadata title=Old_title -metadata comment=Old_comment";
}  // namespace

QByteArray sha256Of(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&f);
    return hash.result().toHex();
}

QString streamChecksums(const QString& path) {
    QProcess p;
    // Attached pictures (a cover) are metadata, not media: left out.
    p.start("ffmpeg", {"-v", "error", "-i", path, "-map", "0:V?", "-map", "0:a?", "-map", "0:s?",
                       "-c", "copy", "-f", "framemd5", "-"});
    if (!p.waitForFinished(120000) || p.exitCode() != 0) return "<ffmpeg failed>";
    QStringList lines;
    for (const QByteArray& line : p.readAllStandardOutput().split('\n')) {
        if (!line.startsWith('#')) lines.append(QString::fromUtf8(line));
    }
    return lines.join('\n');
}

namespace {

// The top-level boxes of an open file; empty when it cannot be walked.
QList<Bmff::FileBox> topLevelBoxes(QFile& f) {
    QList<Bmff::FileBox> boxes;
    if (!f.isOpen() && !f.open(QIODevice::ReadOnly)) return {};
    if (!Bmff::scanFileBoxes(f, f.size(), boxes, nullptr)) return {};
    return boxes;
}

std::unique_ptr<Bmff::TreeBox> movieTree(const QString& path) {
    QFile f(path);
    for (const Bmff::FileBox& box : topLevelBoxes(f)) {
        if (box.type != "moov") continue;
        f.seek(box.offset + box.headerSize);
        return Bmff::parseMovieBox(f.read(box.size - box.headerSize), nullptr);
    }
    return nullptr;
}

}  // namespace

QList<quint64> chunkOffsetsOf(const QString& path) {
    QList<quint64> offsets;
    if (auto moov = movieTree(path)) MovieLayout::chunkOffsets(*moov, offsets);
    return offsets;
}

QList<QByteArray> topLevelTypes(const QString& path) {
    QFile f(path);
    QList<QByteArray> types;
    for (const auto& b : topLevelBoxes(f)) types.append(b.type);
    return types;
}

QString compareChunks(const QString& source, const QString& output) {
    const QList<quint64> a = chunkOffsetsOf(source);
    const QList<quint64> b = chunkOffsetsOf(output);
    if (a.isEmpty()) return "no chunk offsets in the source";
    if (a.size() != b.size()) return QString("%1 chunks became %2").arg(a.size()).arg(b.size());
    QFile fa(source);
    QFile fb(output);
    const QList<Bmff::FileBox> boxes = topLevelBoxes(fa);
    if (boxes.isEmpty() || !fb.open(QIODevice::ReadOnly)) return "cannot open";
    for (qsizetype i = 0; i < a.size(); ++i) {
        // The window stops at the end of the box that holds the chunk.
        qint64 end = 0;
        for (const auto& box : boxes) {
            if (qint64(a[i]) >= box.offset) end = box.offset + box.size;
        }
        fa.seek(qint64(a[i]));
        fb.seek(qint64(b[i]));
        const QByteArray wa = fa.read(qMin<qint64>(256, end - qint64(a[i])));
        const QByteArray wb = fb.read(256);
        if (wa.isEmpty() || !wb.startsWith(wa))
            return QString("chunk %1 differs (offset %2 -> %3)").arg(i).arg(a[i]).arg(b[i]);
    }
    return {};
}

PassthroughExport request(const QString& source, const QString& output,
                          const QList<MetadataItem>& metadata, VideoFileType type) {
    PassthroughExport r;
    r.sourcePath = source;
    r.outputPath = output;
    r.metadata = metadata;
    r.fileType = type;
    return r;
}

QString faststartClip() {
    return ffmpegFixture("rewriter-faststart.mp4", words(kClip + " -movflags +faststart"));
}

QString trailingMoovClip() {
    return ffmpegFixture("rewriter-trailing.mov", words(kClip));
}

}  // namespace RewriterTest
