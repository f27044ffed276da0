// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QWidget>

#include "core/audio/audio_writers.h"
#include "core/library/ik_image_item.h"

class QLabel;
class QLineEdit;
class QMediaPlayer;
class QPushButton;
class QSlider;
class QTableWidget;

// The panel of a selected audio file: the artwork with a way to choose a new
// picture, the ten information lines, a player, the editable fields under
// their historical names and every tag of the file. It shows what the
// controller hands it and answers what the user typed; remembering the old
// values and the group flags is the controller's part.
class AudioPanel : public QWidget {
    Q_OBJECT
public:
    explicit AudioPanel(QWidget* parent = nullptr);
    ~AudioPanel() override;

    // Fills the panel from a record and the editor state made from it. An
    // empty record clears the panel to its bare labels. The record's
    // duration is updated from the player once it knows it.
    void ShowAudioViewWithItem(const IKImageItemPtr& item, const AudioEditorState& state);

    // The texts and picture the user sees now, and whether a new picture was
    // chosen (old values and group flags are left for the controller).
    AudioEditorState editorState() const;

    // Puts a picture the user chose into the artwork view.
    void setChosenArtwork(const QImage& picture);

    // The player is left out where no media back end is wanted (tests).
    static void setPlayerEnabled(bool enabled);

    QLineEdit* field(const QString& outletName) const { return m_fields.value(outletName); }
    QLabel* infoLabel(const QString& name) const { return m_info.value(name); }
    QString fileNameText() const;
    QTableWidget* allTagsView() const { return m_allTags; }
    bool showsPlaceholderArtwork() const { return m_artwork.isNull(); }
    QPushButton* playButton() const { return m_playButton; }

Q_SIGNALS:
    void basicFieldEdited();
    void cameraFieldEdited();
    void artworkChosen();
    void saveRequested();

protected:
    // A hidden panel does not go on playing.
    void hideEvent(QHideEvent* event) override;

private:
    void setArtwork(const QImage& picture);
    void chooseArtwork();
    void startPlayer(const QString& path);
    void playerDurationChanged(qint64 ms);
    void updateInfo();

    QLabel* m_heading = nullptr;
    QHash<QString, QLineEdit*> m_fields;
    QHash<QString, QLabel*> m_info;
    QLabel* audioArtImageView = nullptr;
    QImage m_artwork;
    bool m_imageChanged = false;
    QWidget* m_playerArea = nullptr;
    QMediaPlayer* m_player = nullptr;
    QPushButton* m_playButton = nullptr;
    QSlider* m_seekBar = nullptr;
    QLabel* m_playTime = nullptr;
    QTableWidget* m_allTags = nullptr;
    QLabel* m_noTags = nullptr;
    IKImageItemPtr m_item;
};
