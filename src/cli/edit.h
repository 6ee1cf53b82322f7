// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

/// Edits by the rules of the grid and the panel, named by the keys of `k520-cli set`.
namespace k520::cli {

/// Makes one edit in the tables; the image follows when it is next saved or sent.
/// Raises Failure 2 for a key that does not exist, a channel number out of range or a value that is
/// no entry, no frequency or no tone; Failure 1 for an edit that the grid refuses. The tables are
/// then as they were.
void applyEdit(std::string_view key, const std::string& value);

/// Makes the edit that a word "KEY=VALUE" asks for.
void applyEditWord(const std::string& word);

/// Edits one cell of a channel's row: a frequency, a tone or a parameter by its column, as typing
/// does. Errors as above.
void editCell(int channel, int column, const std::string& value);

/// The column that a channel key's last part names ("rx", "decode", "p5", "Power"); 0 for none.
[[nodiscard]] int columnOfKey(std::string_view name);
/// The name of a column as export writes it: rx, tx, decode, encode or the column's key.
[[nodiscard]] std::string nameOfColumn(int column);

}  // namespace k520::cli
