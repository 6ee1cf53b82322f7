// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/toneCode.h"

/// The tone tables. A tone's index is the same in all of them: 0 off, 1 to 50 CTCSS, 51 to 155 DCS
/// normal, 156 to 260 DCS inverted.
namespace k520::modCtdcs {

inline constexpr int toneCount = 1 + toneCode::ctcssCount + 2 * toneCode::dcsCount;

struct State {
    /// Display texts of the lists: "67.0", "D023N", "D023I".
    std::array<std::string, toneCode::ctcssCount> CtcssTextArray;
    std::array<std::string, toneCode::dcsCount> DcsNTextArray;
    std::array<std::string, toneCode::dcsCount> DcsITextArray;
    /// Display text, and stored word as four hexadecimal digits, of each index.
    std::array<std::string, toneCount> CtdcsText;
    std::array<std::string, toneCount> CtdcsIicDat;
    /// All display texts in the order of their indices, "|" between them.
    std::string CtdcsList;
    /// The off text of the language in force when the tables were built; a change of language
    /// leaves it.
    std::string CtdcsOffText;
    /// The items of the in-cell tone list.
    std::vector<std::string> cboGridChCtdcs;
};

[[nodiscard]] State& state();

/// Builds all tables, once, at start-up. A language outside 1 to 3 is first set to 3.
void GenCtdcsList();
/// Builds the three arrays of display texts.
void GetCtdcsArray();
/// Builds the stored words.
void GetCtdcsIIcDat();

/// The index of a display text; nothing for a tone that is in none of the lists.
[[nodiscard]] std::optional<int> toneIndexOf(std::string_view text);

}  // namespace k520::modCtdcs
