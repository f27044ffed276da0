// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCommandLineParser>
#include <QFileInfo>
#include <QString>

#include "cli/cli_common.h"

#include "core/photo/photo_writers.h"

// The photo side of `set` and `strip`: the same core calls as photo mode's
// apply and removal actions, in local mode.

// Whether `set` and `strip` treat the path as a photo (the image list, and
// neither an audio nor a video extension).
bool isPhotoPath(const QString& path);
// The record of a photo as the writers need it: its path, name and file
// facts (the writers read the photo themselves).
IKImageItemPtr photoRecordForWriting(const QString& path);

// Options of `set` that only photos take (--make, --model, --gps-date,
// --gps-time).
void addPhotoSetOptions(QCommandLineParser& parser);
// Why a file is skipped for the options given: for a photo the options of
// other kinds, for any other file the photo-only ones; "" when all apply.
QString inapplicablePhotoOptions(const QCommandLineParser& parser, const QString& path);
// A usage error in the position options of `set` (a latitude that is not a
// number, ...); "" when there is none.
QString photoSetUsageError(const QCommandLineParser& parser);
// `set` for one photo: the apply with the given fields as the changed ones.
PhotoWriteResult setPhotoFile(const QCommandLineParser& parser, const IKImageItem& item,
                              const StorageContext& storage, OutputBatch& batch);

// Adds strip's photo flags (--iptc, --exif, --exif-gps; --gps and --all are
// shared with the other kinds).
void addPhotoStripOptions(QCommandLineParser& parser);
// A usage error in strip's flags; "" when they go together.
QString photoStripUsageError(const QCommandLineParser& parser);
// Why a video or audio file is skipped for strip's photo-only flags; "" when none was given.
QString inapplicablePhotoStripFlags(const QCommandLineParser& parser, const QString& kind);
// `strip` for one photo: the removal action its flags name.
PhotoWriteResult stripPhotoFile(const QCommandLineParser& parser, const IKImageItem& item,
                                const StorageContext& storage, OutputBatch& batch);

// Runs a photo command over its files: photos through `write`, every other
// file reported and skipped.
template <typename Write>
int writePhotos(const QCommandLineParser& parser, Write write) {
    const StorageContext storage{resolveStorage(parser), false, QString()};
    OutputBatch batch;
    FileReport report;
    const QStringList paths = parser.positionalArguments();
    writeEachFile(paths.size(), batch, report, [&](qsizetype index, FileReport& report) {
        const QString& path = paths.at(index);
        if (!checkRegularFile(path, report)) return;
        if (!isPhotoPath(path))
            return report.skipped(QStringLiteral("this command takes photos only"));
        const IKImageItemPtr item = photoRecordForWriting(QFileInfo(path).absoluteFilePath());
        report.result(write(*item, storage, batch));
    });
    return report.exitCode();
}
