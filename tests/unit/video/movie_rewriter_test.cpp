// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include "core/video/bmff_tree.h"
#include "core/video/metadata_encoder.h"
#include "core/video/movie_metadata_reader.h"
#include "movie_rewriter_support.h"

using namespace RewriterTest;

namespace {

bool haveTools() {
    return haveTool("ffmpeg") && haveTool("exiftool");
}

struct PayloadCase {
    const char* name;
    bool faststart;
    bool grow;
};

class MovieRewriterPayload : public ::testing::TestWithParam<PayloadCase> {};

// The trailing-movie clip with a box added to its first track, written to
// `path`; the movie box is last, so growing it moves no media.
bool writeClipWithTrackBox(const QString& path, const QByteArray& type, const QByteArray& payload) {
    const QByteArray data = readFile(trailingMoovClip());
    const qsizetype moovAt = data.lastIndexOf("moov") - 4;
    auto moov = Bmff::parseMovieBox(data.mid(moovAt + 8), nullptr);
    if (moovAt < 0 || !moov) return false;
    moov->childrenOf("trak").first()->appendChild(std::make_unique<Bmff::TreeBox>(type, payload));
    return writeFile(path, data.left(moovAt) + moov->serialize());
}

}  // namespace

// The media survives whether the movie box sits before or after the media
// data, and whether the metadata grows a lot or goes away.
TEST_P(MovieRewriterPayload, StreamsAndChunksAreUnchanged) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    const PayloadCase c = GetParam();
    const QString source = c.faststart ? faststartClip() : trailingMoovClip();
    ASSERT_FALSE(source.isEmpty()) << lastToolOutput().toStdString();
    QTemporaryDir dir;
    const QString output = dir.filePath("out.m4v");
    QList<MetadataItem> items{item("itsk/%A9nam", ""), item("itsk/%A9cmt", QByteArray())};
    if (c.grow) {
        items = {item("itsk/%A9nam", "New title"),
                 item("common/artwork", noisePicture("PNG", 700), "public.png"),
                 item("mdta/com.apple.quicktime.director", "Someone")};
    }
    const QByteArray sourceSum = sha256Of(source);
    const RewriteResult result = rewriteMovieFile(request(source, output, items));
    ASSERT_TRUE(result.ok) << result.reason.toStdString();

    EXPECT_EQ(sha256Of(source), sourceSum);
    EXPECT_EQ(streamChecksums(output).toStdString(), streamChecksums(source).toStdString());
    EXPECT_EQ(compareChunks(source, output).toStdString(), "");
    EXPECT_TRUE(runTool("ffprobe", {"-v", "error", output})) << lastToolOutput().toStdString();
    // The source's top-level order is kept, behind the new file type box.
    QList<QByteArray> types = topLevelTypes(source);
    if (types.first() != "ftyp") types.prepend("ftyp");
    EXPECT_EQ(topLevelTypes(output), types);

    const QList<MetadataItem> written = readMovieMetadata(output);
    if (c.grow) {
        EXPECT_EQ(valueOf(written, "itsk/%A9nam"), "New title");
        EXPECT_TRUE(findItem(written, "itsk/covr"));
        EXPECT_GT(QFileInfo(output).size(), QFileInfo(source).size() + 700 * 700);
    } else {
        EXPECT_TRUE(written.isEmpty());
        EXPECT_LT(QFileInfo(output).size(), QFileInfo(source).size());
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, MovieRewriterPayload,
                         ::testing::Values(PayloadCase{"FaststartGrows", true, true},
                                           PayloadCase{"FaststartShrinks", true, false},
                                           PayloadCase{"TrailingMoovGrows", false, true},
                                           PayloadCase{"TrailingMoovShrinks", false, false}),
                         [](const auto& info) { return std::string(info.param.name); });

// Every key space lands where other tools look for it, and our own reader
// gives the same items back.
TEST(MovieRewriter, ExiftoolReadsTheWrittenValues) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    QTemporaryDir dir;
    const QString output = dir.filePath("out.mov");
    // clang-format off
    const QList<MetadataItem> items{
        item("itsk/%A9nam", "Itunes title"), item("mdta/com.apple.quicktime.title", "Keyed title"),
        item("common/publisher", "The publisher"), item("uiso/date", "2021:03:04 05:06:07"),
        item("mdta/com.apple.quicktime.keywords", QByteArray("sea,sun"), "com.apple.metadata.datatype.raw-data", "und"),
        item("uiso/loci", "+48.8566+002.3522+035.000/"), item("udta/%A9cmt", "User comment"),
        item("uiso/kywd", "alpha,beta"), item("id3/TIT2", "never written")};
    // clang-format on
    ASSERT_TRUE(
        rewriteMovieFile(request(faststartClip(), output, items, VideoFileType::QuickTimeMovie))
            .ok);

    const QJsonObject tags = exiftoolTags(output);
    EXPECT_EQ(exiftoolValidation(output).toStdString(), "OK");
    QStringList texts;
    for (const char* key : {"ItemList:Title", "Keys:Title", "Keys:Publisher", "UserData:Comment"})
        texts << tags[key].toString();
    EXPECT_EQ(texts, (QStringList{"Itunes title", "Keyed title", "The publisher", "User comment"}));
    EXPECT_TRUE(tags["UserData:DateTimeOriginal"].toString().startsWith("2021:03:04 05:06:07"))
        << QJsonDocument(tags).toJson().toStdString();
    EXPECT_TRUE(tags["QuickTime:MajorBrand"].toString().contains("QuickTime"));
    const QString location = tags["UserData:LocationInformation"].toString();
    EXPECT_TRUE(location.contains("48.8566") && location.contains("2.3522"))
        << location.toStdString();
    EXPECT_TRUE(tags["UserData:Keywords"].toString().contains("alpha"));

    const QList<MetadataItem> back = readMovieMetadata(output);
    EXPECT_EQ(valueOf(back, "uiso/loci"), "+48.8566+002.3522+035.000/");
    EXPECT_EQ(valueOf(back, "uiso/kywd"), "alpha,beta");
    const MetadataItem* keywords = findItem(back, "mdta/com.apple.quicktime.keywords");
    ASSERT_TRUE(keywords);
    EXPECT_EQ(keywords->value.toByteArray(), "sea,sun");
    EXPECT_EQ(keywords->language, "und");
    EXPECT_TRUE(findItem(back, "mdta/com.apple.quicktime.publisher"));
    EXPECT_FALSE(findItem(back, "id3/TIT2"));
}

// What the writers hand over for M4V outputs: common items as iTunes items,
// TIFF artwork as PNG, the 3GPP boxes named by their keys.
TEST(MovieRewriter, WriterItemsInTheirNativeForms) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    QTemporaryDir dir;
    const QString output = dir.filePath("out.m4v");
    MetadataItem keywords = item("uiso/kywd", "a,b");
    keywords.key = "keywords";
    MetadataItem date = item("uiso/date", "2020:01:02 03:04:05");
    date.identifier.clear();
    // Of the three places only the second is a location.
    // clang-format off
    const QList<MetadataItem> items{
        item("common/copyrights", "(c) Someone"), item("common/description", "About it"),
        item("common/artwork", noisePicture("TIFF", 16), "public.tiff"), keywords, date,
        item("uiso/loci", "north of here"), item("uiso/loci", "+12.5-3.25+"), item("uiso/loci", "+91+000+"),
        item("itsk/%A9ART", "First"), item("itsk/%A9ART", "Second"),
        item("udta/XTRA", QByteArray("\x00\x01raw", 5)), item("itsk/trkn", "3/9")};
    // clang-format on
    ASSERT_TRUE(rewriteMovieFile(request(trailingMoovClip(), output, items)).ok);

    const QList<MetadataItem> back = readMovieMetadata(output);
    EXPECT_EQ(valueOf(back, "itsk/cprt"), "(c) Someone");
    EXPECT_TRUE(findItem(back, "itsk/%A9des"));
    const MetadataItem* cover = findItem(back, "itsk/covr");
    ASSERT_TRUE(cover);
    EXPECT_EQ(cover->dataType, "public.png");
    EXPECT_FALSE(QImage::fromData(cover->value.toByteArray()).isNull());
    EXPECT_TRUE(findItem(back, "uiso/kywd"));
    EXPECT_EQ(valueOf(back, "uiso/date"), "2020:01:02 03:04:05");
    EXPECT_EQ(valueOf(back, "uiso/loci"), "+12.5000-003.2500+000.000/");
    ASSERT_TRUE(findItem(back, "udta/XTRA"));
    EXPECT_EQ(findItem(back, "udta/XTRA")->value.toByteArray(), QByteArray("\x00\x01raw", 5));
    EXPECT_EQ(countOf(back, "itsk/%A9ART") * 10 + countOf(back, "uiso/loci"), 21);
    const QJsonObject tags = exiftoolTags(output);
    EXPECT_EQ(tags["QuickTime:MajorBrand"].toString().left(3), "App");
    EXPECT_EQ(tags["QuickTime:CompatibleBrands"].toVariant().toStringList(),
              (QStringList{"M4V ", "M4A ", "mp42", "isom"}));
    EXPECT_EQ(exiftoolValidation(output).toStdString(), "OK");
    EXPECT_EQ(tags["ItemList:Copyright"].toString(), "(c) Someone");
    EXPECT_EQ(tags["ItemList:TrackNumber"].toString(), "3 of 9");
}

// Items a track's own metadata box holds stay with the track: rewriting the
// file with the list read from it (as the writers do) does not copy them
// into the movie's metadata, so they do not multiply from one save to the
// next.
TEST(MovieRewriter, TrackMetadataStaysWithTheTrack) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    // A source whose first track has a QuickTime metadata box.
    const QByteArray trackMeta =
        MetadataEncoder::encodeMovieMetadata(
            {item("mdta/com.apple.quicktime.camera.lens_model", "Lens")}, VideoFileType::MPEG4)
            .metadata;
    QTemporaryDir dir;
    const QString source = dir.filePath("source.mov");
    ASSERT_TRUE(writeClipWithTrackBox(source, "meta", trackMeta.mid(8)));
    QString path = source;
    for (int save = 0; save < 3; ++save) {
        const QString output = dir.filePath(QString("save%1.mov").arg(save));
        QList<MetadataItem> items = readMovieMetadata(path);
        items.prepend(item("itsk/%A9nam", QString("Save %1").arg(save)));
        ASSERT_TRUE(rewriteMovieFile(request(path, output, items)).ok);
        path = output;
    }
    EXPECT_EQ(countOf(readMovieMetadata(path), "mdta/com.apple.quicktime.camera.lens_model"), 1);
    EXPECT_EQ(streamChecksums(path).toStdString(), streamChecksums(source).toStdString());
}

// The location strip takes the location boxes out of a track's user data and
// keeps the track's other boxes as they are.
TEST(MovieRewriter, TrackLocationsGoWithTheStrip) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    const auto text = [](QByteArrayView type, QByteArrayView value) {
        QByteArray entry;
        Bmff::appendU16(entry, quint16(value.size()));
        Bmff::appendU16(entry, 0x15c7);  // "eng"
        return Bmff::makeBox(type, entry + value.toByteArray());
    };
    const QByteArray title = text("\xA9nam", "Track title");
    QTemporaryDir dir;
    const QString source = dir.filePath("source.mov");
    const QString output = dir.filePath("output.mov");
    ASSERT_TRUE(writeClipWithTrackBox(
        source, "udta", text("\xA9xyz", "+48.8+002.3/") + title + Bmff::makeBox("loci", "x")));

    PassthroughExport strip = request(source, output, {});
    strip.dropTrackLocations = true;
    ASSERT_TRUE(rewriteMovieFile(strip).ok);
    const QByteArray written = readFile(output);
    EXPECT_FALSE(written.contains("\xA9xyz"));
    EXPECT_FALSE(written.contains("loci"));
    EXPECT_TRUE(written.contains("udta" + title));
    EXPECT_EQ(compareChunks(source, output).toStdString(), "");
}

// An encrypted track keeps its per-sample auxiliary information (the
// initialisation vectors) in the sample table, addressed by file offsets
// that point into the movie box itself; they follow the box when the
// metadata before it grows.
TEST(MovieRewriter, EncryptedTrackStillDecrypts) {
    if (!haveTools()) GTEST_SKIP() << "needs ffmpeg and exiftool";
    const QString key = "76a6c65c5ea762046bd749a2e632ccbb";
    const QString encrypted = ffmpegFixture(
        "rewriter-encrypted.mp4",
        QStringList{"-i", faststartClip()} +
            words("-map 0 -c copy -encryption_scheme cenc-aes-ctr -encryption_key " + key +
                  " -encryption_kid a7e61c373e219033c21091fa607bf3b8 -movflags +faststart"));
    ASSERT_FALSE(encrypted.isEmpty()) << lastToolOutput().toStdString();
    QTemporaryDir dir;
    const QString output = dir.filePath("out.mp4");
    const RewriteResult result = rewriteMovieFile(
        request(encrypted, output,
                {item("itsk/%A9nam", "Sealed"), item("itsk/covr", noisePicture("PNG", 200))},
                VideoFileType::MPEG4));
    ASSERT_TRUE(result.ok) << result.reason.toStdString();
    const auto decoded = [&](const QString& path) {
        QProcess p;
        p.start("ffmpeg", QStringList{"-v", "error", "-decryption_key", key, "-i", path} +
                              words("-map 0:V -map 0:a -f framemd5 -"));
        p.waitForFinished(120000);
        return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray("failed");
    };
    const QByteArray expected = decoded(encrypted);
    ASSERT_GT(expected.count('\n'), 50);
    EXPECT_EQ(decoded(output), expected);
    EXPECT_EQ(compareChunks(encrypted, output).toStdString(), "");
}

// A QuickTime text under a Macintosh language code holds Mac Roman bytes:
// kept as they are while untouched; a changed text goes back in Mac Roman
// when it fits, else as UTF-8 under a packed language; every reader agrees.
TEST(MovieRewriter, MacintoshTextsKeepTheirEncoding) {
    if (!haveTools() || !haveTool("ffprobe")) GTEST_SKIP() << "needs ffmpeg and exiftool";
    const QString clip = trailingMoovClip();
    ASSERT_FALSE(clip.isEmpty());
    QTemporaryDir dir;
    // The source's album as an older QuickTime tool stored it: Mac Roman
    // under language code 0, put in place by our own writer.
    const QByteArray stored = QByteArray("\x00\x0c\x00\x00", 4) + "Caf\x8e \xa5 Paris";
    MetadataItem album = item("udta/%A9alb", "Café • Paris", "", "eng");
    album.origin.form = MetadataOrigin::Form::TextEntry;
    album.origin.prefix = stored;
    album.origin.identifier = album.identifier;
    album.origin.value = album.value;
    album.origin.language = album.language;
    const QString source = dir.filePath("source.mov");
    ASSERT_TRUE(rewriteMovieFile(request(clip, source, {album}, VideoFileType::QuickTimeMovie)).ok);
    const QList<MetadataItem> read = readMovieMetadata(source);
    ASSERT_EQ(identifiers(read), QStringList{"udta/%A9alb"});
    EXPECT_EQ(read[0].value.toString(), "Café • Paris");

    const struct {
        const char* text;
        QByteArray entry;  // length, language, text as written
    } cases[] = {
        {"Café • Paris", stored},
        {"Crème brûlée", QByteArray("\x00\x0c\x00\x00", 4) + "Cr\x8fme br\x9el\x8e"
                                                             "e"},
        {"Café 東京", QByteArray("\x00\x0c\x15\xc7", 4) + QString("Café 東京").toUtf8()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        QList<MetadataItem> items = read;
        items[0].value = QString::fromUtf8(c.text);
        const QString output = dir.filePath("out.mov");
        ASSERT_TRUE(
            rewriteMovieFile(request(source, output, items, VideoFileType::QuickTimeMovie)).ok);
        EXPECT_TRUE(readFile(output).contains("\251alb" + c.entry));
        EXPECT_EQ(exiftoolTags(output)["UserData:Album"].toString(), QString::fromUtf8(c.text));
        ASSERT_TRUE(runTool("ffprobe", {"-v", "error", "-show_entries", "format_tags=album", "-of",
                                        "default=nw=1:nk=1", output}));
        EXPECT_EQ(lastToolOutput().trimmed(), QString::fromUtf8(c.text));
        EXPECT_EQ(valueOf(readMovieMetadata(output), "udta/%A9alb"), QString::fromUtf8(c.text));
    }
}
