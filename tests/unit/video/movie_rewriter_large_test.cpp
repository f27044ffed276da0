// SPDX-License-Identifier: GPL-3.0-or-later
// Files past 4 GiB, made sparse so that they cost no disk until rewritten.
// Slow (the rewrite copies gigabytes): disabled in the normal run, run by the
// "movie_rewriter_large" test of the "long" label.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/movie_rewriter.h"
#include "movie_rewriter_support.h"

using namespace RewriterTest;

namespace {

constexpr qint64 k4GiB = qint64(1) << 32;

// Adds `shift` to every entry of the 32-bit chunk offset tables.
void shiftOffsets(Bmff::TreeBox& box, quint32 shift) {
    for (const auto& child : box.children()) {
        if (child->type() == "stco") {
            QByteArray p = child->payload();
            const quint32 count = Bmff::readU32(p, 4);
            QByteArray out = p.left(8);
            for (quint32 i = 0; i < count; ++i)
                Bmff::appendU32(out, Bmff::readU32(p, 8 + 4 * i) + shift);
            child->setPayload(out);
        } else if (child->isContainer()) {
            shiftOffsets(*child, shift);
        }
    }
}

// The fast-start clip with a sparse free box of `gap` bytes between its
// movie box and its media data.
bool makeSparseSource(const QString& path, qint64 gap) {
    QFile clip(faststartClip());
    if (!clip.open(QIODevice::ReadOnly)) return false;
    QList<Bmff::FileBox> boxes;
    if (!Bmff::scanFileBoxes(clip, clip.size(), boxes, nullptr)) return false;
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly)) return false;
    for (const Bmff::FileBox& box : boxes) {
        clip.seek(box.offset);
        QByteArray bytes = clip.read(box.size);
        if (box.type == "moov") {
            auto moov = Bmff::parseMovieBox(bytes.mid(box.headerSize), nullptr);
            if (!moov) return false;
            shiftOffsets(*moov, quint32(gap));
            bytes = moov->serialize();
            out.write(bytes);
            QByteArray free;
            Bmff::appendU32(free, 1);
            free += "free";
            Bmff::appendU64(free, quint64(gap));
            out.write(free);
            out.seek(out.pos() + gap - free.size());  // a hole
            continue;
        }
        out.write(bytes);
    }
    return out.error() == QFile::NoError;
}

}  // namespace

// Media just below 4 GiB pushed past it by a large cover: the 32-bit
// offset tables become 64-bit ones; rewriting that file (now over 4 GiB,
// with 64-bit tables) again keeps the media too.
TEST(MovieRewriterLarge, DISABLED_PastFourGiB) {
    if (!haveTool("ffmpeg")) GTEST_SKIP();
    QTemporaryDir dir;
    const QString source = dir.filePath("sparse.mp4");
    const qint64 clipSize = QFile(faststartClip()).size();
    ASSERT_TRUE(makeSparseSource(source, k4GiB - 100000 - clipSize));
    const QList<quint64> before = chunkOffsetsOf(source);
    ASSERT_FALSE(before.isEmpty());
    ASSERT_LT(before.last(), quint64(k4GiB));
    const QString checksums = streamChecksums(source);

    const QString grown = dir.filePath("grown.m4v");
    RewriteResult result = rewriteMovieFile(
        request(source, grown,
                {item("itsk/%A9nam", "Large"), item("itsk/covr", noisePicture("PNG", 700))}));
    ASSERT_TRUE(result.ok) << result.reason.toStdString();
    const QList<quint64> after = chunkOffsetsOf(grown);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_GT(after.first(), quint64(k4GiB));
    EXPECT_EQ(compareChunks(source, grown).toStdString(), "");
    EXPECT_EQ(streamChecksums(grown).toStdString(), checksums.toStdString());
    QFile::remove(source);

    const QString shrunk = dir.filePath("shrunk.m4v");
    result = rewriteMovieFile(request(grown, shrunk, {}));
    ASSERT_TRUE(result.ok) << result.reason.toStdString();
    EXPECT_EQ(compareChunks(grown, shrunk).toStdString(), "");
    EXPECT_EQ(streamChecksums(shrunk).toStdString(), checksums.toStdString());
    EXPECT_TRUE(runTool("ffprobe", {"-v", "error", shrunk}));
}
