// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunResult.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

using sessionAdvice::Tone;

constexpr int adviceLines = 5;
constexpr int iconSide = 40;

struct Mark {
    QColor colour;
    QPainterPath path;
};

/// A disc with a sign in it, on a square of 100 units; seen on light and dark windows alike.
Mark markOf(Tone tone) {
    QPainterPath path;
    switch (tone) {
        case Tone::good:
            path.moveTo(28, 52);
            path.lineTo(44, 68);
            path.lineTo(73, 34);
            return {QColor(40, 150, 72), path};
        case Tone::warning:
            path.moveTo(50, 24);
            path.lineTo(50, 56);
            path.moveTo(50, 74);
            path.lineTo(50, 74.5);
            return {QColor(214, 132, 20), path};
        case Tone::bad:
            path.moveTo(33, 33);
            path.lineTo(67, 67);
            path.moveTo(67, 33);
            path.lineTo(33, 67);
            return {QColor(200, 50, 47), path};
        case Tone::plain:
            break;
    }
    path.moveTo(50, 46);
    path.lineTo(50, 76);
    path.moveTo(50, 26);
    path.lineTo(50, 26.5);
    return {QColor(64, 120, 190), path};
}

QPixmap pictureOf(Tone tone, qreal ratio) {
    QPixmap picture(QSize(iconSide, iconSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(iconSide / 100.0, iconSide / 100.0);
    const Mark mark = markOf(tone);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.colour);
    painter.drawEllipse(QPointF(50, 50), 48, 48);
    painter.strokePath(mark.path, QPen(Qt::white, 10, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return picture;
}

}  // namespace

frmCommunResult::frmCommunResult(QWidget* parent)
    : QWidget(parent),
      imgResult_(ownNamed<QLabel>("imgResult", this)),
      lblResult_(ownNamed<QLabel>("lblResult", this)),
      lblAdvice_(ownNamed<QLabel>("lblAdvice", this)) {
    imgResult_->setFixedSize(iconSide, iconSide);
    lblResult_->setTextFormat(Qt::PlainText);
    lblResult_->setWordWrap(true);
    lblAdvice_->setWordWrap(true);
    lblAdvice_->setTextFormat(Qt::PlainText);
    lblAdvice_->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    lblAdvice_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* grid = own<QGridLayout>(this);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(12);
    grid->addWidget(imgResult_, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(lblResult_, 0, 1);
    grid->addWidget(lblAdvice_, 1, 1);
    grid->setColumnStretch(1, 1);
}

void frmCommunResult::setNotice(const sessionAdvice::Notice& notice) {
    imgResult_->setPixmap(pictureOf(notice.tone, devicePixelRatioF()));
    lblResult_->setText(qText(notice.headline));
    lblAdvice_->setText(qText(notice.advice));
    setAdviceTip({});
}

void frmCommunResult::keepRoom() {
    lblResult_->ensurePolished();
    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(QFontInfo(bold).pointSizeF() * 1.2);
    lblResult_->setFont(bold);
    lblResult_->setFixedHeight(lblResult_->fontMetrics().height());
    lblAdvice_->ensurePolished();
    lblAdvice_->setFixedHeight(lblAdvice_->fontMetrics().lineSpacing() * adviceLines +
                               lblAdvice_->fontMetrics().descent());
}

void frmCommunResult::setAdviceTip(const QString& tip) {
    lblAdvice_->setToolTip(tip);
}

}  // namespace k520
