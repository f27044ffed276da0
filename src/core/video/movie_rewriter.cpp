// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/movie_rewriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "core/common/file_copy.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/metadata_encoder.h"
#include "core/video/movie_layout.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_strip.h"

namespace {

using Bmff::FileBox;
using Bmff::TreeBox;

// Large enough that the copy runs at the speed of the disks.

// Progress is told (and a cancel heard) after at most this many bytes.
constexpr qint64 kProgressSlice = qint64(64) * 1024 * 1024;

// The file-system block the layout aligns large media data to.
constexpr qint64 kBlock = 4096;

// Data references: every entry must say that the media is in this file.
bool checkDataReferences(const TreeBox& trak, QString* reason) {
    for (TreeBox* mdia : trak.childrenOf("mdia")) {
        for (TreeBox* minf : mdia->childrenOf("minf")) {
            for (TreeBox* dinf : minf->childrenOf("dinf")) {
                for (TreeBox* dref : dinf->childrenOf("dref")) {
                    const QByteArray& p = dref->payload();
                    if (p.size() < 8) {
                        *reason = QStringLiteral("data reference box cut short");
                        return false;
                    }
                    const quint32 count = Bmff::readU32(p, 4);
                    qint64 pos = 8;
                    for (quint32 i = 0; i < count; ++i) {
                        if (p.size() - pos < 12) {
                            *reason = QStringLiteral(
                                          "data reference box lists %1 entries it "
                                          "does not hold")
                                          .arg(count);
                            return false;
                        }
                        const quint32 size = Bmff::readU32(p, pos);
                        if (size < 12 || size > p.size() - pos) {
                            *reason = QStringLiteral("malformed data reference entry");
                            return false;
                        }
                        if ((Bmff::readU32(p, pos + 8) & 1) == 0) {
                            *reason = QStringLiteral(
                                          "media data in another file ('%1' data "
                                          "reference)")
                                          .arg(QString::fromLatin1(p.mid(pos + 4, 4)));
                            return false;
                        }
                        pos += size;
                    }
                }
            }
        }
    }
    return true;
}

bool checkMovie(const TreeBox& moov, QString* reason) {
    if (moov.child("mvex")) {
        *reason = QStringLiteral("fragmented movie (mvex)");
        return false;
    }
    if (moov.child("cmov")) {
        *reason = QStringLiteral("compressed movie box (cmov)");
        return false;
    }
    for (TreeBox* trak : moov.childrenOf("trak")) {
        if (!checkDataReferences(*trak, reason)) return false;
    }
    return true;
}

// The metadata items that the tracks' own boxes hold (kept with the tracks).
QList<MetadataItem> trackItems(const TreeBox& moov) {
    QByteArray tracks;
    for (TreeBox* trak : moov.childrenOf("trak")) trak->appendTo(tracks);
    return readMovieBoxMetadata(tracks);
}

// The source's file type box as it is stored, or empty when it has none of
// a plausible size or it cannot be read.
QByteArray sourceFileTypeBox(QFile& source, const QList<FileBox>& boxes) {
    for (const FileBox& box : boxes) {
        if (box.type != "ftyp") continue;
        if (box.headerSize != 8 || box.size < 16 || box.size > 4096) return {};
        QByteArray bytes(box.size, Qt::Uninitialized);
        if (!source.seek(box.offset) || source.read(bytes.data(), box.size) != box.size) return {};
        return bytes;
    }
    return {};
}

void syncFolder(const QString& path) {
    const int fd = ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(),
                          O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

// Why a rewrite was refused or failed, in the user's words; the precise
// reason goes to the log.
QString damaged() {
    return WriteResult::tr("the file is damaged or incomplete, so it cannot be rewritten safely");
}

RewriteResult fail(const QString& reason, const QString& userReason = damaged()) {
    return {false, false, reason, userReason};
}

// A refusal of a movie the rewriter cannot handle, by its internal reason.
QString refusalInWords(const QString& reason) {
    if (reason.startsWith(QLatin1String("fragmented")))
        return WriteResult::tr("the file is a fragmented movie, which cannot be rewritten safely");
    if (reason.startsWith(QLatin1String("compressed")))
        return WriteResult::tr(
            "the file's movie header is compressed, which cannot be rewritten safely");
    if (reason.startsWith(QLatin1String("media data in another file")))
        return WriteResult::tr(
            "the file refers to media stored in other files, which cannot be rewritten safely");
    return damaged();
}

RewriteResult writeFailed(const QString& what, int error) {
    return fail(
        QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(strerror(error))),
        WriteResult::tr("the new file could not be written: %1").arg(plainFileError(error)));
}

}  // namespace

bool looksLikeMpeg4File(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray head = file.read(8);
    if (head.size() < 8) return false;
    static const QList<QByteArray> firstBoxes{"ftyp", "moov", "mdat", "free", "wide", "skip"};
    return firstBoxes.contains(head.mid(4, 4));
}

RewriteResult rewriteMovieFile(const PassthroughExport& request, const RewriteProgress& progress) {
    const QFileInfo sourceInfo(request.sourcePath);
    const QFileInfo outputInfo(request.outputPath);
    if (request.outputPath.isEmpty())
        return fail(QStringLiteral("no output path"), QStringLiteral("no output was named"));
    if (sourceInfo.exists() && outputInfo.exists() &&
        sourceInfo.canonicalFilePath() == outputInfo.canonicalFilePath()) {
        return fail(QStringLiteral("the output is the source itself"),
                    QStringLiteral("the new file would replace the file itself"));
    }
    QFile source(request.sourcePath);
    errno = 0;
    if (!source.open(QIODevice::ReadOnly)) {
        const int error = errno;
        return fail(QStringLiteral("cannot open the source: %1").arg(source.errorString()),
                    QStringLiteral("the file cannot be read: %1")
                        .arg(error ? plainFileError(error) : source.errorString()));
    }
    const qint64 fileSize = source.size();

    // The file's top level: one movie box, no fragments.
    QList<FileBox> boxes;
    QString reason;
    if (!Bmff::scanFileBoxes(source, fileSize, boxes, &reason)) return fail(reason);
    const FileBox* moovBox = nullptr;
    for (const FileBox& box : boxes) {
        if (box.type == "moof") {
            const QString reason = QStringLiteral("fragmented movie (moof)");
            return fail(reason, refusalInWords(reason));
        }
        // A reader stops at a box whose type is no text: one in front of the
        // movie box would hide the new metadata.
        if (!moovBox && !Bmff::isPlausibleType(box.type))
            return fail(
                QStringLiteral("damaged box at %1, in front of the movie box").arg(box.offset));
        if (box.type != "moov") continue;
        if (moovBox)
            return fail(QStringLiteral("several movie boxes"),
                        QStringLiteral("the file has several movie headers, so it cannot be "
                                       "rewritten safely"));
        moovBox = &box;
    }
    if (!moovBox)
        return fail(QStringLiteral("no movie box"),
                    QStringLiteral("the file is damaged or incomplete: it has no movie header"));
    if (moovBox->size > Bmff::kMaxMovieBoxSize)
        return fail(QStringLiteral("movie box of %1 bytes").arg(moovBox->size),
                    QStringLiteral("the file's movie header is too large to rewrite safely"));

    const qint64 payloadSize = moovBox->size - moovBox->headerSize;
    QByteArray payload(payloadSize, Qt::Uninitialized);
    if (!source.seek(moovBox->offset + moovBox->headerSize) ||
        source.read(payload.data(), payloadSize) != payloadSize) {
        return fail(QStringLiteral("cannot read the movie box"),
                    QStringLiteral("the file cannot be read completely"));
    }
    std::unique_ptr<TreeBox> moov = Bmff::parseMovieBox(payload, &reason, moovBox->headerSize);
    if (!moov) return fail(reason);
    payload.clear();
    if (!checkMovie(*moov, &reason)) return fail(reason, refusalInWords(reason));

    if (request.dropTimedMetadataTracks) MovieStrip::dropTimedMetadataTracks(*moov);
    if (request.dropTrackLocations) MovieStrip::dropTrackLocations(*moov);
    if (request.dropAllMetadataBoxes) {
        MovieStrip::dropMetadataBoxes(*moov);
        boxes.removeIf(
            [](const FileBox& box) { return MovieStrip::isDroppedTopLevelBox(box.type); });
    }

    // New metadata boxes in place of the old ones, at the end of the movie box.
    const MetadataEncoder::MovieMetadataBoxes metadata =
        MetadataEncoder::encodeMovieMetadata(request.metadata, request.fileType, trackItems(*moov));
    moov->removeChildren("udta");
    moov->removeChildren("meta");
    for (const QByteArray& box : {metadata.userData, metadata.metadata}) {
        if (box.isEmpty()) continue;
        auto child = std::make_unique<TreeBox>(box.mid(4, 4), box.mid(8));
        moov->appendChild(std::move(child));
    }

    QByteArray fileType;
    if (request.keepFileTypeBox) fileType = sourceFileTypeBox(source, boxes);
    if (request.movieBoxInFront) {
        for (qsizetype i = 0; i < boxes.size(); ++i) {
            if (boxes.at(i).type != "moov") continue;
            boxes.prepend(boxes.takeAt(i));  // the file type box is written before all
            break;
        }
    }
    if (fileType.isEmpty()) fileType = MetadataEncoder::fileTypeBox(request.fileType);
    MovieLayout::Plan plan;
    if (!MovieLayout::planRewrite(boxes, *moov, fileType, plan, &reason)) {
        return fail(reason);
    }
    moov.reset();

    // The new file, under a temporary name until it is complete and synced.
    QSaveFile output(request.outputPath);
    errno = 0;
    if (!output.open(QIODevice::WriteOnly)) {
        const int error = errno;
        return fail(QStringLiteral("cannot create the output: %1").arg(output.errorString()),
                    QStringLiteral("the new file cannot be created in the storage folder: %1")
                        .arg(error ? plainFileError(error) : output.errorString()));
    }
    const int in = source.handle();
    const int out = output.handle();
    QByteArray buffer;
    qint64 done = 0;
    for (const MovieLayout::Piece& piece : plan.pieces) {
        // Copies go in slices so that progress is told and a cancel is heard.
        qint64 at = 0;
        do {
            qint64 slice = qMin(piece.size - at, kProgressSlice);
            // Copied slices after the first start on a block boundary of the
            // source (and of the output, where the layout aligned the box),
            // so a file system that clones blocks can share them.
            const qint64 intoBlock =
                piece.sourceOffset >= 0 ? (piece.sourceOffset + at) % kBlock : 0;
            if (intoBlock > 0) slice = qMin(slice, kBlock - intoBlock);
            const bool written = piece.sourceOffset >= 0
                                     ? copyRange(in, piece.sourceOffset + at, slice, out, buffer)
                                     : writeAll(out, piece.bytes.constData() + at, slice);
            if (!written) {
                const int error = errno;
                output.cancelWriting();
                if (error == 0)  // the source ended early
                    return fail(QStringLiteral("the source is shorter than its boxes say"),
                                QStringLiteral("the file got shorter while it was being copied"));
                return writeFailed(QStringLiteral("cannot write the output"), error);
            }
            // Start writing the slice back now, so the final sync has little
            // left to wait for.
            ::sync_file_range(out, done, slice, SYNC_FILE_RANGE_WRITE);
            at += slice;
            done += slice;
            if (progress && !progress(done, plan.outputSize)) {
                output.cancelWriting();
                return {false, true, QStringLiteral("cancelled"), {}};
            }
        } while (at < piece.size);
    }
    if (::lseek(out, 0, SEEK_CUR) != plan.outputSize) {
        output.cancelWriting();
        return fail(QStringLiteral("the output did not come out at its planned size"),
                    QStringLiteral("the new file did not come out complete; nothing was saved"));
    }
    if (::fsync(out) != 0) {
        const int error = errno;
        output.cancelWriting();
        return writeFailed(QStringLiteral("cannot complete the output"), error);
    }
    if (!output.commit()) {
        const int error = errno;
        return writeFailed(QStringLiteral("cannot complete the output"), error ? error : EIO);
    }
    syncFolder(request.outputPath);
    return {true, false, {}, {}};
}

ExportOutcome rewriteMovie(const PassthroughExport& request) {
    return rewriteMovieWithProgress(request, {});
}

ExportOutcome rewriteMovieWithProgress(const PassthroughExport& request,
                                       const RewriteProgress& progress) {
    const RewriteResult result = rewriteMovieFile(request, progress);
    if (result.ok) return ExportStatus::Completed;
    if (result.cancelled) {
        qCInfo(lcTagsmith).noquote() << "Movie rewriter: cancelled" << request.outputPath;
        return ExportStatus::Cancelled;
    }
    qCWarning(lcTagsmith).noquote()
        << "Movie rewriter: cannot rewrite" << request.sourcePath << "-" << result.reason;
    return {ExportStatus::Failed, result.userReason};
}
