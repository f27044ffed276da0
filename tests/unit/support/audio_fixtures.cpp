// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio_fixtures.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

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

QString wav() {
    const QString info = ffmpegFixture(
        QStringLiteral("tagged-info.wav"),
        kTone + words("-metadata title=WavT -metadata artist=A -metadata track=4 -metadata "
                      "ISBJ=Sub -metadata date=2019-05-03T10:20:30+0800"));
    const QString path = fixtureDir() + QStringLiteral("/tagged.wav");
    if (info.isEmpty() || mp3(3).isEmpty() || QFileInfo(path).size() > 0)
        return info.isEmpty() ? info : path;
    // The ID3 chunk ffmpeg does not write: mp3(3)'s tag, appended.
    const QByteArray mp3Bytes = readFile(mp3(3));
    const qsizetype tagSize =
        10 + ((mp3Bytes[6] << 21) | (mp3Bytes[7] << 14) | (mp3Bytes[8] << 7) | mp3Bytes[9]);
    QByteArray data = readFile(info);
    QByteArray chunk = QByteArray("id3 ") + QByteArray(4, '\0') + mp3Bytes.left(tagSize);
    qToLittleEndian<quint32>(quint32(tagSize), chunk.data() + 4);
    if (tagSize & 1) chunk += '\0';
    data += chunk;
    qToLittleEndian<quint32>(quint32(data.size() - 8), data.data() + 4);
    const QString partial = path + QStringLiteral(".%1").arg(QCoreApplication::applicationPid());
    if (!writeFile(partial, data) || !QFile::rename(partial, path)) QFile::remove(partial);
    return path;
}

QString flac() {
    return ffmpegFixture(QStringLiteral("tagged.flac"),
                         kTone + QStringList{QStringLiteral("-i"), coverPng()} +
                             words("-map 0 -map 1 -c:v copy -disposition:v attached_pic -metadata "
                                   "title=FlacT -metadata TRACKNUMBER=5 -metadata YEAR=2018"));
}

QString aiff() {
    return ffmpegFixture(
        QStringLiteral("tagged.aiff"),
        kTone + words("-write_id3v2 1 -id3v2_version 3 -metadata title=AifT") +
            QStringList{QStringLiteral("-metadata"), QStringLiteral("TRDA=2019 05 03 10 20 30")});
}

QString m4a() {
    return ffmpegFixture(
        QStringLiteral("tagged.m4a"),
        kTone + words("-c:a aac -metadata title=M4aT -metadata track=3/9 -metadata date=2017"));
}

QString au() {
    const QString path = fixtureDir() + QStringLiteral("/tone.au");
    if (QFileInfo(path).size() > 0) return path;
    const QString partial = path + QStringLiteral(".%1.au").arg(QCoreApplication::applicationPid());
    if (!runTool(QStringLiteral("sox"),
                 words("-n -r 8000") + QStringList{partial} + words("synth 0.2 sine 440")) ||
        !QFile::rename(partial, path)) {
        QFile::remove(partial);
        return {};
    }
    return path;
}

}  // namespace audiofix
