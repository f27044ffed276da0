// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the movie rewriter: any bytes, taken as a source
// movie, are rewritten with a new title by the real writer (its file copy,
// sync and rename included) into a folder on a memory file system. A
// refused source must leave nothing under the output name. A written one
// must read back with our metadata reader, carry the new title, keep every
// box other than the file type and movie boxes byte for byte and in order,
// and have each chunk offset point at the bytes its chunk had in the source.

#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/metadata_encoder.h"
#include "core/video/movie_layout.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"
#include "core/video/video_items.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

namespace {

const QString kTitle = QStringLiteral("Fuzz title");

// Compared bytes at each chunk offset (fewer where the chunk's box ends).
constexpr qint64 kChunkProbe = 16;

std::unique_ptr<QTemporaryDir> folder;

void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "fuzz_movie_rewriter: %s\n", what);
    folder.reset();  // the files go; the input is kept by the fuzzer
    __builtin_trap();
}

struct Parsed {
    QList<Bmff::FileBox> boxes;
    std::unique_ptr<Bmff::TreeBox> moov;
};

// The top-level boxes and the parsed movie box of a file in memory.
Parsed parse(const QByteArray& file) {
    Parsed parsed;
    QByteArray copy = file;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    if (!Bmff::scanFileBoxes(buffer, file.size(), parsed.boxes, nullptr)) return parsed;
    for (const Bmff::FileBox& box : parsed.boxes) {
        if (box.type != "moov") continue;
        parsed.moov = Bmff::parseMovieBox(
            QByteArrayView(file).sliced(box.offset + box.headerSize, box.size - box.headerSize),
            nullptr, box.headerSize);
    }
    return parsed;
}

QByteArray bytesOf(const QByteArray& file, const Bmff::FileBox& box) {
    return file.mid(box.offset, box.size);
}

bool isPadding(const QByteArray& file, const Bmff::FileBox& box) {
    const QByteArray payload = file.mid(box.offset + box.headerSize, box.size - box.headerSize);
    return box.type == "free" && payload.count('\0') == payload.size();
}

// Every source box but the file type and movie boxes, in order and byte
// for byte; the output may add zero-filled free boxes (alignment padding).
void checkKeptBoxes(const QByteArray& source, const Parsed& in, const QByteArray& output,
                    const Parsed& out) {
    QList<QByteArray> kept;
    for (const Bmff::FileBox& box : in.boxes) {
        if (box.type != "ftyp" && box.type != "moov") kept.append(bytesOf(source, box));
    }
    qsizetype next = 0;
    for (const Bmff::FileBox& box : out.boxes) {
        if (box.type == "ftyp" || box.type == "moov") continue;
        if (next < kept.size() && bytesOf(output, box) == kept[next]) {
            ++next;
            continue;
        }
        check(isPadding(output, box), "a box of the output is not the source's next box");
    }
    check(next == kept.size(), "a box of the source is missing from the output");
}

// The source box that holds a file offset, or null.
const Bmff::FileBox* boxAt(const QList<Bmff::FileBox>& boxes, quint64 offset) {
    for (const Bmff::FileBox& box : boxes) {
        if (offset >= quint64(box.offset) && offset < quint64(box.offset + box.size)) return &box;
    }
    return nullptr;
}

void checkChunks(const QByteArray& source, const Parsed& in, const QByteArray& output,
                 const Parsed& out) {
    QList<quint64> before, after;
    check(MovieLayout::chunkOffsets(*in.moov, before), "the source's chunk offsets do not read");
    check(MovieLayout::chunkOffsets(*out.moov, after), "the output's chunk offsets do not read");
    check(before.size() == after.size(), "the number of chunks changed");
    for (qsizetype i = 0; i < before.size(); ++i) {
        const Bmff::FileBox* box = boxAt(in.boxes, before[i]);
        check(box != nullptr, "a source chunk lies outside every box");
        // Inside the movie box only the box pointed into keeps its bytes.
        const qint64 length = box->type == "moov"
                                  ? 1
                                  : qMin(kChunkProbe, box->offset + box->size - qint64(before[i]));
        check(after[i] + quint64(length) <= quint64(output.size()), "a chunk moved past the end");
        check(source.mid(qint64(before[i]), length) == output.mid(qint64(after[i]), length),
              "a chunk offset points at other bytes");
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Thousands of rewrites a second need no log.
    QLoggingCategory::setFilterRules(QStringLiteral("tagsmith.info=false\ntagsmith.warning=false"));
    // A memory file system where there is one: the writer's sync is free.
    const QString shm = QStringLiteral("/dev/shm");
    folder = std::make_unique<QTemporaryDir>(
        (QFileInfo(shm).isDir() && QFileInfo(shm).isWritable() ? shm : QDir::tempPath()) +
        QStringLiteral("/fuzz_movie_rewriter-XXXXXX"));
    return folder->isValid() ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray source(reinterpret_cast<const char*>(data), qsizetype(size));
    PassthroughExport request;
    request.sourcePath = folder->filePath(QStringLiteral("source.mov"));
    request.outputPath = folder->filePath(QStringLiteral("output.mov"));
    {
        QFile file(request.sourcePath);
        check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                  file.write(source) == source.size(),
              "cannot write the source");
    }
    QFile::remove(request.outputPath);
    request.fileType = static_cast<VideoFileType>(size % 4);
    request.metadata = VideoItems::merge({VideoItems::title(kTitle)},
                                         readMovieMetadataFromData(source), request.fileType);

    const RewriteResult result = rewriteMovieFile(request);
    if (!result.ok) {
        check(!QFile::exists(request.outputPath), "a refused rewrite left an output");
        return 0;
    }
    QFile written(request.outputPath);
    check(written.open(QIODevice::ReadOnly), "the output cannot be opened");
    const QByteArray output = written.readAll();

    bool titled = false;
    for (const MetadataItem& item : readMovieMetadataFromData(output))
        titled = titled || item.value == kTitle;
    check(titled, "the new title does not read back");
    check(output.startsWith(MetadataEncoder::fileTypeBox(request.fileType)),
          "the output does not start with its file type box");

    const Parsed in = parse(source);
    const Parsed out = parse(output);
    check(in.moov && out.moov, "a movie box does not parse");
    checkKeptBoxes(source, in, output, out);
    checkChunks(source, in, output, out);
    return 0;
}
