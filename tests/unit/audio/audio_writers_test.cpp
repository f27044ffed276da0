// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>

#include <functional>

#include "audio_fixtures.h"
#include "core/audio/audio_writers.h"
#include "core/audio/id3_frames.h"
#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/common/file_dates.h"
#include "exiftool.h"
#include "media_fixtures.h"

namespace {

QByteArray v23Frame(const char* id, const QByteArray& body) {
    QByteArray size(4, '\0');
    qToBigEndian(quint32(body.size()), size.data());
    return id + size + QByteArray(2, '\0') + body;
}

// The fixture MP3 (ID3v2.3 and ID3v1, a PNG cover) with a genre, a
// publisher, a comment, a private frame and a non-Latin band added.
const QByteArray kPrivate("owner.example\0\x01\x02\x00\x03", 18);
const QString kBand = QStringLiteral("Оркестр 日本");

QString richMp3(const QString& folder) {
    const QByteArray source = readFile(audiofix::mp3(3));
    const qint64 size = id3v2TagSize(source.left(10));
    QByteArray band("\x01\xff\xfe", 3);
    for (QChar c : kBand) band.append(char(c.unicode() & 0xff)).append(char(c.unicode() >> 8));
    const QByteArray extra =
        v23Frame("TCON", QByteArray("\0Rock", 5)) + v23Frame("TPUB", QByteArray("\0Pub", 4)) +
        v23Frame("COMM", QByteArray("\0eng\0note", 9)) + v23Frame("PRIV", kPrivate) +
        v23Frame("TPE2", band) + v23Frame("TOPE", QByteArray("\0Orig", 5));
    const qint64 body = size - 10 + extra.size();
    QByteArray header("ID3\x03\x00\x00", 6);
    for (int shift : {21, 14, 7, 0}) header.append(char((body >> shift) & 0x7f));
    const QString path = folder + QStringLiteral("/song.mp3");
    writeFile(path, header + extra + source.mid(10));
    return path;
}

// The record as the reader fills it for that file.
IKImageItem mp3Item(const QString& path) {
    IKImageItem item;
    item.filePath = path;
    item.fileName = QFileInfo(path).fileName();
    item.fileTitle = QString::fromUtf8(audiofix::kTitle);
    item.fileArist = QStringLiteral("Artist");
    item.fileAlbumArist = QStringLiteral("7");
    item.filePublisher = QStringLiteral("Pub");
    item.fileComments = QStringLiteral("note");
    item.fileBand = kBand;
    item.shootDateStr = QStringLiteral("2019-05-03T10:20:30");
    item.fileImage = QImage(audiofix::coverPng());
    item.fileCreateDateStr = dateText(readFileDates(path).creation);
    return item;
}

// Frame id → text (or the raw body for binary frames), all frames in order.
QList<std::pair<QByteArray, QString>> framesOf(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QList<std::pair<QByteArray, QString>> out;
    for (const Id3Tag& tag : readLeadingId3v2Tags(file)) {
        for (const Id3Frame& f : tag.frames) {
            Id3CommentFrame c;
            QString value = f.isText() ? id3TextValues(f.body).join(QLatin1Char('/'))
                            : f.id == "COMM" && id3Comment(f.body, &c)
                                ? c.text
                                : QString::fromLatin1(f.body.toHex());
            out.append({f.id, value});
        }
    }
    return out;
}

QString frameText(const QString& path, const char* id) {
    for (const auto& [fid, value] : framesOf(path))
        if (fid == id) return value;
    return QStringLiteral("(none)");
}

// The MPEG audio frames: the bytes between the ID3v2 tag and the trailing tags.
QByteArray audioBytes(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    const FileTagRanges r = findTagRanges(file);
    file.seek(r.audioBegin);
    return file.read(r.audioEnd - r.audioBegin);
}

class AudioWriters : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(audiofix::mp3(3).isEmpty()) << lastToolOutput().toStdString();
        storage.storagelocation = out.path();
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    }
    QString src(const QString& name) const { return in.path() + QLatin1Char('/') + name; }
    QTemporaryDir in, out;
    StorageContext storage;
    OutputBatch batch;
};

TEST_F(AudioWriters, Mp3SaveWritesOnlyTheChangedFieldsOfTheEditedGroups) {
    using Edit = std::function<void(AudioEditorState&)>;
    const QString title = QString::fromUtf8(audiofix::kTitle);
    const struct {
        const char* name;
        Edit edit;
        QList<std::pair<const char*, QString>> expected;
    } cases[] = {
        {"title edited",
         [](AudioEditorState& e) {
             e.titlelab = "Neu";
             e.basicInfoChange = true;
         },
         {{"TIT2", "Neu"}, {"TPE1", "Artist"}, {"TPUB", "Pub"}}},
        {"no group flag: not written",
         [](AudioEditorState& e) { e.titlelab = "Neu"; },
         {{"TIT2", title}}},
        {"the other group's flag: not written",
         [](AudioEditorState& e) {
             e.publishlab = "X";
             e.basicInfoChange = true;
         },
         {{"TPUB", "Pub"}}},
        {"a cleared box removes its frame",
         [](AudioEditorState& e) {
             e.commentslab.clear();
             e.cameraInfoChange = true;
         },
         {{"COMM", "(none)"}, {"TPUB", "Pub"}}},
        {"another file's boxes: only the edited field",
         [](AudioEditorState& e) {
             e.titlelab = e.oldTitleStr = "Other";
             e.ablumAristlab = e.oldAlbumArtistStr = "1";
             e.artistlab = "Y";
             e.basicInfoChange = true;
         },
         {{"TIT2", title}, {"TRCK", "7"}, {"TPE1", "Y"}}},
    };
    const QString source = richMp3(in.path());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AudioEditorState e = audioEditorStateFor(mp3Item(source));
        c.edit(e);
        OutputBatch batch;
        const AudioWriteResult r = SaveChangedMp3MetadateItem(mp3Item(source), e, storage, batch);
        ASSERT_TRUE(r.ok()) << r.reason.toStdString();
        for (const auto& [id, value] : c.expected)
            EXPECT_EQ(frameText(r.outputPath, id), value) << id;
        // Untouched frames stay whatever the edit.
        EXPECT_EQ(frameText(r.outputPath, "TCON"), "Rock");
        EXPECT_EQ(frameText(r.outputPath, "TPE2"), kBand);
        EXPECT_EQ(frameText(r.outputPath, "PRIV"), QString::fromLatin1(kPrivate.toHex()));
        // The reader shows the last artist frame: the edit, or the source's choice.
        QString shownArtist;
        for (const auto& [id, value] : framesOf(r.outputPath))
            if (id == "TPE1" || id == "TOPE") shownArtist = value;
        EXPECT_EQ(shownArtist, frameText(r.outputPath, "TPE1"));
    }
}

TEST_F(AudioWriters, Mp3CopyHasNoId3v1KeepsAudioAndPictureAndReadsBackElsewhere) {
    const QString source = richMp3(in.path());
    const QByteArray before = readFile(source);
    AudioEditorState e = audioEditorStateFor(mp3Item(source));
    e.titlelab = QStringLiteral("Ёлка ✓");
    e.basicInfoChange = true;
    const AudioWriteResult r = SaveChangedMp3MetadateItem(mp3Item(source), e, storage, batch);
    ASSERT_TRUE(r.ok()) << r.reason.toStdString();
    EXPECT_EQ(readFile(source), before);
    EXPECT_EQ(audioBytes(r.outputPath), audioBytes(source));
    EXPECT_TRUE(isOutputOfOurs(r.outputPath));
    QFile plain(out.path() + QStringLiteral("/plain"));  // made as any new file is
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    EXPECT_EQ(QFile::permissions(r.outputPath), plain.permissions());

    const QJsonObject tags = exiftoolTags(r.outputPath);
    for (const QString& key : tags.keys())
        EXPECT_FALSE(key.startsWith("ID3v1:")) << key.toStdString();
    EXPECT_EQ(tags.value("ID3v2_3:Title").toString(), e.titlelab);
    EXPECT_EQ(tags.value("ID3v2_3:Band").toString(), kBand);
    EXPECT_EQ(tags.value("ID3v2_3:Comment").toString(), "note");
    EXPECT_EQ(exiftoolBinary(r.outputPath, "ID3v2_3:Picture"), readFile(audiofix::coverPng()));
}

TEST_F(AudioWriters, Mp3FlavoursStampReloadRemoveAndNewCover) {
    const QString source = richMp3(in.path());
    const IKImageItem item = mp3Item(source);
    const AudioEditorState shown = audioEditorStateFor(item);

    // The date stamp changes the recording date and the file dates only.
    AudioWriteResult r = SetMp3MetadateItem(item, "2021:02:03 04:05:06", storage, batch);
    ASSERT_TRUE(r.ok()) << r.reason.toStdString();
    EXPECT_EQ(frameText(r.outputPath, "TRDA"), "2021:02:03 04:05:06");
    EXPECT_EQ(frameText(r.outputPath, "TPUB"), "Pub");
    EXPECT_EQ(readFileDates(r.outputPath).modification, dateFromText("2021:02:03 04:05:06"));

    // A reload writes the dictionary's changed values and keeps track and picture.
    r = ReloadMp3MetadateItem(item, {{"Title", "Dict"}, {"Artist", "Artist"}}, shown, storage,
                              batch);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(frameText(r.outputPath, "TIT2"), "Dict");
    EXPECT_EQ(frameText(r.outputPath, "TRCK"), "7");
    EXPECT_NE(frameText(r.outputPath, "APIC"), "(none)");

    // The removal keeps only empty frames of the shown boxes and the picture.
    r = RemoveMp3metadataItem(item, shown, storage, batch);
    ASSERT_TRUE(r.ok());
    QList<QByteArray> ids;
    for (const auto& [id, value] : framesOf(r.outputPath)) {
        ids << id;
        if (id != "APIC") {
            EXPECT_TRUE(value.isEmpty()) << id.constData();
        }
    }
    EXPECT_EQ(ids,
              (QList<QByteArray>{"TIT2", "TPE1", "TRCK", "TRDA", "TPUB", "TPE2", "COMM", "APIC"}));

    // A new cover is stored with its true type.
    AudioEditorState e = shown;
    QImage clear(4, 4, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    e.audioArtImage = clear;
    e.imageChanged = true;
    r = SaveChangedMp3MetadateItem(item, e, storage, batch);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(exiftoolTags(r.outputPath).value("ID3v2_3:PictureMIMEType").toString(), "image/png");
    EXPECT_TRUE(exiftoolBinary(r.outputPath, "ID3v2_3:Picture").startsWith("\x89PNG"));
}

TEST_F(AudioWriters, FlacAndWavWriteTheirKeysIntoAnIntactCopy) {
    const QString flac = src("a.flac"), wav = src("a.wav"), tagged = src("b.flac");
    for (const QString& path : {flac, wav})
        ASSERT_TRUE(runTool("ffmpeg", words("-v error -f lavfi -i sine=duration=0.3 "
                                            "-metadata title=Alt -metadata artist=Art") +
                                          QStringList{path}))
            << lastToolOutput().toStdString();
    const auto md5 = [](const QString& path) {
        runTool("ffmpeg", QStringList{"-v", "error", "-i", path} + words("-map 0:a -f md5 -"));
        return lastToolOutput();
    };
    // An ID3v2 tag in front of a FLAC stream is not TagLib's to rewrite.
    const QByteArray id3 = readFile(audiofix::mp3(4)).left(4096);
    writeFile(tagged, id3.left(id3v2TagSize(id3)) + readFile(flac));
    QByteArray flacOutput;
    for (const QString& path : {flac, wav, tagged}) {
        SCOPED_TRACE(path.toStdString());
        IKImageItem item;
        item.filePath = path;
        item.fileName = QFileInfo(path).fileName();
        item.fileTitle = "Alt";
        item.fileArist = "Art";
        AudioEditorState e = audioEditorStateFor(item);
        e.titlelab = QStringLiteral("Título");
        e.ablumAristlab = "5";
        e.publishlab = e.bandlab = "never written";
        e.createdDatelab = "2020:01:02 03:04:05";
        e.basicInfoChange = e.cameraInfoChange = true;
        const bool isFlac = path != wav;
        const AudioWriteResult r = isFlac
                                       ? SaveChangedFlaCAuidoExifItem(item, e, storage, batch)
                                       : writeWAVAuidoMetadatawithFileItem(item, e, storage, batch);
        ASSERT_TRUE(r.ok()) << r.reason.toStdString();
        if (path == tagged) {
            EXPECT_EQ(readFile(r.outputPath), id3.left(id3v2TagSize(id3)) + flacOutput);
            continue;
        }
        if (path == flac) flacOutput = readFile(r.outputPath);
        EXPECT_EQ(md5(r.outputPath), md5(path));
        const QJsonObject tags =
            exiftoolTags(r.outputPath, isFlac ? QStringList{} : words("-charset riff=utf8"));
        EXPECT_EQ(tags.value(isFlac ? "Vorbis:Title" : "RIFF:Title").toString(), e.titlelab);
        EXPECT_EQ(tags.value(isFlac ? "Vorbis:Artist" : "RIFF:Artist").toString(), "Art");
        for (const QString& key : tags.keys()) {
            const QString value = tags.value(key).toVariant().toString();
            EXPECT_NE(value, "never written") << key.toStdString();
            // The album-artist box is the track number, which the FLAC writer leaves.
            if (isFlac) {
                EXPECT_NE(value, "5") << key.toStdString();
            }
        }
        // FLAC copies keep the source's dates; WAV takes the changed created date.
        EXPECT_EQ(readFileDates(r.outputPath).modification.toSecsSinceEpoch(),
                  isFlac ? readFileDates(path).modification.toSecsSinceEpoch()
                         : dateFromText(e.createdDatelab).toSecsSinceEpoch());
    }
}

}  // namespace
