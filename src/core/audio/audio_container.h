// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>

// The container of an audio file, recognised by its bytes rather than its
// name (an .aiff file may hold a CAF container, a .wav file an MP3 stream).
enum class AudioContainer { Unknown, Wav, Flac, Au, Aiff, Caf, Mpeg4, Mp3, Ogg };

AudioContainer sniffAudioContainer(QIODevice& file);

// The content of the first chunk of a RIFF (WAV) or IFF (AIFF) file whose id
// is one of `ids`, or an empty array. The chunk walk is bounded and every
// size is checked against the file; a chunk larger than `maxSize` is not read.
QByteArray readContainerChunk(QIODevice& file, AudioContainer container,
                              const QList<QByteArray>& ids, qint64 maxSize);
