// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras through libgphoto2's directory driver over a generated folder: the
// real session, listing, download and delete code paths without hardware.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include "core/camera/camera_import.h"
#include "core/camera/camera_worker.h"
#include "core/common/desktop_integration.h"
#include "media_fixtures.h"

namespace {

// A card: a photo at the top and in DCIM/100TEST (same name), a movie, a
// sound recording and a text file.
class CameraCard : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(card.isValid() && storage.isValid());
        QDir(card.path()).mkpath("DCIM/100TEST");
        QImage photo(96, 64, QImage::Format_RGB888);
        photo.fill(Qt::darkGreen);
        ASSERT_TRUE(photo.save(file("IMG_0001.JPG"), "JPEG"));
        ASSERT_TRUE(photo.save(file("DCIM/100TEST/IMG_0001.JPG"), "JPEG"));
        ASSERT_TRUE(QFile::copy(clipFixture("camera-clip.mp4"), file("DCIM/100TEST/MVI_0002.MP4")));
        ASSERT_TRUE(runTool(
            "sox", {"-n", "-r", "8000", file("DCIM/100TEST/REC_0003.WAV"), "trim", "0", "0.1"}));
        ASSERT_TRUE(writeFile(file("DCIM/NOTES.TXT"), "notes"));
        session = CameraSession::open(cameraAtPort("disk:" + card.path()), &error);
        ASSERT_TRUE(session) << error.toStdString();
    }
    QString file(const QString& name) const { return card.filePath(name); }
    QStringList listed() {
        QStringList paths;
        for (const CameraFileEntry& e : cameraMediaFiles(session->listFiles()))
            paths << e.itemPath();
        paths.sort();
        return paths;
    }
    CameraFileEntry entry(const QString& itemPath) {
        CameraFileEntry e;
        EXPECT_TRUE(session->findFile(itemPath, &e)) << itemPath.toStdString();
        return e;
    }

    QTemporaryDir card, storage;
    QString error;
    std::unique_ptr<CameraSession> session;
};

const QStringList kMedia = {"/DCIM/100TEST/IMG_0001.JPG", "/DCIM/100TEST/MVI_0002.MP4",
                            "/IMG_0001.JPG"};

}  // namespace

TEST(CameraKinds, PhotosAndMoviesByExtensionThenDriverType) {
    const struct {
        const char *name, *mime, *kind;
    } cases[] = {{"a.JPG", "", "Image"},           {"b.heic", "", "Image"},
                 {"c.MOV", "video/mpeg", "Movie"}, {"d.wav", "audio/wav", ""},
                 {"e.mp3", "image/jpeg", ""},      {"f", "image/jpeg", "Image"},
                 {"g", "video/mp4", "Movie"},      {"h.txt", "text/plain", ""}};
    for (const auto& c : cases)
        EXPECT_EQ(cameraItemKind({"/", c.name, c.mime, 1, {}}), c.kind) << c.name;
}

TEST_F(CameraCard, ListsPhotosAndMoviesOfEveryFolderByTheirPaths) {
    EXPECT_EQ(listed(), kMedia);
    CameraFileEntry e;
    for (const char* bad : {"", "IMG_0001.JPG", "/DCIM/100TEST/", "/DCIM/none.JPG", "/../x.JPG"})
        EXPECT_FALSE(session->findFile(bad, &e)) << bad;
    const CameraFileEntry movie = entry("/DCIM/100TEST/MVI_0002.MP4");
    const IKImageItemPtr record = makeCameraRecord(movie, {});
    EXPECT_EQ(record->fileType, "Movie");
    // The driver has no previews: a photo is decoded small, a movie has none.
    EXPECT_EQ(cameraThumbnail(*session, entry("/IMG_0001.JPG")).size(), QSize(96, 64));
    EXPECT_TRUE(cameraThumbnail(*session, movie).isNull());
    EXPECT_EQ(record->fileSizeBytes, QFileInfo(file("DCIM/100TEST/MVI_0002.MP4")).size());
    EXPECT_FALSE(QFileInfo::exists(record->filePath));
}

// Two files of one name and a file of the user's under that name: every
// download is byte-identical, carries the camera's date, is ours and takes a
// free name; the user's file is untouched and no temporary file is left.
TEST_F(CameraCard, DownloadsArePublishedOutputsUnderFreeNames) {
    DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    ASSERT_TRUE(writeFile(storage.filePath("IMG_0001.JPG"), "the user's"));
    OutputBatch batch;
    QStringList names;
    for (const QString path : {"/IMG_0001.JPG", "/DCIM/100TEST/IMG_0001.JPG"}) {
        const PublishedCopy copy =
            downloadCameraFile(*session, entry(path), storage.path(), batch, false);
        ASSERT_TRUE(copy.ok()) << copy.reason.toStdString();
        EXPECT_EQ(readFile(copy.outputPath), readFile(file(path.mid(1))));
        EXPECT_EQ(QFileInfo(copy.outputPath).lastModified().toSecsSinceEpoch(),
                  QFileInfo(file(path.mid(1))).lastModified().toSecsSinceEpoch());
        EXPECT_TRUE(isOutputOfOurs(copy.outputPath));
        names << QFileInfo(copy.outputPath).fileName();
    }
    EXPECT_EQ(names, QStringList({"IMG_0001 (2).JPG", "IMG_0001 (3).JPG"}));
    EXPECT_EQ(readFile(storage.filePath("IMG_0001.JPG")), "the user's");
    EXPECT_EQ(QDir(storage.path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
    EXPECT_EQ(downloadedRecord(storage.filePath("IMG_0001 (2).JPG"))->filePixWidth, 96);
}

TEST_F(CameraCard, DeleteRemovesTheFileOnTheCameraOnly) {
    const CameraFileEntry photo = entry("/IMG_0001.JPG");
    EXPECT_EQ(session->remove(photo), "");
    EXPECT_FALSE(QFileInfo::exists(file("IMG_0001.JPG")));
    EXPECT_NE(session->remove(photo), "");
    EXPECT_EQ(listed(), kMedia.mid(0, 2));
}

// The worker without its thread: hot-plug of the folder the environment
// names, and the listing of its photos and movies.
TEST_F(CameraCard, WorkerSeesTheFolderComeAndGoAndListsIt) {
    qputenv(kCameraPortVariable, "disk:" + file("DCIM").toUtf8());
    CameraWorker worker;
    QList<QList<CameraPort>> told;
    QStringList files;
    QObject::connect(&worker, &CameraWorker::camerasChanged,
                     [&](const QList<CameraPort>& c) { told << c; });
    QObject::connect(&worker, &CameraWorker::fileListed,
                     [&](const CameraFileEntry& e) { files << e.itemPath(); });
    worker.poll();
    ASSERT_EQ(told.size(), 1);
    ASSERT_FALSE(told.at(0).isEmpty());
    const CameraPort folder = told.at(0).last();
    EXPECT_EQ(folder.port, "disk:" + file("DCIM"));
    worker.openCamera(folder);
    files.sort();
    EXPECT_EQ(files, QStringList({"/100TEST/IMG_0001.JPG", "/100TEST/MVI_0002.MP4"}));
    worker.poll();
    EXPECT_EQ(told.size(), 1);  // nothing changed, nothing told
    ASSERT_TRUE(QDir(file("DCIM")).removeRecursively());
    worker.poll();
    ASSERT_EQ(told.size(), 2);
    EXPECT_FALSE(told.at(1).contains(folder));
    qunsetenv(kCameraPortVariable);
}
