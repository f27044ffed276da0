// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QWidget>

#include <optional>

#include "core/library/ik_image_item.h"
#include "core/video/video_writers.h"

class QLabel;
class QLineEdit;
class QMediaPlayer;
class QPushButton;
class QSlider;
class QStackedLayout;
class QTableWidget;
class QVideoWidget;
class MapView;

// The panel of a selected video: a player, the information lines, the
// artwork, the editable fields under their historical names, the location
// and a map with one pin. It shows what the controller hands it and answers
// what the user typed; remembering the old values is the controller's part.
class VideoMetaView : public QWidget {
    Q_OBJECT
public:
    explicit VideoMetaView(QWidget* parent = nullptr);
    ~VideoMetaView() override;

    // Fills the panel from a record and the editor state made from it. An
    // empty record clears the panel to its bare labels. The record's
    // duration is updated from the player once it knows it.
    void ShowVideoViewWithItem(const IKImageItemPtr& item, const VideoEditorState& state);

    // The texts and picture the user sees now (old values and group flags
    // are left empty for the controller to fill).
    VideoEditorState editorState() const;

    // The player is left out where no media back end is wanted (tests).
    static void setPlayerEnabled(bool enabled);

    QLineEdit* field(const QString& outletName) const { return m_fields.value(outletName); }
    QString fileNameText() const;
    QLabel* infoLabel(const QString& name) const { return m_info.value(name); }
    MapView* mapView() const { return m_map; }
    // Every metadata item of the file, read-only ("All Tags").
    QTableWidget* allTagsView() const { return m_allTags; }
    // The still picture shown in the player until it plays.
    QLabel* posterView() const { return m_poster; }
    QSlider* seekBar() const { return m_seekBar; }
    bool showsPlaceholderArtwork() const { return m_artwork.isNull(); }

Q_SIGNALS:
    void basicFieldEdited();
    void cameraFieldEdited();
    void saveRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    // A hidden panel does not go on playing.
    void hideEvent(QHideEvent* event) override;

private:
    QLineEdit* addField(class QGridLayout* grid, int row, int column, const QString& outlet,
                        const QString& title);
    void setArtwork(const QImage& picture);
    void chooseArtwork();
    void startPlayer(const QString& path);
    void showPoster(const QString& path);
    void updatePoster();
    void seekTo(int ms);
    void playerDurationChanged(qint64 ms);
    void fillAllTags();
    void updateInfo(std::optional<double> playerSeconds);

    QLabel* m_heading = nullptr;
    QHash<QString, QLineEdit*> m_fields;
    QHash<QString, QLabel*> m_info;
    QLabel* mediaImageView = nullptr;
    QImage m_artwork;
    QWidget* m_playerArea = nullptr;
    QVideoWidget* m_videoWidget = nullptr;
    QMediaPlayer* m_player = nullptr;
    QPushButton* m_playButton = nullptr;
    QStackedLayout* m_screen = nullptr;
    QLabel* m_poster = nullptr;
    QSlider* m_seekBar = nullptr;
    QLabel* m_playTime = nullptr;
    quint64 m_posterRequest = 0;
    QImage m_posterImage;
    QTableWidget* m_allTags = nullptr;
    QLabel* m_noTags = nullptr;
    MapView* m_map = nullptr;
    IKImageItemPtr m_item;
};
