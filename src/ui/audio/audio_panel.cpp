// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/audio/audio_panel.h"

#include <QAudioOutput>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QMediaPlayer>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QSvgRenderer>
#include <QTableWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <limits>

#include "core/library/formatters.h"
#include "core/library/info_block.h"
#include "core/video/metadata_rows.h"
#include "ui/controls/field_grid.h"
#include "ui/controls/metadata_table.h"

namespace {

bool g_playerEnabled = !qEnvironmentVariableIsSet("TAGSMITH_NO_PLAYER");
constexpr int kArtworkSize = 150;

// Which group flag an edit of a field sets; the created date sets none (the
// writers always compare it with its remembered value).
enum class Group { Basic, Camera, None };

// Editable fields: outlet name, label, group and place in the editor state.
// The outlets keep their historical names; the album-artist box carries the
// track number as well.
struct FieldSpec {
    const char* outlet;
    const char* title;
    Group group;
    QString AudioEditorState::*text;
};
const FieldSpec kFields[] = {
    {"titlelab", QT_TRANSLATE_NOOP("AudioPanel", "Title"), Group::Basic,
     &AudioEditorState::titlelab},
    {"subtitlelab", QT_TRANSLATE_NOOP("AudioPanel", "Subtitle"), Group::Basic,
     &AudioEditorState::subtitlelab},
    {"artistlab", QT_TRANSLATE_NOOP("AudioPanel", "Artist"), Group::Basic,
     &AudioEditorState::artistlab},
    {"abulmlab", QT_TRANSLATE_NOOP("AudioPanel", "Album"), Group::Basic,
     &AudioEditorState::abulmlab},
    {"ablumAristlab", QT_TRANSLATE_NOOP("AudioPanel", "Album Artist / Track"), Group::Basic,
     &AudioEditorState::ablumAristlab},
    {"composerlab", QT_TRANSLATE_NOOP("AudioPanel", "Composer"), Group::Basic,
     &AudioEditorState::composerlab},
    {"recordDatelab", QT_TRANSLATE_NOOP("AudioPanel", "Record Date"), Group::Camera,
     &AudioEditorState::recordDatelab},
    {"releaseYearlab", QT_TRANSLATE_NOOP("AudioPanel", "Release Year"), Group::Camera,
     &AudioEditorState::releaseYearlab},
    {"copyrightlab", QT_TRANSLATE_NOOP("AudioPanel", "Copyright"), Group::Camera,
     &AudioEditorState::copyrightlab},
    {"publishlab", QT_TRANSLATE_NOOP("AudioPanel", "Publisher"), Group::Camera,
     &AudioEditorState::publishlab},
    {"bandlab", QT_TRANSLATE_NOOP("AudioPanel", "Band"), Group::Camera, &AudioEditorState::bandlab},
    {"commentslab", QT_TRANSLATE_NOOP("AudioPanel", "Comments"), Group::Camera,
     &AudioEditorState::commentslab},
    {"lyricslab", QT_TRANSLATE_NOOP("AudioPanel", "Lyricist"), Group::Camera,
     &AudioEditorState::lyricslab},
    {"createdDatelab", QT_TRANSLATE_NOOP("AudioPanel", "Created Date"), Group::None,
     &AudioEditorState::createdDatelab},
};

// The information lines, in the order shown, by label name.
const std::pair<const char*, QString AudioInfoBlock::*> kInfoLines[] = {
    {"fileName", &AudioInfoBlock::fileName},
    {"modifiedDate", &AudioInfoBlock::modifiedDate},
    {"fileSize", &AudioInfoBlock::fileSize},
    {"location", &AudioInfoBlock::location},
    {"kind", &AudioInfoBlock::kind},
    {"channels", &AudioInfoBlock::channels},
    {"duration", &AudioInfoBlock::duration},
    {"bitrate", &AudioInfoBlock::bitrate},
    {"sampleRate", &AudioInfoBlock::sampleRate},
    {"createdDate", &AudioInfoBlock::createdDate},
};

QPixmap placeholderPixmap(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(QStringLiteral(":/audio/artworkimage.svg")).render(&painter);
    return pixmap;
}

QLabel* sectionTitle(const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QStringLiteral("sectionTitle"));
    return label;
}

QString playTime(qint64 position, qint64 duration) {
    return getMediaDuration(qint32(position / 1000)) + QStringLiteral(" / ") +
           getMediaDuration(qint32(duration / 1000));
}

}  // namespace

// The panel's pictures live in the static UI library: ask for them by name.
static void initAudioResources() {
    static const bool done = [] {
        Q_INIT_RESOURCE(audio);
        return true;
    }();
    Q_UNUSED(done);
}

void AudioPanel::setPlayerEnabled(bool enabled) {
    g_playerEnabled = enabled;
}

AudioPanel::AudioPanel(QWidget* parent) : QWidget(parent) {
    initAudioResources();
    setObjectName(QStringLiteral("audioContentView"));
    // Everything scrolls, so the panel stays usable in a small window.
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    outer->addWidget(scroll);
    auto* page = new QWidget(scroll);
    page->setObjectName(QStringLiteral("audioPage"));
    scroll->setWidget(page);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(10);

    m_heading = new QLabel(page);
    m_heading->setObjectName(QStringLiteral("panelTitle"));
    m_heading->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_heading);

    // The artwork, with its chooser, beside the information lines.
    auto* topRow = new QHBoxLayout;
    topRow->setSpacing(14);
    auto* artColumn = new QVBoxLayout;
    audioArtImageView = new QLabel(page);
    audioArtImageView->setObjectName(QStringLiteral("audioArtImageView"));
    audioArtImageView->setFixedSize(kArtworkSize, kArtworkSize);
    audioArtImageView->setAlignment(Qt::AlignCenter);
    auto* chooseArt = new QPushButton(tr("Artwork\u2026"), page);
    chooseArt->setObjectName(QStringLiteral("chooseArtworkButton"));
    chooseArt->setToolTip(tr("Choose a new picture for the artwork"));
    connect(chooseArt, &QPushButton::clicked, this, &AudioPanel::chooseArtwork);
    artColumn->addWidget(audioArtImageView);
    artColumn->addWidget(chooseArt);
    artColumn->addStretch(1);
    topRow->addLayout(artColumn);
    auto* infoBox = new QWidget(page);
    infoBox->setObjectName(QStringLiteral("infoBlock"));
    auto* infoLayout = new QVBoxLayout(infoBox);
    infoLayout->setContentsMargins(0, 0, 0, 0);
    infoLayout->setSpacing(3);
    for (const auto& [name, member] : kInfoLines) {
        Q_UNUSED(member);
        auto* label = new QLabel(infoBox);
        label->setObjectName(QLatin1String(name));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // A long location wraps anywhere rather than widening the panel.
        label->setWordWrap(true);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        infoLayout->addWidget(label);
        m_info.insert(QLatin1String(name), label);
    }
    infoLayout->addStretch(1);
    topRow->addWidget(infoBox, 1);
    layout->addLayout(topRow);

    // Player: play or pause, and a seek bar through the file.
    m_playerArea = new QWidget(page);
    m_playerArea->setObjectName(QStringLiteral("audioPlayer"));
    auto* controls = new QHBoxLayout(m_playerArea);
    controls->setContentsMargins(0, 0, 0, 0);
    m_playButton = new QPushButton(tr("Play"), m_playerArea);
    m_playButton->setObjectName(QStringLiteral("playButton"));
    m_playButton->setEnabled(false);
    m_playButton->setToolTip(tr("Play or pause the audio file"));
    m_seekBar = new QSlider(Qt::Horizontal, m_playerArea);
    m_seekBar->setObjectName(QStringLiteral("seekBar"));
    m_seekBar->setEnabled(false);
    m_seekBar->setToolTip(tr("Position in the audio file"));
    m_seekBar->setAccessibleName(tr("Position in the audio file"));
    connect(m_seekBar, &QSlider::sliderMoved, this, [this](int ms) {
        if (m_player) m_player->setPosition(ms);
    });
    m_playTime = new QLabel(m_playerArea);
    m_playTime->setObjectName(QStringLiteral("playTime"));
    controls->addWidget(m_playButton);
    controls->addWidget(m_seekBar, 1);
    controls->addWidget(m_playTime);
    layout->addWidget(m_playerArea);

    // The editable fields in their two groups; the created date stands alone.
    QGridLayout* grid = makeFieldGrid();
    int row = 0;
    Group section = Group::None;
    for (const FieldSpec& f : kFields) {
        if (row == 0 || f.group != section) {
            section = f.group;
            const QString title = section == Group::Basic    ? tr("Tags")
                                  : section == Group::Camera ? tr("Dates, Rights and Notes")
                                                             : tr("File");
            grid->addWidget(sectionTitle(title), row++, 0, 1, 2);
        }
        QLineEdit* edit =
            addFieldRow(grid, row, tr(f.title), f.outlet, tr("%1: edit, then Save Changes"));
        m_fields.insert(QLatin1String(f.outlet), edit);
        if (f.group == Group::Basic)
            connect(edit, &QLineEdit::textEdited, this, &AudioPanel::basicFieldEdited);
        else if (f.group == Group::Camera)
            connect(edit, &QLineEdit::textEdited, this, &AudioPanel::cameraFieldEdited);
    }
    m_fields.value(QStringLiteral("ablumAristlab"))
        ->setToolTip(tr("The album artist and the track number are kept as one value"));
    layout->addLayout(grid);

    auto* save = new QPushButton(tr("Save Changes"), page);
    save->setObjectName(QStringLiteral("saveAudioButton"));
    save->setToolTip(
        tr("Write the edited fields into a copy of the selected audio files (Ctrl+S)"));
    connect(save, &QPushButton::clicked, this, &AudioPanel::saveRequested);
    layout->addWidget(save, 0, Qt::AlignRight);

    // Every tag of the file, also those no field above shows.
    layout->addWidget(sectionTitle(tr("All Tags")));
    m_allTags = makeMetadataTable(page);
    m_noTags = new QLabel(tr("This file has no metadata items."), page);
    m_noTags->setObjectName(QStringLiteral("noTagsLabel"));
    layout->addWidget(m_allTags);
    layout->addWidget(m_noTags);
    layout->addStretch(1);

    ShowAudioViewWithItem(std::make_shared<IKImageItem>(), AudioEditorState{});
}

AudioPanel::~AudioPanel() = default;

void AudioPanel::ShowAudioViewWithItem(const IKImageItemPtr& item, const AudioEditorState& s) {
    m_item = item ? item : std::make_shared<IKImageItem>();
    m_heading->setText(m_item->fileName);
    for (const FieldSpec& f : kFields) m_fields.value(QLatin1String(f.outlet))->setText(s.*f.text);
    setArtwork(s.imageIsPlaceholder ? QImage() : s.audioArtImage.image());
    m_imageChanged = false;
    updateInfo();
    const QList<MetadataRow> rows = metadataRows(m_item->fileMetaArray);
    fillMetadataTable(m_allTags, rows);
    m_noTags->setVisible(rows.isEmpty() && !m_item->filePath.isEmpty());
    startPlayer(m_item->filePath);
}

AudioEditorState AudioPanel::editorState() const {
    AudioEditorState s;
    for (const FieldSpec& f : kFields) s.*f.text = m_fields.value(QLatin1String(f.outlet))->text();
    s.audioArtImage = m_artwork;
    s.imageIsPlaceholder = m_artwork.isNull();
    s.imageChanged = m_imageChanged;
    return s;
}

void AudioPanel::setArtwork(const QImage& picture) {
    m_artwork = picture;
    if (picture.isNull()) {
        audioArtImageView->setPixmap(placeholderPixmap(kArtworkSize));
        return;
    }
    const qreal dpr = devicePixelRatioF();
    QPixmap pixmap = QPixmap::fromImage(picture.scaled(
        QSize(kArtworkSize, kArtworkSize) * dpr, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(dpr);
    audioArtImageView->setPixmap(pixmap);
}

void AudioPanel::setChosenArtwork(const QImage& picture) {
    if (picture.isNull()) return;
    setArtwork(picture);
    m_imageChanged = true;
    Q_EMIT artworkChosen();
}

void AudioPanel::chooseArtwork() {
    auto* dialog = new QFileDialog(window(), tr("Choose a picture for the artwork"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setNameFilter(tr("Pictures (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        QImageReader reader(path);
        reader.setAutoTransform(true);
        setChosenArtwork(reader.read());
    });
    dialog->open();
}

void AudioPanel::startPlayer(const QString& path) {
    // Any current player is stopped; a new one plays the selected file.
    if (m_player) {
        m_player->stop();
        m_player->deleteLater();
        m_player = nullptr;
    }
    m_playButton->setText(tr("Play"));
    m_playButton->setEnabled(false);
    m_seekBar->setEnabled(false);
    m_seekBar->setValue(0);
    m_playTime->clear();
    m_playerArea->setVisible(g_playerEnabled);
    if (!g_playerEnabled || path.isEmpty()) return;
    m_player = new QMediaPlayer(this);
    m_player->setAudioOutput(new QAudioOutput(m_player));
    connect(m_player, &QMediaPlayer::durationChanged, this, &AudioPanel::playerDurationChanged);
    connect(m_player, &QMediaPlayer::positionChanged, this, [this](qint64 ms) {
        if (!m_seekBar->isSliderDown()) m_seekBar->setValue(int(ms));
        m_playTime->setText(playTime(ms, m_player->duration()));
    });
    connect(
        m_player, &QMediaPlayer::playbackStateChanged, this,
        [this](QMediaPlayer::PlaybackState state) {
            m_playButton->setText(state == QMediaPlayer::PlayingState ? tr("Pause") : tr("Play"));
        });
    connect(m_playButton, &QPushButton::clicked, m_player, [this] {
        m_player->playbackState() == QMediaPlayer::PlayingState ? m_player->pause()
                                                                : m_player->play();
    });
    m_player->setSource(QUrl::fromLocalFile(path));
    m_playButton->setEnabled(true);
}

void AudioPanel::playerDurationChanged(qint64 ms) {
    if (ms <= 0 || !m_item) return;
    // The player's length of the file replaces the one read at import.
    const double seconds = ms / 1000.0;
    m_item->fileduration = seconds;
    m_item->fileduratStr = getMediaDuration(playerWholeSeconds(seconds));
    m_seekBar->setRange(0, int(std::min<qint64>(ms, std::numeric_limits<int>::max())));
    m_seekBar->setEnabled(true);
    m_playTime->setText(playTime(0, ms));
    updateInfo();
}

void AudioPanel::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    // Hidden for another record's panel, not by minimising the window.
    if (event->spontaneous()) return;
    if (m_player && m_player->playbackState() == QMediaPlayer::PlayingState) m_player->pause();
}

void AudioPanel::updateInfo() {
    const AudioInfoBlock block = audioInfoBlock(*m_item);
    for (const auto& [name, member] : kInfoLines) {
        QLabel* label = m_info.value(QLatin1String(name));
        label->setText(block.*member);
        label->setToolTip(block.*member);  // a long path is cut at the panel's edge
    }
}

QString AudioPanel::fileNameText() const {
    return m_heading->text();
}
