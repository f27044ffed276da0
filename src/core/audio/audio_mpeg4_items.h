// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

#include "core/audio/audio_writers.h"
#include "core/video/metadata_item.h"

// The metadata items of an MPEG-4 audio file that the audio writers make,
// and how they are combined with the file's own items.
namespace AudioMpeg4Items {

// One editable field: where the editor holds it, the dictionary key a
// metadata reload names it by, and where an MPEG-4 audio file holds it.
// The first place is where a new value goes; a reader finds the field in
// every place, so a new value replaces it in each place the file has.
struct FieldPlaces {
    QString AudioEditorState::*now;
    QString AudioEditorState::*before;
    bool AudioEditorState::*group;
    const char* dictionaryKey;  // nullptr: a reload does not write it
    QStringList identifiers;
};

// The fields in the order their items are written. The record date goes to
// the QuickTime creation-date key and "©day" holds the release year alone
// (one field each, so neither hides the other). The band has no place but
// an ID3 frame, which an MPEG-4 audio file cannot hold.
const QList<FieldPlaces>& fields();

// One changed field and its new text.
struct Change {
    const FieldPlaces* field;
    QString text;
};

// The changed fields of the editor: group flag set and text changed.
QList<Change> editorChanges(const AudioEditorState& editor);
// The fields of a metadata dictionary that differ from the remembered values.
QList<Change> dictionaryChanges(const QVariantMap& exif, const AudioEditorState& remembered);

// The cover to write: nullopt when the user left it alone (the file's own
// bytes stay), a null picture when the user took it away.
std::optional<QImage> coverChange(const AudioEditorState& editor);

// The whole metadata list of the output: the new values first, then in
// every other place the file holds a changed field the new value (or the
// place dropped, for an emptied field), then the file's untouched items in
// their order, as their own bytes. Items of key spaces an MPEG-4 audio file
// cannot hold (ID3 frames, CAF info) are left out, each with a log line.
QList<MetadataItem> merged(const QList<Change>& changes, const std::optional<QImage>& cover,
                           const QList<MetadataItem>& existing);

// The tags a demuxer found in another kind of file, as the MPEG-4 audio
// items a reader finds the same fields in; tags with no such item are left
// out with one log line naming them. `cover` is the source's picture. A
// "date" is the release year, or with `dateIsRecording` (Vorbis comments)
// the record date.
QList<MetadataItem> itemsFromTags(const QList<std::pair<QString, QString>>& tags,
                                  const QByteArray& cover, bool dateIsRecording);

}  // namespace AudioMpeg4Items
