// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up, preferences, the toolbar dispatcher, help links, the busy
// indicator and shutting down while an import runs, on the real controller.
#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QSplitter>
#include <QTimer>
#include <QTranslator>

#include "app/help_links.h"
#include "control_names.h"
#include "core/app/user_defaults.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "support/media_fixture.h"
#include "ui/audio/audio_panel.h"
#include "ui/photo/photo_browser.h"
#include "ui/shell/activity_view.h"
#include "ui/shell/busy_indicator.h"
#include "ui/shell/preferences_window.h"
#include "ui/shell/toolbar_button.h"
#include "ui/shell/translations.h"
#include "ui/shell/update_controller.h"
#include "ui/video/video_meta_view.h"
#include "ui_session.h"

class ShellTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        auto recorder = std::make_unique<RecordingDesktopIntegration>();
        m_desktop = recorder.get();
        DesktopIntegration::setInstance(std::move(recorder));
        m_ui = std::make_unique<UiSession>();
    }
    void cleanup() { m_ui.reset(); }

    void firstLaunchWritesFourKeysAndStartsClean() {
        AppDelegate& app = launch();
        QCOMPARE(AppDelegate::GetAppDelegater(), &app);
        // Which keys and values are stored: UserDefaults.FirstAndSecondLaunch.
        QCOMPARE(app.storagelocation, defaultStoragePath());
        QVERIFY(QFileInfo(app.storagelocation).isDir());
        QCOMPARE((QStringList{app.storePathlab->text(), app.showFontlab->text(),
                              app.postionBtn->currentText(), app.dateFormatBtn->currentText()}),
                 (QStringList{app.storagelocation, "Lucida Grande 14", "Lower left corner",
                              "MM/DD/YYYY HH:MM"}));
        QVERIFY(app.colorwell->color() == Qt::white && app.currentFontColor == Qt::white);

        // The first header click sorting Z to A: LibraryTest.headerClicksSortTheContentOnly.
        QVERIFY(app.localPhotoItemArray.isEmpty() && !app.mainWindow()->listShown());
        QVERIFY(app.videoMetaView->isHidden() && app.audioContentView->isHidden());
        // Camera buttons wait for a camera.
        QVERIFY(!app.deletePhotoBtn->isEnabled() && !app.viewExifBtn->isEnabled());
    }

    void laterLaunchKeepsTheStoredTitlesQuirks() {
        launch();
        // The second launch: "fontsize" was never written and reads 0; the stored
        // position "lower left corner" matches no item, so none is selected.
        AppDelegate& app = launch();
        QCOMPARE(app.showFontlab->text(), "Lucida Grande 0");
        QCOMPARE(app.postionBtn->currentIndex(), -1);

        // After one OK with a chosen position, later launches select it; so
        // with "Classic behaviour", off until switched on.
        QVERIFY(!app.classicBehaviour);
        app.ShowPreferenceSetting(nullptr);
        QCheckBox* classic = app.preferencesWindow->classicBehaviourBox;
        QVERIFY(!classic->isChecked());
        QVERIFY(classic->toolTip().contains("import") &&
                classic->toolTip().contains("Size column"));
        classic->setChecked(true);
        app.postionBtn->setCurrentIndex(1);
        app.setStampFont("DejaVu Sans", 18);
        app.ResetPreferenceSetting(nullptr);
        QVERIFY(app.classicBehaviour);
        AppDelegate& third = launch();
        QCOMPARE(third.postionBtn->currentText(), "Upper right corner");
        QCOMPARE(third.showFontlab->text(), "DejaVu Sans 18");
        QCOMPARE(m_ui->settings.value("fontsize").toInt(), 18);
        QVERIFY(third.classicBehaviour);
        third.ShowPreferenceSetting(nullptr);
        QVERIFY(third.preferencesWindow->classicBehaviourBox->isChecked());
    }

    void storageFolderChangesOnlyWithOk() {
        AppDelegate& app = launch();
        const QString old = app.storagelocation;
        const QString chosen = m_ui->dir.filePath("chosen/output");

        app.ShowPreferenceSetting(nullptr);
        QVERIFY(app.preferencesWindow->isVisible());
        app.openPanelDidEnd5(QDialog::Rejected, {chosen});
        QCOMPARE(app.storePathlab->text(), old);
        app.openPanelDidEnd5(QDialog::Accepted, {chosen});
        QCOMPARE(app.storePathlab->text(), chosen);
        app.CancelPreferenceSetting(nullptr);
        QVERIFY(!app.preferencesWindow->isVisible());
        QCOMPARE(app.storagelocation + m_ui->settings.value("storagePath").toString(), old + old);
        QVERIFY(!QFileInfo::exists(chosen));

        // Shown again, the window offers the folder in effect.
        app.ShowPreferenceSetting(nullptr);
        QCOMPARE(app.storePathlab->text(), old);
        app.openPanelDidEnd5(QDialog::Accepted, {chosen});
        app.ResetPreferenceSetting(nullptr);
        QVERIFY(!app.preferencesWindow->isVisible());
        QCOMPARE(app.storagelocation + m_ui->settings.value("storagePath").toString(),
                 chosen + chosen);
        QVERIFY(QFileInfo(chosen).isDir());
        QCOMPARE(m_ui->settings.value("fontsize").toInt(), 14);
        QCOMPARE(m_ui->settings.value("Postion").toString(), "Lower left corner");
    }

    void dispatcherActsOnKnownButtonsOnly() {
        AppDelegate& app = launch();
        QObject stranger;
        stranger.setObjectName("SaveMediaChangesBtn");  // same name, other object
        app.MybuttonMouseDownHandle(&stranger);
        app.MybuttonMouseDownHandle(nullptr);
        QCOMPARE(app.lastDispatchedAction(), QString());

        for (const auto& [button, action] :
             {std::pair{app.SaveMediaChangesBtn, "SaveMeidaFileChangesAction"},
              {app.localeditexifBtn, "StartEditViewAction"},
              {app.CancelXmpBtn, "CanelXMPMetadataToPhotosAction"}}) {
            app.MybuttonMouseDownHandle(button);
            QCOMPARE(app.lastDispatchedAction(), action);
        }
        app.MybuttonMouseDownHandle(&stranger);
        QCOMPARE(app.lastDispatchedAction(), "CanelXMPMetadataToPhotosAction");

        // A real click goes through the dispatcher too.
        app.mainWindow()->show();
        QVERIFY(QTest::qWaitForWindowExposed(app.mainWindow()));
        QTest::mouseClick(app.localphotoBtn, Qt::LeftButton);
        QCOMPARE(app.lastDispatchedAction(), "ChangeToImportComputerPhoto");
    }

    void helpAboutAndBusyIndicator() {
        AppDelegate& app = launch();
        // A web address wins; without one, the guide staged in the build tree
        // (on the test's data path) is opened.
        QCOMPARE(productGuideUrl("https://example.org/guide"), QUrl("https://example.org/guide"));
        const QUrl guide = productGuideUrl({});
        QVERIFY(guide.isLocalFile() && QFileInfo(guide.toLocalFile()).isFile());
        app.CLICkProductGuide(nullptr);
        app.CLICkSupport(nullptr);
        QCOMPARE(m_desktop->opened(), QList<QUrl>({productGuideUrl(QLatin1String(kProductGuideUrl)),
                                                   QUrl(QLatin1String(kSupportUrl))}));

        app.ClickAbout(nullptr);
        app.ClickAbout(nullptr);  // a second click leaves it shown
        QVERIFY(app.aboutWindow->isVisible());
        app.mainWindow()->show();
        app.startProgreess();
        QVERIFY(app.progressIndicator->isVisible());
        app.endProgress();
        QVERIFY(!app.progressIndicator->isVisible());
    }

    void activityPaneShowsUserLinesAndDetailsOnDemand() {
        ActivityLog::install();
        MainWindow* window = launch().mainWindow();
        window->show();
        // Hidden until the user opens it from the View menu.
        QVERIFY(window->activityDock()->isHidden());
        window->activityDock()->toggleViewAction()->trigger();
        QVERIFY(window->activityDock()->isVisible());
        qCInfo(lcTagsmithUser) << "user line";
        qCInfo(lcTagsmith) << "diagnostic line";
        qCWarning(lcTagsmith) << "warning line";
        ActivityView* pane = window->activityView();
        QTRY_VERIFY(pane->text().contains("warning line"));
        QVERIFY(pane->text().contains("user line"));
        QVERIFY(!pane->text().contains("diagnostic line"));
        pane->detailsSwitch()->click();
        QVERIFY(pane->text().indexOf("user line") < pane->text().indexOf("diagnostic line"));
        pane->detailsSwitch()->click();
        QVERIFY(!pane->text().contains("diagnostic line"));
    }

    void windowStateIsKeptAndPulledOnScreen() {
        MainWindow* window = launch().mainWindow();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QRect placed(screen.left() + 20, screen.top() + 30, 500, 400);
        window->setGeometry(placed);
        window->show();  // the splitter's sizes need a laid-out window
        window->splitter()->setSizes({150, 350});
        const QList<int> sizes = window->splitter()->sizes();
        window->dragTable()->horizontalHeader()->resizeSection(0, 333);
        m_ui->app->saveWindowState();
        window = launch().mainWindow();
        window->show();
        QCOMPARE(window->geometry(), placed);
        QCOMPARE(window->splitter()->sizes(), sizes);
        QCOMPARE(window->dragTable()->horizontalHeader()->sectionSize(0), 333);
        // Kept far off the screen, and larger than it: back inside.
        window->setGeometry(screen.right() + 3000, screen.bottom() + 2000, screen.width() + 9, 300);
        m_ui->app->saveWindowState();
        QVERIFY(screen.contains(launch().mainWindow()->geometry()));
    }

    void keyboardAloneFindsSelectsOpensAndRemoves() {
        AppDelegate& app = launch();
        const QStringList files = listMovies(app, {"alpha.mp4", "beta.mp4", "Gamma.mov"});
        MainWindow* window = app.mainWindow();
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        PRDragTableView* table = app.dragtableView;
        QLineEdit* find = window->filterField();
        QTest::keyClick(window, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(find->hasFocus());
        QTest::keyClicks(find, "GAM");
        QCOMPARE(app.numberOfRowsInTableView(), 1);
        // Delete in a field is the field's: the list keeps its rows.
        QTest::keyClick(find, Qt::Key_Delete);
        QTest::keyClick(find, Qt::Key_Escape);
        QCOMPARE(app.numberOfRowsInTableView(), 3);
        QVERIFY(table->hasFocus());
        // Enter goes to the panel's fields; Delete and Select All take rows
        // off the list, never the files.
        QTest::keyClick(table, Qt::Key_Home);
        QTest::keyClick(table, Qt::Key_Return);
        QVERIFY(window->videoPanel()->isAncestorOf(QApplication::focusWidget()));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(app.numberOfRowsInTableView(), 2);
        QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(app.numberOfRowsInTableView(), 0);
        for (const QString& file : files) QVERIFY(QFileInfo::exists(file));
    }

    void everyControlHasANameAndATooltip() {
        AppDelegate& app = launch();
        listMovies(app, {"clip.mp4"});
        m_ui->selectRow(0);
        // The window with every panel, page and window it owns, shown or not,
        // and the batch dialogs, which are modal: walked while open.
        int walked = 0;
        QStringList unnamed = unnamedControls(app.mainWindow(), &walked);
        for (const auto open :
             {&AppDelegate::ShowRenameWindowAction, &AppDelegate::EditvideofileDateInfoAction}) {
            QTimer walker;
            connect(&walker, &QTimer::timeout, [&] {
                if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                    unnamed << unnamedControls(dialog, &walked);
                    dialog->reject();
                }
            });
            walker.start(10);
            (app.*open)(nullptr);
        }
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join('\n')));
        QVERIFY2(walked > 60, qPrintable(QString::number(walked)));
    }

    void shuttingDownDuringAnImport() {
        MediaFixture media;
        QString error;
        if (!media.make(&error)) QSKIP(qPrintable(error));
        AppDelegate& app = launch();
        QVERIFY(app.tableViewAcceptDrop({media.folder(), media.folder(), media.folder()}));
        QVERIFY(app.importRunning());
        QTest::qWait(5);
        // The controller goes away while threads still read: they are stopped
        // and waited for, and nothing reaches the dead controller.
        m_ui->app.reset();
        QCOMPARE(AppDelegate::GetAppDelegater(), nullptr);
    }

    // The user guide's pictures of the real window, written into the folder
    // TAGSMITH_GUIDE_IMAGES names (the guide_screenshots test).
    void userGuideScreenshots() {
        const QString out = qEnvironmentVariable("TAGSMITH_GUIDE_IMAGES");
        if (out.isEmpty()) QSKIP("TAGSMITH_GUIDE_IMAGES is not set");
        MediaFixture media;
        QString error;
        if (!media.make(&error)) QSKIP(qPrintable(error));
        const QString photos = media.root() + "/photos";
        QVERIFY(QDir().mkpath(out) && QDir().mkpath(photos));
        QImage picture(640, 480, QImage::Format_RGB32);
        QPainter(&picture).fillRect(picture.rect(), QLinearGradient(0, 0, 640, 480));
        QVERIFY(picture.save(photos + "/harbour.jpg"));

        AppDelegate& app = launch();
        MainWindow* window = app.mainWindow();
        window->resize(1200, 760);
        window->show();
        const auto shoot = [&](QWidget* widget, const char* name) {
            QCoreApplication::processEvents();
            const QPixmap shot = widget->grab();
            QVERIFY(shot.width() > 100 && shot.save(out + "/" + name));
        };
        QVERIFY(m_ui->importAndWait({media.folder()}));
        m_ui->selectRow(0);
        QTRY_VERIFY(app.videoMetaView->isVisible());
        shoot(window, "main-window.png");
        shoot(app.videoMetaView, "video-panel.png");
        app.ShowPreferenceSetting(nullptr);
        shoot(app.preferencesWindow, "preferences.png");
        app.CancelPreferenceSetting(nullptr);

        app.ChangeToImportComputerPhoto(nullptr);
        QVERIFY(app.photoViewAcceptDrop({photos}));
        QTRY_VERIFY_WITH_TIMEOUT(!app.importRunning(), 60000);
        PhotoBrowserView* browser = app.localImageBrowserView;
        QTRY_COMPARE(browser->photoModel()->thumbnailCount(), 1);
        browser->selectItem(browser->photoModel()->content().first());
        QTRY_VERIFY(app.shownPhoto());
        shoot(window, "photos.png");
    }

    void updateWindowsShowWhatTheDocumentSays() {
        const auto document = [](const char* version) {
            return QUrl(QStringLiteral("data:application/xml,<plist><dict><key>lastestVersion</"
                                       "key><string>%1</string><key>WhatsNew</key><string>"
                                       "*Fixed crash*Faster import</string></dict></plist>")
                            .arg(QLatin1String(version)));
        };
        const QUrl download(QStringLiteral("https://tagsmith.example/download"));
        const auto run = [](PRUpdateController& c, bool asked) {
            QSignalSpy done(&c, &PRUpdateController::checkFinished);
            c.currentVersion = QStringLiteral("2.0");
            asked ? c.CheckforUpdateAction() : c.checkServerVersion();
            QVERIFY(done.wait());
        };
        PRUpdateController newer(document("2.0.1"), download, nullptr);
        run(newer, false);
        QVERIFY(newer.updateWindow->isVisible());
        QCOMPARE(newer.newversionlab->text(), "Brimlark Photo Stampel 2.0.1 is available.");
        QCOMPARE(newer.whatsnewContentView->document()->blockCount(), 3);
        newer.downloadButton->click();
        QCOMPARE(m_desktop->opened(), QList<QUrl>{download});
        // The same version: the window saying so only when the user asked.
        PRUpdateController same(document("2.0"), download, nullptr);
        run(same, false);
        QVERIFY(!same.noUpdateWindow->isVisible() && !same.updateWindow->isVisible());
        run(same, true);
        QVERIFY(same.noUpdateWindow->isVisible());
        PRUpdateController broken(QUrl(QStringLiteral("data:,not a list")), download, nullptr);
        run(broken, true);
        QVERIFY(!broken.noUpdateWindow->isVisible() && !broken.updateWindow->isVisible());
    }

    // The window walked in English and again in German: every text of the
    // views, panels, menus and dialogs must change, unless German says it
    // the same way. The German window is saved as german-main-window.png.
    void germanInterfaceLeavesNoEnglishText() {
        MediaFixture media;
        QString error;
        if (!media.make(&error)) QSKIP(qPrintable(error));
        const Texts english = walkWindow(media.folder());
        const auto removeTranslations = qScopeGuard([] {
            for (QTranslator* t : qApp->findChildren<QTranslator*>()) delete t;
        });
        QVERIFY(installTranslations(*qApp, QLocale(QLocale::German, QLocale::Germany)));
        const Texts german = walkWindow(media.folder());
        // Words German shares, format patterns, template tags and file names.
        static const QRegularExpression same(
            "^ ?&?(Tagsmith|OK|GPS|EXIF|Exif|XMP|Album|Band|Bitrate|Computer|Copyright|Details|"
            "Import/Export|Minute|Pause|Position|Tags|Version[0-9. ]*)?:? ?$|^[-YMDHSmsdhyxX0-9:/. "
            "_%]*$|"
            "^\\{[^}]+\\}:?$|^[\\w .-]+\\.(mov|mp4|m4v|mkv)$");
        QStringList left;
        for (auto it = english.cbegin(); it != english.cend(); ++it)
            if (!german.contains(it.key()) ||
                (german[it.key()] == *it && !same.match(*it).hasMatch()))
                left << it.key() + " = " + *it;
        QVERIFY2(left.isEmpty(), qPrintable("untranslated:\n" + left.join('\n')));
    }

private:
    using Texts = QMap<QString, QString>;  // where it stands -> text

    static void collect(const QString& step, QWidget* root, Texts& out) {
        QList<QWidget*> widgets = root->findChildren<QWidget*>();
        widgets.prepend(root);
        for (int i = 0; i < widgets.size(); ++i) {
            QWidget* w = widgets[i];
            const QString at = QStringLiteral("%1/%2 %3#%4 ")
                                   .arg(step)
                                   .arg(i)
                                   .arg(w->metaObject()->className(), w->objectName());
            auto put = [&](const QString& what, const QString& text) {
                if (!text.trimmed().isEmpty()) out.insert(at + what, text);
            };
            if (w->isWindow() || qobject_cast<QDockWidget*>(w)) put("title", w->windowTitle());
            put("tooltip", w->toolTip());
            if (auto* l = qobject_cast<QLabel*>(w); l && l->objectName() != "showFontlab")
                put("text", l->text());
            if (auto* b = qobject_cast<QAbstractButton*>(w)) put("text", b->text());
            if (auto* e = qobject_cast<QLineEdit*>(w)) put("placeholder", e->placeholderText());
            if (auto* m = qobject_cast<QMenu*>(w)) put("title", m->title());
            if (auto* c = qobject_cast<QComboBox*>(w))
                for (int n = 0; n < c->count(); ++n) put(QString("item %1").arg(n), c->itemText(n));
            if (auto* h = qobject_cast<QHeaderView*>(w); h && h->model())
                for (int n = 0; n < h->count(); ++n)
                    put(QString("header %1").arg(n),
                        h->model()->headerData(n, h->orientation()).toString());
            for (int n = 0; n < w->actions().size(); ++n) {
                put(QString("action %1").arg(n), w->actions()[n]->text());
                put(QString("action tip %1").arg(n), w->actions()[n]->toolTip());
            }
        }
    }

    // A fresh window with a video row: its views (Ctrl+1, 2, 3), the alert of
    // an empty selection, the batch dialogs and the exit question.
    Texts walkWindow(const QString& media) {
        Texts texts;
        AppDelegate& app = launch();
        MainWindow* window = app.mainWindow();
        window->show();
        auto modal = [&](const QString& step, auto open) {
            QTimer::singleShot(0, [&] {
                if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                    collect(step, dialog, texts);
                    dialog->reject();
                }
            });
            open();
        };
        modal("nothing selected", [&] { app.ShowRenameWindowAction(nullptr); });
        if (!m_ui->importAndWait({media})) return {};
        m_ui->selectRow(0);
        for (const auto key : {Qt::Key_2, Qt::Key_3, Qt::Key_1}) {
            QTest::keyClick(window, key, Qt::ControlModifier);
            collect(QString("view %1").arg(key - Qt::Key_0), window, texts);
        }
        modal("rename", [&] { app.ShowRenameWindowAction(nullptr); });
        modal("dates", [&] { app.EditvideofileDateInfoAction(nullptr); });
        std::unique_ptr<QMessageBox> question(app.makeExitAlert(nullptr));
        collect("exit", question.get(), texts);
        window->resize(1180, 740);  // the offscreen screen is narrower than a desktop
        window->grab().save(QCoreApplication::applicationDirPath() + "/german-main-window.png");
        return texts;
    }

    AppDelegate& launch() { return m_ui->launch(); }
    // Empty files listed as movies, without an import.
    QStringList listMovies(AppDelegate& app, const QStringList& names) {
        QStringList files;
        for (const QString& name : names) {
            files << m_ui->dir.filePath(name);
            QFile(files.last()).open(QIODevice::WriteOnly);
            auto item = std::make_shared<IKImageItem>();
            item->filePath = files.last();
            item->fileName = name;
            app.localPhotoItemArray << item;
        }
        app.LoadImportedMediasonMainThread();
        return files;
    }
    RecordingDesktopIntegration* m_desktop = nullptr;
    std::unique_ptr<UiSession> m_ui;
};

QTEST_MAIN(ShellTest)
#include "shell_test.moc"
