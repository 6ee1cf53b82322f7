// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/ConsoleView.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "app/Checked.h"
#include "cli/interrupt.h"
#include "cli/output.h"

namespace k520::cli {

namespace {

constexpr int barLength = 30;
constexpr const char* clearLine = "\r\x1b[K";

}  // namespace

ConsoleView::ConsoleView(std::string stage, bool quiet)
    : stage_(std::move(stage)), terminal_(!quiet && isatty(STDERR_FILENO) == 1) {}

ConsoleView::~ConsoleView() {
    if (drawn_) {
        printError(clearLine);
    }
}

void ConsoleView::setStatus(const std::string& text) {
    // Percents are in the bar already; what remains is the number of failed attempts.
    const auto shown = trimBlanks(text);
    status_ = shown.ends_with('%') ? status_ : std::string(shown);
    draw();
}

void ConsoleView::setProgress(std::int16_t percent) {
    percent_ = percent;
    furthest_ = std::max(furthest_, percent);
    draw();
}

bool ConsoleView::abandoned() {
    return interrupted();
}

void ConsoleView::draw() {
    if (!terminal_) {
        return;
    }
    const auto filled = static_cast<std::size_t>(barLength * percent_ / 100);
    printError(fmt::format("{}{} [{:<{}}] {:3} %  {}", clearLine, stage_, std::string(filled, '#'),
                           barLength, percent_, status_));
    drawn_ = true;
}

}  // namespace k520::cli
