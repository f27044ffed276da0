#include "ui/video/video_panel.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

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

VideoPanel::VideoPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("videoMetaView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    m_title = new QLabel(tr("Video"), this);
    m_title->setObjectName(QStringLiteral("panelTitle"));
    layout->addWidget(m_title);
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight);
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(8);
    m_fileName = addFactRow(form, tr("File Name"));
    m_fileSize = addFactRow(form, tr("Size"));
    m_fileKind = addFactRow(form, tr("Kind"));
    m_fileLength = addFactRow(form, tr("Length"));
    m_fileDate = addFactRow(form, tr("Created"));
    m_filePath = addFactRow(form, tr("Where"));
    layout->addLayout(form);
    layout->addStretch(1);
}

void VideoPanel::ShowVideoViewWithItem(const IKImageItem& item) {
    m_fileName->setText(item.fileName);
    m_fileSize->setText(item.fileSize);
    // A fresh record's kind is the record default; an empty panel shows none.
    m_fileKind->setText(item.filePath.isEmpty() ? QString() : item.fileType);
    m_fileLength->setText(item.fileduratStr);
    m_fileDate->setText(item.fileCreateDateStr);
    m_filePath->setText(item.filePath);
}

QString VideoPanel::fileNameText() const {
    return m_fileName->text();
}
QString VideoPanel::fileSizeText() const {
    return m_fileSize->text();
}
QString VideoPanel::fileKindText() const {
    return m_fileKind->text();
}
