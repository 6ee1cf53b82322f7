// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <vector>

/// The cells of the channel grid as a user's hands meet them: typing, clearing, pasting and
/// looking, each by the rules of modChEdit. Rows and columns are the grid's, from 1.
namespace k520::gridCells {

/// Whether a cell must not be edited now, by any means. Asks modChEdit, which also gives the cell
/// its way of editing.
[[nodiscard]] bool refuses(int row, int col);

/// Stores the new text of a cell that does not refuse, as typing it does; returns whether it did.
/// A frequency that is typed again is an edit (nothing typed over nothing is none): so the caller
/// must not store what was only looked at. In all other cells the text that is there already is not
/// stored, nor one that is missing in the cell's list.
bool store(int row, int col, const std::string& text);

/// Gives a cell that does not refuse what an empty text means in it: no channel, no transmission,
/// no tone, the default of a list. Raises 13 where the settings have no such default.
void clear(int row, int col);

/// Whether clearing a cell would empty its channel.
[[nodiscard]] bool empties(int row, int col);

/// Why a cell is coloured; empty for one that is not.
[[nodiscard]] std::string tipOf(int row, int col);

/// The texts that can be in a column, or ones as wide as they.
[[nodiscard]] std::vector<std::string> possibleTexts(int col);

}  // namespace k520::gridCells
