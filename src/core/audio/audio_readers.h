// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QList>
#include <QString>

#include <utility>

#include "core/audio/audio_container.h"
#include "core/library/ik_image_item.h"

// The import's readers of audio files. Each builds the record of one file
// (`fileType` "Audio", replaced by the kind text of the file's type), with
// its file facts, its probed facts (duration, bit rate, sample rate,
// channels) and its tags; a file whose bytes are no audio at all still gets
// a record, with the reason in `fileReadProblem`. The container is
// recognised by the file's bytes, so an .aiff file holding a CAF container
// is read as CAF. Without `probe` (a record the writers start from) the file
// is not opened as media and the probed facts are left out.

// The info dictionary: RIFF INFO for WAV, Vorbis comments for FLAC, the info
// chunk for CAF, nothing for AU.
IKImageItemPtr readSomeWAVAudioFileWithFilePath(const QString& path, bool probe = true);
// The metadata walk over the file's items with the AIFF identifier table.
IKImageItemPtr readSomeAiffAudioFileWithFilePath(const QString& path, bool probe = true);
// The same walk with the MP3 identifier table.
IKImageItemPtr readSomeMp3AudioFileWithFilePath(const QString& path, bool probe = true);

// The reader an audio path goes to by its extension: wav, flac, au → the WAV
// reader; aiff, aif → the AIFF reader; every other → the MP3 reader.
IKImageItemPtr readAudioFile(const QString& path, bool probe = true);

// Fills a record's fields from the walk's items with one of the two tables.
enum class AudioItemTable { Aiff, Mp3 };
void applyAudioMetadata(IKImageItem& item, const QList<MetadataItem>& items, AudioItemTable table);

// Fills a record's fields from info-dictionary entries (key, value); the
// "track number" goes to the album-artist field.
using AudioInfoEntries = QList<std::pair<QString, QString>>;
void applyAudioInfoDictionary(IKImageItem& item, const AudioInfoEntries& info);
