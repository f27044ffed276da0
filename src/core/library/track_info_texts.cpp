// SPDX-License-Identifier: GPL-3.0-or-later
// The technical texts of a file's record, built from its first video and
// first audio track.
//
// Choices where the record leaves the form open:
// - videocodeIDStr and audioCodecIDStr hold the codec name (the same text as
//   the encoding name), not the four-character code.
// - videoBitDepStr is the bare number ("24"); videoTrackIDStr,
//   audioTrackIDStr and audioChanelsStr are bare numbers too.
// - videoCurScaleStr shows the horizontal scale of the transform ("1.00x").
// - videoCodePointStr holds the multi-line colour description.
// - The rotation ("%d°"), the compression mode and the sampling rate
//   ("%.2f kHz") have no field of their own. They are logged; the sampling
//   rate also goes into fileSampleRate when nothing else filled it.
// - fileVideoDataRate is left empty when the movie has no duration.

#include <QFileInfo>

#include "core/common/logging.h"
#include "core/library/ik_image_item.h"
#include "core/library/track_info.h"

namespace {

QString number(int value) {
    return QString::number(value);
}

void videoTexts(const TrackDescription& v, TechnicalTexts& out) {
    out.hasVideo = true;
    out.videoDurationStr = QString::asprintf("%.2f s", v.durationSeconds);
    out.videoCodeFPSStr = QString::asprintf("%.2f FPS", static_cast<double>(v.nominalFrameRate));
    out.videocodeIDStr = videoencodeFormat(v);
    out.videoResolutionStr = QString::asprintf("%d X %d", static_cast<int>(v.naturalWidth),
                                               static_cast<int>(v.naturalHeight));
    out.videoBitDepStr = number(bitDepth(v));
    out.videoRotationStr = QString::asprintf("%d°", rotation(v));
    out.videoAspectStr = aspectRatioStr(v);
    out.videoCurScaleStr = QString::asprintf("%.2fx", currentScales(v).first);
    out.videoColorPrimStr = colorPrimaries(v);
    out.videoYCbCrStr = matrixCoefficients(v);
    out.videoTransfStr = transferCharacteristics(v);
    out.fileVideoEncodeFormat = videoencodeFormat(v);
    out.videoDataRateStr = dataRateInMbps(v);
    out.videoCodePointStr = chromaSubsampling(v);
    out.videoTrackIDStr = number(v.trackID);
}

void audioTexts(const TrackDescription& a, TechnicalTexts& out) {
    out.hasAudio = true;
    out.audioCodecIDStr = audioEncodeFormat(a);
    out.audioDurationStr = QString::asprintf("%.2f s", a.durationSeconds);
    out.audioFrameRateStr = GetAuidoFramRate(a);
    out.audioCompressModeStr = GetAuidoCompressMode(a);
    out.audioSamplingRateStr = GetAudioSamplingRate(a);
    out.fileAudioEncodeFormat = audioEncodeFormat(a);
    out.audioChanelsStr = number(a.channels);
    out.audioTrackIDStr = number(a.trackID);
    out.audiolanguageStr = a.language;
    out.audioDataRateStr =
        QString::asprintf("%.2f kb/s", static_cast<double>(a.estimatedDataRate / 1000.0f));
}

}  // namespace

TechnicalTexts technicalTexts(const MovieTracks& tracks, qint64 fileBytes) {
    TechnicalTexts out;
    if (tracks.video.present) {
        videoTexts(tracks.video, out);
        if (tracks.durationSeconds > 0) {
            // Single precision throughout, as the record has always shown it.
            const float megabits = static_cast<float>(fileBytes) * 8.0f / 1000.0f / 1000.0f;
            const float rate = megabits / static_cast<float>(tracks.durationSeconds);
            out.fileVideoDataRate = QString::asprintf("%.2f Mbit/s", static_cast<double>(rate));
        }
    }
    if (tracks.audio.present) audioTexts(tracks.audio, out);
    return out;
}

void fillTechnicalInfo(IKImageItem& item) {
    fillTechnicalInfo(item, describeMovieTracks(item.filePath));
}

void fillTechnicalInfo(IKImageItem& item, const std::optional<MovieTracks>& tracks) {
    if (!tracks) return;
    const TechnicalTexts t = technicalTexts(*tracks, QFileInfo(item.filePath).size());
    if (t.hasVideo) {
        item.videoDurationStr = t.videoDurationStr;
        item.videoCodeFPSStr = t.videoCodeFPSStr;
        item.videocodeIDStr = t.videocodeIDStr;
        item.videoResolutionStr = t.videoResolutionStr;
        item.videoBitDepStr = t.videoBitDepStr;
        item.videoAspectStr = t.videoAspectStr;
        item.videoCurScaleStr = t.videoCurScaleStr;
        item.videoColorPrimStr = t.videoColorPrimStr;
        item.videoYCbCrStr = t.videoYCbCrStr;
        item.videoTransfStr = t.videoTransfStr;
        item.fileVideoEncodeFormat = t.fileVideoEncodeFormat;
        item.videoDataRateStr = t.videoDataRateStr;
        item.videoCodePointStr = t.videoCodePointStr;
        item.videoTrackIDStr = t.videoTrackIDStr;
        item.fileVideoDataRate = t.fileVideoDataRate;
        qCInfo(lcTagsmith).noquote() << "Video Rotation ==" << t.videoRotationStr;
    }
    if (t.hasAudio) {
        item.audioCodecIDStr = t.audioCodecIDStr;
        qCInfo(lcTagsmith).noquote() << QStringLiteral("Audio Codec: %1").arg(t.audioCodecIDStr);
        item.audioDurationStr = t.audioDurationStr;
        item.audioFrameRateStr = t.audioFrameRateStr;
        item.audioChanelsStr = t.audioChanelsStr;
        item.audioTrackIDStr = t.audioTrackIDStr;
        item.audiolanguageStr = t.audiolanguageStr;
        item.fileAudioEncodeFormat = t.fileAudioEncodeFormat;
        item.audioDataRateStr = t.audioDataRateStr;
        if (item.fileSampleRate.isEmpty()) item.fileSampleRate = t.audioSamplingRateStr;
        qCInfo(lcTagsmith).noquote() << "Audio Compress Mode ==" << t.audioCompressModeStr;
        qCInfo(lcTagsmith).noquote() << "Audio Sampling Rate ==" << t.audioSamplingRateStr;
    }
}
