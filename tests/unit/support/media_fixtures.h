// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Test media made at test time with ffmpeg and exiftool, cached in the build
// tree (TAGSMITH_FIXTURE_DIR) so each file is made once per build. Shared by
// the unit tests and the widget tests.

// The words of a command line split at blanks (no quoting), for tool arguments.
QStringList words(const QString& line);

// Runs a tool; answers true when it exits 0. Its output is kept for the
// failure message of the caller (lastToolOutput()).
bool runTool(const QString& program, const QStringList& args, int timeoutMs = 120000);
QString lastToolOutput();
// Is a program on the PATH?
bool haveTool(const QString& program);

// The folder that holds cached fixtures; created on first use.
QString fixtureDir();

// Makes (once) a fixture called `name` in the fixture folder by running
// ffmpeg with `ffmpegArgs` followed by the output path ("-y" and "-v error"
// are added). Answers the path, or "" when ffmpeg failed.
QString ffmpegFixture(const QString& name, const QStringList& ffmpegArgs);

// A short H.264/AAC clip of the given size and seconds, in the container of
// the name's extension.
QString clipFixture(const QString& name, int width = 160, int height = 120, double seconds = 1.0);

QByteArray readFile(const QString& path);
bool writeFile(const QString& path, const QByteArray& data);
// `size` bytes that change from one offset to the next and repeat only after
// a long stretch, so a read from the wrong place shows.
QByteArray patternedBytes(qsizetype size);

// A picture of random pixels in `format` ("PNG", "TIFF"): it does not
// compress, so a movie box grows by about its size.
QByteArray noisePicture(const char* format, int side);

// The application object that text drawing and event loops need, made once
// (offscreen) for the process when none exists.
void ensureGuiApplication();
