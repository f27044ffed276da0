// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"
#include "movie_rewriter_support.h"
#include "video/bmff_test_boxes.h"

using namespace RewriterTest;
using Bmff::makeBox;

namespace {

// Writes `data` as a source, rewrites it and checks the failure path: the
// reason contains `why`, the user is told `userWhy` (plain words, never the
// internal reason), no file appears in the output folder and the source is
// unchanged.
void expectRefused(const QByteArray& data, const QString& why,
                   const QString& userWhy = "the file is damaged or incomplete") {
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("out"));
    const QString source = dir.filePath("source.mov");
    writeFile(source, data);
    const QString output = dir.filePath("out/new.m4v");
    const RewriteResult result = rewriteMovieFile(
        request(source, output, {item("itsk/%A9nam", "title"), item("uiso/date", "2020:01:01")}));
    EXPECT_FALSE(result.ok) << why.toStdString();
    EXPECT_TRUE(result.reason.contains(why, Qt::CaseInsensitive))
        << "expected '" << why.toStdString() << "', got '" << result.reason.toStdString() << "'";
    EXPECT_TRUE(result.userReason.startsWith(userWhy)) << result.userReason.toStdString();
    EXPECT_TRUE(QDir(dir.filePath("out"))
                    .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)
                    .isEmpty());
    EXPECT_EQ(readFile(source), data);
    EXPECT_EQ(rewriteMovie(request(source, output, {})), ExportStatus::Failed);
}

QByteArray fileTypeBox() {
    return makeBox("ftyp", QByteArray("isom\0\0\0\0isom", 12));
}

}  // namespace

// Real clips that cannot be rewritten in place of their movie box.
TEST(MovieRewriterRefusal, UnfitClips) {
    if (!haveTool("ffmpeg")) GTEST_SKIP();
    const QString fragmented = ffmpegFixture(
        "rewriter-fragmented.mp4",
        words("-f lavfi -i testsrc=size=160x120:rate=25:duration=2 -c:v libx264 -preset ultrafast "
              "-g 10 -movflags frag_keyframe+empty_moov"));
    ASSERT_FALSE(fragmented.isEmpty());
    expectRefused(readFile(fragmented), "fragmented",
                  "the file is a fragmented movie, which cannot be rewritten safely");

    const QByteArray clip = readFile(faststartClip());
    // The self-contained flag of the clip's data references cleared.
    const QByteArray selfContained("\x00\x00\x00\x0curl \x00\x00\x00\x01", 12);
    ASSERT_GE(clip.indexOf(selfContained), 0);
    expectRefused(
        QByteArray(clip).replace(selfContained, QByteArray("\x00\x00\x00\x0curl \0\0\0\0", 12)),
        "another file", "the file refers to media stored in other files");
    const qsizetype moovAt = clip.indexOf("moov") - 4;
    expectRefused(clip + clip.mid(moovAt, Bmff::readU32(clip, moovAt)), "several movie boxes",
                  "the file has several movie headers");
    expectRefused(clip.left(clip.size() * 2 / 3), "declares");  // truncated
}

TEST(MovieRewriterRefusal, MalformedStructures) {
    const QByteArray cmov = makeBox("cmov", makeBox("dcom", "zlib") + makeBox("cmvd", "xxxxxxxx"));
    expectRefused(fileTypeBox() + makeBox("moov", cmov) + makeBox("mdat", "data"), "compressed",
                  "the file's movie header is compressed");
    expectRefused(fileTypeBox() + makeBox("mdat", "data"), "no movie box");
    expectRefused(QByteArray("not a movie at all"), "declares");
    expectRefused(fileTypeBox() + makeBox("moov", makeBox("mvhd", "x")) + "abc", "stray bytes");
    // A box our reader stops at, in front of the movie box: the new
    // metadata would not read back.
    expectRefused(makeBox("fS\rp", "x") + makeBox("moov", makeBox("mvhd", "x")), "damaged box");

    // A child box larger than its parent.
    QByteArray trak = makeBox("trak", makeBox("tkhd", "12345678"));
    trak[3] = char(0x7f);
    expectRefused(fileTypeBox() + makeBox("moov", trak), "declares");

    // Nesting far deeper than any real movie.
    QByteArray nested = makeBox("stbl", {});
    for (int i = 0; i < 40; ++i) nested = makeBox(i % 2 ? "trak" : "mdia", nested);
    expectRefused(fileTypeBox() + makeBox("moov", nested), "nested");

    // A chunk offset that points into the movie box itself.
    QByteArray stco = TestBoxes::u32(0) + TestBoxes::u32(1) + TestBoxes::u32(40);
    const QByteArray stbl = makeBox("stbl", makeBox("stco", stco));
    const QByteArray moov =
        makeBox("moov", makeBox("trak", makeBox("mdia", makeBox("minf", stbl))));
    expectRefused(fileTypeBox() + moov + makeBox("mdat", "data"), "outside the media data");

    // A table that claims more entries than it holds.
    Bmff::appendU32(stco, 0);
    stco[7] = char(9);
    const QByteArray badTable = makeBox(
        "moov",
        makeBox("trak", makeBox("mdia", makeBox("minf", makeBox("stbl", makeBox("stco", stco))))));
    expectRefused(fileTypeBox() + badTable + makeBox("mdat", "data"), "entries");
}

// A movie box larger than any real one is damage, not something to load:
// refused by the rewriter and the reader before it is read (the file is
// sparse, so this costs no disk).
TEST(MovieRewriterRefusal, OversizedMovieBox) {
    QTemporaryDir dir;
    const QString source = dir.filePath("huge.mov");
    const qint64 moovSize = Bmff::kMaxMovieBoxSize + 1024;
    writeFile(source, fileTypeBox() + TestBoxes::u32(quint32(moovSize)) + "moov");
    ASSERT_TRUE(QFile::resize(source, fileTypeBox().size() + moovSize));
    const QString output = dir.filePath("out.m4v");
    const RewriteResult result = rewriteMovieFile(request(source, output, {}));
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.reason.contains("movie box of")) << result.reason.toStdString();
    EXPECT_FALSE(QFile::exists(output));
    EXPECT_TRUE(readMovieMetadata(source).isEmpty());
}

// Progress reaches the whole size; a cancel leaves nothing behind.
TEST(MovieRewriterRefusal, CancelLeavesNothing) {
    if (!haveTool("ffmpeg")) GTEST_SKIP();
    QTemporaryDir dir;
    const QString output = dir.filePath("out.m4v");
    const PassthroughExport job = request(faststartClip(), output, {item("itsk/%A9nam", "x")});
    qint64 last = 0;
    qint64 total = -1;
    ASSERT_TRUE(rewriteMovieFile(job, [&](qint64 written, qint64 size) {
                    EXPECT_GE(written, last);
                    last = written;
                    total = size;
                    return true;
                }).ok);
    EXPECT_EQ(last, total);
    EXPECT_EQ(QFileInfo(output).size(), total);

    QFile::remove(output);
    EXPECT_EQ(rewriteMovieWithProgress(job, [](qint64, qint64) { return false; }),
              ExportStatus::Cancelled);
    EXPECT_TRUE(QDir(dir.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}
