// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFileInfo>

#include "core/audio/audio_writers.h"
#include "core/batch/metadata_plist.h"
#include "core/batch/plist_io.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_job.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_tools.h"

namespace {

bool isMap(const QVariant& v) {
    return v.typeId() == QMetaType::QVariantMap;
}

// A dictionary of plain values (no groups inside): one group's keys.
bool isGroupValues(const QVariantMap& map) {
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (it.key().startsWith(QLatin1Char('{')) && isMap(it.value())) return false;
    }
    return true;
}

// The top-level dictionary, or why the list is refused.
QString readTopLevel(const QString& path, PlistRead* read) {
    *read = readPlistFile(path);
    if (!read->ok()) return read->problem;
    if (!isMap(read->root) || read->keyOrder.isEmpty())
        return WriteResult::tr("the property list holds no dictionary of entries");
    return {};
}

// The groups an import of `kind` sets from the first entry; empty when the
// entry is not of that shape.
QMap<QString, QVariantMap> photoGroups(const QVariantMap& entry, PhotoPlistKind kind) {
    QMap<QString, QVariantMap> groups;
    auto take = [&](const QString& group) {
        if (isMap(entry.value(group))) groups.insert(group, entry.value(group).toMap());
    };
    switch (kind) {
        case PhotoPlistKind::TIFF:
        case PhotoPlistKind::Exif:
            if (!entry.isEmpty() && isGroupValues(entry))
                groups.insert(kind == PhotoPlistKind::TIFF ? PhotoGroup::TIFF : PhotoGroup::Exif,
                              entry);
            break;
        case PhotoPlistKind::ExifAndTIFF:
            take(PhotoGroup::Exif);
            take(PhotoGroup::TIFF);
            break;
        case PhotoPlistKind::ExifAndGPS:
            take(PhotoGroup::Exif);
            take(PhotoGroup::GPS);
            break;
        case PhotoPlistKind::All:
            for (auto it = entry.cbegin(); it != entry.cend(); ++it) {
                if (it.key().startsWith(QLatin1Char('{'))) take(it.key());
            }
            break;
    }
    return groups;
}

PlistImport refused(const QString& path, const QString& why) {
    qCInfo(lcTagsmith, "%s was not imported: %s", qPrintable(path), qPrintable(why));
    return {why, {}};
}

template <typename EditFor>
PlistImport writePhotos(const IKImageItemList& photos, const StorageContext& storage,
                        OutputBatch& batch, const BatchProgress& progress, EditFor editFor) {
    PlistImport out;
    int done = 0;
    for (const IKImageItemPtr& item : photos) {
        if (!isImagePath(item->filePath)) {
            out.results.append(
                VideoWriteResult::skippedFile(item->filePath, WriteResult::tr("not a photo")));
        } else {
            PhotoJob job;
            job.sourcePath = item->filePath;
            job.outputPath = storage.storagelocation + QLatin1Char('/') + item->fileName;
            job.edit = editFor(*item);
            job.dates = readFileDates(item->filePath);
            job.rawFallback = true;
            out.results.append(runPhotoJob(job, storage, batch));
        }
        if (!reportProgress(progress, ++done, int(photos.size()))) break;
    }
    return out;
}

void putTemplateValues(const QVariantMap& flat, QVariantMap& group,
                       std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        const QVariant v = flat.value(QLatin1String(key));
        if (v.isValid() && !v.toString().isEmpty()) group.insert(QLatin1String(key), v);
    }
}

}  // namespace

PlistImport importPhotoPlist(const QString& plistPath, PhotoPlistKind kind,
                             const IKImageItemList& photos, const StorageContext& storage,
                             OutputBatch& batch, const BatchProgress& progress) {
    PlistRead read;
    if (const QString why = readTopLevel(plistPath, &read); !why.isEmpty())
        return refused(plistPath, why);
    // The first entry in the file's order serves every photo.
    const QVariant first = read.root.toMap().value(read.keyOrder.first());
    const QMap<QString, QVariantMap> groups =
        isMap(first) ? photoGroups(first.toMap(), kind) : QMap<QString, QVariantMap>();
    if (groups.isEmpty())
        return refused(plistPath, WriteResult::tr("the property list does not have the shape of %1")
                                      .arg(photoPlistFileName(kind)));
    PropertyEdit edit;
    edit.values = groups;
    if (kind == PhotoPlistKind::All && first.toMap().contains(QStringLiteral("Orientation")))
        edit.values[QString()].insert(QStringLiteral("Orientation"),
                                      first.toMap().value(QStringLiteral("Orientation")));
    return writePhotos(photos, storage, batch, progress, [&](const IKImageItem&) { return edit; });
}

PropertyEdit templateEdit(const QVariantMap& flat, const PropertyDictionary& photo) {
    PropertyEdit edit;
    QVariantMap tiff, exif, iptc, gps;
    putTemplateValues(flat, tiff, {"Artist", "ImageDescription", "Copyright", "Make", "Model"});
    putTemplateValues(flat, exif, {"LensMake", "LensModel", "DateTimeDigitized", "UserComment"});
    putTemplateValues(flat, iptc, {"ObjectName"});
    const QVariant keywords = flat.value(QStringLiteral("Keywords"));
    if (keywords.typeId() == QMetaType::QVariantList) {
        iptc.insert(QStringLiteral("Keywords"), keywords);
    } else if (!keywords.toString().trimmed().isEmpty()) {
        QVariantList words;
        for (const QString& w : keywords.toString().split(QLatin1Char(',')))
            if (!w.trimmed().isEmpty()) words << w.trimmed();
        iptc.insert(QStringLiteral("Keywords"), words);
    }
    putTemplateValues(
        flat, gps,
        {"DateStamp", "TimeStamp", "Latitude", "LatitudeRef", "Longitude", "LongitudeRef"});
    if (flat.contains(QStringLiteral("Altitude")) && flat.contains(QStringLiteral("Latitude")))
        gps.insert(QStringLiteral("Altitude"), flat.value(QStringLiteral("Altitude")).toDouble());
    if (!gps.isEmpty() && !photo.value(PhotoGroup::GPS).toMap().contains(QStringLiteral("Version")))
        gps.insert(QStringLiteral("Version"), QVariantList{2, 2, 0, 0});
    const std::pair<const QString&, QVariantMap&> groups[] = {{PhotoGroup::TIFF, tiff},
                                                              {PhotoGroup::Exif, exif},
                                                              {PhotoGroup::IPTC, iptc},
                                                              {PhotoGroup::GPS, gps}};
    for (const auto& [name, values] : groups) {
        if (!values.isEmpty()) edit.values.insert(name, values);
    }
    return edit;
}

PlistImport ImportTemplateDataPlistAction(const QString& plistPath, const IKImageItemList& photos,
                                          const StorageContext& storage, OutputBatch& batch,
                                          const BatchProgress& progress) {
    PlistRead read;
    if (const QString why = readTopLevel(plistPath, &read); !why.isEmpty())
        return refused(plistPath, why);
    const QVariantMap flat = read.root.toMap();
    if (!isGroupValues(flat) || templateEdit(flat, {}).isEmpty())
        return refused(plistPath, WriteResult::tr("the property list is not a template"));
    return writePhotos(photos, storage, batch, progress, [&](const IKImageItem& item) {
        return templateEdit(flat, readPhotoProperties(item.filePath).properties);
    });
}

PlistImport ReloadMetaDataPlistAction(const QString& plistPath, const IKImageItemList& items,
                                      const StorageContext& storage, OutputBatch& batch,
                                      const BatchProgress& progress) {
    PlistRead read;
    if (const QString why = readTopLevel(plistPath, &read); !why.isEmpty())
        return refused(plistPath, why);
    const QVariantMap top = read.root.toMap();
    for (auto it = top.cbegin(); it != top.cend(); ++it) {
        if (!isMap(it.value()) || !isGroupValues(it.value().toMap()))
            return refused(plistPath, WriteResult::tr("the property list is not a metadata.plist"));
    }
    PlistImport out;
    int done = 0;
    for (const IKImageItemPtr& item : items) {
        const QString ext = fileExtension(item->filePath).toLower();
        const QString name = QFileInfo(item->fileName).completeBaseName();
        const QVariantMap entry = top.value(name).toMap();
        if (!top.contains(name)) {
            out.results.append(VideoWriteResult::skippedFile(
                item->filePath, WriteResult::tr("no entry named %1 in the list").arg(name)));
        } else if (isVideoPath(item->filePath) && ext != QLatin1String("mxf")) {
            const VideoWriteJob job =
                ReloadChangedVideoExifDateAction(*item, entry, videoEditorStateFor(*item),
                                                 readExistingMetadata(item->filePath), storage);
            out.results.append(runVideoWriteJob(job, storage.storagelocation, batch));
        } else if (isVideoPath(item->filePath)) {
            VideoEditorState editor = videoEditorStateFor(*item);
            if (entry.contains(QStringLiteral("Created Date")))
                editor.mediaCreatedDate = entry.value(QStringLiteral("Created Date")).toString();
            out.results.append(saveUnchangedVideoCopy(*item, editor, storage, &batch));
        } else if (isAudioPath(item->filePath)) {
            const AudioEditorState own = audioEditorStateFor(*item);
            if (ext == QLatin1String("mp3"))
                out.results.append(ReloadMp3MetadateItem(*item, entry, own, storage, batch));
            else if (ext == QLatin1String("flac"))
                out.results.append(
                    ReloadChangedFlaCAuidoExifItem(*item, entry, own, storage, batch));
            else
                out.results.append(
                    ReloadChangedAuidoExifDateItem(*item, entry, own, storage, batch));
        } else {
            out.results.append(VideoWriteResult::skippedFile(
                item->filePath, WriteResult::tr("neither a video nor an audio file")));
        }
        if (!reportProgress(progress, ++done, int(items.size()))) break;
    }
    return out;
}
