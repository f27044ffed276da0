// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/batch_rename.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>

#include <fcntl.h>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "core/batch/date_shift.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

// Title of the pop-up and the layout it stands for.
struct DateLayout {
    const char* title;
    const char* format;
};

const DateLayout kDateLayouts[] = {
    {"MM:DD:YYYY HH:MM:ss", "MM:dd:yyyy HH:mm:ss"}, {"DD:MM:YYYY HH:MM:ss", "dd:MM:yyyy HH:mm:ss"},
    {"YYYY:MM:DD HH:MM:ss", "yyyy:MM:dd HH:mm:ss"}, {"YYYYMMDD HHMMss", "yyyyMMdd HHmmss"},
    {"YYYY_MM_DD HH.MM.ss", "yyyy_MM_dd HH.mm.ss"}, {"YYYY_MM_DD", "yyyy_MM_dd"},
    {"MMDDYYYY HHMMss", "MMddyyyy HHmmss"},         {"MM_DD_YYYY HH.MM.ss", "MM_dd_yyyy HH.mm.ss"},
    {"DDMMYYYY HHMMss", "ddMMyyyy HHmmss"},         {"DD_MM_YYYY HH.MM.ss", "dd_MM_yyyy HH.mm.ss"},
};

QString tagValue(const IKImageItem& item, const QString& tag, const RenameOptions& options) {
    if (tag == QLatin1String("{Existing File Name}"))
        return QFileInfo(item.fileName).completeBaseName();
    if (tag == QLatin1String("{Title}")) return item.fileTitle;
    if (tag == QLatin1String("{Artist}")) return item.fileArist;
    if (tag == QLatin1String("{Description}")) return item.fileDescription;
    if (tag == QLatin1String("{Copyright}")) return item.fileCopyright;
    if (tag == QLatin1String("{Keywords}")) return item.fileKeyWords;
    if (tag == QLatin1String("{Camera Make}")) return item.fileMake;
    if (tag == QLatin1String("{Camera Model}")) return item.fileModel;
    if (tag == QLatin1String("{Dimensions}")) {
        if (item.filePixWidth <= 0 && item.filepixHeigh <= 0) return {};
        return QStringLiteral("%1 x %2").arg(item.filePixWidth).arg(item.filepixHeigh);
    }
    if (tag == QLatin1String("{Camera Date}")) {
        const QString date =
            item.shootDateStr.isEmpty() ? item.fileCreateDateStr : item.shootDateStr;
        return cameraDateInLayout(date, options.dateFormat);
    }
    return {};
}

bool refusedCharacter(QChar c) {
    return c.unicode() < 0x20 || c.unicode() == 0x7f || QStringLiteral("\\/:*?\"<>|").contains(c);
}

QString cleanName(QString name, bool replaceInvalid) {
    for (QChar& c : name) {
        if (replaceInvalid && refusedCharacter(c)) c = QLatin1Char('_');
    }
    name.remove(QLatin1Char('/'));
    name.remove(QChar(0));
    if (name == QLatin1String(".") || name == QLatin1String("..")) return {};
    return name;
}

QString sixDigits(int number) {
    return QString::number(number).rightJustified(6, QLatin1Char('0'));
}

QString targetPath(const QString& folder, const QString& base, const QString& ext) {
    return folder + QLatin1Char('/') + base + (ext.isEmpty() ? QString() : QLatin1Char('.') + ext);
}

// Moves without ever replacing a file at the target.
QString moveNoReplace(const QString& from, const QString& to) {
    const QByteArray a = QFile::encodeName(from), b = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, a.constData(), AT_FDCWD, b.constData(), RENAME_NOREPLACE) == 0)
        return {};
    if (errno != EINVAL && errno != ENOSYS) return QString::fromLocal8Bit(std::strerror(errno));
    // File systems without the flag: test, then move.
    if (QFileInfo::exists(to) || QFileInfo(to).isSymLink()) return WriteResult::tr("name taken");
    if (::rename(a.constData(), b.constData()) == 0) return {};
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Moves a file within its folder and dates it as it was.
QString moveKeepingDates(const QString& from, const QString& to) {
    const FileDates dates = readFileDates(from);
    if (const QString why = moveNoReplace(from, to); !why.isEmpty()) return why;
    if (dates.modification.isValid()) setFileDates(to, dates.creation, dates.modification);
    return {};
}

void followRecord(const IKImageItemList& items, const QString& from, const QString& to) {
    for (const IKImageItemPtr& item : items) {
        if (item && item->filePath == from) {
            item->filePath = to;
            item->fileName = QFileInfo(to).fileName();
        }
    }
}

// Plans the targets, then (with `move`) carries them out one by one.
QList<RenameStep> runRename(const IKImageItemList& items, const RenameOptions& options, bool move,
                            const BatchProgress& progress) {
    QList<RenameStep> steps;
    QSet<QString> planned, vacated;
    auto taken = [&](const QString& path) {
        if (planned.contains(path)) return true;
        if (!move && vacated.contains(path)) return false;
        return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
    };
    int number = 0;
    for (const IKImageItemPtr& item : items) {
        if (!item) continue;
        ++number;
        RenameStep step{item->filePath, {}, {}};
        const QFileInfo info(item->filePath);
        const QString base = newBaseName(*item, options, number);
        if (base.isEmpty()) {
            step.problem = WriteResult::tr("the new name would be empty");
        } else {
            QString target = targetPath(info.absolutePath(), base, info.suffix());
            if (target != info.absoluteFilePath() && taken(target)) {
                const QString second = targetPath(
                    info.absolutePath(), base + QStringLiteral(" %1").arg(number), info.suffix());
                // The second name is not tested again: the move refuses it.
                target = second;
            }
            if (target == info.absoluteFilePath()) {
                step.newPath = target;
            } else if (taken(target)) {
                step.problem =
                    WriteResult::tr("%1 exists already").arg(QFileInfo(target).fileName());
            } else if (move) {
                if (const QString why = moveKeepingDates(item->filePath, target); why.isEmpty()) {
                    step.newPath = target;
                    followRecord({item}, step.oldPath, target);
                } else {
                    step.problem = why;
                }
            } else {
                step.newPath = target;
            }
        }
        if (step.ok()) {
            planned.insert(step.newPath);
            vacated.insert(step.oldPath);
        } else {
            qCWarning(lcTagsmithUser, "%s was not renamed: %s", qPrintable(step.oldPath),
                      qPrintable(step.problem));
        }
        steps.append(step);
        if (move && !reportProgress(progress, number, int(items.size()))) break;
    }
    return steps;
}

}  // namespace

QStringList renameDateFormatTitles() {
    QStringList titles;
    for (const DateLayout& l : kDateLayouts) titles << QLatin1String(l.title);
    return titles;
}

QStringList renameTemplateTags() {
    return {QStringLiteral("{Existing File Name}"),
            QStringLiteral("{Title}"),
            QStringLiteral("{Artist}"),
            QStringLiteral("{Description}"),
            QStringLiteral("{Copyright}"),
            QStringLiteral("{Dimensions}"),
            QStringLiteral("{Keywords}"),
            QStringLiteral("{Camera Make}"),
            QStringLiteral("{Camera Model}"),
            QStringLiteral("{Camera Date}")};
}

QString cameraDateInLayout(const QString& dateText, const QString& title) {
    for (const DateLayout& l : kDateLayouts) {
        if (title != QLatin1String(l.title)) continue;
        const QDateTime date = detectDate(dateText);
        if (!date.isValid()) return dateText;
        // Formatted from the components as read: no time zone is applied.
        return QDateTime(date.date(), date.time()).toString(QLatin1String(l.format));
    }
    return dateText;
}

QString insertRenameTag(const QString& templateText, const QString& tag, bool atBeginning) {
    return atBeginning ? tag + QLatin1Char(' ') + templateText
                       : templateText + QLatin1Char(' ') + tag;
}

QString newBaseName(const IKImageItem& item, const RenameOptions& options, int number) {
    QString name;
    if (options.useCustomName) {
        name = options.customText;
        if (options.startNumber) name += sixDigits(number);
    } else {
        name = options.templateText;
        for (const QString& tag : renameTemplateTags())
            name.replace(tag, tagValue(item, tag, options));
        for (const char* gone : {"{", "}", ",", "(", ")", "/"}) name.remove(QLatin1String(gone));
        // A tag without a value leaves no double or edge blanks.
        name = name.simplified();
        if (options.sequence) name += QLatin1Char(' ') + sixDigits(number);
    }
    name += options.suffix;
    return cleanName(name.trimmed(), options.replaceInvalid);
}

QList<RenameStep> previewRename(const IKImageItemList& items, const RenameOptions& options) {
    return runRename(items, options, false, {});
}

QList<RenameStep> renameItems(const IKImageItemList& items, const RenameOptions& options,
                              const BatchProgress& progress) {
    return runRename(items, options, true, progress);
}

QList<RenameStep> undoRename(const QList<RenameStep>& done, const IKImageItemList& items) {
    QList<RenameStep> undone;
    for (auto it = done.crbegin(); it != done.crend(); ++it) {
        if (!it->ok() || it->newPath == it->oldPath) continue;
        RenameStep back{it->newPath, it->oldPath, {}};
        if (!QFileInfo::exists(back.oldPath))
            back.problem = WriteResult::tr("%1 is no longer there").arg(back.oldPath);
        else
            back.problem = moveKeepingDates(back.oldPath, back.newPath);
        if (back.problem.isEmpty())
            followRecord(items, back.oldPath, back.newPath);
        else
            qCWarning(lcTagsmithUser, "%s was not renamed back: %s", qPrintable(back.oldPath),
                      qPrintable(back.problem));
        undone.append(back);
    }
    return undone;
}

bool saveRenameJournal(const QString& journalPath, const QList<RenameStep>& done) {
    QJsonArray moves;
    for (const RenameStep& s : done) {
        if (s.ok() && s.newPath != s.oldPath)
            moves.append(QJsonObject{{QStringLiteral("from"), s.oldPath},
                                     {QStringLiteral("to"), s.newPath}});
    }
    QDir().mkpath(QFileInfo(journalPath).absolutePath());
    QSaveFile file(journalPath);
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(QJsonDocument(QJsonObject{{QStringLiteral("moves"), moves}}).toJson());
    return file.commit();
}

QList<RenameStep> loadRenameJournal(const QString& journalPath) {
    QFile file(journalPath);
    QList<RenameStep> steps;
    if (!file.open(QIODevice::ReadOnly)) return steps;
    const QJsonArray moves = QJsonDocument::fromJson(file.read(1 << 24))
                                 .object()
                                 .value(QStringLiteral("moves"))
                                 .toArray();
    for (const QJsonValue& m : moves) {
        steps.append(
            {m[QStringLiteral("from")].toString(), m[QStringLiteral("to")].toString(), {}});
    }
    return steps;
}
