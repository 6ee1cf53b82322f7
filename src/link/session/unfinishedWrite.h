// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "image/MemoryImage.h"
#include "image/modIicDat.h"

/// Notes of the writes that began after a backup. They outlive the program, so that after a crash,
/// and after further attempts that fail, the backup from before the first of them is still known,
/// and the radio with it. Each lies beside the backup that its write made, under the same name:
///
///   2026-11-22_13-05-09_before-write_0000-1FFF.unfinished   the write has no good end yet
///   2026-11-22_13-05-09_before-write_0000-1FFF.written      it has
///
/// Lines of text, an empty line, and the bytes of `found` and `sent`. The lines are "begun" or
/// "barely begun", and the names of the backups in `before`. A note goes with its backup.
namespace k520::unfinishedWrite {

enum class State : std::uint8_t { unfinished, written };

struct Note {
    /// The backup that the write made.
    std::filesystem::path backup;
    State state = State::unfinished;
    /// The backup that holds what the radio held before the first attempt: `backup` itself, or that
    /// of an earlier attempt. Several where the radio can be one of several torn ones.
    std::vector<std::filesystem::path> before{};
    MemoryImage found{};  ///< what the radio held before this write
    MemoryImage sent{};   ///< what it is to hold after it, with the stamp
    /// The radio has confirmed no block, so that the write may have changed nothing.
    bool barelyBegun = false;
};

/// Stores a note in the place of the one that lies beside the same backup. Raises the system's
/// error where it cannot be written.
void keep(const Note& note);

/// Removes the note beside a backup, where there is one. A failure goes to the error list under
/// "unfinishedWrite->drop".
void drop(const std::filesystem::path& backup);

/// The notes of images of the size in force whose backups are still there, the newest first. Notes
/// of older versions, the files "unfinished-write" and "last-write", become notes of this kind
/// first; a failure of that goes to the error list under "unfinishedWrite->adoptOlder".
[[nodiscard]] std::vector<Note> all();
[[nodiscard]] std::vector<Note> unfinished();

/// The backups that unfinished writes need, in no order.
[[nodiscard]] std::vector<std::filesystem::path> neededBackups();

/// How many bytes of a radio that holds `now` in a range speak against its being the radio of the
/// note: they are not as they were found, sent, or (in an unfinished write, whose restore may have
/// been cut off) held before. Nothing where it is another radio: more such bytes than a bad line
/// falsifies, no more bytes that only this write can have put there, or a programming stamp from
/// another time.
[[nodiscard]] std::optional<int> doubts(const Note& note, const MemoryImage& now,
                                        modIicDat::AddressRange range);

/// Of these notes the ones that fit a radio best: those without a doubt before others. A written
/// note is left out where its write left what an unfinished one of them began from, and the radio
/// shows the unfinished one. In the order given. Compared is what a note's backup covers, as far as
/// it lies in the range.
[[nodiscard]] std::vector<Note> bestFitting(
    const std::vector<Note>& notes, const MemoryImage& now,
    const std::optional<modIicDat::AddressRange>& range = {});

/// Whether a radio holds anything that the write of the note has put there, or nothing is known to
/// have been put there. A radio of equal content that was never written fits the note as well, and
/// this tells it apart.
[[nodiscard]] bool shows(const Note& note, const MemoryImage& now, modIicDat::AddressRange range);

/// Whether the radio of a note, which holds `now` in the range `known`, stays torn after a good
/// write of the range `written`: outside of that it holds neither all that was sent nor all that it
/// held before, or nobody knows. `known` covers `written`.
[[nodiscard]] bool staysTorn(const Note& note, const MemoryImage& now,
                             modIicDat::AddressRange known, modIicDat::AddressRange written);

}  // namespace k520::unfinishedWrite
