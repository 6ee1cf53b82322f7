// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

namespace k520::interrupt {

/// A descriptor that becomes readable with the mark; -1 before note(). It is not read.
[[nodiscard]] int descriptor() noexcept;

}  // namespace k520::interrupt
