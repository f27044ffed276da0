// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QImage>
#include <QString>

// Writes an animated GIF one picture at a time, so only the picture being
// added is held in memory. The file loops forever (a loop count of 0) and
// holds no frame delay: viewers then use their own default, which is 0.1 s
// in the common browsers and image viewers. Each picture is reduced to at
// most 256 colours of its own (a local colour table); the screen size is the
// first picture's, that is the movie's pictures as shown (turned upright),
// not the video track's stored size: a portrait clip gives a portrait GIF.
class GifWriter {
public:
    explicit GifWriter(const QString& path);

    bool isOpen() const { return m_file.isOpen(); }
    // False when the picture could not be written (the reason in error()).
    bool addFrame(const QImage& picture);
    // Ends the file; false when nothing was added or it could not be written.
    bool finish();
    int frameCount() const { return m_frames; }
    QString error() const { return m_error; }

private:
    bool put(const QByteArray& bytes);

    QFile m_file;
    int m_frames = 0;
    QString m_error;
};
