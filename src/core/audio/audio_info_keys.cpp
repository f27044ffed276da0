// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_info_keys.h"

const QList<AudioInfoKey>& audioInfoKeys() {
    // RIFF ids as the common RIFF INFO lists name them (INAM title, IART
    // artist, IPRD product/album, IPRT part/track, ICRD creation date, IMUS
    // music by, IWRI written by); Vorbis names as the common comment
    // conventions do (DATE is the recording date; COMMENT is read as
    // DESCRIPTION too).
    static const QList<AudioInfoKey> table = {
        {"title", "INAM", "TITLE", nullptr, nullptr},
        {"subtitle", "ISBJ", "SUBTITLE", nullptr, nullptr},
        {"album", "IPRD", "ALBUM", nullptr, nullptr},
        {"artist", "IART", "ARTIST", nullptr, nullptr},
        {"track number", "IPRT", "TRACKNUMBER", "ITRK", "TRACK"},
        {"recorded date", "ICRD", "DATE", nullptr, nullptr},
        {"year", "YEAR", "YEAR", nullptr, nullptr},
        {"copyright", "ICOP", "COPYRIGHT", nullptr, nullptr},
        {"composer", "IMUS", "COMPOSER", nullptr, nullptr},
        {"comments", "ICMT", "COMMENT", nullptr, "DESCRIPTION"},
        {"lyricist", "IWRI", "LYRICIST", nullptr, nullptr},
        {"genre", "IGNR", "GENRE", nullptr, nullptr},
        {"encoding application", "ISFT", "ENCODER", nullptr, nullptr},
        {"keywords", "IKEY", "KEYWORDS", nullptr, nullptr},
    };
    return table;
}

const AudioInfoKey* audioInfoKeyFor(const QString& infoKey) {
    for (const AudioInfoKey& key : audioInfoKeys())
        if (infoKey == QLatin1String(key.infoKey)) return &key;
    return nullptr;
}

const AudioInfoKey* audioInfoKeyForRiff(const QByteArray& riffId) {
    for (const AudioInfoKey& key : audioInfoKeys())
        if (riffId == key.riffId || (key.riffAlias && riffId == key.riffAlias)) return &key;
    return nullptr;
}

const AudioInfoKey* audioInfoKeyForVorbis(const QString& vorbisName) {
    auto same = [&](const char* name) {
        return name && vorbisName.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    for (const AudioInfoKey& key : audioInfoKeys())
        if (same(key.vorbisName) || same(key.vorbisAlias)) return &key;
    return nullptr;
}
