// SPDX-License-Identifier: GPL-3.0-or-later
// The real main window, offscreen: a folder imported through the drop path,
// the table's column sorts, selection and removal.
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QSignalSpy>

#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "support/media_fixture.h"
#include "ui/library/media_open_dialog.h"
#include "ui/video/video_meta_view.h"
#include "ui_session.h"

namespace {
QStringList namesOf(const IKImageItemList& items) {
    QStringList names;
    for (const auto& item : items) names << item->fileName;
    return names;
}

QStringList sortedNames(QStringList names, bool descending) {
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    if (descending) std::reverse(names.begin(), names.end());
    return names;
}
}  // namespace

class LibraryTest : public QObject {
    Q_OBJECT
    MediaFixture m_media;
    UiSession m_ui;
    AppDelegate* m_app = nullptr;

    QString media(const char* name) const { return m_media.folder() + '/' + name; }
    QStringList shownNames() const { return namesOf(m_app->mediaController->content()); }
    // Sorts by name (Z to A, or A to Z where that is import order) and
    // answers the first row whose record is not the one at that place in
    // import order.
    int rowOffImportOrder() {
        m_app->columnSortFlags[size_t(MediaColumn::Name)] = false;
        clickHeader(MediaColumn::Name);
        const IKImageItemList& listed = m_app->localPhotoItemArray;
        if (m_app->mediaController->content() == listed) clickHeader(MediaColumn::Name);
        int row = 0;
        while (row < listed.size() && m_app->mediaController->itemAt(row) == listed.at(row)) ++row;
        return row;
    }
    void clickHeader(MediaColumn column) {
        QHeaderView* header = m_app->dragtableView->horizontalHeader();
        const int section = int(column);
        const QPoint at(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                        header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
    }

private Q_SLOTS:
    void initTestCase() {
        QString error;
        if (!m_media.make(&error)) QSKIP(qPrintable(error));
        ActivityLog::install();
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
        m_app = &m_ui.launch("out");
        m_app->mainWindow()->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_app->mainWindow()));
    }
    void cleanupTestCase() { m_ui.app.reset(); }

    void dropValidation() {
        // Judged by the first path only: a folder, a video or an audio file.
        QVERIFY(m_app->tableViewValidateDrop({m_media.folder()}));
        QVERIFY(m_app->tableViewValidateDrop({media("zebra.mkv")}));
        QVERIFY(m_app->tableViewValidateDrop({"/nowhere/song.Flac"}));
        QVERIFY(!m_app->tableViewValidateDrop({"/x/photo.jpg", media("zebra.mkv")}));
        QVERIFY(!m_app->tableViewValidateDrop({media("notes.txt")}));
        QVERIFY(!m_app->tableViewValidateDrop({}));
        QVERIFY(!m_app->mainWindow()->listShown());  // the hint shows while the list is empty
    }

    void importFolderThroughDropPath() {
        QSignalSpy refreshes(m_app->mediaController, &QAbstractItemModel::modelReset);
        QVERIFY(m_ui.importAndWait({m_media.folder()}));
        // The table was refreshed for every file of the folder, not once at its
        // end. Which files: MediaImportTest.FolderScan*.
        QVERIFY(refreshes.count() >= m_media.mediaCount());
        QCOMPARE(m_app->numberOfRowsInTableView(), m_media.mediaCount());
        QCOMPARE(shownNames(), namesOf(m_app->localPhotoItemArray));
        QVERIFY(m_app->bImportLocalFolder && m_app->mainWindow()->listShown());
        QCOMPARE(m_app->bImportLocalPath, m_media.root());
        for (const auto& item : m_app->localPhotoItemArray) {
            QVERIFY2(!item->fileSize.isEmpty(), qPrintable(item->fileName));
            QVERIFY(item->fileduration > 0.5);
        }
        QVERIFY(ActivityLog::instance().lines().join('\n').contains("urls=="));
    }

    void headerClicksSortTheContentOnly() {
        const QStringList importOrder = namesOf(m_app->localPhotoItemArray);
        // First click on a text column: Z to A; second: A to Z.
        clickHeader(MediaColumn::Name);
        QCOMPARE(shownNames(), sortedNames(importOrder, true));
        QHeaderView* header = m_app->dragtableView->horizontalHeader();
        QCOMPARE(std::pair(header->sortIndicatorSection(), header->sortIndicatorOrder()),
                 std::pair(int(MediaColumn::Name), Qt::DescendingOrder));
        const QModelIndexList selected = m_app->dragtableView->selectionModel()->selectedRows();
        QVERIFY(selected.size() == 1 && selected.first().row() == 0);
        clickHeader(MediaColumn::Name);
        QCOMPARE(shownNames(), sortedNames(importOrder, false));
        QCOMPARE(namesOf(m_app->localPhotoItemArray), importOrder);
    }

    void sizeSortFollowsClassicBehaviour() {
        // First click on Size: small to large. Sizes in different units: the byte
        // count puts 107.63 KB before 34.43 MB; the classic key reads the number
        // before the unit's last letter ("512 bytes" counts 512 x 10^12).
        const IKImageItemList items = m_app->localPhotoItemArray;
        QCOMPARE(items.size(), 4);
        const std::pair<QString, qint64> sizes[] = {
            {"107.63 KB", 107630}, {"34.43 MB", 34430000}, {"512 bytes", 512}, {"", 0}};
        QList<std::pair<QString, qint64>> kept;
        for (int i = 0; i < 4; ++i) {
            kept.append({items[i]->fileSize, items[i]->fileSizeBytes});
            std::tie(items[i]->fileSize, items[i]->fileSizeBytes) = sizes[i];
        }
        for (const bool classic : {false, true}) {
            m_app->classicBehaviour = classic;
            m_app->columnSortFlags[size_t(MediaColumn::Size)] = false;
            clickHeader(MediaColumn::Size);  // small to large
            QCOMPARE(m_app->dragtableView->horizontalHeader()->sortIndicatorOrder(),
                     Qt::AscendingOrder);
            QStringList order;
            for (const auto& item : m_app->mediaController->content()) order << item->fileSize;
            QCOMPARE(order, classic ? QStringList({"", "34.43 MB", "107.63 KB", "512 bytes"})
                                    : QStringList({"", "512 bytes", "107.63 KB", "34.43 MB"}));
        }
        m_app->classicBehaviour = false;
        for (int i = 0; i < 4; ++i) std::tie(items[i]->fileSize, items[i]->fileSizeBytes) = kept[i];
    }

    // Removal takes the highlighted row's record, not the record at that place
    // in import order (the classic row numbers: VideoSaveTest, which shares
    // the selection with removal).
    void removalActsOnTheHighlightedRow() {
        const IKImageItemList before = m_app->localPhotoItemArray;
        const int row = rowOffImportOrder();
        QVERIFY(row < before.size());
        const IKImageItemPtr shown = m_app->mediaController->itemAt(row);
        m_ui.selectRow(row);
        QCOMPARE(m_app->videoMetaView->fileNameText(), shown->fileName);
        m_app->RemoveMediaFileAction(nullptr);
        QCOMPARE(m_app->localPhotoItemArray.size(), before.size() - 1);
        QVERIFY(!m_app->localPhotoItemArray.contains(shown));
        // The content is refilled in import order; the file stays on disk; the
        // video panel is cleared.
        QCOMPARE(shownNames(), namesOf(m_app->localPhotoItemArray));
        QVERIFY(QFileInfo::exists(shown->filePath));
        QCOMPARE(m_app->videoMetaView->fileNameText(), QString());
        QCOMPARE(m_app->videoMetaView->infoLabel("createdDate")->text(), "Created Date:");
        m_app->dragtableView->clearSelection();  // nothing selected, nothing removed
        m_app->RemoveMediaFileAction(nullptr);
        QCOMPARE(m_app->localPhotoItemArray.size(), before.size() - 1);
    }

    void importKeepsTheSelectionAndThePanel() {
        // A record highlighted in the sorted table, edited in the panel, at
        // another row than its place in import order.
        const IKImageItemList listed = m_app->localPhotoItemArray;
        const int row = rowOffImportOrder();
        QVERIFY(listed.size() == 3 && row < 3);
        const IKImageItemPtr chosen = m_app->mediaController->itemAt(row);
        m_ui.selectRow(row);
        QLineEdit* title = m_app->videoMetaView->field("mediaTitle");
        title->setText("Typed, not saved");
        QVERIFY(m_app->hasUnsavedEdits());

        // Another folder, and the same file again (listed twice): the refreshes
        // put the table back in import order, the highlight follows the record
        // and the panel keeps its edits.
        QVERIFY(m_ui.importAndWait({media("nested"), media("zebra.mkv"), "/x/photo.jpg"}));
        QCOMPARE(m_app->localPhotoItemArray.size(), listed.size() + 2);
        QCOMPARE(m_app->localPhotoItemArray.last()->filePath, media("zebra.mkv"));
        QCOMPARE(shownNames(), namesOf(m_app->localPhotoItemArray));
        const QModelIndexList selected = m_app->dragtableView->selectionModel()->selectedRows();
        QCOMPARE(selected.size(), 1);
        QVERIFY(m_app->mediaController->itemAt(selected.first().row()) == chosen);
        QVERIFY(m_app->selectedItems() == IKImageItemList{chosen} && m_app->shownItem() == chosen);
        QCOMPARE(title->text(), "Typed, not saved");

        // Removing everything (the edits dropped) brings the hint back.
        m_ui.answerWith(" Discard ");
        m_app->dragtableView->selectAll();
        m_app->RemoveMediaFileAction(nullptr);
        m_app->setQuestionAnswerer(nullptr);
        QVERIFY(m_app->localPhotoItemArray.isEmpty());
        QVERIFY(!m_app->mainWindow()->listShown());
    }

    void openPanelsListTheirChoices() {
        // The full import from the open panel's end handler.
        m_app->blocalMode = false;
        m_app->openPanelDidEnd1(QDialog::Rejected, {m_media.folder()});
        QVERIFY(!m_app->importRunning());
        m_app->openPanelDidEnd1(QDialog::Accepted, {media("Apple.mov")});
        QVERIFY(m_app->blocalMode);
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->importRunning(), 60000);
        QCOMPARE(m_app->localPhotoItemArray.size(), 1);
        QVERIFY(m_app->localPhotoItemArray.first()->fileduration > 2.5);

        // The quick variant lists names and kinds without reading the files.
        m_app->openPanelDidEnd(QDialog::Accepted, {media("b-clip.mp4"), media("notes.txt")});
        QCOMPARE(m_app->numberOfRowsInTableView(), 3);
        QCOMPARE(
            m_app->localPhotoItemArray.at(1)->fileType + m_app->localPhotoItemArray.at(2)->fileType,
            "MovieImage");
        QVERIFY(m_app->localPhotoItemArray.at(1)->fileSize.isEmpty());
    }

    void openDialogTakesFilesAndFoldersTogether() {
        // Never shown: the selection is made as a user would, then Open pressed.
        MediaOpenDialog dialog(nullptr, "Please select videos or auidos to import.");
        dialog.setDirectory(m_media.folder());
        auto* list = dialog.findChild<QListView*>("listView");
        QVERIFY(list);
        QAbstractItemModel* model = list->model();
        QTRY_VERIFY_WITH_TIMEOUT(model->rowCount(list->rootIndex()) >= 4, 10000);
        for (int r = 0; r < model->rowCount(list->rootIndex()); ++r) {
            const QModelIndex index = model->index(r, 0, list->rootIndex());
            if (index.data().toString() == "nested" || index.data().toString() == "zebra.mkv")
                list->selectionModel()->select(
                    index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QStringList chosen = dialog.chosenPaths();
        chosen.sort();
        QCOMPARE(chosen, QStringList({media("nested"), media("zebra.mkv")}));
    }

    void dragAndDropOnTheTable() {
        m_app->mainWindow()->showList(true);
        QWidget* viewport = m_app->dragtableView->viewport();
        const QPoint at(20, 20);
        auto mimeWith = [](const QStringList& paths) {
            auto mime = std::make_unique<QMimeData>();
            QList<QUrl> urls;
            for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
            mime->setUrls(urls);
            return mime;
        };

        // A drag led by a picture is refused as it enters.
        const auto picture = mimeWith({"/x/photo.jpg", m_media.folder()});
        QDragEnterEvent refused(at, Qt::CopyAction, picture.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &refused);
        QVERIFY(!refused.isAccepted());

        // A folder is welcome; its drop imports it with full reading. The
        // table's own notice of the drop adds nothing by itself.
        const qsizetype before = m_app->localPhotoItemArray.size();
        const auto folder = mimeWith({m_media.folder()});
        QSignalSpy notices(m_app->dragtableView, &PRDragTableView::NSDragOperationMediaNote);
        QDragEnterEvent enter(at, Qt::CopyAction, folder.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &enter);
        QVERIFY(enter.isAccepted() && enter.dropAction() == Qt::CopyAction);
        QDropEvent drop(at, Qt::CopyAction, folder.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &drop);
        QVERIFY(drop.isAccepted() && notices.size() == 1);
        QCOMPARE(m_app->dragtableView->geturlArray(), folder->urls());
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->importRunning(), 60000);
        QCOMPARE(m_app->localPhotoItemArray.size(), before + m_media.mediaCount());
        QVERIFY(!m_app->localPhotoItemArray.last()->fileSize.isEmpty());
    }
};

QTEST_MAIN(LibraryTest)
#include "library_test.moc"
