// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/toolbar_button.h"

#include <algorithm>

ToolbarButton::ToolbarButton(const QString& name, const QIcon& icon, const QString& text,
                             QWidget* parent)
    : QToolButton(parent) {
    setObjectName(name);
    setIcon(icon);
    setText(text);
    setToolTip(text);
    setIconSize(QSize(26, 26));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setAutoRaise(true);
    setCursor(Qt::PointingHandCursor);
    connect(this, &QToolButton::clicked, this, [this] { Q_EMIT MybuttonMouseDown(this); });
}

void ToolbarButton::enterEvent(QEnterEvent* event) {
    QToolButton::enterEvent(event);
    Q_EMIT PRbuttonMouseEntered(this);
}

void ToolbarButton::leaveEvent(QEvent* event) {
    QToolButton::leaveEvent(event);
    Q_EMIT PRbuttonMouseExited(this);
}

QSize ToolbarButton::sizeHint() const {
    QSize size = QToolButton::sizeHint();
    // The style's own hint, widened where a style sheet's minimum or a
    // larger font would leave the text less room than it takes.
    constexpr int kSideRoom = 20;
    size.setWidth(std::max(size.width(), fontMetrics().horizontalAdvance(text()) + kSideRoom));
    return size;
}
