// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/video_tools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/video/video_items.h"

namespace {

using namespace VideoItems;

VideoWriteJob exportJob(const IKImageItem& item, QList<MetadataItem> items,
                        const StorageContext& storage) {
    VideoWriteJob job;
    job.request.sourcePath = item.filePath;
    job.request.outputPath = videoToolOutputFolder(item, storage) + QLatin1Char('/') +
                             QFileInfo(item.filePath).fileName();
    job.request.metadata = std::move(items);
    job.request.fileType = VideoFileType::QuickTimeMovie;
    job.sourceDates = readFileDates(item.filePath);
    job.fallbackCopyPath = job.request.outputPath;
    return job;
}

VideoWriteResult copyWithDates(const QString& source, const QString& target,
                               const QDateTime& creation, const QDateTime& modification,
                               const QString& storageRoot, OutputBatch* batch) {
    OutputBatch single;
    return copyVideoFile(source, target, creation, modification, storageRoot,
                         batch ? *batch : single);
}

}  // namespace

QString videoToolOutputFolder(const IKImageItem& item, const StorageContext& storage) {
    if (!storage.bImportLocalFolder) return storage.storagelocation;
    const QString mirrored =
        mirroredOutputPath(storage.storagelocation, item.filePath, true, storage.bImportLocalPath);
    return QFileInfo(mirrored).absolutePath();
}

VideoWriteResult CopyvideoTitletoFileNameAction(const IKImageItem& item,
                                                const StorageContext& storage, OutputBatch* batch) {
    QString title = item.fileTitle.trimmed();
    title.replace(QLatin1Char('/'), QLatin1Char('-'));  // a title is one file name, not a path
    if (title.isEmpty() || title == QLatin1String(".") || title == QLatin1String("..")) {
        qCInfo(lcTagsmith) << "no title to name the copy after ==" << item.filePath;
        return VideoWriteResult::skippedFile(
            item.filePath, WriteResult::tr("the file has no title to name the copy after"));
    }
    const QString target = videoToolOutputFolder(item, storage) + QLatin1Char('/') + title +
                           QLatin1Char('.') + QFileInfo(item.filePath).suffix();
    const FileDates dates = readFileDates(item.filePath);
    return copyWithDates(item.filePath, target, dates.creation, dates.modification,
                         storage.storagelocation, batch);
}

VideoWriteJob CopyvideofilenametoTitleAction(const IKImageItem& item,
                                             const QList<MetadataItem>& existing,
                                             const StorageContext& storage) {
    const QString titleText = QFileInfo(item.filePath).completeBaseName();
    return exportJob(item, merge({title(titleText)}, existing, VideoFileType::QuickTimeMovie),
                     storage);
}

VideoWriteJob ClickCopyVideoCreatedDateToCameraDateAction(const IKImageItem& item,
                                                          const QList<MetadataItem>& existing,
                                                          const StorageContext& storage) {
    QString text = dateText(readFileDates(item.filePath).creation);
    text.replace(QLatin1Char('-'), QLatin1Char(':'));
    return exportJob(item, replaceDateItems(existing, text), storage);
}

QString dateTextFromFileName(const QString& fileName) {
    static const QRegularExpression runs(QStringLiteral("[0-9_ .\\-]+"));
    static const QRegularExpression dated(QStringLiteral(
        "^[_ .\\-]*((?:19|20)\\d\\d)[_ .\\-]?(0[1-9]|1[0-2])[_ .\\-]?(0[1-9]|[12]\\d|3[01])"
        "(?:[_ .\\-]*([01]\\d|2[0-3])[_ .\\-]?([0-5]\\d)(?:[_ .\\-]?([0-5]\\d))?)?"));
    auto it = runs.globalMatch(fileName);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = dated.match(it.next().captured(0));
        if (!m.hasMatch()) continue;
        const QString day =
            m.captured(1) + QLatin1Char(':') + m.captured(2) + QLatin1Char(':') + m.captured(3);
        QString text;
        if (m.captured(4).isEmpty()) {
            text = QStringLiteral("%1 00:00:00").arg(day);
        } else if (m.captured(6).isEmpty()) {
            text = QStringLiteral("%1 %2:%3:00").arg(day, m.captured(4), m.captured(5));
        } else {
            text =
                QStringLiteral("%1 %2:%3:%4").arg(day, m.captured(4), m.captured(5), m.captured(6));
        }
        if (dateFromText(text).isValid()) return text;  // 2021-02-30 is no date
    }
    return {};
}

VideoWriteJob ClickSetVideoDateFromFileNameAction(const IKImageItem& item,
                                                  const QList<MetadataItem>& existing,
                                                  const StorageContext& storage) {
    const QString text = dateTextFromFileName(QFileInfo(item.filePath).completeBaseName());
    if (text.isEmpty()) {
        qCInfo(lcTagsmith) << "no date in the file name ==" << item.filePath;
        return {};
    }
    return exportJob(item, replaceDateItems(existing, text), storage);
}

QDateTime recordedDate(const QList<MetadataItem>& existing) {
    QDateTime found;
    for (const MetadataItem& m : existing) {
        if (!isDateIdentifier(m.identifier)) continue;
        QString text = m.value.toString();
        text.replace(QLatin1Char('T'), QLatin1Char(' '));
        text = text.left(19);  // drops an offset or "Z"
        const QDateTime d = dateFromText(text);
        if (d.isValid()) found = d;
    }
    return found;
}

VideoWriteResult ClickCopyVideoExifDateToCreateDateAction(const IKImageItem& item,
                                                          const QList<MetadataItem>& existing,
                                                          const StorageContext& storage,
                                                          OutputBatch* batch) {
    const QDateTime when = recordedDate(existing);
    if (!when.isValid()) {
        qCInfo(lcTagsmith) << "no recorded date to copy ==" << item.filePath;
        return VideoWriteResult::skippedFile(item.filePath,
                                             WriteResult::tr("the file has no recorded date"));
    }
    const QString target = videoToolOutputFolder(item, storage) + QLatin1Char('/') +
                           QFileInfo(item.filePath).fileName();
    return copyWithDates(item.filePath, target, when, when, storage.storagelocation, batch);
}

VideoWriteResult saveUnchangedVideoCopy(const IKImageItem& item, const VideoEditorState& editor,
                                        const StorageContext& storage, OutputBatch* batch) {
    const QString target = storage.storagelocation + QLatin1Char('/') + item.fileName;
    const FileDates source = readFileDates(item.filePath);
    const QDateTime typed = editor.mediaCreatedDate == editor.oldMovieCreatedDate
                                ? QDateTime()
                                : dateFromText(editor.mediaCreatedDate);
    if (typed.isValid())
        return copyWithDates(item.filePath, target, typed, typed, storage.storagelocation, batch);
    return copyWithDates(item.filePath, target, source.creation, source.modification,
                         storage.storagelocation, batch);
}
