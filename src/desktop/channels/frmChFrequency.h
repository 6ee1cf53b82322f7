// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QStyleOptionViewItem>

class QPainter;

namespace k520::frmChFrequency {

/// Paints a cell that holds a frequency so that the points of a column stand below each other,
/// wherever the number has one. `option` is that of the cell, text and colours in it. A text that
/// has no room for that is painted as in any other cell.
void paint(QPainter& painter, const QStyleOptionViewItem& option);

/// Where the text begins, in pixels from the left end of a cell of that width; a negative number
/// where there is no room.
[[nodiscard]] int indent(const QString& text, const QFontMetrics& font, int width);

}  // namespace k520::frmChFrequency
