// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

/// What the radio information shows, and its entrance for developers.
namespace k520::radioInfo {

struct State {
    /// All bits set for true. While it is true, a double click leads to the memory data.
    std::int16_t debugFlag = 0;
};

[[nodiscard]] State& state();

/// Switches the debug flag: true becomes false, anything else becomes true.
void lblDebug_Click();

/// Limits in 10 Hz units as "400.00000 - 470.00000MHz".
[[nodiscard]] std::string bandText(std::int32_t low, std::int32_t high);

/// When the radio that the image is from was last written, as "2026-11-21 13:05"; text 179 where
/// the stamp is not a date.
[[nodiscard]] std::string lastWriteText();

}  // namespace k520::radioInfo
