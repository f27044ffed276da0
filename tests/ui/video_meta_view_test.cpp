// SPDX-License-Identifier: GPL-3.0-or-later
// The video panel on its own: what it shows for a record, what it answers,
// and how it clears.
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

#include "core/import/media_import.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"
#include "ui/controls/map_view.h"
#include "ui/library/media_table_model.h"
#include "ui/video/video_meta_view.h"

class VideoMetaViewTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        VideoMetaView::setPlayerEnabled(false);
    }

    void showsRecordAndAnswersWhatIsTyped() {
        auto item = std::make_shared<IKImageItem>();
        item->filePath = "/nowhere/clip.mov";
        item->fileTitle = "A title";
        item->fileDirector = "A director";
        item->filePublisher = "A publisher";
        item->shootDateStr = "2020:01:02 03:04:05";
        item->filelatitude = 33.8688;
        item->latitudeFormat = "-";
        item->filelongtitude = 151.2093;
        item->longtitudeFormat = "+";
        QImage blue(8, 8, QImage::Format_RGB32);
        blue.fill(Qt::blue);
        item->fileImage = blue;

        VideoMetaView view;
        view.ShowVideoViewWithItem(item, videoEditorStateFor(*item));
        QCOMPARE(view.field("mediaTitle")->text(), "A title");
        QCOMPARE(view.field("mediaMake")->text(), "A director");  // director under "make"
        QCOMPARE(view.field("mediaReleaseYear")->text(),
                 "A publisher");                                     // publisher under "year"
        QCOMPARE(view.field("mediaLatitude")->text(), "33.868800");  // the magnitude
        QCOMPARE(view.infoLabel("recordDate")->text(), "Record Date:         2020:01:02 03:04:05");
        QVERIFY(!view.showsPlaceholderArtwork());
        QVERIFY(!view.mapView()->isHidden());
        QCOMPARE(view.mapView()->pinLatitude(), -33.8688);  // the pin is signed
        QCOMPARE(view.mapView()->pinLongitude(), 151.2093);

        QSignalSpy basic(&view, &VideoMetaView::basicFieldEdited);
        QSignalSpy camera(&view, &VideoMetaView::cameraFieldEdited);
        QTest::keyClicks(view.field("mediaTitle"), "!");
        QTest::keyClicks(view.field("mediakeywords"), "k");
        QCOMPARE(basic.count() + 10 * camera.count(), 11);
        const VideoEditorState state = view.editorState();
        QCOMPARE(state.mediaTitle + state.mediakeywords, "A title!k");
        QVERIFY(!state.imageIsPlaceholder);

        // An empty record clears the fields, the labels (their texts:
        // InfoBlock), the picture and the map.
        view.ShowVideoViewWithItem(std::make_shared<IKImageItem>(), VideoEditorState{});
        QCOMPARE(view.field("mediaTitle")->text(), QString());
        QCOMPARE(view.infoLabel("recordDate")->text(), "Record Date:   ");
        QVERIFY(view.showsPlaceholderArtwork());
        QVERIFY(view.mapView()->isHidden());
    }

    // The items no field shows: a phone's location, XMP (kept at the top
    // level of an MP4), a cover picture as a thumbnail.
    void allTagsListsEveryItemOfTheFile() {
        const QString cover =
            ffmpegFixture("ui-cover.jpg", words("-f lavfi -i testsrc=size=96x64 -frames:v 1"));
        const QString clip =
            exiftoolFixture("ui-phone.mp4", clipFixture("ui-plain.mp4", 96, 64),
                            {"-UserData:GPSCoordinates=40.7128, -74.0060, 10",
                             "-XMP-dc:Title=XMP title", "-ItemList:CoverArt<=" + cover});
        if (cover.isEmpty() || clip.isEmpty()) QSKIP("ffmpeg or exiftool failed");
        const IKImageItemPtr item = MediaImporter::importFile(clip, true);
        QVERIFY(item);
        VideoMetaView view;
        view.ShowVideoViewWithItem(item, videoEditorStateFor(*item));
        const QTableWidget* tags = view.allTagsView();
        const auto rowOf = [tags](const QString& space, const QString& key) {
            for (int r = 0; r < tags->rowCount(); ++r)
                if (tags->item(r, 0)->text() == space && tags->item(r, 1)->text() == key) return r;
            return -1;
        };
        const struct {
            const char* space;
            const char* key;
            const char* value;
        } expected[] = {
            {"QuickTime user data", "\u00a9xyz", "+40.7128-074.006+10.000/"},
            {"XMP", "dc:title", "XMP title"},
            {"iTunes", "covr", "JPEG picture, 96 x 64"},
        };
        for (const auto& e : expected) {
            const int row = rowOf(QString::fromUtf8(e.space), QString::fromUtf8(e.key));
            QVERIFY2(row >= 0, e.key);
            QCOMPARE(tags->item(row, 2)->text(), QString::fromUtf8(e.value));
        }
        QVERIFY(!tags->item(rowOf("iTunes", "covr"), 2)->icon().isNull());
        QVERIFY(!tags->item(rowOf("XMP", "dc:title"), 2)->flags().testFlag(Qt::ItemIsEditable));
        // Another record replaces the list; an empty one empties it.
        view.ShowVideoViewWithItem(std::make_shared<IKImageItem>(), VideoEditorState{});
        QCOMPARE(tags->rowCount(), 0);
    }

    // A file that could not be read is listed with a warning mark that says why.
    void unreadableFileCarriesAWarningMark() {
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath("broken.mp4"), QByteArray(4096, '\x5a')));
        const IKImageItemPtr item = MediaImporter::importFile(dir.filePath("broken.mp4"), true);
        QVERIFY(item);
        QVERIFY(item->fileReadProblem.contains("damaged"));
        const IKImageItemPtr good = std::make_shared<IKImageItem>(*item);
        good->fileReadProblem.clear();
        MediaTableModel model;
        model.setContent({item, good});
        QVERIFY(model.data(model.index(0, 0), Qt::ToolTipRole)
                    .toString()
                    .contains(item->fileReadProblem));
        QVERIFY(model.data(model.index(0, 2), Qt::ToolTipRole).toString().contains("damaged"));
        const auto pixels = [&model](int row) {
            return model.data(model.index(row, 0), Qt::DecorationRole)
                .value<QIcon>()
                .pixmap(16, 16)
                .toImage();
        };
        QVERIFY(pixels(0) != pixels(1));
    }
};

QTEST_MAIN(VideoMetaViewTest)
#include "video_meta_view_test.moc"
