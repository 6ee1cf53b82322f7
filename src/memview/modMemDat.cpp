// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "memview/modMemDat.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "app/Guard.h"
#include "base/Checked.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "memview/memDatTexts.h"

namespace k520::modMemDat {

namespace {

/// Sizes in twips.
constexpr int titleWidth = 750;
constexpr int byteWidth = 400;
constexpr int rowHeight = 270;

CellGrid& grid() {
    return state().vsfgGridMemDat;
}

int maxAddress() {
    return modIicDat::state().TableMaxAddr;
}

constexpr int rowOf(int address) noexcept {
    return address / bytesPerRow + 1;
}

constexpr int columnOf(int address) noexcept {
    return address % bytesPerRow + 1;
}

constexpr int addressOf(int row, int column) noexcept {
    return (row - 1) * bytesPerRow + column - 1;
}

bool isDataCell(int row, int column) {
    return row >= 1 && row < grid().rows() && column >= 1 && column < grid().columns();
}

/// The rows whose start is below the highest address: an address that is a start itself gets none.
int dataRows() {
    return std::max(0, (maxAddress() + bytesPerRow - 1) / bytesPerRow);
}

void setHeader() {
    grid().setText(0, 0, "Addr");
    grid().setColumnWidth(0, titleWidth);
    for (int column = 1; column <= bytesPerRow; ++column) {
        grid().setText(0, column, fmt::format("{:X}", column - 1));
        grid().setColumnWidth(column, byteWidth);
    }
    grid().setRowHeight(0, rowHeight);
}

void setDataRow(int row) {
    grid().setText(row, 0, rowTitle(addressOf(row, 1)));
    grid().setRowHeight(row, rowHeight);
    for (int column = 1; column <= bytesPerRow; ++column) {
        grid().setEditing(row, column, EditMode::keyboard);
    }
}

void setMark(int row, int column, std::optional<Colour> background) {
    if (grid().cell(row, column).background != background) {
        grid().setBackground(row, column, background);
    }
}

/// A refill compares every byte, so no text is made for it.
bool isTextOf(std::string_view shown, std::uint8_t byte) noexcept {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr unsigned lowDigit = 0xF;
    return shown.size() == 2 && shown[0] == digits[byte >> 4U] &&
           shown[1] == digits[byte & lowDigit];
}

void showByte(int row, int column, std::uint8_t byte) {
    const std::string& shown = grid().text(row, column);
    if (isTextOf(shown, byte)) {
        return;
    }
    if (!shown.empty() && hexToInt16(shown) != byte) {
        setMark(row, column, changedMark);
    }
    grid().setText(row, column, FormatByteDat(byte));
}

std::string tipText(int address, std::uint8_t byte) {
    const std::string bits = H_To_B(FormatByteDat(byte));
    return fmt::format("地址为: 0x{:04X}    二进制:{}    {}    十进制{}    \r\n", address, bits,
                       B_To_BitShow(bits), B_To_D(bits));
}

int hexDigitValue(char digit) noexcept {
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    const auto at = digits.find(digit);
    if (at == std::string_view::npos) {
        return -1;
    }
    return static_cast<int>(at < 16 ? at : at - 6);
}

/// TableFreDat's work; whether every cell shows its byte now.
bool refill() {
    return guarded("modMemDat->TableFreDat", [] {
        const MemoryImage& image = modIicDat::IicDat();
        for (int address = 0; address <= maxAddress(); ++address) {
            showByte(rowOf(address), columnOf(address), image(address));
        }
    });
}

/// Puts a byte into the image. While the grid is level with it, that is all there is to write back.
void writeTyped(int row, int column, std::uint8_t byte, bool level) {
    if (!level) {
        vsfgGridMemDat_AfterEdit();
    } else if (isDataCell(row, column) && addressOf(row, column) <= maxAddress()) {
        modIicDat::IicDat()(addressOf(row, column)) = byte;
    }
}

[[noreturn]] void throwBadDigit(std::string_view text) {
    throw RuntimeError(errNum::typeMismatch, say(texts::notHexadecimal, text));
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::string rowTitle(int address) {
    return fmt::format("{:04X}H", address);
}

std::string FormatByteDat(std::uint8_t byte) {
    return hexText(byte, 2);
}

bool isByteText(std::string_view text) noexcept {
    return text.size() == 2 &&
           std::ranges::all_of(text, [](char digit) { return hexDigitValue(digit) >= 0; });
}

char characterOf(std::uint8_t byte) noexcept {
    constexpr std::uint8_t firstPrintable = 0x20;
    constexpr std::uint8_t lastPrintable = 0x7E;
    return byte >= firstPrintable && byte <= lastPrintable ? static_cast<char>(byte) : '.';
}

std::optional<int> parseAddress(std::string_view text) {
    constexpr std::size_t mostDigits = 4;
    std::string_view digits = trimBlanks(text);
    if (digits.ends_with('H') || digits.ends_with('h')) {
        digits.remove_suffix(1);
    }
    if (digits.empty() || digits.size() > mostDigits ||
        !std::ranges::all_of(digits, [](char digit) { return hexDigitValue(digit) >= 0; })) {
        return std::nullopt;
    }
    return static_cast<std::uint16_t>(hexToInt16(digits));
}

void SetGridMemDat() {
    guarded("modMemDat->SetGridMemDat", [] {
        const int rows = dataRows();
        grid().reset(rows + 1, bytesPerRow + 1);
        setHeader();
        for (int row = 1; row <= rows; ++row) {
            setDataRow(row);
        }
    });
}

void TableFreDat() {
    static_cast<void>(refill());
}

void followImage() {
    if (state().shown) {
        TableFreDat();
    }
}

void cmdFillGrid_Click() {
    guarded("frmMemDat->cmdFillGrid_Click", [] { TableFreDat(); });
}

void cmdSetDefCol() {
    guarded("frmMemDat->cmdSetDefCol", [] {
        for (int row = 1; row < grid().rows(); ++row) {
            for (int column = 1; column < grid().columns(); ++column) {
                setMark(row, column, std::nullopt);
            }
        }
    });
}

bool typeByte(int row, int column, std::string_view text) {
    if (!isByteText(text)) {
        return false;
    }
    const bool level = refill();
    guarded("frmMemDat->typeByte", [&] {
        const std::uint8_t byte = SeparateChar(text);
        if (!isTextOf(grid().text(row, column), byte)) {
            grid().setText(row, column, FormatByteDat(byte));
            writeTyped(row, column, byte, level);
            documentOrigin::edited(say(texts::stepByte, addressOf(row, column)));
        }
    });
    return true;
}

void fitGrid() {
    if (grid().rows() == dataRows() + 1) {
        return;
    }
    const bool wasFilled = isDataCell(1, 1) && !grid().text(1, 1).empty();
    SetGridMemDat();
    if (wasFilled) {
        TableFreDat();
    }
}

void GridDataTemp() {
    guarded("frmMemDat->GridDataTemp", [] {
        MemoryImage& image = modIicDat::IicDat();
        for (int address = 0; address <= maxAddress(); ++address) {
            image(address) = SeparateChar(grid().text(rowOf(address), columnOf(address)));
        }
    });
}

void vsfgGridMemDat_AfterEdit() {
    guarded("frmMemDat->vsfgGridMemDat_AfterEdit", [] { GridDataTemp(); });
}

std::string CellTipHint(int row, int column) {
    std::string tip;
    guarded("frmMemDat->CellTipHint", [&] {
        if (isDataCell(row, column) && !grid().text(row, column).empty()) {
            tip = tipText(addressOf(row, column), SeparateChar(grid().text(row, column)));
        }
    });
    return tip;
}

std::string H_To_B(std::string_view hex) {
    std::string bits;
    for (const char digit : hex) {
        const int value = hexDigitValue(digit);
        if (value < 0) {
            throwBadDigit(hex);
        }
        bits += fmt::format("{:04b}", value);
    }
    return bits;
}

std::int32_t B_To_D(std::string_view bin) {
    double value = 0;
    for (const char digit : bin) {
        if (digit != '0' && digit != '1') {
            throwBadDigit(bin);
        }
        value = value * 2 + (digit - '0');
    }
    return toInt32(value);
}

std::string B_To_BitShow(std::string_view bin) {
    constexpr std::size_t groupEnd = 3;
    std::string shown;
    for (std::size_t i = 0; i < bin.size(); ++i) {
        shown += fmt::format("B{}:{} {}", i, bin[i], i == groupEnd ? "  " : "");
    }
    return shown;
}

std::uint8_t SeparateChar(std::string_view text) {
    return toByte(hexToInt16(text));
}

}  // namespace k520::modMemDat
