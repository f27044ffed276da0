// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/video/bmff_box.h"
#include "core/video/metadata_encoder.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/video_items.h"
#include "metadata_test_items.h"
#include "video/bmff_test_boxes.h"

using namespace TestBoxes;

namespace {

const QByteArray kCopyright = "\xa9";

QByteArray titleItem(const QByteArray& title) {
    return itunesMeta(box(kCopyright + "nam", dataAtom(1, title)));
}

}  // namespace

TEST(BmffBox, LargeSizesZeroSizesAndUserTypesAreWalked) {
    // 64-bit media data before a 64-bit movie box; a movie box of size 0 runs
    // to the end of the file, and a uuid box with its 16-byte user type before
    // it is skipped.
    const QByteArray uuid = u32(8 + 16 + 4) + "uuid" + QByteArray(16, '\1') + "abcd";
    for (const QByteArray& rest :
         {largeBox("mdat", QByteArray(40, 'x')) + largeBox("moov", box("udta", titleItem("t"))),
          uuid + u32(0) + "moov" + box("udta", titleItem("t"))}) {
        const auto items = readMovieMetadataFromData(box("ftyp", "isom") + rest);
        ASSERT_EQ(items.size(), 1);
        EXPECT_EQ(items[0].value.toString(), "t");
    }
}

// Every damaged or cut header ends the walk and marks it damaged.
TEST(BmffBox, DamagedHeadersEndTheWalk) {
    const struct {
        const char* name;
        QByteArray data;
        int boxes;           // walked before the walk ends
        qsizetype lastSize;  // payload of the last box, -1 when none
    } cases[] = {
        {"size below the header", u32(4) + "free", 0, -1},
        {"fewer than 8 bytes after a box", box("free", "") + "abc", 1, 0},
        {"size beyond the parent: cut to what is there", u32(1000) + "skip" + "abcd", 1, 4},
        {"64-bit size below its 16-byte header", u32(1) + "skip" + u64(8), 0, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Bmff::BoxIterator walk{QByteArrayView(c.data)};
        Bmff::Box b;
        int boxes = 0;
        qsizetype lastSize = -1;
        for (; walk.next(b); ++boxes) lastSize = b.payload.size();
        EXPECT_EQ(boxes, c.boxes);
        EXPECT_EQ(lastSize, c.lastSize);
        EXPECT_TRUE(walk.damaged());
        EXPECT_EQ(b.truncated, c.lastSize == 4);
    }
}

TEST(BmffBox, LanguageCodes) {
    // Classic codes below 0x400 (0 English, 2 German), packed letters above;
    // 0x0400 is packed but its letters are out of range.
    // clang-format off
    const std::pair<quint16, const char*> cases[] = {
        {packedLanguage("eng"), "eng"}, {0x55c4, "und"}, {0, "eng"}, {2, "deu"}, {0x7fff, ""},
        {300, ""}, {0x0400, ""}};
    // clang-format on
    for (const auto& [code, language] : cases) EXPECT_EQ(Bmff::languageFromCode(code), language);
}

TEST(BmffReader, ItunesItemsDecodeByTypeIndicator) {
    const QByteArray png = QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQDwAEhQGAhKmMIQAAAABJRU5Erk"
        "Jggg"
        "==");
    QByteArray ilst;
    ilst += box(kCopyright + "nam", dataAtom(1, QByteArray("Title\0", 6)));
    ilst += box(kCopyright + "ART", dataAtom(2, QByteArray("\0A\0r\0t", 6)));
    ilst += box("tmpo", dataAtom(21, u16(0xfffe)));                 // -2
    ilst += box("rate", dataAtom(21, QByteArray("\xff\xff\xfd")));  // 3-byte -3
    ilst += box("plID", dataAtom(22, u64(0xffffffffffffffffull)));  // too large: raw
    ilst += box("flot", dataAtom(23, u32(0x3fc00000)));             // 1.5
    ilst += box("trkn", dataAtom(0, u16(0) + u16(3) + u16(12) + u16(0)));
    ilst += box("covr", dataAtom(14, png) + dataAtom(13, "jpegbytes"));
    ilst += box("----", fullBox("mean", "com.apple.iTunes") + fullBox("name", "iTunSMPB") +
                            dataAtom(1, "smpb"));
    ilst += box("desc", dataAtom(1, "english", packedLanguage("eng")));
    const auto items = readMovieMetadataFromData(
        movieFile(box("udta", fullBox("meta", handler("mdir") + box("ilst", ilst)))));
    // Identifier, value type and value (bytes in hex, pictures by size), data type, language.
    QStringList seen;
    for (const MetadataItem& i : items) {
        const QByteArray bytes = i.value.toByteArray();
        const QString value = i.value.typeId() != QMetaType::QByteArray ? i.value.toString()
                              : bytes.size() > 16 ? QString("%1 bytes").arg(bytes.size())
                                                  : QString::fromLatin1(bytes.toHex());
        seen << QStringList{i.identifier, i.value.typeName() + (":" + value),
                            i.dataType.section('.', -1), i.language}
                    .join(' ')
                    .trimmed();
    }
    EXPECT_EQ(seen, QStringList({"itsk/%A9nam QString:Title UTF-8",  // trailing zero dropped
                                 "itsk/%A9ART QString:Art UTF-16", "itsk/tmpo qlonglong:-2 int16",
                                 "itsk/rate qlonglong:-3 int32",                    // 3 bytes
                                 "itsk/plID QByteArray:ffffffffffffffff raw-data",  // too large
                                 "itsk/flot double:1.5 float32",
                                 "itsk/trkn QByteArray:00000003000c0000 raw-data",
                                 "itsk/covr QByteArray:70 bytes png",
                                 "itsk/covr QByteArray:6a7065676279746573 jpeg",
                                 "itsk/----:com.apple.iTunes:iTunSMPB QString:smpb UTF-8",
                                 "itsk/desc QString:english UTF-8 eng"}))
        << seen.join('\n').toStdString();
    EXPECT_EQ(items.value(7).value.toByteArray(), png);
}

TEST(BmffReader, QuickTimeListsInAnyOrderKeepTheirItunesItems) {
    const QByteArray keys = fullBox("keys", u32(1) + u32(8 + 5) + "mdta" + "title");
    const QByteArray ilst = box("ilst", box(u32(1), dataAtom(1, "key title")) +
                                            box(kCopyright + "nam", dataAtom(1, "item title")));
    for (const QByteArray& moov : {box("udta", box("meta", handler("mdta") + keys + ilst)),
                                   box("meta", ilst + keys + handler("mdta"))}) {
        QStringList values;
        for (const MetadataItem& i : readMovieMetadataFromData(movieFile(moov)))
            values << i.identifier + "=" + i.value.toString();
        EXPECT_EQ(values, (QStringList{"mdta/title=key title", "itsk/%A9nam=item title"}));
    }
}

TEST(BmffReader, QuickTimeKeysNameTheirItems) {
    QByteArray ilst;
    ilst += box(u32(2), dataAtom(1, "Canon"));
    ilst += box(u32(0), dataAtom(1, "no key 0"));
    ilst += box(u32(9), dataAtom(1, "no key 9"));
    ilst += box(u32(1), dataAtom(1, "+48.8566+002.3522+035.000/") + dataAtom(1, "second"));
    ilst += box(u32(3), dataAtom(67, u32(0xffffff85)));  // int32 -123
    const QByteArray meta = quickTimeMeta(
        {"com.apple.quicktime.location.ISO6709", "com.apple.quicktime.make", "my key/x"}, ilst);
    // Movie-level metadata, and track metadata in container order.
    const auto items = readMovieMetadataFromData(movieFile(box("trak", meta) + meta));
    ASSERT_EQ(items.size(), 8);
    EXPECT_EQ(
        identifiers(items).mid(0, 4),
        QStringList({"mdta/com.apple.quicktime.make", "mdta/com.apple.quicktime.location.ISO6709",
                     "mdta/com.apple.quicktime.location.ISO6709", "mdta/my%20key%2Fx"}));
    EXPECT_EQ(items[2].value.toString() + items[3].key + items[4].keySpace, "secondmy key/xmdta");
    EXPECT_EQ(items[3].value, QVariant(qint64(-123)));
}

TEST(BmffReader, UserDataTextRawAndIsoBoxes) {
    QByteArray udta;
    // Two entries: packed "und" in UTF-8, classic code 2 (German).
    udta += box(kCopyright + "nam", u16(5) + u16(0x55c4) + "Hallo" + u16(3) + u16(2) + "abc");
    udta += box(kCopyright + "key", box("data", u32(1) + u32(0) + "kw1,kw2"));  // typed form
    udta += box("XYZW", "opaque");
    udta += box("free", QByteArray(16, '\0'));
    udta += fullBox("titl", u16(packedLanguage("fra")) + QByteArray("Titre\0", 6));
    udta += fullBox("dscp", u16(packedLanguage("eng")) + "\xfe\xff" + QByteArray("\0D\0e\0\0", 6));
    udta += fullBox("kywd", u16(packedLanguage("eng")) + char(2) + char(2) + "k1" + char(3) +
                                QByteArray("k2\0", 3));
    udta += fullBox("yrrc", u16(2021));
    udta += fullBox("albm", u16(packedLanguage("eng")) + QByteArray("Album\0", 6) + char(7));
    // Name, role, longitude, latitude, altitude (16.16), body, notes.
    udta += fullBox("loci", u16(packedLanguage("eng")) + QByteArray("Sydney\0", 7) + char(0) +
                                u32(quint32(qint32(151.2093 * 65536))) +
                                u32(quint32(qint32(-33.8688 * 65536))) + u32(0) +
                                QByteArray("earth\0\0", 7));
    udta += box("date", "2020-01-02T03:04:05+0100");
    udta += fullBox("date", u16(packedLanguage("eng")) + "2021-02-03");
    const auto items = readMovieMetadataFromData(movieFile(box("udta", udta)));
    ASSERT_EQ(identifiers(items),
              QStringList({"udta/%A9nam", "udta/%A9nam", "udta/%A9key", "udta/XYZW", "uiso/titl",
                           "uiso/dscp", "uiso/kywd", "uiso/yrrc", "uiso/albm", "uiso/loci",
                           "uiso/date", "uiso/date"}));
    QStringList values;
    for (const MetadataItem& i : items) values << i.value.toString();
    EXPECT_EQ(values, QStringList({"Hallo", "abc", "kw1,kw2", "opaque", "Titre", "De", "k1,k2",
                                   "2021", "Album", "-33.8688+151.2093+000.000/",
                                   "2020-01-02T03:04:05+0100", "2021-02-03"}));
    EXPECT_EQ(items[0].language + items[1].language + items[4].language, "unddeufra");
    EXPECT_EQ(items[3].value.typeId(), QMetaType::QByteArray);
    EXPECT_EQ(items[7].value, QVariant(qint64(2021)));
}

TEST(BmffReader, DamageKeepsWhatWasReadBefore) {
    // An item whose size reaches past the item list: the items before it stay.
    QByteArray ilst = box(kCopyright + "nam", dataAtom(1, "kept"));
    ilst += u32(5000) + QByteArray(kCopyright + "ART") + u32(0);
    auto items = readMovieMetadataFromData(movieFile(box("udta", itunesMeta(ilst))));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].value.toString(), "kept");

    // A keys box that claims more keys than it holds, and a key longer than the box.
    QByteArray keys = u32(1000) + u32(8 + 4) + "mdta" + "make" + u32(500) + "mdta";
    QByteArray meta =
        box("meta", handler("mdta") + fullBox("keys", keys) +
                        box("ilst", box(u32(1), dataAtom(1, "X")) + box(u32(2), dataAtom(1, "Y"))));
    items = readMovieMetadataFromData(movieFile(meta));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].identifier, "mdta/make");

    // Not a movie file at all.
    EXPECT_TRUE(readMovieMetadataFromData("Just some text that is not a movie file.").isEmpty() &&
                readMovieMetadataFromData(QByteArray()).isEmpty() &&
                readMovieMetadata(QStringLiteral("/nonexistent/file.mov")).isEmpty());
}

// A uuid box cut short in the user data keeps its user type in its raw
// value, so written back it is a whole box and the reader goes on past it to
// the items after it (found by the rewriter's fuzz target: a new title
// behind a 10-byte uuid box did not read back).
TEST(BmffReader, CutShortUuidBoxIsWrittenBackWhole) {
    const QByteArray userType(16, 'u');
    const QByteArray udta = box("udta", u32(5000) + "uuid" + userType + "ab");
    const QList<MetadataItem> items = readMovieMetadataFromData(movieFile(udta));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].value.toByteArray(), userType + "ab");

    const auto boxes = MetadataEncoder::encodeMovieMetadata(
        VideoItems::merge({VideoItems::title("New")}, items, VideoFileType::MPEG4),
        VideoFileType::MPEG4);
    const QList<MetadataItem> again = readMovieMetadataFromData(movieFile(boxes.userData));
    ASSERT_EQ(again.size(), 2);
    EXPECT_EQ(again[0].value.toByteArray(), userType + "ab");
    EXPECT_EQ(again[1].value.toString(), "New");
}
