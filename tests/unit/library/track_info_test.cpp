// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QStringList>

#include "core/library/track_info.h"

namespace {

TrackDescription track(const QByteArray& code, double a = 1, double b = 0, double c = 0,
                       double d = 1) {
    TrackDescription t;
    t.present = true;
    t.codecCode = code;
    t.a = a;
    t.b = b;
    t.c = c;
    t.d = d;
    t.tx = 17;  // translations never matter
    return t;
}

TEST(TrackOperations, CodecNamesKeepUnlistedCodesAsTheirFourCharacters) {
    struct Case {
        QByteArray code;
        const char* video;
        const char* audio;
        const char* mode;
    };
    // clang-format off
    const Case cases[] = {
        {"avc1", "H.264", "avc1", "Unknown"}, {"hvc1", "HEVC", "hvc1", "Unknown"},
        {"ap4h", "Apple ProRes 4444", "ap4h", "Unknown"}, {"avc3", "avc3", "avc3", "Unknown"},
        {"aac ", "aac ", "AAC", "Lossy"}, {"aace", "aace", "AAC ELD", "Unknown"},
        {".mp3", ".mp3", "MP3", "Lossy"}, {"ac-3", "ac-3", "AC-3", "Lossy"},
        {"alac", "alac", "Apple Lossless", "Lossy"}, {"opus", "opus", "opus", "Lossy"},
        {"ec-3", "ec-3", "ec-3", "Lossy"}, {"cac3", "cac3", "E-AC-3", "Unknown"},
        {"lpcm", "lpcm", "Linear PCM", "Lossless"}, {"flac", "flac", "flac", "Unknown"}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code.constData());
        EXPECT_EQ(videoencodeFormat(track(c.code)), c.video);
        EXPECT_EQ(audioEncodeFormat(track(c.code)), c.audio);
        EXPECT_EQ(GetAuidoCompressMode(track(c.code)), c.mode);
    }
    // High bytes are Mac Roman: 0xA9 is the copyright sign.
    EXPECT_EQ(mediaSubTypeString(track("\xA9xyz")), QString::fromUtf8("©xyz"));
}

TEST(TrackOperations, MissingDescriptionAnswersUnknownOrZero) {
    TrackDescription bare;
    bare.present = true;  // a track without a format description
    for (const TrackDescription& t : {bare, TrackDescription{}}) {
        for (const QString& text :
             {mediaSubTypeString(t), videoencodeFormat(t), audioEncodeFormat(t), colorPrimaries(t),
              chromaSubsampling(t), GetAudioSamplingRate(t), GetAuidoFramRate(t),
              GetAuidoCompressMode(t)})
            EXPECT_EQ(text, "Unknown");
        EXPECT_EQ(bitDepth(t), 0);
    }
    EXPECT_EQ(currentScales(TrackDescription{}), std::make_pair(0.0, 0.0));
    EXPECT_EQ(rotation(TrackDescription{}), 0);
}

TEST(TrackOperations, BitDepthOnlyForPowersOfTwoUpTo32) {
    TrackDescription t = track("avc1");
    for (int bits : {1, 2, 4, 8, 16, 24, 32, 0, 10, 12, 64}) {
        t.bitsPerSample = bits;
        EXPECT_EQ(bitDepth(t), (QList<int>{0, 10, 12, 64}.contains(bits) ? 0 : bits)) << bits;
    }
}

TEST(TrackOperations, RotationOnlyForExactQuarterTurns) {
    EXPECT_EQ(rotation(track("avc1", 0, 1, -1, 0)), 90);
    EXPECT_EQ(rotation(track("avc1", 0, -1, 1, 0)), 270);
    EXPECT_EQ(rotation(track("avc1", -1, 0, 0, -1)), 180);
    EXPECT_EQ(rotation(track("avc1", 0, 1.0000001, -1, 0)), 0);
    EXPECT_EQ(rotation(track("avc1", 0.5, 0, 0, 0.5)), 0);
    EXPECT_EQ(currentScales(track("avc1", 0.5, 0, 0, 0.5)), std::make_pair(0.5, 0.5));
    EXPECT_EQ(currentScales(track("avc1", 0, 2, -3, 0)), std::make_pair(3.0, 2.0));
}

TEST(TrackOperations, AspectRatioReducesTheTruncatedSize) {
    TrackDescription t = track("avc1");
    for (const auto& [w, h, text] : {std::tuple{1920.0, 1080.0, "16:9"},
                                     {1080.0, 1920.0, "9:16"},
                                     {1920.7, 1080.2, "16:9"},
                                     {1001.0, 1000.0, "1001:1000"},
                                     {0.0, 1080.0, "Unknown"},
                                     {1920.0, 0.0, "Unknown"},
                                     {0.5, 0.5, "Unknown"}}) {
        t.naturalWidth = w;
        t.naturalHeight = h;
        EXPECT_EQ(aspectRatioStr(t), text) << w << "x" << h;
    }
    EXPECT_EQ(gcd(7, 0), 7);
    EXPECT_EQ(gcd(0, 7), 7);
}

TEST(TrackOperations, ColourDescriptionListsPresentExtensionsInOrder) {
    TrackDescription t = track("hvc1");
    EXPECT_EQ(matrixCoefficients(t), "Unknown");
    t.yCbCrMatrix = QStringLiteral("ITU_R_2020");
    t.colorPrimaries = QStringLiteral("ITU_R_2020");
    EXPECT_EQ(chromaSubsampling(t), "Color Primaries: ITU_R_2020\nYCbCr Matrix: ITU_R_2020\n");
    // A value too long for the description is left out of it, not cut.
    t.colorPrimaries = QString(200, QLatin1Char('x'));
    EXPECT_FALSE(chromaSubsampling(t).contains("Color Primaries"));
    EXPECT_EQ(colorPrimaries(t), QString(200, QLatin1Char('x')));
}

// Rates of files (as the clips of TrackMedia show them) and no division by
// zero where a file gives no duration or packet size.
TEST(TrackOperations, RatesWithoutDurationOrPacketSize) {
    TrackDescription audio = track("aac ");
    audio.sampleRate = 44100;
    EXPECT_EQ(GetAuidoFramRate(audio), "Unknown");
    audio.estimatedDataRate = 12345678.0f;
    EXPECT_EQ(dataRateInMbps(audio), "12.35 Mbit/s");
    MovieTracks movie;
    movie.video = track("avc1");
    movie.video.naturalWidth = 1080;
    movie.video.naturalHeight = 1920;
    movie.durationSeconds = 2.0;
    EXPECT_EQ(technicalTexts(movie, 2500000).fileVideoDataRate, "10.00 Mbit/s");
    movie.durationSeconds = 0;
    const TechnicalTexts still = technicalTexts(movie, 2500000);
    EXPECT_TRUE(still.fileVideoDataRate.isEmpty());
    EXPECT_FALSE(still.hasAudio);
    EXPECT_EQ(still.videoCurScaleStr, "1.00x");
}

}  // namespace
