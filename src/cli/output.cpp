// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "base/RuntimeError.h"
#include "base/Terminal.h"
#include "base/Text.h"
#include "cli/Failure.h"

namespace k520::cli {

namespace {

[[noreturn]] void failOutput() {
    fail(about("stdout", systemWords({errno, std::generic_category()})));
}

std::string inColour(const char* code, const std::string& text) {
    return coloursWanted() ? fmt::format("\x1b[{}m{}\x1b[0m", code, text) : text;
}

std::string padded(const std::string& text, std::size_t width, bool right) {
    const std::string blanks(width - std::min(width, displayWidth(text)), ' ');
    return right ? blanks + text : text + blanks;
}

std::string trimmedRight(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string formatRow(const std::vector<Column>& columns, const std::vector<std::size_t>& widths,
                      const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i == 0 ? "" : "  ") + padded(cells[i], widths[i], columns[i].right);
    }
    return trimmedRight(line);
}

}  // namespace

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        failOutput();
    }
}

void flushOutput() {
    if (std::fflush(stdout) != 0) {
        failOutput();
    }
}

void printError(const std::string& text) noexcept {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

bool coloursWanted() {
    const char* refused = std::getenv("NO_COLOR");
    return isTerminal(Stream::out) && (refused == nullptr || *refused == '\0');
}

std::string bold(const std::string& text) {
    return inColour("1", text);
}

std::string flagged(const std::string& text) {
    return inColour("33", text);
}

std::string formatTable(const std::vector<Column>& columns,
                        const std::vector<std::vector<std::string>>& rows,
                        std::span<const std::size_t> flaggedRows) {
    std::vector<std::string> titles;
    std::vector<std::size_t> widths;
    for (const auto& column : columns) {
        titles.push_back(column.title);
        widths.push_back(displayWidth(column.title));
    }
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    }
    std::string table = bold(formatRow(columns, widths, titles)) + '\n';
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto line = formatRow(columns, widths, rows[i]);
        const bool isFlagged = std::ranges::find(flaggedRows, i) != flaggedRows.end();
        table += (isFlagged ? flagged(line) : line) + '\n';
    }
    return table;
}

}  // namespace k520::cli
