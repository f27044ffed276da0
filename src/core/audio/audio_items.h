// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include "core/audio/audio_container.h"
#include "core/audio/caf_file.h"
#include "core/audio/id3_frames.h"
#include "core/library/metadata_item.h"

// Metadata items of audio tags, in stored order, as the readers match them
// and the All Tags list shows them.

// "id3/XXXX" items (key space "org.id3") named by the frames as stored
// ("id3/TYER", "id3/TT2"). Text frames read as their text (several values
// joined by "; "), comments and lyrics as their text with their language,
// pictures as a dictionary {"MIME", "data", "picturetype", "description"},
// user texts and links as "(description) value", anything else as its raw
// body.
QList<MetadataItem> id3MetadataItems(const Id3Tag& tag);

// "caaf/info-..." items (key space "caaf") of a CAF info chunk: the key
// "info-" + the entry's key, so "track number" is "caaf/info-track%20number".
QList<MetadataItem> cafMetadataItems(const CafInfo& info);

// One text item of `keySpace` ("riff" for RIFF INFO, "vorbis" for Vorbis
// comments): entries the All Tags list shows beside the fields.
MetadataItem audioTextItem(const QString& keySpace, const QByteArray& key, const QString& value);

// The items of an ID3 chunk of a WAV or AIFF file ("id3 " or "ID3 ").
QList<MetadataItem> id3ChunkMetadataItems(QIODevice& file, AudioContainer container);
// The items of a CAF file's info chunk.
QList<MetadataItem> cafFileMetadataItems(QIODevice& file);

// The items of the metadata walk, in container order: "id3/..." from the
// ID3v2 tags of MP3 files and the ID3 chunks of AIFF and WAV files,
// "itsk/..." and the other movie key spaces from MPEG-4 audio, "caaf/info-..."
// from CAF.
QList<MetadataItem> audioMetadataItems(QIODevice& file, AudioContainer container);
