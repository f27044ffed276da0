// SPDX-License-Identifier: GPL-3.0-or-later
// The video panel inside the real window: what selecting a video shows and
// remembers, the save, removal and tool commands writing into the storage
// folder, the files they act on after a sort, and the questions asked before
// unsaved edits or running work would be lost; stopping a running tool; the
// XMP sheet.
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "core/import/media_import.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/video_file_ops.h"
#include "support/media_fixtures.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"
#include "ui_session.h"

class VideoSaveTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        if (!haveTool("ffmpeg")) QSKIP("ffmpeg is not installed");
        m_clip = m_ui.dir.filePath("clip.mp4");
        const QString made = ffmpegFixture(
            "ui-titled.mp4",
            words("-f lavfi -i testsrc=duration=1:size=160x120:rate=10 -c:v libx264 "
                  "-pix_fmt yuv420p -metadata title=Before -metadata artist=Someone"));
        QVERIFY2(!made.isEmpty(), qPrintable(lastToolOutput()));
        QVERIFY(QFile::copy(made, m_clip));
        m_clipBytes = readFile(m_clip);
        // A second video whose name sorts after the first.
        const QString waves = m_ui.dir.filePath("waves.mp4");
        QVERIFY2(runTool("ffmpeg", words("-v error -y -i " + m_clip +
                                         " -c copy -metadata title=Waves " + waves)),
                 qPrintable(lastToolOutput()));

        ActivityLog::install();
        installMovieExporter();
        auto desktop = std::make_unique<RecordingDesktopIntegration>();
        m_desktop = desktop.get();
        DesktopIntegration::setInstance(std::move(desktop));
        m_app = &m_ui.launch("out", true);
        m_app->mainWindow()->show();
        QVERIFY(m_ui.importAndWait({m_clip, waves}));
        QCOMPARE(m_app->localPhotoItemArray.size(), 2);
        // The Name cell's picture becomes a frame of the video once it is decoded.
        const IKImageItemPtr item = m_app->localPhotoItemArray.first();
        m_app->mediaController->iconFor(*item);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_app->mediaController->iconFor(*item).availableSizes().contains(QSize(32, 24)), 10000);
    }

    void cleanupTestCase() { m_ui.app.reset(); }
    void selectingAVideoFillsThePanelAndRemembersIt() {
        m_ui.selectRow(0);
        QVERIFY(m_app->videoMetaView->isVisible());
        QCOMPARE(m_app->videoMetaView->field("mediaTitle")->text(), "Before");
        QCOMPARE(m_app->videoMetaView->field("mediaArtist")->text(), "Someone");
        QCOMPARE(m_app->oldMovieTitle + m_app->oldMovieArtist, "BeforeSomeone");
        QCOMPARE(m_app->oldMovieCreatedDate, m_app->localPhotoItemArray.first()->fileCreateDateStr);
        QVERIFY(!m_app->basicInfoChange && !m_app->cameraInfoChange);
    }

    void saveWritesTheEditedFieldsIntoTheStorageFolder() {
        m_ui.selectRow(0);
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

        m_ui.selectRow(0);
        m_app->CopyvideofilenametoTitleAction(nullptr);
        m_app->waitForVideoJobs();
        QCOMPARE(MediaImporter::importFile(output(), true)->fileTitle, "clip");

        m_app->RemoveSelectedMediaFileAction(nullptr);
        m_app->waitForVideoJobs();
        const IKImageItemPtr stripped = MediaImporter::importFile(output(), true);
        QVERIFY(stripped->fileTitle.isEmpty());
        QVERIFY(stripped->fileArist.isEmpty());
        QVERIFY(!readMovieMetadata(output()).isEmpty());  // the encoder's name stays

        // "Remove Location" keeps every other item of the source; "Remove All
        // Metadata" leaves none.
        for (const QString text : {"Remove Location", "Remove All Metadata"}) {
            const QList<QAction*> actions = m_app->removeExifMenu->actions();
            const auto a = std::find_if(actions.begin(), actions.end(), [&](QAction* a) {
                return a->text() == text && a->isEnabled();
            });
            QVERIFY2(a != actions.end(), qPrintable(text));
            (*a)->trigger();
            m_app->waitForVideoJobs();
            const bool all = text != "Remove Location";
            QCOMPARE(titleOf("clip.mp4"), all ? "" : "Before");
            if (all) QCOMPARE(readMovieMetadata(output()).size(), 0);
        }
        QCOMPARE(readFile(m_clip), m_clipBytes);
    }

    void videoToolsMenuRunsJobsWithProgress() {
        startClean();
        QAction* convert = menuItem(m_app->videoBatchEditMenu, "Convert");
        QVERIFY(convert && convert->menu());
        menuItem(convert->menu(), "Convert to MOV")->trigger();
        menuItem(m_app->videoBatchEditMenu, "Make GIF")->trigger();
        QVERIFY(m_app->videoToolsRunning());
        QVERIFY(m_app->mainWindow()->findChild<QProgressBar*>("videoToolProgress"));
        m_app->waitForVideoJobs();
        QTRY_VERIFY(!m_app->videoToolsRunning());  // the end ran on the main thread
        QVERIFY(QFile::exists(output("clip.mov")) && QFile::exists(output("clip.gif")));
        QCOMPARE(readFile(m_clip), m_clipBytes);
    }

    void xmpSheetAppliesAFolderAndAlwaysCloses() {
        QTemporaryDir folder;
        const QString video = folder.filePath("trip.mp4");
        QVERIFY(QFile::copy(m_clip, video));
        QVERIFY(writeFile(folder.filePath("trip.xmp"),
                          "<x xmlns:dc='http://purl.org/dc/elements/1.1/'><dc:title>Sidecar"
                          "</dc:title></x>"));
        QVERIFY(writeFile(folder.filePath("bad.XMP"), "<dc:title>"));  // skipped, logged
        m_app->WriteXMPMetadataToPhotosAction(nullptr);
        QVERIFY(m_app->writeXmpWindow->isVisible());
        m_app->openPanelDidEnd9(QDialog::Accepted, {folder.path()});
        QVERIFY(m_app->writeXmpProcesser->isVisible() && !m_app->writeXmpBtn->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->xmpBatchRunning(), 20000);
        QVERIFY(!m_app->writeXmpWindow->isVisible());
        QCOMPARE(MediaImporter::importFile(video, true)->fileTitle, "Sidecar");
        QVERIFY(m_desktop->opened().contains(QUrl::fromLocalFile(folder.path())));
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
        m_ui.selectRow(0);
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
        m_ui.answerWith(press);
        m_ui.selectRow(1);
        QTRY_COMPARE(m_ui.asked.size(), 1);
        QCOMPARE(m_ui.asked.first(), "Do you want to save the changes you made to \"clip.mp4\"?");
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
        QCOMPARE(m_ui.asked.size(), 1);
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
        m_ui.answerWith(press);
        const bool answered = m_app->confirmQuit(fromMenu);
        m_app->stopImports();
        QCOMPARE(answered, quits);
        QCOMPARE(m_ui.asked, question.isEmpty() ? QStringList() : QStringList{question});
        QCOMPARE(m_app->localPhotoItemArray.size(), 2);
    }

    // A running job stops at its Cancel button, or when quitting is confirmed
    // (declined, it runs on), and leaves no file; the list answers meanwhile.
    void stoppingARunningToolLeavesNoFile_data() {
        QTest::addColumn<bool>("byQuitting");
        QTest::newRow("its cancel button") << false;
        QTest::newRow("quitting: Cancel keeps it, Exit stops it") << true;
    }
    void stoppingARunningToolLeavesNoFile() {
        QFETCH(bool, byQuitting);
        startClean();
        const QString movie = m_ui.dir.filePath("long.mp4");
        if (!QFile::exists(movie)) {  // long enough to be running when stopped
            const QString made = ffmpegFixture(
                "ui-long.mp4", words("-f lavfi -i testsrc2=duration=60:size=640x360:rate=25 "
                                     "-c:v libx264 -preset ultrafast -pix_fmt yuv420p"));
            QVERIFY2(!made.isEmpty() && QFile::copy(made, movie), qPrintable(lastToolOutput()));
            QVERIFY(m_ui.importAndWait({movie}));
        }
        m_ui.selectRow(2);
        menuItem(menuItem(m_app->videoBatchEditMenu, "Compress")->menu(), "High video quality")
            ->trigger();
        const QPointer<QProgressBar> bar =
            m_app->mainWindow()->findChild<QProgressBar*>("videoToolProgress");
        QVERIFY(bar);
        QTRY_VERIFY_WITH_TIMEOUT(bar->value() > 0, 10000);
        m_ui.selectRow(0);
        QVERIFY(m_app->shownItem() == m_app->localPhotoItemArray.first());
        if (byQuitting) {
            m_ui.answerWith("Cancel");
            QVERIFY(!m_app->confirmQuit(true));
            const int reached = bar->value();
            QTRY_VERIFY_WITH_TIMEOUT(bar->value() > reached, 10000);
            m_ui.answerWith(" Exit ");
            QVERIFY(m_app->confirmQuit(true));
            QCOMPARE(m_ui.asked, QStringList{"Files are still being imported or written."});
        } else {
            m_app->mainWindow()->findChild<QPushButton*>("videoToolCancel")->click();
        }
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->videoToolsRunning(), 10000);
        QCOMPARE(QDir(m_ui.dir.filePath("out"))
                     .entryList({"*long*"}, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
    }

    void menuQuitAsksOnceThoughTheWindowCloses() {
        // Quitting closes the window; its close box must not ask again.
        startClean();
        m_app->videoMetaView->field("mediaArtist")->setText("Changed");
        m_ui.answerWith(" Discard ");
        QTimer::singleShot(0, m_app, [this] { m_app->CloseTheMainWindow(); });
        QTimer stuck;
        stuck.setSingleShot(true);
        connect(&stuck, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        stuck.start(10000);
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(m_ui.asked.size(), 1);
        QVERIFY(!m_app->mainWindow()->isVisible());
    }

private:
    static QAction* menuItem(QMenu* menu, const QString& text) {
        const QList<QAction*> actions = menu->actions();
        const auto a = std::find_if(actions.begin(), actions.end(),
                                    [&](QAction* a) { return a->text() == text; });
        return a == actions.end() ? nullptr : *a;
    }
    QString output(const QString& name = "clip.mp4") const {
        return m_ui.dir.filePath("out/" + name);
    }
    QString titleOf(const QString& name) const {
        return MediaImporter::importFile(output(name), true)->fileTitle;
    }
    // Back to import order, nothing edited, the first row shown.
    void startClean() {
        m_app->setQuestionAnswerer(nullptr);
        m_app->classicBehaviour = false;
        m_app->ShowVideoViewWithItem(nullptr);
        m_app->LoadImportedMediasonMainThread();
        m_ui.selectRow(0);
        QFile::remove(output("clip.mp4"));
        QFile::remove(output("waves.mp4"));
    }
    UiSession m_ui;
    AppDelegate* m_app = nullptr;
    QString m_clip;
    QByteArray m_clipBytes;
    RecordingDesktopIntegration* m_desktop = nullptr;
};

QTEST_MAIN(VideoSaveTest)
#include "video_save_test.moc"
