// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Clock.h"

namespace k520 {

/// The system's clocks; the wait serves the event queue and sleeps until the next event or the
/// deadline. Waits of a poll's length are slept through, and every few of them serve the events: in
/// a row of such waits an event stays 6 ms or little longer. In force from its making to its end.
class DesktopClock : public SystemClock {
  public:
    DesktopClock();
    ~DesktopClock() override;
    DesktopClock(const DesktopClock&) = delete;
    DesktopClock& operator=(const DesktopClock&) = delete;

    void waitUntil(Microseconds deadline) override;
    void sleepUntil(Microseconds deadline) override { SystemClock::waitUntil(deadline); }

  private:
    Microseconds served_{0};  ///< when the events were served last
};

}  // namespace k520
