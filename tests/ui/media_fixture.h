#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// A folder of small media made with ffmpeg at test time:
//   media/b-clip.mp4    1 s      media/Apple.mov   3 s
//   media/zebra.mkv     4 s      media/notes.txt   (not media)
//   media/nested/deeper/.hidden-dusk.m4v  2 s, hidden, two folders down
// Lengths differ so that sizes do too.
// File names are chosen so that their name order is neither the order in
// which they are made nor, most likely, the order the folder lists them in.
class MediaFixture {
public:
    bool make(QString* error) {
        if (!m_dir.isValid()) return fail(error, QStringLiteral("no temporary folder"));
        const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
        if (ffmpeg.isEmpty()) return fail(error, QStringLiteral("ffmpeg is not installed"));
        QDir().mkpath(folder() + QStringLiteral("/nested/deeper"));
        const struct {
            const char* name;
            int seconds;
        } clips[] = {{"b-clip.mp4", 1},
                     {"Apple.mov", 3},
                     {"zebra.mkv", 4},
                     {"nested/deeper/.hidden-dusk.m4v", 2}};
        for (const auto& clip : clips) {
            const QString out = folder() + QLatin1Char('/') + QLatin1String(clip.name);
            QProcess p;
            p.start(ffmpeg,
                    {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
                     QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                     QStringLiteral("testsrc=duration=%1:size=160x120:rate=10").arg(clip.seconds),
                     QStringLiteral("-c:v"), QStringLiteral("libx264"), QStringLiteral("-pix_fmt"),
                     QStringLiteral("yuv420p"), out});
            if (!p.waitForFinished(60000) || p.exitCode() != 0)
                return fail(error, QStringLiteral("ffmpeg failed for ") + out + QLatin1Char(' ') +
                                       QString::fromLocal8Bit(p.readAllStandardError()));
        }
        QFile notes(folder() + QStringLiteral("/notes.txt"));
        if (!notes.open(QIODevice::WriteOnly)) return fail(error, QStringLiteral("notes.txt"));
        notes.write("not a media file\n");
        return true;
    }

    QString root() const { return m_dir.path(); }
    QString folder() const { return m_dir.path() + QStringLiteral("/media"); }
    // The media files the import should list.
    int mediaCount() const { return 4; }

private:
    static bool fail(QString* error, const QString& why) {
        if (error) *error = why;
        return false;
    }
    QTemporaryDir m_dir;
};
