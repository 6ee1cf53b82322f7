// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The text format of CSV files: cells separated by commas, in double quotes where they hold a
/// comma, a quote or a line break, a quote inside doubled.
namespace k520::document {

struct CsvRow {
    int line = 0;  ///< of the file, from 1, where the row begins
    std::vector<std::string> cells;
};

/// Takes a file apart. Line ends of any system and a UTF-8 byte order mark are accepted, empty
/// lines left out. A quote that is never closed raises Refused with the line.
[[nodiscard]] std::vector<CsvRow> parseCsv(std::string_view text);

/// One line with its end.
[[nodiscard]] std::string csvLine(const std::vector<std::string>& cells);

}  // namespace k520::document
