// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunLight.h"

#include <QPainter>
#include <QTimer>
#include <chrono>

#include "desktop/widgets/owned.h"

namespace k520 {

namespace {

constexpr std::chrono::milliseconds blinkInterval{300};
// Seen on light and dark windows alike.
constexpr QColor green(46, 174, 82);
constexpr QColor darkGreen(30, 120, 56);

}  // namespace

frmCommunLight::frmCommunLight(QWidget* parent)
    : QWidget(parent), tmrLigGrint_(ownNamed<QTimer>("tmrLigGrint", this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    tmrLigGrint_->setInterval(blinkInterval);
    connect(tmrLigGrint_, &QTimer::timeout, this, [this] { setLit(!lit_); });
}

void frmCommunLight::setBlinking(bool on) {
    setLit(on);
    if (on) {
        tmrLigGrint_->start();
    } else {
        tmrLigGrint_->stop();
    }
}

QSize frmCommunLight::sizeHint() const {
    const int side = fontMetrics().height();
    return {side, side};
}

void frmCommunLight::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height()) - 4.0;
    QRectF circle(0, 0, side, side);
    circle.moveCenter(QRectF(rect()).center());
    painter.setPen(QPen(lit_ ? darkGreen : palette().color(QPalette::Mid), 1.5));
    painter.setBrush(lit_ ? QBrush(green) : QBrush(Qt::NoBrush));
    painter.drawEllipse(circle);
}

void frmCommunLight::setLit(bool lit) {
    lit_ = lit;
    update();
}

}  // namespace k520
