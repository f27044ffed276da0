// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/media_record.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMimeDatabase>
#include <QMutex>

#include <unistd.h>

#include <cmath>
#include <optional>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/library/formatters.h"
#include "core/library/media_probe.h"

namespace {

QString kindOf(const QMimeType& mime) {
    return mime.isValid() && !mime.isDefault() ? mime.comment() : QString();
}

// An Ogg file's type by the codec its first packet names, as the desktop's
// content rules find it (the identification header at byte 28); "" for
// another codec. The database's content matching tries every rule it has.
// `content`, when given, is the file already open.
QString oggTypeName(const QString& path, QIODevice* content) {
    static const std::pair<QByteArrayView, const char*> kCodecs[] = {
        {"\x01vorbis", "audio/x-vorbis+ogg"},
        {"OpusHead", "audio/x-opus+ogg"},
        {"\x7f"
         "FLAC",
         "audio/x-flac+ogg"},
        {"Speex  ", "audio/x-speex+ogg"},
        {"fLaC", "audio/x-flac+ogg"},
        {"\x80theora", "video/x-theora+ogg"},
    };
    QFile file(path);
    if (!content && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) content = &file;
    if (!content || !content->seek(0)) return {};
    const QByteArray head = content->read(36);
    if (!head.startsWith("OggS") || head.size() < 36) return {};
    for (const auto& [magic, name] : kCodecs)
        if (head.mid(28).startsWith(magic)) return QLatin1String(name);
    return {};
}

// The comment of the type named `name` for a file of the `extension`
// (lower case): the type's own comment where its names include the
// extension, as the database decides, else "" (the database is asked).
// Looked up once for each pair.
QString kindOfName(const QString& name, const QString& extension) {
    static QMutex mutex;
    static QHash<QString, QString> byName;
    const QString key = name + QLatin1Char(' ') + extension;
    const QMutexLocker lock(&mutex);
    if (const auto known = byName.constFind(key); known != byName.cend()) return *known;
    const QMimeType type = QMimeDatabase().mimeTypeForName(name);
    const bool named = type.globPatterns().contains(QLatin1String("*.") + extension);
    return *byName.insert(key, named ? kindOf(type) : QString());
}

// An Ogg file's kind, from its content.
QString oggKind(const QString& path, const QString& extension, QIODevice* content) {
    if (const QString name = oggTypeName(path, content); !name.isEmpty())
        if (const QString kind = kindOfName(name, extension); !kind.isEmpty()) return kind;
    return kindOf(QMimeDatabase().mimeTypeForFile(path));
}

// The kind by the name, as the desktop names it, looked up once per
// extension: the database's glob matching cost more than reading a small
// file's tags, and reading the content again for it a second open of every
// file. Only Ogg, whose name does not tell the codec, is looked into.
QString kindText(const QString& path, QIODevice* content) {
    static QMutex mutex;
    static QHash<QString, std::optional<QString>> byExtension;  // none: the content decides
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    const QString extension =
        dot > path.lastIndexOf(QLatin1Char('/')) ? path.mid(dot + 1).toLower() : QString();
    if (!extension.isEmpty()) {
        std::optional<std::optional<QString>> known;
        {
            const QMutexLocker lock(&mutex);
            if (const auto it = byExtension.constFind(extension); it != byExtension.cend())
                known = *it;
        }
        if (known) return known->has_value() ? **known : oggKind(path, extension, content);
    }
    const QMimeDatabase mimes;
    const QMimeType byName = mimes.mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    const bool ogg = byName.name().endsWith(QLatin1String("/ogg"));
    if (!extension.isEmpty()) {
        const QMutexLocker lock(&mutex);
        byExtension.insert(extension, ogg ? std::nullopt : std::optional(kindOf(byName)));
    }
    return ogg ? oggKind(path, extension, content) : kindOf(byName);
}

}  // namespace

void fillFileAttributes(IKImageItem& item) {
    // One status call gives the size and both dates.
    fillFileAttributes(item, readFileDates(item.filePath));
}

void fillFileAttributes(IKImageItem& item, const FileDates& dates) {
    if (dates.size >= 0) {
        item.fileSize = sizeText(dates.size);
        item.fileSizeBytes = dates.size;
    }
    if (dates.creation.isValid()) {
        item.fileCreateDate = dates.creation;
        item.fileCreateDateStr = dateText(dates.creation);
    }
    if (dates.modification.isValid()) item.fileModifyDate = dates.modification;
}

void fillProbeFacts(IKImageItem& item, const ProbeFacts& facts, QIODevice* content) {
    if (facts.durationSeconds) {
        item.fileduration = *facts.durationSeconds;
        item.fileduratStr = getMediaDuration(static_cast<qint32>(std::trunc(item.fileduration)));
    }
    if (const QString kind = kindText(item.filePath, content); !kind.isEmpty())
        item.fileType = kind;
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

QString readProblemOf(const IKImageItem& item, bool audio, bool opened) {
    // A readable file, the common case, is told by one access check; only
    // an unreadable one is opened, for the reason.
    if (!opened && ::access(QFile::encodeName(item.filePath).constData(), R_OK) != 0) {
        QFile file(item.filePath);
        if (!file.open(QIODevice::ReadOnly)) {
            return QCoreApplication::translate("MediaImporter", "The file cannot be opened (%1).")
                .arg(file.errorString());
        }
    }
    if (item.fileSizeBytes == 0 && QFileInfo(item.filePath).size() == 0)
        return QCoreApplication::translate("MediaImporter", "The file is empty.");
    if (audio) {
        // An audio file that FFmpeg reads has a sound.
        if (item.fileSampleRate.isEmpty() && item.fileduration <= 0) {
            return QCoreApplication::translate(
                "MediaImporter",
                "The file is damaged or is not an audio file that Tagsmith can read.");
        }
        return {};
    }
    // A movie that FFmpeg reads has a length, a picture or a sound.
    if (item.fileduration <= 0 && item.filePixWidth <= 0 && item.fileSampleRate.isEmpty()) {
        return QCoreApplication::translate(
            "MediaImporter", "The file is damaged or is not a movie that Tagsmith can read.");
    }
    return {};
}

void logReadProblem(const IKImageItem& item) {
    if (item.fileReadProblem.isEmpty()) return;
    qCInfo(lcTagsmithUser).noquote()
        << QCoreApplication::translate("MediaImporter", "%1 could not be read: %2")
               .arg(item.fileName, item.fileReadProblem);
}
