// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

/// The lock of the channel window.
namespace k520::interfaceLock {

/// States of the lock, as the settings file names them.
inline constexpr const char* locked = "ShowLock";
inline constexpr const char* unlocked = "ShowNo";

struct State {
    /// Anything but `locked` means unlocked.
    std::string lockState = unlocked;
};

[[nodiscard]] State& state();

}  // namespace k520::interfaceLock
