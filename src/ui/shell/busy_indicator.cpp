// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/busy_indicator.h"

#include <QPainter>

namespace {
constexpr int kSpokes = 12;
}

BusyIndicator::BusyIndicator(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("busyIndicator"));
    setFixedSize(sizeHint());
    m_timer.setInterval(80);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % kSpokes;
        if (isVisible()) update();
    });
}

void BusyIndicator::startAnimation() {
    m_timer.start();
}

void BusyIndicator::stopAnimation() {
    m_timer.stop();
}

void BusyIndicator::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(width() / 2.0, height() / 2.0);
    const double radius = std::min(width(), height()) / 2.0;
    for (int i = 0; i < kSpokes; ++i) {
        // The spoke at the current step is brightest; the others fade behind it.
        const int age = (m_step - i + kSpokes) % kSpokes;
        QColor c(0x4f, 0xb3, 0xff);
        c.setAlphaF(1.0 - age / double(kSpokes));
        p.setPen(QPen(c, 2.0, Qt::SolidLine, Qt::RoundCap));
        p.save();
        p.rotate(i * 360.0 / kSpokes);
        p.drawLine(QPointF(0, -radius * 0.45), QPointF(0, -radius * 0.9));
        p.restore();
    }
}
