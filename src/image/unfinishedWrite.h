// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <optional>

#include "image/MemoryImage.h"
#include "image/modIicDat.h"

/// Notes of the last write that was begun and did not come to its good end, and of the last one
/// that did. They outlive the program, so that after a crash, and after further attempts that fail,
/// the backup from before the first of them is still known, and the radio with it. There is one of
/// each: a write to another radio replaces it. They lie beside the backups, in the files
/// "unfinished-write" and "last-write": the backup's name, a line end, and the bytes of `found` and
/// `sent`.
namespace k520::unfinishedWrite {

struct Note {
    /// The backup that holds what the radio held before the first attempt.
    std::filesystem::path backup;
    MemoryImage found;  ///< what the radio held before the last attempt
    MemoryImage sent;   ///< what the last attempt was to put there, but for the stamp
};

/// Raises the system's error where the note cannot be written.
void begin(const Note& note);

/// The write has come to its good end: its note is that of the last write now. A failure, here and
/// below, goes to the error list under "unfinishedWrite->end".
void end();

/// Forgets the note of the write that was begun, or that of the last one, where there is one.
void dropPending();
void dropLast();

/// The note of the write that was begun, where there is one of images of the size in force, and its
/// backup is still there.
[[nodiscard]] std::optional<Note> pending();

/// The same of the latest write: of the one that was begun, or else of the last one.
[[nodiscard]] std::optional<Note> latest();

/// Whether a radio that holds `now` in a range can be the one of the note: each byte there as it
/// was found, as it was sent, or as the backup has it, but for the stamp and for a few that the
/// line has falsified.
[[nodiscard]] bool leads(const Note& note, const MemoryImage& now, modIicDat::AddressRange range);

}  // namespace k520::unfinishedWrite
