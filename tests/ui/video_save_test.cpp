// The video panel inside the real window: what selecting a video shows and
// remembers, the save, removal and tool commands writing into the storage
// folder, the files they act on after a sort, and the questions asked before
// unsaved edits or running work would be lost.
#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "app/app_delegate.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "core/import/media_import.h"
#include "core/video/movie_metadata_reader.h"
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
        // A second video whose name sorts after the first.
        const QString waves = m_dir.filePath("waves.mp4");
        QVERIFY2(runTool("ffmpeg", words("-v error -y -i " + m_clip +
                                         " -c copy -metadata title=Waves " + waves)),
                 qPrintable(lastToolOutput()));

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
        QVERIFY(m_app->tableViewAcceptDrop({m_clip, waves}));
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->importRunning(), 60000);
        QCOMPARE(m_app->localPhotoItemArray.size(), 2);
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
        // The status bar tells where the file went and shows it on request.
        auto* told = m_app->mainWindow()->findChild<QLabel*>("writeResult");
        QTRY_VERIFY(told->text().contains(output()));
        auto* show = m_app->mainWindow()->findChild<QAbstractButton*>("showWrittenFile");
        QVERIFY(show && show->isVisible());
        const qsizetype revealed = m_desktop->revealed().count(output());
        show->click();
        QCOMPARE(m_desktop->revealed().count(output()), revealed + 1);
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
        QVERIFY(!readMovieMetadata(output()).isEmpty());  // the encoder's name stays

        const auto menuAction = [this](const QString& text) -> QAction* {
            for (QAction* a : m_app->removeExifMenu->actions())
                if (a->text() == text && a->isEnabled()) return a;
            return nullptr;
        };
        // "Remove Location" keeps every other item of the source.
        QAction* location = menuAction("Remove Location");
        QVERIFY(location);
        location->trigger();
        m_app->waitForVideoJobs();
        QCOMPARE(MediaImporter::importFile(output(), true)->fileTitle, "Before");

        // "Remove All Metadata" leaves no item at all.
        QAction* all = menuAction("Remove All Metadata");
        QVERIFY(all);
        all->trigger();
        m_app->waitForVideoJobs();
        QCOMPARE(readMovieMetadata(output()).size(), 0);
        QCOMPARE(readFile(m_clip), m_clipBytes);
    }

    void saveWritesTheHighlightedFile_data() {
        QTest::addColumn<bool>("classic");
        QTest::addColumn<QString>("written");
        QTest::newRow("highlighted row") << false << "waves.mp4";
        QTest::newRow("classic: row number in import order") << true << "clip.mp4";
    }
    void saveWritesTheHighlightedFile() {
        QFETCH(bool, classic);
        QFETCH(QString, written);
        startClean();
        m_app->classicBehaviour = classic;
        // Sorted by Name (Z to A): the first row is the second file imported.
        m_app->columnSortFlags[size_t(MediaColumn::Name)] = false;
        m_app->tableViewDidClickTableColumn(MediaColumn::Name);
        selectRow(0);
        QCOMPARE(m_app->videoMetaView->fileNameText(), "waves.mp4");
        m_app->videoMetaView->field("mediaTitle")->setText("Sorted");
        m_app->basicInfoChange = true;
        m_app->SaveMeidaFileChangesAction(nullptr);
        m_app->waitForVideoJobs();
        QCOMPARE(titleOf(written), "Sorted");
        QVERIFY(!QFile::exists(output(written == "clip.mp4" ? "waves.mp4" : "clip.mp4")));
        // Saved edits are no longer unsaved; the classic save wrote another file.
        QCOMPARE(m_app->hasUnsavedEdits(), classic);
    }

    // The panel's picture is the artwork of the record it shows only.
    void saveOfSeveralRowsKeepsEachOnesArtworkAndLocation() {
        startClean();
        const IKImageItemPtr clip = m_app->localPhotoItemArray.at(0);
        QImage red(8, 8, QImage::Format_RGB32);
        red.fill(Qt::red);
        clip->fileImage = red;
        clip->filelatitude = 12.5;  // shown in the panel, not edited
        clip->filelongtitude = 3.25;
        m_app->ShowVideoViewWithItem(clip);
        clip->fileImage = QImage();  // as if the user had chosen the picture
        m_app->dragtableView->selectionModel()->select(
            m_app->mediaController->index(1, 0),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(m_app->selectedItems().size(), 2);
        QVERIFY(!m_app->videoMetaView->showsPlaceholderArtwork());
        m_app->SaveMeidaFileChangesAction(nullptr);
        m_app->waitForVideoJobs();
        QVERIFY(!MediaImporter::importFile(output("clip.mp4"), true)->fileImage.isNull());
        const IKImageItemPtr waves = MediaImporter::importFile(output("waves.mp4"), true);
        QVERIFY(waves->fileImage.isNull());
        QCOMPARE(waves->filelatitude, 0.0);
    }

    void leavingAnEditedRowAsks_data() {
        QTest::addColumn<QString>("press");
        QTest::newRow("cancel") << "Cancel";
        QTest::newRow("discard") << " Discard ";
        QTest::newRow("save") << " Save ";
    }
    void leavingAnEditedRowAsks() {
        QFETCH(QString, press);
        startClean();
        const IKImageItemPtr clip = m_app->localPhotoItemArray.at(0);
        const IKImageItemPtr waves = m_app->localPhotoItemArray.at(1);
        QLineEdit* title = m_app->videoMetaView->field("mediaTitle");
        title->selectAll();
        QTest::keyClicks(title, "Unsaved");
        QVERIFY(m_app->hasUnsavedEdits());
        answerWith(press);
        selectRow(1);
        QTRY_COMPARE(m_asked.size(), 1);
        QCOMPARE(m_asked.first(), "Do you want to save the changes you made to \"clip.mp4\"?");
        if (press == "Cancel") {
            // The selection goes back; the panel and its edits stay.
            QVERIFY(m_app->selectedItems() == IKImageItemList{clip});
            QVERIFY(m_app->shownItem() == clip);
            QCOMPARE(title->text(), "Unsaved");
        } else {
            QVERIFY(m_app->selectedItems() == IKImageItemList{waves});
            QVERIFY(m_app->shownItem() == waves);
            QCOMPARE(title->text(), "Waves");
            m_app->waitForVideoJobs();
            QCOMPARE(QFile::exists(output()), press == " Save ");
            if (press == " Save ") QCOMPARE(titleOf("clip.mp4"), "Unsaved");
            QVERIFY(!QFile::exists(output("waves.mp4")));
        }
        QTest::qWait(20);
        QCOMPARE(m_asked.size(), 1);
    }

    void quittingAsksAtMostOnce_data() {
        QTest::addColumn<bool>("edited");
        QTest::addColumn<bool>("importing");
        QTest::addColumn<bool>("fromMenu");
        QTest::addColumn<QString>("press");
        QTest::addColumn<QString>("question");  // "" when none is asked
        QTest::addColumn<bool>("quits");
        const QString unsaved = "Do you want to save the changes you made to \"clip.mp4\"?";
        const QString running = "Files are still being imported or written.";
        const QString exit = "Are you sure you want to Exit ?";
        QTest::newRow("edits first, cancel")
            << true << true << true << "Cancel" << unsaved << false;
        QTest::newRow("edits, discard") << true << true << false << " Discard " << unsaved << true;
        QTest::newRow("import, close box") << false << true << false << " Exit " << running << true;
        QTest::newRow("import, cancel") << false << true << true << "Cancel" << running << false;
        QTest::newRow("menu, exit") << false << false << true << " Exit " << exit << true;
        QTest::newRow("menu, cancel") << false << false << true << "Cancel" << exit << false;
        QTest::newRow("close box quits at once") << false << false << false << ""
                                                 << "" << true;
    }
    void quittingAsksAtMostOnce() {
        QFETCH(bool, edited);
        QFETCH(bool, importing);
        QFETCH(bool, fromMenu);
        QFETCH(QString, press);
        QFETCH(QString, question);
        QFETCH(bool, quits);
        startClean();
        if (edited) m_app->videoMetaView->field("mediaArtist")->setText("Changed");
        // The import cannot end before the main thread takes its record.
        if (importing) QVERIFY(m_app->tableViewAcceptDrop({m_clip}));
        answerWith(press);
        const bool answered = m_app->confirmQuit(fromMenu);
        m_app->stopImports();
        QCOMPARE(answered, quits);
        QCOMPARE(m_asked, question.isEmpty() ? QStringList() : QStringList{question});
        QCOMPARE(m_app->localPhotoItemArray.size(), 2);
    }

    void menuQuitAsksOnceThoughTheWindowCloses() {
        // Quitting closes the window; its close box must not ask again.
        startClean();
        m_app->videoMetaView->field("mediaArtist")->setText("Changed");
        answerWith(" Discard ");
        QTimer::singleShot(0, m_app.get(), [this] { m_app->CloseTheMainWindow(); });
        QTimer stuck;
        stuck.setSingleShot(true);
        connect(&stuck, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        stuck.start(10000);
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(m_asked.size(), 1);
        QVERIFY(!m_app->mainWindow()->isVisible());
    }

private:
    void selectRow(int row) {
        m_app->dragtableView->clearSelection();
        m_app->dragtableView->selectionModel()->select(
            m_app->mediaController->index(row, 0),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    QString output(const QString& name = "clip.mp4") const { return m_dir.filePath("out/" + name); }
    QString titleOf(const QString& name) const {
        return MediaImporter::importFile(output(name), true)->fileTitle;
    }
    // Back to import order, nothing edited, the first row shown.
    void startClean() {
        m_app->setQuestionAnswerer(nullptr);
        m_app->classicBehaviour = false;
        m_app->ShowVideoViewWithItem(nullptr);
        m_app->LoadImportedMediasonMainThread();
        selectRow(0);
        QFile::remove(output("clip.mp4"));
        QFile::remove(output("waves.mp4"));
    }
    // Presses the button titled `press` of every question and notes the questions.
    void answerWith(const QString& press) {
        m_asked.clear();
        m_app->setQuestionAnswerer([this, press](QMessageBox& question) -> QAbstractButton* {
            m_asked << question.text();
            for (QAbstractButton* b : question.buttons())
                if (b->text() == press) return b;
            return nullptr;
        });
    }

    QTemporaryDir m_dir;
    QString m_clip;
    QByteArray m_clipBytes;
    QStringList m_asked;
    RecordingDesktopIntegration* m_desktop = nullptr;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<AppDelegate> m_app;
};

QTEST_MAIN(VideoSaveTest)
#include "video_save_test.moc"
