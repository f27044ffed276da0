// The video panel inside the real window: what selecting a video shows and
// remembers, and the save, removal and tool commands writing into the
// storage folder.
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "app/app_delegate.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "core/library/media_import.h"
#include "core/video/video_file_ops.h"
#include "support/media_fixtures.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

class VideoSaveTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        if (!haveTool("ffmpeg")) QSKIP("ffmpeg is not installed");
        m_clip = m_dir.filePath("clip.mp4");
        const QString made = ffmpegFixture(
            "ui-titled.mp4",
            words("-f lavfi -i testsrc=duration=1:size=160x120:rate=10 -c:v libx264 "
                  "-pix_fmt yuv420p -metadata title=Before -metadata artist=Someone"));
        QVERIFY2(!made.isEmpty(), qPrintable(lastToolOutput()));
        QVERIFY(QFile::copy(made, m_clip));
        m_clipBytes = readFile(m_clip);

        ActivityLog::install();
        installMovieExporter();
        auto desktop = std::make_unique<RecordingDesktopIntegration>();
        m_desktop = desktop.get();
        DesktopIntegration::setInstance(std::move(desktop));
        m_settings =
            std::make_unique<QSettings>(m_dir.filePath("tagsmith.ini"), QSettings::IniFormat);
        m_settings->setValue("storagePath", m_dir.filePath("out"));
        m_app = std::make_unique<AppDelegate>(*m_settings);
        m_app->setQuietAlerts(true);
        m_app->awakeFromNib();
        m_app->applicationDidFinishLaunching();
        m_app->mainWindow()->show();
        QVERIFY(m_app->tableViewAcceptDrop({m_clip}));
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->importRunning(), 60000);
        QCOMPARE(m_app->localPhotoItemArray.size(), 1);
        // The Name cell's picture becomes a frame of the video once it is decoded.
        const IKImageItemPtr item = m_app->localPhotoItemArray.first();
        m_app->mediaController->iconFor(*item);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_app->mediaController->iconFor(*item).availableSizes().contains(QSize(32, 24)), 10000);
    }

    void cleanupTestCase() { m_app.reset(); }
    void selectingAVideoFillsThePanelAndRemembersIt() {
        selectRow(0);
        QVERIFY(m_app->videoMetaView->isVisible());
        QCOMPARE(m_app->videoMetaView->field("mediaTitle")->text(), "Before");
        QCOMPARE(m_app->videoMetaView->field("mediaArtist")->text(), "Someone");
        QCOMPARE(m_app->oldMovieTitle, "Before");
        QCOMPARE(m_app->oldMovieArtist, "Someone");
        QCOMPARE(m_app->oldMovieCreatedDate, m_app->localPhotoItemArray.first()->fileCreateDateStr);
        QVERIFY(!m_app->basicInfoChange && !m_app->cameraInfoChange);
    }

    void saveWritesTheEditedFieldsIntoTheStorageFolder() {
        selectRow(0);
        QLineEdit* title = m_app->videoMetaView->field("mediaTitle");
        title->selectAll();
        QTest::keyClicks(title, "After");
        QVERIFY(m_app->basicInfoChange);
        m_app->MybuttonMouseDownHandle(m_app->SaveMediaChangesBtn);
        m_app->waitForVideoJobs();
        QVERIFY(QFile::exists(output()));
        const IKImageItemPtr written = MediaImporter::importFile(output(), true);
        QCOMPARE(written->fileTitle, "After");
        QCOMPARE(written->fileArist, "Someone");  // not edited, kept
        QCOMPARE(readFile(m_clip), m_clipBytes);  // the source is only read
        QVERIFY(m_desktop->revealed().contains(output()));
    }

    void removalAndToolsWriteCopies() {
        // Nothing selected: the tools answer with the alert and write nothing.
        m_app->dragtableView->clearSelection();
        QFile::remove(output());
        m_app->CopyvideofilenametoTitleAction(nullptr);
        m_app->waitForVideoJobs();
        QVERIFY(!QFile::exists(output()));

        selectRow(0);
        m_app->CopyvideofilenametoTitleAction(nullptr);
        m_app->waitForVideoJobs();
        QCOMPARE(MediaImporter::importFile(output(), true)->fileTitle, "clip");

        m_app->RemoveSelectedMediaFileAction(nullptr);
        m_app->waitForVideoJobs();
        const IKImageItemPtr stripped = MediaImporter::importFile(output(), true);
        QVERIFY(stripped->fileTitle.isEmpty());
        QVERIFY(stripped->fileArist.isEmpty());
        QCOMPARE(readFile(m_clip), m_clipBytes);
    }

    void emptyRecordClearsThePanel() {
        m_app->ShowVideoViewWithItem(std::make_shared<IKImageItem>());
        QCOMPARE(m_app->videoMetaView->field("mediaTitle")->text(), QString());
        QCOMPARE(m_app->oldMovieTitle, "");  // labels: VideoMetaViewTest
    }

private:
    void selectRow(int row) {
        m_app->dragtableView->clearSelection();
        m_app->dragtableView->selectionModel()->select(
            m_app->mediaController->index(row, 0),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    QString output() const { return m_dir.filePath("out/clip.mp4"); }

    QTemporaryDir m_dir;
    QString m_clip;
    QByteArray m_clipBytes;
    RecordingDesktopIntegration* m_desktop = nullptr;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<AppDelegate> m_app;
};

QTEST_MAIN(VideoSaveTest)
#include "video_save_test.moc"
