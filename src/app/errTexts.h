// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace k520 {

/// The Chinese description of one run-time error, as the error list shows it in every language.
struct ErrText {
    std::int16_t number;    ///< a standard run-time error number
    std::string_view text;  ///< UTF-8
};

/// The 114 error numbers that have a description, ascending. Text 35 really holds two blanks
/// after its first word.
[[nodiscard]] std::span<const ErrText> errTexts() noexcept;

}  // namespace k520
