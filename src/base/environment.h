// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdlib>
#include <string>

namespace k520 {

/// A variable of the environment; empty where it is not set.
[[nodiscard]] inline std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace k520
