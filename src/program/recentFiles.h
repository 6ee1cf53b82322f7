// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <vector>

#include "base/Signal.h"

/// The data files that were opened and saved last, in section "Recent" of the settings file: keys
/// "1" to "10", the newest first.
namespace k520::recentFiles {

inline constexpr int most = 10;

struct State {
    /// The list was changed.
    Signal<> onChange;
};

[[nodiscard]] State& state();

/// Whole paths. A setting that cannot be read goes to the error list, and is left out.
[[nodiscard]] std::vector<std::string> list();

/// Puts a file first, and stores that. Its place before, if it had one, goes.
void add(const std::string& path);
/// Takes a file from the list.
void remove(const std::string& path);

}  // namespace k520::recentFiles
