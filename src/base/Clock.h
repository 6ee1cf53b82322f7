// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <chrono>
#include <cstdint>

namespace k520 {

/// A calendar date and time of day, local time. Months and days count from 1.
struct DateTime {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const DateTime&, const DateTime&) = default;
};

/// All of the program's time: the one clock and the one wait. The desktop's wait serves the event
/// queue meanwhile; tests put a simulated clock in its place.
class Clock {
  public:
    using Microseconds = std::chrono::microseconds;

    virtual ~Clock() = default;

    /// A steady time since an unspecified start; it never goes back.
    [[nodiscard]] virtual Microseconds now() = 0;
    /// Returns at `deadline` or a little later, never earlier.
    virtual void waitUntil(Microseconds deadline) = 0;
    /// Waits without serving the interface.
    virtual void sleepUntil(Microseconds deadline) { waitUntil(deadline); }
    /// The wall clock.
    [[nodiscard]] virtual DateTime dateTime() = 0;
};

/// The system's steady and wall clocks; the wait sleeps.
class SystemClock : public Clock {
  public:
    [[nodiscard]] Microseconds now() override;
    void waitUntil(Microseconds deadline) override;
    [[nodiscard]] DateTime dateTime() override;
};

/// The clock in force: a SystemClock until setClock puts another in its place.
[[nodiscard]] Clock& theClock() noexcept;
/// Puts `clock` in force, or the SystemClock again for a null pointer. The caller keeps it alive.
void setClock(Clock* clock) noexcept;

}  // namespace k520
