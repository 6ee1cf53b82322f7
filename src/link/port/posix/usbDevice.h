// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <string>

namespace k520::usbDevice {

/// Maker and product of the USB device that a terminal belongs to; empty where there is none.
/// `terminals` is the system's folder of serial devices (another one in tests).
[[nodiscard]] std::string description(const std::string& device,
                                      const std::filesystem::path& terminals = "/sys/class/tty");

}  // namespace k520::usbDevice
