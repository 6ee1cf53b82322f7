// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Controls.h"

/// The memory data grid: the whole memory image as a hexadecimal table, sixteen bytes a row, in
/// which changed bytes are marked and bytes can be edited.
namespace k520::modMemDat {

inline constexpr int bytesPerRow = 16;

struct State {
    /// Row 0 and column 0 hold the titles. Byte address a stands in row a / 16 + 1, column
    /// a % 16 + 1, as two upper-case hexadecimal digits.
    CellGrid vsfgGridMemDat;
    /// Whether a window shows the grid.
    bool shown = false;
};

[[nodiscard]] State& state();

/// The background of a byte that has changed since the table was last filled.
inline constexpr Colour changedMark{255, 0, 0};

/// The title of the row that begins at an address: "01F0H".
[[nodiscard]] std::string rowTitle(int address);

/// A byte as the cells show it: two upper-case hexadecimal digits.
[[nodiscard]] std::string FormatByteDat(std::uint8_t byte);

/// Whether a user may type this text into a cell: two hexadecimal digits, the letters of any case.
[[nodiscard]] bool isByteText(std::string_view text) noexcept;

/// The character that stands for a byte: the ASCII one, "." where that cannot be printed.
[[nodiscard]] char characterOf(std::uint8_t byte) noexcept;

/// A typed address: one to four hexadecimal digits, perhaps with the "H" that row titles carry and
/// blanks around it. Nothing for any other text.
[[nodiscard]] std::optional<int> parseAddress(std::string_view text);

/// Rebuilds the empty grid: a row for every sixteen addresses whose start is below TableMaxAddr.
/// Label "modMemDat->SetGridMemDat".
void SetGridMemDat();

/// Shows the image's bytes 0..TableMaxAddr and marks the cells that showed another byte; a cell
/// that was empty is never marked. The marks stay until SetGridMemDat or cmdSetDefCol. Fails with
/// 9 at the first address beyond the grid or the image, and with 13 at a cell that shows no
/// hexadecimal number. Cells that are right already are left alone, so that a refill tells the
/// window about nothing but the changes. Label "modMemDat->TableFreDat".
void TableFreDat();

/// TableFreDat where a window shows the grid. Whoever has completed a read, a write, a save or an
/// open calls it.
void followImage();

/// The command of the fill button: TableFreDat.
void cmdFillGrid_Click();

/// Takes all marks away. Label "frmMemDat->cmdSetDefCol".
void cmdSetDefCol();

/// What a user has typed into a cell: a byte that is another one goes into the image. Before that
/// the grid is filled anew, so that writing it back changes this byte alone, whatever has happened
/// to the image since. The tables do not follow: the bytes of channels and options are theirs
/// again when the image is next saved or sent. Returns false for a text that is not a byte, and
/// does nothing then.
bool typeByte(int row, int column, std::string_view text);

/// Gives the grid as many rows as TableMaxAddr asks for now, filled where it was filled before.
void fitGrid();

/// Copies the cells 0..TableMaxAddr back into the image; stops at the first that cannot be read (13
/// no hexadecimal number, 6 no byte, 9 outside grid or image). Label "frmMemDat->GridDataTemp".
void GridDataTemp();

/// After the user has edited a cell: GridDataTemp.
void vsfgGridMemDat_AfterEdit();

/// The tip for the cell under the mouse: address, binary digits, bits one by one, decimal value, in
/// one line with its end. Empty for titles, empty cells and anything outside the grid. Label
/// "frmMemDat->CellTipHint".
[[nodiscard]] std::string CellTipHint(int row, int column);

/// Hexadecimal text to binary digits, four for each. Raises 13 for another character.
[[nodiscard]] std::string H_To_B(std::string_view hex);

/// Binary digits to their value. Raises 13 for another character, 6 above 31 bits.
[[nodiscard]] std::int32_t B_To_D(std::string_view bin);

/// Every digit with its place counted from the left, so the most significant bit is "B0":
/// "B0:1 B1:0 B2:1 B3:0   B4:0 ", two more blanks after the fourth.
[[nodiscard]] std::string B_To_BitShow(std::string_view bin);

/// A cell's text, read as a hexadecimal number, as a byte. Raises 13 where it is none, 6 above FF.
[[nodiscard]] std::uint8_t SeparateChar(std::string_view text);

}  // namespace k520::modMemDat
