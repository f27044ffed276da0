#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "core/audio/audio_writers.h"
#include "core/common/desktop_integration.h"
#include "media_fixtures.h"

// A storage folder of its own per test, a desktop that only records, and the
// record of an audio file as the import makes it.
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
    // The MD5 sums of the first audio stream's packets (framemd5), or with
    // `decoded` one sum of its decoded samples; "" when ffmpeg cannot read it.
    static std::string hashesOf(const QString& path, bool decoded = false) {
        QStringList args{"-v", "error", "-i", path, "-map", "0:a:0"};
        args << (decoded ? words("-f md5 -") : words("-c:a copy -f framemd5 -"));
        if (!runTool(QStringLiteral("ffmpeg"), args)) return {};
        std::string sums;
        for (const QString& line : lastToolOutput().split(QLatin1Char('\n'))) {
            const QStringList fields = line.split(QLatin1Char(','));
            if (decoded || (!line.startsWith('#') && fields.size() >= 6))
                sums += (decoded ? line : fields[5]).trimmed().toStdString() + ' ';
        }
        return sums;
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
