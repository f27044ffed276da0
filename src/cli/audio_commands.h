// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCommandLineParser>
#include <QImage>
#include <QStringList>

#include "core/audio/audio_writers.h"

// The audio side of `set` and `strip`: the same writers and routing as the
// window's save and removal.

// Options of `set` that only audio files take, and --direct.
void addAudioSetOptions(QCommandLineParser& parser);
// Why the file is skipped, when options were given that its writer cannot
// take: for an audio file the video-only ones and the fields its writer has
// no key for (FLAC: track number, publisher, band; WAV with --direct:
// publisher, band), for a video the audio-only ones; "" when all apply.
QString inapplicableSetOptions(const QCommandLineParser& parser, const QString& path);

// The record of an audio file as the writers need it: the reader's when
// there is one, else the file facts alone.
IKImageItemPtr audioRecordForWriting(const QString& path);

// `set` for one audio file; `artwork` null when none was given. Notes for
// the user (an option ignored for the file's kind) go to `notes`.
AudioWriteResult setAudioFile(const QCommandLineParser& parser, const IKImageItem& item,
                              const QImage& artwork, const StorageContext& storage,
                              OutputBatch& batch, QStringList* notes);

// `strip` for one audio file: the window's removal, or with `all` every tag
// and picture.
AudioWriteResult stripAudioFile(const IKImageItem& item, bool all, const StorageContext& storage,
                                OutputBatch& batch);
