// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

/// Ctrl-C, a closed terminal and the request to terminate: noted, and looked at where a command can
/// end cleanly, so that none falls into the middle of a saving.
namespace k520::cli {

/// From here on the first SIGINT, SIGHUP or SIGTERM only leaves a mark; a second one ends the
/// program at once. A SIGHUP that is ignored at the start stays ignored.
void noteInterrupts();

[[nodiscard]] bool interrupted() noexcept;

/// A descriptor that becomes readable with the mark; -1 before noteInterrupts().
[[nodiscard]] int interruptDescriptor() noexcept;

}  // namespace k520::cli
