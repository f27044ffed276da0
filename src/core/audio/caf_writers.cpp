// SPDX-License-Identifier: GPL-3.0-or-later
// The writers whose output is a CAF file: the CAF save (the source's own
// chunks with a new info chunk) and the AIFF export (the AIFF's audio
// re-packed into CAF without re-encoding, kept under the .aiff name). Both
// write the copy under a temporary name and rename it into place.

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>

#include "core/audio/audio_info_keys.h"
#include "core/audio/audio_remux.h"
#include "core/audio/audio_writers.h"
#include "core/audio/caf_file.h"
#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/common/file_dates.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

using E = AudioEditorState;

// The editor's fields and the info keys they are written under; the
// publisher and the band have none.
struct InfoField {
    QString E::*now;
    QString E::*before;
    bool E::*group;
    const char* infoKey;
    const char* name;  // for the log
};

const InfoField kInfoFields[] = {
    {&E::titlelab, &E::oldTitleStr, &E::basicInfoChange, "title", "title"},
    {&E::subtitlelab, &E::oldSubtitleStr, &E::basicInfoChange, "subtitle", "subtitle"},
    {&E::abulmlab, &E::oldAlbumStr, &E::basicInfoChange, "album", "album"},
    {&E::artistlab, &E::oldArtistStr, &E::basicInfoChange, "artist", "artist"},
    // The album-artist box holds the track number.
    {&E::ablumAristlab, &E::oldAlbumArtistStr, &E::basicInfoChange, "track number", "track"},
    {&E::composerlab, &E::oldComposerStr, &E::basicInfoChange, "composer", "composer"},
    {&E::recordDatelab, &E::oldRecordDateStr, &E::cameraInfoChange, "recorded date", "date"},
    {&E::releaseYearlab, &E::oldReleaseYearStr, &E::cameraInfoChange, "year", "year"},
    {&E::copyrightlab, &E::oldCopyrightStr, &E::cameraInfoChange, "copyright", "copyright"},
    {&E::publishlab, &E::oldPublisherStr, &E::cameraInfoChange, nullptr, "publisher"},
    {&E::bandlab, &E::oldBandStr, &E::cameraInfoChange, nullptr, "band"},
    {&E::commentslab, &E::oldCommentStr, &E::cameraInfoChange, "comments", "comments"},
    {&E::lyricslab, &E::oldLyricStr, &E::cameraInfoChange, "lyricist", "lyrics"},
};

// Sets an entry in place (later entries of the key go); an empty value
// removes the key.
void setInfo(CafInfo& info, const QString& key, const QString& value) {
    bool placed = false;
    for (qsizetype i = 0; i < info.size();) {
        if (info[i].first != key) {
            ++i;
        } else if (!placed && !value.isEmpty()) {
            info[i++].second = value;
            placed = true;
        } else {
            info.removeAt(i);
        }
    }
    if (!placed && !value.isEmpty()) info.append({key, value});
}

// Writes the changed fields into `info`. The AIFF export honours the group
// flags; the CAF save compares every field but never writes the track.
void applyChanges(CafInfo& info, const E& e, bool groups, bool track, QStringList* noPlace) {
    for (const InfoField& f : kInfoFields) {
        if ((groups && !(e.*f.group)) || e.*f.now == e.*f.before) continue;
        if (f.now == &E::ablumAristlab && !track) continue;
        if (f.infoKey) {
            setInfo(info, QLatin1String(f.infoKey), e.*f.now);
        } else {
            noPlace->append(QLatin1String(f.name));
        }
    }
    if (e.imageChanged && !noPlace->contains(QStringLiteral("picture")))
        noPlace->append(QStringLiteral("picture"));
    if (!noPlace->isEmpty()) {
        qCInfo(lcTagsmith).noquote()
            << "A CAF file has no place for:" << noPlace->join(", ") << "; left out";
    }
}

// The tags a demuxer read from an AIFF file under the info keys a CAF file
// uses; other tags keep their own names (an info chunk takes any key).
CafInfo infoFromTags(const QList<std::pair<QString, QString>>& tags) {
    CafInfo info;
    for (const auto& [name, value] : tags) {
        QString key = name;
        if (name.compare(QLatin1String("author"), Qt::CaseInsensitive) == 0)
            key = QStringLiteral("artist");  // the AIFF AUTH chunk
        else if (const AudioInfoKey* known = audioInfoKeyForVorbis(name))
            key = QLatin1String(known->infoKey);
        setInfo(info, key, value);
    }
    return info;
}

// Writes `cafPath` with `info` as its info chunk to the planned output of
// `source`, dates it and marks it as ours. With `copyOnFailure` a copy that
// cannot take the tags is still made, unchanged, and the result says so.
AudioWriteResult publishCaf(const QString& source, const QString& cafPath, const CafInfo& info,
                            const FileDates& dates, const StorageContext& storage,
                            OutputBatch& batch, bool copyOnFailure) {
    AudioWriteResult result;
    result.sourcePath = source;
    const QString target =
        storage.storagelocation + QLatin1Char('/') + QFileInfo(source).fileName();
    const OutputBatch::Claim claim = batch.claim(target, source);
    if (claim.path.isEmpty()) {
        result.reason = claim.note;
        qCWarning(lcTagsmith).noquote() << claim.note << "==" << target;
        return result;
    }
    result.note = claim.note;
    QFile in(cafPath);
    QSaveFile out(claim.path);
    QString error;
    errno = 0;
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly) ||
        !writeCafCopyWithInfo(in, out, info, &error) || !out.commit()) {
        const int code = errno;
        out.cancelWriting();
        qCWarning(lcTagsmith) << "cannot write the CAF copy ==" << claim.path << error
                              << in.errorString() << out.errorString();
        result.reason = error.startsWith(QLatin1String("not a CAF")) ||
                                error.startsWith(QLatin1String("damaged"))
                            ? WriteResult::tr("the file is a damaged or unknown CAF file")
                            : WriteResult::tr("the copy could not be written: %1")
                                  .arg(code ? plainFileError(code) : out.errorString());
        if (copyOnFailure) {
            OutputBatch reuse;  // the name is already this write's
            const AudioWriteResult copy =
                copyVideoFile(source, claim.path, dates.creation, dates.modification,
                              storage.storagelocation, reuse);
            if (copy.ok()) result.outputPath = copy.outputPath;
        }
        return result;
    }
    setFileDates(claim.path, dates.creation, dates.modification);
    markOutputAsOurs(claim.path);
    DesktopIntegration::instance().revealFile(claim.path, storage.storagelocation);
    result.status = ExportStatus::Completed;
    result.outputPath = claim.path;
    return result;
}

QString noPlaceNote(const QStringList& noPlace) {
    return noPlace.isEmpty() ? QString()
                             : WriteResult::tr("a CAF file has no place for the %1")
                                   .arg(noPlace.join(QStringLiteral(", ")));
}

void addNote(AudioWriteResult& r, const QString& note) {
    if (note.isEmpty() || !r.ok()) return;
    r.note = r.note.isEmpty() ? note : r.note + QStringLiteral("; ") + note;
}

}  // namespace

AudioWriteResult SaveChangedCAFAuidoExifItem(const IKImageItem& item, const AudioEditorState& e,
                                             const StorageContext& storage, OutputBatch& batch) {
    QFile source(item.filePath);
    if (!source.open(QIODevice::ReadOnly)) {
        qCWarning(lcTagsmith) << "AudioFileOpenURL failed ==" << item.filePath;
        AudioWriteResult r;
        r.sourcePath = item.filePath;
        r.reason = WriteResult::tr("the file cannot be read: %1").arg(source.errorString());
        return r;
    }
    QString problem;
    CafInfo info = readCafInfo(source, &problem);
    source.close();
    if (!problem.isEmpty())
        qCInfo(lcTagsmith) << "AudioFileGetProperty failed for property info dictionary" << problem;
    QStringList noPlace;
    applyChanges(info, e, false, false, &noPlace);
    // The copy keeps the source's dates whatever the created-date box says.
    AudioWriteResult r = publishCaf(item.filePath, item.filePath, info,
                                    readFileDates(item.filePath), storage, batch, true);
    addNote(r, noPlaceNote(noPlace));
    return r;
}

AudioWriteResult writeAiffAuidoMetadatawithFileItem(const IKImageItem& item,
                                                    const AudioEditorState& e,
                                                    const StorageContext& storage,
                                                    OutputBatch& batch) {
    const FileDates sourceDates = readFileDates(item.filePath);
    QTemporaryFile repacked(storage.storagelocation +
                            QStringLiteral("/.tagsmith-repack-XXXXXX.caf"));
    AudioWriteResult r;
    r.sourcePath = item.filePath;
    if (!repacked.open()) {
        r.reason = WriteResult::tr("the storage folder cannot be written");
        return r;
    }
    repacked.close();
    const RemuxResult remux =
        remuxAudio(item.filePath, repacked.fileName(), RemuxContainer::CoreAudioFormat);
    if (!remux.ok) {
        r.reason = remux.reason;
        return r;
    }
    CafInfo info = infoFromTags(remux.tags);
    // The AIFF's own cover (an ID3 picture) cannot come along either.
    QStringList noPlace;
    if (!remux.cover.isEmpty()) noPlace.append(QStringLiteral("picture"));
    applyChanges(info, e, true, true, &noPlace);
    // The created-date box, when changed and readable, dates the copy.
    const QDateTime typed =
        e.createdDatelab == e.oldCreateDateStr ? QDateTime() : dateFromText(e.createdDatelab);
    const FileDates dates = typed.isValid() ? FileDates{typed, typed} : sourceDates;
    r = publishCaf(item.filePath, repacked.fileName(), info, dates, storage, batch, false);
    addNote(r, noPlaceNote(noPlace));
    return r;
}
