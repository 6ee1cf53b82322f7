// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

/// What the system may send to a program: Ctrl-C, a closed terminal, the request to terminate. They
/// are noted, and looked at where a command can end cleanly, so that none falls into the middle of
/// a saving.
namespace k520::interrupt {

/// From here on the first Ctrl-C, closed terminal or request to terminate only leaves a mark; a
/// second one ends the program at once. A closed terminal that is ignored at the start stays
/// ignored. Does what failOverlongWrites() does, too.
void note();

/// Whether the mark is there. What waits for devices (PtyRadio) wakes up with it.
[[nodiscard]] bool noted() noexcept;

/// A file size limit then fails the write, like a full disk, instead of ending the program.
void failOverlongWrites() noexcept;

/// A reader of stdout who goes then fails the write instead of ending the program.
void failUnreadWrites() noexcept;

}  // namespace k520::interrupt
