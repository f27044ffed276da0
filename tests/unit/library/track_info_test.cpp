#include <gtest/gtest.h>

#include <QStringList>

#include "core/library/track_info.h"

namespace {

TrackDescription track(const QByteArray& code) {
    TrackDescription t;
    t.present = true;
    t.codecCode = code;
    t.a = 1;
    t.d = 1;
    return t;
}

TrackDescription transformed(double a, double b, double c, double d) {
    TrackDescription t = track("avc1");
    t.a = a;
    t.b = b;
    t.c = c;
    t.d = d;
    t.tx = 17;  // translations never matter
    return t;
}

TEST(TrackOperations, VideoCodesKeepUnlistedCodesAsTheirFourCharacters) {
    EXPECT_EQ(videoencodeFormat(track("avc1")), "H.264");
    EXPECT_EQ(videoencodeFormat(track("hvc1")), "HEVC");
    EXPECT_EQ(videoencodeFormat(track("ap4h")), "Apple ProRes 4444");
    EXPECT_EQ(videoencodeFormat(track("avc3")), "avc3");
    EXPECT_EQ(videoencodeFormat(track("hev1")), "hev1");
    EXPECT_EQ(mediaSubTypeString(track("avc3")), "avc3");
    // High bytes are Mac Roman: 0xA9 is the copyright sign.
    EXPECT_EQ(mediaSubTypeString(track("\xA9xyz")), QString::fromUtf8("©xyz"));
}

TEST(TrackOperations, MissingDescriptionAnswersUnknownOrZero) {
    TrackDescription bare;
    bare.present = true;  // a track without a format description
    for (const TrackDescription& t : {bare, TrackDescription{}}) {
        EXPECT_EQ(mediaSubTypeString(t), "Unknown");
        EXPECT_EQ(videoencodeFormat(t), "Unknown");
        EXPECT_EQ(audioEncodeFormat(t), "Unknown");
        EXPECT_EQ(colorPrimaries(t), "Unknown");
        EXPECT_EQ(chromaSubsampling(t), "Unknown");
        EXPECT_EQ(GetAudioSamplingRate(t), "Unknown");
        EXPECT_EQ(GetAuidoFramRate(t), "Unknown");
        EXPECT_EQ(GetAuidoCompressMode(t), "Unknown");
        EXPECT_EQ(bitDepth(t), 0);
    }
    EXPECT_EQ(currentScales(TrackDescription{}), std::make_pair(0.0, 0.0));
    EXPECT_EQ(rotation(TrackDescription{}), 0);
}

TEST(TrackOperations, BitDepthOnlyForPowersOfTwoUpTo32) {
    TrackDescription t = track("avc1");
    for (int bits : {1, 2, 4, 8, 16, 24, 32}) {
        t.bitsPerSample = bits;
        EXPECT_EQ(bitDepth(t), bits);
    }
    for (int bits : {0, 10, 12, 64}) {
        t.bitsPerSample = bits;
        EXPECT_EQ(bitDepth(t), 0) << bits;
    }
}

TEST(TrackOperations, RotationOnlyForExactQuarterTurns) {
    EXPECT_EQ(rotation(transformed(0, 1, -1, 0)), 90);
    EXPECT_EQ(rotation(transformed(0, -1, 1, 0)), 270);
    EXPECT_EQ(rotation(transformed(-1, 0, 0, -1)), 180);
    EXPECT_EQ(rotation(transformed(1, 0, 0, 1)), 0);
    EXPECT_EQ(rotation(transformed(0, 1.0000001, -1, 0)), 0);
    EXPECT_EQ(rotation(transformed(0.5, 0, 0, 0.5)), 0);
    EXPECT_EQ(currentScales(transformed(0.5, 0, 0, 0.5)), std::make_pair(0.5, 0.5));
    const auto [sx, sy] = currentScales(transformed(0, 2, -3, 0));
    EXPECT_DOUBLE_EQ(sx, 3.0);
    EXPECT_DOUBLE_EQ(sy, 2.0);
}

TEST(TrackOperations, AspectRatioReducesTheTruncatedSize) {
    TrackDescription t = track("avc1");
    const auto aspect = [&](double w, double h) {
        t.naturalWidth = w;
        t.naturalHeight = h;
        return aspectRatioStr(t);
    };
    EXPECT_EQ(aspect(1920, 1080), "16:9");
    EXPECT_EQ(aspect(1080, 1920), "9:16");
    EXPECT_EQ(aspect(1920.7, 1080.2), "16:9");
    EXPECT_EQ(aspect(1001, 1000), "1001:1000");
    EXPECT_EQ(aspect(0, 1080), "Unknown");
    EXPECT_EQ(aspect(1920, 0), "Unknown");
    EXPECT_EQ(aspect(0.5, 0.5), "Unknown");
    EXPECT_EQ(gcd(48, 18), 6);
    EXPECT_EQ(gcd(7, 0), 7);
    EXPECT_EQ(gcd(0, 7), 7);
}

TEST(TrackOperations, ColourDescriptionListsPresentExtensionsInOrder) {
    TrackDescription t = track("hvc1");
    EXPECT_EQ(chromaSubsampling(t), "Unknown");
    EXPECT_EQ(matrixCoefficients(t), "Unknown");
    t.yCbCrMatrix = QStringLiteral("ITU_R_2020");
    t.colorPrimaries = QStringLiteral("ITU_R_2020");
    EXPECT_EQ(chromaSubsampling(t), "Color Primaries: ITU_R_2020\nYCbCr Matrix: ITU_R_2020\n");
    t.transferFunction = QStringLiteral("SMPTE_ST_2084_PQ");
    EXPECT_EQ(chromaSubsampling(t),
              "Color Primaries: ITU_R_2020\nTransfer Function: SMPTE_ST_2084_PQ\n"
              "YCbCr Matrix: ITU_R_2020\n");
    EXPECT_EQ(transferCharacteristics(t), "SMPTE_ST_2084_PQ");
    // A value too long for the description is left out of it, not cut.
    t.colorPrimaries = QString(200, QLatin1Char('x'));
    EXPECT_FALSE(chromaSubsampling(t).contains("Color Primaries"));
    EXPECT_EQ(colorPrimaries(t), QString(200, QLatin1Char('x')));
}

TEST(TrackOperations, AudioNamesAndCompressionModes) {
    struct Case {
        QByteArray code;
        const char* name;
        const char* mode;
    };
    // clang-format off
    const Case cases[] = {
        {"aac ", "AAC", "Lossy"}, {"aace", "AAC ELD", "Unknown"}, {".mp3", "MP3", "Lossy"},
        {"ac-3", "AC-3", "Lossy"}, {"alac", "Apple Lossless", "Lossy"}, {"opus", "opus", "Lossy"},
        {"ec-3", "ec-3", "Lossy"}, {"cac3", "E-AC-3", "Unknown"}, {"lpcm", "Linear PCM", "Lossless"},
        {"flac", "flac", "Unknown"}};
    // clang-format on
    for (const Case& c : cases) {
        EXPECT_EQ(audioEncodeFormat(track(c.code)), c.name) << c.code.constData();
        EXPECT_EQ(GetAuidoCompressMode(track(c.code)), c.mode) << c.code.constData();
    }
}

TEST(TrackOperations, AudioRatesFromTheStreamDescription) {
    TrackDescription t = track("aac ");
    t.sampleRate = 44100;
    t.framesPerPacket = 1024;
    EXPECT_EQ(GetAuidoFramRate(t), "43.07 FPS");
    EXPECT_EQ(GetAudioSamplingRate(t), "44.10 kHz");
    t.framesPerPacket = 0;
    EXPECT_EQ(GetAuidoFramRate(t), "Unknown");
    t.estimatedDataRate = 12345678.0f;
    EXPECT_EQ(dataRateInMbps(t), "12.35 Mbit/s");
}

TEST(TrackOperations, TechnicalTextsOfAMovie) {
    MovieTracks movie;
    movie.durationSeconds = 2.0;
    movie.video = track("avc1");
    movie.video.naturalWidth = 1080;
    movie.video.naturalHeight = 1920;
    movie.video.nominalFrameRate = 29.97f;
    movie.video.trackID = 1;
    movie.audio = track("aac ");
    movie.audio.estimatedDataRate = 128000;
    movie.audio.channels = 2;
    const TechnicalTexts t = technicalTexts(movie, 2500000);
    EXPECT_EQ((QStringList{t.videoResolutionStr, t.videoAspectStr, t.videoCodeFPSStr,
                           t.videoCurScaleStr, t.fileVideoDataRate, t.videocodeIDStr,
                           t.videoCodePointStr, t.audioDataRateStr, t.audioChanelsStr}),
              (QStringList{"1080 X 1920", "9:16", "29.97 FPS", "1.00x", "10.00 Mbit/s", "H.264",
                           "Unknown", "128.00 kb/s", "2"}));

    movie.durationSeconds = 0;
    movie.audio = TrackDescription{};
    const TechnicalTexts still = technicalTexts(movie, 2500000);
    EXPECT_TRUE(still.fileVideoDataRate.isEmpty());
    EXPECT_FALSE(still.hasAudio);
}

}  // namespace
