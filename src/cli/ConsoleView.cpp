// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/ConsoleView.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <utility>

#include "base/Checked.h"
#include "base/Interrupt.h"
#include "base/Terminal.h"
#include "cli/cliTexts.h"
#include "cli/output.h"

namespace k520::cli {

namespace {

constexpr int barLength = 30;
constexpr const char* clearLine = "\r\x1b[K";

}  // namespace

ConsoleView::ConsoleView(bool quiet) : terminal_(!quiet && isTerminal(Stream::err)) {}

ConsoleView::~ConsoleView() {
    clear();
}

void ConsoleView::clear() {
    if (std::exchange(drawn_, false)) {
        printError(clearLine);
    }
}

void ConsoleView::beginStage(Stage stage) {
    // By Stage.
    static constexpr std::array<Text, 5> names{texts::readingNow, texts::backingUpNow,
                                               texts::writingNow, texts::restoringNow,
                                               texts::comparingNow};
    stage_ = say(names.at(static_cast<std::size_t>(stage)));
    status_.clear();
    percent_ = 0;
    draw();
}

void ConsoleView::setStatus(const std::string& text) {
    // Percents are in the bar already; what remains is the number of failed attempts.
    const auto shown = trimBlanks(text);
    status_ = shown.ends_with('%') ? status_ : std::string(shown);
    draw();
}

void ConsoleView::setProgress(std::int16_t percent) {
    if (percent == 0) {
        // A session sets its progress back when it is over; the line has nothing to show then.
        stage_.clear();
        clear();
        return;
    }
    percent_ = percent;
    draw();
}

bool ConsoleView::abandoned() {
    return interrupt::noted();
}

void ConsoleView::draw() {
    if (!terminal_ || stage_.empty()) {
        return;
    }
    const auto filled = static_cast<std::size_t>(barLength * percent_ / 100);
    printError(fmt::format("{}{} [{:<{}}] {:3} %  {}", clearLine, stage_, std::string(filled, '#'),
                           barLength, percent_, status_));
    drawn_ = true;
}

}  // namespace k520::cli
