// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <stdexcept>
#include <string>

namespace k520::cli {

/// Exit codes that scripts rely on.
enum ExitCode : int {
    exitDone = 0,      ///< done; for comparisons: no difference
    exitFailed = 1,    ///< it failed, or a difference was found
    exitBadUsage = 2,  ///< the command line is wrong; nothing was touched
};

/// Ends a command: its exit code, and the one line that stderr gets.
class Failure : public std::runtime_error {
  public:
    Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}

    [[nodiscard]] ExitCode code() const noexcept { return code_; }

  private:
    ExitCode code_;
};

[[noreturn]] inline void fail(const std::string& message) {
    throw Failure(exitFailed, message);
}

[[noreturn]] inline void refuse(const std::string& message) {
    throw Failure(exitBadUsage, message);
}

}  // namespace k520::cli
