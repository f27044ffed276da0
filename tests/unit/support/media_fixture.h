// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "media_fixtures.h"

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
            const QString made = ffmpegFixture(
                QStringLiteral("folder-%1s.%2").arg(clip.seconds).arg(QFileInfo(out).suffix()),
                words(QStringLiteral("-f lavfi -i testsrc=duration=%1:size=160x120:rate=10 "
                                     "-c:v libx264 -pix_fmt yuv420p")
                          .arg(clip.seconds)));
            if (made.isEmpty() || !QFile::copy(made, out)) {
                if (error) *error = QStringLiteral("ffmpeg failed: ") + lastToolOutput();
                return false;
            }
        }
        return writeFile(folder() + QStringLiteral("/notes.txt"), "not a media file\n");
    }

    QString root() const { return m_dir.path(); }
    QString folder() const { return m_dir.path() + QStringLiteral("/media"); }
    // The media files the import should list.
    int mediaCount() const { return 4; }

private:
    QTemporaryDir m_dir;
};
