// SPDX-License-Identifier: GPL-3.0-or-later
// The audio panel inside the real window: what selecting an MP3 shows and
// remembers, which group flag an edit sets, the save into the storage folder,
// switching between audio and video rows, and the question before unsaved
// audio edits are lost.
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

#include "app/app_delegate.h"
#include "core/common/desktop_integration.h"
#include "support/audio_fixtures.h"
#include "support/exiftool.h"
#include "support/media_fixtures.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/main_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/video/video_meta_view.h"

class AudioPanelTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        if (!haveTool("ffmpeg")) QSKIP("ffmpeg is not installed");
        const QString song = ffmpegFixture(
            "ui-song.mp3", words("-f lavfi -i sine=duration=1 -c:a libmp3lame -id3v2_version 3 "
                                 "-metadata title=Before -metadata artist=Someone"));
        QVERIFY2(!song.isEmpty(), qPrintable(lastToolOutput()));
        m_song = m_dir.filePath("song.mp3");
        QVERIFY(QFile::copy(song, m_song));
        // A second MP3 with its own tags and cover.
        m_other = m_dir.filePath("other.mp3");
        QVERIFY(QFile::copy(audiofix::mp3(3), m_other));
        const QString clip = m_dir.filePath("clip.mp4");
        QVERIFY(QFile::copy(clipFixture("ui-audio-clip.mp4"), clip));

        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        m_settings =
            std::make_unique<QSettings>(m_dir.filePath("tagsmith.ini"), QSettings::IniFormat);
        m_settings->setValue("storagePath", m_dir.filePath("out"));
        m_app = std::make_unique<AppDelegate>(*m_settings);
        m_app->setQuietAlerts(true);
        m_app->awakeFromNib();
        m_app->applicationDidFinishLaunching();
        m_app->mainWindow()->show();
        QVERIFY(m_app->tableViewAcceptDrop({m_song, m_other, clip}));
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->importRunning(), 60000);
        QCOMPARE(m_app->localPhotoItemArray.size(), 3);
        m_panel = m_app->audioContentView;
    }
    void cleanupTestCase() { m_app.reset(); }

    void selectingAnMp3ShowsItsPanelAndRemembersIt() {
        selectRow(0);
        QVERIFY(m_panel->isVisible() && m_app->videoMetaView->isHidden());
        QCOMPARE(m_panel->infoLabel("fileName")->text(), "File Name: song.mp3");
        QCOMPARE(m_panel->infoLabel("location")->text(), "Location: " + m_song);
        QCOMPARE(m_panel->field("titlelab")->text(), "Before");
        QCOMPARE(m_app->oldTitleStr, "Before");
        QCOMPARE(m_app->oldArtistStr, "Someone");
        QVERIFY(!m_app->basicInfoChange && !m_app->cameraInfoChange);
        QVERIFY(m_panel->showsPlaceholderArtwork());
        // A file with a cover shows it, and lists it among all its tags.
        selectRow(1);
        QVERIFY(!m_panel->showsPlaceholderArtwork());
        const QTableWidget* tags = m_panel->allTagsView();
        QVERIFY(!tags->findItems("APIC", Qt::MatchExactly).isEmpty());
    }

    void anEditSetsTheFlagOfItsGroup_data() {
        QTest::addColumn<QString>("outlet");
        QTest::addColumn<bool>("basic");
        QTest::addColumn<bool>("camera");
        QTest::newRow("title block") << "composerlab" << true << false;
        QTest::newRow("rights and notes") << "copyrightlab" << false << true;
        QTest::newRow("created date: neither") << "createdDatelab" << false << false;
    }
    void anEditSetsTheFlagOfItsGroup() {
        QFETCH(QString, outlet);
        QFETCH(bool, basic);
        QFETCH(bool, camera);
        startClean();
        QTest::keyClicks(m_panel->field(outlet), "x");
        QCOMPARE(m_app->basicInfoChange, basic);
        QCOMPARE(m_app->cameraInfoChange, camera);
        QVERIFY(m_app->hasUnsavedEdits());
    }

    // Each other file gets only the edited field; the chosen picture goes
    // into the shown file alone; the video is left to its own panel.
    void saveOfSeveralRowsWritesOnlyTheEdits() {
        startClean();
        QTest::keyClicks(m_panel->field("titlelab"), " After");
        QImage blue(16, 16, QImage::Format_RGB32);
        blue.fill(Qt::blue);
        m_panel->setChosenArtwork(blue);
        const QByteArray songBytes = readFile(m_song);
        m_app->dragtableView->selectAll();
        m_app->MybuttonMouseDownHandle(m_app->SaveMediaChangesBtn);
        m_app->waitForVideoJobs();
        QVERIFY(!m_app->hasUnsavedEdits());
        const QJsonObject song = exiftoolTags(output("song.mp3"));
        QCOMPARE(song["ID3v2_3:Title"].toString(), "Before After");
        QCOMPARE(song["ID3v2_3:Artist"].toString(), "Someone");
        QVERIFY(!QImage::fromData(exiftoolBinary(output("song.mp3"), "Picture")).isNull());
        const QJsonObject other = exiftoolTags(output("other.mp3"));
        QCOMPARE(other["ID3v2_3:Title"].toString(), "Before After");
        QCOMPARE(other["ID3v2_3:Artist"].toString(), "Artist");
        QCOMPARE(exiftoolBinary(output("other.mp3"), "Picture"),
                 exiftoolBinary(m_other, "Picture"));
        QVERIFY(!QFile::exists(output("clip.mp4")));
        QCOMPARE(readFile(m_song), songBytes);
    }

    void removalStripsTheSelectedMp3() {
        startClean();
        selectRow(1);
        m_app->RemoveSelectedMediaFileAction(nullptr);
        m_app->waitForVideoJobs();
        const QJsonObject other = exiftoolTags(output("other.mp3"));
        QCOMPARE(other["File:FileType"].toString(), "MP3");
        QCOMPARE(other["ID3v2_3:Title"].toString(), QString());  // was "Before After"
        QCOMPARE(other["ID3v2_3:Artist"].toString(), QString());
    }

    void switchingBetweenAudioAndVideoRows() {
        startClean();
        QTest::keyClicks(m_panel->field("titlelab"), "!");
        answerWith(" Discard ");
        selectRow(2);
        QTRY_VERIFY(m_app->videoMetaView->isVisible());
        QVERIFY(m_panel->isHidden());
        QCOMPARE(m_app->shownItem(), m_app->localPhotoItemArray.at(2));
        selectRow(0);
        QVERIFY(m_panel->isVisible() && m_app->videoMetaView->isHidden());
        QCOMPARE(m_panel->field("titlelab")->text(), "Before");  // the edit was dropped
        QCOMPARE(m_app->oldTitleStr, "Before");
        QVERIFY(!m_app->basicInfoChange);
    }

    void cancellingTheQuestionKeepsTheEditAndTheRow() {
        startClean();
        QTest::keyClicks(m_panel->field("titlelab"), "!");
        answerWith("Cancel");
        selectRow(2);
        QTRY_COMPARE(m_asked, QStringList{"Do you want to save the changes you made to "
                                          "\"song.mp3\"?"});
        QCOMPARE(m_app->selectedItems(), IKImageItemList{m_app->localPhotoItemArray.at(0)});
        QVERIFY(m_panel->isVisible());
        QCOMPARE(m_panel->field("titlelab")->text(), "Before!");
    }

private:
    void selectRow(int row) {
        m_app->dragtableView->clearSelection();
        m_app->dragtableView->selectionModel()->select(
            m_app->mediaController->index(row, 0),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    // Nothing edited, the MP3 shown and selected alone.
    QString output(const QString& name) const { return m_dir.filePath("out/" + name); }
    void startClean() {
        m_app->setQuestionAnswerer(nullptr);
        m_app->ShowVideoViewWithItem(nullptr);
        selectRow(0);
        QVERIFY(m_panel->isVisible());
    }
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
    QString m_song, m_other;
    QStringList m_asked;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<AppDelegate> m_app;
    AudioPanel* m_panel = nullptr;
};

QTEST_MAIN(AudioPanelTest)
#include "audio_panel_test.moc"
