// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/photo/photo_panel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "ui/controls/field_grid.h"
#include "ui/controls/map_view.h"

namespace {
// Which group flag an edit of a field sets.
enum class Group { Basic, Camera, Gps };

struct FieldSpec {
    const char* outlet;
    const char* title;
    Group group;
    QString PhotoEditorState::*text;
};
const FieldSpec kFields[] = {
    {"titlelab", QT_TRANSLATE_NOOP("PhotoPanel", "Title"), Group::Basic,
     &PhotoEditorState::titlelab},
    {"artistlab", QT_TRANSLATE_NOOP("PhotoPanel", "Artist"), Group::Basic,
     &PhotoEditorState::artistlab},
    {"imageDescrilab", QT_TRANSLATE_NOOP("PhotoPanel", "Description"), Group::Basic,
     &PhotoEditorState::imageDescrilab},
    {"copyrightlab", QT_TRANSLATE_NOOP("PhotoPanel", "Copyright"), Group::Basic,
     &PhotoEditorState::copyrightlab},
    {"keywordslab", QT_TRANSLATE_NOOP("PhotoPanel", "Keywords"), Group::Basic,
     &PhotoEditorState::keywordslab},
    {"commentslab", QT_TRANSLATE_NOOP("PhotoPanel", "Comments"), Group::Basic,
     &PhotoEditorState::commentslab},
    {"cameraMakelab", QT_TRANSLATE_NOOP("PhotoPanel", "Make"), Group::Camera,
     &PhotoEditorState::cameraMakelab},
    {"cameraModelab", QT_TRANSLATE_NOOP("PhotoPanel", "Model"), Group::Camera,
     &PhotoEditorState::cameraModelab},
    {"cameraDatelab", QT_TRANSLATE_NOOP("PhotoPanel", "Date Taken"), Group::Camera,
     &PhotoEditorState::cameraDatelab},
    {"gpsLatilab", QT_TRANSLATE_NOOP("PhotoPanel", "Latitude"), Group::Gps,
     &PhotoEditorState::gpsLatilab},
    {"gpsLongtlab", QT_TRANSLATE_NOOP("PhotoPanel", "Longitude"), Group::Gps,
     &PhotoEditorState::gpsLongtlab},
    {"gpsAitlab", QT_TRANSLATE_NOOP("PhotoPanel", "Altitude"), Group::Gps,
     &PhotoEditorState::gpsAitlab},
    {"gpsDatelab", QT_TRANSLATE_NOOP("PhotoPanel", "GPS Date"), Group::Gps,
     &PhotoEditorState::gpsDatelab},
    {"gpsTimelab", QT_TRANSLATE_NOOP("PhotoPanel", "GPS Time"), Group::Gps,
     &PhotoEditorState::gpsTimelab},
};

// The read-only lines: outlet, caption, text.
const std::tuple<const char*, const char*, QString PhotoPanelTexts::*> kInfoLines[] = {
    {"photoFileSizelab", QT_TRANSLATE_NOOP("PhotoPanel", "File Size"),
     &PhotoPanelTexts::photoFileSizelab},
    {"photoImageSizelab", QT_TRANSLATE_NOOP("PhotoPanel", "Dimensions"),
     &PhotoPanelTexts::photoImageSizelab},
    {"photoDPIlab", QT_TRANSLATE_NOOP("PhotoPanel", "Camera"), &PhotoPanelTexts::photoDPIlab},
    {"photoCreateDatelab", QT_TRANSLATE_NOOP("PhotoPanel", "Created"),
     &PhotoPanelTexts::photoCreateDatelab},
    {"photoModDatelab", QT_TRANSLATE_NOOP("PhotoPanel", "Digitized"),
     &PhotoPanelTexts::photoModDatelab},
};

QLabel* sectionTitle(const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QStringLiteral("sectionTitle"));
    return label;
}

QString valueText(const QVariant& value) {
    if (value.typeId() == QMetaType::QVariantList) {
        QStringList parts;
        for (const QVariant& v : value.toList()) parts << v.toString();
        return parts.join(QStringLiteral(", "));
    }
    if (value.typeId() == QMetaType::QByteArray)
        return PhotoPanel::tr("(%1 bytes)").arg(value.toByteArray().size());
    return value.toString();
}
}  // namespace

PhotoPanel::PhotoPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("photoContentView"));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    outer->addWidget(scroll);
    auto* page = new QWidget(scroll);
    page->setObjectName(QStringLiteral("photoPage"));
    scroll->setWidget(page);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(10);

    auto* name = new QLabel(page);
    name->setObjectName(QStringLiteral("photoNamelab"));
    name->setProperty("panelTitle", true);
    name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_info.insert(QStringLiteral("photoNamelab"), name);
    layout->addWidget(name);

    m_preview = new QLabel(page);
    m_preview->setObjectName(QStringLiteral("photoPreview"));
    m_preview->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_preview);

    auto* info = new QGridLayout;
    info->setHorizontalSpacing(10);
    info->setVerticalSpacing(3);
    info->setColumnStretch(1, 1);
    int row = 0;
    for (const auto& [outlet, caption, member] : kInfoLines) {
        Q_UNUSED(member);
        auto* title = new QLabel(tr(caption), page);
        title->setObjectName(QStringLiteral("fieldName"));
        auto* value = new QLabel(page);
        value->setObjectName(QLatin1String(outlet));
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        info->addWidget(title, row, 0, Qt::AlignRight);
        info->addWidget(value, row++, 1);
        m_info.insert(QLatin1String(outlet), value);
    }
    layout->addLayout(info);

    // The editable fields in their three groups, each edit setting its flag.
    QGridLayout* grid = makeFieldGrid();
    row = 0;
    for (size_t i = 0; i < std::size(kFields); ++i) {
        const FieldSpec& f = kFields[i];
        if (i == 0 || f.group != kFields[i - 1].group) {
            const QString title = f.group == Group::Basic    ? tr("Description")
                                  : f.group == Group::Camera ? tr("Camera")
                                                             : tr("Location");
            grid->addWidget(sectionTitle(title), row++, 0, 1, 2);
        }
        QLineEdit* edit =
            addFieldRow(grid, row, tr(f.title), f.outlet, tr("%1: edit, then Apply Changes"));
        m_fields.insert(QLatin1String(f.outlet), edit);
        if (f.group == Group::Basic)
            connect(edit, &QLineEdit::textEdited, this, &PhotoPanel::basicFieldEdited);
        else if (f.group == Group::Camera)
            connect(edit, &QLineEdit::textEdited, this, &PhotoPanel::cameraFieldEdited);
        else
            connect(edit, &QLineEdit::textEdited, this, &PhotoPanel::gpsFieldEdited);
    }
    m_fields.value(QStringLiteral("keywordslab"))->setToolTip(tr("Separate keywords with commas"));
    m_fields.value(QStringLiteral("cameraDatelab"))->setPlaceholderText(tr("YYYY:MM:DD HH:MM:SS"));
    layout->addLayout(grid);

    auto* buttons = new QHBoxLayout;
    auto* gps = new QPushButton(tr("Edit GPS\u2026"), page);
    gps->setObjectName(QStringLiteral("editGpsButton"));
    gps->setToolTip(tr("Edit the position of the selected photos"));
    connect(gps, &QPushButton::clicked, this, &PhotoPanel::editGpsRequested);
    auto* date = new QPushButton(tr("Change Date\u2026"), page);
    date->setObjectName(QStringLiteral("changeDateButton"));
    date->setToolTip(tr("Change the dates of the selected photos"));
    connect(date, &QPushButton::clicked, this, &PhotoPanel::changeDateRequested);
    auto* apply = new QPushButton(tr("Apply Changes"), page);
    apply->setObjectName(QStringLiteral("applyPhotoButton"));
    apply->setToolTip(tr("Write the edited fields into a copy of the selected photos (Ctrl+S)"));
    connect(apply, &QPushButton::clicked, this, &PhotoPanel::applyRequested);
    buttons->addWidget(gps);
    buttons->addWidget(date);
    buttons->addStretch(1);
    buttons->addWidget(apply);
    layout->addLayout(buttons);

    m_map = new MapView(page);
    m_map->setObjectName(QStringLiteral("currentlocalMapView"));
    m_map->setMinimumHeight(200);
    layout->addWidget(m_map);

    layout->addWidget(sectionTitle(tr("All Properties")));
    m_treeModel = new QStandardItemModel(this);
    m_treeModel->setObjectName(QStringLiteral("localTreeController"));
    m_tree = new QTreeView(page);
    m_tree->setObjectName(QStringLiteral("localTreeView"));
    m_tree->setToolTip(tr("Every property of the photo, by group"));
    m_tree->setAccessibleName(tr("All Properties"));
    m_tree->setModel(m_treeModel);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setUniformRowHeights(true);
    m_tree->setMinimumHeight(260);
    m_tree->header()->setStretchLastSection(true);
    layout->addWidget(m_tree, 1);

    clear();
}

void PhotoPanel::showPhoto(const PhotoPanelTexts& texts, const PhotoEditorState& state,
                           const QList<PropertyTreeRow>& tree, const double* position) {
    m_info.value(QStringLiteral("photoNamelab"))->setText(texts.photoNamelab);
    for (const auto& [outlet, caption, member] : kInfoLines)
        m_info.value(QLatin1String(outlet))->setText(texts.*member);
    for (const FieldSpec& f : kFields)
        m_fields.value(QLatin1String(f.outlet))->setText(state.*f.text);
    fillTree(tree);
    m_map->setVisible(position != nullptr);
    if (position) m_map->setPin(position[0], position[1]);
}

void PhotoPanel::clear() {
    showPhoto({}, {}, {}, nullptr);
    setPicture({});
}

void PhotoPanel::setPicture(const QImage& picture) {
    const QImage shown = picture.width() > kPreviewSide || picture.height() > kPreviewSide
                             ? picture.scaled(kPreviewSide, kPreviewSide, Qt::KeepAspectRatio,
                                              Qt::SmoothTransformation)
                             : picture;
    m_preview->setPixmap(QPixmap::fromImage(shown));
    m_preview->setVisible(!shown.isNull());
}

PhotoEditorState PhotoPanel::editorState() const {
    PhotoEditorState s;
    for (const FieldSpec& f : kFields) s.*f.text = m_fields.value(QLatin1String(f.outlet))->text();
    return s;
}

void PhotoPanel::fillTree(const QList<PropertyTreeRow>& rows) {
    m_treeModel->clear();
    m_treeModel->setHorizontalHeaderLabels({tr("Property"), tr("Value")});
    // (The header has sections only once the model has columns.)
    m_tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    // Every cell's text is white, as the dark window draws it.
    const std::function<void(QStandardItem*, const QList<PropertyTreeRow>&)> add =
        [&add](QStandardItem* parent, const QList<PropertyTreeRow>& children) {
            for (const PropertyTreeRow& r : children) {
                auto* key = new QStandardItem(r.key);
                auto* value =
                    new QStandardItem(r.children.isEmpty() ? valueText(r.val) : QString());
                for (QStandardItem* cell : {key, value}) cell->setForeground(Qt::white);
                value->setToolTip(value->text());
                parent->appendRow({key, value});
                add(key, r.children);
            }
        };
    add(m_treeModel->invisibleRootItem(), rows);
}
