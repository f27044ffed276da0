// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_remux.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

struct InputCloser {
    void operator()(AVFormatContext* c) const { avformat_close_input(&c); }
};
struct OutputCloser {
    void operator()(AVFormatContext* c) const {
        if (c->pb) avio_closep(&c->pb);
        avformat_free_context(c);
    }
};
struct PacketFree {
    void operator()(AVPacket* p) const { av_packet_free(&p); }
};
using Input = std::unique_ptr<AVFormatContext, InputCloser>;
using Output = std::unique_ptr<AVFormatContext, OutputCloser>;

QString libraryError(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return QString::fromUtf8(text);
}

// The container's name as users know it, from the demuxer that read it.
QString containerWord(const AVInputFormat* format, const QString& path) {
    static const QHash<QString, QString> names{
        {"wav", "WAV"},
        {"aiff", "AIFF"},
        {"caf", "CAF"},
        {"au", "AU"},
        {"ogg", "Ogg"},
        {"flac", "FLAC"},
        {"aac", "AAC"},
        {"mp3", "MP3"},
        {"w64", "Wave64"},
        {"matroska,webm", "Matroska"},
        {"asf", "Windows Media"},
        {"ac3", "AC-3"},
        {"eac3", "E-AC-3"},
        {"wv", "WavPack"},
        {"ape", "Monkey's Audio"},
    };
    const QString name = format ? QString::fromLatin1(format->name) : QString();
    return names.value(name, QFileInfo(path).suffix().toUpper());
}

// The codec's name as users know it: every PCM flavour is "PCM".
QString codecWord(AVCodecID id) {
    if (id >= AV_CODEC_ID_PCM_S16LE && id < AV_CODEC_ID_ADPCM_IMA_QT) return QStringLiteral("PCM");
    if (id >= AV_CODEC_ID_ADPCM_IMA_QT && id < AV_CODEC_ID_AMR_NB) return QStringLiteral("ADPCM");
    const AVCodecDescriptor* d = avcodec_descriptor_get(id);
    if (!d) return WriteResult::tr("unknown codec");
    return QString::fromUtf8(d->long_name ? d->long_name : d->name);
}

// The codecs an MPEG-4 audio file carries by the standard (what players of
// such files decode); FLAC and Vorbis in MPEG-4 are left to experiments.
bool fitsMpeg4Audio(AVCodecID id) {
    switch (id) {
        case AV_CODEC_ID_AAC:
        case AV_CODEC_ID_ALAC:
        case AV_CODEC_ID_MP3:
        case AV_CODEC_ID_MP2:
        case AV_CODEC_ID_AC3:
        case AV_CODEC_ID_EAC3:
        case AV_CODEC_ID_OPUS:
            return true;
        default:
            return false;
    }
}

void collectTags(const AVDictionary* dict, RemuxResult& out) {
    const AVDictionaryEntry* e = nullptr;
    while ((e = av_dict_get(dict, "", e, AV_DICT_IGNORE_SUFFIX))) {
        const QString key = QString::fromUtf8(e->key);
        const QString value = QString::fromUtf8(e->value);
        if (key.isEmpty() || value.isEmpty()) continue;
        bool seen = false;
        for (const auto& [k, v] : out.tags) seen = seen || k.compare(key, Qt::CaseInsensitive) == 0;
        if (!seen) out.tags.append({key, value});
    }
}

RemuxResult failed(const QString& reason) {
    RemuxResult r;
    r.reason = reason;
    return r;
}

}  // namespace

RemuxResult remuxAudio(const QString& source, const QString& target, RemuxContainer container) {
    av_log_set_level(AV_LOG_QUIET);
    const QByteArray in = QFile::encodeName(source);
    AVFormatContext* rawIn = nullptr;
    if (avformat_open_input(&rawIn, in.constData(), nullptr, nullptr) < 0) {
        qCWarning(lcTagsmith) << "remux: not a readable audio file ==" << source;
        return failed(WriteResult::tr("the file is not audio that can be read"));
    }
    Input input(rawIn);
    avformat_find_stream_info(input.get(), nullptr);
    const int index = av_find_best_stream(input.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (index < 0) {
        qCWarning(lcTagsmith) << "remux: no audio stream ==" << source;
        return failed(WriteResult::tr("the file holds no audio"));
    }
    AVStream* audio = input->streams[index];
    const AVCodecID codec = audio->codecpar->codec_id;
    const char* muxer = container == RemuxContainer::Mpeg4Audio ? "mp4" : "caf";
    const AVOutputFormat* format = av_guess_format(muxer, nullptr, nullptr);
    const bool fits =
        container == RemuxContainer::Mpeg4Audio
            ? fitsMpeg4Audio(codec)
            : format && avformat_query_codec(format, codec, FF_COMPLIANCE_NORMAL) == 1;
    if (!fits) {
        const QString why =
            (container == RemuxContainer::Mpeg4Audio
                 ? WriteResult::tr("%1 audio (%2) cannot be stored in an MPEG-4 audio file")
                 : WriteResult::tr("%1 audio (%2) cannot be stored in a CAF file"))
                .arg(containerWord(input->iformat, source), codecWord(codec));
        qCWarning(lcTagsmith).noquote() << why << "==" << source;
        return failed(why);
    }

    RemuxResult result;
    const QString demuxer = QString::fromLatin1(input->iformat->name);
    result.vorbisComments = demuxer == QLatin1String("ogg") || demuxer == QLatin1String("flac");
    collectTags(input->metadata, result);
    collectTags(audio->metadata, result);
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const AVStream* s = input->streams[i];
        if ((s->disposition & AV_DISPOSITION_ATTACHED_PIC) && s->attached_pic.size > 0) {
            result.cover = QByteArray(reinterpret_cast<const char*>(s->attached_pic.data),
                                      s->attached_pic.size);
            break;
        }
    }

    const QByteArray out = QFile::encodeName(target);
    AVFormatContext* rawOut = nullptr;
    if (avformat_alloc_output_context2(&rawOut, format, nullptr, out.constData()) < 0)
        return failed(WriteResult::tr("the audio could not be re-packed"));
    Output output(rawOut);
    output->flags |= AVFMT_FLAG_BITEXACT;  // no encoder tag, no time of writing
    AVStream* stream = avformat_new_stream(output.get(), nullptr);
    if (!stream || avcodec_parameters_copy(stream->codecpar, audio->codecpar) < 0)
        return failed(WriteResult::tr("the audio could not be re-packed"));
    stream->codecpar->codec_tag = 0;
    stream->time_base = audio->time_base;

    const auto give_up = [&](const char* step, int code) {
        qCWarning(lcTagsmith) << "remux:" << step << "failed:" << libraryError(code)
                              << "==" << source;
        if (output->pb) avio_closep(&output->pb);
        QFile::remove(target);
        return failed(code == AVERROR(ENOSPC)
                          ? WriteResult::tr("the disk is full")
                          : WriteResult::tr("the audio could not be re-packed"));
    };
    int rc = avio_open(&output->pb, out.constData(), AVIO_FLAG_WRITE);
    if (rc < 0) return give_up("opening the output", rc);
    if ((rc = avformat_write_header(output.get(), nullptr)) < 0) return give_up("the header", rc);
    std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
    while ((rc = av_read_frame(input.get(), packet.get())) >= 0) {
        if (packet->stream_index == index) {
            av_packet_rescale_ts(packet.get(), audio->time_base, stream->time_base);
            packet->stream_index = 0;
            packet->pos = -1;
            if ((rc = av_interleaved_write_frame(output.get(), packet.get())) < 0)
                return give_up("writing a packet", rc);
        }
        av_packet_unref(packet.get());
    }
    if (rc != AVERROR_EOF) qCInfo(lcTagsmith) << "remux: the source ends early ==" << source;
    if ((rc = av_write_trailer(output.get())) < 0) return give_up("the trailer", rc);
    if ((rc = avio_closep(&output->pb)) < 0) return give_up("closing the output", rc);
    result.ok = true;
    return result;
}
