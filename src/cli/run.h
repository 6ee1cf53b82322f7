// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

namespace k520::cli {

/// The whole program: takes the command line apart, runs the command and says on stderr, in one
/// line, what went wrong. Returns the exit code.
[[nodiscard]] int run(int count, const char* const* words);

}  // namespace k520::cli
