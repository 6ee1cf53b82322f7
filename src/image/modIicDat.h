// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "image/MemoryImage.h"

/// The memory image, its companions, and the sizes and addresses that bound them.
namespace k520::modIicDat {

/// A radio is read and written in blocks of so many bytes.
inline constexpr int blockLength = 16;

/// Addresses from `start` to `end`, both inclusive, signed 16-bit as the settings give them.
struct AddressRange {
    std::int16_t start = 0;
    std::int16_t end = 0x1FFF;

    friend bool operator==(const AddressRange&, const AddressRange&) = default;
};

struct State {
    /// The memory image that everything reads and edits, and its equally long companions: the
    /// default image, and a spare that nothing uses.
    MemoryImage IicDat{1};
    MemoryImage IicDatDef{1};
    MemoryImage IicDatSpare{1};
    /// The highest address of the three.
    std::int16_t DatNum = 0;
    /// The highest address that the memory data grid shows.
    std::int16_t TableMaxAddr = 0x1FFF;
    AddressRange readRange;
    AddressRange writeRange;
    AddressRange partialFillRange;
    /// "CtMax" and then "DcsMax" of the settings file: the second deliberately overwrites the
    /// first. Kept and not consulted; the tone tables have sizes of their own.
    std::int16_t toneLimit = 0;
    std::int16_t combinedToneLimit = 0;
    /// What SeparateChar produced last.
    std::array<std::uint8_t, 4> separated{};
};

[[nodiscard]] State& state();

/// The memory image and the default image.
[[nodiscard]] inline MemoryImage& IicDat() {
    return state().IicDat;
}
[[nodiscard]] inline MemoryImage& IicDatDef() {
    return state().IicDatDef;
}

/// Makes the three arrays anew with indices 0..datNum, all bytes 0. Raises 9 for a negative
/// highest index; the arrays then stay as they were.
void sizeArrays(std::int16_t datNum);

/// Loads the default image file into IicDat and IicDatDef: raw memory, as many bytes as the arrays
/// hold. A shorter file fills only as far as it reaches. Label "mdifrmMain->InitTempArray".
void InitTempArray();

/// Splits up to eight hexadecimal digits into bytes from the left, in `separated`; bytes beyond the
/// text keep their values. A text above eight digits fails with 9 after four bytes. Label
/// "mdifrmMain->SeparateChar".
void SeparateChar(std::string_view text);

/// A hook for model parameters; it does nothing.
void SolveModelPara();

}  // namespace k520::modIicDat
