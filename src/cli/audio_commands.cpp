// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/audio_commands.h"

#include <QFileInfo>

#include "core/import/media_import.h"
#include "core/library/media_kinds.h"
#include "core/library/media_record.h"

namespace {

struct AudioOption {
    const char* name;
    const char* help;
    QString AudioEditorState::*field;
    bool camera;  // the dates, rights and notes group (else the title group)
};

// The field options an audio file takes; --title, --artist, --album,
// --publisher, --copyright and --shoot-date are shared with videos.
const AudioOption kAudioOptions[] = {
    {"title", nullptr, &AudioEditorState::titlelab, false},
    {"artist", nullptr, &AudioEditorState::artistlab, false},
    {"album", nullptr, &AudioEditorState::abulmlab, false},
    {"subtitle", "subtitle (audio files)", &AudioEditorState::subtitlelab, false},
    {"composer", "composer (audio files)", &AudioEditorState::composerlab, false},
    {"track-number", "track number (audio files: the box the window labels album artist)",
     &AudioEditorState::ablumAristlab, false},
    {"shoot-date", nullptr, &AudioEditorState::recordDatelab, true},
    {"record-date", "record date (audio files; the same as --shoot-date)",
     &AudioEditorState::recordDatelab, true},
    {"release-year", "release year (audio files)", &AudioEditorState::releaseYearlab, true},
    {"publisher", nullptr, &AudioEditorState::publishlab, true},
    {"copyright", nullptr, &AudioEditorState::copyrightlab, true},
    {"band", "band (audio files)", &AudioEditorState::bandlab, true},
    {"comments", "comments (audio files; photos: the Exif user comment)",
     &AudioEditorState::commentslab, true},
    {"lyrics", "lyrics (audio files: the lyricist frame or key)", &AudioEditorState::lyricslab,
     true},
};

// Options of `set` no audio file takes.
const char* const kVideoOnlyOptions[] = {"director", "performer", "producer",  "description",
                                         "keywords", "latitude",  "longitude", "altitude"};

bool isKind(const QString& path, const char* ext) {
    return fileExtension(path).compare(QLatin1String(ext), Qt::CaseInsensitive) == 0;
}

}  // namespace

void addAudioSetOptions(QCommandLineParser& parser) {
    for (const AudioOption& o : kAudioOptions) {
        if (!o.help) continue;
        parser.addOption({QLatin1String(o.name),
                          QStringLiteral("New %1.").arg(QLatin1String(o.help)),
                          QStringLiteral("TEXT")});
    }
    parser.addOption(
        {QStringLiteral("direct"),
         QStringLiteral("Audio: write WAV, AIFF and CAF files through their own direct writers\n"
                        "(WAV keeps its RIFF INFO list; AIFF becomes a CAF container under its\n"
                        "own name) instead of the MPEG-4 audio export the window's save uses.")});
}

QString inapplicableSetOptions(const QCommandLineParser& parser, const QString& path) {
    QStringList given;
    const auto check = [&](std::initializer_list<const char*> names) {
        for (const char* name : names)
            if (parser.isSet(QLatin1String(name))) given << QLatin1String(name);
    };
    QString kind = QStringLiteral("video");
    if (isAudioPath(path)) {
        kind = QStringLiteral("audio");
        for (const char* name : kVideoOnlyOptions) check({name});
        if (given.isEmpty()) {
            // Fields these writers have no key for (the window's save leaves them too).
            kind = fileExtension(path).toUpper();
            if (isKind(path, "flac")) check({"track-number", "publisher", "band"});
            if (isKind(path, "wav") && parser.isSet(QStringLiteral("direct")))
                check({"publisher", "band"});
        }
    } else {
        for (const AudioOption& o : kAudioOptions)
            if (o.help) check({o.name});
        check({"direct"});
    }
    if (given.isEmpty()) return {};
    return QStringLiteral("--%1 does not apply to %2 files")
        .arg(given.join(QStringLiteral(", --")), kind);
}

IKImageItemPtr audioRecordForWriting(const QString& path) {
    if (IKImageItemPtr item = MediaImporter::importFileForWriting(path)) return item;
    auto item = std::make_shared<IKImageItem>();
    item->fileType = QStringLiteral("Audio");
    item->filePath = path;
    item->fileName = QFileInfo(path).fileName();
    fillFileAttributes(*item);
    return item;
}

AudioWriteResult setAudioFile(const QCommandLineParser& parser, const IKImageItem& item,
                              const QImage& artwork, const StorageContext& storage,
                              OutputBatch& batch, QStringList* notes) {
    AudioEditorState editor = audioEditorStateFor(item);
    for (const AudioOption& o : kAudioOptions) {
        if (!parser.isSet(QLatin1String(o.name))) continue;
        editor.*o.field = parser.value(QLatin1String(o.name));
        (o.camera ? editor.cameraInfoChange : editor.basicInfoChange) = true;
    }
    if (parser.isSet(QStringLiteral("created-date"))) {
        editor.createdDatelab = parser.value(QStringLiteral("created-date"));
        const bool keepsDates =
            isKind(item.filePath, "flac") ||
            (isKind(item.filePath, "caf") && parser.isSet(QStringLiteral("direct")));
        if (keepsDates && notes)
            *notes << QStringLiteral(
                "--created-date is ignored: this copy keeps the source's dates");
    }
    if (!artwork.isNull()) {
        editor.audioArtImage = artwork;
        editor.imageIsPlaceholder = false;
        editor.imageChanged = true;
    }
    return saveAudioItem(item, editor, storage, batch, parser.isSet(QStringLiteral("direct")));
}

AudioWriteResult stripAudioFile(const IKImageItem& item, bool all, const StorageContext& storage,
                                OutputBatch& batch) {
    AudioEditorState editor = audioEditorStateFor(item);
    if (all) {
        // Nothing shown, nothing kept: no empty frames and no picture.
        editor = AudioEditorState();
        editor.createdDatelab = editor.oldCreateDateStr = item.fileCreateDateStr;
    }
    return removeAudioMetadata(item, editor, storage, batch);
}
