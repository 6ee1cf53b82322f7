// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "link/port/SerialPort.h"

/// The serial ports of the system that the program runs on.
namespace k520::platformPort {

/// The device of COM1 to COM16 on this system (see deviceNames::platformDevice). Raises 9 outside
/// 1..16.
[[nodiscard]] std::string deviceOf(std::int16_t number);

/// A port for a device of the system; nothing is opened yet.
[[nodiscard]] std::unique_ptr<SerialPort> make(const std::string& device);

/// What a device says of itself: maker and product of the USB device, or nothing.
[[nodiscard]] std::string description(const std::string& device);

}  // namespace k520::platformPort
