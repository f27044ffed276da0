// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <utility>

struct IKImageItem;
class OpenedMedia;

// One media track as the technical-information texts need it: the first
// format description (codec code, bit depth, colour extensions, the audio
// stream description), the natural size, the preferred transform, and the
// rates the container reports. A track that is not there has `present`
// false; a track without a format description has an empty `codecCode`.
struct TrackDescription {
    bool present = false;
    QByteArray codecCode;  // four bytes, high byte first ("avc1", "aac ", "lpcm")
    std::optional<int> bitsPerSample;
    // Preferred transform, a 2 x 3 affine matrix [a b; c d; tx ty].
    double a = 0, b = 0, c = 0, d = 0, tx = 0, ty = 0;
    double naturalWidth = 0, naturalHeight = 0;
    float nominalFrameRate = 0;   // frames per second
    float estimatedDataRate = 0;  // bits per second
    std::optional<QString> colorPrimaries, transferFunction, yCbCrMatrix;
    double sampleRate = 0;  // Hz; 0 when there is no audio stream description
    int framesPerPacket = 0;
    int channels = 0;
    double durationSeconds = 0;
    int trackID = 0;
    QString language;  // ISO 639-2 code as the container gives it, e.g. "und"
};

// The first video and the first audio track of a movie, and its duration.
struct MovieTracks {
    TrackDescription video;
    TrackDescription audio;
    double durationSeconds = 0;
};

// Reads the track descriptions of a media file with FFmpeg. No value when the
// file cannot be opened as media.
std::optional<MovieTracks> describeMovieTracks(const OpenedMedia& media);
std::optional<MovieTracks> describeMovieTracks(const QString& path);

// Track operations. Each answers "Unknown" (or 0) rather than failing.
QString mediaSubTypeString(const TrackDescription& track);
int bitDepth(const TrackDescription& track);
int rotation(const TrackDescription& track);
QString matrixCoefficients(const TrackDescription& track);
QString colorPrimaries(const TrackDescription& track);
QString transferCharacteristics(const TrackDescription& track);
QString chromaSubsampling(const TrackDescription& track);
QString dataRateInMbps(const TrackDescription& track);
QString aspectRatioStr(const TrackDescription& track);
std::int64_t gcd(std::int64_t x, std::int64_t y);
std::pair<double, double> currentScales(const TrackDescription& track);
QString audioEncodeFormat(const TrackDescription& track);
QString videoencodeFormat(const TrackDescription& track);
QString GetAudioSamplingRate(const TrackDescription& track);
QString GetAuidoFramRate(const TrackDescription& track);
QString GetAuidoCompressMode(const TrackDescription& track);

// Every technical text of one file. Most have a field in the media record;
// rotation, compression mode and sampling rate have none and are kept here.
struct TechnicalTexts {
    bool hasVideo = false;
    bool hasAudio = false;
    QString videoDurationStr, videoCodeFPSStr, videocodeIDStr, videoResolutionStr, videoBitDepStr,
        videoAspectStr, videoCurScaleStr, videoColorPrimStr, videoYCbCrStr, videoTransfStr,
        fileVideoEncodeFormat, videoDataRateStr, videoCodePointStr, videoTrackIDStr,
        fileVideoDataRate, videoRotationStr;
    QString audioCodecIDStr, audioDurationStr, audioFrameRateStr, audioChanelsStr, audioTrackIDStr,
        audiolanguageStr, fileAudioEncodeFormat, audioDataRateStr, audioCompressModeStr,
        audioSamplingRateStr;
};

// Builds the texts from the tracks and the file's size in bytes.
TechnicalTexts technicalTexts(const MovieTracks& tracks, qint64 fileBytes);

// Stores the technical texts of the tracks in the record (the file's size
// is read from item.filePath). No tracks leave the record as it was.
void fillTechnicalInfo(IKImageItem& item, const std::optional<MovieTracks>& tracks);
// The same with the tracks read from item.filePath.
void fillTechnicalInfo(IKImageItem& item);

// Frame-rate diagnostic: the smallest and largest instantaneous frame rate
// between consecutive video frames in presentation order, also written to the
// log. Both are absent when the file has no video track or fewer than two
// frames.
struct FrameRateRange {
    std::optional<double> minimum;
    std::optional<double> maximum;
};
FrameRateRange analyzeVideoFrameRatesAtURL(const QString& path);
