// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/wideText.h"

/// Printing: stdout that is checked, tables, colours.
namespace k520::cli {

/// Writes to stdout. Raises Failure 1 when that fails (a full disk, a closed pipe).
void print(std::string_view text);
/// Makes sure that everything printed has left the program; raises Failure 1 otherwise.
void flushOutput();

/// Writes to stderr. What cannot be written there is lost: there is nobody left to tell.
void printError(const std::string& text) noexcept;

/// Whether stdout is a terminal on which colours are welcome (NO_COLOR is not set).
[[nodiscard]] bool coloursWanted();

/// `text` in bold where colours are wanted.
[[nodiscard]] std::string bold(const std::string& text);
/// `text` in the colour of a warning where colours are wanted.
[[nodiscard]] std::string flagged(const std::string& text);

/// One column of a table.
struct Column {
    std::string title;
    bool right = false;
};

/// A table with columns as wide as their contents, two blanks between, titles in bold. Wide
/// characters count as two. A row whose number is in `flaggedRows` is coloured.
[[nodiscard]] std::string formatTable(const std::vector<Column>& columns,
                                      const std::vector<std::vector<std::string>>& rows,
                                      std::span<const std::size_t> flaggedRows = {});

}  // namespace k520::cli
