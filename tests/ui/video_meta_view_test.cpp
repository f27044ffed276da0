// The video panel on its own: what it shows for a record, what it answers,
// and how it clears.
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

#include "core/common/dates.h"
#include "ui/controls/map_view.h"
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
        item->fileCreateDate = dateFromText("2021:01:01 00:00:00");
        item->fileCreateDateStr = "2021:01:01 00:00:00";
        item->videoResolutionStr = "320 X 240";
        item->filelatitude = 33.8688;
        item->latitudeFormat = "-";
        item->filelongtitude = 151.2093;
        item->longtitudeFormat = "+";
        item->fileImage = QImage(8, 8, QImage::Format_RGB32);
        item->fileImage.fill(Qt::blue);

        VideoMetaView view;
        view.ShowVideoViewWithItem(item, videoEditorStateFor(*item));
        QCOMPARE(view.field("mediaTitle")->text(), "A title");
        QCOMPARE(view.field("mediaMake")->text(), "A director");  // director under "make"
        QCOMPARE(view.field("mediaReleaseYear")->text(),
                 "A publisher");                                     // publisher under "year"
        QCOMPARE(view.field("mediaLatitude")->text(), "33.868800");  // the magnitude
        QCOMPARE(view.infoLabel("recordDate")->text(), "Record Date:         2020:01:02 03:04:05");
        QCOMPARE(view.infoLabel("resolution")->text(), "Resolution:           320 X 240");
        QCOMPARE(view.infoLabel("createdDate")->text(), "Created Date:        2021:01:01 00:00:00");
        QVERIFY(!view.showsPlaceholderArtwork());
        QVERIFY(!view.mapView()->isHidden());
        QCOMPARE(view.mapView()->pinLatitude(), -33.8688);  // the pin is signed
        QCOMPARE(view.mapView()->pinLongitude(), 151.2093);

        QSignalSpy basic(&view, &VideoMetaView::basicFieldEdited);
        QSignalSpy camera(&view, &VideoMetaView::cameraFieldEdited);
        QTest::keyClicks(view.field("mediaTitle"), "!");
        QTest::keyClicks(view.field("mediakeywords"), "k");
        QCOMPARE(basic.count(), 1);
        QCOMPARE(camera.count(), 1);
        const VideoEditorState state = view.editorState();
        QCOMPARE(state.mediaTitle, "A title!");
        QCOMPARE(state.mediakeywords, "k");
        QVERIFY(!state.imageIsPlaceholder);
    }

    void emptyRecordClearsToBareLabels() {
        auto item = std::make_shared<IKImageItem>();
        item->fileTitle = "x";
        item->filelatitude = 1;
        VideoMetaView view;
        view.ShowVideoViewWithItem(item, videoEditorStateFor(*item));
        view.ShowVideoViewWithItem(std::make_shared<IKImageItem>(), VideoEditorState{});
        QCOMPARE(view.field("mediaTitle")->text(), QString());
        QCOMPARE(view.infoLabel("recordDate")->text(), "Record Date:   ");
        QCOMPARE(view.infoLabel("videoFormat")->text(), "Video Format:");
        QCOMPARE(view.infoLabel("duration")->text(), QString());
        QVERIFY(view.showsPlaceholderArtwork());
        QVERIFY(view.mapView()->isHidden());  // no latitude, no map
    }
};

QTEST_MAIN(VideoMetaViewTest)
#include "video_meta_view_test.moc"
