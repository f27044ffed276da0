// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolButton>

// A button of the toolbar. It does not act by itself: pressing it tells the
// controller which button was pressed, and the controller's dispatcher
// decides what happens. Hovering is reported the same way.
class ToolbarButton : public QToolButton {
    Q_OBJECT
public:
    ToolbarButton(const QString& name, const QIcon& icon, const QString& text,
                  QWidget* parent = nullptr);

    // Wide enough for the whole label: a label is never cut.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void MybuttonMouseDown(QObject* sender);
    void PRbuttonMouseEntered(QObject* sender);
    void PRbuttonMouseExited(QObject* sender);

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
};
