// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/dataLog.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/Checked.h"

namespace k520::dataLog {

namespace {

constexpr std::size_t headBytes = 4;
constexpr std::size_t lineBytes = 16;
constexpr std::string_view wholeLinePrefix = "       ";
constexpr std::string_view restPrefix = "    ";

std::string line(std::string_view prefix, std::span<const std::uint8_t> bytes) {
    std::string text(prefix);
    for (const std::uint8_t byte : bytes) {
        text += hexText(byte, 2);
        text += ' ';
    }
    return text;
}

}  // namespace

std::vector<std::string> frameLines(std::int16_t direction, std::span<const std::uint8_t> bytes) {
    const auto head = bytes.first(std::min(headBytes, bytes.size()));
    std::vector<std::string> lines{line(direction == sent ? "Tx: " : "Rx: ", head)};
    auto rest = bytes.subspan(head.size());
    for (; rest.size() >= lineBytes; rest = rest.subspan(lineBytes)) {
        lines.push_back(line(wholeLinePrefix, rest.first(lineBytes)));
    }
    if (!rest.empty()) {
        lines.push_back(line(restPrefix, rest));
    }
    return lines;
}

}  // namespace k520::dataLog
