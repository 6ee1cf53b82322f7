// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <utility>

#include "base/RuntimeError.h"

namespace k520::test {

/// The run-time error that a call raises; one with number 0 where it raises none.
template <class Call>
RuntimeError failureOf(Call&& call) {
    try {
        static_cast<void>(call());
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, "nothing"};
}

/// Its number.
template <class Call>
std::int16_t raised(Call&& call) {
    return failureOf(std::forward<Call>(call)).number();
}

}  // namespace k520::test
