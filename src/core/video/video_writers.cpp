// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_writers.h"

#include <QFileInfo>

#include "core/common/dates.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_items.h"
#include "core/video/video_metadata_rules.h"

namespace {

using namespace VideoItems;

// Adds an item when the editor's text differs from what it showed before.
void addIfChanged(QList<MetadataItem>& items, const QString& now, const QString& before,
                  MetadataItem (*make)(const QString&)) {
    if (now != before) items.append(make(now));
}

void addLocation(QList<MetadataItem>& items, const QString& lat, const QString& lon,
                 const QString& alt) {
    if (!lat.isEmpty() && !lon.isEmpty()) items.append(location(locationText(lat, lon, alt)));
}

// The output gets the typed created date when it was changed and reads as a
// date; otherwise the source's own dates.
QDateTime changedCreatedDate(const QString& now, const QString& before) {
    return now == before ? QDateTime() : dateFromText(now);
}

VideoWriteJob jobFor(const QString& source, const QString& output, QList<MetadataItem> items,
                     VideoFileType type) {
    VideoWriteJob job;
    job.request.sourcePath = source;
    job.request.outputPath = output;
    job.request.metadata = std::move(items);
    job.request.fileType = type;
    job.sourceDates = readFileDates(source);
    return job;
}

QString storageOutput(const StorageContext& storage, const QString& source) {
    return storage.storagelocation + QLatin1Char('/') + QFileInfo(source).fileName();
}

}  // namespace

VideoWriteJob SaveChangedVideoExifDateAction(const IKImageItem& item, const VideoEditorState& e,
                                             const QList<MetadataItem>& existing,
                                             const StorageContext& storage) {
    QList<MetadataItem> items;
    VideoFileType type = VideoFileType::AppleM4V;
    if (e.basicInfoChange) {
        addIfChanged(items, e.mediaTitle, e.oldMovieTitle, title);
        addIfChanged(items, e.mediaAlumArtis, e.oldMovieAlbumArtist, album);
        addIfChanged(items, e.mediaArtist, e.oldMovieArtist, artist);
        addIfChanged(items, e.mediaMake, e.oldMovieMake, director);
        addIfChanged(items, e.mediaModel, e.oldMovieModel, performer);
        addIfChanged(items, e.mediaProducer, e.oldMovieProducer, producer);
    }
    if (e.cameraInfoChange) {
        addIfChanged(items, e.mediaReleaseYear, e.oldMoviePublisher, publisher);
        addIfChanged(items, e.mediaCopyright, e.oldMovieCopyright, copyrights);
        addIfChanged(items, e.mediakeywords, e.oldMovieKeywords, keywords);
        addIfChanged(items, e.mediaSoftware, e.oldMovieDescription, description);
        if (e.mediaShootDate != e.oldMovieShootDate) {
            bool quickTimeDate = false;
            items += dateItems(existing, e.mediaShootDate, &quickTimeDate);
            if (quickTimeDate) type = VideoFileType::QuickTimeMovie;
        }
    }
    // The location and the picture go out only when they differ from the
    // file's own: written back from the editor's form they would lose the
    // hemisphere and precision, and every picture but the first.
    IKImageItem fromFile;
    applyVideoMetadata(fromFile, existing, false);
    const VideoEditorState shown = videoEditorStateFor(fromFile);
    if (e.mediaLatitude != shown.mediaLatitude || e.mediaLongtitude != shown.mediaLongtitude ||
        e.mediaAatitude != shown.mediaAatitude) {
        addLocation(items, e.mediaLatitude, e.mediaLongtitude, e.mediaAatitude);
    }
    if (!e.imageIsPlaceholder && (shown.imageIsPlaceholder || e.mediaImage != shown.mediaImage))
        items.append(artwork(e.mediaImage.image()));

    const QString output = storageOutput(storage, item.filePath);
    VideoWriteJob job = jobFor(item.filePath, output, merge(items, existing, type), type);
    job.newDate = changedCreatedDate(e.mediaCreatedDate, e.oldMovieCreatedDate);
    job.fallbackCopyPath = output;
    return job;
}

VideoWriteJob ReloadChangedVideoExifDateAction(const IKImageItem& item, const QVariantMap& exif,
                                               const VideoEditorState& r,
                                               const QList<MetadataItem>& existing,
                                               const StorageContext& storage) {
    QList<MetadataItem> items;
    const auto changed = [&](const char* key, const QString& before,
                             MetadataItem (*make)(const QString&)) {
        const QString k = QLatin1String(key);
        if (exif.contains(k)) addIfChanged(items, exif.value(k).toString(), before, make);
    };
    changed("Title", r.oldMovieTitle, title);
    changed("Album", r.oldMovieAlbumArtist, album);
    changed("Artist", r.oldMovieArtist, artist);
    changed("Director", r.oldMovieMake, director);
    changed("Producer", r.oldMovieProducer, producer);
    changed("Copyright", r.oldMovieCopyright, copyrights);
    changed("Keywords", r.oldMovieKeywords, keywords);
    changed("Description", r.oldMovieDescription, description);

    VideoFileType type = VideoFileType::AppleM4V;
    const QString cameraDate = exif.value(QStringLiteral("Camera Date")).toString();
    if (cameraDate != r.oldMovieShootDate) {
        bool quickTimeDate = false;
        items += dateItems(existing, cameraDate, &quickTimeDate);
        if (quickTimeDate) type = VideoFileType::QuickTimeMovie;
    }
    addLocation(items, exif.value(QStringLiteral("Latitude")).toString(),
                exif.value(QStringLiteral("Longitude")).toString(),
                exif.value(QStringLiteral("Altitude")).toString());

    const QString output = storageOutput(storage, item.filePath);
    VideoWriteJob job = jobFor(item.filePath, output, merge(items, existing, type), type);
    // The camera date stands in for the created date here.
    job.newDate = changedCreatedDate(cameraDate, r.oldMovieCreatedDate);
    job.fallbackCopyPath = output;
    return job;
}

QString xmpDateText(const QDateTime& date) {
    const QStringList parts =
        dateDescription(date).replace(QLatin1Char('-'), QLatin1Char(':')).split(QLatin1Char(' '));
    return parts.size() == 3 ? parts[0] + QLatin1Char(' ') + parts[1] : QString();
}

VideoWriteJob SaveChangedVideoExifWith(const QString& path, const QString& titleText,
                                       const QString& altitude, const QString& latitude,
                                       const QString& longitude, const QDateTime& date,
                                       const QList<MetadataItem>& existing) {
    QList<MetadataItem> items;
    if (!titleText.isEmpty()) items.append(title(titleText));
    VideoFileType type = VideoFileType::AppleM4V;
    const QString dateText = xmpDateText(date);
    if (!dateText.isEmpty()) {
        bool quickTimeDate = false;
        items += dateItems(existing, dateText, &quickTimeDate);
        if (quickTimeDate) type = VideoFileType::QuickTimeMovie;
    }
    addLocation(items, latitude, longitude, altitude);

    // The new copy is made beside the source, so that the rename that
    // replaces the source stays within one file system.
    const QFileInfo source(path);
    const QString beside =
        source.absolutePath() + QStringLiteral("/.") + source.fileName() + QStringLiteral(".new");
    VideoWriteJob job = jobFor(path, beside, merge(items, existing, type), type);
    job.newDate = date;
    job.replaceSource = true;
    job.reveal = false;
    return job;
}

VideoWriteJob SetVideoFileWithFilePath(const QString& sourcePath, const QString& outputPath,
                                       const QString& dateStr,
                                       const QList<MetadataItem>& existing) {
    const QList<MetadataItem> items = replaceDateItems(existing, dateStr);
    VideoWriteJob job = jobFor(sourcePath, outputPath, items, VideoFileType::QuickTimeMovie);
    job.newDate = dateFromText(dateStr);
    job.fallbackCopyPath = outputPath;
    return job;
}

VideoWriteJob RemoveVideoExifDateAction(const IKImageItem& item, const VideoEditorState& e,
                                        const QList<MetadataItem>& existing,
                                        const StorageContext& storage) {
    QList<MetadataItem> items;
    const std::pair<const QString*, MetadataItem (*)(const QString&)> fields[] = {
        {&item.fileTitle, title},          {&item.fileAblumName, album},
        {&item.fileArist, artist},         {&item.fileDirector, director},
        {&item.fileActor, performer},      {&item.fileproducer, producer},
        {&item.filePublisher, publisher},  {&item.fileCopyright, copyrights},
        {&item.fileKeyWords, keywordList}, {&item.fileDescription, description},
    };
    for (const auto& [value, make] : fields) {
        if (!value->isEmpty()) items.append(make(QString()));
    }
    if (!item.shootDateStr.isEmpty()) {
        items.append(make(QStringLiteral("uiso"), QStringLiteral("date"), kUisoDate, QString()));
    }
    // Only a position north and east of zero is cleared. The record holds
    // magnitudes; the hemispheres are in the sign fields.
    const bool northEast =
        item.latitudeFormat != QLatin1String("-") && item.longtitudeFormat != QLatin1String("-");
    if (northEast && item.filelongtitude > 0.0 && item.filelatitude > 0.0)
        items.append(location(QString()));
    if (item.fileImage.hasPicture()) items.append(artwork(QImage()));

    const QString output = mirroredOutputPath(storage.storagelocation, item.filePath,
                                              storage.bImportLocalFolder, storage.bImportLocalPath);
    VideoWriteJob job =
        jobFor(item.filePath, output, merge(items, existing, VideoFileType::AppleM4V),
               VideoFileType::AppleM4V);
    job.newDate = changedCreatedDate(e.mediaCreatedDate, e.oldMovieCreatedDate);
    job.fallbackCopyPath = storageOutput(storage, item.filePath);
    return job;
}

VideoWriteJob RemoveAllVideoMetadataAction(const IKImageItem& item, const StorageContext& storage,
                                           bool tracks) {
    const QString output = mirroredOutputPath(storage.storagelocation, item.filePath,
                                              storage.bImportLocalFolder, storage.bImportLocalPath);
    VideoWriteJob job = jobFor(item.filePath, output, {}, movieFileType(item.filePath));
    job.request.dropAllMetadataBoxes = true;
    job.request.dropTimedMetadataTracks = tracks;
    job.request.keepFileTypeBox = true;  // a 3GP stays a 3GP
    return job;
}

VideoWriteJob RemoveVideoLocationAction(const IKImageItem& item,
                                        const QList<MetadataItem>& existing,
                                        const StorageContext& storage) {
    const VideoFileType type = movieFileType(item.filePath);
    QList<MetadataItem> kept = existing;
    kept.removeIf([type](const MetadataItem& i) { return isLocationItem(i, type); });
    const QString output = mirroredOutputPath(storage.storagelocation, item.filePath,
                                              storage.bImportLocalFolder, storage.bImportLocalPath);
    VideoWriteJob job = jobFor(item.filePath, output, std::move(kept), type);
    job.request.dropTrackLocations = true;
    job.request.keepFileTypeBox = true;
    return job;
}

VideoEditorState videoEditorStateFor(const IKImageItem& item) {
    const auto magnitude = [](double v) {
        return v == 0.0 ? QString() : QString::asprintf("%lf", v);
    };
    VideoEditorState e;
    e.mediaTitle = e.oldMovieTitle = item.fileTitle;
    e.mediaAlumArtis = e.oldMovieAlbumArtist = item.fileAblumName;
    e.mediaArtist = e.oldMovieArtist = item.fileArist;
    e.mediaMake = e.oldMovieMake = item.fileDirector;
    e.mediaModel = e.oldMovieModel = item.fileActor;
    e.mediaProducer = e.oldMovieProducer = item.fileproducer;
    e.mediaCreatedDate = e.oldMovieCreatedDate = item.fileCreateDateStr;
    e.mediaShootDate = e.oldMovieShootDate = item.shootDateStr;
    e.mediaReleaseYear = e.oldMoviePublisher = item.filePublisher;
    e.mediaCopyright = e.oldMovieCopyright = item.fileCopyright;
    e.mediaSoftware = e.oldMovieDescription = item.fileDescription;
    e.mediakeywords = e.oldMovieKeywords = item.fileKeyWords;
    e.mediaLatitude = magnitude(item.filelatitude);
    e.mediaLongtitude = magnitude(item.filelongtitude);
    e.mediaAatitude = magnitude(item.fileAtitude);
    e.mediaImage = item.fileImage;
    e.imageIsPlaceholder = !item.fileImage.hasPicture();
    return e;
}
