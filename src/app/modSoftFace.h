// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/softFaceTexts.h"
#include "base/Text.h"

/// The interface texts of the language in force.
namespace k520::modSoftFace {

struct State {
    /// Texts by index 0 to 445, UTF-8; all empty before the first FillSoftFace.
    std::array<std::string, 446> SoftFace;
};

[[nodiscard]] State& state();

/// Fills the table for a language: 1 Simplified Chinese, 2 Traditional Chinese, 3 English. Any
/// other number is first replaced by 3, in the caller's variable too. The table is cleared before:
/// an index that the language does not define is empty. Language 2 defines none, so every text is
/// empty then; there are no Traditional Chinese texts, and none are borrowed. The named texts
/// (Text.h) follow.
void FillSoftFace(std::int16_t& language);

/// A text of the table. Raises 9 outside 0 to 445.
[[nodiscard]] const std::string& text(SoftText text);

/// A text in one of the two languages that have texts, whichever is in force; empty for
/// a number that has none.
[[nodiscard]] std::string_view textIn(TextLanguage language, SoftText text) noexcept;

}  // namespace k520::modSoftFace
