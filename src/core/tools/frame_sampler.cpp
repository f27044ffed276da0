// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/frame_sampler.h"

#include <QFile>
#include <QTransform>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "core/common/logging.h"
#include "core/library/frame_image.h"

namespace {

struct Decoding {
    AVFormatContext* format = nullptr;
    AVCodecContext* codec = nullptr;
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    AVFrame* shown = av_frame_alloc();  // the frame on screen at the current time
    bool haveShown = false;
    ~Decoding() {
        av_frame_free(&shown);
        av_frame_free(&frame);
        av_packet_free(&packet);
        avcodec_free_context(&codec);
        avformat_close_input(&format);
    }
};

}  // namespace

SamplingResult sampleFrames(const QString& path, double interval,
                            const std::function<bool(double, const QImage&)>& take,
                            const JobControl& control) {
    quietFfmpeg();
    SamplingResult result;
    Decoding d;
    const QByteArray native = QFile::encodeName(path);
    if (!d.packet || !d.frame || !d.shown ||
        avformat_open_input(&d.format, native.constData(), nullptr, nullptr) < 0 ||
        avformat_find_stream_info(d.format, nullptr) < 0) {
        qCInfo(lcTagsmith) << "cannot open as a movie ==" << path;
        return result;
    }
    result.duration = d.format->duration > 0 ? double(d.format->duration) / AV_TIME_BASE : 0;
    if (interval <= 0) return result;
    int64_t step = 0;
    const auto nextTime = [&] { return double(step) * interval; };
    const auto missing = [&] {
        for (; nextTime() < result.duration && !result.stopped; ++step)
            result.stopped = !take(nextTime(), QImage());
    };

    const AVCodec* codec = nullptr;
    const int index = av_find_best_stream(d.format, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0 || !codec) {
        missing();
        return result;
    }
    AVStream* stream = d.format->streams[index];
    d.codec = avcodec_alloc_context3(codec);
    if (d.codec) d.codec->thread_count = 0;  // one per core
    if (!d.codec || avcodec_parameters_to_context(d.codec, stream->codecpar) < 0 ||
        avcodec_open2(d.codec, codec, nullptr) < 0) {
        missing();
        return result;
    }
    const double base = av_q2d(stream->time_base);
    const int64_t start = stream->start_time == AV_NOPTS_VALUE ? 0 : stream->start_time;
    const double rotation = streamDisplayRotation(stream);
    const auto give = [&](const AVFrame* frame) {
        QImage picture = decodedFrameImage(frame, QSize(frame->width, frame->height));
        if (!picture.isNull() && rotation != 0.0)
            picture = picture.transformed(QTransform().rotate(rotation));
        result.stopped = !take(nextTime(), picture);
        ++step;
    };

    bool flushed = false;
    int lastProgress = -1;
    while (nextTime() < result.duration && !result.stopped) {
        if (control.cancelled()) {
            result.cancelled = true;
            return result;
        }
        if (!flushed) {
            const int read = av_read_frame(d.format, d.packet);
            if (read < 0) {
                avcodec_send_packet(d.codec, nullptr);
                flushed = true;
            } else if (d.packet->stream_index == index) {
                avcodec_send_packet(d.codec, d.packet);
            }
            av_packet_unref(d.packet);
        }
        int received = 0;
        while ((received = avcodec_receive_frame(d.codec, d.frame)) == 0) {
            const int64_t pts = d.frame->best_effort_timestamp;
            const double t = pts == AV_NOPTS_VALUE ? 0 : double(pts - start) * base;
            // Every time before this frame shows the previous one.
            while (nextTime() < result.duration && t > nextTime() && !result.stopped)
                give(d.haveShown ? d.shown : d.frame);
            av_frame_unref(d.shown);
            av_frame_move_ref(d.shown, d.frame);
            d.haveShown = true;
            const int percent = int(100 * t / result.duration);
            if (control.progress && percent != lastProgress) {
                lastProgress = percent;
                control.progress(qBound(0.0, t / result.duration, 1.0));
            }
        }
        if (flushed && received < 0) break;
    }
    // The last frame stays on screen to the end.
    while (nextTime() < result.duration && !result.stopped) {
        if (d.haveShown)
            give(d.shown);
        else
            missing();
    }
    return result;
}
