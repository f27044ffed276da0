// SPDX-License-Identifier: GPL-3.0-or-later
// The MP3 writers: save, reload, date stamp and removal. Each starts from
// the file's own frames, changes only what it is asked to, and writes the
// copy as a new ID3v2.3 tag followed by the source's audio bytes, with every
// other tag (ID3v1, Lyrics3, APE, further ID3v2 tags) left behind.
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>

#include <cerrno>

#include "core/audio/audio_output.h"
#include "core/audio/audio_writers.h"
#include "core/audio/id3_frames.h"
#include "core/audio/id3lib_adapter.h"
#include "core/audio/mp3_frames.h"
#include "core/common/dates.h"
#include "core/common/file_copy.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

using Field = QString AudioEditorState::*;

// The editor's fields and their frames, in the order the frames are written
// (the picture follows them).
struct EditorFrame {
    const char* id;
    Field field;
    Field old;
    bool camera;          // belongs to the dates, rights and notes group
    const char* dictKey;  // key of a metadata dictionary; nullptr: not reloaded
};

const EditorFrame kEditorFrames[] = {
    {"TIT2", &AudioEditorState::titlelab, &AudioEditorState::oldTitleStr, false, "Title"},
    {"TIT3", &AudioEditorState::subtitlelab, &AudioEditorState::oldSubtitleStr, false, "Subtitle"},
    {"TPE1", &AudioEditorState::artistlab, &AudioEditorState::oldArtistStr, false, "Artist"},
    {"TALB", &AudioEditorState::abulmlab, &AudioEditorState::oldAlbumStr, false, "Album"},
    {"TRCK", &AudioEditorState::ablumAristlab, &AudioEditorState::oldAlbumArtistStr, false,
     nullptr},
    {"TCOM", &AudioEditorState::composerlab, &AudioEditorState::oldComposerStr, false, "Composer"},
    {"TRDA", &AudioEditorState::recordDatelab, &AudioEditorState::oldRecordDateStr, true,
     "Record Date"},
    {"TYER", &AudioEditorState::releaseYearlab, &AudioEditorState::oldReleaseYearStr, true,
     "Release Year"},
    {"TCOP", &AudioEditorState::copyrightlab, &AudioEditorState::oldCopyrightStr, true,
     "Copyright"},
    {"TPUB", &AudioEditorState::publishlab, &AudioEditorState::oldPublisherStr, true, "Publisher"},
    {"TPE2", &AudioEditorState::bandlab, &AudioEditorState::oldBandStr, true, "Band"},
    {"COMM", &AudioEditorState::commentslab, &AudioEditorState::oldCommentStr, true, "Comments"},
    {"TEXT", &AudioEditorState::lyricslab, &AudioEditorState::oldLyricStr, true, "Lyrics"},
};

const quint8 kFrontCover = 3;

// The comment the editor shows and writes: one without a description.
bool isEditorComment(const Mp3Frame& f) {
    return f.id == "COMM" && f.description.isEmpty();
}

// What the file holds: its frames as v2.3 frames and where its audio lies.
struct Mp3Source {
    QList<Mp3Frame> frames;
    QStringList dropped;  // frames id3lib cannot write
    qint64 audioBegin = 0;
    qint64 audioEnd = 0;
    QString problem;  // why the file cannot be written; "" when it can
};

Mp3Source readMp3Source(const QString& path) {
    Mp3Source s;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        s.problem = WriteResult::tr("the file cannot be read: %1").arg(file.errorString());
        return s;
    }
    const FileTagRanges ranges = findTagRanges(file);
    s.audioBegin = ranges.audioBegin;
    s.audioEnd = ranges.audioEnd;
    QList<Id3Frame> stored;
    for (const Id3Tag& tag : readLeadingId3v2Tags(file)) {
        stored += tag.frames;
        for (const QString& p : tag.problems)
            qCInfo(lcTagsmith).noquote() << "ID3 tag of" << path << "==" << p;
    }
    s.frames = mp3FramesFrom(stored, &s.dropped);
    // A copy of nothing but a tag would pass for the user's song.
    if (s.audioEnd <= s.audioBegin) s.problem = WriteResult::tr("the file holds no audio");
    return s;
}

// The frames a copy gets, and which of them the writer changed.
struct Mp3Tag {
    QList<Mp3Frame> frames;
    QSet<QByteArray> edited;
};

// Frames the reader also shows in a field the writer writes (the last one
// read wins).
const QHash<QByteArray, QByteArray> kShownAlso = {{"TPE1", "TOPE"}};

// Replaces the frames of `id` (for COMM, the editor's comment) by one frame
// holding `text`, or removes them when `text` is empty.
void setFrame(Mp3Tag& tag, const QByteArray& id, const QString& text) {
    QList<Mp3Frame>& frames = tag.frames;
    tag.edited.insert(id);
    const bool comment = id == "COMM";
    Mp3Frame f = Mp3Frame::textFrame(id, text);
    if (comment) {
        f.kind = Mp3Frame::Kind::Comment;
        // The new comment keeps the language of the one it replaces.
        for (const Mp3Frame& old : frames)
            if (isEditorComment(old) && !old.language.isEmpty()) f.language = old.language;
    }
    frames.removeIf([&](const Mp3Frame& o) { return comment ? isEditorComment(o) : o.id == id; });
    if (!text.isEmpty()) frames << f;
}

// The new cover: the front cover (or, without one, the first picture, the
// one the panel shows) is replaced; `image` null removes it.
struct NewCover {
    bool changed = false;
    QImage image;
};

void removeShownCover(QList<Mp3Frame>& frames) {
    const auto isFront = [](const Mp3Frame& f) {
        return f.id == "APIC" && f.pictureType == kFrontCover;
    };
    if (std::any_of(frames.begin(), frames.end(), isFront)) {
        frames.removeIf(isFront);
        return;
    }
    for (qsizetype i = 0; i < frames.size(); ++i) {
        if (frames[i].id == "APIC") {
            frames.removeAt(i);
            return;
        }
    }
}

// Renders the tag: the editor's frames in their fixed order, then the new
// cover, then every other frame in the file's order.
QByteArray renderTag(const Mp3Tag& tag, const NewCover& cover, QString* error,
                     QStringList* refused) {
    const QList<Mp3Frame>& frames = tag.frames;
    Id3TagWriter writer;
    QList<bool> written(frames.size(), false);
    const auto add = [&](qsizetype i) {
        if (!addMp3Frame(writer, frames[i])) *refused << QString::fromLatin1(frames[i].id);
        written[i] = true;
    };
    for (const EditorFrame& e : kEditorFrames) {
        // A frame the reader shows in the same field stays on the side of
        // this one it was on, unless the field was edited: then it goes first.
        const QByteArray also = kShownAlso.value(e.id);
        const bool edited = tag.edited.contains(e.id);
        const auto pass = [&](auto matches) {
            for (qsizetype i = 0; i < frames.size(); ++i)
                if (!written[i] && matches(frames[i].id)) add(i);
        };
        if (edited) pass([&](const QByteArray& id) { return !also.isEmpty() && id == also; });
        pass([&](const QByteArray& id) {
            return id == e.id || (!edited && !also.isEmpty() && id == also);
        });
    }
    if (cover.changed && !cover.image.isNull()) {
        // The picture goes to id3lib through a file of its own, in a private
        // folder, so no two writers share it.
        QTemporaryDir folder;
        QString mime;
        const QByteArray bytes = encodeCover(cover.image, &mime);
        const QString path = folder.path() + QStringLiteral("/cover");
        QFile file(path);
        if (!folder.isValid() || bytes.isEmpty() || !file.open(QIODevice::WriteOnly) ||
            file.write(bytes) != bytes.size()) {
            *error = WriteResult::tr("the new picture could not be prepared");
            return {};
        }
        file.close();
        if (!writer.addPictureFile(path, mime, kFrontCover)) *refused << QStringLiteral("APIC");
    }
    for (qsizetype i = 0; i < frames.size(); ++i)
        if (!written[i] && frames[i].id == "APIC") add(i);
    for (qsizetype i = 0; i < frames.size(); ++i)
        if (!written[i]) add(i);
    return writer.render(error);
}

// Writes the copy: the new tag, then the source's audio bytes unchanged.
QString writeMp3Copy(const QString& source, const Mp3Source& s, const QByteArray& tag,
                     const QString& target) {
    QFile in(source);
    QFile out(target);
    if (!in.open(QIODevice::ReadOnly))
        return WriteResult::tr("the file cannot be read: %1").arg(in.errorString());
    // Written into the publisher's new empty file, neither truncated (ext4
    // would flush the copy when it is closed) nor opened for appending (the
    // kernel's copy refuses that).
    if (!out.open(QIODevice::ReadWrite) || out.size() != 0 || out.write(tag) != tag.size())
        return WriteResult::tr("the copy could not be written: %1").arg(out.errorString());
    if (!out.flush())
        return WriteResult::tr("the copy could not be written: %1").arg(out.errorString());
    // The audio bytes are copied in the kernel where it can.
    QByteArray buffer;
    if (!copyRange(in.handle(), s.audioBegin, s.audioEnd - s.audioBegin, out.handle(), buffer))
        return WriteResult::tr("the copy could not be written: %1").arg(qt_error_string(errno));
    return {};
}

// The common end of the four writers: render, write, publish.
AudioWriteResult writeMp3(const IKImageItem& item, const QString& output, const FileDates& dates,
                          const StorageContext& storage, OutputBatch& batch, const Mp3Source& s,
                          const Mp3Tag& frames, const NewCover& cover) {
    if (!s.problem.isEmpty()) return AudioWriteResult::skippedFile(item.filePath, s.problem);
    QStringList refused = s.dropped;
    QString error;
    const QByteArray tag = renderTag(frames, cover, &error, &refused);
    if (!error.isEmpty()) {
        AudioWriteResult failed;
        failed.sourcePath = item.filePath;
        failed.reason = error;
        return failed;
    }
    AudioWriteResult result = publishAudioCopy(
        {item.filePath, output, dates, true}, storage.storagelocation, batch,
        [&](const QString& temp) { return writeMp3Copy(item.filePath, s, tag, temp); });
    if (result.ok() && !refused.isEmpty()) {
        refused.removeDuplicates();
        const QString lost =
            QStringLiteral("id3lib cannot write the frames %1; the copy is without them")
                .arg(refused.join(QStringLiteral(", ")));
        qCInfo(lcTagsmith).noquote() << QFileInfo(item.filePath).fileName() << "==" << lost;
        result.note = result.note.isEmpty() ? lost : result.note + QStringLiteral("; ") + lost;
    }
    return result;
}

}  // namespace

AudioWriteResult SaveChangedMp3MetadateItem(const IKImageItem& item, const AudioEditorState& e,
                                            const StorageContext& storage, OutputBatch& batch) {
    const Mp3Source s = readMp3Source(item.filePath);
    Mp3Tag frames{s.frames, {}};
    // Only the fields the user changed: a save of several files then
    // changes just those fields in each.
    for (const EditorFrame& f : kEditorFrames) {
        const bool group = f.camera ? e.cameraInfoChange : e.basicInfoChange;
        if (group && e.*f.field != e.*f.old) setFrame(frames, f.id, e.*f.field);
    }
    NewCover cover;
    if (e.imageChanged) {
        removeShownCover(frames.frames);
        cover = {true, e.imageIsPlaceholder ? QImage() : e.audioArtImage.image()};
    }
    const FileDates dates =
        changedOrSourceDates(readFileDates(item.filePath), e.createdDatelab, e.oldCreateDateStr);
    return writeMp3(item, audioSaveOutput(storage, item.filePath), dates, storage, batch, s, frames,
                    cover);
}

AudioWriteResult ReloadMp3MetadateItem(const IKImageItem& item, const QVariantMap& exif,
                                       const AudioEditorState& remembered,
                                       const StorageContext& storage, OutputBatch& batch) {
    const Mp3Source s = readMp3Source(item.filePath);
    Mp3Tag frames{s.frames, {}};
    // The dictionary has no track number and no picture: the file's stay.
    for (const EditorFrame& f : kEditorFrames) {
        if (!f.dictKey || !exif.contains(QLatin1String(f.dictKey))) continue;
        const QString value = exif.value(QLatin1String(f.dictKey)).toString();
        if (value != remembered.*f.old) setFrame(frames, f.id, value);
    }
    const FileDates dates = changedOrSourceDates(
        readFileDates(item.filePath), exif.value(QStringLiteral("Created Date")).toString(),
        remembered.oldCreateDateStr);
    return writeMp3(item, audioSaveOutput(storage, item.filePath), dates, storage, batch, s, frames,
                    {});
}

AudioWriteResult SetMp3MetadateItem(const IKImageItem& item, const QString& dateStr,
                                    const StorageContext& storage, OutputBatch& batch) {
    const Mp3Source s = readMp3Source(item.filePath);
    Mp3Tag frames{s.frames, {}};
    if (!dateStr.isEmpty()) setFrame(frames, "TRDA", dateStr);
    const QDateTime date = dateFromText(dateStr);
    const FileDates dates = date.isValid() ? FileDates{date, date} : readFileDates(item.filePath);
    return writeMp3(item, audioSaveOutput(storage, item.filePath), dates, storage, batch, s, frames,
                    {});
}

AudioWriteResult RemoveMp3metadataItem(const IKImageItem& item, const AudioEditorState& e,
                                       const StorageContext& storage, OutputBatch& batch) {
    const Mp3Source s = readMp3Source(item.filePath);
    // Every frame goes; a field the editor shows filled leaves an empty
    // frame, and the picture stays unless the panel shows none.
    Mp3Tag frames;
    for (const EditorFrame& f : kEditorFrames) {
        if ((e.*f.field).isEmpty()) continue;
        Mp3Frame empty = Mp3Frame::textFrame(f.id, QString());
        if (empty.id == "COMM") empty.kind = Mp3Frame::Kind::Comment;
        frames.frames << empty;
    }
    NewCover cover;
    if (!e.imageIsPlaceholder) {
        if (e.imageChanged) {
            cover = {true, e.audioArtImage.image()};
        } else {
            QList<Mp3Frame> pictures = s.frames;
            pictures.removeIf([](const Mp3Frame& f) { return f.id != "APIC"; });
            const auto front =
                std::find_if(pictures.begin(), pictures.end(),
                             [](const Mp3Frame& f) { return f.pictureType == kFrontCover; });
            if (front != pictures.end())
                frames.frames << *front;
            else if (!pictures.isEmpty())
                frames.frames << pictures.first();
        }
    }
    const FileDates dates =
        changedOrSourceDates(readFileDates(item.filePath), e.createdDatelab, e.oldCreateDateStr);
    return writeMp3(item, audioRemovalOutput(storage, item.filePath), dates, storage, batch, s,
                    frames, cover);
}
