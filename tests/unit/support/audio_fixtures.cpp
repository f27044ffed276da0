#include "audio_fixtures.h"

#include "media_fixtures.h"

namespace audiofix {

namespace {
const QStringList kTone = words("-f lavfi -i sine=duration=0.3:sample_rate=22050");
}

QString coverPng() {
    return ffmpegFixture(QStringLiteral("cover8.png"),
                         words("-f lavfi -i color=red:size=8x8 -frames:v 1"));
}

QString mp3(int version) {
    const QString cover = coverPng();
    if (cover.isEmpty()) return {};
    return ffmpegFixture(
        QStringLiteral("tagged-v2%1.mp3").arg(version),
        kTone +
            QStringList{QStringLiteral("-i"), cover, QStringLiteral("-metadata"),
                        QStringLiteral("title=") + QString::fromUtf8(kTitle)} +
            words(QStringLiteral("-map 0 -map 1 -c:a libmp3lame -b:a 32k -c:v copy "
                                 "-disposition:v attached_pic -write_id3v1 1 -id3v2_version %1 "
                                 "-metadata artist=Artist -metadata date=2019 -metadata track=7 "
                                 "-metadata comment=Kommentar -metadata TRDA=2019-05-03T10:20:30")
                      .arg(version)));
}

QString caf() {
    return ffmpegFixture(QStringLiteral("tagged.caf"),
                         kTone + words("-c:a pcm_s16le -metadata artist=Artist") +
                             QStringList{QStringLiteral("-metadata"),
                                         QStringLiteral("title=") + QString::fromUtf8(kTitle)});
}

}  // namespace audiofix
