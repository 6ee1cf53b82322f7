// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Pasting into the channel grid: all of a block or nothing.
namespace k520::gridPaste {

/// A cell of the grid, from 1.
struct Place {
    int row = 0;
    int col = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// A text as lines of cells: lines end with LF or CR LF, cells with a tabulator.
[[nodiscard]] std::vector<std::vector<std::string>> blockOf(std::string_view text);

/// Pastes a text over the chosen cells, by the rules of typing, from left to right. A single cell
/// fills every chosen one; a block lies with its first cell on the first of them. A first line
/// that is just the titles above it is left out. An empty text is taken by every cell that shows
/// none, and outside the grid.
///
/// Returns the cells that were pasted. Where one cell cannot be taken nothing is pasted, a box says
/// which and why, and no cell is returned; none either while the window is locked.
std::vector<Place> paste(std::string_view text, std::span<const Place> chosen);

}  // namespace k520::gridPaste
