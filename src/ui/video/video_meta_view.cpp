// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/video/video_meta_view.h"

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
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QStackedLayout>
#include <QSvgRenderer>
#include <QTableWidget>
#include <QThreadPool>
#include <QUrl>
#include <QVBoxLayout>
#include <QVideoWidget>

#include <limits>

#include "core/library/formatters.h"
#include "core/library/frame_image.h"
#include "core/library/info_block.h"
#include "core/video/metadata_rows.h"
#include "ui/controls/map_view.h"
#include "ui/controls/metadata_table.h"

namespace {

bool g_playerEnabled = !qEnvironmentVariableIsSet("TAGSMITH_NO_PLAYER");
constexpr int kArtworkSize = 132;
// The poster is decoded once at a size that stays sharp in a wide panel.
constexpr int kPosterDecodeSize = 1280;

// Editable fields: outlet name, label, and whether it belongs to the camera
// group (publisher, copyright, keywords, description, record date) rather
// than the basic one. The outlets keep their historical names.
struct FieldSpec {
    const char* outlet;
    const char* title;
    bool camera;
};
const FieldSpec kFields[] = {
    {"mediaTitle", QT_TRANSLATE_NOOP("VideoMetaView", "Title"), false},
    {"mediaAlumArtis", QT_TRANSLATE_NOOP("VideoMetaView", "Album"), false},
    {"mediaArtist", QT_TRANSLATE_NOOP("VideoMetaView", "Artist"), false},
    {"mediaMake", QT_TRANSLATE_NOOP("VideoMetaView", "Director"), false},
    {"mediaModel", QT_TRANSLATE_NOOP("VideoMetaView", "Performer"), false},
    {"mediaProducer", QT_TRANSLATE_NOOP("VideoMetaView", "Producer"), false},
    {"mediaReleaseYear", QT_TRANSLATE_NOOP("VideoMetaView", "Publisher"), true},
    {"mediaCopyright", QT_TRANSLATE_NOOP("VideoMetaView", "Copyright"), true},
    {"mediaSoftware", QT_TRANSLATE_NOOP("VideoMetaView", "Description"), true},
    {"mediakeywords", QT_TRANSLATE_NOOP("VideoMetaView", "Keywords"), true},
    {"mediaShootDate", QT_TRANSLATE_NOOP("VideoMetaView", "Record Date"), true},
    {"mediaCreatedDate", QT_TRANSLATE_NOOP("VideoMetaView", "Created Date"), false},
};
const FieldSpec kLocationFields[] = {
    {"mediaLatitude", QT_TRANSLATE_NOOP("VideoMetaView", "Latitude"), false},
    {"mediaLongtitude", QT_TRANSLATE_NOOP("VideoMetaView", "Longitude"), false},
    {"mediaAatitude", QT_TRANSLATE_NOOP("VideoMetaView", "Altitude"), false},
};
const char* const kInfoNames[] = {"recordDate",  "pixelSize",   "resolution",
                                  "videoFormat", "createdDate", "duration"};

QPixmap placeholderPixmap(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(QStringLiteral(":/video/videoartwork.svg")).render(&painter);
    return pixmap;
}

QLabel* sectionTitle(const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QStringLiteral("sectionTitle"));
    return label;
}

}  // namespace

void VideoMetaView::setPlayerEnabled(bool enabled) {
    g_playerEnabled = enabled;
}

// The panel's pictures live in the static UI library: ask for them by name.
static void initVideoResources() {
    static const bool done = [] {
        Q_INIT_RESOURCE(video);
        return true;
    }();
    Q_UNUSED(done);
}

VideoMetaView::VideoMetaView(QWidget* parent) : QWidget(parent) {
    initVideoResources();
    setObjectName(QStringLiteral("videoMetaView"));
    // Everything scrolls, so the panel stays usable in a small window.
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    // A panel narrower than its content scrolls sideways rather than cutting
    // the content off.
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    outer->addWidget(scroll);
    auto* page = new QWidget(scroll);
    page->setObjectName(QStringLiteral("videoMetaPage"));
    scroll->setWidget(page);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(10);

    m_heading = new QLabel(page);
    m_heading->setObjectName(QStringLiteral("panelTitle"));
    m_heading->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_heading);

    // Player: the first frame stands in the screen until Play; the seek bar
    // moves through the movie at any time.
    m_playerArea = new QWidget(page);
    auto* playerLayout = new QVBoxLayout(m_playerArea);
    playerLayout->setContentsMargins(0, 0, 0, 0);
    playerLayout->setSpacing(6);
    auto* screen = new QWidget(m_playerArea);
    screen->setObjectName(QStringLiteral("playerScreen"));
    screen->setMinimumHeight(200);
    m_screen = new QStackedLayout(screen);
    m_poster = new QLabel(screen);
    m_poster->setObjectName(QStringLiteral("posterView"));
    m_poster->setAlignment(Qt::AlignCenter);
    m_poster->setMinimumSize(1, 1);
    m_poster->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_videoWidget = new QVideoWidget(screen);
    m_screen->addWidget(m_poster);
    m_screen->addWidget(m_videoWidget);
    m_playButton = new QPushButton(tr("Play"), m_playerArea);
    m_playButton->setObjectName(QStringLiteral("playButton"));
    m_playButton->setEnabled(false);
    m_playButton->setToolTip(tr("Play or pause the movie"));
    m_seekBar = new QSlider(Qt::Horizontal, m_playerArea);
    m_seekBar->setObjectName(QStringLiteral("seekBar"));
    m_seekBar->setEnabled(false);
    m_seekBar->setToolTip(tr("Position in the movie"));
    m_seekBar->setAccessibleName(tr("Position in the movie"));
    connect(m_seekBar, &QSlider::sliderMoved, this, &VideoMetaView::seekTo);
    m_playTime = new QLabel(m_playerArea);
    m_playTime->setObjectName(QStringLiteral("playTime"));
    auto* controls = new QHBoxLayout;
    controls->addWidget(m_playButton);
    controls->addWidget(m_seekBar, 1);
    controls->addWidget(m_playTime);
    playerLayout->addWidget(screen, 1);
    playerLayout->addLayout(controls);
    layout->addWidget(m_playerArea);

    // Artwork beside the information lines, which align by their own blanks
    // in a fixed-pitch font.
    auto* topRow = new QHBoxLayout;
    topRow->setSpacing(14);
    auto* artColumn = new QVBoxLayout;
    mediaImageView = new QLabel(page);
    mediaImageView->setObjectName(QStringLiteral("mediaImageView"));
    mediaImageView->setFixedSize(kArtworkSize, kArtworkSize);
    mediaImageView->setAlignment(Qt::AlignCenter);
    auto* chooseArt = new QPushButton(tr("Artwork\u2026"), page);
    chooseArt->setObjectName(QStringLiteral("chooseArtworkButton"));
    chooseArt->setToolTip(tr("Choose a new picture for the artwork"));
    connect(chooseArt, &QPushButton::clicked, this, &VideoMetaView::chooseArtwork);
    artColumn->addWidget(mediaImageView);
    artColumn->addWidget(chooseArt);
    topRow->addLayout(artColumn);
    auto* infoBox = new QWidget(page);
    infoBox->setObjectName(QStringLiteral("infoBlock"));
    auto* infoLayout = new QVBoxLayout(infoBox);
    infoLayout->setContentsMargins(0, 0, 0, 0);
    infoLayout->setSpacing(4);
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setStyleHint(QFont::Monospace);
    for (const char* name : kInfoNames) {
        auto* label = new QLabel(infoBox);
        label->setObjectName(QLatin1String(name));
        label->setFont(mono);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        infoLayout->addWidget(label);
        m_info.insert(QLatin1String(name), label);
    }
    infoLayout->addStretch(1);
    topRow->addWidget(infoBox, 1);
    layout->addLayout(topRow);

    // The editable fields, one per row.
    layout->addWidget(sectionTitle(tr("Details")));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const FieldSpec& f : kFields) {
        QLineEdit* edit = addField(grid, row++, 0, QLatin1String(f.outlet), tr(f.title));
        const bool camera = f.camera;
        if (QLatin1String(f.outlet) != QLatin1String("mediaCreatedDate")) {
            connect(edit, &QLineEdit::textEdited, this, [this, camera] {
                camera ? Q_EMIT cameraFieldEdited() : Q_EMIT basicFieldEdited();
            });
        }
    }
    layout->addLayout(grid);

    // Location and the map.
    layout->addWidget(sectionTitle(tr("Location")));
    auto* locationGrid = new QGridLayout;
    locationGrid->setHorizontalSpacing(10);
    int column = 0;
    for (const FieldSpec& f : kLocationFields) {
        addField(locationGrid, 0, column, QLatin1String(f.outlet), tr(f.title));
        locationGrid->setColumnStretch(column + 1, 1);
        column += 2;
    }
    layout->addLayout(locationGrid);
    m_map = new MapView(page);
    m_map->setObjectName(QStringLiteral("videoMapView"));
    m_map->setMinimumHeight(200);
    layout->addWidget(m_map);

    auto* save = new QPushButton(tr("Save Changes"), page);
    save->setObjectName(QStringLiteral("saveVideoButton"));
    save->setToolTip(tr("Write the edited fields into a copy of the selected videos (Ctrl+S)"));
    connect(save, &QPushButton::clicked, this, &VideoMetaView::saveRequested);
    layout->addWidget(save, 0, Qt::AlignRight);

    // Every item of the file, also those no field above shows.
    layout->addWidget(sectionTitle(tr("All Tags")));
    m_allTags = makeMetadataTable(page);
    m_noTags = new QLabel(tr("This file has no metadata items."), page);
    m_noTags->setObjectName(QStringLiteral("noTagsLabel"));
    layout->addWidget(m_allTags);
    layout->addWidget(m_noTags);
    layout->addStretch(1);

    ShowVideoViewWithItem(std::make_shared<IKImageItem>(), VideoEditorState{});
}

VideoMetaView::~VideoMetaView() = default;

QLineEdit* VideoMetaView::addField(QGridLayout* grid, int row, int column, const QString& outlet,
                                   const QString& title) {
    auto* label = new QLabel(title);
    label->setObjectName(QStringLiteral("fieldName"));
    auto* edit = new QLineEdit;
    edit->setObjectName(outlet);
    label->setBuddy(edit);
    edit->setToolTip(tr("%1: edit, then Save Changes").arg(title));
    grid->addWidget(label, row, column, Qt::AlignRight);
    grid->addWidget(edit, row, column + 1);
    m_fields.insert(outlet, edit);
    return edit;
}

void VideoMetaView::ShowVideoViewWithItem(const IKImageItemPtr& item, const VideoEditorState& s) {
    m_item = item ? item : std::make_shared<IKImageItem>();
    m_heading->setText(m_item->fileName);
    const std::pair<const char*, const QString*> texts[] = {
        {"mediaTitle", &s.mediaTitle},
        {"mediaAlumArtis", &s.mediaAlumArtis},
        {"mediaArtist", &s.mediaArtist},
        {"mediaMake", &s.mediaMake},
        {"mediaModel", &s.mediaModel},
        {"mediaProducer", &s.mediaProducer},
        {"mediaCreatedDate", &s.mediaCreatedDate},
        {"mediaShootDate", &s.mediaShootDate},
        {"mediaReleaseYear", &s.mediaReleaseYear},
        {"mediaCopyright", &s.mediaCopyright},
        {"mediaSoftware", &s.mediaSoftware},
        {"mediakeywords", &s.mediakeywords},
        {"mediaLatitude", &s.mediaLatitude},
        {"mediaLongtitude", &s.mediaLongtitude},
        {"mediaAatitude", &s.mediaAatitude},
    };
    for (const auto& [outlet, text] : texts) m_fields.value(QLatin1String(outlet))->setText(*text);
    setArtwork(s.imageIsPlaceholder ? QImage() : s.mediaImage.image());

    // The pin sits at the signed position; no map without a latitude.
    const double lat =
        m_item->latitudeFormat == QLatin1String("-") ? -m_item->filelatitude : m_item->filelatitude;
    const double lon = m_item->longtitudeFormat == QLatin1String("-") ? -m_item->filelongtitude
                                                                      : m_item->filelongtitude;
    m_map->setVisible(m_item->filelatitude != 0.0);
    m_map->setPin(lat, lon);

    updateInfo(std::nullopt);
    fillAllTags();
    startPlayer(m_item->filePath);
}

void VideoMetaView::fillAllTags() {
    const QList<MetadataRow> rows = videoMetadataRows(*m_item);
    fillMetadataTable(m_allTags, rows);
    m_noTags->setVisible(rows.isEmpty() && !m_item->filePath.isEmpty());
}

VideoEditorState VideoMetaView::editorState() const {
    VideoEditorState s;
    const auto text = [this](const char* outlet) {
        return m_fields.value(QLatin1String(outlet))->text();
    };
    s.mediaTitle = text("mediaTitle");
    s.mediaAlumArtis = text("mediaAlumArtis");
    s.mediaArtist = text("mediaArtist");
    s.mediaMake = text("mediaMake");
    s.mediaModel = text("mediaModel");
    s.mediaProducer = text("mediaProducer");
    s.mediaCreatedDate = text("mediaCreatedDate");
    s.mediaShootDate = text("mediaShootDate");
    s.mediaReleaseYear = text("mediaReleaseYear");
    s.mediaCopyright = text("mediaCopyright");
    s.mediaSoftware = text("mediaSoftware");
    s.mediakeywords = text("mediakeywords");
    s.mediaLatitude = text("mediaLatitude");
    s.mediaLongtitude = text("mediaLongtitude");
    s.mediaAatitude = text("mediaAatitude");
    s.mediaImage = m_artwork;
    s.imageIsPlaceholder = m_artwork.isNull();
    return s;
}

void VideoMetaView::setArtwork(const QImage& picture) {
    m_artwork = picture;
    if (picture.isNull()) {
        mediaImageView->setPixmap(placeholderPixmap(kArtworkSize));
    } else {
        mediaImageView->setPixmap(QPixmap::fromImage(picture.scaled(
            kArtworkSize, kArtworkSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    }
}

void VideoMetaView::chooseArtwork() {
    auto* dialog = new QFileDialog(window(), tr("Choose a picture for the artwork"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setNameFilter(tr("Pictures (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        QImageReader reader(path);
        reader.setAutoTransform(true);
        const QImage picture = reader.read();
        if (!picture.isNull()) {
            setArtwork(picture);
            Q_EMIT basicFieldEdited();
        }
    });
    dialog->open();
}

void VideoMetaView::startPlayer(const QString& path) {
    // Any current player is stopped; a new one plays the selected file.
    if (m_player) {
        m_player->stop();
        m_player->deleteLater();
        m_player = nullptr;
    }
    m_playButton->setEnabled(false);
    m_seekBar->setEnabled(false);
    m_seekBar->setValue(0);
    m_playTime->clear();
    m_playerArea->setVisible(g_playerEnabled);
    showPoster(g_playerEnabled ? path : QString());
    if (!g_playerEnabled || path.isEmpty()) return;
    m_player = new QMediaPlayer(this);
    auto* audio = new QAudioOutput(m_player);
    m_player->setAudioOutput(audio);
    m_player->setVideoOutput(m_videoWidget);
    connect(m_player, &QMediaPlayer::durationChanged, this, &VideoMetaView::playerDurationChanged);
    connect(m_player, &QMediaPlayer::positionChanged, this, [this](qint64 ms) {
        if (!m_seekBar->isSliderDown()) m_seekBar->setValue(int(ms));
        m_playTime->setText(getMediaDuration(qint32(ms / 1000)) + QStringLiteral(" / ") +
                            getMediaDuration(qint32(m_player->duration() / 1000)));
    });
    connect(
        m_player, &QMediaPlayer::playbackStateChanged, this,
        [this](QMediaPlayer::PlaybackState state) {
            m_playButton->setText(state == QMediaPlayer::PlayingState ? tr("Pause") : tr("Play"));
            if (state != QMediaPlayer::StoppedState) m_screen->setCurrentWidget(m_videoWidget);
        });
    connect(m_playButton, &QPushButton::clicked, m_player, [this] {
        m_player->playbackState() == QMediaPlayer::PlayingState ? m_player->pause()
                                                                : m_player->play();
    });
    m_player->setSource(QUrl::fromLocalFile(path));
    m_playButton->setEnabled(true);
}

void VideoMetaView::showPoster(const QString& path) {
    // The frame is decoded off the main thread; an answer for a file that is
    // no longer shown is dropped.
    const quint64 request = ++m_posterRequest;
    m_posterImage = QImage();
    m_poster->clear();
    m_screen->setCurrentWidget(m_poster);
    if (path.isEmpty()) return;
    QPointer<VideoMetaView> self(this);
    QThreadPool::globalInstance()->start([self, path, request] {
        const QImage frame =
            videoFrameImage(path, 0.0, QSize(kPosterDecodeSize, kPosterDecodeSize));
        QMetaObject::invokeMethod(
            qApp,
            [self, frame, request] {
                if (!self || self->m_posterRequest != request || frame.isNull()) return;
                self->m_posterImage = frame;
                self->updatePoster();
            },
            Qt::QueuedConnection);
    });
}

void VideoMetaView::updatePoster() {
    if (m_posterImage.isNull()) return;
    const qreal dpr = devicePixelRatioF();
    QPixmap pixmap = QPixmap::fromImage(m_posterImage.scaled(
        (QSizeF(m_poster->size()) * dpr).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(dpr);
    m_poster->setPixmap(pixmap);
}

void VideoMetaView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    updatePoster();
}

void VideoMetaView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    // Hidden for another record's panel, not by minimising the window.
    if (event->spontaneous()) return;
    if (m_player && m_player->playbackState() == QMediaPlayer::PlayingState) m_player->pause();
}

void VideoMetaView::seekTo(int ms) {
    if (!m_player) return;
    // A movie that has not played yet is paused first, so the frame shows.
    if (m_player->playbackState() == QMediaPlayer::StoppedState) m_player->pause();
    m_player->setPosition(ms);
}

void VideoMetaView::playerDurationChanged(qint64 ms) {
    if (ms <= 0 || !m_item) return;
    const double seconds = ms / 1000.0;
    m_item->fileduration = seconds;
    m_item->fileduratStr = getMediaDuration(playerWholeSeconds(seconds));
    m_seekBar->setRange(0, int(std::min<qint64>(ms, std::numeric_limits<int>::max())));
    m_seekBar->setEnabled(true);
    updateInfo(seconds);
}

void VideoMetaView::updateInfo(std::optional<double> playerSeconds) {
    const VideoInfoBlock b = videoInfoBlock(*m_item, playerSeconds);
    m_info.value(QStringLiteral("recordDate"))->setText(b.recordDate);
    m_info.value(QStringLiteral("pixelSize"))->setText(b.pixelSize);
    m_info.value(QStringLiteral("resolution"))->setText(b.resolution);
    m_info.value(QStringLiteral("videoFormat"))->setText(b.videoFormat);
    m_info.value(QStringLiteral("createdDate"))->setText(b.createdDate);
    m_info.value(QStringLiteral("duration"))->setText(b.duration);
}

QString VideoMetaView::fileNameText() const {
    return m_heading->text();
}
