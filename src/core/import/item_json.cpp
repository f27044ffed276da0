// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/import/item_json.h"

namespace {

void putText(QJsonObject& o, const char* name, const QString& value) {
    if (!value.isEmpty()) o.insert(QLatin1String(name), value);
}

void putDate(QJsonObject& o, const char* name, const QDateTime& value) {
    if (!value.isValid()) return;
    o.insert(QLatin1String(name),
             value.toOffsetFromUtc(value.offsetFromUtc()).toString(Qt::ISODate));
}

void putNumber(QJsonObject& o, const char* name, double value) {
    if (value != 0.0) o.insert(QLatin1String(name), value);
}

}  // namespace

QJsonObject itemToJson(const IKImageItem& i) {
    QJsonObject o;
    if (i.fileImage.hasPicture()) {
        o.insert(QStringLiteral("fileImage"),
                 QStringLiteral("%1x%2").arg(i.fileImage.width()).arg(i.fileImage.height()));
    }
    putText(o, "fileImagePath", i.fileImagePath);
    putText(o, "filePath", i.filePath);
    putText(o, "fileType", i.fileType);
    if (i.bhasCopy) o.insert(QStringLiteral("bhasCopy"), true);
    putText(o, "hasCopy", i.hasCopy);
    putText(o, "fileName", i.fileName);
    putText(o, "fileSize", i.fileSize);
    putText(o, "shootDateStr", i.shootDateStr);
    putDate(o, "shootDate", i.shootDate);
    putDate(o, "fileCreateDate", i.fileCreateDate);
    putDate(o, "fileModifyDate", i.fileModifyDate);
    putText(o, "fileCreateDateStr", i.fileCreateDateStr);
    putText(o, "fileReleasedYear", i.fileReleasedYear);
    putText(o, "fileAblumName", i.fileAblumName);
    putNumber(o, "fileduration", i.fileduration);
    putText(o, "fileduratStr", i.fileduratStr);
    putNumber(o, "filePixWidth", i.filePixWidth);
    putNumber(o, "filepixHeigh", i.filepixHeigh);
    const std::pair<const char*, const QString*> texts[] = {
        {"fileArist", &i.fileArist},
        {"fileCopyright", &i.fileCopyright},
        {"fileTitle", &i.fileTitle},
        {"fileMake", &i.fileMake},
        {"fileModel", &i.fileModel},
        {"fileSoftware", &i.fileSoftware},
        {"fileFormat", &i.fileFormat},
        {"fileKeyWords", &i.fileKeyWords},
        {"filePublisher", &i.filePublisher},
        {"fileDescription", &i.fileDescription},
        {"fileBitRate", &i.fileBitRate},
        {"fileSampleRate", &i.fileSampleRate},
        {"fileChannels", &i.fileChannels},
        {"fileVideoEncodeFormat", &i.fileVideoEncodeFormat},
        {"fileAudioEncodeFormat", &i.fileAudioEncodeFormat},
        {"fileVideoDataRate", &i.fileVideoDataRate},
        {"latitudeFormat", &i.latitudeFormat},
        {"longtitudeFormat", &i.longtitudeFormat},
        {"AtitudeFormat", &i.AtitudeFormat},
    };
    for (const auto& [name, value] : texts) putText(o, name, *value);
    putNumber(o, "filelatitude", i.filelatitude);
    putNumber(o, "filelongtitude", i.filelongtitude);
    putNumber(o, "fileAtitude", i.fileAtitude);
    const std::pair<const char*, const QString*> more[] = {
        {"fileComments", &i.fileComments},
        {"fileSubTitle", &i.fileSubTitle},
        {"fileBand", &i.fileBand},
        {"fileComposer", &i.fileComposer},
        {"fileLyricist", &i.fileLyricist},
        {"fileAlbumArist", &i.fileAlbumArist},
        {"fileDirector", &i.fileDirector},
        {"fileActor", &i.fileActor},
        {"fileproducer", &i.fileproducer},
        {"videoResolutionStr", &i.videoResolutionStr},
        {"videocodeIDStr", &i.videocodeIDStr},
        {"videoBitDepStr", &i.videoBitDepStr},
        {"videoCodeFPSStr", &i.videoCodeFPSStr},
        {"videoDataRateStr", &i.videoDataRateStr},
        {"videoAspectStr", &i.videoAspectStr},
        {"videoCurScaleStr", &i.videoCurScaleStr},
        {"videoColorPrimStr", &i.videoColorPrimStr},
        {"videoTransfStr", &i.videoTransfStr},
        {"videoYCbCrStr", &i.videoYCbCrStr},
        {"videoCodePointStr", &i.videoCodePointStr},
        {"videoTrackIDStr", &i.videoTrackIDStr},
        {"videoDurationStr", &i.videoDurationStr},
        {"audioCodecIDStr", &i.audioCodecIDStr},
        {"audiolanguageStr", &i.audiolanguageStr},
        {"audioDurationStr", &i.audioDurationStr},
        {"audioDataRateStr", &i.audioDataRateStr},
        {"audioFrameRateStr", &i.audioFrameRateStr},
        {"audioChanelsStr", &i.audioChanelsStr},
        {"audioTrackIDStr", &i.audioTrackIDStr},
    };
    for (const auto& [name, value] : more) putText(o, name, *value);
    putText(o, "fileReadProblem", i.fileReadProblem);
    return o;
}

QJsonArray metadataRowsToJson(const QList<MetadataRow>& rows) {
    QJsonArray out;
    for (const MetadataRow& row : rows) {
        QJsonObject o;
        o.insert(QStringLiteral("keySpace"), row.keySpace);
        o.insert(QStringLiteral("key"), row.key);
        o.insert(QStringLiteral("value"), row.value);
        putText(o, "identifier", row.identifier);
        if (row.bytes >= 0) o.insert(QStringLiteral("bytes"), row.bytes);
        out.append(o);
    }
    return out;
}
