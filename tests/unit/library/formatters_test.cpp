#include <gtest/gtest.h>

#include "core/library/formatters.h"
#include "core/library/media_kinds.h"

TEST(SizeText, UnitBoundaries) {
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(999), "999 bytes");
    EXPECT_EQ(sizeText(1000), "1.00 KB");
    EXPECT_EQ(sizeText(999999), "1000.00 KB");  // stays in its branch, rounds up in print
    EXPECT_EQ(sizeText(1000000), "1.00 MB");
    EXPECT_EQ(sizeText(1530000), "1.53 MB");
    // Single precision: 999,999,999 becomes 1e9 as a float and stays "MB".
    EXPECT_EQ(sizeText(999999999), "1000.00 MB");
    EXPECT_EQ(sizeText(1000000000), "1.00 GB");
    EXPECT_EQ(sizeText(1000000000000), "1.00 TB");
    EXPECT_EQ(sizeText(2500000000000000), "2500.00 TB");
}

TEST(SizeText, WritesIntoCallersBuffer) {
    char buffer[100] = {};
    char* out = size_to_unit(12345, buffer);
    EXPECT_EQ(out, buffer);
    EXPECT_STREQ(buffer, "12.35 KB");
}

TEST(SizeFormString, UnitIsTheLastCharacter) {
    EXPECT_EQ(sizeFormString(""), 0u);
    EXPECT_EQ(sizeFormString("1.53M"), 1530000u);
    EXPECT_EQ(sizeFormString("12.5K"), 12500u);
    EXPECT_EQ(sizeFormString("3G"), 3000000000u);
    EXPECT_EQ(sizeFormString("7B"), 7u);
    // The program's own texts: "KB"/"MB" end in B and read as the bare number.
    EXPECT_EQ(sizeFormString("1.53 MB"), 1u);
    EXPECT_EQ(sizeFormString("12.00 KB"), 12u);
    // "bytes" ends in "s", which counts as tera.
    EXPECT_EQ(sizeFormString("12 bytes"), 12000000000000u);
    EXPECT_EQ(sizeFormString("512 bytes"), 512000000000000u);
    // Units are case-sensitive: "k" is not "K".
    EXPECT_EQ(sizeFormString("2k"), 2000000000000u);
    // No number reads 0; a negative number does not wrap around.
    EXPECT_EQ(sizeFormString("MB"), 0u);
    EXPECT_EQ(sizeFormString("-5K"), 0u);
}

TEST(MediaDuration, NoPadding) {
    EXPECT_EQ(getMediaDuration(0), "0s");
    EXPECT_EQ(getMediaDuration(59), "59s");
    EXPECT_EQ(getMediaDuration(60), "1m:0s");
    EXPECT_EQ(getMediaDuration(3599), "59m:59s");
    EXPECT_EQ(getMediaDuration(3600), "1h:0m:0s");
    EXPECT_EQ(getMediaDuration(3725), "1h:2m:5s");
    EXPECT_EQ(getMediaDuration(90061), "25h:1m:1s");
}

TEST(MediaKinds, LookupsIgnoreCaseAndAnswerIndexes) {
    EXPECT_GE(GetViedoType("Mp4"), 0);
    EXPECT_EQ(GetViedoType("mp4"), GetViedoType("MP4"));
    EXPECT_EQ(GetViedoType("HEVC"), 0);
    EXPECT_EQ(GetViedoType("YUV"), 55);  // last of 56
    EXPECT_GE(GetViedoType("dvr-ms"), 0);
    EXPECT_EQ(GetViedoType("DVRMS"), -1);
    EXPECT_EQ(GetViedoType(nullptr), -1);
    EXPECT_EQ(GetViedoType(""), -1);
    EXPECT_EQ(GetAudioType("OPUS"), 0);
    EXPECT_EQ(GetAudioType("ptf"), 41);  // last of 42
    EXPECT_EQ(GetImageType("dng"), 0);
    EXPECT_EQ(GetImageType("orf"), 8);
    EXPECT_EQ(GetImageType("jpg"), -1);
    EXPECT_EQ(GetDragImageType("heic"), 0);
    EXPECT_EQ(GetDragImageType("XPS"), 141);  // last of 142
    // Duplicates are harmless: the first one answers.
    EXPECT_EQ(GetDragImageType("CDR"), 17);
    // The audio and video lists share no entry.
    for (const char* ext : {"MP4", "MOV", "MKV", "M4V", "AVI", "TS"})
        EXPECT_EQ(GetAudioType(ext), -1) << ext;
    for (const char* ext : {"MP3", "M4A", "WAV", "FLAC", "CAF", "AIFF"})
        EXPECT_EQ(GetViedoType(ext), -1) << ext;
}

TEST(MediaKinds, PathExtensions) {
    EXPECT_TRUE(isVideoPath("/x/clip.MOV"));
    EXPECT_TRUE(isAudioPath("/x/song.Flac"));
    EXPECT_FALSE(isVideoPath("/x/noext"));
    EXPECT_FALSE(isVideoPath("/x/dir.mov/noext"));  // the dot of a folder does not count
    EXPECT_TRUE(isVideoPath("/x/.hidden.mp4"));
    EXPECT_FALSE(isVideoPath("/x/trailingdot."));
    EXPECT_TRUE(isImagePath("a.JPG"));
}

TEST(MediaKinds, AudioReaderRouting) {
    EXPECT_EQ(audioReaderForExtension("wav"), AudioReader::Wav);
    EXPECT_EQ(audioReaderForExtension("Flac"), AudioReader::Wav);
    EXPECT_EQ(audioReaderForExtension("AU"), AudioReader::Wav);
    EXPECT_EQ(audioReaderForExtension("aif"), AudioReader::Aiff);
    EXPECT_EQ(audioReaderForExtension("AIFF"), AudioReader::Aiff);
    for (const char* ext : {"mp3", "m4a", "ogg", "wma", "caf"}) {
        EXPECT_EQ(audioReaderForExtension(QString::fromLatin1(ext)), AudioReader::Mp3) << ext;
    }
}
