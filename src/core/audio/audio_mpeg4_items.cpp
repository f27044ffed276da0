// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_mpeg4_items.h"

#include <QHash>
#include <QSet>

#include "core/common/logging.h"
#include "core/video/metadata_encoder.h"

namespace AudioMpeg4Items {

namespace {

using E = AudioEditorState;

const QString kCover = QStringLiteral("itsk/covr");

// The key spaces an MPEG-4 audio file holds.
bool holdable(const MetadataItem& item) {
    static const QSet<QString> spaces{"itsk", "mdta", "udta", "uiso"};
    return spaces.contains(item.identifier.section(QLatin1Char('/'), 0, 0));
}

MetadataItem itemAt(const QString& identifier, const QVariant& value) {
    MetadataItem item;
    item.identifier = identifier;
    item.keySpace = identifier.section(QLatin1Char('/'), 0, 0);
    if (item.keySpace == QLatin1String("id3")) item.keySpace = QStringLiteral("org.id3");
    item.key = MetadataEncoder::identifierKey(identifier.section(QLatin1Char('/'), 1));
    item.value = value;
    return item;
}

// The new text in the place of an item the file already has: its key and
// language stay.
MetadataItem placedLike(const MetadataItem& place, const QString& text) {
    MetadataItem item = itemAt(place.identifier, text);
    item.keySpace = place.keySpace;
    item.key = place.key;
    item.language = place.language;
    return item;
}

}  // namespace

const QList<FieldPlaces>& fields() {
    static const QList<FieldPlaces> rows{
        {&E::titlelab, &E::oldTitleStr, &E::basicInfoChange, "Title", {"itsk/%A9nam"}},
        {&E::subtitlelab, &E::oldSubtitleStr, &E::basicInfoChange, "Subtitle", {"itsk/%A9st3"}},
        {&E::abulmlab, &E::oldAlbumStr, &E::basicInfoChange, "Album", {"itsk/%A9alb"}},
        {&E::artistlab, &E::oldArtistStr, &E::basicInfoChange, "Artist", {"itsk/%A9ART"}},
        // The album-artist box holds the track number.
        {&E::ablumAristlab, &E::oldAlbumArtistStr, &E::basicInfoChange, nullptr, {"itsk/trkn"}},
        {&E::composerlab, &E::oldComposerStr, &E::basicInfoChange, "Composer", {"itsk/%A9wrt"}},
        {&E::recordDatelab,
         &E::oldRecordDateStr,
         &E::cameraInfoChange,
         "Record Date",
         {"mdta/com.apple.quicktime.creationdate", "uiso/date"}},
        {&E::releaseYearlab,
         &E::oldReleaseYearStr,
         &E::cameraInfoChange,
         "Release Year",
         {"itsk/%A9day"}},
        {&E::copyrightlab,
         &E::oldCopyrightStr,
         &E::cameraInfoChange,
         "Copyright",
         {"itsk/cprt", "mdta/com.apple.quicktime.copyright"}},
        {&E::publishlab,
         &E::oldPublisherStr,
         &E::cameraInfoChange,
         "Publisher",
         {"itsk/%A9pub", "mdta/com.apple.quicktime.publisher"}},
        {&E::bandlab, &E::oldBandStr, &E::cameraInfoChange, "Band", {"id3/TPE2"}},
        {&E::commentslab, &E::oldCommentStr, &E::cameraInfoChange, "Comments", {"itsk/%A9cmt"}},
        {&E::lyricslab, &E::oldLyricStr, &E::cameraInfoChange, "Lyrics", {"itsk/%A9lyr"}},
    };
    return rows;
}

QList<Change> editorChanges(const AudioEditorState& e) {
    QList<Change> out;
    for (const FieldPlaces& f : fields()) {
        if (e.*f.group && e.*f.now != e.*f.before) out.append({&f, e.*f.now});
    }
    return out;
}

QList<Change> dictionaryChanges(const QVariantMap& exif, const AudioEditorState& remembered) {
    QList<Change> out;
    for (const FieldPlaces& f : fields()) {
        if (!f.dictionaryKey || !exif.contains(QLatin1String(f.dictionaryKey))) continue;
        const QString text = exif.value(QLatin1String(f.dictionaryKey)).toString();
        if (text != remembered.*f.before) out.append({&f, text});
    }
    return out;
}

std::optional<QImage> coverChange(const AudioEditorState& e) {
    if (!e.imageChanged) return std::nullopt;
    return e.imageIsPlaceholder ? QImage() : e.audioArtImage.image();
}

QList<MetadataItem> merged(const QList<Change>& changes, const std::optional<QImage>& cover,
                           const QList<MetadataItem>& existing) {
    QList<MetadataItem> out;
    QHash<QString, const Change*> changedPlaces;
    for (const Change& c : changes) {
        out.append(itemAt(c.field->identifiers.first(), c.text));
        for (const QString& id : c.field->identifiers) changedPlaces.insert(id, &c);
    }
    if (cover) out.append(itemAt(kCover, *cover));
    QList<MetadataItem> kept;
    for (const MetadataItem& item : existing) {
        const Change* change = changedPlaces.value(item.identifier);
        if (change) {
            // The field's other places get the new value, so no reader finds
            // the old one there; the first place already has it.
            if (item.identifier != change->field->identifiers.first() && !change->text.isEmpty())
                out.append(placedLike(item, change->text));
        } else if (!(cover && item.identifier == kCover)) {
            kept.append(item);
        }
    }
    out += kept;
    out.removeIf([](const MetadataItem& item) {
        if (holdable(item)) return false;
        qCInfo(lcTagsmith).noquote()
            << "An MPEG-4 audio file has no place for this item; left out ==" << item.identifier;
        return true;
    });
    return out;
}

QList<MetadataItem> itemsFromTags(const QList<std::pair<QString, QString>>& tags,
                                  const QByteArray& cover, bool dateIsRecording) {
    // Keys as the demuxers name them: ID3 frames and Vorbis comments by
    // their common names, CAF info entries by their own.
    static const QHash<QString, QString> places{
        {"title", "itsk/%A9nam"},
        {"subtitle", "itsk/%A9st3"},
        {"tit3", "itsk/%A9st3"},
        {"artist", "itsk/%A9ART"},
        {"author", "itsk/%A9ART"},
        {"album", "itsk/%A9alb"},
        {"album_artist", "itsk/aART"},
        {"albumartist", "itsk/aART"},
        {"composer", "itsk/%A9wrt"},
        {"date", "itsk/%A9day"},
        {"year", "itsk/%A9day"},
        {"recorded date", "mdta/com.apple.quicktime.creationdate"},
        {"trda", "mdta/com.apple.quicktime.creationdate"},
        {"track", "itsk/trkn"},
        {"tracknumber", "itsk/trkn"},
        {"track number", "itsk/trkn"},
        {"disc", "itsk/disk"},
        {"discnumber", "itsk/disk"},
        {"genre", "itsk/%A9gen"},
        {"comment", "itsk/%A9cmt"},
        {"comments", "itsk/%A9cmt"},
        {"description", "mdta/com.apple.quicktime.description"},
        {"copyright", "itsk/cprt"},
        {"publisher", "itsk/%A9pub"},
        {"organization", "itsk/%A9pub"},
        {"label", "itsk/%A9pub"},
        {"lyrics", "itsk/%A9lyr"},
        {"lyricist", "itsk/%A9lyr"},
        {"text", "itsk/%A9lyr"},
        {"unsyncedlyrics", "itsk/%A9lyr"},
        {"grouping", "itsk/%A9grp"},
    };
    // What a container says about its own making, not about the recording.
    static const QSet<QString> technical{"encoder",
                                         "encoded_by",
                                         "vendor",
                                         "major_brand",
                                         "minor_version",
                                         "compatible_brands",
                                         "handler_name",
                                         "vendor_id",
                                         "itunsmpb",
                                         "itunnorm",
                                         "encoding application",
                                         "source encoder",
                                         "nominal bit rate",
                                         "channel layout",
                                         "source bit depth",
                                         "approximate duration in seconds"};
    QList<MetadataItem> out;
    QSet<QString> used;
    QStringList leftOut;
    for (const auto& [key, value] : tags) {
        const QString name = key.toLower();
        const QString place = name == QLatin1String("date") && dateIsRecording
                                  ? QStringLiteral("mdta/com.apple.quicktime.creationdate")
                                  : places.value(name);
        if (!place.isEmpty() && !used.contains(place)) {
            used.insert(place);
            out.append(itemAt(place, value));
        } else if (place.isEmpty() && !technical.contains(name)) {
            leftOut.append(key);
        }
    }
    if (!cover.isEmpty()) out.append(itemAt(kCover, cover));
    if (!leftOut.isEmpty()) {
        qCInfo(lcTagsmith).noquote()
            << "An MPEG-4 audio file has no place for these tags; left out:"
            << leftOut.join(QStringLiteral(", "));
    }
    return out;
}

}  // namespace AudioMpeg4Items
