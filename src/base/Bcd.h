// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>

/// Binary-coded decimal, the radio's form of most numbers: a byte is two decimal digits, the higher
/// one in the upper half.
namespace k520::bcd {

/// The byte of a number from 0 to 99; of any other number nothing that is of use.
[[nodiscard]] constexpr std::uint8_t byteOf(int number) noexcept {
    return static_cast<std::uint8_t>(number / 10 % 10 * 16 + number % 10);
}

/// The number that a byte stands for; nothing where one of its halves is not a digit.
[[nodiscard]] constexpr std::optional<int> numberOf(std::uint8_t byte) noexcept {
    const int tens = byte >> 4;
    const int units = byte & 0x0F;
    return tens > 9 || units > 9 ? std::nullopt : std::optional(tens * 10 + units);
}

}  // namespace k520::bcd
