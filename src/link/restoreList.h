// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "link/waysBack.h"

/// The backups that a restore can put back, as a user chooses among them.
namespace k520::restoreList {

struct Row {
    waysBack::WayBack way;
    std::string time;     ///< "2026-11-22 13:05:09"
    std::string made;     ///< on what occasion
    std::string changes;  ///< what a restore would change, or why that is not known
};

struct Rows {
    std::vector<Row> rows;  ///< the newest first
    /// What the changes are counted against: the data of the last write that has a note, or the
    /// data in the program.
    std::string comparedWith;
};

[[nodiscard]] Rows rows();

/// The row that is the likeliest choice: `due` where it is there, the newest of a write that did
/// not finish, the newest made before a write, the newest of all. Nothing for no rows.
[[nodiscard]] std::optional<std::size_t> likeliest(const std::vector<Row>& rows,
                                                   const std::filesystem::path& due);

}  // namespace k520::restoreList
