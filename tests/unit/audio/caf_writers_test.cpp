// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/common/file_dates.h"
#include "support/audio_writer_fixture.h"
#include "support/media_fixtures.h"

namespace {

using CafWriters = AudioWriterTest;

// Both writers put the changed values into a CAF info chunk, keep the other
// tags and the audio, and say which values a CAF file has no place for.
TEST_F(CafWriters, CopiesCarryTheNewValues) {
    const QString tags = "-f lavfi -i sine=d=1 -metadata title=Old -metadata artist=Art ";
    const QString aiff = ffmpegFixture("caf-src.aiff", words(tags + "-c:a pcm_s16be"));
    const QString caf = ffmpegFixture("caf-src.caf", words(tags + "-c:a pcm_s16le"));
    ASSERT_FALSE(aiff.isEmpty() || caf.isEmpty()) << lastToolOutput().toStdString();
    AudioEditorState e;
    e.titlelab = "New", e.ablumAristlab = "3", e.recordDatelab = "2020:01:02 03:04:05";
    e.publishlab = "Label", e.basicInfoChange = e.cameraInfoChange = true;
    // The CAF save never writes the track number; an AIFF keeps only its title chunk.
    const struct {
        const char* name;
        decltype(&SaveChangedCAFAuidoExifItem) write;
        QString source;
        const char *track, *artist;
    } cases[] = {
        {"AIFF export", writeAiffAuidoMetadatawithFileItem, aiff, "3", ""},
        {"CAF save", SaveChangedCAFAuidoExifItem, caf, "", "Art"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AudioWriteResult r = c.write(audioAt(c.source), e, storage, batch);
        ASSERT_TRUE(r.ok()) << r.reason.toStdString();
        EXPECT_EQ(QFileInfo(r.outputPath).fileName(), QFileInfo(c.source).fileName());
        EXPECT_EQ(r.note, "a CAF file has no place for the publisher");
        const QJsonObject tags = probedTags(r.outputPath)["tags"].toObject();  // read as CAF
        EXPECT_EQ(tags["title"].toString(), "New");
        EXPECT_EQ(tags["artist"].toString(), c.artist);
        EXPECT_EQ(tags["track number"].toString(), c.track);
        EXPECT_EQ(tags["recorded date"].toString(), "2020:01:02 03:04:05");
        EXPECT_EQ(hashesOf(r.outputPath, true), hashesOf(c.source, true));
        EXPECT_EQ(readFileDates(r.outputPath).modification, readFileDates(c.source).modification);
    }
}

// A damaged CAF still gets its unchanged copy, and the result says why the
// values are not in it.
TEST_F(CafWriters, DamagedCafStillGetsAnUnchangedCopy) {
    const QString damaged = dir.filePath("cut.caf");
    writeFile(damaged, QByteArray("caff\0\1\0\0desc\0\0\0\0\0\0\0\x20", 20) + "short");
    AudioEditorState e;
    e.titlelab = "New";
    const AudioWriteResult r = SaveChangedCAFAuidoExifItem(audioAt(damaged), e, storage, batch);
    EXPECT_FALSE(r.ok());
    EXPECT_EQ(r.reason, "the file is a damaged or unknown CAF file");
    EXPECT_EQ(readFile(r.outputPath), readFile(damaged));
}

}  // namespace
