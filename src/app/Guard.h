// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string_view>

#include "app/modShowErr.h"

namespace k520 {

/// Runs a named procedure's body. A failure goes to the error list under `label` and no further.
/// Returns whether the body came to its end.
template <class Body>
bool guarded(std::string_view label, Body&& body) {
    try {
        body();
        return true;
    } catch (...) {
        modShowErr::notePendingFailure();
        modShowErr::ShowErrMsg(label);
        return false;
    }
}

}  // namespace k520
