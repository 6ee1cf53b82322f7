// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>

#include "base/Procedure.h"

/// The values of the radio-wide options, between the memory image and the settings file, where
/// every interface language keeps a set of current and a set of default values.
namespace k520::modSysSet {

/// Values by option number; 0 to 15 are options (see optionTable.h), the rest is room.
using OptionSet = std::array<std::int16_t, 100>;

struct State {
    /// What the panel shows and edits.
    OptionSet OptNow{};
    /// Where decoding takes a value from when the image holds one outside the valid range.
    OptionSet OptDef{};
    /// The number of values in each set of the settings file, as OptNowDefSol read it last. Not
    /// checked: it can be negative or larger than the arrays.
    std::int16_t OptCount = 0;
};

[[nodiscard]] State& state();

namespace procedures {
inline constexpr Procedure optNowDefSol{"modSysSet->OptNowDefSol"};
}

[[nodiscard]] inline const OptionSet& OptNow() {
    return state().OptNow;
}
[[nodiscard]] inline const OptionSet& OptDef() {
    return state().OptDef;
}

/// 0 = OptSelToSave, 1 = SaveToOptSel; any other mode does nothing.
void OptSelSaveSol(std::int16_t mode);

/// Encodes OptNow into the memory image, option by option; stops at the first that fails (6 for a
/// value that is not a byte, 9 for an image that is too short). Voice chip and crystal are never
/// encoded: the image keeps what it holds for them.
void OptSelToSave();

/// Decodes the memory image into OptNow, option by option; stops where the image ends (9). What is
/// out of range is replaced from OptDef without a word.
void SaveToOptSel();

/// Works on the sets that section "Option" of the settings file keeps for the language in force:
/// 0 loads both, 1 saves OptNow, 2 makes OptDef the current set and saves it, 3 makes OptNow the
/// default set and saves it; any other mode does none of it. A language outside 1..3 is first set
/// to 3 for the rest of the run, and OptCount is read. Stops at the first failure: 13 or 6 for a
/// value that is not a 16-bit integer, 9 at entry 100. What was done before stays done.
///
/// The file's keys are numbers: "0" is the count for all languages; the defaults are at
/// language * 1000 + 1 + n, the current values at language * 1000 + 501 + n.
void OptNowDefSol(std::int16_t mode);

}  // namespace k520::modSysSet
