// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_export.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include "core/common/desktop_integration.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

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

void logNote(const OutputBatch::Claim& claim) {
    if (!claim.note.isEmpty()) qCInfo(lcTagsmith).noquote() << claim.note << "==" << claim.path;
}

// Puts the new file over its source, the one writer's way of replacing a
// file in place; the rename replaces the source in one step. Answers why it
// failed, or "".
QString moveOverSource(const QString& output, const QString& source) {
    if (::rename(QFile::encodeName(output).constData(), QFile::encodeName(source).constData()) !=
        0) {
        const QString why = plainFileError(errno);
        qCWarning(lcTagsmith) << "cannot move the new file over the source ==" << source << why;
        return why;
    }
    forgetOutput(source);  // it is the user's file again
    return QString();
}

}  // namespace

bool isSameFile(const QString& a, const QString& b) {
    const QString ca = QFileInfo(a).canonicalFilePath();
    return !ca.isEmpty() && ca == QFileInfo(b).canonicalFilePath();
}

VideoWriteResult VideoWriteResult::skippedFile(const QString& source, const QString& why) {
    VideoWriteResult result;
    result.sourcePath = source;
    result.reason = why;
    result.skipped = true;
    return result;
}

QString VideoWriteResult::message() const {
    const QString name = QFileInfo(sourcePath).fileName();
    QString text;
    if (status == ExportStatus::Completed) {
        text = WriteResult::tr("Saved %1 as %2").arg(name, outputPath);
    } else if (skipped) {
        text = WriteResult::tr("%1 was skipped: %2").arg(name, reason);
    } else if (status == ExportStatus::Cancelled) {
        text = WriteResult::tr("Saving %1 was cancelled").arg(name);
    } else {
        text = WriteResult::tr("%1 could not be saved: %2").arg(name, reason);
        if (!outputPath.isEmpty())
            text += WriteResult::tr("; an unchanged copy was saved as %1").arg(outputPath);
    }
    if (!note.isEmpty()) text += QStringLiteral(" (%1)").arg(note);
    return text;
}

VideoWriteResult copyVideoFile(const QString& source, const QString& target,
                               const QDateTime& creation, const QDateTime& modification,
                               const QString& storageFolder, OutputBatch& batch, bool reveal) {
    VideoWriteResult result;
    result.sourcePath = source;
    const OutputBatch::Claim claim = batch.claim(target, source);
    result.note = claim.note;
    if (claim.path.isEmpty()) {
        result.reason = claim.note;
        result.note.clear();
        qCWarning(lcTagsmith).noquote() << result.reason << "==" << target;
        return result;
    }
    logNote(claim);
    if (QFileInfo::exists(claim.path)) QFile::remove(claim.path);  // an earlier output of ours
    QFile file(source);
    errno = 0;
    if (!file.copy(claim.path)) {
        result.reason = WriteResult::tr("the copy could not be written: %1")
                            .arg(errno ? plainFileError(errno) : file.errorString());
        qCWarning(lcTagsmith) << "cannot copy" << source << "to" << claim.path
                              << file.errorString();
        return result;
    }
    setFileDates(claim.path, creation, modification);
    markOutputAsOurs(claim.path);
    if (reveal) DesktopIntegration::instance().revealFile(claim.path, storageFolder);
    result.status = ExportStatus::Completed;
    result.outputPath = claim.path;
    return result;
}

VideoWriteResult runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                                  const PassthroughExporter& exporter) {
    OutputBatch batch;
    return runVideoWriteJob(job, storageFolder, batch, exporter);
}

VideoWriteResult runVideoWriteJob(const VideoWriteJob& job, const QString& storageFolder,
                                  OutputBatch& batch, const PassthroughExporter& exporter) {
    VideoWriteResult result;
    result.sourcePath = job.request.sourcePath;
    const OutputBatch::Claim claim = batch.claim(job.request.outputPath, job.request.sourcePath);
    if (claim.path.isEmpty()) {
        result.reason = claim.note;
        qCWarning(lcTagsmith).noquote() << claim.note << "==" << job.request.outputPath;
        return result;
    }
    logNote(claim);
    // A replacing job's hidden name is no concern of the user's.
    if (!job.replaceSource) result.note = claim.note;
    PassthroughExport request = job.request;
    request.outputPath = claim.path;
    const QString& output = request.outputPath;
    // Only an earlier output of ours can be here; it is replaced.
    if (QFileInfo::exists(output)) QFile::remove(output);
    const ExportOutcome outcome = exporter(request);
    result.status = outcome.status;
    switch (outcome.status) {
        case ExportStatus::Unknown:
            qCInfo(lcTagsmith) << "unknow";
            result.reason = WriteResult::tr("the write ended in an unknown state");
            break;
        case ExportStatus::Waiting:
            qCInfo(lcTagsmith) << "waiting";
            result.reason = WriteResult::tr("the write did not start");
            break;
        case ExportStatus::Cancelled:
            qCInfo(lcTagsmith) << "cancelled";
            break;
        case ExportStatus::Exporting:
            break;
        case ExportStatus::Completed:
            applyDates(output, job);
            result.outputPath = output;
            if (job.replaceSource) {
                // The replaced file keeps who may read and write it.
                QFile::setPermissions(output, QFile::permissions(job.request.sourcePath));
                const QString why = moveOverSource(output, job.request.sourcePath);
                result.outputPath = job.request.sourcePath;
                if (!why.isEmpty()) {
                    // The source stays as it was; the new copy is not left behind.
                    QFile::remove(output);
                    result.status = ExportStatus::Failed;
                    result.outputPath.clear();
                    result.reason = WriteResult::tr("the file could not be replaced: %1").arg(why);
                }
                break;
            }
            markOutputAsOurs(output);
            if (job.reveal) DesktopIntegration::instance().revealFile(output, storageFolder);
            break;
        case ExportStatus::Failed: {
            result.reason = outcome.reason.isEmpty()
                                ? WriteResult::tr("the new file could not be written")
                                : outcome.reason;
            qCWarning(lcTagsmith) << "export failed ==" << job.request.sourcePath;
            if (job.fallbackCopyPath.isEmpty()) break;
            // The metadata change is lost, but the user still finds a copy.
            const FileDates dates =
                job.newDate.isValid() ? FileDates{job.newDate, job.newDate} : job.sourceDates;
            OutputBatch reuse;  // the output's own name is already this job's
            const bool sameName = job.fallbackCopyPath == job.request.outputPath;
            const VideoWriteResult copy = copyVideoFile(
                job.request.sourcePath, sameName ? output : job.fallbackCopyPath, dates.creation,
                dates.modification, storageFolder, sameName ? reuse : batch, job.reveal);
            if (copy.ok()) result.outputPath = copy.outputPath;
            break;
        }
    }
    return result;
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
