// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Clock.h"

#include <ctime>
#include <thread>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace k520 {

namespace {

SystemClock systemClock;
Clock* clockInForce = nullptr;

/// The system may wake a sleeper late to save power, 50 us by default: as much as one poll of the
/// port in twenty. Once for each thread that waits.
void askForPunctuality() {
#ifdef __linux__
    constexpr unsigned long slackNs = 1000;
    thread_local const bool asked = ::prctl(PR_SET_TIMERSLACK, slackNs) == 0;
    static_cast<void>(asked);
#endif
}

}  // namespace

Clock::Microseconds SystemClock::now() {
    return std::chrono::duration_cast<Microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::waitUntil(Microseconds deadline) {
    askForPunctuality();
    std::this_thread::sleep_until(std::chrono::steady_clock::time_point(
        std::chrono::duration_cast<std::chrono::steady_clock::duration>(deadline)));
}

DateTime SystemClock::dateTime() {
    const std::time_t seconds = std::time(nullptr);
    std::tm parts{};
    localtime_r(&seconds, &parts);
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
