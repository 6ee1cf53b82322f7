// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/systemTime.h"

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace k520::systemTime {

std::tm local(std::time_t moment) {
    std::tm parts{};
    ::localtime_r(&moment, &parts);
    return parts;
}

void askForPunctuality() {
#ifdef __linux__
    // The system's own choice is 50 us. Once for each thread that waits.
    constexpr unsigned long slackNs = 1000;
    thread_local const bool asked = ::prctl(PR_SET_TIMERSLACK, slackNs) == 0;
    static_cast<void>(asked);
#endif
}

}  // namespace k520::systemTime
