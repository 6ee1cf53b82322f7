// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace k520::systemFiles {
class OpenFolder;
}

/// Reading and replacing whole files. Every failure raises a RuntimeError whose source names the
/// file and carries the system's own words.
namespace k520::files {

/// What a path leads to.
struct Content {
    std::vector<std::uint8_t> bytes;  ///< at most the limit asked for
    std::uint64_t size = 0;           ///< the file's whole size
};

/// Reads at most `limit` bytes from the start of a regular file (symbolic links are followed).
/// Anything but a regular file (a folder, a device, a FIFO) is refused without waiting for it.
/// Raises 53 when there is none, 75 when it may not be read or is not a regular file.
[[nodiscard]] Content read(const std::filesystem::path& path, std::size_t limit);

/// Replaces a file so that a crash or a full disk at any instant leaves the old or the new
/// content, never a mixture: the bytes go to a temporary file in the same folder, to the disk, and
/// over the old name. Mode and owner are kept, a symbolic link stays a link, a new file gets the
/// usual mode. Returns only when the bytes are on the disk; otherwise raises (61 disk full, 75 no
/// access, 76 no such folder ...) and leaves nothing of its own. A write-protected file is refused
/// like one that is not a regular file, by 75. What a killed program leaves, a file .k520-N.tmp,
/// goes with the next file that is replaced in the folder.
void replace(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

/// Replaces like replace(), and carries over what the file holds beyond `bytes.size()`.
void replaceHead(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

/// Raises the error that replace() would meet at once: the folder is missing or cannot be written,
/// the path is a folder or a device. Asked before a long session, so that its result has a place.
void checkReplaceable(const std::filesystem::path& path);

/// A name beside a file for what it holds now: the first of "NAME.~1~", "NAME.~2~" ... that nothing
/// has.
[[nodiscard]] std::filesystem::path freeNameBeside(const std::filesystem::path& path);

/// Copies a regular file, mode and owner with it, to freeNameBeside(), and returns that name once
/// the copy is on the disk. Where the last copy beside it holds the same already, that one is
/// returned, and nothing is made. Raises like read() and replace(); nothing is left of a copy then.
std::filesystem::path keepBeside(const std::filesystem::path& path);

/// Makes a folder and what is missing above it.
void makeFolder(const std::filesystem::path& path);

/// Removes a file, where there is one.
void remove(const std::filesystem::path& path);

/// Tells two states of a file apart, except where it was written in place twice within a tick of
/// the system's file clock (some milliseconds).
struct Stamp {
    std::chrono::nanoseconds modified{0};  ///< since the epoch of the system clock
    std::uint64_t size = 0;
    std::uint64_t inode = 0;
    std::uint64_t device = 0;

    friend bool operator==(const Stamp&, const Stamp&) = default;
};

/// The stamp of what a path leads to; nothing where there is none.
[[nodiscard]] std::optional<Stamp> stampOf(const std::filesystem::path& path);

/// Whether this user may change a file, or make one in a folder.
[[nodiscard]] bool mayWrite(const std::filesystem::path& path);

/// Keeps other programs (and threads) that take the same lock waiting while it lives. It waits a
/// few seconds for the others itself, then raises 70. Raises 76 where there is no such folder.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    std::unique_ptr<systemFiles::OpenFolder> folder_;
};

}  // namespace k520::files
