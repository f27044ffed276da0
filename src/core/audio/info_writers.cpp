// SPDX-License-Identifier: GPL-3.0-or-later
// The info-dictionary writers: WAV (RIFF INFO, in place on the copy) and
// FLAC (Vorbis comments and pictures), both through TagLib on a copy whose
// audio bytes TagLib leaves as they are.
#include <QFileInfo>
#include <QScopeGuard>

#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/infotag.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <exception>

#include "core/audio/audio_info_keys.h"
#include "core/audio/audio_output.h"
#include "core/audio/audio_writers.h"
#include "core/audio/id3_frames.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

using Field = QString AudioEditorState::*;

struct InfoField {
    const char* infoKey;
    Field field;
    Field old;
    bool camera;          // the dates, rights and notes group
    const char* dictKey;  // metadata dictionary key
};

// The fields an info dictionary takes. The album-artist box (the track
// number) is written to WAV only; publisher and band have no key.
const InfoField kTrackNumber = {"track number", &AudioEditorState::ablumAristlab,
                                &AudioEditorState::oldAlbumArtistStr, false, nullptr};
const InfoField kInfoFields[] = {
    {"title", &AudioEditorState::titlelab, &AudioEditorState::oldTitleStr, false, "Title"},
    {"subtitle", &AudioEditorState::subtitlelab, &AudioEditorState::oldSubtitleStr, false,
     "Subtitle"},
    {"album", &AudioEditorState::abulmlab, &AudioEditorState::oldAlbumStr, false, "Album"},
    {"artist", &AudioEditorState::artistlab, &AudioEditorState::oldArtistStr, false, "Artist"},
    {"composer", &AudioEditorState::composerlab, &AudioEditorState::oldComposerStr, false,
     "Composer"},
    {"recorded date", &AudioEditorState::recordDatelab, &AudioEditorState::oldRecordDateStr, true,
     "Record Date"},
    {"year", &AudioEditorState::releaseYearlab, &AudioEditorState::oldReleaseYearStr, true,
     "Release Year"},
    {"copyright", &AudioEditorState::copyrightlab, &AudioEditorState::oldCopyrightStr, true,
     "Copyright"},
    {"comments", &AudioEditorState::commentslab, &AudioEditorState::oldCommentStr, true,
     "Comments"},
    {"lyricist", &AudioEditorState::lyricslab, &AudioEditorState::oldLyricStr, true, "Lyrics"},
};

// An info key with its new text.
using InfoChanges = QList<std::pair<const char*, QString>>;

TagLib::String tagString(const QString& s) {
    return TagLib::String(s.toUtf8().constData(), TagLib::String::UTF8);
}

// TagLib may throw (std::bad_alloc on a hostile file); nothing escapes.
template <typename Body>
QString guarded(Body body) {
    try {
        return body();
    } catch (const std::exception& e) {
        return WriteResult::tr("the tags could not be written: %1")
            .arg(QString::fromLocal8Bit(e.what()));
    } catch (...) {
        return WriteResult::tr("the tags could not be written");
    }
}

QString setWavInfo(const QString& path, const InfoChanges& changes) {
    QFile check(path);
    const QByteArray head = check.open(QIODevice::ReadOnly) ? check.read(12) : QByteArray();
    if (head.size() < 12 || !(head.startsWith("RIFF") || head.startsWith("RF64")) ||
        head.mid(8, 4) != "WAVE")
        return WriteResult::tr("the file is not a WAV file");
    return guarded([&]() -> QString {
        TagLib::RIFF::WAV::File file(QFile::encodeName(path).constData(), false);
        if (!file.isValid() || !file.InfoTag())
            return WriteResult::tr("the WAV file cannot be read");
        TagLib::RIFF::Info::Tag* info = file.InfoTag();
        for (const auto& [key, text] : changes) {
            const AudioInfoKey* k = audioInfoKeyFor(QLatin1String(key));
            if (!k || !k->riffId) continue;
            // An older value under the other id would hide the new one.
            if (k->riffAlias) info->removeField(k->riffAlias);
            if (text.isEmpty())
                info->removeField(k->riffId);
            else
                info->setFieldText(k->riffId, tagString(text));
        }
        if (!file.save(TagLib::RIFF::WAV::File::Info, TagLib::File::StripNone))
            return WriteResult::tr("the tags could not be written into the copy");
        return QString();
    });
}

struct FlacCover {
    bool changed = false;
    QImage image;  // null: the shown picture is removed
};

QString setFlacInfo(const QString& path, const InfoChanges& changes, const FlacCover& cover) {
    return guarded([&]() -> QString {
        TagLib::FLAC::File file(QFile::encodeName(path).constData(),
                                TagLib::ID3v2::FrameFactory::instance(), false);
        if (!file.isValid()) return WriteResult::tr("the file is not a readable FLAC file");
        TagLib::Ogg::XiphComment* comment = file.xiphComment(true);
        for (const auto& [key, text] : changes) {
            const AudioInfoKey* k = audioInfoKeyFor(QLatin1String(key));
            if (!k || !k->vorbisName) continue;
            if (k->vorbisAlias) comment->removeFields(k->vorbisAlias);
            if (text.isEmpty())
                comment->removeFields(k->vorbisName);
            else
                comment->addField(k->vorbisName, tagString(text), true);
        }
        if (cover.changed) {
            // The front cover (or the first picture, the one the panel
            // shows) gives way to the new one; other pictures stay.
            TagLib::FLAC::Picture* shown = nullptr;
            for (TagLib::FLAC::Picture* p : file.pictureList()) {
                if (p->type() == TagLib::FLAC::Picture::FrontCover) {
                    shown = p;
                    break;
                }
                if (!shown) shown = p;
            }
            if (shown) file.removePicture(shown, true);
            if (!cover.image.isNull()) {
                QString mime;
                const QByteArray bytes = encodeCover(cover.image, &mime);
                auto* picture = new TagLib::FLAC::Picture;
                picture->setType(TagLib::FLAC::Picture::FrontCover);
                picture->setMimeType(tagString(mime));
                picture->setData(TagLib::ByteVector(bytes.constData(), uint(bytes.size())));
                picture->setWidth(cover.image.width());
                picture->setHeight(cover.image.height());
                picture->setColorDepth(cover.image.hasAlphaChannel() ? 32 : 24);
                file.addPicture(picture);
            }
        }
        if (!file.save()) return WriteResult::tr("the tags could not be written into the copy");
        return QString();
    });
}

// The changed fields of the editor: with `groups`, a field counts only when
// its group was edited.
InfoChanges editorChanges(const AudioEditorState& e, bool groups, bool withTrack) {
    InfoChanges changes;
    const auto consider = [&](const InfoField& f) {
        const bool group = !groups || (f.camera ? e.cameraInfoChange : e.basicInfoChange);
        if (group && e.*f.field != e.*f.old) changes.append({f.infoKey, e.*f.field});
    };
    for (const InfoField& f : kInfoFields) {
        consider(f);
        if (withTrack && f.field == &AudioEditorState::composerlab) consider(kTrackNumber);
    }
    return changes;
}

AudioWriteResult writeFlac(const IKImageItem& item, const InfoChanges& changes,
                           const FlacCover& cover, const StorageContext& storage,
                           OutputBatch& batch) {
    // The copy carries the source's dates, whatever the created-date box says.
    return publishAudioCopy(
        {item.filePath, audioSaveOutput(storage, item.filePath), readFileDates(item.filePath)},
        storage.storagelocation, batch, [&](const QString& temp) -> QString {
            // An ID3v2 tag in front of the FLAC stream is not TagLib's to
            // rewrite: it is kept as its own bytes, and TagLib edits the rest.
            QFile source(item.filePath);
            const qint64 front =
                source.open(QIODevice::ReadOnly) ? findTagRanges(source).audioBegin : 0;
            if (front <= 0) {
                QString why = copyFileBytes(item.filePath, temp);
                return why.isEmpty() ? setFlacInfo(temp, changes, cover) : why;
            }
            const QString body = temp + QStringLiteral(".flac");
            const auto cleanup = qScopeGuard([&] { QFile::remove(body); });
            QString why = copyFileBytes(item.filePath, body, front);
            if (why.isEmpty()) why = setFlacInfo(body, changes, cover);
            if (why.isEmpty()) why = copyFileBytes(item.filePath, temp, 0, front);
            if (why.isEmpty()) why = copyFileBytes(body, temp, 0, -1, true);
            return why;
        });
}

}  // namespace

AudioWriteResult writeWAVAuidoMetadatawithFileItem(const IKImageItem& item,
                                                   const AudioEditorState& e,
                                                   const StorageContext& storage,
                                                   OutputBatch& batch) {
    const InfoChanges changes = editorChanges(e, true, true);
    const FileDates dates =
        changedOrSourceDates(readFileDates(item.filePath), e.createdDatelab, e.oldCreateDateStr);
    return publishAudioCopy({item.filePath, audioSaveOutput(storage, item.filePath), dates},
                            storage.storagelocation, batch, [&](const QString& temp) {
                                QString why = copyFileBytes(item.filePath, temp);
                                if (why.isEmpty()) why = setWavInfo(temp, changes);
                                return why;
                            });
}

AudioWriteResult SaveChangedFlaCAuidoExifItem(const IKImageItem& item, const AudioEditorState& e,
                                              const StorageContext& storage, OutputBatch& batch) {
    FlacCover cover;
    if (e.imageChanged) cover = {true, e.imageIsPlaceholder ? QImage() : e.audioArtImage.image()};
    return writeFlac(item, editorChanges(e, false, false), cover, storage, batch);
}

AudioWriteResult ReloadChangedFlaCAuidoExifItem(const IKImageItem& item, const QVariantMap& exif,
                                                const AudioEditorState& remembered,
                                                const StorageContext& storage, OutputBatch& batch) {
    InfoChanges changes;
    for (const InfoField& f : kInfoFields) {
        const QString key = QLatin1String(f.dictKey);
        if (!exif.contains(key)) continue;
        const QString value = exif.value(key).toString();
        if (value != remembered.*f.old) changes.append({f.infoKey, value});
    }
    return writeFlac(item, changes, {}, storage, batch);
}

AudioWriteResult SetFlaCAuidoExifItem(const IKImageItem& item, const QString& dateStr,
                                      const AudioEditorState& e, const StorageContext& storage,
                                      OutputBatch& batch) {
    AudioEditorState stamped = e;
    if (dateStr != e.oldRecordDateStr) {
        stamped.recordDatelab = dateStr;
        stamped.cameraInfoChange = true;
    }
    return writeFlac(item, editorChanges(stamped, true, false), {}, storage, batch);
}
