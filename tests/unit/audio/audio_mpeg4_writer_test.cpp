// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/video/movie_metadata_reader.h"
#include "support/audio_writer_fixture.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"

namespace {

using Values = QMap<QString, std::string>;  // identifier → value as text

Values valuesOf(const QList<MetadataItem>& items) {
    Values out;
    for (const MetadataItem& i : items) out.insert(i.identifier, i.value.toString().toStdString());
    return out;
}

class AudioMpeg4Writer : public AudioWriterTest {
protected:
    // An AAC file with iTunes items, a PNG cover and a QuickTime creation date.
    static QString taggedM4a() {
        const QString cover =
            ffmpegFixture("m4a-cover.png", words("-f lavfi -i color=red:s=32x32 -frames:v 1"));
        const QString plain = ffmpegFixture(
            "m4a-plain.m4a",
            words("-f lavfi -i sine=d=1 -i") + QStringList{cover} +
                words("-map 0 -map 1 -c:a aac -c:v copy -disposition:v attached_pic "
                      "-metadata title=Old -metadata artist=Art -metadata comment=Keep "
                      "-metadata date=2001"));
        return exiftoolFixture("m4a-tagged.m4a", plain, {"-Keys:CreationDate=2019:05:03 10:20:30"});
    }
};

// A save writes the changed fields and keeps every other item as it was,
// the cover's bytes included; the audio samples are the source's own.
TEST_F(AudioMpeg4Writer, SaveWritesTheChangedFieldsOnly) {
    const QString source = taggedM4a();
    const Values before = valuesOf(readMovieMetadata(source));
    const struct {  // an edit and the items it changes ("": the item is gone)
        const char* name;
        void (*edit)(AudioEditorState&);
        Values changed;
    } cases[] = {
        {"title only",
         [](AudioEditorState& e) { e.titlelab = "New title", e.basicInfoChange = true; },
         {{"itsk/%A9nam", "New title"}}},
        {"record date and release year are separate fields",
         [](AudioEditorState& e) {
             e.recordDatelab = "2020:01:02 03:04:05", e.releaseYearlab = "2020";
             e.cameraInfoChange = true;
         },
         {{"mdta/com.apple.quicktime.creationdate", "2020:01:02 03:04:05"},
          {"itsk/%A9day", "2020"}}},
        {"an emptied field is removed; the band has no place and changes nothing",
         [](AudioEditorState& e) {
             e.commentslab = "", e.oldCommentStr = "Keep", e.bandlab = "Band";
             e.cameraInfoChange = true;
         },
         {{"itsk/%A9cmt", ""}}},
        {"a field edited without its group flag is not written",
         [](AudioEditorState& e) { e.titlelab = "Ignored"; },
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AudioEditorState editor;
        c.edit(editor);
        const AudioWriteResult r =
            SaveChangedAuidoExifDateItem(audioAt(source), editor, storage, batch);
        ASSERT_TRUE(r.ok()) << r.reason.toStdString();
        Values expected = before;
        for (const auto& [id, value] : c.changed.asKeyValueRange())
            value.empty() ? void(expected.remove(id)) : void(expected.insert(id, value));
        EXPECT_EQ(valuesOf(readMovieMetadata(r.outputPath)), expected);
        EXPECT_EQ(hashesOf(r.outputPath), hashesOf(source));
    }
}

TEST_F(AudioMpeg4Writer, ChangedCoverIsStoredAsPngAndRemovalLeavesAudioAlone) {
    const QString source = taggedM4a();
    AudioEditorState editor;
    editor.imageChanged = true, editor.imageIsPlaceholder = false;
    QImage blue(8, 8, QImage::Format_ARGB32);
    blue.fill(Qt::blue);
    editor.audioArtImage = blue;
    const AudioWriteResult saved =
        SaveChangedAuidoExifDateItem(audioAt(source), editor, storage, batch);
    ASSERT_TRUE(saved.ok()) << saved.reason.toStdString();
    const QByteArray cover = exiftoolBinary(saved.outputPath, "ItemList:CoverArt");
    EXPECT_TRUE(cover.startsWith("\x89PNG") && QImage::fromData(cover).pixel(0, 0) == 0xff0000ff);

    const AudioWriteResult removed = RemoveAuidoExifDateItem(audioAt(source), storage, batch);
    ASSERT_TRUE(removed.ok()) << removed.reason.toStdString();
    EXPECT_TRUE(readMovieMetadata(removed.outputPath).isEmpty());
    EXPECT_EQ(hashesOf(removed.outputPath), hashesOf(source));
}

// The date stamp writes and dates the copy with its date; a reload keeps the cover.
TEST_F(AudioMpeg4Writer, DateStampAndReload) {
    const QString source = taggedM4a(), date = "2022:02:02 02:02:02";
    const AudioWriteResult stamped =
        SetAuidoExifDateItem(audioAt(source), date, {}, storage, batch);
    const AudioWriteResult reloaded = ReloadChangedAuidoExifDateItem(
        audioAt(source), {{"Title", "R"}, {"Album", ""}}, {}, storage, batch);
    ASSERT_TRUE(stamped.ok() && reloaded.ok());
    EXPECT_EQ(
        valuesOf(readMovieMetadata(stamped.outputPath))["mdta/com.apple.quicktime.creationdate"],
        date.toStdString());
    EXPECT_EQ(readFileDates(stamped.outputPath).modification, dateFromText(date));
    const Values items = valuesOf(readMovieMetadata(reloaded.outputPath));
    EXPECT_TRUE(items["itsk/%A9nam"] == "R" && items.contains("itsk/covr"));
}

// Other (and fragmented) files are re-packed with their tags where the codec
// can live in MPEG-4 audio; otherwise nothing is written and the reason says why.
TEST_F(AudioMpeg4Writer, OtherFilesAreRepackedOrRefused) {
    const struct {  // `decoded`: ADTS headers are dropped; `refusal` "": it can be written
        const char *name, *codec;
        bool decoded;
        const char* refusal;
    } cases[] = {
        {"song-id3.aac", "aac -write_id3v2 1", true, ""},
        {"song.opus", "libopus", false, ""},
        {"song-frag.m4a", "aac -movflags +frag_keyframe+empty_moov", false, ""},
        {"song.wav", "pcm_s16le", false,
         "WAV audio (PCM) cannot be stored in an MPEG-4 audio file"},
        {"song.ogg", "libvorbis", false,
         "Ogg audio (Vorbis) cannot be stored in an MPEG-4 audio file"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QString source = ffmpegFixture(
            QStringLiteral("other-") + c.name,
            words(
                QStringLiteral("-f lavfi -i sine=d=1 -metadata title=Kept -c:a %1").arg(c.codec)));
        AudioEditorState editor;
        editor.artistlab = "New artist", editor.basicInfoChange = true;
        const AudioWriteResult r =
            SaveChangedAuidoExifDateItem(audioAt(source), editor, storage, batch);
        EXPECT_EQ(r.reason.toStdString(), c.refusal);
        if (*c.refusal) continue;
        EXPECT_EQ(readFile(r.outputPath).mid(4, 8), QByteArray("ftypM4A "));
        const Values items = valuesOf(readMovieMetadata(r.outputPath));
        EXPECT_EQ(items.value("itsk/%A9nam"), "Kept");
        EXPECT_EQ(items.value("itsk/%A9ART"), "New artist");
        EXPECT_EQ(hashesOf(r.outputPath, c.decoded), hashesOf(source, c.decoded));
    }
    // Three outputs; neither a refused file nor a temporary one is left behind.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

}  // namespace
