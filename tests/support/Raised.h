// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>

#include "base/RuntimeError.h"

namespace k520::test {

/// The number of the run-time error that a call raises; 0 where it raises none.
template <class Call>
std::int16_t raised(Call&& call) {
    try {
        static_cast<void>(call());
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

}  // namespace k520::test
