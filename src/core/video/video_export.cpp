#include "core/video/video_export.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/common/desktop_integration.h"
#include "core/common/logging.h"

PassthroughExporter& videoExporter() {
    static PassthroughExporter exporter = [](const PassthroughExport& e) {
        qCWarning(lcTagsmith) << "no movie exporter installed; cannot write ==" << e.outputPath;
        return ExportStatus::Failed;
    };
    return exporter;
}

namespace {

void applyDates(const QString& path, const VideoWriteJob& job) {
    if (job.newDate.isValid()) {
        setFileDates(path, job.newDate, job.newDate);
    } else {
        setFileDates(path, job.sourceDates.creation, job.sourceDates.modification);
    }
}

}  // namespace

bool isSameFile(const QString& a, const QString& b) {
    const QString ca = QFileInfo(a).canonicalFilePath();
    return !ca.isEmpty() && ca == QFileInfo(b).canonicalFilePath();
}

ExportStatus runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                              const PassthroughExporter& exporter) {
    const QString& output = job.request.outputPath;
    if (isSameFile(output, job.request.sourcePath)) {
        qCWarning(lcTagsmith)
            << "the new file would replace its source; choose another storage folder ==" << output;
        return ExportStatus::Failed;
    }
    if (QFileInfo::exists(output)) QFile::remove(output);
    const ExportStatus status = exporter(job.request);
    switch (status) {
        case ExportStatus::Unknown:
            qCInfo(lcTagsmith) << "unknow";
            break;
        case ExportStatus::Waiting:
            qCInfo(lcTagsmith) << "waiting";
            break;
        case ExportStatus::Cancelled:
            qCInfo(lcTagsmith) << "cancelled";
            break;
        case ExportStatus::Exporting:
            break;
        case ExportStatus::Completed:
            applyDates(output, job);
            if (job.replaceSource) {
                QFile::remove(job.request.sourcePath);
                if (!QFile::rename(output, job.request.sourcePath)) {
                    qCWarning(lcTagsmith)
                        << "cannot move the new file over the source ==" << job.request.sourcePath;
                }
            } else if (job.reveal) {
                DesktopIntegration::instance().revealFile(output, storageFolder);
            }
            break;
        case ExportStatus::Failed:
            qCWarning(lcTagsmith) << "export failed ==" << job.request.sourcePath;
            if (job.fallbackCopyPath.isEmpty() ||
                isSameFile(job.fallbackCopyPath, job.request.sourcePath))
                break;
            // The metadata change is lost, but the user still finds a copy.
            QFile::remove(job.fallbackCopyPath);
            if (QFile::copy(job.request.sourcePath, job.fallbackCopyPath)) {
                applyDates(job.fallbackCopyPath, job);
                if (job.reveal)
                    DesktopIntegration::instance().revealFile(job.fallbackCopyPath, storageFolder);
            }
            break;
    }
    return status;
}

QString mirroredOutputPath(const QString& storage, const QString& sourcePath, bool importedFolder,
                           const QString& importedParent) {
    if (importedFolder) {
        // Files outside the imported folder keep their whole path below the
        // storage folder; this follows every later import too.
        QString rest = sourcePath;
        if (!importedParent.isEmpty() && rest.startsWith(importedParent))
            rest.remove(0, importedParent.size());
        if (!rest.startsWith(QLatin1Char('/'))) rest.prepend(QLatin1Char('/'));
        const QString path = storage + rest;
        QDir().mkpath(QFileInfo(path).absolutePath());
        return path;
    }
    return storage + QLatin1Char('/') + QFileInfo(sourcePath).fileName();
}
