// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/info_block.h"

#include "core/common/dates.h"
#include "core/common/ui_texts.h"
#include "core/library/formatters.h"

namespace {

QString line(const QString& label, const QString& value, const QString& bare) {
    return value.isEmpty() ? bare : label + value;
}

QString line(const QString& label, const QString& value) {
    return value.isEmpty() ? label : label + QLatin1Char(' ') + value;
}

}  // namespace

qint32 playerWholeSeconds(double seconds) {
    return static_cast<qint32>(static_cast<float>(seconds));
}

VideoInfoBlock videoInfoBlock(const IKImageItem& item, std::optional<double> playerSeconds) {
    VideoInfoBlock b;
    b.recordDate = line(InfoBlock::tr("Record Date:         "), item.shootDateStr,
                        InfoBlock::tr("Record Date:   "));
    if (item.filePixWidth != 0 || item.filepixHeigh != 0) {
        b.pixelSize = QString::asprintf("%d x %d", item.filePixWidth, item.filepixHeigh);
    }
    b.resolution = line(InfoBlock::tr("Resolution:           "), item.videoResolutionStr,
                        InfoBlock::tr("Resolution:"));
    b.videoFormat = line(InfoBlock::tr("Video Format:        "), item.fileVideoEncodeFormat,
                         InfoBlock::tr("Video Format:"));
    b.createdDate = line(InfoBlock::tr("Created Date:        "),
                         item.fileCreateDate.isValid() ? item.fileCreateDateStr : QString(),
                         InfoBlock::tr("Created Date:"));
    if (playerSeconds)
        b.duration =
            InfoBlock::tr("Duration: ") + getMediaDuration(playerWholeSeconds(*playerSeconds));
    return b;
}

AudioInfoBlock audioInfoBlock(const IKImageItem& item) {
    AudioInfoBlock b;
    b.fileName = line(InfoBlock::tr("File Name:"), item.fileName);
    b.modifiedDate = line(InfoBlock::tr("Modified Date:"), dateDescription(item.fileModifyDate));
    b.fileSize = line(InfoBlock::tr("File Size:"), item.fileSize);
    b.location = line(InfoBlock::tr("Location:"), item.filePath);
    b.kind = line(InfoBlock::tr("Kind:"), item.fileType);
    b.channels = line(InfoBlock::tr("Channels:"), item.fileChannels);
    b.duration = line(InfoBlock::tr("Duration:"), item.fileduratStr);
    b.bitrate = line(InfoBlock::tr("Bitrate:"), item.fileBitRate);
    b.sampleRate = line(InfoBlock::tr("Sample Rate:"), item.fileSampleRate);
    b.createdDate = line(InfoBlock::tr("Created Date:"),
                         item.fileCreateDate.isValid() ? item.fileCreateDateStr : QString());
    return b;
}

QStringList AudioInfoBlock::lines() const {
    return {fileName, modifiedDate, fileSize, location,   kind,
            channels, duration,     bitrate,  sampleRate, createdDate};
}
