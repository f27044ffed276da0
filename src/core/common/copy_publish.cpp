// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/copy_publish.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "core/common/desktop_integration.h"
#include "core/common/file_errors.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"

namespace {

// A hidden file beside the output, created as any new file is (the user's
// umask applies), removed unless it was put in place; or, where asked and
// the file system can, an unnamed file in the output's folder, reached by
// its descriptor's path until it is linked.
struct TemporaryOutput {
    TemporaryOutput(const QFileInfo& target, bool unnamed) {
        if (unnamed) {
            unnamedFd = ::open(QFile::encodeName(target.absolutePath()).constData(),
                               O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
            if (unnamedFd >= 0 && ::access("/proc/self/fd", X_OK) == 0) {
                path = QStringLiteral("/proc/self/fd/%1").arg(unnamedFd);
                return;
            }
            if (unnamedFd >= 0) ::close(unnamedFd);
            unnamedFd = -1;  // a named file, as on file systems without them
        }
        for (int attempt = 0; attempt < 100 && path.isEmpty(); ++attempt) {
            const QString candidate =
                QStringLiteral("%1/.%2.%3.tmp")
                    .arg(target.absolutePath(), target.fileName())
                    .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
            int fd = ::open(QFile::encodeName(candidate).constData(),
                            O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            // The folder is made only when missing, not tried for every file.
            if (fd < 0 && errno == ENOENT && QDir().mkpath(target.absolutePath()))
                fd = ::open(QFile::encodeName(candidate).constData(),
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
        if (unnamedFd >= 0)
            ::close(unnamedFd);  // an unnamed file not linked goes with it
        else if (!path.isEmpty())
            QFile::remove(path);
    }
    // Puts the file in place under `name`, replacing what is there.
    bool publish(const QString& name) {
        const QByteArray to = QFile::encodeName(name);
        if (unnamedFd < 0) {
            if (::rename(QFile::encodeName(path).constData(), to.constData()) != 0) return false;
            path.clear();
            return true;
        }
        const QByteArray from = QFile::encodeName(path);
        if (::linkat(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), AT_SYMLINK_FOLLOW) == 0)
            return true;
        if (errno != EEXIST) return false;
        // An earlier output of ours is there: linked under a hidden name
        // first, then renamed over it in one step.
        for (int attempt = 0; attempt < 100; ++attempt) {
            const QByteArray hidden = QFile::encodeName(
                QStringLiteral("%1/.%2.%3.tmp")
                    .arg(QFileInfo(name).absolutePath(), QFileInfo(name).fileName())
                    .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0')));
            if (::linkat(AT_FDCWD, from.constData(), AT_FDCWD, hidden.constData(),
                         AT_SYMLINK_FOLLOW) != 0) {
                if (errno == EEXIST) continue;
                return false;
            }
            if (::rename(hidden.constData(), to.constData()) == 0) return true;
            const int error = errno;
            ::unlink(hidden.constData());
            errno = error;
            return false;
        }
        return false;
    }
    QString path;
    int unnamedFd = -1;
    int error = EEXIST;
};

}  // namespace

PublishedCopy publishCopy(const CopyPlan& plan, const QString& storageFolder, OutputBatch& batch,
                          const CopyFill& fill) {
    PublishedCopy result;
    const OutputBatch::Claim claim = batch.claim(plan.outputPath, plan.sourcePath);
    if (claim.path.isEmpty()) {
        result.reason = claim.note;
        qCWarning(lcTagsmith).noquote() << claim.note << "==" << plan.outputPath;
        return result;
    }
    result.note = claim.note;
    if (!claim.note.isEmpty()) qCInfo(lcTagsmith).noquote() << claim.note << "==" << claim.path;

    const QFileInfo target(claim.path);
    TemporaryOutput temp(target, plan.unnamedTemporary);
    if (temp.path.isEmpty()) {
        result.reason = WriteResult::tr("the storage folder cannot be written: %1")
                            .arg(plainFileError(temp.error));
        qCWarning(lcTagsmith) << "cannot create a temporary file in" << target.absolutePath();
        return result;
    }
    result.reason = fill(temp.path);
    if (!result.reason.isEmpty()) {
        qCWarning(lcTagsmith).noquote()
            << plan.failedText << "==" << plan.sourcePath << "==" << result.reason;
        return result;  // the temporary file goes with `temp`
    }
    setFileDates(temp.path, plan.dates.creation, plan.dates.modification);
    // Only nothing or an earlier output of ours can be at the claimed name:
    // the rename replaces it in one step.
    if (!temp.publish(claim.path)) {
        result.reason = WriteResult::tr("the new file could not be put in place: %1")
                            .arg(plainFileError(errno));
        qCWarning(lcTagsmith) << "cannot rename" << temp.path << "to" << claim.path;
        return result;
    }
    markOutputAsOurs(claim.path);
    if (plan.reveal) DesktopIntegration::instance().revealFile(claim.path, storageFolder);
    result.outputPath = claim.path;
    return result;
}
