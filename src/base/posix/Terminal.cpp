// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Terminal.h"

#include <unistd.h>

#include <cstddef>

#include "base/posix/systemCalls.h"

namespace k520 {

namespace {

int numberOf(Stream stream) noexcept {
    return stream == Stream::out ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

bool isTerminal(Stream stream) noexcept {
    return ::isatty(numberOf(stream)) == 1;
}

bool writeAtOnce(Stream stream, std::string_view text) noexcept {
    while (!text.empty()) {
        const auto written =
            retried([&] { return ::write(numberOf(stream), text.data(), text.size()); });
        if (written < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace k520
