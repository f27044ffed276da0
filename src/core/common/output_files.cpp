// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/output_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSaveFile>
#include <QUrl>

#include <atomic>
#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <sys/xattr.h>

#include "core/common/logging.h"
#include "core/common/ui_texts.h"

const char* const kOutputListName = ".tagsmith-outputs";
const char* const kOutputAttribute = "user.tagsmith.output";

namespace {

std::atomic<bool> g_xattrUsable = true;
std::mutex g_listMutex;  // one writer of a folder's list at a time

// Size and modification time (nanoseconds) of a regular file, as the mark
// records them; empty for anything else.
QByteArray stamp(const QString& path) {
    struct stat st {};
    if (::lstat(QFile::encodeName(path).constData(), &st) != 0 || !S_ISREG(st.st_mode)) return {};
    const qint64 mtime = qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    return QByteArray::number(qint64(st.st_size)) + ' ' + QByteArray::number(mtime);
}

bool entryExists(const QString& path) {
    struct stat st {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0;
}

QString listPath(const QString& path) {
    return QFileInfo(path).absolutePath() + QLatin1Char('/') + QLatin1String(kOutputListName);
}

// The list: one line per output, "<size> <mtime> <percent-encoded name>".
QMap<QString, QByteArray> readList(const QString& list) {
    QMap<QString, QByteArray> entries;
    QFile f(list);
    if (!f.open(QIODevice::ReadOnly)) return entries;
    const QList<QByteArray> lines = f.read(qint64(4) * 1024 * 1024).split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> parts = line.trimmed().split(' ');
        if (parts.size() != 3) continue;
        entries.insert(QUrl::fromPercentEncoding(parts[2]), parts[0] + ' ' + parts[1]);
    }
    return entries;
}

bool writeList(const QString& list, const QMap<QString, QByteArray>& entries) {
    const QString folder = QFileInfo(list).absolutePath();
    QByteArray text;
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if (!entryExists(folder + QLatin1Char('/') + it.key())) continue;  // gone: forget it
        text += it.value() + ' ' + QUrl::toPercentEncoding(it.key()) + '\n';
    }
    QSaveFile f(list);
    // Some network mounts refuse the rename of a save file.
    f.setDirectWriteFallback(true);
    if (!f.open(QIODevice::WriteOnly) || f.write(text) != text.size() || !f.commit()) {
        qCWarning(lcTagsmith) << "cannot write the list of outputs ==" << list << f.errorString();
        return false;
    }
    return true;
}

QString numberedName(const QString& wanted, int n) {
    const QFileInfo info(wanted);
    const QString base = info.completeBaseName();
    const QString name = base.isEmpty() || info.suffix().isEmpty()
                             ? QStringLiteral("%1 (%2)").arg(info.fileName()).arg(n)
                             : QStringLiteral("%1 (%2).%3").arg(base).arg(n).arg(info.suffix());
    return info.absolutePath() + QLatin1Char('/') + name;
}

// Whether the existing entry `candidate` reaches the same file as `source`
// (through a link, another spelling of the path or a hard link).
bool sameFile(const QString& candidate, const QString& source) {
    struct stat a {};
    struct stat b {};
    return ::stat(QFile::encodeName(candidate).constData(), &a) == 0 &&
           ::stat(QFile::encodeName(source).constData(), &b) == 0 && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

}  // namespace

bool markOutputAsOurs(const QString& path) {
    const QByteArray value = stamp(path);
    if (value.isEmpty()) return false;
    const QByteArray native = QFile::encodeName(path);
    if (g_xattrUsable && ::lsetxattr(native.constData(), kOutputAttribute, value.constData(),
                                     size_t(value.size()), 0) == 0) {
        return true;
    }
    // No extended attributes here: the folder's list records the output.
    std::lock_guard lock(g_listMutex);
    const QString list = listPath(path);
    QMap<QString, QByteArray> entries = readList(list);
    entries.insert(QFileInfo(path).fileName(), value);
    return writeList(list, entries);
}

bool isOutputOfOurs(const QString& path) {
    const QByteArray now = stamp(path);
    if (now.isEmpty()) return false;
    if (g_xattrUsable) {
        char buffer[64];
        const ssize_t n = ::lgetxattr(QFile::encodeName(path).constData(), kOutputAttribute, buffer,
                                      sizeof buffer);
        if (n >= 0) return QByteArray(buffer, n) == now;
    }
    std::lock_guard lock(g_listMutex);
    return readList(listPath(path)).value(QFileInfo(path).fileName()) == now;
}

void forgetOutput(const QString& path) {
    ::lremovexattr(QFile::encodeName(path).constData(), kOutputAttribute);
    std::lock_guard lock(g_listMutex);
    const QString list = listPath(path);
    QMap<QString, QByteArray> entries = readList(list);
    if (entries.remove(QFileInfo(path).fileName()) > 0) writeList(list, entries);
}

void setExtendedAttributesUsable(bool usable) {
    g_xattrUsable = usable;
}

namespace {

// The turn this thread is in, if any.
struct CurrentTurn {
    const OutputBatch* batch = nullptr;
    qsizetype index = 0;
    bool passed = false;
};
thread_local CurrentTurn t_turn;

}  // namespace

OutputBatch::Turn::Turn(OutputBatch& batch, qsizetype index) : m_batch(batch), m_index(index) {
    t_turn = {&batch, index, false};
}

OutputBatch::Turn::~Turn() {
    if (t_turn.batch == &m_batch && !t_turn.passed) {
        std::lock_guard lock(m_batch.m_mutex);
        m_batch.passTurn(m_index);
    }
    t_turn = {};
}

void OutputBatch::passTurn(qsizetype index) {
    m_passed.insert(index);
    while (m_passed.remove(m_nextTurn)) ++m_nextTurn;
    m_turns.notify_all();
}

OutputBatch::Claim OutputBatch::claim(const QString& wanted, const QString& sourcePath) {
    std::unique_lock lock(m_mutex);
    if (t_turn.batch == this && !t_turn.passed) {
        m_turns.wait(lock, [this] { return m_nextTurn == t_turn.index; });
        t_turn.passed = true;
        passTurn(t_turn.index);
    }
    const QFileInfo wantedInfo(wanted);
    const QString name = wantedInfo.fileName();
    const QString source = QFileInfo(sourcePath).absoluteFilePath();
    QString note;
    for (int n = 1; n <= 9999; ++n) {
        const QString candidate = n == 1 ? wantedInfo.absoluteFilePath() : numberedName(wanted, n);
        // Most names are free: one lstat answers for them.
        const bool exists = entryExists(candidate);
        QString refusal;
        if (m_claimed.contains(candidate)) {
            refusal = WriteResult::tr("another file of this batch was already saved as %1");
        } else if (candidate == source || (exists && sameFile(candidate, sourcePath))) {
            refusal = WriteResult::tr("%1 in the storage folder is the file being saved itself");
        } else if (exists && !isOutputOfOurs(candidate)) {
            refusal =
                WriteResult::tr("a file named %1 that Tagsmith did not write is already there");
        }
        if (!refusal.isEmpty()) {
            if (n == 1) note = refusal.arg(name);
            continue;
        }
        m_claimed.insert(candidate);
        if (!note.isEmpty())
            note += WriteResult::tr(", so the new file was saved as %1")
                        .arg(QFileInfo(candidate).fileName());
        return {candidate, note};
    }
    return {{}, WriteResult::tr("no free name was found for %1 in the storage folder").arg(name)};
}

bool OutputBatch::claimed(const QString& path) const {
    std::lock_guard lock(m_mutex);
    return m_claimed.contains(QFileInfo(path).absoluteFilePath());
}
