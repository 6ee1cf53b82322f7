// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

/// Where windows are shown.
namespace k520::display {

/// False where the system would have told where its display is, and has not. A window toolkit ends
/// the program there, with words of its own.
[[nodiscard]] bool mayBeThere();

}  // namespace k520::display
