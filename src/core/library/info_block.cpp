#include "core/library/info_block.h"

#include "core/common/dates.h"
#include "core/library/formatters.h"

namespace {

QString line(const QString& label, const QString& value, const QString& bare) {
    return value.isEmpty() ? bare : label + value;
}

QString line(const char* label, const QString& value) {
    return value.isEmpty() ? QString::fromLatin1(label)
                           : QString::fromLatin1(label) + QLatin1Char(' ') + value;
}

}  // namespace

qint32 playerWholeSeconds(double seconds) {
    return static_cast<qint32>(static_cast<float>(seconds));
}

VideoInfoBlock videoInfoBlock(const IKImageItem& item, std::optional<double> playerSeconds) {
    VideoInfoBlock b;
    b.recordDate = line(QStringLiteral("Record Date:         "), item.shootDateStr,
                        QStringLiteral("Record Date:   "));
    if (item.filePixWidth != 0 || item.filepixHeigh != 0) {
        b.pixelSize = QString::asprintf("%d x %d", item.filePixWidth, item.filepixHeigh);
    }
    b.resolution = line(QStringLiteral("Resolution:           "), item.videoResolutionStr,
                        QStringLiteral("Resolution:"));
    b.videoFormat = line(QStringLiteral("Video Format:        "), item.fileVideoEncodeFormat,
                         QStringLiteral("Video Format:"));
    b.createdDate = line(QStringLiteral("Created Date:        "),
                         item.fileCreateDate.isValid() ? item.fileCreateDateStr : QString(),
                         QStringLiteral("Created Date:"));
    if (playerSeconds)
        b.duration =
            QStringLiteral("Duration: ") + getMediaDuration(playerWholeSeconds(*playerSeconds));
    return b;
}

AudioInfoBlock audioInfoBlock(const IKImageItem& item) {
    AudioInfoBlock b;
    b.fileName = line("File Name:", item.fileName);
    b.modifiedDate = line("Modified Date:", dateDescription(item.fileModifyDate));
    b.fileSize = line("File Size:", item.fileSize);
    b.location = line("Location:", item.filePath);
    b.kind = line("Kind:", item.fileType);
    b.channels = line("Channels:", item.fileChannels);
    b.duration = line("Duration:", item.fileduratStr);
    b.bitrate = line("Bitrate:", item.fileBitRate);
    b.sampleRate = line("Sample Rate:", item.fileSampleRate);
    b.createdDate =
        line("Created Date:", item.fileCreateDate.isValid() ? item.fileCreateDateStr : QString());
    return b;
}

QStringList AudioInfoBlock::lines() const {
    return {fileName, modifiedDate, fileSize, location,   kind,
            channels, duration,     bitrate,  sampleRate, createdDate};
}
