// SPDX-License-Identifier: GPL-3.0-or-later
// Photo mode in the real window: photos added by a folder drop, the panel
// and outline of the selected photo, an edit applied into the storage
// folder, the GPS window's save and the sheets that refuse incomplete input.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>

#include "core/common/desktop_integration.h"
#include "core/common/output_files.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"
#include "ui/controls/map_view.h"
#include "ui/photo/photo_browser.h"
#include "ui/photo/photo_panel.h"
#include "ui/photo/photo_windows.h"
#include "ui/shell/toolbar_button.h"
#include "ui_session.h"

class PhotoModeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        if (!haveTool("exiftool")) QSKIP("exiftool is not installed");
        QDir(s.dir.path()).mkpath("photos/sub");
        m_located = makeJpeg("photos/located.jpg",
                             {"-IFD0:Artist=Before", "-GPSLatitude=33.5", "-GPSLatitudeRef=S",
                              "-GPSLongitude=151.2", "-GPSLongitudeRef=E"});
        m_bare = makeJpeg("photos/sub/bare.jpg", {"-IFD0:Make=Maker"});
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        AppDelegate& app = s.launch("out");
        s.answerWith(" Ok ");
        app.mainWindow()->show();
        app.ChangeToImportComputerPhoto(nullptr);
        QVERIFY(app.photoViewAcceptDrop({s.dir.filePath("photos")}));
        QTRY_VERIFY_WITH_TIMEOUT(!app.importRunning(), 60000);
        m_browser = app.localImageBrowserView;
        m_panel = app.photoContentView;
    }
    void cleanupTestCase() { s.app.reset(); }

    // The folder is read recursively into the browser; the table keeps to
    // videos and audio and still refuses a drop that starts with a photo.
    void aDroppedFolderFillsTheBrowserOnly() {
        QCOMPARE(m_browser->model()->rowCount(), 2);
        QCOMPARE(s.app->mediaController->rowCount(), 0);
        QVERIFY(!s.app->tableViewValidateDrop({m_located}));
        QTRY_COMPARE(m_browser->photoModel()->thumbnailCount(), 2);
        QStringList names;
        for (int row = 0; row < 2; ++row)
            names << m_browser->model()->index(row, 0).data().toString();
        names.sort();
        QCOMPARE(names, QStringList({"bare.jpg", "located.jpg"}));
    }

    // The panel, the remembered values, the outline's groups and the map.
    void selectingAPhotoShowsIt() {
        select(m_located);
        QCOMPARE(m_panel->infoLabel("photoNamelab")->text(), "located.jpg");
        QCOMPARE(m_panel->infoLabel("photoImageSizelab")->text(), "64 x 48");
        const auto* preview = m_panel->findChild<QLabel*>("photoPreview");
        QVERIFY(preview && preview->isVisible());
        QCOMPARE(preview->pixmap().size(), QSize(64, 48));
        QCOMPARE(m_panel->field("artistlab")->text(), "Before");
        QCOMPARE(m_panel->field("gpsLatilab")->text().toDouble(), -33.5);
        QCOMPARE(s.app->oldArtistStr, "Before");
        QCOMPARE(s.app->currentChooseFilePath, m_located);
        QVERIFY(s.app->bMapPreview && m_panel->currentlocalMapView()->isVisible());
        const QStandardItemModel* tree = m_panel->localTreeController();
        for (const char* group : {"{GPS}", "{TIFF}"}) {
            const QList<QStandardItem*> rows = tree->findItems(group);
            QVERIFY2(rows.size() == 1 && rows.first()->hasChildren(), group);
            QCOMPARE(rows.first()->foreground().color(), QColor(Qt::white));
        }
        select(m_bare);
        QVERIFY(!s.app->bMapPreview && m_panel->currentlocalMapView()->isHidden());
    }

    // Only the edited field changes; the source stays as it was.
    void anAppliedEditLandsInTheStorageFolder() {
        select(m_located);
        const QByteArray source = readFile(m_located);
        QTest::keyClicks(m_panel->field("artistlab"), " After");
        QVERIFY(s.app->basicInfoChange && !s.app->gpsInfoChange && s.app->hasUnsavedEdits());
        s.app->MybuttonMouseDownHandle(s.app->editApplyBtn);
        const QJsonObject tags = written("located.jpg", {"-n"});
        QCOMPARE(tags["IFD0:Artist"].toString(), "Before After");
        QCOMPARE(tags["GPS:GPSLatitudeRef"].toString(), "S");
        QCOMPARE(readFile(m_located), source);
        QVERIFY(!s.app->hasUnsavedEdits());
    }

    // The stamp takes the local selection; the storage folder opens after it.
    void theDateStampWritesADatedCopy() {
        select(m_bare);
        s.app->mainWindow()->findChild<QAction*>("addDateOnPhotoAction")->trigger();
        QCOMPARE(written("bare_date.jpg", {"-n"})["IFD0:Make"].toString(), "Maker");
        const auto& desktop =
            static_cast<RecordingDesktopIntegration&>(DesktopIntegration::instance());
        QVERIFY(desktop.opened().contains(QUrl::fromLocalFile(s.dir.filePath("out"))));
    }

    void theGpsWindowWritesThePosition() {
        select(m_bare);
        s.app->AddGPSExifDataPhoto(nullptr);
        GpsWindow* gps = s.app->changeGPSWindow;
        QVERIFY(gps->isVisible());
        QCOMPARE(gps->dateStamplab->text(), "YYYY:MM:DD");
        const QList<std::pair<QLineEdit*, QString>> entries = {
            {gps->latitudelab, "-33.5"},     {gps->longtitudelab, "151.2"},
            {gps->altitudelab, "-10"},       {gps->dateStamplab, "2021:05:06"},
            {gps->timeStamplab, "07:08:09"},
        };
        for (const auto& [field, text] : entries) field->setText(text);
        QTest::mouseClick(gps->previewButton, Qt::LeftButton);
        QCOMPARE(gps->previewMapView->pinLatitude(), -33.5);
        QTest::mouseClick(gps->saveButton, Qt::LeftButton);
        QVERIFY(gps->isHidden());
        const QJsonObject tags = written("bare.jpg", {"-n"});
        QCOMPARE(tags["GPS:GPSLatitude"].toDouble(), 33.5);
        QCOMPARE(tags["GPS:GPSLatitudeRef"].toString(), "S");
        QCOMPARE(tags["GPS:GPSAltitudeRef"].toInt(), 1);
        QCOMPARE(tags["IFD0:Make"].toString(), "Maker");
    }

    // Incomplete input is refused with a sheet and nothing is written.
    void incompleteInputGetsASheet() {
        select(m_bare);
        s.app->EditeGPSExifDataPhoto(nullptr);
        QCOMPARE(s.asked, QStringList{"No GPS Data"});
        s.app->AddGPSExifDataPhoto(nullptr);
        s.app->changeGPSWindow->altitudelab->clear();
        s.asked.clear();
        QTest::mouseClick(s.app->changeGPSWindow->saveButton, Qt::LeftButton);
        QCOMPARE(s.asked, QStringList{"Vaule Error"});
        s.app->ClickCancleSaveGPSAction(nullptr);
        s.app->ShowChangeDateWindowAction(nullptr);
        s.app->changeDateWindow->diginalDatelab->setText("2020/01/02 03:04:05");
        s.asked.clear();
        QTest::mouseClick(s.app->changeDateWindow->saveButton, Qt::LeftButton);
        QCOMPARE(s.asked, QStringList{"Invalid date format"});
        QVERIFY(s.app->changeDateWindow->isVisible());
        s.app->changeDateWindow->reject();
        // Camera mode writes the GPS entry fields as they stand: all five.
        auto camera = std::make_shared<IKImageItem>(*s.app->shownPhoto());
        s.app->cameItemArray = {camera};
        s.app->ChangeToImportiOSDevicePhoto(nullptr);
        s.app->imageBrowserView->selectItem(camera);
        QTRY_COMPARE(s.app->shownPhoto(), camera);
        s.app->changeGPSWindow->timeStamplab->clear();
        s.asked.clear();
        s.app->ClickApplyChangeAction(nullptr);
        QCOMPARE(s.asked, QStringList{"Vaule Error"});
        s.app->ChangeToImportComputerPhoto(nullptr);
    }

    // Leaving a photo with unsaved edits asks; Cancel keeps it shown and selected.
    void leavingAnEditedPhotoAsks() {
        select(m_located);
        QTest::keyClicks(m_panel->field("titlelab"), "x");
        s.answerWith("Cancel");
        for (const IKImageItemPtr& item : m_browser->photoModel()->content())
            if (item->filePath == m_bare) m_browser->selectItem(item);
        QTRY_COMPARE(s.asked.size(), 1);
        QCOMPARE(s.app->shownPhoto()->filePath, m_located);
        QCOMPARE(m_browser->selectedItems().constFirst()->filePath, m_located);
        s.answerWith(" Discard ");
        select(m_bare);
    }

    // Quitting asks about the photo panel's edits from every view: the way
    // to the Media view asks first, and edits the panel still holds behind
    // it are asked about when quitting or closing the window.
    void quittingAsksAboutPhotoEditsFromEveryView() {
        const QStringList question{"Do you want to save the changes you made to \"located.jpg\"?"};
        select(m_located);
        QTest::keyClicks(m_panel->field("titlelab"), "x");
        s.answerWith("Cancel");
        QVERIFY(!s.app->windowShouldClose());
        s.app->ShowMediaListAction(nullptr);
        QCOMPARE(s.asked, question + question);
        s.answerWith(" Discard ");
        s.app->ShowMediaListAction(nullptr);
        QVERIFY(!s.app->photoMode());
        s.answerWith("Cancel");
        QVERIFY(s.app->confirmQuit(false));  // discarded: nothing left to ask about
        m_panel->field("titlelab")->setText("held");
        QVERIFY(!s.app->confirmQuit(false));
        QCOMPARE(s.asked, question);
        s.app->ChangeToImportComputerPhoto(nullptr);
        select(m_bare);
    }

    // A folder served as a camera: plugged in, listed without the sound
    // recording, the GPS window opened on a downloaded copy, a download for
    // editing, a delete after its question, and unplugged.
    void aCameraFromPlugToUnplug() {
        QDir card(s.dir.filePath("card"));
        QVERIFY(card.mkpath("DCIM"));
        QVERIFY(QFile::copy(m_located, card.filePath("DCIM/IMG_0001.JPG")));
        QVERIFY(QFile::copy(m_bare, card.filePath("DCIM/IMG_0002.JPG")));
        QVERIFY(writeFile(card.filePath("DCIM/REC.WAV"), "RIFF"));
        qputenv("TAGSMITH_CAMERA_PORT", "disk:" + card.path().toUtf8());
        AppDelegate& app = *s.app;
        app.pollCameras();
        QTRY_COMPARE(app.mCameras.size(), 1);
        app.ChangeToImportiOSDevicePhoto(nullptr);
        QTRY_COMPARE(app.cameItemArray.size(), 2);
        QCOMPARE(app.deviceNamelab->text(), card.path());
        QCOMPARE(app.mainWindow()->leftPage(), MainWindow::LeftPage::CameraPhotos);
        const auto camera = [&](const QString& name) {
            for (const IKImageItemPtr& item : app.cameItemArray)
                if (item->fileName == name) return item;
            return IKImageItemPtr();
        };
        app.imageBrowserView->selectItem(camera("IMG_0001.JPG"));
        app.EditeGPSExifDataPhoto(nullptr);
        QTRY_VERIFY(app.changeGPSWindow->isVisible());
        QCOMPARE(app.changeGPSWindow->latitudelab->text(), "-33.5");
        app.ClickCancleSaveGPSAction(nullptr);

        const qsizetype listed = app.localPhotoItemArray.size();
        app.DownloadImportEditePhotoAction(nullptr);
        QTRY_COMPARE(app.localPhotoItemArray.size(), listed + 1);
        QCOMPARE(app.localPhotoItemArray.last()->filePath, s.dir.filePath("out/IMG_0001.JPG"));
        QVERIFY(isOutputOfOurs(app.localPhotoItemArray.last()->filePath));

        app.ChangeToImportiOSDevicePhoto(nullptr);
        app.imageBrowserView->selectItem(camera("IMG_0002.JPG"));
        s.answerWith("Cancel");
        app.DeletePhotoAction(nullptr);
        QCOMPARE(s.asked, QStringList{"Are you sure you want to delete the selected photo ?"});
        QCOMPARE(app.cameItemArray.size(), 2);
        s.answerWith(" Delete ");
        app.DeletePhotoAction(nullptr);
        QCOMPARE(app.cameItemArray.size(), 1);
        QTRY_VERIFY(!QFileInfo::exists(card.filePath("DCIM/IMG_0002.JPG")));

        QVERIFY(card.removeRecursively());
        app.pollCameras();
        QTRY_VERIFY(app.cameItemArray.isEmpty());
        QCOMPARE(app.mainWindow()->leftPage(), MainWindow::LeftPage::CameraHint);
        qunsetenv("TAGSMITH_CAMERA_PORT");
        s.answerWith(" Ok ");
    }

private:
    QString makeJpeg(const QString& name, const QStringList& tags) {
        const QString path = s.dir.filePath(name);
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        if (!picture.save(path, "JPEG")) return {};
        runTool("exiftool", QStringList{"-q", "-overwrite_original"} + tags + QStringList{path});
        return path;
    }
    void select(const QString& path) {
        for (const IKImageItemPtr& item : m_browser->photoModel()->content())
            if (item->filePath == path) m_browser->selectItem(item);
        QTRY_VERIFY(s.app->shownPhoto() && s.app->shownPhoto()->filePath == path);
    }
    // The tags of a copy in the storage folder, once the write is told.
    QJsonObject written(const QString& name, const QStringList& options) {
        s.app->waitForVideoJobs();
        const QString path = s.dir.filePath("out/" + name);
        auto* status = s.app->mainWindow()->findChild<QLabel*>("writeResult");
        [&] { QTRY_VERIFY(status->text().contains(path)); }();
        return exiftoolTags(path, options);
    }

    UiSession s;
    QString m_located, m_bare;
    PhotoBrowserView* m_browser = nullptr;
    PhotoPanel* m_panel = nullptr;
};

QTEST_MAIN(PhotoModeTest)
#include "photo_mode_test.moc"
