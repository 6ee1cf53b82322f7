// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Clock.h"

namespace k520::test {

/// A clock on which waiting takes no time: a wait moves it to its deadline. It is in force from
/// its making to its end.
class SimulatedClock : public Clock {
  public:
    SimulatedClock() { setClock(this); }
    ~SimulatedClock() override { setClock(nullptr); }
    SimulatedClock(const SimulatedClock&) = delete;
    SimulatedClock& operator=(const SimulatedClock&) = delete;

    [[nodiscard]] Microseconds now() override { return now_; }
    void waitUntil(Microseconds deadline) override {
        ++waits;
        now_ = deadline > now_ ? deadline : now_;
    }
    [[nodiscard]] DateTime dateTime() override { return wall; }

    /// Moves the time on without a wait.
    void advance(Microseconds by) { now_ += by; }

    DateTime wall{2026, 11, 21, 13, 5, 9};
    int waits = 0;

  private:
    Microseconds now_{0};
};

}  // namespace k520::test
