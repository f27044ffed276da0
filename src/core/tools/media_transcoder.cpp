// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/media_transcoder.h"

#include <QFile>

#include <climits>
#include <cmath>
#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

// A failed step: the reason in the user's words; the details are logged
// where it is thrown. Never leaves this file.
struct Failure {
    QString reason;
};

// The room kept for the movie box was too small: the file is written again.
struct RoomTooSmall {};

QString avError(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return QString::fromUtf8(text);
}

void check(int ret, const char* step, const QString& reason) {
    if (ret >= 0) return;
    qCWarning(lcTagsmith) << "ffmpeg:" << step << "failed ==" << avError(ret);
    throw Failure{reason};
}

QString writeReason(int ret) {
    const int code = AVUNERROR(ret);
    return WriteResult::tr("the new file could not be written: %1")
        .arg(code > 0 && code < 4096 ? plainFileError(code) : avError(ret));
}

int firstStream(const AVFormatContext* format, AVMediaType type) {
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        const AVStream* s = format->streams[i];
        if (s->codecpar->codec_type == type && !(s->disposition & AV_DISPOSITION_ATTACHED_PIC))
            return int(i);
    }
    return -1;
}

struct Input {
    AVFormatContext* format = nullptr;
    ~Input() { avformat_close_input(&format); }
    bool open(const QString& path) {
        const QByteArray native = QFile::encodeName(path);
        if (avformat_open_input(&format, native.constData(), nullptr, nullptr) < 0) return false;
        return avformat_find_stream_info(format, nullptr) >= 0;
    }
};

// "#2 audio (aac)", "#3 data (tmcd)": a stream for the log.
QString streamName(const AVStream* s) {
    const AVCodecParameters* p = s->codecpar;
    const char* type = av_get_media_type_string(p->codec_type);
    QString codec = QString::fromUtf8(avcodec_get_name(p->codec_id));
    if (p->codec_id == AV_CODEC_ID_NONE && p->codec_tag) {
        codec.clear();
        for (int shift = 0; shift < 32; shift += 8) codec += QChar((p->codec_tag >> shift) & 0xff);
    }
    return QStringLiteral("#%1 %2 (%3)")
        .arg(s->index)
        .arg(QLatin1String(type ? type : "unknown"), codec);
}

// The source's codec tag goes along where the output type reads it as the
// same codec or has no tag of its own for the codec (a timecode track); else
// the muxer chooses.
uint32_t keptTag(const AVOutputFormat* format, const AVCodecParameters* p) {
    unsigned int own = 0;
    if (!format->codec_tag || av_codec_get_id(format->codec_tag, p->codec_tag) == p->codec_id ||
        !av_codec_get_tag2(format->codec_tag, p->codec_id, &own))
        return p->codec_tag;
    return 0;
}

void copyRotation(const AVStream* from, AVStream* to);

// A copied stream: the source's parameters, time base, frame rate, metadata
// (language, handler) and disposition; the display rotation of a picture.
void copyStream(const AVOutputFormat* format, const AVStream* in, AVStream* out) {
    check(avcodec_parameters_copy(out->codecpar, in->codecpar), "copy parameters",
          WriteResult::tr("out of memory"));
    out->codecpar->codec_tag = keptTag(format, in->codecpar);
    out->time_base = in->time_base;
    // A timecode track is written with its frame rate.
    out->avg_frame_rate = in->avg_frame_rate.num ? in->avg_frame_rate : in->r_frame_rate;
    out->r_frame_rate = in->r_frame_rate;
    out->disposition = in->disposition;
    av_dict_copy(&out->metadata, in->metadata, 0);
    if (in->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) copyRotation(in, out);
}

// Whether the output type takes a copy of the stream: the muxer is asked to
// start a file of that stream alone, in memory, where its own codec and tag
// checks run.
bool muxerTakes(const AVOutputFormat* format, const AVStream* in) {
    AVFormatContext* trial = nullptr;
    if (avformat_alloc_output_context2(&trial, format, nullptr, nullptr) < 0) return false;
    bool takes = false;
    if (avio_open_dyn_buf(&trial->pb) >= 0) {
        AVStream* s = avformat_new_stream(trial, nullptr);
        takes = s && avcodec_parameters_copy(s->codecpar, in->codecpar) >= 0;
        if (takes) {
            s->codecpar->codec_tag = keptTag(format, in->codecpar);
            s->time_base = in->time_base;
            s->disposition = in->disposition;
            takes = avformat_init_output(trial, nullptr) >= 0;
        }
        uint8_t* bytes = nullptr;
        avio_close_dyn_buf(trial->pb, &bytes);
        av_free(bytes);
        trial->pb = nullptr;
    }
    avformat_free_context(trial);
    return takes;
}

void copyRotation(const AVStream* from, AVStream* to) {
    size_t size = 0;
    const uint8_t* matrix =
        av_stream_get_side_data(const_cast<AVStream*>(from), AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!matrix) return;
    if (uint8_t* copy = av_stream_new_side_data(to, AV_PKT_DATA_DISPLAYMATRIX, size))
        std::memcpy(copy, matrix, size);
}

// One stream of the source on its way into the output.
struct Lane {
    StreamMode mode = StreamMode::Drop;
    bool video = false;
    AVStream* in = nullptr;
    AVStream* out = nullptr;
    AVCodecContext* decoder = nullptr;
    AVCodecContext* encoder = nullptr;
    AVFilterGraph* graph = nullptr;
    AVFilterContext* source = nullptr;
    AVFilterContext* sink = nullptr;
    int64_t nextAudioPts = 0;
    bool inputDone = false;
    ~Lane() {
        avcodec_free_context(&decoder);
        avcodec_free_context(&encoder);
        avfilter_graph_free(&graph);
    }
};

class Pass {
public:
    Pass(const TranscodeRequest& request, const JobControl& control, bool keepRoom)
        : m_request(request), m_control(control), m_keepRoom(keepRoom) {}
    ~Pass() {
        av_frame_free(&m_frame);
        av_frame_free(&m_filtered);
        av_packet_free(&m_packet);
        if (m_output) {
            if (!(m_output->oformat->flags & AVFMT_NOFILE)) avio_closep(&m_output->pb);
            avformat_free_context(m_output);
        }
    }

    ExportStatus run() {
        if (!m_input.open(m_request.sourcePath)) {
            qCWarning(lcTagsmith) << "ffmpeg cannot open ==" << m_request.sourcePath;
            throw Failure{WriteResult::tr("the file cannot be read as a movie")};
        }
        const QByteArray native = QFile::encodeName(m_request.outputPath);
        check(
            avformat_alloc_output_context2(&m_output, nullptr, m_request.muxer, native.constData()),
            "output", WriteResult::tr("the output file type is not available"));
        const double duration =
            m_input.format->duration > 0 ? double(m_input.format->duration) / AV_TIME_BASE : 0;
        if (m_request.keepShare < 1.0 && duration > 0) m_limit = duration * m_request.keepShare;
        setUpLane(m_video, AVMEDIA_TYPE_VIDEO, m_request.video, m_request.requireVideo,
                  WriteResult::tr("the file has no video"));
        setUpLane(m_audio, AVMEDIA_TYPE_AUDIO, m_request.audio, m_request.requireAudio,
                  WriteResult::tr("the file has no sound"));
        if (!m_video.out && !m_audio.out) throw Failure{WriteResult::tr("the file has no media")};
        carryOtherStreams();
        m_expected = duration * m_request.timeScale;
        if (m_request.keepShare < 1.0 && duration > 0) m_expected = m_limit;

        check(avio_open(&m_output->pb, native.constData(), AVIO_FLAG_WRITE), "open output",
              WriteResult::tr("the new file cannot be created"));
        AVDictionary* options = nullptr;
        if (m_request.fastStart) {
            m_room = m_keepRoom ? (m_request.movieBoxRoom > 0 ? m_request.movieBoxRoom
                                                              : movieBoxRoom(duration))
                                : 0;
            if (m_room > 0)
                av_dict_set(&options, "moov_size", QByteArray::number(m_room).constData(), 0);
            else
                av_dict_set(&options, "movflags", "+faststart", 0);
        }
        const int header = avformat_write_header(m_output, &options);
        av_dict_free(&options);
        if (header < 0) {
            qCWarning(lcTagsmith) << "ffmpeg: header failed ==" << avError(header);
            throw Failure{writeReason(header)};
        }
        m_frame = av_frame_alloc();
        m_filtered = av_frame_alloc();
        m_packet = av_packet_alloc();
        if (!m_frame || !m_filtered || !m_packet) throw Failure{WriteResult::tr("out of memory")};
        if (!readAll()) return ExportStatus::Cancelled;
        for (Lane* lane : {&m_video, &m_audio}) {
            if (lane->mode != StreamMode::Encode) continue;
            decode(*lane, nullptr);
            check(av_buffersrc_add_frame_flags(lane->source, nullptr, 0), "filter flush",
                  WriteResult::tr("the picture or sound could not be converted"));
            pullFiltered(*lane);
            encode(*lane, nullptr);
        }
        const int trailer = av_write_trailer(m_output);
        if (trailer == AVERROR(EINVAL) && m_room > 0) throw RoomTooSmall{};
        if (trailer < 0) throw Failure{writeReason(trailer)};
        if (m_control.progress) m_control.progress(1.0);
        return ExportStatus::Completed;
    }

private:
    // How many packets the lane will write; 0 when that cannot be told.
    double packetCount(const Lane& lane, double duration) const {
        const AVStream* in = lane.in;
        if (lane.mode == StreamMode::Encode && !lane.video) {
            const int frame = lane.encoder->frame_size > 0 ? lane.encoder->frame_size : 1024;
            return duration * m_request.timeScale * lane.encoder->sample_rate / frame + 8;
        }
        if (in->nb_frames > 0) return double(in->nb_frames);
        if (in->disposition & AV_DISPOSITION_ATTACHED_PIC) return 1;  // a cover
        const double seconds =
            in->duration > 0 ? double(in->duration) * av_q2d(in->time_base) : duration;
        const AVCodecParameters* p = in->codecpar;
        if (p->codec_type == AVMEDIA_TYPE_AUDIO)
            return p->frame_size > 0 ? seconds * p->sample_rate / p->frame_size * 1.1 + 8 : 0;
        const AVRational rate = in->avg_frame_rate.num ? in->avg_frame_rate : in->r_frame_rate;
        return rate.num > 0 && rate.den > 0 ? seconds * av_q2d(rate) * 1.1 + 8 : 0;
    }

    // Room for the movie box, from the packets each stream will write: a
    // size, and for pictures a duration, a composition offset and a key-frame
    // entry (variable frame rates and reordered frames fill those tables); a
    // chunk offset and a chunk-table entry each when streams interleave. The
    // stream descriptions and the movie's header come on top. 0 (the box is
    // moved afterwards) when a count is unknown or the room would be more
    // than a fiftieth of the source.
    int movieBoxRoom(double duration) {
        const int streams = m_output->nb_streams;
        double bytes = 8192;
        for (Lane* lane : lanes()) {
            const double packets = packetCount(*lane, duration);
            if (packets <= 0) return 0;
            const bool audio = lane->in->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
            const int each = 4 + (audio ? 0 : 20) + (streams > 1 ? 20 : 0);
            bytes += packets * each + 1024 + lane->out->codecpar->extradata_size;
        }
        const double limit = qMax(
            1 << 20, int(qMin<int64_t>(
                         (m_input.format->pb ? avio_size(m_input.format->pb) : 0) / 50, INT_MAX)));
        if (bytes > limit) {
            qCInfo(lcTagsmith) << "the movie box would need" << qint64(bytes)
                               << "bytes ahead of the media; it is moved to the front instead";
            return 0;
        }
        return int(bytes);
    }

    void setUpLane(Lane& lane, AVMediaType type, StreamMode mode, bool required,
                   const QString& missing) {
        const int index = firstStream(m_input.format, type);
        if (index < 0 && required) {
            qCInfo(lcTagsmith) << "no" << av_get_media_type_string(type)
                               << "stream ==" << m_request.sourcePath;
            throw Failure{missing};
        }
        if (index < 0 || mode == StreamMode::Drop) return;
        lane.mode = mode;
        lane.video = type == AVMEDIA_TYPE_VIDEO;
        lane.in = m_input.format->streams[index];
        if (mode == StreamMode::Copy) return setUpCopy(lane);
        openDecoder(lane);
        if (lane.video)
            setUpVideoEncoder(lane);
        else
            setUpAudioEncoder(lane);
    }

    void setUpCopy(Lane& lane) {
        const AVCodecID codec = lane.in->codecpar->codec_id;
        if (avformat_query_codec(m_output->oformat, codec, FF_COMPLIANCE_NORMAL) == 0) {
            qCWarning(lcTagsmith) << "the" << m_request.muxer << "muxer cannot hold"
                                  << avcodec_get_name(codec);
            throw Failure{(lane.video ? WriteResult::tr("this file type cannot hold %1 video")
                                      : WriteResult::tr("this file type cannot hold %1 sound"))
                              .arg(QString::fromUtf8(avcodec_get_name(codec)))};
        }
        lane.out = newStream();
        copyStream(m_output->oformat, lane.in, lane.out);
    }

    // The streams besides the first video and audio. A pass-through (both
    // copied, nothing cut or retimed) copies every one the output type
    // holds and names each one it cannot; the other jobs keep only the first
    // video and audio, and the log names what they leave out.
    void carryOtherStreams() {
        const bool passThrough = m_request.video == StreamMode::Copy &&
                                 m_request.audio == StreamMode::Copy &&
                                 m_request.timeScale == 1.0 && m_request.keepShare >= 1.0;
        QStringList leftOut;
        for (unsigned i = 0; i < m_input.format->nb_streams; ++i) {
            AVStream* in = m_input.format->streams[i];
            if (in == m_video.in || in == m_audio.in) continue;
            if (!passThrough) {
                leftOut << streamName(in);
            } else if (!muxerTakes(m_output->oformat, in)) {
                qCInfo(lcTagsmith).noquote()
                    << "stream" << streamName(in) << "cannot go into a" << m_request.muxer
                    << "file and is left out ==" << m_request.sourcePath;
            } else {
                auto lane = std::make_unique<Lane>();
                lane->mode = StreamMode::Copy;
                lane->in = in;
                lane->out = newStream();
                copyStream(m_output->oformat, in, lane->out);
                m_others.push_back(std::move(lane));
            }
        }
        if (!leftOut.isEmpty())
            qCInfo(lcTagsmith).noquote() << "only the first video and audio streams are used;"
                                         << "left out:" << leftOut.join(QStringLiteral(", "))
                                         << "==" << m_request.sourcePath;
    }

    // Every lane that writes a stream, in output order.
    std::vector<Lane*> lanes() {
        std::vector<Lane*> all;
        for (Lane* lane : {&m_video, &m_audio})
            if (lane->out) all.push_back(lane);
        for (const auto& lane : m_others) all.push_back(lane.get());
        return all;
    }

    AVStream* newStream() {
        AVStream* s = avformat_new_stream(m_output, nullptr);
        if (!s) throw Failure{WriteResult::tr("out of memory")};
        return s;
    }

    void openDecoder(Lane& lane) {
        const AVCodec* codec = avcodec_find_decoder(lane.in->codecpar->codec_id);
        const QString unreadable = lane.video ? WriteResult::tr("its video cannot be decoded")
                                              : WriteResult::tr("its sound cannot be decoded");
        if (!codec) throw Failure{unreadable};
        lane.decoder = avcodec_alloc_context3(codec);
        if (!lane.decoder) throw Failure{WriteResult::tr("out of memory")};
        check(avcodec_parameters_to_context(lane.decoder, lane.in->codecpar), "decoder",
              unreadable);
        lane.decoder->pkt_timebase = lane.in->time_base;
        lane.decoder->thread_count = 0;  // one per core, as the ffmpeg tool decodes
        if (lane.video)
            lane.decoder->framerate = av_guess_frame_rate(m_input.format, lane.in, nullptr);
        check(avcodec_open2(lane.decoder, codec, nullptr), "open decoder", unreadable);
    }

    void buildGraph(Lane& lane, const char* args, const QString& chain) {
        const QString reason = WriteResult::tr("the picture or sound could not be converted");
        lane.graph = avfilter_graph_alloc();
        if (!lane.graph) throw Failure{WriteResult::tr("out of memory")};
        check(avfilter_graph_create_filter(&lane.source,
                                           avfilter_get_by_name(lane.video ? "buffer" : "abuffer"),
                                           "in", args, nullptr, lane.graph),
              "filter source", reason);
        check(avfilter_graph_create_filter(
                  &lane.sink, avfilter_get_by_name(lane.video ? "buffersink" : "abuffersink"),
                  "out", nullptr, nullptr, lane.graph),
              "filter sink", reason);
        AVFilterInOut* outputs = avfilter_inout_alloc();
        AVFilterInOut* inputs = avfilter_inout_alloc();
        if (!outputs || !inputs) {
            avfilter_inout_free(&outputs);
            avfilter_inout_free(&inputs);
            throw Failure{WriteResult::tr("out of memory")};
        }
        outputs->name = av_strdup("in");
        outputs->filter_ctx = lane.source;
        inputs->name = av_strdup("out");
        inputs->filter_ctx = lane.sink;
        const QByteArray text = chain.toUtf8();
        const int parsed =
            avfilter_graph_parse_ptr(lane.graph, text.constData(), &inputs, &outputs, nullptr);
        avfilter_inout_free(&outputs);
        avfilter_inout_free(&inputs);
        check(parsed, "filter chain", reason);
        check(avfilter_graph_config(lane.graph, nullptr), "filter graph", reason);
    }

    QString trim(const char* filter) const {
        if (m_limit <= 0) return {};
        return QStringLiteral("%1=end=%2,").arg(QLatin1String(filter)).arg(m_limit, 0, 'g', 17);
    }

    void setUpVideoEncoder(Lane& lane) {
        const AVCodecContext* d = lane.decoder;
        char args[256];
        std::snprintf(args, sizeof args,
                      "video_size=%dx%d:pix_fmt=%d:time_base=%d/%d:pixel_aspect=%d/%d", d->width,
                      d->height, int(d->pix_fmt), lane.in->time_base.num, lane.in->time_base.den,
                      d->sample_aspect_ratio.num, qMax(1, d->sample_aspect_ratio.den));
        buildGraph(lane, args, trim("trim") + QStringLiteral("format=yuv420p"));

        const AVCodec* x264 = avcodec_find_encoder_by_name("libx264");
        if (!x264) throw Failure{WriteResult::tr("the H.264 encoder is not installed")};
        AVCodecContext* e = lane.encoder = avcodec_alloc_context3(x264);
        if (!e) throw Failure{WriteResult::tr("out of memory")};
        e->width = av_buffersink_get_w(lane.sink);
        e->height = av_buffersink_get_h(lane.sink);
        e->pix_fmt = AVPixelFormat(av_buffersink_get_format(lane.sink));
        e->sample_aspect_ratio = av_buffersink_get_sample_aspect_ratio(lane.sink);
        e->time_base = av_buffersink_get_time_base(lane.sink);
        e->framerate = d->framerate;
        const EncoderSettings settings = encoderSettings(m_request.quality);
        av_opt_set(e->priv_data, "preset", settings.x264Preset, 0);
        av_opt_set(e->priv_data, "crf", QByteArray::number(settings.crf).constData(), 0);
        if (m_output->oformat->flags & AVFMT_GLOBALHEADER) e->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        check(avcodec_open2(e, x264, nullptr), "open x264",
              WriteResult::tr("the video could not be encoded"));
        lane.out = newStream();
        check(avcodec_parameters_from_context(lane.out->codecpar, e), "encoder parameters",
              WriteResult::tr("out of memory"));
        lane.out->time_base = e->time_base;
        lane.out->avg_frame_rate = e->framerate;
        copyRotation(lane.in, lane.out);
    }

    void setUpAudioEncoder(Lane& lane) {
        const AVCodec* aac = avcodec_find_encoder(AV_CODEC_ID_AAC);
        if (!aac) throw Failure{WriteResult::tr("the AAC encoder is not installed")};
        const AVCodecContext* d = lane.decoder;
        int rate = 48000;
        for (const int* r = aac->supported_samplerates; r && *r; ++r)
            if (*r == d->sample_rate) rate = *r;
        const int channels = d->ch_layout.nb_channels == 1 ? 1 : 2;
        AVChannelLayout layout{};
        if (d->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&layout, d->ch_layout.nb_channels);
        else
            av_channel_layout_copy(&layout, &d->ch_layout);
        char layoutName[128] = {};
        av_channel_layout_describe(&layout, layoutName, sizeof layoutName);
        av_channel_layout_uninit(&layout);
        char args[320];
        std::snprintf(
            args, sizeof args, "time_base=1/%d:sample_rate=%d:sample_fmt=%s:channel_layout=%s",
            d->sample_rate, d->sample_rate, av_get_sample_fmt_name(d->sample_fmt), layoutName);
        // atempo takes factors from 0.5 up: slower tempos are chained.
        QString tempo;
        for (double t = 1.0 / m_request.timeScale; std::abs(t - 1.0) > 1e-9;) {
            const double step = t < 0.5 ? 0.5 : t;
            tempo += QStringLiteral("atempo=%1,").arg(step, 0, 'g', 17);
            t /= step;
        }
        buildGraph(lane, args,
                   trim("atrim") + tempo +
                       QStringLiteral("aformat=sample_fmts=fltp:sample_rates=%1:channel_layouts=%2")
                           .arg(rate)
                           .arg(channels == 1 ? QLatin1String("mono") : QLatin1String("stereo")));

        AVCodecContext* e = lane.encoder = avcodec_alloc_context3(aac);
        if (!e) throw Failure{WriteResult::tr("out of memory")};
        e->sample_fmt = AV_SAMPLE_FMT_FLTP;
        e->sample_rate = rate;
        av_channel_layout_default(&e->ch_layout, channels);
        e->bit_rate = m_request.audioBitRate > 0 ? m_request.audioBitRate
                                                 : encoderSettings(m_request.quality).audioBitRate;
        e->time_base = AVRational{1, rate};
        if (m_output->oformat->flags & AVFMT_GLOBALHEADER) e->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        check(avcodec_open2(e, aac, nullptr), "open aac",
              WriteResult::tr("the sound could not be encoded"));
        av_buffersink_set_frame_size(lane.sink, unsigned(e->frame_size));
        lane.out = newStream();
        check(avcodec_parameters_from_context(lane.out->codecpar, e), "encoder parameters",
              WriteResult::tr("out of memory"));
        lane.out->time_base = e->time_base;
    }

    // Reads the source to its end (or the time limit); false when cancelled.
    bool readAll() {
        std::vector<Lane*> byStream(m_input.format->nb_streams, nullptr);
        for (Lane* lane : lanes()) byStream[size_t(lane->in->index)] = lane;
        while (!(m_video.mode != StreamMode::Drop ? m_video.inputDone : true) ||
               !(m_audio.mode != StreamMode::Drop ? m_audio.inputDone : true)) {
            if (m_control.cancelled()) return false;
            const int read = av_read_frame(m_input.format, m_packet);
            if (read < 0) {
                if (read != AVERROR_EOF)
                    qCWarning(lcTagsmith)
                        << "ffmpeg: reading stopped ==" << avError(read) << m_request.sourcePath;
                return true;
            }
            Lane* lane =
                m_packet->stream_index >= 0 && size_t(m_packet->stream_index) < byStream.size()
                    ? byStream[size_t(m_packet->stream_index)]
                    : nullptr;
            if (lane && lane->inputDone) lane = nullptr;
            if (lane && m_limit > 0 && m_packet->dts != AV_NOPTS_VALUE &&
                m_packet->dts * av_q2d(lane->in->time_base) >= m_limit)
                lane->inputDone = true;  // every later frame is past the end
            else if (lane && lane->mode == StreamMode::Copy)
                copyPacket(*lane);
            else if (lane)
                decode(*lane, m_packet);
            av_packet_unref(m_packet);
        }
        return true;
    }

    void copyPacket(Lane& lane) {
        AVPacket* p = m_packet;
        const double scale = m_request.timeScale;
        if (scale != 1.0) {
            if (p->pts != AV_NOPTS_VALUE) p->pts = std::llround(double(p->pts) * scale);
            if (p->dts != AV_NOPTS_VALUE) p->dts = std::llround(double(p->dts) * scale);
            p->duration = std::llround(double(p->duration) * scale);
        }
        av_packet_rescale_ts(p, lane.in->time_base, lane.out->time_base);
        p->stream_index = lane.out->index;
        p->pos = -1;
        write(lane, p);
    }

    void decode(Lane& lane, const AVPacket* packet) {
        const int sent = avcodec_send_packet(lane.decoder, packet);
        if (sent < 0 && sent != AVERROR_EOF) {
            qCInfo(lcTagsmith) << "ffmpeg: a damaged packet is passed over ==" << avError(sent);
            return;
        }
        while (avcodec_receive_frame(lane.decoder, m_frame) == 0) {
            m_frame->pts = m_frame->best_effort_timestamp;
            if (!lane.video) {
                const AVRational rate{1, lane.decoder->sample_rate};
                m_frame->pts = m_frame->pts == AV_NOPTS_VALUE
                                   ? lane.nextAudioPts
                                   : av_rescale_q(m_frame->pts, lane.in->time_base, rate);
                lane.nextAudioPts = m_frame->pts + m_frame->nb_samples;
            }
            const int added = av_buffersrc_add_frame_flags(lane.source, m_frame, 0);
            av_frame_unref(m_frame);
            check(added, "filter input",
                  WriteResult::tr("the picture or sound could not be converted"));
            pullFiltered(lane);
        }
    }

    void pullFiltered(Lane& lane) {
        while (av_buffersink_get_frame(lane.sink, m_filtered) >= 0) {
            if (m_filtered->pts != AV_NOPTS_VALUE)
                m_filtered->pts =
                    av_rescale_q(m_filtered->pts, av_buffersink_get_time_base(lane.sink),
                                 lane.encoder->time_base);
            if (lane.video) m_filtered->pict_type = AV_PICTURE_TYPE_NONE;
            encode(lane, m_filtered);
            av_frame_unref(m_filtered);
        }
    }

    void encode(Lane& lane, const AVFrame* frame) {
        const int sent = avcodec_send_frame(lane.encoder, frame);
        if (sent < 0 && sent != AVERROR_EOF)
            check(sent, "encode", WriteResult::tr("the movie could not be encoded"));
        AVPacket* out = av_packet_alloc();
        if (!out) throw Failure{WriteResult::tr("out of memory")};
        while (avcodec_receive_packet(lane.encoder, out) == 0) {
            av_packet_rescale_ts(out, lane.encoder->time_base, lane.out->time_base);
            out->stream_index = lane.out->index;
            const int written = writeNoThrow(lane, out);
            if (written < 0) {
                av_packet_free(&out);
                throw Failure{writeReason(written)};
            }
        }
        av_packet_free(&out);
    }

    void write(Lane& lane, AVPacket* packet) {
        const int written = writeNoThrow(lane, packet);
        if (written < 0) throw Failure{writeReason(written)};
    }

    int writeNoThrow(Lane& lane, AVPacket* packet) {
        if (packet->pts != AV_NOPTS_VALUE && m_expected > 0 && m_control.progress) {
            const double done =
                qBound(0.0, packet->pts * av_q2d(lane.out->time_base) / m_expected, 1.0);
            if (done - m_reported >= 0.01) {
                m_reported = done;
                m_control.progress(done);
            }
        }
        const int written = av_interleaved_write_frame(m_output, packet);
        if (written < 0) qCWarning(lcTagsmith) << "ffmpeg: write failed ==" << avError(written);
        return written;
    }

    const TranscodeRequest& m_request;
    const JobControl& m_control;
    const bool m_keepRoom;
    int m_room = 0;  // bytes kept ahead of the media for the movie box
    Input m_input;
    AVFormatContext* m_output = nullptr;
    Lane m_video;
    Lane m_audio;
    std::vector<std::unique_ptr<Lane>> m_others;  // further streams, copied
    AVFrame* m_frame = nullptr;
    AVFrame* m_filtered = nullptr;
    AVPacket* m_packet = nullptr;
    double m_limit = 0;  // seconds kept; 0: all
    double m_expected = 0;
    double m_reported = 0;
};

}  // namespace

ExportOutcome transcodeMedia(const TranscodeRequest& request, const JobControl& control) {
    quietFfmpeg();
    try {
        try {
            Pass pass(request, control, true);
            return ExportOutcome(pass.run());
        } catch (const RoomTooSmall&) {
            qCInfo(lcTagsmith) << "the movie box could not be written into the room kept for"
                               << "it; writing again with the box moved to the front =="
                               << request.sourcePath;
        }
        Pass pass(request, control, false);
        return ExportOutcome(pass.run());
    } catch (const Failure& failure) {
        return ExportOutcome(ExportStatus::Failed, failure.reason);
    }
}

void quietFfmpeg() {
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

bool hasVideoStream(const QString& path) {
    quietFfmpeg();
    Input input;
    return input.open(path) && firstStream(input.format, AVMEDIA_TYPE_VIDEO) >= 0;
}
