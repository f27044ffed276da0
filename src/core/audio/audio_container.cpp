// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_container.h"

#include <QtEndian>

#include "core/audio/caf_file.h"
#include "core/audio/id3_frames.h"

namespace {

constexpr int kMaxChunks = 4096;

bool mpegFrameSync(const QByteArray& b, qsizetype at) {
    // Eleven sync bits and a layer (ADTS AAC has the layer bits clear).
    return at + 1 < b.size() && static_cast<uchar>(b[at]) == 0xFF &&
           (static_cast<uchar>(b[at + 1]) & 0xE0) == 0xE0 &&
           (static_cast<uchar>(b[at + 1]) & 0x06) != 0;
}

AudioContainer sniffHead(const QByteArray& head) {
    if (head.size() >= 12 && head.startsWith("RIFF") && head.mid(8, 4) == "WAVE")
        return AudioContainer::Wav;
    if (head.size() >= 12 && head.startsWith("FORM") &&
        (head.mid(8, 4) == "AIFF" || head.mid(8, 4) == "AIFC"))
        return AudioContainer::Aiff;
    if (head.startsWith("fLaC")) return AudioContainer::Flac;
    if (head.startsWith(".snd")) return AudioContainer::Au;
    if (head.startsWith("OggS")) return AudioContainer::Ogg;
    if (looksLikeCaf(head)) return AudioContainer::Caf;
    if (head.size() >= 8 && head.mid(4, 4) == "ftyp") return AudioContainer::Mpeg4;
    if (mpegFrameSync(head, 0)) return AudioContainer::Mp3;
    return AudioContainer::Unknown;
}

}  // namespace

AudioContainer sniffAudioContainer(QIODevice& file) {
    if (!file.seek(0)) return AudioContainer::Unknown;
    const QByteArray head = file.read(16);
    if (!head.startsWith("ID3")) return sniffHead(head);
    // Tags before the stream: most often MP3, sometimes FLAC or AAC. What
    // follows the tags decides; the tags are read whatever it is.
    qint64 pos = 0;
    for (int i = 0; i < 16 && file.seek(pos); ++i) {
        const qint64 size = id3v2TagSize(file.read(10));
        if (size == 0) break;
        pos += size;
    }
    if (!file.seek(pos)) return AudioContainer::Unknown;
    return sniffHead(file.read(16));
}

QByteArray readContainerChunk(QIODevice& file, AudioContainer container,
                              const QList<QByteArray>& ids, qint64 maxSize) {
    if (container != AudioContainer::Wav && container != AudioContainer::Aiff) return {};
    const bool riff = container == AudioContainer::Wav;
    const qint64 fileSize = file.size();
    qint64 pos = 12;
    for (int i = 0; i < kMaxChunks && pos + 8 <= fileSize; ++i) {
        if (!file.seek(pos)) return {};
        const QByteArray header = file.read(8);
        if (header.size() < 8) return {};
        const qint64 size = riff ? qFromLittleEndian<quint32>(header.constData() + 4)
                                 : qFromBigEndian<quint32>(header.constData() + 4);
        if (size > fileSize - pos - 8) return {};  // runs past the end: damaged
        if (ids.contains(header.left(4))) return size > maxSize ? QByteArray() : file.read(size);
        pos += 8 + size + (size & 1);  // chunks are padded to an even size
    }
    return {};
}
