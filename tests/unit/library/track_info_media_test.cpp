// SPDX-License-Identifier: GPL-3.0-or-later
// The FFmpeg adapter of the track operations, on clips made at test time and
// checked against ffprobe's view of the same files.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include "core/library/ik_image_item.h"
#include "core/library/track_info.h"
#include "support/media_fixtures.h"

namespace {

// The first stream of the given type as ffprobe reports it.
QJsonObject probedStream(const QString& path, const QString& type) {
    QProcess p;
    p.start("ffprobe", words("-v error -show_streams -of json") + QStringList{path});
    p.waitForFinished(60000);
    const QJsonArray streams =
        QJsonDocument::fromJson(p.readAllStandardOutput()).object()["streams"].toArray();
    for (const QJsonValue& s : streams) {
        if (s["codec_type"].toString() == type) return s.toObject();
    }
    return {};
}

double probedNumber(const QJsonObject& s, const char* key) {
    return s[QLatin1String(key)].toString().toDouble();
}

// ffprobe reports the display rotation counter-clockwise; the transform's
// quarter turns count the other way.
int probedRotation(const QJsonObject& s) {
    for (const QJsonValue& side : s["side_data_list"].toArray()) {
        if (side["side_data_type"].toString() == "Display Matrix")
            return ((360 - side["rotation"].toInt()) % 360 + 360) % 360;
    }
    return 0;
}

void expectVideoMatchesProbe(const QString& path, const TrackDescription& v) {
    const QJsonObject s = probedStream(path, "video");
    ASSERT_FALSE(s.isEmpty());
    const QStringList rate = s["avg_frame_rate"].toString().split('/');
    ASSERT_EQ(rate.size(), 2);
    EXPECT_EQ(QString::fromLatin1(v.codecCode), s["codec_tag_string"].toString());
    EXPECT_EQ(v.naturalWidth, s["width"].toInt());
    EXPECT_EQ(v.naturalHeight, s["height"].toInt());
    EXPECT_NEAR(v.nominalFrameRate, rate[0].toDouble() / rate[1].toDouble(), 0.001);
    EXPECT_EQ(v.estimatedDataRate, static_cast<float>(probedNumber(s, "bit_rate")));
    EXPECT_EQ(v.trackID, s["id"].toString().toInt(nullptr, 16));
    EXPECT_NEAR(v.durationSeconds, probedNumber(s, "duration"), 0.001);
    EXPECT_EQ(rotation(v), probedRotation(s));
}

class TrackMedia : public ::testing::Test {
protected:
    void SetUp() override {
        if (!haveTool("ffmpeg") || !haveTool("ffprobe")) GTEST_SKIP() << "no ffmpeg/ffprobe";
    }
    static QString tone(const QString& name, const QString& codec) {
        return ffmpegFixture(name,
                             words("-f lavfi -i sine=sample_rate=48000:duration=1 -c:a " + codec));
    }
};

TEST_F(TrackMedia, H264WithAacAgreesWithFfprobe) {
    const QString clip = clipFixture("track-h264.mp4", 320, 240, 1.0);
    ASSERT_FALSE(clip.isEmpty()) << lastToolOutput().toStdString();
    const auto movie = describeMovieTracks(clip);
    ASSERT_TRUE(movie);
    expectVideoMatchesProbe(clip, movie->video);
    EXPECT_EQ(movie->video.bitsPerSample, 24);  // the sample entry's depth
    EXPECT_EQ(currentScales(movie->video), std::make_pair(1.0, 1.0));
    EXPECT_EQ(QStringList({videoencodeFormat(movie->video), aspectRatioStr(movie->video),
                           colorPrimaries(movie->video)}),
              QStringList({"H.264", "4:3", "Unknown"}));

    const TrackDescription& a = movie->audio;
    const QJsonObject s = probedStream(clip, "audio");
    EXPECT_EQ(a.codecCode, "aac ");  // the format ID, not the mp4a sample entry
    EXPECT_EQ(a.sampleRate, probedNumber(s, "sample_rate"));
    EXPECT_EQ(a.channels, s["channels"].toInt());
    EXPECT_EQ(a.estimatedDataRate, static_cast<float>(probedNumber(s, "bit_rate")));
    EXPECT_EQ(a.language, s["tags"]["language"].toString());

    for (int degrees : {90, 180, 270}) {
        SCOPED_TRACE(degrees);
        const QString rotated = ffmpegFixture(
            QString("track-rotate%1.mp4").arg(degrees),
            {"-i", clip, "-metadata:s:v:0", QString("rotate=%1").arg(degrees), "-c", "copy"});
        ASSERT_FALSE(rotated.isEmpty()) << lastToolOutput().toStdString();
        const auto turned = describeMovieTracks(rotated);
        ASSERT_TRUE(turned);
        expectVideoMatchesProbe(rotated, turned->video);
        EXPECT_EQ(rotation(turned->video), (360 - degrees) % 360);
        EXPECT_EQ(currentScales(turned->video), std::make_pair(1.0, 1.0));
        EXPECT_EQ(turned->video.naturalWidth, 320);  // the stored size, not the shown one
    }
}

TEST_F(TrackMedia, PortraitClipFillsTheRecord) {
    IKImageItem item;
    item.filePath = clipFixture("track-portrait.mov", 120, 160, 1.0);
    ASSERT_FALSE(item.filePath.isEmpty()) << lastToolOutput().toStdString();
    fillTechnicalInfo(item);
    EXPECT_EQ(
        (QStringList{item.videoResolutionStr, item.videoAspectStr, item.videoCodeFPSStr,
                     item.fileVideoEncodeFormat, item.videoTrackIDStr, item.fileAudioEncodeFormat,
                     item.audioFrameRateStr, item.fileSampleRate, item.audioChanelsStr}),
        (QStringList{"120 X 160", "3:4", "25.00 FPS", "H.264", "1", "AAC", "43.07 FPS", "44.10 kHz",
                     "1"}));
    EXPECT_TRUE(item.fileVideoDataRate.endsWith(" Mbit/s"));
    EXPECT_TRUE(item.audioDataRateStr.endsWith(" kb/s"));
}

TEST_F(TrackMedia, HevcTaggedHvc1WithHdrColour) {
    if (!runTool("ffmpeg", {"-hide_banner", "-encoders"}) || !lastToolOutput().contains("libx265"))
        GTEST_SKIP() << "ffmpeg has no libx265";
    const QString clip = ffmpegFixture(
        "track-hevc.mp4",
        words("-f lavfi -i testsrc=size=160x96:rate=30:duration=1 -c:v libx265 -x265-params "
              "log-level=error -tag:v hvc1 -pix_fmt yuv420p -color_primaries bt2020 -color_trc "
              "smpte2084 -colorspace bt2020nc"));
    ASSERT_FALSE(clip.isEmpty()) << lastToolOutput().toStdString();
    const auto movie = describeMovieTracks(clip);
    ASSERT_TRUE(movie);
    expectVideoMatchesProbe(clip, movie->video);
    EXPECT_EQ(videoencodeFormat(movie->video) + " " + aspectRatioStr(movie->video), "HEVC 5:3");
    EXPECT_EQ(chromaSubsampling(movie->video),
              "Color Primaries: ITU_R_2020\nTransfer Function: SMPTE_ST_2084_PQ\n"
              "YCbCr Matrix: ITU_R_2020\n");
    EXPECT_FALSE(movie->audio.present);
}

TEST_F(TrackMedia, AppleLosslessAndPcmAudio) {
    const QString alac = tone("track-alac.m4a", "alac");
    const QString pcm = tone("track-pcm.mov", "pcm_s16le");
    ASSERT_FALSE(alac.isEmpty() || pcm.isEmpty()) << lastToolOutput().toStdString();

    const auto lossless = describeMovieTracks(alac);
    ASSERT_TRUE(lossless);
    EXPECT_FALSE(lossless->video.present);
    EXPECT_EQ(lossless->audio.codecCode + " " + GetAudioSamplingRate(lossless->audio),
              "alac 48.00 kHz");
    EXPECT_FALSE(analyzeVideoFrameRatesAtURL(alac).minimum);  // no video to measure

    const auto linear = describeMovieTracks(pcm);
    ASSERT_TRUE(linear);
    const QJsonObject s = probedStream(pcm, "audio");
    EXPECT_EQ(s["codec_tag_string"].toString(), "sowt");
    EXPECT_EQ(linear->audio.codecCode, "lpcm");  // every PCM flavour
    EXPECT_EQ(bitDepth(linear->audio), s["bits_per_sample"].toInt());
    EXPECT_EQ(GetAuidoFramRate(linear->audio), "48000.00 FPS");  // one frame a packet
    EXPECT_EQ(linear->audio.estimatedDataRate, static_cast<float>(probedNumber(s, "bit_rate")));
}

TEST_F(TrackMedia, FrameRateRangeOfAVariableRateClip) {
    // 25 frames a second for the first half, 50 for the second.
    const QString clip = ffmpegFixture(
        "track-vfr.mp4",
        words("-f lavfi -i testsrc=size=160x120:rate=50:duration=1 -vf "
              "select='gte(n\\,25)+not(mod(n\\,2))' -fps_mode passthrough -c:v libx264 -pix_fmt "
              "yuv420p"));
    ASSERT_FALSE(clip.isEmpty()) << lastToolOutput().toStdString();
    const FrameRateRange range = analyzeVideoFrameRatesAtURL(clip);
    ASSERT_TRUE(range.minimum && range.maximum);
    EXPECT_NEAR(*range.minimum, 25.0, 0.01);
    EXPECT_NEAR(*range.maximum, 50.0, 0.01);
}

TEST_F(TrackMedia, NothingToDescribe) {
    QTemporaryDir dir;
    const QString text = dir.filePath("notes.txt");
    ASSERT_TRUE(writeFile(text, "not a movie\n"));
    EXPECT_FALSE(describeMovieTracks(text) || describeMovieTracks(dir.filePath("missing.mp4")));
    EXPECT_FALSE(analyzeVideoFrameRatesAtURL(text).maximum);
    IKImageItem item;
    item.filePath = text;
    fillTechnicalInfo(item);
    EXPECT_TRUE(item.videoResolutionStr.isEmpty() && item.audioCodecIDStr.isEmpty());
}

}  // namespace
