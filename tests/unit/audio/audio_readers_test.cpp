// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "audio_fixtures.h"
#include "core/audio/id3_frames.h"
#include "core/import/media_import.h"
#include "library/ffmpeg_open_count.h"
#include "media_fixtures.h"

namespace {

using Maker = QString (*)();

struct ReaderCase {
    const char* name;  // the file's name in the import: its extension routes it
    Maker make;
    QString title, artist, trackBox, year, shootDateStr;
    bool picture;
    QString identifier;  // one item the All Tags list shows
};

QString mp3v23() {
    return audiofix::mp3(3);
}
// A FLAC file with an ID3v2 tag in front, as some taggers leave them.
QString flacAfterId3() {
    const QString path = fixtureDir() + QStringLiteral("/id3-front.flac");
    const QByteArray mp3 = readFile(mp3v23());
    writeFile(path, mp3.left(id3v2TagSize(mp3)) + readFile(audiofix::flac()));
    return path;
}

class AudioReaders : public ::testing::Test {
protected:
    QString place(const ReaderCase& c) {
        const QString made = c.make();
        const QString path = dir.path() + QLatin1Char('/') + QLatin1String(c.name);
        EXPECT_FALSE(made.isEmpty()) << lastToolOutput().toStdString();
        QFile::copy(made, path);
        return path;
    }
    QTemporaryDir dir;
};

TEST_F(AudioReaders, EachContainerFillsTheFieldsOfItsTable) {
    const QString title = QString::fromUtf8(audiofix::kTitle);
    const QString date = QStringLiteral("2019-05-03 10:20:30");
    const ReaderCase cases[] = {
        {"v23.mp3", mp3v23, title, "Artist", "7", "2019", date, true, "id3/TYER"},
        // v2.4 keeps the year in TDRC and TRDA in a user text: neither is in the table.
        {"v24.mp3", +[] { return audiofix::mp3(4); }, title, "Artist", "7", "", "", true,
         "id3/TDRC"},
        {"info.wav", audiofix::wav, "WavT", "A", "4", "", date, true, "id3/TYER"},
        {"vorbis.flac", audiofix::flac, "FlacT", "", "5", "2018", "", true, "vorbis/TITLE"},
        {"chunk.aiff", audiofix::aiff, "AifT", "", "", "", date, false, "id3/TRDA"},
        // The AIFF writer's output: a CAF container under an .aiff name.
        {"caf-inside.aiff", audiofix::caf, title, "Artist", "", "", "", false, "caaf/info-title"},
        // CAF goes to the MP3 reader, whose table has no CAF identifiers.
        {"info.caf", audiofix::caf, "", "", "", "", "", false, "caaf/info-artist"},
        {"itunes.m4a", audiofix::m4a, "M4aT", "", "3/9", "2017", "", false, "itsk/%A9nam"},
        {"tone.au", audiofix::au, "", "", "", "", "", false, ""},
    };
    for (const ReaderCase& c : cases) {
        SCOPED_TRACE(c.name);
        const QString path = place(c);
        const int probes = ffmpegOpenCount();
        const IKImageItemPtr item = MediaImporter::importFile(path, false);
        ASSERT_TRUE(item);
        // The sound's facts come from the headers; FFmpeg is not asked.
        EXPECT_EQ(ffmpegOpenCount(), probes);
        EXPECT_EQ(item->fileSampleRate + ' ' + item->fileChannels,
                  QLatin1String(c.name) == "tone.au" ? "8000 Hz 1" : "22050 Hz 1");
        EXPECT_EQ(item->fileTitle, c.title);
        EXPECT_EQ(item->fileArist, c.artist);
        EXPECT_EQ(item->fileAlbumArist, c.trackBox);
        EXPECT_EQ(item->fileReleasedYear, c.year);
        EXPECT_EQ(item->shootDateStr, c.shootDateStr);
        EXPECT_EQ(item->shootDate.isValid(), !c.shootDateStr.isEmpty());
        EXPECT_EQ(!item->fileImage.isNull(), c.picture);
        EXPECT_TRUE(item->fileReadProblem.isEmpty()) << item->fileReadProblem.toStdString();
        EXPECT_GT(item->fileduration, 0.1);
        QStringList ids;
        for (const MetadataItem& m : item->fileMetaArray) ids << m.identifier;
        EXPECT_TRUE(c.identifier.isEmpty() || ids.contains(c.identifier))
            << ids.join(u' ').toStdString();
        // The writers' record has the same tags without opening the file as media.
        const int opens = ffmpegOpenCount();
        const IKImageItemPtr forWriting = MediaImporter::importFileForWriting(item->filePath);
        EXPECT_EQ(ffmpegOpenCount(), opens);
        EXPECT_EQ(forWriting->fileTitle + forWriting->fileAlbumArist, c.title + c.trackBox);
        EXPECT_EQ(forWriting->fileMetaArray.size(), item->fileMetaArray.size());
        EXPECT_TRUE(forWriting->fileReadProblem.isEmpty());
    }
}

// Cut, emptied and foreign files are still listed, with their file facts.
TEST_F(AudioReaders, DamagedFilesAreListedWithTheirFileFacts) {
    const struct {
        const char* name;
        Maker make;
        qsizetype keep;  // bytes kept; -1 keeps half
    } cases[] = {
        {"half.mp3", mp3v23, -1},
        {"head.mp3", +[] { return audiofix::mp3(4); }, 100},
        {"half.wav", audiofix::wav, -1},
        {"head.flac", audiofix::flac, 60},
        {"half.aiff", audiofix::aiff, -1},
        {"head.caf", audiofix::caf, 70},
        {"half.m4a", audiofix::m4a, -1},
        {"empty.wav", audiofix::wav, 0},
        {"id3-front.flac", flacAfterId3, 1 << 20},
        {"png.mp3", audiofix::coverPng, 1 << 20},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QByteArray full = readFile(c.make());
        const QString path = dir.path() + QLatin1Char('/') + QLatin1String(c.name);
        ASSERT_TRUE(writeFile(path, full.left(c.keep < 0 ? full.size() / 2 : c.keep)));
        const IKImageItemPtr item = MediaImporter::importFile(path, true);
        ASSERT_TRUE(item);
        EXPECT_EQ(item->fileName, QLatin1String(c.name));
        EXPECT_FALSE(item->fileSize.isEmpty());
        if (c.keep == 0) {
            EXPECT_FALSE(item->fileReadProblem.isEmpty());
        }
    }
}

}  // namespace
