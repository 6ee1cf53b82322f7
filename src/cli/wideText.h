// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 texts on a terminal, where a Chinese character takes two columns.
namespace k520::cli {

/// The number of terminal columns that a text takes. A byte that belongs to no character counts as
/// one.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// The text with blanks after it up to `width` columns; a wider text as it is.
[[nodiscard]] std::string paddedRight(std::string_view text, std::size_t width);

/// Lines of at most `width` columns, the second and all further ones indented by `indent` blanks;
/// the first begins at column `indent`, too, but without the blanks. A line ends at a blank or
/// between Chinese characters, never before a closing mark. A longer word stays whole.
[[nodiscard]] std::string wrapped(std::string_view text, std::size_t indent, std::size_t width);

}  // namespace k520::cli
