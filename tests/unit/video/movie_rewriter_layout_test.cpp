// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"
#include "core/video/metadata_encoder.h"
#include "core/video/movie_layout.h"
#include "video/bmff_test_boxes.h"

using Bmff::FileBox;
using Bmff::makeBox;
using TestBoxes::u32;
using TestBoxes::u64;

namespace {

constexpr qint64 kGiB = qint64(1) << 30;

QByteArray offsetTable(const char* type, const QList<quint64>& offsets) {
    QByteArray p = u32(0) + u32(quint32(offsets.size()));
    for (quint64 o : offsets) p += QByteArrayView(type) == "co64" ? u64(o) : u32(quint32(o));
    return makeBox(type, p);
}

std::unique_ptr<Bmff::TreeBox> movieWith(const QList<QByteArray>& tables) {
    QByteArray traks;
    for (const QByteArray& table : tables) {
        traks += makeBox("trak", makeBox("mdia", makeBox("minf", makeBox("stbl", table))));
    }
    return Bmff::parseMovieBox(makeBox("mvhd", QByteArray(100, '\0')) + traks, nullptr);
}

QByteArray typeOfTable(const Bmff::TreeBox& moov, int track) {
    const Bmff::TreeBox* stbl =
        moov.childrenOf("trak")[track]->child("mdia")->child("minf")->child("stbl");
    return stbl->children().front()->type();
}

}  // namespace

// Moving the media data past 4 GiB turns 32-bit tables into 64-bit ones;
// a table whose offsets stay small keeps its form only if all its offsets
// fit, and every offset moves with its box.
TEST(MovieRewriterLayout, OffsetsPast4GiBWidenTheTables) {
    // ftyp, moov, a large free box, mdat (offsets in mdat), then a second
    // media box placed early (offsets stay small).
    const qint64 mdatAt = 4 * kGiB - 50;
    QList<FileBox> source{{"ftyp", 0, 24, 8, false},
                          {"wide", 24, 8, 8, false},
                          {"moov", 32, 0, 8, false},
                          {"free", 0, 0, 8, false},
                          {"mdat", mdatAt, 10000, 8, false}};
    auto moov = movieWith({offsetTable("stco", {quint64(mdatAt) + 8, quint64(mdatAt) + 20}),
                           offsetTable("stco", {30}), offsetTable("co64", {quint64(mdatAt) + 16})});
    ASSERT_TRUE(moov);
    source[2].size = moov->size();
    source[3].offset = 32 + source[2].size;
    source[3].size = mdatAt - source[3].offset;

    // A file type box 100 bytes longer pushes the media past 4 GiB.
    const QByteArray ftyp = makeBox("ftyp", QByteArray(116, 'x'));
    MovieLayout::Plan plan;
    QString reason;
    ASSERT_TRUE(MovieLayout::planRewrite(source, *moov, ftyp, plan, &reason))
        << reason.toStdString();
    EXPECT_EQ(plan.widenedTables, 1);
    EXPECT_EQ(typeOfTable(*moov, 0), "co64");
    EXPECT_EQ(typeOfTable(*moov, 1), "stco");
    EXPECT_EQ(typeOfTable(*moov, 2), "co64");

    // Media data sits after the grown movie box: shift = ftyp growth + 4 bytes
    // per widened entry (two entries).
    const qint64 shift = 100 + 8;
    QList<quint64> offsets;
    ASSERT_TRUE(MovieLayout::chunkOffsets(*moov, offsets));
    EXPECT_EQ(offsets, (QList<quint64>{quint64(mdatAt + 8 + shift), quint64(mdatAt + 20 + shift),
                                       30 + 100, quint64(mdatAt + 16 + shift)}));

    // The pieces: new ftyp, wide copied, the movie box, free and mdat copied.
    ASSERT_EQ(plan.pieces.size(), 5);
    EXPECT_EQ(plan.pieces[0].bytes, ftyp);
    EXPECT_EQ(plan.pieces[1].sourceOffset, 24);
    EXPECT_EQ(plan.pieces[2].bytes, moov->serialize());
    EXPECT_EQ(plan.pieces[4].sourceOffset, mdatAt);
    EXPECT_EQ(plan.outputSize, mdatAt + 10000 + shift);
    qint64 total = 0;
    for (const auto& p : plan.pieces) total += p.size;
    EXPECT_EQ(total, plan.outputSize);
}

// A file without a file type box gets one in front; a movie box behind the
// media data does not move the media beyond that.
TEST(MovieRewriterLayout, MissingFileTypeIsInsertedFirst) {
    QList<FileBox> source{{"mdat", 0, 1000, 8, false}, {"moov", 1000, 0, 8, false}};
    auto moov = movieWith({offsetTable("stco", {8, 500})});
    source[1].size = moov->size();
    const QByteArray ftyp = MetadataEncoder::fileTypeBox(VideoFileType::QuickTimeMovie);
    MovieLayout::Plan plan;
    ASSERT_TRUE(MovieLayout::planRewrite(source, *moov, ftyp, plan, nullptr));
    QList<quint64> offsets;
    MovieLayout::chunkOffsets(*moov, offsets);
    EXPECT_EQ(offsets, (QList<quint64>{quint64(8 + ftyp.size()), quint64(500 + ftyp.size())}));
    EXPECT_EQ(plan.widenedTables, 0);
}

// Large media data lands at the source's offset within a 4 KiB block,
// behind a free box (at least a header long), so the kernel copies whole
// blocks; small media data is not padded.
TEST(MovieRewriterLayout, LargeMediaKeepsItsOffsetWithinABlock) {
    const qint64 mib = qint64(1) << 20;
    struct Case {
        qint64 mdatAt, mdatSize, ftypSize, padding;
    };
    // The new file type box moves the media by (its size - 20); the padding
    // takes it back to the source's offset within the block.
    for (const Case& c :
         {Case{28, 2 * mib, 32, 4084}, Case{28, 2 * mib, 16, 4100}, Case{4096, 2 * mib, 24, 4092},
          Case{28, 2 * mib, 20, 0}, Case{36, mib - 1, 24, 0}}) {
        QList<FileBox> source{{"ftyp", 0, 20, 8, false},
                              {"free", 20, c.mdatAt - 20, 8, false},
                              {"mdat", c.mdatAt, c.mdatSize, 8, false},
                              {"moov", c.mdatAt + c.mdatSize, 0, 8, false}};
        auto moov = movieWith({offsetTable("stco", {quint64(c.mdatAt) + 8})});
        source[3].size = moov->size();
        MovieLayout::Plan plan;
        ASSERT_TRUE(MovieLayout::planRewrite(
            source, *moov, makeBox("ftyp", QByteArray(c.ftypSize - 8, 'x')), plan, nullptr));
        const qint64 newAt = c.ftypSize + (c.mdatAt - 20) + c.padding;
        QList<quint64> offsets;
        MovieLayout::chunkOffsets(*moov, offsets);
        EXPECT_EQ(offsets, QList<quint64>{quint64(newAt) + 8}) << c.mdatAt << " " << c.ftypSize;
        if (c.padding > 0) {
            ASSERT_EQ(plan.pieces.size(), 5);
            EXPECT_EQ(plan.pieces[2].bytes, makeBox("free", QByteArray(c.padding - 8, '\0')));
            EXPECT_EQ(newAt % 4096, c.mdatAt % 4096);
        } else {
            EXPECT_EQ(plan.pieces.size(), 4);
        }
    }
}

// Longitude, latitude and altitude of the 3GPP location box (16.16 fixed
// point after language, empty name and role), from each form of the text.
TEST(MetadataEncoder, LocationFromIso6709Text) {
    const auto fixed = [](const QByteArray& p, int at) {
        return double(qint32(Bmff::readU32(p, at))) / 65536.0;
    };
    for (const auto& [text, longitude, latitude, altitude] :
         {std::tuple{"+48.8566+002.3522+035.000/", 2.3522, 48.8566, 35.0},
          {"+12.5-3.25+", -3.25, 12.5, 0.0},
          {"+4830-00230/", -2.5, 48.5, 0.0}}) {
        const auto payload = MetadataEncoder::locationPayload(text, {});
        ASSERT_TRUE(payload) << text;
        EXPECT_NEAR(fixed(*payload, 4), longitude, 1e-4) << text;
        EXPECT_NEAR(fixed(*payload, 8), latitude, 1e-4) << text;
        EXPECT_NEAR(fixed(*payload, 12), altitude, 1e-4) << text;
        EXPECT_EQ(payload->mid(16), QByteArray("earth\0\0", 7));
    }
    for (const char* bad : {"", "+", "abc", "+91+000", "+10+181+", "+10+10+40000", "48.1 2.3"})
        EXPECT_FALSE(MetadataEncoder::locationPayload(bad, {})) << bad;
}

// Auxiliary information offsets (encrypted tracks) are file offsets too:
// they move with the media and widen by their version, keeping the
// auxiliary type that precedes them.
TEST(MovieRewriterLayout, AuxiliaryOffsetsMoveAndWiden) {
    const qint64 mdatAt = 4 * kGiB - 40;
    // Version 0, flags: type and parameter present; one offset.
    const QByteArray saio = u32(1) + "cenc" + u32(0) + u32(1) + u32(quint32(mdatAt + 8));
    auto moov = movieWith({offsetTable("stco", {16}) + makeBox("saio", saio)});
    ASSERT_TRUE(moov);
    QList<FileBox> source{{"ftyp", 0, 16, 8, false},
                          {"moov", 16, moov->size(), 8, false},
                          {"free", 16 + moov->size(), 0, 8, false},
                          {"mdat", mdatAt, 100, 8, false}};
    source[2].size = mdatAt - source[2].offset;
    // The chunk offset 16 points into the movie box itself: refused.
    MovieLayout::Plan plan;
    QString reason;
    EXPECT_FALSE(
        MovieLayout::planRewrite(source, *moov, makeBox("ftyp", "abcdefgh"), plan, &reason));
    EXPECT_TRUE(reason.contains("outside")) << reason.toStdString();

    moov = movieWith({offsetTable("stco", {quint64(mdatAt) + 8}) + makeBox("saio", saio)});
    ASSERT_TRUE(MovieLayout::planRewrite(source, *moov, makeBox("ftyp", QByteArray(100, 'x')), plan,
                                         &reason))
        << reason.toStdString();
    const Bmff::TreeBox* stbl = moov->child("trak")->child("mdia")->child("minf")->child("stbl");
    const QByteArray written = stbl->child("saio")->payload();
    EXPECT_EQ(written[0], char(1));  // version 1: 64-bit offsets
    EXPECT_EQ(written.mid(4, 4), "cenc");
    EXPECT_EQ(Bmff::readU32(written, 12), 1u);
    // Both tables widened by 4 bytes each; the file type box grew by 100.
    EXPECT_EQ(Bmff::readU64(written, 16), quint64(mdatAt + 8 + 92 + 8));
    EXPECT_EQ(plan.widenedTables, 2);
}
