// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's view of what the user sees: the highlighted rows and the
// records behind them, the panel showing one of them, its unsaved edits, and
// the questions asked before edits or running work would be lost.
#include <QItemSelectionModel>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSet>
#include <QTimer>

#include "app/app_delegate.h"
#include "core/audio/audio_writers.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/video/video_writers.h"
#include "ui/audio/audio_panel.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/main_window.h"
#include "ui/video/video_meta_view.h"

namespace {
// The panel's texts and picture, as the user can change them.
bool sameEdits(const VideoEditorState& a, const VideoEditorState& b) {
    static constexpr QString VideoEditorState::*kTexts[] = {
        &VideoEditorState::mediaTitle,       &VideoEditorState::mediaAlumArtis,
        &VideoEditorState::mediaArtist,      &VideoEditorState::mediaMake,
        &VideoEditorState::mediaModel,       &VideoEditorState::mediaProducer,
        &VideoEditorState::mediaCreatedDate, &VideoEditorState::mediaShootDate,
        &VideoEditorState::mediaReleaseYear, &VideoEditorState::mediaCopyright,
        &VideoEditorState::mediaSoftware,    &VideoEditorState::mediakeywords,
        &VideoEditorState::mediaLatitude,    &VideoEditorState::mediaLongtitude,
        &VideoEditorState::mediaAatitude,
    };
    for (const auto text : kTexts) {
        if (a.*text != b.*text) return false;
    }
    return a.imageIsPlaceholder == b.imageIsPlaceholder && a.mediaImage == b.mediaImage;
}

bool sameEdits(const AudioEditorState& a, const AudioEditorState& b) {
    static constexpr QString AudioEditorState::*kTexts[] = {
        &AudioEditorState::titlelab,      &AudioEditorState::subtitlelab,
        &AudioEditorState::abulmlab,      &AudioEditorState::artistlab,
        &AudioEditorState::ablumAristlab, &AudioEditorState::composerlab,
        &AudioEditorState::recordDatelab, &AudioEditorState::releaseYearlab,
        &AudioEditorState::copyrightlab,  &AudioEditorState::publishlab,
        &AudioEditorState::bandlab,       &AudioEditorState::commentslab,
        &AudioEditorState::lyricslab,     &AudioEditorState::createdDatelab,
    };
    for (const auto text : kTexts) {
        if (a.*text != b.*text) return false;
    }
    return a.imageChanged == b.imageChanged && a.audioArtImage == b.audioArtImage;
}
}  // namespace

IKImageItemList AppDelegate::highlightedItems() const {
    IKImageItemList items;
    for (int row : selectedContentRows()) {
        if (const IKImageItemPtr item = mediaController->itemAt(row)) items << item;
    }
    return items;
}

IKImageItemList AppDelegate::selectedItems() const {
    if (!classicBehaviour) return highlightedItems();
    // Classic: the row numbers are taken against the list in import order,
    // whatever order the table shows.
    // (The table lists the list's videos and audio; photos are in the browser.)
    const IKImageItemList listed = mediaListItems();
    IKImageItemList items;
    for (int row : selectedContentRows()) {
        if (row >= 0 && row < listed.size()) items << listed.at(row);
    }
    return items;
}

void AppDelegate::selectItems(const IKImageItemList& items, const IKImageItemPtr& current) {
    QSet<const IKImageItem*> wanted;
    for (const IKImageItemPtr& item : items) wanted.insert(item.get());
    const IKImageItemList& content = mediaController->content();
    const int lastColumn = mediaController->columnCount() - 1;
    QItemSelection selection;
    QModelIndex currentIndex;
    for (int row = 0; row < content.size(); ++row) {
        const IKImageItem* item = content.at(row).get();
        if (current && item == current.get()) currentIndex = mediaController->index(row, 0);
        if (!wanted.contains(item)) continue;
        // Neighbouring rows make one range.
        int last = row;
        while (last + 1 < content.size() && wanted.contains(content.at(last + 1).get())) {
            ++last;
            if (current && content.at(last).get() == current.get())
                currentIndex = mediaController->index(last, 0);
        }
        selection.select(mediaController->index(row, 0), mediaController->index(last, lastColumn));
        row = last;
    }
    QItemSelectionModel* model = dragtableView->selectionModel();
    {
        const QScopedValueRollback<bool> restoring(m_restoringSelection, true);
        if (currentIndex.isValid())
            model->setCurrentIndex(currentIndex, QItemSelectionModel::NoUpdate);
        model->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    m_lastSelection = highlightedItems();
}

void AppDelegate::tableViewSelectionDidChange() {
    if (m_restoringSelection) return;
    const QList<int> rows = selectedContentRows();
    const IKImageItemPtr item = rows.isEmpty() ? nullptr : mediaController->itemAt(rows.first());
    // Nothing selected, or the shown record still first: the panel stays as
    // it is, unsaved edits included.
    if (!item || item == m_shownItem) {
        m_lastSelection = highlightedItems();
        return;
    }
    if (hasUnsavedEdits()) {
        // Asked once the table has finished its own selection work (a click
        // may still be under way).
        if (!m_leavePending) {
            m_leavePending = true;
            QTimer::singleShot(0, this, &AppDelegate::answerLeavingEditedRow);
        }
        return;
    }
    m_lastSelection = highlightedItems();
    showItem(item);
}

void AppDelegate::answerLeavingEditedRow() {
    m_leavePending = false;
    const QList<int> rows = selectedContentRows();
    const IKImageItemPtr item = rows.isEmpty() ? nullptr : mediaController->itemAt(rows.first());
    if (!item || item == m_shownItem) return;
    if (hasUnsavedEdits()) {
        switch (askAboutUnsavedEdits()) {
            case UnsavedAnswer::Cancel:
                // Back to the rows that were highlighted with the shown record
                // (or to that record alone); the panel is untouched.
                selectItems(m_lastSelection.contains(m_shownItem) ? m_lastSelection
                                                                  : IKImageItemList{m_shownItem},
                            m_shownItem);
                return;
            case UnsavedAnswer::Save:
                saveEdits({m_shownItem});
                break;
            case UnsavedAnswer::Discard:
                qCInfo(lcTagsmith) << "unsaved edits discarded ==" << m_shownItem->filePath;
                break;
        }
    }
    m_lastSelection = highlightedItems();
    showItem(item);
}

void AppDelegate::showItem(const IKImageItemPtr& item) {
    // One panel shows the record; the other is hidden and stops playing.
    if (isAudioPath(item->filePath)) {
        audioContentView->show();
        videoMetaView->hide();
        ShowAudioViewWithItem(item);
    } else if (isVideoPath(item->filePath)) {
        videoMetaView->show();
        audioContentView->hide();
        ShowVideoViewWithItem(item);
    }
    m_window->updateContentPlaceholder();
}

void AppDelegate::markPanelSaved() {
    *m_panelBaseline = videoMetaView->editorState();
    *m_audioBaseline = audioContentView->editorState();
}

bool AppDelegate::hasUnsavedEdits() const {
    if (photoEditsUnsaved()) return true;
    if (!m_shownItem || m_shownItem->filePath.isEmpty()) return false;
    if (audioPanelShown()) return !sameEdits(audioContentView->editorState(), *m_audioBaseline);
    if (videoMetaView->isHidden()) return false;
    return !sameEdits(videoMetaView->editorState(), *m_panelBaseline);
}

bool AppDelegate::exportRunning() const {
    // Queued exports keep a thread of the pool busy until the queue is empty.
    return m_exportPool.activeThreadCount() > 0;
}

QAbstractButton* AppDelegate::ask(QMessageBox& question) {
    if (m_answerer) return m_answerer(question);
    if (m_quietAlerts) {
        // Logged, and answered as its escape button would be.
        qCInfo(lcTagsmith).noquote()
            << question.text() << "== answered"
            << (question.escapeButton() ? question.escapeButton()->text() : QString());
        return question.escapeButton();
    }
    question.exec();
    return question.clickedButton();
}

AppDelegate::UnsavedAnswer AppDelegate::askAboutUnsavedEdits(const IKImageItemPtr& named) {
    QMessageBox question(m_window);
    question.setIcon(QMessageBox::Warning);
    const IKImageItemPtr shown = named ? named : photoEditsUnsaved() ? m_shownPhoto : m_shownItem;
    question.setText(tr("Do you want to save the changes you made to \"%1\"?")
                         .arg(shown ? shown->fileName : QString()));
    question.setInformativeText(tr("Your changes will be lost if you don't save them."));
    QPushButton* save = question.addButton(tr(" Save "), QMessageBox::AcceptRole);
    QPushButton* discard = question.addButton(tr(" Discard "), QMessageBox::DestructiveRole);
    QPushButton* cancel = question.addButton(tr("Cancel"), QMessageBox::RejectRole);
    question.setDefaultButton(save);
    question.setEscapeButton(cancel);
    QAbstractButton* answer = ask(question);
    if (answer == save) return UnsavedAnswer::Save;
    if (answer == discard) return UnsavedAnswer::Discard;
    return UnsavedAnswer::Cancel;
}

bool AppDelegate::confirmQuit(bool fromMenu) {
    // The photo panel keeps its edits behind the Media view: they are asked
    // about there too, unless the media panel on show has edits of its own.
    const bool photoEdits = photoPanelEdited() && (photoMode() || !hasUnsavedEdits());
    if (photoEdits || hasUnsavedEdits()) {
        switch (askAboutUnsavedEdits(photoEdits ? m_shownPhoto : nullptr)) {
            case UnsavedAnswer::Cancel:
                return false;
            case UnsavedAnswer::Save:
                // The export runs on; quitting waits for it.
                if (photoEdits)
                    applyPhotoEdits({m_shownPhoto});
                else
                    saveEdits({m_shownItem});
                return true;
            case UnsavedAnswer::Discard:
                return true;
        }
    }
    const bool tools = videoToolsRunning();
    if (importRunning() || exportRunning() || tools) {
        QMessageBox question(m_window);
        question.setIcon(QMessageBox::Warning);
        question.setText(tr("Files are still being imported or written."));
        question.setInformativeText(
            tools ? tr("Exiting stops the imports and the video tools, whose unfinished files "
                       "are removed; other files being written are finished first.")
                  : tr("Exiting stops the imports; files being written are finished first."));
        QPushButton* exit = question.addButton(tr(" Exit "), QMessageBox::AcceptRole);
        QPushButton* cancel = question.addButton(tr("Cancel"), QMessageBox::RejectRole);
        question.setDefaultButton(cancel);
        question.setEscapeButton(cancel);
        const bool leave = ask(question) == exit;
        if (leave) cancelVideoTools();
        return leave;
    }
    if (!fromMenu) return true;
    QPushButton* exitButton = nullptr;
    std::unique_ptr<QMessageBox> alert(makeExitAlert(&exitButton));
    return ask(*alert) == exitButton;
}
