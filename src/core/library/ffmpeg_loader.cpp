// SPDX-License-Identifier: GPL-3.0-or-later
// FFmpeg is loaded on first use, not at start-up. Its libraries pull in some
// 130 more shared objects (every codec library they were built with), which
// cost each process about 50 ms in the dynamic loader, though most commands
// never open a movie. So nothing links FFmpeg: each FFmpeg function the
// program calls is defined here under its own name, with FFmpeg's own
// declaration in scope (the compiler refuses a signature that differs), and
// forwards to the real function, looked up once with dlsym. A function used
// somewhere new and missing here is an undefined symbol at link time.
//
// Where the libraries cannot be loaded, that is logged once per library and
// every call answers an error (null, AVERROR(ENOSYS)), which the callers
// already handle as a file FFmpeg cannot open.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/display.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <type_traits>

#include "core/library/lazy_library.h"

namespace {

// The libraries by their sonames, which the build takes from the installed
// FFmpeg's versions.
constexpr const char* kLoss = "movies and audio cannot be probed or converted";
LazyLibrary Util{TAGSMITH_SONAME_AVUTIL, kLoss};
LazyLibrary Codec{TAGSMITH_SONAME_AVCODEC, kLoss};
LazyLibrary Format{TAGSMITH_SONAME_AVFORMAT, kLoss};
LazyLibrary Filter{TAGSMITH_SONAME_AVFILTER, kLoss};
LazyLibrary Scale{TAGSMITH_SONAME_SWSCALE, kLoss};

// What a call answers when its function is missing.
template <typename R>
R missing() {
    if constexpr (std::is_same_v<R, int>)
        return AVERROR(ENOSYS);
    else if constexpr (!std::is_void_v<R>)
        return R{};
}

}  // namespace

#define TS_FFMPEG(lib, ret, name, params, args) \
    TS_FORWARD(lib, ret, name, params, args, missing<ret>())

// clang-format off
TS_FFMPEG(Util, AVDictionaryEntry *, av_dict_get, (const AVDictionary *m, const char *key, const AVDictionaryEntry *prev, int flags), (m, key, prev, flags))
TS_FFMPEG(Util, AVFrame *, av_frame_alloc, (void), ())
TS_FFMPEG(Util, char *, av_strdup, (const char *s), (s))
TS_FFMPEG(Util, const char *, av_get_media_type_string, (enum AVMediaType media_type), (media_type))
TS_FFMPEG(Util, const char *, av_get_sample_fmt_name, (enum AVSampleFormat sample_fmt), (sample_fmt))
TS_FFMPEG(Util, double, av_display_rotation_get, (const int32_t matrix[9]), (matrix))
TS_FFMPEG(Util, int, av_channel_layout_copy, (AVChannelLayout *dst, const AVChannelLayout *src), (dst, src))
TS_FFMPEG(Util, int, av_channel_layout_describe, (const AVChannelLayout *channel_layout, char *buf, size_t buf_size), (channel_layout, buf, buf_size))
TS_FFMPEG(Util, int, av_dict_copy, (AVDictionary **dst, const AVDictionary *src, int flags), (dst, src, flags))
TS_FFMPEG(Util, int, av_dict_set, (AVDictionary **pm, const char *key, const char *value, int flags), (pm, key, value, flags))
TS_FFMPEG(Util, int, av_opt_set, (void *obj, const char *name, const char *val, int search_flags), (obj, name, val, search_flags))
TS_FFMPEG(Util, int, av_strerror, (int errnum, char *errbuf, size_t errbuf_size), (errnum, errbuf, errbuf_size))
TS_FFMPEG(Util, int64_t, av_rescale_q, (int64_t a, AVRational bq, AVRational cq), (a, bq, cq))
TS_FFMPEG(Util, void, av_channel_layout_default, (AVChannelLayout *ch_layout, int nb_channels), (ch_layout, nb_channels))
TS_FFMPEG(Util, void, av_channel_layout_uninit, (AVChannelLayout *channel_layout), (channel_layout))
TS_FFMPEG(Util, void, av_dict_free, (AVDictionary **m), (m))
TS_FFMPEG(Util, void, av_free, (void *ptr), (ptr))
TS_FFMPEG(Util, void, av_frame_free, (AVFrame **frame), (frame))
TS_FFMPEG(Util, void, av_frame_move_ref, (AVFrame *dst, AVFrame *src), (dst, src))
TS_FFMPEG(Util, void, av_frame_unref, (AVFrame *frame), (frame))
TS_FFMPEG(Util, void, av_log_set_level, (int level), (level))
TS_FFMPEG(Codec, AVCodecContext *, avcodec_alloc_context3, (const AVCodec *codec), (codec))
TS_FFMPEG(Codec, AVPacket *, av_packet_alloc, (void), ())
TS_FFMPEG(Codec, const AVCodec *, avcodec_find_decoder, (enum AVCodecID id), (id))
TS_FFMPEG(Codec, const AVCodec *, avcodec_find_encoder, (enum AVCodecID id), (id))
TS_FFMPEG(Codec, const AVCodec *, avcodec_find_encoder_by_name, (const char *name), (name))
TS_FFMPEG(Codec, const AVCodecDescriptor *, avcodec_descriptor_get, (enum AVCodecID id), (id))
TS_FFMPEG(Codec, const char *, avcodec_get_name, (enum AVCodecID id), (id))
TS_FFMPEG(Codec, int, avcodec_open2, (AVCodecContext *avctx, const AVCodec *codec, AVDictionary **options), (avctx, codec, options))
TS_FFMPEG(Codec, int, avcodec_parameters_copy, (AVCodecParameters *dst, const AVCodecParameters *src), (dst, src))
TS_FFMPEG(Codec, int, avcodec_parameters_from_context, (AVCodecParameters *par, const AVCodecContext *codec), (par, codec))
TS_FFMPEG(Codec, int, avcodec_parameters_to_context, (AVCodecContext *codec, const AVCodecParameters *par), (codec, par))
TS_FFMPEG(Codec, int, avcodec_receive_frame, (AVCodecContext *avctx, AVFrame *frame), (avctx, frame))
TS_FFMPEG(Codec, int, avcodec_receive_packet, (AVCodecContext *avctx, AVPacket *avpkt), (avctx, avpkt))
TS_FFMPEG(Codec, int, avcodec_send_frame, (AVCodecContext *avctx, const AVFrame *frame), (avctx, frame))
TS_FFMPEG(Codec, int, avcodec_send_packet, (AVCodecContext *avctx, const AVPacket *avpkt), (avctx, avpkt))
TS_FFMPEG(Codec, void, av_packet_free, (AVPacket **pkt), (pkt))
TS_FFMPEG(Codec, void, av_packet_rescale_ts, (AVPacket *pkt, AVRational tb_src, AVRational tb_dst), (pkt, tb_src, tb_dst))
TS_FFMPEG(Codec, void, av_packet_unref, (AVPacket *pkt), (pkt))
TS_FFMPEG(Codec, void, avcodec_free_context, (AVCodecContext **avctx), (avctx))
TS_FFMPEG(Format, AVCodecID, av_codec_get_id, (const struct AVCodecTag *const *tags, unsigned int tag), (tags, tag))
TS_FFMPEG(Format, AVRational, av_guess_frame_rate, (AVFormatContext *ctx, AVStream *stream, AVFrame *frame), (ctx, stream, frame))
TS_FFMPEG(Format, AVStream *, avformat_new_stream, (AVFormatContext *s, const AVCodec *c), (s, c))
TS_FFMPEG(Format, const AVInputFormat *, av_find_input_format, (const char *short_name), (short_name))
TS_FFMPEG(Format, const AVOutputFormat *, av_guess_format, (const char *short_name, const char *filename, const char *mime_type), (short_name, filename, mime_type))
TS_FFMPEG(Format, int, av_codec_get_tag2, (const struct AVCodecTag *const *tags, enum AVCodecID id, unsigned int *tag), (tags, id, tag))
TS_FFMPEG(Format, int, av_find_best_stream, (AVFormatContext *ic, enum AVMediaType type, int wanted_stream_nb, int related_stream, const AVCodec **decoder_ret, int flags), (ic, type, wanted_stream_nb, related_stream, decoder_ret, flags))
TS_FFMPEG(Format, int, av_interleaved_write_frame, (AVFormatContext *s, AVPacket *pkt), (s, pkt))
TS_FFMPEG(Format, int, av_read_frame, (AVFormatContext *s, AVPacket *pkt), (s, pkt))
TS_FFMPEG(Format, int, av_seek_frame, (AVFormatContext *s, int stream_index, int64_t timestamp, int flags), (s, stream_index, timestamp, flags))
TS_FFMPEG(Format, int, av_write_trailer, (AVFormatContext *s), (s))
TS_FFMPEG(Format, int, avformat_alloc_output_context2, (AVFormatContext **ctx, const AVOutputFormat *oformat, const char *format_name, const char *filename), (ctx, oformat, format_name, filename))
TS_FFMPEG(Format, int, avformat_find_stream_info, (AVFormatContext *ic, AVDictionary **options), (ic, options))
TS_FFMPEG(Format, int, avformat_init_output, (AVFormatContext *s, AVDictionary **options), (s, options))
TS_FFMPEG(Format, int, avformat_open_input, (AVFormatContext **ps, const char *url, const AVInputFormat *fmt, AVDictionary **options), (ps, url, fmt, options))
TS_FFMPEG(Format, int, avformat_query_codec, (const AVOutputFormat *ofmt, enum AVCodecID codec_id, int std_compliance), (ofmt, codec_id, std_compliance))
TS_FFMPEG(Format, int, avformat_write_header, (AVFormatContext *s, AVDictionary **options), (s, options))
TS_FFMPEG(Format, int, avio_close_dyn_buf, (AVIOContext *s, uint8_t **pbuffer), (s, pbuffer))
TS_FFMPEG(Format, int, avio_closep, (AVIOContext **s), (s))
TS_FFMPEG(Format, int, avio_open_dyn_buf, (AVIOContext **s), (s))
TS_FFMPEG(Format, int, avio_open, (AVIOContext **s, const char *url, int flags), (s, url, flags))
TS_FFMPEG(Format, int64_t, avio_size, (AVIOContext *s), (s))
TS_FFMPEG(Format, uint8_t *, av_stream_get_side_data, (const AVStream *stream, enum AVPacketSideDataType type, size_t *size), (stream, type, size))
TS_FFMPEG(Format, uint8_t *, av_stream_new_side_data, (AVStream *stream, enum AVPacketSideDataType type, size_t size), (stream, type, size))
TS_FFMPEG(Format, void, avformat_close_input, (AVFormatContext **s), (s))
TS_FFMPEG(Format, void, avformat_free_context, (AVFormatContext *s), (s))
TS_FFMPEG(Filter, AVFilterGraph *, avfilter_graph_alloc, (void), ())
TS_FFMPEG(Filter, AVFilterInOut *, avfilter_inout_alloc, (void), ())
TS_FFMPEG(Filter, AVRational, av_buffersink_get_sample_aspect_ratio, (const AVFilterContext *ctx), (ctx))
TS_FFMPEG(Filter, AVRational, av_buffersink_get_time_base, (const AVFilterContext *ctx), (ctx))
TS_FFMPEG(Filter, const AVFilter *, avfilter_get_by_name, (const char *name), (name))
TS_FFMPEG(Filter, int, av_buffersink_get_format, (const AVFilterContext *ctx), (ctx))
TS_FFMPEG(Filter, int, av_buffersink_get_frame, (AVFilterContext *ctx, AVFrame *frame), (ctx, frame))
TS_FFMPEG(Filter, int, av_buffersink_get_h, (const AVFilterContext *ctx), (ctx))
TS_FFMPEG(Filter, int, av_buffersink_get_w, (const AVFilterContext *ctx), (ctx))
TS_FFMPEG(Filter, int, av_buffersrc_add_frame_flags, (AVFilterContext *buffer_src, AVFrame *frame, int flags), (buffer_src, frame, flags))
TS_FFMPEG(Filter, int, avfilter_graph_config, (AVFilterGraph *graphctx, void *log_ctx), (graphctx, log_ctx))
TS_FFMPEG(Filter, int, avfilter_graph_create_filter, (AVFilterContext **filt_ctx, const AVFilter *filt, const char *name, const char *args, void *opaque, AVFilterGraph *graph_ctx), (filt_ctx, filt, name, args, opaque, graph_ctx))
TS_FFMPEG(Filter, int, avfilter_graph_parse_ptr, (AVFilterGraph *graph, const char *filters, AVFilterInOut **inputs, AVFilterInOut **outputs, void *log_ctx), (graph, filters, inputs, outputs, log_ctx))
TS_FFMPEG(Filter, void, av_buffersink_set_frame_size, (AVFilterContext *ctx, unsigned frame_size), (ctx, frame_size))
TS_FFMPEG(Filter, void, avfilter_graph_free, (AVFilterGraph **graph), (graph))
TS_FFMPEG(Filter, void, avfilter_inout_free, (AVFilterInOut **inout), (inout))
TS_FFMPEG(Scale, int, sws_scale, (struct SwsContext *c, const uint8_t *const srcSlice[], const int srcStride[], int srcSliceY, int srcSliceH, uint8_t *const dst[], const int dstStride[]), (c, srcSlice, srcStride, srcSliceY, srcSliceH, dst, dstStride))
TS_FFMPEG(Scale, struct SwsContext *, sws_getContext, (int srcW, int srcH, enum AVPixelFormat srcFormat, int dstW, int dstH, enum AVPixelFormat dstFormat, int flags, SwsFilter *srcFilter, SwsFilter *dstFilter, const double *param), (srcW, srcH, srcFormat, dstW, dstH, dstFormat, flags, srcFilter, dstFilter, param))
TS_FFMPEG(Scale, void, sws_freeContext, (struct SwsContext *swsContext), (swsContext))
// clang-format on
