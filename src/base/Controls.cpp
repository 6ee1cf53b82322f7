// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Controls.h"

#include <charconv>
#include <utility>

#include "base/Checked.h"

namespace k520 {

namespace {

std::optional<std::uint32_t> parseColourNumber(std::string_view digits, int base) noexcept {
    std::uint32_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc{} || rest != end || value > 0xFFFFFF) {
        return std::nullopt;
    }
    return value;
}

constexpr std::uint8_t byteOf(std::uint32_t value, int shift) noexcept {
    return static_cast<std::uint8_t>(value >> shift & 0xFF);
}

}  // namespace

std::optional<Colour> parseColour(std::string_view text) noexcept {
    const std::string_view trimmed = trimBlanks(text);
    if (trimmed.starts_with('#')) {
        const auto rgb =
            trimmed.size() == 7 ? parseColourNumber(trimmed.substr(1), 16) : std::nullopt;
        return rgb ? std::optional(Colour{byteOf(*rgb, 16), byteOf(*rgb, 8), byteOf(*rgb, 0)})
                   : std::nullopt;
    }
    const auto bgr = parseColourNumber(trimmed, 10);
    return bgr ? std::optional(Colour{byteOf(*bgr, 0), byteOf(*bgr, 8), byteOf(*bgr, 16)})
               : std::nullopt;
}

void LineList::insertSelected(int index, std::string line) {
    if (index < 0 || index > size()) {
        throwSubscript("list line", index);
    }
    lines_.insert(lines_.begin() + index, std::move(line));
    selected_ = index;
    onInsert.tell(index);
}

void LineList::clear() {
    lines_.clear();
    selected_ = -1;
    onClear.tell();
}

void CellGrid::reset(int rows, int columns) {
    if (rows < 0 || columns < 0) {
        throwSubscript("grid size", rows < 0 ? rows : columns);
    }
    rows_ = rows;
    columns_ = columns;
    const auto height = static_cast<std::size_t>(rows);
    const auto width = static_cast<std::size_t>(columns);
    cells_.assign(height * width, Cell{});
    columnWidths_.assign(width, 0);
    rowHeights_.assign(height, 0);
    columnFormats_.assign(width, {});
    onReset.tell();
}

const Cell& CellGrid::cell(int row, int column) const {
    if (row < 0 || row >= rows_) {
        throwSubscript("grid row", row);
    }
    if (column < 0 || column >= columns_) {
        throwSubscript("grid column", column);
    }
    return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                  static_cast<std::size_t>(column)];
}

Cell& CellGrid::at(int row, int column) {
    return const_cast<Cell&>(std::as_const(*this).cell(row, column));
}

void CellGrid::changed(int row, int column) const {
    onCellChanged.tell(row, column);
}

void CellGrid::setText(int row, int column, std::string text) {
    at(row, column).text = std::move(text);
    changed(row, column);
}

void CellGrid::setBackground(int row, int column, std::optional<Colour> background) {
    at(row, column).background = background;
    changed(row, column);
}

void CellGrid::setEditing(int row, int column, EditMode mode, std::vector<std::string> choices) {
    Cell& target = at(row, column);
    target.editMode = mode;
    target.choices = std::move(choices);
}

void CellGrid::setColumnWidth(int column, int twips) {
    checkedAt(columnWidths_, column, "column width") = twips;
}

void CellGrid::setRowHeight(int row, int twips) {
    checkedAt(rowHeights_, row, "row height") = twips;
}

int CellGrid::columnWidth(int column) const {
    return checkedAt(columnWidths_, column, "column width");
}

int CellGrid::rowHeight(int row) const {
    return checkedAt(rowHeights_, row, "row height");
}

void CellGrid::setColumnFormat(int column, std::string format) {
    checkedAt(columnFormats_, column, "column format") = std::move(format);
}

const std::string& CellGrid::columnFormat(int column) const {
    return checkedAt(columnFormats_, column, "column format");
}

}  // namespace k520
