// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Signal.h"

/// The controls that the rules write into, as plain observable data. A window shows them through a
/// thin adapter; the command line and the tests read them as they are.
namespace k520 {

/// A colour; the components run from 0 to 255.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// A colour text of the settings file: a decimal colour number (blue * 65536 + green * 256 + red)
/// or "#RRGGBB". Nothing for any other text.
[[nodiscard]] std::optional<Colour> parseColour(std::string_view text) noexcept;

/// A list box: lines, of which one may be selected.
class LineList {
  public:
    /// A line has just been inserted and selected: its index.
    Signal<int> onInsert;
    /// The list was emptied.
    Signal<> onClear;

    /// Inserts a line in front of `index` (0..size) and selects it; raises 9 outside that range.
    void insertSelected(int index, std::string line);
    void clear();

    [[nodiscard]] int size() const noexcept { return static_cast<int>(lines_.size()); }
    [[nodiscard]] const std::vector<std::string>& lines() const noexcept { return lines_; }
    /// The index of the selected line; -1 while the list is empty.
    [[nodiscard]] int selected() const noexcept { return selected_; }

  private:
    std::vector<std::string> lines_;
    int selected_ = -1;
};

/// How a cell is edited.
enum class EditMode : std::uint8_t { none = 0, list = 1, keyboard = 2 };

/// One cell of a grid. A background of nothing means the control's own colour.
struct Cell {
    std::string text;
    std::optional<Colour> background;
    EditMode editMode = EditMode::none;
    std::vector<std::string> choices;
};

/// A grid of cells: row 0 and column 0 hold the titles. Every access raises 9 outside the grid.
class CellGrid {
  public:
    /// A cell has changed: its row and column.
    Signal<int, int> onCellChanged;
    /// The shape, the titles or all cells have changed.
    Signal<> onReset;

    /// Empties the grid and gives it a new shape.
    void reset(int rows, int columns);

    [[nodiscard]] int rows() const noexcept { return rows_; }
    [[nodiscard]] int columns() const noexcept { return columns_; }

    [[nodiscard]] const Cell& cell(int row, int column) const;
    [[nodiscard]] const std::string& text(int row, int column) const {
        return cell(row, column).text;
    }
    void setText(int row, int column, std::string text);
    void setBackground(int row, int column, std::optional<Colour> background);
    void setEditing(int row, int column, EditMode mode, std::vector<std::string> choices = {});

    /// Widths and heights are in twips (1/1440 inch), as the settings file gives them.
    void setColumnWidth(int column, int twips);
    void setRowHeight(int row, int twips);
    [[nodiscard]] int columnWidth(int column) const;
    [[nodiscard]] int rowHeight(int row) const;

    /// The number format of a column's cells ("###.#####"); empty for plain text.
    void setColumnFormat(int column, std::string format);
    [[nodiscard]] const std::string& columnFormat(int column) const;

  private:
    [[nodiscard]] Cell& at(int row, int column);
    void changed(int row, int column) const;

    int rows_ = 0;
    int columns_ = 0;
    std::vector<Cell> cells_;
    std::vector<int> columnWidths_;
    std::vector<int> rowHeights_;
    std::vector<std::string> columnFormats_;
};

}  // namespace k520
