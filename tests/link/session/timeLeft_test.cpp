// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/timeLeft.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace k520 {
namespace {

TEST(TimeLeft, FollowsThePaceAndForgetsAnAttemptThatFailed) {
    struct Report {
        std::size_t stage;
        int percent;
        int second;
        std::string says;
    };
    // Three stages of 20 s; the first attempt of the first stage fails after 2 s.
    const Report reports[] = {
        {0, 1, 0, ""},
        {0, 9, 2, "About 73 s left"},
        {0, 1, 10, ""},
        {0, 6, 11, ""},
        {0, 51, 20, "About 50 s left"},
        {1, 1, 30, "About 40 s left"},
        {2, 51, 60, "About 10 s left"},
        {2, 100, 70, "About 0 s left"},
    };
    setTextLanguage(TextLanguage::english);
    TimeLeft left;
    left.start(3);
    for (const auto& report : reports) {
        left.beginStage(report.stage);
        EXPECT_EQ(timeLeftText(left.reached(report.percent, std::chrono::seconds(report.second))),
                  report.says)
            << report.second;
    }
    EXPECT_EQ(timeLeftText(std::chrono::seconds(170)), "About 3 min left");
}

}  // namespace
}  // namespace k520
