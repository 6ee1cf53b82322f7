// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Letters that lead to a control with the Alt key. In a caption the mark "&" stands before its
/// letter; "&&" is an ampersand.
namespace k520::mnemonics {

/// The letters that captions have, in capitals.
[[nodiscard]] std::string lettersOf(std::span<const std::string> captions);

/// Gives each caption a letter of its own that is not in `taken` (capitals): one of its words'
/// first letters where that is free, else another of its letters, else a free one in brackets
/// after the caption. A caption with letters other than ASCII always has the bracket. A caption
/// that has a mark keeps it; an empty one stays empty; when no letter is left a caption goes
/// without.
[[nodiscard]] std::vector<std::string> marked(std::vector<std::string> captions,
                                              std::string_view taken);

}  // namespace k520::mnemonics
