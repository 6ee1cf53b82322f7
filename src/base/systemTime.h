// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <ctime>

/// What a clock asks of the system.
namespace k520::systemTime {

/// A moment by the clock and the calendar of the place.
[[nodiscard]] std::tm local(std::time_t moment);

/// The system may wake a sleeper late to save power, by as much as one poll of the port in twenty.
/// Asks for punctuality, for the thread that calls.
void askForPunctuality();

}  // namespace k520::systemTime
