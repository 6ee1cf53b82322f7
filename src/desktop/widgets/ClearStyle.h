// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QProxyStyle>

namespace k520 {

/// The platform's own style, but for hints and for check boxes and option buttons on a dark ground:
/// those get an outline in the colour of the text, because styles draw it nearly as dark as the
/// ground.
class ClearStyle : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    /// Hints in fields and beside them: weaker than other texts, but easy to read on the ground
    /// that the palette has, which the palettes of desktops do not always see to.
    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace k520
