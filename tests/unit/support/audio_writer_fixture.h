// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "core/audio/audio_writers.h"
#include "core/common/desktop_integration.h"
#include "media_fixtures.h"

// A storage folder per test, a desktop that only records, and audio records.
class AudioWriterTest : public testing::Test {
protected:
    void SetUp() override {
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        storage.storagelocation = dir.path();
    }
    static IKImageItem audioAt(const QString& path) {
        IKImageItem item;
        item.filePath = path;
        item.fileName = QFileInfo(path).fileName();
        return item;
    }
    // ffmpeg's framemd5 of the first audio stream's packets (times, sizes and
    // sums; side data, which containers keep differently, left out), or with
    // `decoded` one sum of its decoded samples; "" on failure.
    static std::string hashesOf(const QString& path, bool decoded = false) {
        const QStringList args = QStringList{"-v", "error", "-i", path, "-map", "0:a:0"} +
                                 words(decoded ? "-f md5 -" : "-c:a copy -f framemd5 -");
        if (!runTool(QStringLiteral("ffmpeg"), args)) return {};
        const QStringList lines = lastToolOutput().split('\n').filter(QRegularExpression("^[^#]"));
        return lines.join('\n').remove(QRegularExpression(", S=[^\n]*")).toStdString();
    }
    static QJsonObject probedTags(const QString& path) {
        runTool(QStringLiteral("ffprobe"), {"-v", "error", "-show_entries",
                                            "format=format_name:format_tags", "-of", "json", path});
        return QJsonDocument::fromJson(lastToolOutput().toUtf8())["format"].toObject();
    }
    QTemporaryDir dir;
    StorageContext storage;
    OutputBatch batch;
};
