// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QProxyStyle>

namespace k520 {

/// The platform's own style, but for check boxes and option buttons on a dark ground: those get an
/// outline in the colour of the text, because styles draw it nearly as dark as the ground.
class ClearStyle : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace k520
