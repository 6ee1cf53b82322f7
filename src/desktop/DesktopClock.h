// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/Clock.h"

namespace k520 {

/// The system's clocks; the wait serves the event queue and sleeps until the next event or the
/// deadline, or through the whole of a wait of a poll's length. In force from its making to its
/// end.
class DesktopClock : public SystemClock {
  public:
    DesktopClock();
    ~DesktopClock() override;
    DesktopClock(const DesktopClock&) = delete;
    DesktopClock& operator=(const DesktopClock&) = delete;

    void waitUntil(Microseconds deadline) override;
    void sleepUntil(Microseconds deadline) override { SystemClock::waitUntil(deadline); }
};

}  // namespace k520
