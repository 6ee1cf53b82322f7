// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Clock.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <ctime>
#include <thread>

namespace k520 {
namespace {

TEST(SystemClock, TellsTheLocalTime) {
    const auto now = std::time(nullptr);
    const DateTime told = SystemClock().dateTime();
    std::tm parts{};
    parts.tm_year = told.year - 1900;
    parts.tm_mon = told.month - 1;
    parts.tm_mday = told.day;
    parts.tm_hour = told.hour;
    parts.tm_min = told.minute;
    parts.tm_sec = told.second;
    parts.tm_isdst = -1;
    EXPECT_LE(std::mktime(&parts) - now, 60);
    EXPECT_GE(std::mktime(&parts) - now, 0);
}

// The system's own choice, 50 us late, would be a twentieth of each wait for a byte.
TEST(SystemClock, WaitsToTheMicrosecond) {
    int slack = -1;
    std::thread([&] {
        SystemClock clock;
        const auto deadline = clock.now() + std::chrono::milliseconds(1);
        clock.waitUntil(deadline);
        EXPECT_GE(clock.now(), deadline);
        slack = ::prctl(PR_GET_TIMERSLACK);
    }).join();
    EXPECT_GE(slack, 0);
    EXPECT_LE(slack, 1000) << "nanoseconds";
}

}  // namespace
}  // namespace k520
