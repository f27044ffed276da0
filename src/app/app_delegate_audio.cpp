// SPDX-License-Identifier: GPL-3.0-or-later
// The controller's audio subject: the audio panel with its remembered values
// and group flags, saving audio files and removing their metadata.
#include "app/app_delegate.h"
#include "core/app/user_defaults.h"
#include "core/audio/audio_writers.h"
#include "core/library/media_kinds.h"
#include "core/video/video_file_ops.h"
#include "ui/audio/audio_panel.h"
#include "ui/shell/toolbar_button.h"

namespace {
// The controller's remembered values and their places in an editor state.
// (`oldAlbumArtistStr` holds the album-artist box, which is the track number.)
const std::pair<QString AppDelegate::*, QString AudioEditorState::*> kRemembered[] = {
    {&AppDelegate::oldTitleStr, &AudioEditorState::oldTitleStr},
    {&AppDelegate::oldSubtitleStr, &AudioEditorState::oldSubtitleStr},
    {&AppDelegate::oldAlbumStr, &AudioEditorState::oldAlbumStr},
    {&AppDelegate::oldArtistStr, &AudioEditorState::oldArtistStr},
    {&AppDelegate::oldAlbumArtistStr, &AudioEditorState::oldAlbumArtistStr},
    {&AppDelegate::oldComposerStr, &AudioEditorState::oldComposerStr},
    {&AppDelegate::oldRecordDateStr, &AudioEditorState::oldRecordDateStr},
    {&AppDelegate::oldReleaseYearStr, &AudioEditorState::oldReleaseYearStr},
    {&AppDelegate::oldCopyrightStr, &AudioEditorState::oldCopyrightStr},
    {&AppDelegate::oldPublisherStr, &AudioEditorState::oldPublisherStr},
    {&AppDelegate::oldBandStr, &AudioEditorState::oldBandStr},
    {&AppDelegate::oldCommentStr, &AudioEditorState::oldCommentStr},
    {&AppDelegate::oldLyricStr, &AudioEditorState::oldLyricStr},
    {&AppDelegate::oldCreateDateStr, &AudioEditorState::oldCreateDateStr},
};

// A record's own picture, as the editor would show it untouched.
void keepOwnArtwork(AudioEditorState& state, const IKImageItem& item) {
    const AudioEditorState own = audioEditorStateFor(item);
    state.audioArtImage = own.audioArtImage;
    state.imageIsPlaceholder = own.imageIsPlaceholder;
    state.imageChanged = false;
}
}  // namespace

void AppDelegate::ShowAudioViewWithItem(const IKImageItemPtr& item) {
    const IKImageItemPtr shown = item ? item : std::make_shared<IKImageItem>();
    const AudioEditorState state = audioEditorStateFor(*shown);
    // What the panel shows now is what the writers compare against.
    for (const auto& [mine, theirs] : kRemembered) this->*mine = state.*theirs;
    basicInfoChange = false;
    cameraInfoChange = false;
    audioContentView->ShowAudioViewWithItem(shown, state);
    m_shownItem = shown;
    markPanelSaved();
}

AudioEditorState AppDelegate::audioEditorState() const {
    AudioEditorState s = audioContentView->editorState();
    for (const auto& [mine, theirs] : kRemembered) s.*theirs = this->*mine;
    s.basicInfoChange = basicInfoChange;
    s.cameraInfoChange = cameraInfoChange;
    return s;
}

bool AppDelegate::audioPanelShown() const {
    return m_shownItem && isAudioPath(m_shownItem->filePath);
}

void AppDelegate::saveEdits(const IKImageItemList& items) {
    // The panel on show decides which files its edits are for.
    if (audioPanelShown())
        saveAudioEdits(items);
    else
        saveVideoEdits(items);
}

void AppDelegate::runAudioWriteLater(std::function<AudioWriteResult(OutputBatch&)> write,
                                     const Batch& batch) {
    // As the video writers: the command returns at once, the copy is written
    // on a worker and the result told on the main thread.
    m_exportPool.start([this, write = std::move(write), batch] {
        const AudioWriteResult result = write(*batch);
        QMetaObject::invokeMethod(this, [this, result] { reportWrite(result); });
    });
}

void AppDelegate::saveAudioEdits(const IKImageItemList& items) {
    if (items.isEmpty()) return;
    ensureFolder(storagelocation);
    const AudioEditorState editor = audioEditorState();
    const StorageContext storage = storageContext();
    if (items.contains(m_shownItem)) markPanelSaved();
    const Batch batch = std::make_shared<OutputBatch>();
    for (const IKImageItemPtr& item : items) {
        if (!isAudioPath(item->filePath)) {
            if (isVideoPath(item->filePath))
                reportWrite(VideoWriteResult::skippedFile(
                    item->filePath, tr("the panel's edits are for audio files")));
            continue;
        }
        // Each other file gets only the fields the user changed (the writers
        // compare with the remembered values); its picture stays its own.
        AudioEditorState forItem = editor;
        if (item != m_shownItem) keepOwnArtwork(forItem, *item);
        const IKImageItem record = *item;
        runAudioWriteLater(
            [record, forItem, storage](OutputBatch& b) {
                return saveAudioItem(record, forItem, storage, b);
            },
            batch);
    }
}

void AppDelegate::removeAudioMetadataOf(const IKImageItemPtr& item, const Batch& batch) {
    // The panel's boxes count for the record it shows; any other file is
    // treated as shown untouched.
    const AudioEditorState editor =
        item == m_shownItem && audioPanelShown() ? audioEditorState() : audioEditorStateFor(*item);
    const IKImageItem record = *item;
    const StorageContext storage = storageContext();
    runAudioWriteLater(
        [record, editor, storage](OutputBatch& b) {
            return removeAudioMetadata(record, editor, storage, b);
        },
        batch);
}

void AppDelegate::setupAudioActions() {
    connect(audioContentView, &AudioPanel::basicFieldEdited, this,
            [this] { basicInfoChange = true; });
    connect(audioContentView, &AudioPanel::cameraFieldEdited, this,
            [this] { cameraInfoChange = true; });
    connect(audioContentView, &AudioPanel::saveRequested, this,
            [this] { MybuttonMouseDownHandle(SaveMediaChangesBtn); });
}
