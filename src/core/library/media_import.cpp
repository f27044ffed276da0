#include "core/library/media_import.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>

#include <cmath>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/library/formatters.h"
#include "core/library/media_kinds.h"
#include "core/library/media_probe.h"
#include "core/library/track_info.h"
#include "core/video/video_metadata_rules.h"

namespace {
// Deeper trees than this are not scanned further (and logged).
constexpr int kMaxFolderDepth = 512;
}  // namespace

void fillFileAttributes(IKImageItem& item) {
    const QString& path = item.filePath;
    const qint64 size = fileSizeOf(path);
    if (size >= 0) {
        item.fileSize = sizeText(size);
        item.fileSizeBytes = size;
    }
    const FileDates dates = readFileDates(path);
    if (dates.creation.isValid()) {
        item.fileCreateDate = dates.creation;
        item.fileCreateDateStr = dateText(dates.creation);
    }
    if (dates.modification.isValid()) item.fileModifyDate = dates.modification;
}

void fillProbeFacts(IKImageItem& item, const ProbeFacts& facts) {
    if (facts.durationSeconds) {
        item.fileduration = *facts.durationSeconds;
        item.fileduratStr = getMediaDuration(static_cast<qint32>(std::trunc(item.fileduration)));
    }
    const QMimeDatabase mimes;
    const QMimeType mime = mimes.mimeTypeForFile(item.filePath);
    if (mime.isValid() && !mime.isDefault() && !mime.comment().isEmpty()) {
        item.fileType = mime.comment();
    }
    if (facts.audioBitRate) {
        item.fileBitRate = QStringLiteral("%1 bps").arg(*facts.audioBitRate);
        item.audioDataRateStr = item.fileBitRate;
    }
    if (facts.audioSampleRate)
        item.fileSampleRate = QStringLiteral("%1 Hz").arg(*facts.audioSampleRate);
    if (facts.audioChannels) item.fileChannels = QString::number(*facts.audioChannels);
    if (facts.pixelHeight) item.filepixHeigh = *facts.pixelHeight;
    if (facts.pixelWidth) item.filePixWidth = *facts.pixelWidth;
}

QString readProblemOf(const IKImageItem& item) {
    QFile file(item.filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return QCoreApplication::translate("MediaImporter", "The file cannot be opened (%1).")
            .arg(file.errorString());
    }
    if (file.size() == 0) return QCoreApplication::translate("MediaImporter", "The file is empty.");
    // A movie that FFmpeg reads has a length, a picture or a sound.
    if (item.fileduration <= 0 && item.filePixWidth <= 0 && item.fileSampleRate.isEmpty()) {
        return QCoreApplication::translate(
            "MediaImporter", "The file is damaged or is not a movie that Tagsmith can read.");
    }
    return {};
}

namespace {

// A new record of a video file with its file attributes; null for a file
// of another kind (audio too, until audio readers exist) or one that is
// not a regular file.
IKImageItemPtr newVideoRecord(const QString& path) {
    // Audio is asked first; a file of neither kind is skipped silently.
    if (!isVideoPath(path) && !isAudioPath(path)) return nullptr;
    if (!isRegularFile(path)) {
        qCWarning(lcTagsmith) << "not a regular file, not read ==" << path;
        return nullptr;
    }
    if (isAudioPath(path)) {
        // Each audio format has its own reader; until they exist, audio files
        // are left out of the list.
        return nullptr;
    }
    if (!isVideoPath(path)) return nullptr;

    auto item = std::make_shared<IKImageItem>();
    item->fileType = QStringLiteral("Movie");
    item->fileName = QFileInfo(path).fileName();
    item->filePath = path;
    fillFileAttributes(*item);
    return item;
}

}  // namespace

IKImageItemPtr MediaImporter::importFile(const QString& path, bool technical) {
    IKImageItemPtr item = newVideoRecord(path);
    if (!item) return nullptr;
    {
        // One open of the file serves the probed facts and the track texts.
        const OpenedMedia media(path);
        fillProbeFacts(*item, probeMediaFile(media));
        // The folder scan leaves out the technical texts and reads a smaller
        // set of metadata items; the full import has everything.
        if (technical) fillTechnicalInfo(*item, describeMovieTracks(media));
    }
    readVideoFileMetadata(*item, !technical);
    item->fileReadProblem = readProblemOf(*item);
    if (!item->fileReadProblem.isEmpty()) {
        qCInfo(lcTagsmithUser).noquote()
            << QCoreApplication::translate("MediaImporter", "%1 could not be read: %2")
                   .arg(item->fileName, item->fileReadProblem);
    }
    return item;
}

IKImageItemPtr MediaImporter::importFileForWriting(const QString& path) {
    IKImageItemPtr item = newVideoRecord(path);
    if (item) readVideoFileMetadata(*item, false);
    return item;
}

void MediaImporter::importMediaItemsThreader(const QStringList& paths) {
    for (const QString& path : paths) {
        if (m_cancelled) break;
        const QFileInfo info(path);
        if (!info.exists()) {
            qCInfo(lcTagsmith) << "import: no such file or folder ==" << path;
            m_sink.pathMissing(path);
        } else if (info.isDir()) {
            ScanMediasItemWithinFolder(path);
            m_sink.folderImported(info.absoluteDir().absolutePath());
        } else if (IKImageItemPtr item = importFile(path, true)) {
            m_sink.itemImported(item);
        }
        m_sink.pathFinished();
    }
}

void MediaImporter::ScanMediasItemWithinFolder(const QString& folder) {
    m_visitedFolders.clear();
    QString top = folder;
    while (top.size() > 1 && top.endsWith(QLatin1Char('/'))) top.chop(1);
    scanFolder(top, 0);
}

void MediaImporter::scanFolder(const QString& folder, int depth) {
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    if (canonical.isEmpty() || m_visitedFolders.contains(canonical)) {
        if (!canonical.isEmpty()) qCInfo(lcTagsmith) << "folder already scanned ==" << folder;
        return;
    }
    if (depth > kMaxFolderDepth) {
        qCWarning(lcTagsmith) << "folder nested too deeply, not scanned ==" << folder;
        return;
    }
    m_visitedFolders.insert(canonical);

    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext() && !m_cancelled) {
        entries.next();
        const QString path = folder + QLatin1Char('/') + entries.fileName();
        const QFileInfo info = entries.fileInfo();
        if (info.isDir()) {
            scanFolder(path, depth + 1);
        } else if (IKImageItemPtr item = importFile(path, false)) {
            m_sink.itemImported(item);
        }
    }
}
