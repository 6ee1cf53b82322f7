// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/Clock.h"

namespace k520 {

/// Estimates how long a run of the radio link still takes, from the pace of what is done. All
/// stages of a run count alike. An attempt that starts again from the beginning is measured anew.
class TimeLeft {
  public:
    /// A run of so many stages, at least one, begins.
    void start(std::size_t stages);
    /// A stage, counted from 0, begins.
    void beginStage(std::size_t stage);
    /// What is left after the stage has reached `percent`; nothing while that is a mere guess.
    std::optional<Clock::Microseconds> reached(int percent, Clock::Microseconds now);

  private:
    struct Point {
        double share;
        Clock::Microseconds time;
    };

    std::size_t stages_ = 1;
    std::size_t stage_ = 0;
    double last_ = 0;
    std::optional<Point> from_;
};

/// "About 12 s left", in whole minutes for more than 90 s. Empty for nothing.
[[nodiscard]] std::string timeLeftText(std::optional<Clock::Microseconds> left);

}  // namespace k520
