// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/DesktopClock.h"

#include <QCoreApplication>
#include <QTimer>

namespace k520 {

namespace {

/// A session consists of waits this short, a thousand a second: serving the events in each would
/// cost more than the session. They are slept through once the events have been served within the
/// interval.
constexpr DesktopClock::Microseconds shortWait{2000};
constexpr DesktopClock::Microseconds serveInterval{4000};

}  // namespace

DesktopClock::DesktopClock() {
    setClock(this);
}

DesktopClock::~DesktopClock() {
    setClock(nullptr);
}

void DesktopClock::waitUntil(Microseconds deadline) {
    using std::chrono::milliseconds;
    const auto begin = now();
    const bool isShort = deadline > begin && deadline - begin <= shortWait;
    if (!isShort || begin - served_ >= serveInterval) {
        QCoreApplication::processEvents();
        served_ = now();
    }
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
        served_ = now();
    }
}

}  // namespace k520
