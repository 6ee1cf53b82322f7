// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/ClearStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace k520 {

namespace {

/// How strong the outline is, from 0 to 255: weaker where the control cannot be used.
constexpr int usableOutline = 170;
constexpr int disabledOutline = 80;
/// How much of a text's colour a hint has.
constexpr float hintStrength = 0.68F;

bool isDark(const QPalette& palette) {
    constexpr int middle = 128;
    return palette.color(QPalette::Window).lightness() < middle;
}

QPen outline(const QStyleOption& option) {
    QColor colour = option.palette.color(QPalette::WindowText);
    colour.setAlpha(option.state.testFlag(QStyle::State_Enabled) ? usableOutline : disabledOutline);
    return {colour, 1};
}

}  // namespace

void ClearStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QColor hint = palette.color(group, QPalette::WindowText);
        hint.setAlphaF(hintStrength * hint.alphaF());
        palette.setColor(group, QPalette::PlaceholderText, hint);
    }
}

void ClearStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox;
    if ((!box && element != PE_IndicatorRadioButton) || !isDark(option->palette)) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(outline(*option));
    painter->setBrush(Qt::NoBrush);
    const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    box ? painter->drawRect(edge) : painter->drawEllipse(edge);
    painter->restore();
}

}  // namespace k520
