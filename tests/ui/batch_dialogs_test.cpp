// SPDX-License-Identifier: GPL-3.0-or-later
// The rename and batch date dialogs in the real window, filled as a user
// would: the preview, the rename thread cancelled after its first file and
// run through, Undo Rename, fixed dates in video and MP3 copies, and a
// photo's picture case and its skip.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "core/common/desktop_integration.h"
#include "core/video/video_file_ops.h"
#include "support/audio_fixtures.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"
#include "ui/photo/photo_browser.h"
#include "ui_session.h"

class BatchDialogsTest : public QObject {
    Q_OBJECT
    UiSession s;
    QStringList m_files;  // media/one.mov, two.mov, song.mp3, in import order
    QString m_photo;

    // Opens a modal dialog, runs `fill` on it, then presses OK (Cancel once a
    // check failed).
    template <typename Open>
    void inDialog(Open open, const std::function<void(QDialog&)>& fill) {
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            fill(*dialog);
            dialog->done(QTest::currentTestFailed() ? QDialog::Rejected : QDialog::Accepted);
        });
        open();
    }
    template <typename W = QLineEdit>
    static W* in(QDialog& dialog, const char* name) {
        return dialog.findChild<W*>(QLatin1String(name));
    }

private Q_SLOTS:
    void initTestCase() {
        if (!haveTool("exiftool")) QSKIP("exiftool is not installed");
        QDir().mkpath(s.dir.filePath("media"));
        for (const QString& from :
             {clipFixture("batch.mov"), clipFixture("batch.mov"), audiofix::mp3(3)}) {
            const char* names[] = {"one.mov", "two.mov", "song.mp3"};
            m_files << s.dir.filePath(QString("media/") + names[m_files.size()]);
            QVERIFY(QFile::copy(from, m_files.last()));
        }
        m_photo = s.dir.filePath("pic.jpg");
        QImage picture(64, 48, QImage::Format_RGB32);
        QVERIFY(picture.save(m_photo, "JPEG"));
        QVERIFY(runTool("exiftool", {"-q", "-overwrite_original", "-CreateDate=2019:05:06 19:08:00",
                                     "-DateTimeOriginal=2019:05:06 19:08:00", m_photo}));
        installMovieExporter();
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        s.launch("out", true).mainWindow()->show();
        QVERIFY(s.importAndWait(m_files));
    }
    void cleanupTestCase() { s.app.reset(); }

    void renamePreviewsRunsAndUndoes() {
        const IKImageItemList items = s.app->localPhotoItemArray;
        const struct {
            bool custom;
            QStringList names;  // the first alone when cancelled
        } runs[] = {{true, {"Trip000001.mov", "two.mov", "song.mp3"}},
                    {false, {"Trip one.mov", "Trip two.mov", "Trip song.mp3"}}};
        for (const auto& run : runs) {
            s.app->dragtableView->selectAll();
            inDialog([&] { s.app->ShowRenameWindowAction(nullptr); },
                     [&](QDialog& d) {
                         in<QRadioButton>(d, run.custom ? "customerFileNameBtn" : "metaFileNameBtn")
                             ->setChecked(true);
                         in(d, "customNamelab")->setText("Trip");
                         in<QCheckBox>(d, "checkStartNumber")->setChecked(true);
                         in(d, "filenameFormatstrlab")->setText("Trip {Existing File Name}");
                         const QString preview =
                             in<QPlainTextEdit>(d, "renamePreview")->toPlainText();
                         QVERIFY(preview.contains("one.mov  →  " + run.names[0]));
                         QVERIFY(preview.contains("song.mp3  →  Trip"));
                         for (const QString& f : m_files) QVERIFY(QFileInfo::exists(f));
                     });
            if (run.custom)  // Cancel: the first file is being renamed, the others wait
                s.app->mainWindow()
                    ->findChild<QProgressDialog*>()
                    ->findChild<QPushButton*>()
                    ->click();
            QTRY_VERIFY_WITH_TIMEOUT(!s.app->renameRunning(), 30000);
            for (int i = 0; i < 3; ++i) {
                const QString path = s.dir.filePath("media/" + run.names[i]);
                QVERIFY2(QFileInfo::exists(path), qPrintable(path));
                QCOMPARE(items[i]->filePath, path);
                QCOMPARE(s.app->mediaController->index(i, 0).data().toString(), run.names[i]);
            }
            s.app->UndoRenameAction(nullptr);
            for (int i = 0; i < 3; ++i)
                QVERIFY(QFileInfo::exists(m_files[i]) && items[i]->filePath == m_files[i]);
        }
    }

    void batchDatesWriteVideoAndAudioCopies() {
        s.app->dragtableView->selectAll();
        inDialog([&] { s.app->EditvideofileDateInfoAction(nullptr); },
                 [](QDialog& d) { in(d, "mutSetDatelab")->setText("2021:03:04 05:06:07"); });
        const QString want =
            QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)).toUTC().toString("yyyy:MM:dd HH:mm:ss");
        for (const char* name : {"one.mov", "two.mov", "song.mp3"}) {
            const QJsonObject tags = exiftoolTags(s.dir.filePath(QString("out/") + name));
            QCOMPARE(
                tags.value(tags.contains("UserData:DateTimeOriginal") ? "UserData:DateTimeOriginal"
                                                                      : "ID3v2_3:RecordingDates")
                    .toString(),
                want);
        }
    }

    // The creation-date change moves the photo's copy by the interval the
    // user gave its original date; the recorded-date change skips photos.
    void photoDatesTakeThePicturesIntervalOrAreSkipped() {
        s.app->ChangeToImportComputerPhoto(nullptr);
        QVERIFY(s.app->photoViewAcceptDrop({m_photo}));
        QTRY_VERIFY_WITH_TIMEOUT(!s.app->importRunning(), 60000);
        PhotoBrowserView* browser = s.app->localImageBrowserView;
        browser->selectItem(browser->photoModel()->content().first());
        const QFileInfo source(m_photo);
        const QDateTime created =
            source.birthTime().isValid() ? source.birthTime() : source.lastModified();
        for (const bool creation : {true, false}) {
            inDialog([&] { s.app->EditvideofileDateInfoAction(nullptr); },
                     [&](QDialog& d) {
                         QVERIFY(!in<QLabel>(d, "dateImageview")->pixmap().isNull());
                         QCOMPARE(in<QLabel>(d, "beforeorignalDatelab")->text(),
                                  "2019:05:06 19:08:00");
                         in(d, "afterorignalDatelab")->setText("2019:05:07 20:08:30");
                         QCOMPARE(in(d, "afterdiginalDatelab")->text(), "2019:05:07 20:08:30");
                         QVERIFY(in<QCheckBox>(d, "createdDateBtn")->isChecked());
                         in<QCheckBox>(d, "createdDateBtn")->setChecked(creation);
                     });
        }
        QCOMPARE(QFileInfo(s.dir.filePath("out/pic.jpg")).lastModified().toSecsSinceEpoch(),
                 created.addSecs(25 * 3600 + 30).toSecsSinceEpoch());
        QVERIFY(s.app->mainWindow()
                    ->findChild<QLabel*>("writeResult")
                    ->text()
                    .contains("photo dates are changed in the photo date window"));
    }
};

QTEST_MAIN(BatchDialogsTest)
#include "batch_dialogs_test.moc"
