// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Clock.h"

#include <ctime>
#include <thread>

#include "base/systemTime.h"

namespace k520 {

namespace {

SystemClock systemClock;
Clock* clockInForce = nullptr;

}  // namespace

Clock::Microseconds SystemClock::now() {
    return std::chrono::duration_cast<Microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::waitUntil(Microseconds deadline) {
    systemTime::askForPunctuality();
    std::this_thread::sleep_until(std::chrono::steady_clock::time_point(
        std::chrono::duration_cast<std::chrono::steady_clock::duration>(deadline)));
}

DateTime SystemClock::dateTime() {
    const std::tm parts = systemTime::local(std::time(nullptr));
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

Clock& theClock() noexcept {
    return clockInForce != nullptr ? *clockInForce : systemClock;
}

void setClock(Clock* clock) noexcept {
    clockInForce = clock;
}

}  // namespace k520
