// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Controls.h"

/// The error list: every failure of a named procedure, logged under the procedure's label.
namespace k520::modShowErr {

/// One logged failure, as data.
struct Entry {
    std::string label;         ///< module, "->", procedure
    std::int16_t number;       ///< standard run-time error number; 0 for an option item
    std::string source;        ///< what failed, in the system's own words where there are any
    std::string subject = {};  ///< the file or device that the source begins with, where it is one
};

struct State {
    /// The lines of the list: two for each failure.
    LineList listShowErr;
    /// Where the next line goes; it only grows.
    std::int16_t lineCounter = 0;
    /// What VbErrNumDes produced last.
    std::string lastDescription;
    /// The failures that the lines tell of, in the same order.
    std::vector<Entry> entries;
    /// The failure that ShowErrMsg is to log.
    std::int16_t pendingNumber = 0;
    std::string pendingSource;
    std::string pendingSubject;
};

[[nodiscard]] State& state();

/// Notes the exception being handled as the pending failure. A RuntimeError keeps its number and
/// source; lack of memory is 7, any other exception 51. Only to be called from a catch block.
void notePendingFailure() noexcept;

/// Logs the pending failure under `label`: a line with date and time, and a line with label,
/// number, source and description.
void ShowErrMsg(std::string_view label);

/// Logs an optional-feature item that cannot be placed.
void ShowOptErrMsg(std::string_view item);

/// Sets the last description to the Chinese text of an error number, or to the empty text for a
/// number without one.
void VbErrNumDes(std::int16_t number);

}  // namespace k520::modShowErr
