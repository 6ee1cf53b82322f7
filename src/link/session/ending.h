// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "document/imageDifferences.h"
#include "image/MemoryImage.h"
#include "link/protocol/communView.h"
#include "link/session/modSession.h"

/// How a run of the radio link ended, as one value. Each program has a table that puts it into
/// words.
namespace k520::safeguards {

/// What a run is for.
enum class Task : std::uint8_t {
    readOnce,   ///< straight into the image
    readTwice,  ///< into the image once two passes agree; until then it stays as it was
    write,
    restore,
};

[[nodiscard]] constexpr Direction directionOf(Task task) noexcept {
    return task == Task::write || task == Task::restore ? Direction::write : Direction::read;
}

/// What happened.
enum class What : std::uint8_t {
    done,             ///< every stage succeeded, and a backup that was wanted was stored
    refused,          ///< another session is on: nothing was done
    brokeOff,         ///< the session of the last stage did not succeed
    differs,          ///< the comparison found differences
    notStored,        ///< the backup, or the copy of what was read
    notReadable,      ///< the backup that was to be put back
    otherRadio,       ///< no write with a note has found or sent what the radio holds
    severalPossible,  ///< nothing says which of several backups this radio needs
};

/// What the end of one session means for its run.
[[nodiscard]] constexpr What whatBy(modSession::Outcome outcome) noexcept {
    switch (outcome) {
        case modSession::Outcome::succeeded:
            return What::done;
        case modSession::Outcome::busy:
            return What::refused;
        case modSession::Outcome::notAccepted:
            return What::differs;
        case modSession::Outcome::portFailed:
        case modSession::Outcome::failed:
        case modSession::Outcome::stopped:
            break;
    }
    return What::brokeOff;
}

/// How much has arrived where a run was to bring it: in the image, or in the radio.
enum class Arrived : std::uint8_t {
    nothing,
    perhapsPart,  ///< into the radio: the first block may have been sent, and nothing says whether
                  ///< it was stored
    part,         ///< at least up to the `furthestAddress` of the last session
    all,          ///< whatever became of a comparison with the radio
};

struct Ending {
    Task task = Task::readOnce;
    What what = What::brokeOff;
    /// How far it came: the last stage that ran, and its session.
    Stage stage = Stage::read;
    modSession::Result result;
    /// Where what the radio held, or what was read, now lies; in a restore what was to be put back.
    /// Empty where nothing was stored.
    std::filesystem::path backup;
    /// Where the file that `backup` has replaced is kept now; empty where there was none.
    std::filesystem::path displaced;
    /// Why a backup could not be stored or read.
    std::string backupTrouble;
    /// An earlier write that failed may have left this very radio torn, and still does: the backup
    /// from before it. Several, the newest first, where nothing says which of them is this radio's.
    std::vector<std::filesystem::path> earlier;
    /// The backups, the newest first, of which several are possible.
    std::vector<std::filesystem::path> possible;
    /// What the comparison found: `expected` is what was sent or read first, `found` what came
    /// then; outside the range that was compared both are the same.
    std::vector<imageDifferences::ByteDifference> differences;
    MemoryImage expected;
    MemoryImage found;
    /// Where the failures of the run, and those of its last stage, begin in the error list.
    std::size_t begin = 0;
    std::size_t mark = 0;

    [[nodiscard]] bool good() const noexcept { return what == What::done; }
    [[nodiscard]] Direction direction() const noexcept { return directionOf(task); }
    [[nodiscard]] Arrived arrived() const noexcept;
    /// Whether the write itself was done, whatever became of the comparison.
    [[nodiscard]] bool written() const noexcept;
    /// Whether the run has changed the radio, or may have.
    [[nodiscard]] bool radioChanged() const noexcept;
};

/// The endings that a row of a table of words is for; what is left open fits all of them.
struct Kind {
    std::optional<What> what = {};
    std::optional<Task> task = {};
    std::optional<Arrived> arrived = {};
    std::optional<Stage> stage = {};
};

[[nodiscard]] bool isOf(const Ending& ending, const Kind& kind) noexcept;

/// The first row whose member `kind` fits. The last row of a table fits everything.
template <class Rows>
[[nodiscard]] const auto& rowFor(const Ending& ending, const Rows& rows) {
    const auto last = std::prev(std::end(rows));
    return *std::find_if(std::begin(rows), last,
                         [&](const auto& row) { return isOf(ending, row.kind); });
}

}  // namespace k520::safeguards
