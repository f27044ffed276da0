#include "movie_rewriter_support.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include "core/video/bmff_tree.h"
#include "core/video/movie_layout.h"
#include "support/media_fixtures.h"

namespace RewriterTest {

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& data) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly)) f.write(data);
}

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

std::unique_ptr<Bmff::TreeBox> movieTree(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return nullptr;
    QList<Bmff::FileBox> boxes;
    if (!Bmff::scanFileBoxes(f, f.size(), boxes, nullptr)) return nullptr;
    for (const Bmff::FileBox& box : boxes) {
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
    QList<Bmff::FileBox> boxes;
    QList<QByteArray> types;
    if (f.open(QIODevice::ReadOnly) && Bmff::scanFileBoxes(f, f.size(), boxes, nullptr)) {
        for (const auto& b : boxes) types.append(b.type);
    }
    return types;
}

QString compareChunks(const QString& source, const QString& output) {
    const QList<quint64> a = chunkOffsetsOf(source);
    const QList<quint64> b = chunkOffsetsOf(output);
    if (a.isEmpty()) return "no chunk offsets in the source";
    if (a.size() != b.size()) return QString("%1 chunks became %2").arg(a.size()).arg(b.size());
    QFile fa(source);
    QFile fb(output);
    QList<Bmff::FileBox> boxes;
    if (!fa.open(QIODevice::ReadOnly) || !fb.open(QIODevice::ReadOnly) ||
        !Bmff::scanFileBoxes(fa, fa.size(), boxes, nullptr)) {
        return "cannot open";
    }
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

QJsonObject exiftoolTags(const QString& path) {
    QProcess p;
    p.start("exiftool", {"-j", "-G1", "-a", "-charset", "utf8", path});
    if (!p.waitForFinished(60000)) return {};
    const QJsonArray array = QJsonDocument::fromJson(p.readAllStandardOutput()).array();
    return array.isEmpty() ? QJsonObject() : array.first().toObject();
}

QString exiftoolValidation(const QString& path) {
    QProcess p;
    p.start("exiftool", {"-validate", "-warning", "-error", "-a", "-s3", path});
    if (!p.waitForFinished(60000)) return "<exiftool failed>";
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
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

namespace {

QString clip(const QString& name, const QStringList& muxing) {
    QStringList args{"-f",
                     "lavfi",
                     "-i",
                     "testsrc=size=320x240:rate=25:duration=2",
                     "-f",
                     "lavfi",
                     "-i",
                     "sine=frequency=440:sample_rate=44100:duration=2",
                     "-c:v",
                     "libx264",
                     "-preset",
                     "ultrafast",
                     "-pix_fmt",
                     "yuv420p",
                     "-c:a",
                     "aac",
                     "-shortest",
                     "-metadata",
                     "title=Old title",
                     "-metadata",
                     "comment=Old comment"};
    args += muxing;
    return ffmpegFixture(name, args);
}

}  // namespace

QString faststartClip() {
    return clip("rewriter-faststart.mp4", {"-movflags", "+faststart"});
}

QString trailingMoovClip() {
    return clip("rewriter-trailing.mov", {});
}

}  // namespace RewriterTest
