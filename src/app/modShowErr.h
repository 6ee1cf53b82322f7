// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Controls.h"
#include "base/Procedure.h"

/// The error list: every failure of a named procedure, logged under the procedure's label.
namespace k520::modShowErr {

/// One logged failure, as data.
struct Entry {
    Entry() = default;
    Entry(std::string who, std::int16_t what, std::string why, std::string whose = {});
    Entry(const Procedure& who, std::int16_t what, std::string why, std::string whose = {});

    /// Whether it was this procedure that failed.
    [[nodiscard]] bool isOf(const Procedure& which) const noexcept { return procedure == &which; }

    std::string label;                     ///< module, "->", procedure: for the list
    const Procedure* procedure = nullptr;  ///< where it is one that somebody looks for
    std::int16_t number = 0;               ///< standard run-time error number; 0: an option item
    std::string source;   ///< what failed, in the system's own words where there are any
    std::string subject;  ///< the file or device that it is about, where that was named apart
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
/// With the label of a procedure, which the entry then is of.
void ShowErrMsg(const Procedure& procedure);

/// Logs an optional-feature item that cannot be placed.
void ShowOptErrMsg(std::string_view item);

/// Sets the last description to the Chinese text of an error number, or to the empty text for a
/// number without one.
void VbErrNumDes(std::int16_t number);

}  // namespace k520::modShowErr
