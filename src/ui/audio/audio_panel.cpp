#include "ui/audio/audio_panel.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {
// A two-column fact row: a dim name and a selectable value.
QLabel* addFactRow(QFormLayout* form, const QString& title) {
    auto* name = new QLabel(title);
    name->setObjectName(QStringLiteral("factName"));
    auto* value = new QLabel;
    value->setObjectName(QStringLiteral("factValue"));
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
    form->addRow(name, value);
    return value;
}
}  // namespace

AudioPanel::AudioPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("audioContentView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    auto* title = new QLabel(tr("Audio"), this);
    title->setObjectName(QStringLiteral("panelTitle"));
    layout->addWidget(title);
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight);
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(8);
    m_fileName = addFactRow(form, tr("File Name"));
    m_fileSize = addFactRow(form, tr("Size"));
    m_fileKind = addFactRow(form, tr("Kind"));
    m_fileLength = addFactRow(form, tr("Length"));
    m_artist = addFactRow(form, tr("Artist"));
    m_album = addFactRow(form, tr("Album"));
    layout->addLayout(form);
    layout->addStretch(1);
}

void AudioPanel::ShowAudioViewWithItem(const IKImageItem& item) {
    m_fileName->setText(item.fileName);
    m_fileSize->setText(item.fileSize);
    m_fileKind->setText(item.filePath.isEmpty() ? QString() : item.fileType);
    m_fileLength->setText(item.fileduratStr);
    m_artist->setText(item.fileArist);
    m_album->setText(item.fileAblumName);
}

QString AudioPanel::fileNameText() const {
    return m_fileName->text();
}
