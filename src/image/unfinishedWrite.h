// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <optional>

#include "image/MemoryImage.h"

/// A note of the last write that was begun and did not come to its good end. It outlives the
/// program, so that after a crash, and after further attempts that fail, the backup from before the
/// first of them is still known. There is one note: a write to another radio replaces it. It lies
/// beside the backups, in the file "unfinished-write": the backup's name, a line end, and the bytes
/// of `found` and `sent`.
namespace k520::unfinishedWrite {

struct Note {
    /// The backup that holds what the radio held before the first attempt.
    std::filesystem::path backup;
    MemoryImage found;  ///< what the radio held before the last attempt
    MemoryImage sent;   ///< what the last attempt was to put there, but for the stamp
};

/// Raises the system's error where the note cannot be written.
void begin(const Note& note);

/// Forgets the note, where there is one. A failure goes to the error list under
/// "unfinishedWrite->end".
void end();

/// The note, where there is one of images of the size in force, and its backup is still there.
[[nodiscard]] std::optional<Note> pending();

/// Whether a radio that holds `now` can be the one of the note: each byte as it was found or as it
/// was sent, but for a few that the line has falsified.
[[nodiscard]] bool leads(const Note& note, const MemoryImage& now);

}  // namespace k520::unfinishedWrite
