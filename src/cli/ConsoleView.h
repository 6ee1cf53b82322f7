// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

#include "link/protocol/communView.h"

namespace k520::cli {

/// The view of a radio link on a terminal: one line on stderr that names the stage and follows its
/// progress to 100 %; then it is taken away. Nothing is shown when stderr is not a terminal. Ctrl-C
/// abandons the session.
class ConsoleView : public CommunView {
  public:
    /// A `quiet` view has no line.
    explicit ConsoleView(bool quiet);
    ~ConsoleView() override;
    ConsoleView(const ConsoleView&) = delete;
    ConsoleView& operator=(const ConsoleView&) = delete;

    void beginStage(Stage stage) override;
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

    /// Takes the line away.
    void clear();

  private:
    void draw();

    std::string stage_;  ///< empty between the stages
    std::string status_;
    std::int16_t percent_ = 0;
    bool terminal_;
    bool drawn_ = false;
};

}  // namespace k520::cli
