// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QSet>
#include <QtEndian>

#include "audio_fixtures.h"
#include "core/audio/audio_info_keys.h"
#include "core/audio/caf_file.h"
#include "media_fixtures.h"

namespace {

QByteArray chunkBytes(QIODevice& file, const CafChunk& chunk) {
    file.seek(chunk.offset);
    return file.read(12 + chunk.size);
}

TEST(CafFile, ReplacesTheInfoChunkAndCopiesEveryOtherByte) {
    QFile source(audiofix::caf());
    ASSERT_TRUE(source.open(QIODevice::ReadOnly)) << lastToolOutput().toStdString();
    EXPECT_EQ(readCafInfo(source).mid(0, 2),
              (CafInfo{{"artist", "Artist"}, {"title", QString::fromUtf8(audiofix::kTitle)}}));

    const CafInfo edited = {{"title", QString::fromUtf8("\xd0\x9d\xd0\xbe\xd0\xb2")},
                            {"track number", "5"}};
    const QString copyPath = fixtureDir() + QStringLiteral("/caf-copy.caf");
    QFile copy(copyPath);
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QString error;
    ASSERT_TRUE(writeCafCopyWithInfo(source, copy, edited, &error)) << error.toStdString();
    copy.close();
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(readCafInfo(copy), edited);
    const CafLayout before = readCafLayout(source), after = readCafLayout(copy);
    ASSERT_EQ(before.chunks.size(), after.chunks.size());
    for (int i = 0; i < before.chunks.size(); ++i) {
        if (before.chunks[i].type == "info") continue;
        EXPECT_EQ(chunkBytes(source, before.chunks[i]), chunkBytes(copy, after.chunks[i]));
    }
    ASSERT_TRUE(runTool("ffprobe", words("-v error -show_entries format_tags=title -of csv=p=0") +
                                       QStringList{copyPath}));
    EXPECT_EQ(lastToolOutput().trimmed(), edited[0].second);
}

TEST(CafFile, DamageIsReportedAndNeverCopied) {
    const QByteArray caf = readFile(audiofix::caf());
    QByteArray pastEnd = caf, fewerEntries = caf;
    qToBigEndian<qint64>(qint64(1) << 40, pastEnd.data() + 12);  // the desc chunk's size
    qToBigEndian<quint32>(99, fewerEntries.data() + caf.indexOf("info") + 12);
    for (QByteArray data : {pastEnd, caf.left(caf.size() - 1), fewerEntries, caf.left(4)}) {
        QBuffer in(&data), out;
        in.open(QIODevice::ReadOnly);
        out.open(QIODevice::WriteOnly);
        QString problem, error;
        readCafInfo(in, &problem);
        EXPECT_FALSE(problem.isEmpty());
        EXPECT_EQ(writeCafCopyWithInfo(in, out, {}, &error), data == fewerEntries);
        EXPECT_EQ(error.isEmpty(), data == fewerEntries);
    }
}

// Every key is stored under its own RIFF id and Vorbis name, and each of
// those reads back as that key: what a writer stores, a reader finds.
TEST(AudioInfoKeys, RoundTripThroughRiffAndVorbis) {
    QSet<QByteArray> riff;
    QSet<QString> vorbis;
    for (const AudioInfoKey& key : audioInfoKeys()) {
        SCOPED_TRACE(key.infoKey);
        EXPECT_EQ(audioInfoKeyFor(QString::fromLatin1(key.infoKey)), &key);
        EXPECT_EQ(audioInfoKeyForRiff(key.riffId), &key);
        EXPECT_EQ(audioInfoKeyForVorbis(QString::fromLatin1(key.vorbisName).toLower()), &key);
        EXPECT_FALSE(riff.contains(key.riffId) || vorbis.contains(key.vorbisName));
        riff.insert(key.riffId);
        vorbis.insert(key.vorbisName);
    }
}

}  // namespace
