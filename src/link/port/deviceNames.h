// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

/// The sixteen ports COM1 to COM16, and the devices that a platform has for them.
namespace k520::deviceNames {

inline constexpr std::int16_t firstPort = 1;
inline constexpr std::int16_t lastPort = 16;

enum class Platform : std::uint8_t { gnuLinux, macOs, windows };

/// "COM3".
[[nodiscard]] std::string portName(std::int16_t number);

/// The device of a port number by the platform's rule; empty where there is none. On Linux COM1 to
/// COM4 are /dev/ttyS0 to 3, COM5 to COM8 /dev/ttyACM0 to 3, COM9 to COM16 /dev/ttyUSB0 to 7; on
/// macOS they are the devices /dev/cu.* in alphabetical order; on Windows COMn itself. Raises 9
/// outside 1..16.
[[nodiscard]] std::string platformDevice(Platform platform, std::int16_t number);

/// Raises 9 outside 1..16.
void requireNumber(std::int16_t number);

}  // namespace k520::deviceNames
