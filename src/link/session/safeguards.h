// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

#include "link/protocol/communView.h"
#include "link/session/ending.h"

/// What stands around a session so that nothing is lost and nothing wrong passes in silence: the
/// protocol has no checksum, and neither side can take a session back. Each safeguard is the user's
/// choice; with none of them a run is the plain session of modSession and changes nothing about it.
namespace k520::safeguards {

struct Choices {
    /// Store each successful read as a backup.
    bool keepCopy = false;
    /// Read the radio into a backup before it is written; without a backup nothing is written.
    bool backUpFirst = false;
    /// After a write: read the radio and compare it with what was sent. With a read: a second pass
    /// that must agree with the first; until it does the image stays as it was.
    bool readBack = false;

    friend bool operator==(const Choices&, const Choices&) = default;
};

/// One choice: the control that shows it and its key in section "Setting" of the settings file.
struct ChoiceRow {
    std::string_view control;
    std::string_view key;
    bool Choices::*member;
};

inline constexpr std::array<ChoiceRow, 3> choiceRows{{
    {"chkKeepCopy", "KeepCopy", &Choices::keepCopy},
    {"chkBackUpFirst", "BackUpFirst", &Choices::backUpFirst},
    {"chkReadBack", "ReadBack", &Choices::readBack},
}};

/// The choices of the settings file: "1" is on, a missing key and anything else is off. A file that
/// cannot be read is a failure under "frmCommun->Form_Load".
[[nodiscard]] Choices chosen();
/// Writes one choice to the settings file. Label "frmCommun->" + control + "_Click".
void choose(const ChoiceRow& row, bool on);

/// The stages of a run, in order.
[[nodiscard]] std::vector<Stage> stagesOf(Direction direction, const Choices& choices);
/// The stages of a restore, which never makes a backup first.
[[nodiscard]] std::vector<Stage> stagesOfRestore(const Choices& choices);

/// A guarded read session into the image. With readBack both passes have to succeed and agree
/// before anything of them is shown or stored. An empty range, here and below, is the plain
/// session's business: there is nothing to guard.
Ending read(CommunView& view, const Choices& choices);

/// A guarded write session from the image. The backup covers all that a read or a write of the
/// ranges in force touches, and goes to `backupFile` where that is given (see backups::storeAs).
/// The comparison covers the same, so that a block stored at a wrong address is found, too; without
/// a backup it covers the write range.
Ending write(CommunView& view, const Choices& choices,
             const std::filesystem::path& backupFile = {});

/// Puts the content of a backup back into the radio, byte for byte: no tables and no stamp go into
/// it, and the image stays as it is. A backup is written as far as it came from the radio, any
/// other data file over the write range; what such a file has no place for stays as the radio has
/// it. A file that cannot be read, or that is neither a backup nor a data file, is `notReadable`,
/// and the radio is untouched. Where a note tells of the backup the radio is read first: the note
/// goes at the good end, once the radio was compared, only where this is its radio.
Ending restore(CommunView& view, const std::filesystem::path& file, const Choices& choices);

/// Reads the radio, looks which write found or sent what it holds, and puts back what the radio
/// held before that write. Does nothing where several backups are possible that do not hold the
/// same. The note of the write goes at the good end where the radio showed that write and was
/// compared; a radio that only holds the same as another one before its write leaves that one its
/// note.
Ending takeBack(CommunView& view, const Choices& choices);

/// Adds the differences that a run has found to the data list, one line each.
void listDifferences(const Ending& ending);

}  // namespace k520::safeguards
