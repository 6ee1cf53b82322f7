// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "link/protocol/communView.h"
#include "link/session/safeguards.h"
#include "link/session/waysBack.h"

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

/// Whether a dialog offers a restore, and what it says of it.
struct Offer {
    bool shown = false;
    bool enabled = false;  ///< there is a backup to choose
    std::string tip;
};

/// For a write always; for a read only while a write that did not finish is waiting for it.
[[nodiscard]] Offer offerFor(Direction direction);

/// The backup that puts right what a run has left in the radio; nothing where the radio is as it
/// should be, where there is no backup, or where an earlier write has left it wrong already.
[[nodiscard]] std::optional<std::filesystem::path> dueAfter(const safeguards::Ending& ending);

/// Whether the user is asked before `backup` is written. Right after a write that left its backup
/// `due` there is nothing to lose with that one.
[[nodiscard]] bool asksBefore(const std::filesystem::path& backup,
                              const std::optional<std::filesystem::path>& due);

}  // namespace k520::restoreList
