// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/Fault.h"
#include "image/MemoryImage.h"

/// The frequency band over values: the bands that there are, and the four bytes of the image that
/// hold one. Nothing process-wide is read or written. Frequencies are in 10 Hz units.
namespace k520::bandCodec {

/// In the image: the model's index in its list, then the band's lower and upper limit in 0.1 MHz as
/// four BCD digits each, most significant pair first (136 to 174 MHz is 13 60 17 40).
inline constexpr int modelAddress = 0x379;
inline constexpr int bandAddress = 0x37A;
inline constexpr int bandLength = 4;

struct Limits {
    std::int32_t low = 0;
    std::int32_t high = 0;

    [[nodiscard]] bool contain(std::int32_t frequency) const noexcept {
        return low <= frequency && frequency <= high;
    }
    friend bool operator==(const Limits&, const Limits&) = default;
};

/// An entry of the band list.
struct Band {
    std::string_view name;
    Limits limits;
};

inline constexpr int bandCount = 12;
/// The entries that mean more than their limits: what the program starts with, the whole range that
/// a custom band may lie in, and the custom band, which has no limits or name in the table.
inline constexpr int startBand = 5;
inline constexpr int wholeBand = 10;
inline constexpr int customBand = 11;

[[nodiscard]] std::span<const Band, bandCount> bands() noexcept;

/// An entry and the limits that go with it.
struct Selected {
    int band = wholeBand;
    Limits limits;

    friend bool operator==(const Selected&, const Selected&) = default;
};

struct Decoded {
    /// Nothing where the image is too short.
    std::optional<Selected> selected;
    /// That failure: 9, under the label of modModel::selectBandFromImage.
    Faults faults;
};

/// The entry whose limits an image holds. Limits that are in no entry select the custom one, and
/// are 120 to 520 MHz: custom limits are not kept.
[[nodiscard]] Decoded decode(const MemoryImage& image);

/// Puts limits into the image. Raises 9 where it is too short, 6 for a limit that is not of four
/// digits; what was put before stays.
void encode(Limits limits, MemoryImage& image);

/// The limits that two texts of MHz mean; nothing where one is not a number or lies beyond 120 to
/// 520 MHz, or where the lower one is not the first.
[[nodiscard]] std::optional<Limits> customLimits(std::string_view low, std::string_view high);

/// 0.1 MHz units (0 to 9999) as four BCD digits and back; nothing where a nibble is above 9. Raises
/// 6 for a number outside that range.
[[nodiscard]] std::array<std::uint8_t, 2> bcdOfTenths(int tenths);
[[nodiscard]] std::optional<int> tenthsOfBcd(std::array<std::uint8_t, 2> bytes) noexcept;

/// A limit in 0.1 MHz, halves to even: 145.12345 MHz is 1451.
[[nodiscard]] int tenthsOf(std::int32_t limit);

}  // namespace k520::bandCodec
