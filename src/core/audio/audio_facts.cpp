// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_facts.h"

#include <QtEndian>

#include <aifffile.h>
#include <flacfile.h>
#include <id3v2framefactory.h>
#include <mp4atom.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <mpegheader.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <speexfile.h>
#include <vorbisfile.h>
#include <wavfile.h>

#include <cmath>
#include <memory>

#include "core/audio/caf_file.h"
#include "core/audio/id3_frames.h"
#include "core/audio/taglib_stream.h"
#include "core/common/logging.h"
#include "core/common/windowed_file.h"

namespace {

constexpr auto kStyle = TagLib::AudioProperties::Average;

// The codec inside an Ogg stream, from its first packet.
std::unique_ptr<TagLib::File> oggFile(WindowedFile& file, TagLib::IOStream* stream) {
    if (!file.seek(28)) return {};
    const QByteArray packet = file.read(8);
    if (packet.startsWith("\x01vorbis"))
        return std::make_unique<TagLib::Ogg::Vorbis::File>(stream, true, kStyle);
    if (packet.startsWith("OpusHead"))
        return std::make_unique<TagLib::Ogg::Opus::File>(stream, true, kStyle);
    if (packet.startsWith("\x7f"
                          "FLAC"))
        return std::make_unique<TagLib::Ogg::FLAC::File>(stream, true, kStyle);
    if (packet.startsWith("Speex"))
        return std::make_unique<TagLib::Ogg::Speex::File>(stream, true, kStyle);
    return {};
}

std::unique_ptr<TagLib::File> tagLibFile(WindowedFile& file, AudioContainer container,
                                         TagLib::IOStream* stream) {
    auto* frames = TagLib::ID3v2::FrameFactory::instance();
    switch (container) {
        case AudioContainer::Mp3:
            return std::make_unique<TagLib::MPEG::File>(stream, frames, true, kStyle);
        case AudioContainer::Mpeg4:
            return std::make_unique<TagLib::MP4::File>(stream, true, kStyle);
        case AudioContainer::Flac:
            return std::make_unique<TagLib::FLAC::File>(stream, frames, true, kStyle);
        case AudioContainer::Wav:
            return std::make_unique<TagLib::RIFF::WAV::File>(stream, true, kStyle);
        case AudioContainer::Aiff:
            return std::make_unique<TagLib::RIFF::AIFF::File>(stream, true, kStyle);
        case AudioContainer::Ogg:
            return oggFile(file, stream);
        default:
            return {};
    }
}

// Uncompressed samples: the exact rate, which TagLib rounds to kbit/s.
std::optional<qint64> pcmBitRate(const TagLib::AudioProperties* p) {
    int bits = 0;
    if (const auto* wav = dynamic_cast<const TagLib::RIFF::WAV::Properties*>(p)) {
        if (wav->format() == 1) bits = wav->bitsPerSample();
    } else if (const auto* aiff = dynamic_cast<const TagLib::RIFF::AIFF::Properties*>(p)) {
        const TagLib::ByteVector type = aiff->compressionType();
        if (!aiff->isAiffC() || type == "NONE" || type == "sowt" || type == "twos")
            bits = aiff->bitsPerSample();
    }
    if (bits <= 0) return std::nullopt;
    return qint64(p->sampleRate()) * p->channels() * bits;
}

// An MPEG-4 descriptor's length: one to four bytes of seven bits each.
int descriptorLength(const QByteArray& b, qsizetype& at) {
    int length = 0;
    for (int i = 0; i < 4 && at < b.size(); ++i) {
        const uchar c = uchar(b[at++]);
        length = (length << 7) | (c & 0x7F);
        if (!(c & 0x80)) return length;
    }
    return -1;
}

// The channel count an AAC sound's decoder configuration states. MPEG-4
// files keep 2 in the sample entry whatever the sound has, so TagLib, which
// reads the entry, calls a mono recording stereo.
std::optional<int> aacChannels(TagLib::File& file) {
    TagLib::MP4::Atoms atoms(&file);
    TagLib::MP4::Atom* moov = atoms.find("moov");
    if (!moov) return std::nullopt;
    for (TagLib::MP4::Atom* trak : moov->findall("trak")) {
        const TagLib::MP4::Atom* hdlr = trak->find("mdia", "hdlr");
        const TagLib::MP4::Atom* stsd = trak->find("mdia", "minf", "stbl", "stsd");
        if (!hdlr || !stsd) continue;
        file.seek(hdlr->offset + 16);
        if (file.readBlock(4) != "soun") continue;
        file.seek(stsd->offset);
        const TagLib::ByteVector box = file.readBlock(std::min<unsigned long>(stsd->length, 4096));
        const QByteArray b(box.data(), qsizetype(box.size()));
        qsizetype at = b.indexOf("esds");
        if (at < 0) return std::nullopt;
        at += 8;  // type, version and flags
        // ES descriptor: id, flags and what they announce; then the decoder
        // configuration and its specific information.
        if (at >= b.size() || b[at++] != 0x03 || descriptorLength(b, at) < 0) return std::nullopt;
        if (at + 3 > b.size()) return std::nullopt;
        const uchar flags = uchar(b[at + 2]);
        at += 3;
        if (flags & 0x80) at += 2;
        if ((flags & 0x40) && at < b.size()) at += 1 + uchar(b[at]);
        if (flags & 0x20) at += 2;
        if (at >= b.size() || b[at++] != 0x04 || descriptorLength(b, at) < 0) return std::nullopt;
        at += 13;
        if (at >= b.size() || b[at++] != 0x05 || descriptorLength(b, at) < 2) return std::nullopt;
        // Audio specific configuration: object type (5 bits, or 11),
        // frequency index (4 bits, or 28), channel configuration (4 bits).
        quint64 bits = 0;
        int pos = 0;
        for (; pos < 48 && at < b.size(); pos += 8) bits = (bits << 8) | uchar(b[at++]);
        auto take = [&](int n) {
            if (n > pos) return (pos = 0), -1;
            return int((bits >> (pos -= n)) & ((1u << n) - 1));
        };
        if (take(5) == 31) take(6);
        if (take(4) == 15) take(24);
        static constexpr int kChannels[] = {0, 1, 2, 3, 4, 5, 6, 8};
        const int config = take(4);
        if (config > 0 && config < 8) return kChannels[config];
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<AudioFacts> tagLibFacts(WindowedFile& file, AudioContainer container, bool tags,
                                      bool infoDictionary) {
    TagLibReadStream stream(file);
    if (!stream.isOpen()) return std::nullopt;
    // Without the tags an MP3 is read from its sound on: TagLib would decode
    // every frame of the ID3v2 tag first, a third of the work for the file.
    if (!tags && container == AudioContainer::Mp3)
        stream.startAt(long(findTagRanges(file, false).audioBegin));
    const std::unique_ptr<TagLib::File> media = tagLibFile(file, container, &stream);
    if (!media || !media->isValid() || !media->audioProperties()) return std::nullopt;
    const TagLib::AudioProperties* p = media->audioProperties();
    AudioFacts out;
    if (p->lengthInMilliseconds() > 0)
        out.facts.durationSeconds = p->lengthInMilliseconds() / 1000.0;
    if (p->sampleRate() > 0) out.facts.audioSampleRate = p->sampleRate();
    if (p->channels() > 0) out.facts.audioChannels = p->channels();
    if (container == AudioContainer::Mpeg4)
        if (const auto channels = aacChannels(*media)) out.facts.audioChannels = *channels;
    if (const auto pcm = pcmBitRate(p))
        out.facts.audioBitRate = *pcm;
    else if (p->bitrate() > 0)
        out.facts.audioBitRate = qint64(p->bitrate()) * 1000;
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(media.get());
        mpeg && out.facts.audioBitRate) {
        // A constant bit rate as its frames state it: TagLib's average
        // counts the frame of the length header and rounds.
        const TagLib::MPEG::Header first(mpeg, mpeg->firstFrameOffset(), false);
        const qint64 stated = qint64(first.bitrate()) * 1000;
        if (first.isValid() && qAbs(stated - *out.facts.audioBitRate) * 50 <= stated)
            out.facts.audioBitRate = stated;
    }
    if (const TagLib::Tag* tag = tags ? media->tag() : nullptr) {
        out.album = QString::fromStdString(tag->album().to8Bit(true));
        if (tag->year() > 0) out.year = QString::number(tag->year());
    }
    if (infoDictionary) {
        if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(media.get()))
            out.info = riffInfoOf(*wav);
        else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(media.get()))
            out.info = flacInfoOf(*flac);
    }
    return out;
}

// CAF: the `desc` chunk (sample rate, packet shape, channels, bits) and the
// length from the packet table, else from the data size.
std::optional<AudioFacts> cafFacts(WindowedFile& file) {
    const CafLayout layout = readCafLayout(file);
    const CafChunk* desc = layout.find("desc");
    if (!layout.isCaf || !desc || desc->size < 32 || !file.seek(desc->contentOffset()))
        return std::nullopt;
    const QByteArray d = file.read(32);
    if (d.size() < 32) return std::nullopt;
    const double rate = qFromBigEndian<double>(d.constData());
    const quint32 bytesPerPacket = qFromBigEndian<quint32>(d.constData() + 16);
    const quint32 framesPerPacket = qFromBigEndian<quint32>(d.constData() + 20);
    const quint32 channels = qFromBigEndian<quint32>(d.constData() + 24);
    const quint32 bits = qFromBigEndian<quint32>(d.constData() + 28);
    if (!(rate > 0 && rate < 1e7) || channels == 0 || channels > 1024) return std::nullopt;
    AudioFacts out;
    out.facts.audioSampleRate = int(std::lround(rate));
    out.facts.audioChannels = int(channels);
    double frames = -1;
    if (const CafChunk* pakt = layout.find("pakt");
        pakt && pakt->size >= 24 && file.seek(pakt->contentOffset() + 8)) {
        const QByteArray valid = file.read(8);
        if (valid.size() == 8) frames = double(qFromBigEndian<qint64>(valid.constData()));
    }
    const CafChunk* data = layout.find("data");
    const qint64 dataBytes = data ? qMax<qint64>(0, data->size - 4) : 0;  // less the edit count
    if (frames < 0 && bytesPerPacket > 0 && framesPerPacket > 0)
        frames = double(dataBytes / bytesPerPacket) * framesPerPacket;
    if (frames > 0) out.facts.durationSeconds = frames / rate;
    const bool pcm = d.mid(8, 4) == "lpcm";
    if (pcm && bits > 0)
        out.facts.audioBitRate = qint64(std::lround(rate)) * channels * bits;
    else if (out.facts.durationSeconds && *out.facts.durationSeconds > 0)
        out.facts.audioBitRate = qint64(dataBytes * 8 / *out.facts.durationSeconds);
    return out;
}

// AU: a 24-byte header of data offset, data size, encoding, rate, channels.
std::optional<AudioFacts> auFacts(WindowedFile& file) {
    if (!file.seek(0)) return std::nullopt;
    const QByteArray h = file.read(24);
    if (h.size() < 24) return std::nullopt;
    const quint32 offset = qFromBigEndian<quint32>(h.constData() + 4);
    quint32 size = qFromBigEndian<quint32>(h.constData() + 8);
    const quint32 encoding = qFromBigEndian<quint32>(h.constData() + 12);
    const quint32 rate = qFromBigEndian<quint32>(h.constData() + 16);
    const quint32 channels = qFromBigEndian<quint32>(h.constData() + 20);
    static constexpr int kBytes[] = {0, 1, 1, 2, 3, 4, 4, 8};  // by encoding 1..7
    const int bytes = encoding < 8 ? kBytes[encoding] : encoding == 27 ? 1 : 0;
    if (rate == 0 || rate > 10'000'000 || channels == 0 || channels > 1024 || bytes == 0)
        return std::nullopt;
    if (size == 0xFFFFFFFFu) size = quint32(qMax<qint64>(0, file.size() - offset));
    AudioFacts out;
    out.facts.audioSampleRate = int(rate);
    out.facts.audioChannels = int(channels);
    out.facts.audioBitRate = qint64(rate) * channels * bytes * 8;
    out.facts.durationSeconds = double(size) / (double(channels) * bytes * rate);
    return out;
}

}  // namespace

std::optional<AudioFacts> readAudioFacts(WindowedFile& file, AudioContainer container, bool tags,
                                         bool infoDictionary) {
    std::optional<AudioFacts> out;
    try {
        if (container == AudioContainer::Caf)
            out = cafFacts(file);
        else if (container == AudioContainer::Au)
            out = auFacts(file);
        else
            out = tagLibFacts(file, container, tags, infoDictionary);
    } catch (const std::exception& e) {
        qCWarning(lcTagsmith) << "audio header reading failed ==" << e.what();
        out.reset();
    } catch (...) {
        qCWarning(lcTagsmith) << "audio header reading failed";
        out.reset();
    }
    if (out && !out->facts.audioSampleRate && !out->facts.durationSeconds) out.reset();
    return out;
}
