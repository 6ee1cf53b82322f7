// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/timeLeft.h"

#include <algorithm>
#include <cmath>

#include "link/session/linkTexts.h"

namespace k520 {

namespace {

/// Less than this says little about the pace.
constexpr double leastShare = 0.02;
constexpr std::chrono::seconds leastTime{1};
constexpr double mostSeconds = 90;

}  // namespace

void TimeLeft::start(std::size_t stages) {
    *this = {};
    stages_ = std::max<std::size_t>(stages, 1);
}

void TimeLeft::beginStage(std::size_t stage) {
    stage_ = std::min(stage, stages_ - 1);
}

std::optional<Clock::Microseconds> TimeLeft::reached(int percent, Clock::Microseconds now) {
    const double share =
        (static_cast<double>(stage_) + percent / 100.0) / static_cast<double>(stages_);
    if (!from_ || share < last_) {
        from_ = Point{share, now};
    }
    last_ = share;
    const double done = share - from_->share;
    const auto taken = now - from_->time;
    if (done < leastShare || taken < leastTime) {
        return std::nullopt;
    }
    return Clock::Microseconds(
        std::llround(static_cast<double>(taken.count()) * (1 - share) / done));
}

std::string timeLeftText(std::optional<Clock::Microseconds> left) {
    if (!left) {
        return {};
    }
    const double seconds = std::chrono::duration<double>(*left).count();
    return seconds > mostSeconds ? say(texts::minutesLeft, std::llround(seconds / 60))
                                 : say(texts::secondsLeft, std::llround(std::ceil(seconds)));
}

}  // namespace k520
