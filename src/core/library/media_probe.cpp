// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/media_probe.h"

#include <QFile>

#include <mutex>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include "core/common/logging.h"

namespace {

// The library's own console chatter about damaged files is silenced; the
// program logs what it decides instead.
void quietLibraryLog() {
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

bool streamsDescribed(const AVFormatContext* ctx) {
    for (unsigned i = 0; i < ctx->nb_streams; ++i) {
        const AVCodecParameters* p = ctx->streams[i]->codecpar;
        if (p->codec_type == AVMEDIA_TYPE_VIDEO && (p->width <= 0 || p->height <= 0)) return false;
        if (p->codec_type == AVMEDIA_TYPE_AUDIO && p->sample_rate <= 0) return false;
    }
    return ctx->nb_streams > 0;
}

}  // namespace

OpenedMedia::OpenedMedia(const QString& path, const char* formatName) {
    quietLibraryLog();
    const QByteArray native = QFile::encodeName(path);
    const AVInputFormat* format = formatName ? av_find_input_format(formatName) : nullptr;
    if (avformat_open_input(&m_context, native.constData(), format, nullptr) < 0) {
        qCInfo(lcTagsmith) << "not a readable media file ==" << path;
        m_context = nullptr;
        return;
    }
    if (!streamsDescribed(m_context) && avformat_find_stream_info(m_context, nullptr) < 0) {
        qCInfo(lcTagsmith) << "no stream information ==" << path;
    }
}

OpenedMedia::~OpenedMedia() {
    avformat_close_input(&m_context);
}

ProbeFacts probeMediaFile(const OpenedMedia& media) {
    ProbeFacts facts;
    AVFormatContext* ctx = media.context();
    if (!ctx) return facts;
    if (ctx->duration > 0 && ctx->duration != AV_NOPTS_VALUE) {
        facts.durationSeconds = static_cast<double>(ctx->duration) / AV_TIME_BASE;
    }
    const int audio = av_find_best_stream(ctx, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (audio >= 0) {
        const AVStream* stream = ctx->streams[audio];
        const AVCodecParameters* p = stream->codecpar;
        // Headers that describe their streams (AIFF, CAF, AU) leave the
        // file's duration unset: the stream's, or the data size at the bit
        // rate, stands in.
        if (!facts.durationSeconds && stream->duration > 0 && stream->duration != AV_NOPTS_VALUE)
            facts.durationSeconds = stream->duration * av_q2d(stream->time_base);
        const qint64 bytes = ctx->pb ? avio_size(ctx->pb) : -1;
        if (!facts.durationSeconds && p->bit_rate > 0 && bytes > 0)
            facts.durationSeconds = static_cast<double>(bytes) * 8 / p->bit_rate;
        if (p->bit_rate > 0) facts.audioBitRate = p->bit_rate;
        if (p->sample_rate > 0) facts.audioSampleRate = p->sample_rate;
        if (p->ch_layout.nb_channels > 0) facts.audioChannels = p->ch_layout.nb_channels;
    }
    const int video = av_find_best_stream(ctx, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (video >= 0) {
        const AVCodecParameters* p = ctx->streams[video]->codecpar;
        if (p->width > 0) facts.pixelWidth = p->width;
        if (p->height > 0) facts.pixelHeight = p->height;
    }
    return facts;
}

ProbeFacts probeMediaFile(const QString& path) {
    return probeMediaFile(OpenedMedia(path));
}
