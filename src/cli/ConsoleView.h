// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

#include "link/communView.h"

namespace k520::cli {

/// A session's view on a terminal: one line on stderr that follows the progress. Nothing is shown
/// when stderr is no terminal. Ctrl-C abandons the session.
class ConsoleView : public CommunView {
  public:
    /// `stage` is what the line calls the session ("Reading"); a `quiet` view has no line.
    ConsoleView(std::string stage, bool quiet);
    ~ConsoleView() override;
    ConsoleView(const ConsoleView&) = delete;
    ConsoleView& operator=(const ConsoleView&) = delete;

    void setStatus(const std::string& text) override;
    void setPercentText(const std::string& /*text*/) override {}
    void setProgress(std::int16_t percent) override;
    void enableStart(Direction /*direction*/, bool /*enabled*/) override {}
    void setBusy(bool /*busy*/) override {}
    void resetStopBox() override {}
    void enableStopBox() override {}
    [[nodiscard]] bool stopTicked() override { return abandoned(); }
    void setBlinking(bool /*on*/) override {}
    [[nodiscard]] bool showMemDatTicked() override { return false; }
    [[nodiscard]] bool abandoned() override;

    /// The most progress of any attempt, in percent.
    [[nodiscard]] std::int16_t furthest() const noexcept { return furthest_; }

  private:
    void draw();

    std::string stage_;
    std::string status_;
    std::int16_t percent_ = 0;
    std::int16_t furthest_ = 0;
    bool terminal_;
    bool drawn_ = false;
};

}  // namespace k520::cli
