// SPDX-License-Identifier: GPL-3.0-or-later
#include "media_fixtures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <mutex>

namespace {
QString g_lastOutput;
std::mutex g_mutex;
}  // namespace

QStringList words(const QString& line) {
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

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
    if (!runTool(QStringLiteral("ffmpeg"),
                 words("-y -v error") + ffmpegArgs + QStringList{partial})) {
        QFile::remove(partial);
        return {};
    }
    QFile::remove(path);
    return QFile::rename(partial, path) ? path : QString();
}

QString clipFixture(const QString& name, int width, int height, double seconds) {
    return ffmpegFixture(
        name, words(QStringLiteral("-f lavfi -i testsrc=size=%1x%2:rate=25:duration=%3 -f lavfi -i "
                                   "sine=frequency=440:sample_rate=44100:duration=%3 -c:v libx264 "
                                   "-pix_fmt yuv420p -c:a aac -shortest")
                        .arg(width)
                        .arg(height)
                        .arg(seconds)));
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& data) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(data) == data.size();
}

QByteArray patternedBytes(qsizetype size) {
    QByteArray bytes(size, '\0');
    for (qsizetype k = 0; k < size; ++k) bytes[k] = char(k * 7 + k / 251);
    return bytes;
}

QByteArray noisePicture(const char* format, int side) {
    QImage image(side, side, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < side; ++x) line[x] = random.generate();
    }
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return data;
}

void ensureGuiApplication() {
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "unit_tests";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(argc, argv);
}
