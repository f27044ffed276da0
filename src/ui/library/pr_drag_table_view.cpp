// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/library/pr_drag_table_view.h"

#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QVBoxLayout>

#include "ui/controls/path_drops.h"

PRDragTableView::PRDragTableView(QWidget* parent) : QTableView(parent) {
    setObjectName(QStringLiteral("dragtableView"));
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setDropIndicatorShown(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSortingEnabled(false);  // the controller sorts by its own rules
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIconSize(QSize(16, 16));
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(24);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void PRDragTableView::dragEnterEvent(QDragEnterEvent* event) {
    answerPathDrop(event, validateDrop);
}

void PRDragTableView::dragMoveEvent(QDragMoveEvent* event) {
    answerPathDrop(event, validateDrop);
}

void PRDragTableView::dropEvent(QDropEvent* event) {
    const QMimeData* mime = event->mimeData();
    if (mime && mime->hasUrls()) {
        m_urlArray = mime->urls();
        Q_EMIT NSDragOperationMediaNote(this);
    }
    answerPathDrop(event, acceptDrop);
}

DropHintView::DropHintView(const QString& iconPath, const QString& text, QWidget* parent)
    : QWidget(parent) {
    setAcceptDrops(true);
    auto* layout = new QVBoxLayout(this);
    layout->addStretch(1);
    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("hintPicture"));
    picture->setPixmap(QIcon(iconPath).pixmap(96, 96));
    picture->setAlignment(Qt::AlignCenter);
    auto* label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("hintText"));
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    layout->addWidget(picture);
    layout->addSpacing(12);
    layout->addWidget(label);
    layout->addStretch(2);
}

void DropHintView::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void DropHintView::dragMoveEvent(QDragMoveEvent* event) {
    answerPathDrop(event, validateDrop);
}

void DropHintView::dropEvent(QDropEvent* event) {
    answerPathDrop(event, acceptDrop);
}
