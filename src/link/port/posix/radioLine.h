// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

namespace k520 {

/// Puts a terminal into the radio's line settings: 9600 baud, 8 data bits, no parity, 1 stop bit,
/// no flow control, modem lines not consulted; bytes pass unchanged and without echo, and a read
/// never waits. False, with errno set, where the terminal refuses.
[[nodiscard]] bool setRadioLine(int fd) noexcept;

}  // namespace k520
