// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The cells of the channel grid as a user's hands meet them: typing, clearing, pasting and
/// looking, each by the rules of modChEdit. Rows and columns are the grid's, from 1.
namespace k520::gridCells {

/// Whether a cell must not be edited now, by any means. Asks modChEdit, which also gives the cell
/// its way of editing.
[[nodiscard]] bool refuses(int row, int col);

/// Stores the new text of a cell that does not refuse, however it came; returns whether it did. The
/// text that is there already is not stored, so that looking into a cell is no edit; but the
/// frequency of a channel that was just opened is taken by typing it again. A text that is missing
/// in the cell's list is not stored either.
bool store(int row, int col, const std::string& text);

/// The same for a cell that was not asked yet.
void put(int row, int col, const std::string& text);

/// Gives a cell that does not refuse what an empty text means in it: no channel, no transmission,
/// no tone, the default of a list. Raises 13 where the settings have no such default.
void clear(int row, int col);

/// A pasted text as lines of cells: lines end with LF or CR LF, cells with a tabulator.
[[nodiscard]] std::vector<std::vector<std::string>> blockOf(std::string_view text);

/// Why a cell is coloured; empty for one that is not.
[[nodiscard]] std::string tipOf(int row, int col);

/// The texts that can be in a column, or ones as wide as they.
[[nodiscard]] std::vector<std::string> possibleTexts(int col);

}  // namespace k520::gridCells
