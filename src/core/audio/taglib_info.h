// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

// The TagLib adapter of the readers: the info dictionary of a WAV file (its
// RIFF INFO chunk) and of a FLAC file (its Vorbis comments and pictures), as
// stored. TagLib never sees a file for writing here, and nothing it throws
// leaves the adapter.
struct TagLibInfo {
    bool opened = false;  // TagLib recognised the file
    // RIFF ids ("INAM") or Vorbis names ("TITLE") with their values, in the
    // order TagLib gives them; a field of several values reads them joined
    // by "; ".
    QList<std::pair<QByteArray, QString>> fields;
    QByteArray artwork;  // FLAC: the front cover, else the first picture
    QString artworkMimeType;
};

class WindowedFile;
namespace TagLib {
namespace RIFF::WAV {
class File;
}
namespace FLAC {
class File;
}
}  // namespace TagLib

// Of a file open for reading.
TagLibInfo readRiffInfo(WindowedFile& file);
TagLibInfo readFlacInfo(WindowedFile& file);
// Of a file TagLib has parsed already (for its sound, say).
TagLibInfo riffInfoOf(TagLib::RIFF::WAV::File& file);
TagLibInfo flacInfoOf(TagLib::FLAC::File& file);
// The same over a file's bytes held in memory.
TagLibInfo readRiffInfoFromData(const QByteArray& data);
TagLibInfo readFlacInfoFromData(const QByteArray& data);
