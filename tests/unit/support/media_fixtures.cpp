#include "media_fixtures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <mutex>

namespace {
QString g_lastOutput;
std::mutex g_mutex;
}  // namespace

bool haveTool(const QString& program) {
    return !QStandardPaths::findExecutable(program).isEmpty();
}

bool runTool(const QString& program, const QStringList& args, int timeoutMs) {
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(program, args);
    const bool finished = p.waitForStarted(10000) && p.waitForFinished(timeoutMs);
    g_lastOutput = QString::fromLocal8Bit(p.readAll());
    if (!finished) {
        p.kill();
        p.waitForFinished(2000);
        g_lastOutput += QStringLiteral("\n(timed out or failed to start)");
        return false;
    }
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

QString lastToolOutput() {
    return g_lastOutput;
}

QString fixtureDir() {
#ifdef TAGSMITH_FIXTURE_DIR
    const QString dir = QStringLiteral(TAGSMITH_FIXTURE_DIR);
#else
    const QString dir = QDir::tempPath() + QStringLiteral("/tagsmith-fixtures");
#endif
    QDir().mkpath(dir);
    return dir;
}

QString ffmpegFixture(const QString& name, const QStringList& ffmpegArgs) {
    std::lock_guard lock(g_mutex);
    const QString path = fixtureDir() + QLatin1Char('/') + name;
    if (QFileInfo(path).size() > 0) return path;
    // Made under a temporary name so a half-written file is never reused.
    // Test processes run in parallel: each makes its own partial file.
    const QString partial =
        fixtureDir() + QStringLiteral("/.partial-%1-").arg(QCoreApplication::applicationPid()) +
        name;
    QStringList args{QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error")};
    args += ffmpegArgs;
    args += partial;
    if (!runTool(QStringLiteral("ffmpeg"), args)) {
        QFile::remove(partial);
        return {};
    }
    QFile::remove(path);
    return QFile::rename(partial, path) ? path : QString();
}

QString clipFixture(const QString& name, int width, int height, double seconds) {
    const QString size = QStringLiteral("%1x%2").arg(width).arg(height);
    const QString duration = QString::number(seconds);
    QStringList args{
        QStringLiteral("-f"),
        QStringLiteral("lavfi"),
        QStringLiteral("-i"),
        QStringLiteral("testsrc=size=%1:rate=25:duration=%2").arg(size, duration),
        QStringLiteral("-f"),
        QStringLiteral("lavfi"),
        QStringLiteral("-i"),
        QStringLiteral("sine=frequency=440:sample_rate=44100:duration=%1").arg(duration),
        QStringLiteral("-c:v"),
        QStringLiteral("libx264"),
        QStringLiteral("-pix_fmt"),
        QStringLiteral("yuv420p"),
        QStringLiteral("-c:a"),
        QStringLiteral("aac"),
        QStringLiteral("-shortest")};
    return ffmpegFixture(name, args);
}
