// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/import/media_import.h"

#include <QDirIterator>
#include <QFileInfo>

#include <thread>
#include <vector>

#include "core/audio/audio_readers.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/library/media_probe.h"
#include "core/library/media_record.h"
#include "core/library/track_info.h"
#include "core/photo/photo_import.h"
#include "core/video/video_metadata_rules.h"

namespace {
// Deeper trees than this are not scanned further (and logged).
constexpr int kMaxFolderDepth = 512;
}  // namespace

namespace {

// Is the path of a kind the import lists and a regular file?
bool importable(const QString& path) {
    // A file of neither kind is skipped silently.
    if (!isVideoPath(path) && !isAudioPath(path)) return false;
    if (!isRegularFile(path)) {
        qCWarning(lcTagsmith) << "not a regular file, not read ==" << path;
        return false;
    }
    return true;
}

// A new record of a video file with its file attributes.
IKImageItemPtr newVideoRecord(const QString& path) {
    auto item = std::make_shared<IKImageItem>();
    item->fileType = QStringLiteral("Movie");
    item->fileName = QFileInfo(path).fileName();
    item->filePath = path;
    fillFileAttributes(*item);
    return item;
}

}  // namespace

IKImageItemPtr MediaImporter::importFile(const QString& path, bool technical, bool photos) {
    // Audio and video are asked before images.
    if (photos && !isAudioPath(path) && !isVideoPath(path) && isImagePath(path))
        return importPhotoFile(path);
    if (!importable(path)) return nullptr;
    // Audio is asked before video.
    if (isAudioPath(path)) return readAudioFile(path);
    IKImageItemPtr item = newVideoRecord(path);
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
    logReadProblem(*item);
    return item;
}

IKImageItemPtr MediaImporter::importFileForWriting(const QString& path) {
    if (!importable(path)) return nullptr;
    if (isAudioPath(path)) return readAudioFile(path, false);
    IKImageItemPtr item = newVideoRecord(path);
    readVideoFileMetadata(*item, false);
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
            readPending();
            ScanMediasItemWithinFolder(path);
            m_sink.folderImported(info.absoluteDir().absolutePath());
        } else if (m_threads > 1) {
            m_pending.append({path, true});
        } else if (IKImageItemPtr item = importFile(path, true, m_photos)) {
            m_sink.itemRead(item);
            m_sink.itemImported(item);
        }
        m_sink.pathFinished();
    }
    readPending();
}

void MediaImporter::ScanMediasItemWithinFolder(const QString& folder) {
    m_visitedFolders.clear();
    QString top = folder;
    while (top.size() > 1 && top.endsWith(QLatin1Char('/'))) top.chop(1);
    scanFolder(top, 0);
    readPending();
}

void MediaImporter::readPending() {
    std::vector<IKImageItemPtr> items(size_t(m_pending.size()));
    std::atomic<qsizetype> next{0};
    auto work = [&] {
        for (qsizetype i = next++; i < m_pending.size() && !m_cancelled; i = next++) {
            items[size_t(i)] =
                importFile(m_pending.at(i).path, m_pending.at(i).technical, m_photos);
            if (items[size_t(i)]) m_sink.itemRead(items[size_t(i)]);
        }
    };
    std::vector<std::thread> helpers;
    for (int t = 1; t < m_threads && t < m_pending.size(); ++t) helpers.emplace_back(work);
    work();
    for (std::thread& helper : helpers) helper.join();
    m_pending.clear();
    for (const IKImageItemPtr& item : items)
        if (item) m_sink.itemImported(item);
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
        } else if (m_threads > 1) {
            m_pending.append({path, false});
        } else if (IKImageItemPtr item = importFile(path, false, m_photos)) {
            m_sink.itemRead(item);
            m_sink.itemImported(item);
        }
    }
}
