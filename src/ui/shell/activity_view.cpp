// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/activity_view.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "core/common/logging.h"

namespace {
constexpr int kMaxBlocks = 2000;
}

ActivityView::ActivityView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("activityPane"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(6, 2, 6, 2);
    m_details = new QCheckBox(tr("Details"), this);
    m_details->setObjectName(QStringLiteral("activityDetails"));
    m_details->setToolTip(tr("Also show the program's diagnostic lines"));
    bar->addStretch(1);
    bar->addWidget(m_details);
    m_text = new QPlainTextEdit(this);
    m_text->setObjectName(QStringLiteral("activityView"));
    m_text->setToolTip(tr("What the program did with your files"));
    m_text->setAccessibleName(tr("Activity"));
    m_text->setReadOnly(true);
    m_text->setMaximumBlockCount(kMaxBlocks);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    layout->addLayout(bar);
    layout->addWidget(m_text, 1);
    connect(m_details, &QCheckBox::toggled, this, &ActivityView::reload);
    reload();
    // Lines may come from import threads; the queued hop lands them here.
    connect(&ActivityLog::instance(), &ActivityLog::lineAdded, this, &ActivityView::appendLine,
            Qt::QueuedConnection);
}

QString ActivityView::text() const {
    return m_text->toPlainText();
}

void ActivityView::reload() {
    m_text->clear();
    for (const ActivityLog::Line& line : ActivityLog::instance().entries())
        appendLine(line.text, line.diagnostic);
}

void ActivityView::appendLine(const QString& line, bool diagnostic) {
    if (!diagnostic || m_details->isChecked()) m_text->appendPlainText(line);
}
