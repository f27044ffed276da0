#include "core/audio/audio_output.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <limits>

#include <fcntl.h>
#include <unistd.h>

#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/video/video_export.h"

namespace {

// A hidden file beside the output, created as any new file is (the user's
// umask applies), removed unless it was put in place.
struct TemporaryOutput {
    explicit TemporaryOutput(const QFileInfo& target) {
        for (int attempt = 0; attempt < 100 && path.isEmpty(); ++attempt) {
            const QString candidate =
                QStringLiteral("%1/.%2.%3.tmp")
                    .arg(target.absolutePath(), target.fileName())
                    .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
            const int fd = ::open(QFile::encodeName(candidate).constData(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd >= 0) {
                ::close(fd);
                path = candidate;
            } else if (errno != EEXIST) {
                error = errno;
                return;
            }
        }
    }
    ~TemporaryOutput() {
        if (!path.isEmpty()) QFile::remove(path);
    }
    QString path;
    int error = EEXIST;
};

}  // namespace

AudioWriteResult publishAudioCopy(const AudioCopyPlan& plan, const QString& storageFolder,
                                  OutputBatch& batch, const AudioCopyFill& fill) {
    AudioWriteResult result;
    result.sourcePath = plan.sourcePath;
    const OutputBatch::Claim claim = batch.claim(plan.outputPath, plan.sourcePath);
    if (claim.path.isEmpty()) {
        result.reason = claim.note;
        qCWarning(lcTagsmith).noquote() << claim.note << "==" << plan.outputPath;
        return result;
    }
    result.note = claim.note;
    if (!claim.note.isEmpty()) qCInfo(lcTagsmith).noquote() << claim.note << "==" << claim.path;

    const QFileInfo target(claim.path);
    QDir().mkpath(target.absolutePath());
    TemporaryOutput temp(target);
    if (temp.path.isEmpty()) {
        result.reason = QStringLiteral("the storage folder cannot be written: %1")
                            .arg(plainFileError(temp.error));
        qCWarning(lcTagsmith) << "cannot create a temporary file in" << target.absolutePath();
        return result;
    }
    result.reason = fill(temp.path);
    if (!result.reason.isEmpty()) {
        qCWarning(lcTagsmith).noquote()
            << "audio write failed ==" << plan.sourcePath << "==" << result.reason;
        return result;  // the temporary file goes with `temp`
    }
    setFileDates(temp.path, plan.dates.creation, plan.dates.modification);
    // Only nothing or an earlier output of ours can be at the claimed name:
    // the rename replaces it in one step.
    if (::rename(QFile::encodeName(temp.path).constData(),
                 QFile::encodeName(claim.path).constData()) != 0) {
        result.reason =
            QStringLiteral("the new file could not be put in place: %1").arg(plainFileError(errno));
        qCWarning(lcTagsmith) << "cannot rename" << temp.path << "to" << claim.path;
        return result;
    }
    temp.path.clear();
    markOutputAsOurs(claim.path);
    if (plan.reveal) DesktopIntegration::instance().revealFile(claim.path, storageFolder);
    result.status = ExportStatus::Completed;
    result.outputPath = claim.path;
    return result;
}

QString copyFileBytes(const QString& source, const QString& target, qint64 begin, qint64 end,
                      bool append) {
    QFile in(source);
    QFile out(target);
    if (!in.open(QIODevice::ReadOnly) || !in.seek(begin))
        return QStringLiteral("the file cannot be read: %1").arg(in.errorString());
    if (!out.open(append ? QIODevice::Append : QIODevice::WriteOnly | QIODevice::Truncate))
        return QStringLiteral("the copy cannot be written: %1").arg(out.errorString());
    qint64 left = end < 0 ? std::numeric_limits<qint64>::max() : end - begin;
    QByteArray chunk;
    while (left > 0 && !(chunk = in.read(qMin<qint64>(left, 1 << 20))).isEmpty()) {
        left -= chunk.size();
        errno = 0;
        if (out.write(chunk) != chunk.size())
            return QStringLiteral("the copy could not be written: %1")
                .arg(errno ? plainFileError(errno) : out.errorString());
    }
    if (in.error() != QFileDevice::NoError)
        return QStringLiteral("the file could not be read to its end: %1").arg(in.errorString());
    if (!out.flush())
        return QStringLiteral("the copy could not be written: %1").arg(plainFileError(errno));
    return {};
}

FileDates changedOrSourceDates(const FileDates& source, const QString& now, const QString& before) {
    if (now == before) return source;
    const QDateTime date = dateFromText(now);
    return date.isValid() ? FileDates{date, date} : source;
}

QString audioSaveOutput(const StorageContext& storage, const QString& sourcePath) {
    return storage.storagelocation + QLatin1Char('/') + QFileInfo(sourcePath).fileName();
}

QString audioRemovalOutput(const StorageContext& storage, const QString& sourcePath) {
    return mirroredOutputPath(storage.storagelocation, sourcePath, storage.bImportLocalFolder,
                              storage.bImportLocalPath);
}

QByteArray encodeCover(const QImage& image, QString* mimeType) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool png = image.hasAlphaChannel();
    if (!image.save(&buffer, png ? "PNG" : "JPEG", png ? -1 : 92)) return {};
    *mimeType = png ? QStringLiteral("image/png") : QStringLiteral("image/jpeg");
    return bytes;
}
