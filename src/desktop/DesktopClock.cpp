// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/DesktopClock.h"

#include <QCoreApplication>
#include <QTimer>

namespace k520 {

namespace {

/// A wait this short is slept through once the events are served: none of them waits noticeably
/// longer for it, and a session consists of such waits.
constexpr DesktopClock::Microseconds shortWait{2000};

}  // namespace

DesktopClock::DesktopClock() {
    setClock(this);
}

DesktopClock::~DesktopClock() {
    setClock(nullptr);
}

void DesktopClock::waitUntil(Microseconds deadline) {
    using std::chrono::milliseconds;
    QCoreApplication::processEvents();
    if (deadline - now() <= shortWait) {
        SystemClock::waitUntil(deadline);
        return;
    }
    // Of this wait alone: an event that is served here may wait itself.
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    for (auto left = deadline - now(); left.count() > 0; left = deadline - now()) {
        const auto whole = std::chrono::floor<milliseconds>(left);
        if (whole.count() == 0) {
            // Too short for the alarm.
            SystemClock::waitUntil(deadline);
            break;
        }
        alarm.start(whole);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

}  // namespace k520
