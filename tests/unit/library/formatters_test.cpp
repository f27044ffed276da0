// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/library/formatters.h"
#include "core/library/info_block.h"
#include "core/library/media_kinds.h"

TEST(SizeText, UnitBoundaries) {
    // 999999 stays in its branch and rounds up in print; single precision makes
    // 999,999,999 1e9 as a float, which stays "MB".
    // clang-format off
    const std::pair<qint64, const char*> cases[] = {
        {0, "0 bytes"}, {999, "999 bytes"}, {1000, "1.00 KB"}, {999999, "1000.00 KB"},
        {1000000, "1.00 MB"}, {1530000, "1.53 MB"}, {999999999, "1000.00 MB"},
        {1000000000, "1.00 GB"}, {1000000000000, "1.00 TB"}, {2500000000000000, "2500.00 TB"}};
    // clang-format on
    for (const auto& [bytes, text] : cases) EXPECT_EQ(sizeText(bytes), text) << bytes;
    char buffer[100] = {};
    EXPECT_EQ(size_to_unit(12345, buffer), buffer);  // writes into the caller's buffer
    EXPECT_STREQ(buffer, "12.35 KB");
}

TEST(SizeFormString, UnitIsTheLastCharacter) {
    // The program's own texts: "KB"/"MB" end in B and read as the bare number;
    // "bytes" ends in "s", which counts as tera; "k" is not "K"; no number reads
    // 0 and a negative one does not wrap around.
    // clang-format off
    const std::pair<const char*, quint64> cases[] = {
        {"", 0u}, {"1.53M", 1530000u}, {"12.5K", 12500u}, {"3G", 3000000000u}, {"7B", 7u},
        {"1.53 MB", 1u}, {"12.00 KB", 12u}, {"12 bytes", 12000000000000u},
        {"512 bytes", 512000000000000u}, {"2k", 2000000000000u}, {"MB", 0u}, {"-5K", 0u}};
    // clang-format on
    for (const auto& [text, bytes] : cases) EXPECT_EQ(sizeFormString(text), bytes) << text;
}

TEST(MediaDuration, NoPadding) {
    // clang-format off
    const std::pair<int, const char*> cases[] = {
        {0, "0s"}, {59, "59s"}, {60, "1m:0s"}, {3599, "59m:59s"}, {3600, "1h:0m:0s"},
        {3725, "1h:2m:5s"}, {90061, "25h:1m:1s"}};
    // clang-format on
    for (const auto& [seconds, text] : cases) EXPECT_EQ(getMediaDuration(seconds), text);
    // The player's whole seconds: narrowed to single precision before truncation.
    EXPECT_EQ(playerWholeSeconds(59.9999999), 60);
    EXPECT_EQ(playerWholeSeconds(59.5), 59);
}

// Only "is it listed" matters to the program: the first and last entry of
// each list are found in any case, the audio and video lists share no entry.
TEST(MediaKinds, ListsFindTheirEntriesInAnyCase) {
    for (const char* ext : {"HEVC", "Mp4", "mp4", "dvr-ms", "YUV"}) EXPECT_GE(GetViedoType(ext), 0);
    for (const char* ext : {"OPUS", "ptf"}) EXPECT_GE(GetAudioType(ext), 0) << ext;
    for (const char* ext : {"dng", "orf"}) EXPECT_GE(GetImageType(ext), 0) << ext;
    for (const char* ext : {"heic", "XPS", "CDR"}) EXPECT_GE(GetDragImageType(ext), 0) << ext;
    for (const char* ext : {"DVRMS", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(GetViedoType(ext), -1);
    EXPECT_EQ(GetImageType("jpg"), -1);
    for (const char* ext : {"MP4", "MOV", "MKV", "M4V", "AVI", "TS"})
        EXPECT_EQ(GetAudioType(ext), -1) << ext;
    for (const char* ext : {"MP3", "M4A", "WAV", "FLAC", "CAF", "AIFF"})
        EXPECT_EQ(GetViedoType(ext), -1) << ext;
}

TEST(MediaKinds, PathExtensionsAndAudioReaders) {
    EXPECT_TRUE(isVideoPath("/x/clip.MOV") && isVideoPath("/x/.hidden.mp4"));
    EXPECT_TRUE(isAudioPath("/x/song.Flac") && isImagePath("a.JPG"));
    EXPECT_FALSE(isVideoPath("/x/noext"));
    EXPECT_FALSE(isVideoPath("/x/dir.mov/noext"));  // the dot of a folder does not count
    EXPECT_FALSE(isVideoPath("/x/trailingdot."));
    // clang-format off
    const std::pair<const char*, AudioReader> readers[] = {
        {"wav", AudioReader::Wav}, {"Flac", AudioReader::Wav}, {"AU", AudioReader::Wav},
        {"aif", AudioReader::Aiff}, {"AIFF", AudioReader::Aiff}, {"mp3", AudioReader::Mp3},
        {"m4a", AudioReader::Mp3}, {"ogg", AudioReader::Mp3}, {"wma", AudioReader::Mp3},
        {"caf", AudioReader::Mp3}};
    // clang-format on
    for (const auto& [ext, reader] : readers)
        EXPECT_EQ(audioReaderForExtension(QString::fromLatin1(ext)), reader) << ext;
}
