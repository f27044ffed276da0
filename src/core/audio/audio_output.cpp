// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/audio_output.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <limits>

#include "core/common/dates.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/video/video_export.h"

AudioWriteResult publishAudioCopy(const AudioCopyPlan& plan, const QString& storageFolder,
                                  OutputBatch& batch, const AudioCopyFill& fill) {
    const PublishedCopy copy = publishCopy(plan, storageFolder, batch, fill);
    AudioWriteResult result;
    result.sourcePath = plan.sourcePath;
    result.reason = copy.reason;
    result.note = copy.note;
    if (copy.ok()) {
        result.status = ExportStatus::Completed;
        result.outputPath = copy.outputPath;
    }
    return result;
}

QString copyFileBytes(const QString& source, const QString& target, qint64 begin, qint64 end,
                      bool append) {
    QFile in(source);
    QFile out(target);
    if (!in.open(QIODevice::ReadOnly) || !in.seek(begin))
        return WriteResult::tr("the file cannot be read: %1").arg(in.errorString());
    if (!out.open(append ? QIODevice::Append : QIODevice::WriteOnly | QIODevice::Truncate))
        return WriteResult::tr("the copy cannot be written: %1").arg(out.errorString());
    qint64 left = end < 0 ? std::numeric_limits<qint64>::max() : end - begin;
    QByteArray chunk;
    while (left > 0 && !(chunk = in.read(qMin<qint64>(left, 1 << 20))).isEmpty()) {
        left -= chunk.size();
        errno = 0;
        if (out.write(chunk) != chunk.size())
            return WriteResult::tr("the copy could not be written: %1")
                .arg(errno ? plainFileError(errno) : out.errorString());
    }
    if (in.error() != QFileDevice::NoError)
        return WriteResult::tr("the file could not be read to its end: %1").arg(in.errorString());
    if (!out.flush())
        return WriteResult::tr("the copy could not be written: %1").arg(plainFileError(errno));
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
