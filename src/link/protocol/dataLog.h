// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// The lines by which the data list logs a frame.
namespace k520::dataLog {

/// Directions of a frame, as the log procedures take them.
inline constexpr std::int16_t sent = 0;
inline constexpr std::int16_t received = -1;

/// The lines of one frame. Each byte is two upper-case hexadecimal digits and a blank. The first
/// line holds up to four bytes (command, address, length) after "Tx: " or "Rx: ", each further
/// one sixteen after seven blanks, and what is left over stands after four.
[[nodiscard]] std::vector<std::string> frameLines(std::int16_t direction,
                                                  std::span<const std::uint8_t> bytes);

}  // namespace k520::dataLog
