// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/modShowErr.h"
#include "base/Fault.h"

namespace k520 {

/// Runs a named procedure's body. A failure goes to the error list under `label`, a text or a
/// Procedure, and no further. Returns whether the body came to its end.
template <class Label, class Body>
bool guarded(const Label& label, Body&& body) {
    try {
        body();
        return true;
    } catch (...) {
        modShowErr::notePendingFailure();
        modShowErr::ShowErrMsg(label);
        return false;
    }
}

/// Each fault goes to the error list under its own procedure.
inline void logFaults(const Faults& faults) {
    for (const auto& fault : faults) {
        guarded(fault.procedure, [&] { throw fault.error; });
    }
}

}  // namespace k520
