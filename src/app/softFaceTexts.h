// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace k520 {

/// One interface text in both languages. Captions, list entries and messages are addressed
/// everywhere by this index, 0 to 445.
struct SoftFaceRow {
    std::int16_t index;
    std::string_view chinese;  ///< Simplified Chinese, UTF-8
    std::string_view english;  ///< UTF-8: a few texts contain full-width punctuation
};

/// All texts, ascending by index. An index without a row has no text in either language.
/// "&" marks the mnemonic of a menu item or button. The texts are established wording and are
/// shown as they are, misspellings and punctuation included.
[[nodiscard]] std::span<const SoftFaceRow> softFaceRows() noexcept;

}  // namespace k520
