// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "desktop/widgets/EditTable.h"

namespace k520 {

/// The colours of a field whose text was refused.
[[nodiscard]] QPalette refusedPalette(QPalette palette);

/// A table of bytes as two hexadecimal digits. Typing, F2 or a double click edits the current cell;
/// Enter goes down, Tab to the next byte. A text that is not a byte is not accepted: the editor
/// stays open and says so until it is corrected or left with Escape or for another cell.
class frmMemDatGrid : public EditTable {
    Q_OBJECT

  public:
    explicit frmMemDatGrid(QWidget* parent = nullptr);

    /// Shows a model whose row titles look like `widestTitle`; `corner` stands above them. Where
    /// it is too narrow for all columns it scrolls sideways.
    void showModel(QAbstractItemModel& model, const QString& widestTitle, const QString& corner);

    /// The width at which all columns are seen, without a scroll bar.
    [[nodiscard]] int fullWidth() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

  private:
    void setCornerText(const QString& text);
    void go(CursorAction step);
};

}  // namespace k520
