// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string_view>
#include <vector>

#include "base/RuntimeError.h"

namespace k520 {

/// One thing that went wrong in a function over values, and the named procedure under which the
/// error list shows it.
struct Fault {
    std::string_view procedure;
    RuntimeError error;
};

/// In the order in which they happened.
using Faults = std::vector<Fault>;

}  // namespace k520
