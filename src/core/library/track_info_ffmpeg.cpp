// SPDX-License-Identifier: GPL-3.0-or-later
// Track descriptions read with FFmpeg, and the frame-rate diagnostic.
//
// Codes follow the desktop media framework's conventions: a video track shows
// the sample-entry code of MP4/QuickTime files, an audio track the Core Audio
// format ID ("aac ", "lpcm", ...), whatever its sample entry says. Colour
// values are named as that framework names them; unspecified values are
// absent. The transform is the container's display matrix.

#include <QFile>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include "core/common/logging.h"
#include "core/library/media_probe.h"
#include "core/library/track_info.h"

namespace {

struct PacketFree {
    void operator()(AVPacket* p) const { av_packet_free(&p); }
};
using PacketPtr = std::unique_ptr<AVPacket, PacketFree>;

int firstStream(const AVFormatContext* ctx, AVMediaType type) {
    for (unsigned i = 0; i < ctx->nb_streams; ++i) {
        const AVStream* st = ctx->streams[i];
        if (st->codecpar->codec_type != type) continue;
        if (st->disposition & AV_DISPOSITION_ATTACHED_PIC) continue;  // cover art
        return static_cast<int>(i);
    }
    return -1;
}

bool isQuickTimeFamily(const AVFormatContext* ctx) {
    return ctx->iformat && QByteArray(ctx->iformat->name).split(',').contains("mov");
}

QByteArray tagText(uint32_t tag) {
    QByteArray code;
    for (int i = 0; i < 4; ++i) code.append(static_cast<char>((tag >> (8 * i)) & 0xff));
    return code;
}

QByteArray proresCode(int profile) {
    switch (profile) {
        case FF_PROFILE_PRORES_PROXY:
            return "apco";
        case FF_PROFILE_PRORES_LT:
            return "apcs";
        case FF_PROFILE_PRORES_HQ:
            return "apch";
        case FF_PROFILE_PRORES_4444:
            return "ap4h";
        case FF_PROFILE_PRORES_XQ:
            return "ap4x";
        default:
            return "apcn";
    }
}

QByteArray videoCode(const AVFormatContext* ctx, const AVCodecParameters* p) {
    if (isQuickTimeFamily(ctx) && p->codec_tag != 0) return tagText(p->codec_tag);
    switch (p->codec_id) {
        case AV_CODEC_ID_H264:
            return "avc1";
        case AV_CODEC_ID_HEVC:
            return "hvc1";
        case AV_CODEC_ID_MPEG4:
            return "mp4v";
        case AV_CODEC_ID_MJPEG:
            return "jpeg";
        case AV_CODEC_ID_PRORES:
            return proresCode(p->profile);
        default:
            break;
    }
    if (p->codec_tag != 0) return tagText(p->codec_tag);
    const AVCodecDescriptor* desc = avcodec_descriptor_get(p->codec_id);
    return desc ? QByteArray(desc->name).left(4).leftJustified(4, ' ') : QByteArray();
}

// Core Audio format ID, and the frames per packet Core Audio reports where
// the container does not give a frame size.
std::pair<QByteArray, int> audioCode(const AVCodecParameters* p) {
    if (QByteArray(avcodec_get_name(p->codec_id)).startsWith("pcm_")) return {"lpcm", 1};
    switch (p->codec_id) {
        case AV_CODEC_ID_AAC:
            if (p->profile == FF_PROFILE_AAC_ELD) return {"aace", 512};
            return {"aac ", 1024};
        case AV_CODEC_ID_MP3:
            return {".mp3", 1152};
        case AV_CODEC_ID_AC3:
            return {"ac-3", 1536};
        case AV_CODEC_ID_EAC3:
            return {"ec-3", 1536};
        case AV_CODEC_ID_ALAC:
            return {"alac", 4096};
        case AV_CODEC_ID_OPUS:
            return {"opus", 960};
        case AV_CODEC_ID_FLAC:
            return {"flac", 0};
        default:
            break;
    }
    if (p->codec_tag != 0) return {tagText(p->codec_tag), 0};
    return {QByteArray(avcodec_get_name(p->codec_id)).left(4).leftJustified(4, ' '), 0};
}

std::optional<QString> primariesName(AVColorPrimaries v) {
    switch (v) {
        case AVCOL_PRI_BT709:
            return QStringLiteral("ITU_R_709_2");
        case AVCOL_PRI_BT470BG:
            return QStringLiteral("EBU_3213");
        case AVCOL_PRI_SMPTE170M:
        case AVCOL_PRI_SMPTE240M:
            return QStringLiteral("SMPTE_C");
        case AVCOL_PRI_BT2020:
            return QStringLiteral("ITU_R_2020");
        case AVCOL_PRI_SMPTE431:
            return QStringLiteral("DCI_P3");
        case AVCOL_PRI_SMPTE432:
            return QStringLiteral("P3_D65");
        case AVCOL_PRI_JEDEC_P22:
            return QStringLiteral("P22");
        default:
            return std::nullopt;
    }
}

std::optional<QString> transferName(AVColorTransferCharacteristic v) {
    switch (v) {
        // BT.601 uses the BT.709 curve; the framework has one name for both.
        case AVCOL_TRC_BT709:
        case AVCOL_TRC_SMPTE170M:
            return QStringLiteral("ITU_R_709_2");
        case AVCOL_TRC_SMPTE240M:
            return QStringLiteral("SMPTE_240M_1995");
        case AVCOL_TRC_GAMMA22:
        case AVCOL_TRC_GAMMA28:
            return QStringLiteral("UseGamma");
        case AVCOL_TRC_LINEAR:
            return QStringLiteral("Linear");
        case AVCOL_TRC_IEC61966_2_1:
            return QStringLiteral("IEC_sRGB");
        case AVCOL_TRC_BT2020_10:
        case AVCOL_TRC_BT2020_12:
            return QStringLiteral("ITU_R_2020");
        case AVCOL_TRC_SMPTE2084:
            return QStringLiteral("SMPTE_ST_2084_PQ");
        case AVCOL_TRC_SMPTE428:
            return QStringLiteral("SMPTE_ST_428_1");
        case AVCOL_TRC_ARIB_STD_B67:
            return QStringLiteral("ITU_R_2100_HLG");
        default:
            return std::nullopt;
    }
}

std::optional<QString> matrixName(AVColorSpace v) {
    switch (v) {
        case AVCOL_SPC_BT709:
            return QStringLiteral("ITU_R_709_2");
        case AVCOL_SPC_BT470BG:
        case AVCOL_SPC_SMPTE170M:
            return QStringLiteral("ITU_R_601_4");
        case AVCOL_SPC_SMPTE240M:
            return QStringLiteral("SMPTE_240M_1995");
        case AVCOL_SPC_BT2020_NCL:
        case AVCOL_SPC_BT2020_CL:
            return QStringLiteral("ITU_R_2020");
        default:
            return std::nullopt;
    }
}

double seconds(int64_t ts, AVRational base) {
    return static_cast<double>(ts) * av_q2d(base);
}

void describeCommon(const AVFormatContext* ctx, const AVStream* st, TrackDescription& t) {
    t.present = true;
    t.trackID = st->id;
    t.estimatedDataRate = static_cast<float>(st->codecpar->bit_rate);
    if (st->duration > 0 && st->duration != AV_NOPTS_VALUE)
        t.durationSeconds = seconds(st->duration, st->time_base);
    else if (ctx->duration > 0)
        t.durationSeconds = static_cast<double>(ctx->duration) / AV_TIME_BASE;
    if (const AVDictionaryEntry* lang = av_dict_get(st->metadata, "language", nullptr, 0))
        t.language = QString::fromUtf8(lang->value);
}

TrackDescription describeVideo(const AVFormatContext* ctx, const AVStream* st) {
    TrackDescription t;
    describeCommon(ctx, st, t);
    const AVCodecParameters* p = st->codecpar;
    t.codecCode = videoCode(ctx, p);
    if (p->bits_per_coded_sample > 0)
        t.bitsPerSample = p->bits_per_coded_sample;
    else if (p->bits_per_raw_sample > 0)
        t.bitsPerSample = p->bits_per_raw_sample;
    t.naturalWidth = p->width;
    t.naturalHeight = p->height;
    const AVRational rate = st->avg_frame_rate.num > 0 ? st->avg_frame_rate : st->r_frame_rate;
    if (rate.num > 0 && rate.den > 0) t.nominalFrameRate = static_cast<float>(av_q2d(rate));
    t.colorPrimaries = primariesName(p->color_primaries);
    t.transferFunction = transferName(p->color_trc);
    t.yCbCrMatrix = matrixName(p->color_space);
    // Identity unless the container carries a display matrix: [a b u; c d v;
    // tx ty w], a b c d tx ty in 16.16 fixed point.
    t.a = 1;
    t.d = 1;
    size_t size = 0;
    const uint8_t* data =
        av_stream_get_side_data(const_cast<AVStream*>(st), AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (data && size >= 9 * sizeof(int32_t)) {
        int32_t m[9];
        std::memcpy(m, data, sizeof(m));
        t.a = m[0] / 65536.0;
        t.b = m[1] / 65536.0;
        t.c = m[3] / 65536.0;
        t.d = m[4] / 65536.0;
        t.tx = m[6] / 65536.0;
        t.ty = m[7] / 65536.0;
    }
    return t;
}

TrackDescription describeAudio(const AVFormatContext* ctx, const AVStream* st) {
    TrackDescription t;
    describeCommon(ctx, st, t);
    const AVCodecParameters* p = st->codecpar;
    const auto [code, framesPerPacket] = audioCode(p);
    t.codecCode = code;
    t.framesPerPacket = p->frame_size > 0 && code != "lpcm" ? p->frame_size : framesPerPacket;
    if (code == "lpcm" && p->bits_per_coded_sample > 0) {
        t.bitsPerSample = p->bits_per_coded_sample;
        // Uncompressed audio has no measured rate; it follows from the format.
        if (p->bit_rate <= 0)
            t.estimatedDataRate = static_cast<float>(static_cast<double>(p->bits_per_coded_sample) *
                                                     p->sample_rate * p->ch_layout.nb_channels);
    }
    t.sampleRate = p->sample_rate;
    t.channels = p->ch_layout.nb_channels;
    return t;
}

}  // namespace

std::optional<MovieTracks> describeMovieTracks(const OpenedMedia& media) {
    const AVFormatContext* ctx = media.context();
    if (!ctx) return std::nullopt;
    MovieTracks tracks;
    if (ctx->duration > 0)
        tracks.durationSeconds = static_cast<double>(ctx->duration) / AV_TIME_BASE;
    if (const int v = firstStream(ctx, AVMEDIA_TYPE_VIDEO); v >= 0)
        tracks.video = describeVideo(ctx, ctx->streams[v]);
    if (const int a = firstStream(ctx, AVMEDIA_TYPE_AUDIO); a >= 0)
        tracks.audio = describeAudio(ctx, ctx->streams[a]);
    return tracks;
}

std::optional<MovieTracks> describeMovieTracks(const QString& path) {
    return describeMovieTracks(OpenedMedia(path));
}

FrameRateRange analyzeVideoFrameRatesAtURL(const QString& path) {
    FrameRateRange range;
    const OpenedMedia media(path);
    AVFormatContext* ctx = media.context();
    const int v = ctx ? firstStream(ctx, AVMEDIA_TYPE_VIDEO) : -1;
    if (v < 0) {
        qCInfo(lcTagsmith) << "No video track found";
        return range;
    }
    PacketPtr packet(av_packet_alloc());
    if (!packet) {
        qCInfo(lcTagsmith).noquote() << "Error creating AVAssetReader: out of memory";
        return range;
    }
    // Only timestamps matter, so packets stand in for decoded frames; sorting
    // puts them in presentation order.
    std::vector<int64_t> times;
    int status = 0;
    while ((status = av_read_frame(ctx, packet.get())) >= 0) {
        if (packet->stream_index == v) {
            const int64_t ts = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
            if (ts != AV_NOPTS_VALUE) times.push_back(ts);
        }
        av_packet_unref(packet.get());
    }
    if (times.empty() && status != AVERROR_EOF) {
        qCInfo(lcTagsmith) << "Failed to start reading";
        return range;
    }
    std::sort(times.begin(), times.end());
    const AVRational base = ctx->streams[v]->time_base;
    for (size_t i = 1; i < times.size(); ++i) {
        const double delta = seconds(times[i] - times[i - 1], base);
        if (delta <= 0) continue;  // a repeated timestamp is no frame interval
        const double fps = 1.0 / delta;
        range.minimum = range.minimum ? std::min(*range.minimum, fps) : fps;
        range.maximum = range.maximum ? std::max(*range.maximum, fps) : fps;
    }
    if (!range.minimum) {
        qCInfo(lcTagsmith) << "No frames found";
        return range;
    }
    qCInfo(lcTagsmith).noquote() << QString::asprintf("Minimum Frame Rate: %f fps", *range.minimum);
    qCInfo(lcTagsmith).noquote() << QString::asprintf("Maximum Frame Rate: %f fps", *range.maximum);
    return range;
}
