#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
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
        item.fileType = QStringLiteral("Audio");
        return item;
    }
    // The MD5 sums of the first audio stream's packets (ffmpeg's framemd5),
    // or with `decoded` of its decoded samples (for a copy whose packets lost
    // a container header, such as ADTS); "" when ffmpeg cannot read the file.
    static std::string hashesOf(const QString& path, bool decoded = false) {
        QStringList args{"-v", "error", "-i", path, "-map", "0:a:0", "-f", "framemd5", "-"};
        if (!decoded) args.insert(6, "-c:a"), args.insert(7, "copy");
        if (!runTool(QStringLiteral("ffmpeg"), args)) return {};
        std::string sums;
        for (const QString& line : lastToolOutput().split(QLatin1Char('\n'))) {
            const QStringList fields = line.split(QLatin1Char(','));
            if (!line.startsWith('#') && fields.size() >= 6)
                sums += fields[5].trimmed().toStdString() + ' ';
        }
        return sums;
    }
    QTemporaryDir dir;
    StorageContext storage;
    OutputBatch batch;
};
