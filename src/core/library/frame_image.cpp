// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/frame_image.h"

#include <QFile>
#include <QTransform>

#include <cmath>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include "core/common/logging.h"

namespace {

// Enough packets to pass a long run of non-key frames after a seek.
constexpr int kMaxPackets = 2000;

struct Decoder {
    AVFormatContext* format = nullptr;
    AVCodecContext* codec = nullptr;
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    ~Decoder() {
        av_frame_free(&frame);
        av_packet_free(&packet);
        avcodec_free_context(&codec);
        avformat_close_input(&format);
    }
};

}  // namespace

double streamDisplayRotation(const AVStream* stream) {
    size_t size = 0;
    const uint8_t* matrix =
        av_stream_get_side_data(const_cast<AVStream*>(stream), AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!matrix || size < 9 * sizeof(int32_t)) return 0.0;
    const double angle = -av_display_rotation_get(reinterpret_cast<const int32_t*>(matrix));
    return std::isnan(angle) ? 0.0 : angle;
}

QImage decodedFrameImage(const AVFrame* frame, QSize maxSize) {
    if (frame->width <= 0 || frame->height <= 0) return {};
    const QSize target = QSize(frame->width, frame->height).scaled(maxSize, Qt::KeepAspectRatio);
    if (target.isEmpty()) return {};
    SwsContext* sws =
        sws_getContext(frame->width, frame->height, AVPixelFormat(frame->format), target.width(),
                       target.height(), AV_PIX_FMT_BGRA, SWS_BICUBIC, nullptr, nullptr, nullptr);
    if (!sws) return {};
    QImage image(target, QImage::Format_ARGB32);
    uint8_t* dst[4] = {image.bits(), nullptr, nullptr, nullptr};
    const int dstStride[4] = {int(image.bytesPerLine()), 0, 0, 0};
    sws_scale(sws, frame->data, frame->linesize, 0, frame->height, dst, dstStride);
    sws_freeContext(sws);
    return image;
}

QImage videoFrameImage(const QString& path, double seconds, QSize maxSize) {
    Decoder d;
    if (!d.packet || !d.frame) return {};
    const QByteArray native = QFile::encodeName(path);
    if (avformat_open_input(&d.format, native.constData(), nullptr, nullptr) < 0) return {};
    if (avformat_find_stream_info(d.format, nullptr) < 0) return {};
    const AVCodec* codec = nullptr;
    const int index = av_find_best_stream(d.format, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0 || !codec) return {};
    AVStream* stream = d.format->streams[index];
    d.codec = avcodec_alloc_context3(codec);
    if (!d.codec || avcodec_parameters_to_context(d.codec, stream->codecpar) < 0) return {};
    d.codec->thread_count = 1;
    if (avcodec_open2(d.codec, codec, nullptr) < 0) return {};

    const int64_t target = seconds > 0 ? av_rescale_q(int64_t(seconds * AV_TIME_BASE),
                                                      AV_TIME_BASE_Q, stream->time_base)
                                       : 0;
    if (target > 0) av_seek_frame(d.format, index, target, AVSEEK_FLAG_BACKWARD);

    QImage image;
    bool flushed = false;
    for (int packets = 0; packets < kMaxPackets && image.isNull(); ++packets) {
        const int read = av_read_frame(d.format, d.packet);
        if (read < 0) {
            if (flushed) break;
            avcodec_send_packet(d.codec, nullptr);  // drain what is buffered
            flushed = true;
        } else if (d.packet->stream_index == index) {
            avcodec_send_packet(d.codec, d.packet);
        }
        av_packet_unref(d.packet);
        while (image.isNull() && avcodec_receive_frame(d.codec, d.frame) == 0) {
            // Frames before the requested time (after a backward seek) are passed over.
            const int64_t pts = d.frame->best_effort_timestamp;
            if (target <= 0 || pts == AV_NOPTS_VALUE || pts >= target || flushed)
                image = decodedFrameImage(d.frame, maxSize);
            av_frame_unref(d.frame);
        }
    }
    if (image.isNull()) {
        qCInfo(lcTagsmith) << "no frame could be decoded ==" << path;
        return {};
    }
    const double rotation = streamDisplayRotation(stream);
    if (rotation != 0.0) image = image.transformed(QTransform().rotate(rotation));
    return image;
}
