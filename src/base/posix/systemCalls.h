// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "base/RuntimeError.h"

namespace k520 {

/// Raises the standard error nearest to `error`, an errno value (see the other throwSystemError).
[[noreturn]] inline void throwSystemError(int error, const std::string& subject) {
    throwSystemError(std::error_code(error, std::generic_category()), subject);
}

/// The call's result once no signal interrupts it any more.
template <class Call>
auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The call's result; raises what errno says for -1.
template <class Result>
Result checked(Result result, const std::filesystem::path& subject) {
    if (result == -1) {
        throwSystemError(errno, subject.string());
    }
    return result;
}

}  // namespace k520
