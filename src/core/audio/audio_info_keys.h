// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The one table between the keys of an audio file's info dictionary
// ("title", "track number", "recorded date", ...) and where WAV and FLAC files
// store them: RIFF INFO chunk ids and Vorbis comment names. Readers and
// writers both go through it, so what one writes the other reads back.
struct AudioInfoKey {
    const char* infoKey;      // "track number"
    const char* riffId;       // "IPRT" (written; nullptr: WAV has no place for it)
    const char* vorbisName;   // "TRACKNUMBER" (written)
    const char* riffAlias;    // another id read as the same key, or nullptr
    const char* vorbisAlias;  // another comment name read as the same key, or nullptr
};

const QList<AudioInfoKey>& audioInfoKeys();

// The table's entry for an info key, a RIFF id or a Vorbis name (ids and names
// compared as stored; Vorbis names without regard to case); nullptr when the
// table has none.
const AudioInfoKey* audioInfoKeyFor(const QString& infoKey);
const AudioInfoKey* audioInfoKeyForRiff(const QByteArray& riffId);
const AudioInfoKey* audioInfoKeyForVorbis(const QString& vorbisName);
