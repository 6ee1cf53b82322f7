// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>

/// Frequencies are signed 32-bit integers in units of 10 Hz (MHz x 100000).
namespace k520::frequency {

inline constexpr std::int32_t perMhz = 100'000;

/// What stands in the place of a frequency where there is none.
inline constexpr std::int32_t none = -1;

/// The frequency in MHz as the shortest decimal text: 44600625 is "446.00625", 14500000 is "145".
[[nodiscard]] std::string mhzText(std::int32_t frequency);

/// The frequency with all five decimals, so that the points of a column stand below each other.
[[nodiscard]] std::string fixedMhzText(std::int32_t frequency);

/// The frequency nearest to a number of MHz, halves to even. Raises 6 outside 32 bits.
[[nodiscard]] std::int32_t fromMhz(double mhz);

/// The nearest point of the 5 kHz raster or of the 6.25 kHz raster, whichever is nearer; the
/// latter on a tie. Half-way between two points of one raster the even multiple counts. Raises 6
/// where the result leaves 32 bits.
[[nodiscard]] std::int32_t snapToRaster(std::int32_t frequency);

/// The radio's form of a frequency: eight BCD digits, the least significant pair first. Raises 13
/// where a nibble is above 9.
[[nodiscard]] std::int32_t fromBcd(std::span<const std::uint8_t, 4> bytes);
/// The eight BCD digits of a frequency from 0 to 999.99999 MHz.
void toBcd(std::int32_t frequency, std::span<std::uint8_t, 4> bytes);

}  // namespace k520::frequency
