// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <system_error>

#include "base/Files.h"

/// What base/Files.cpp asks of the system. Every failure raises the system's error with the path
/// given as its subject.
namespace k520::systemFiles {

using Bytes = std::span<const std::uint8_t>;

enum class Kind : std::uint8_t { regular, folder, other };

/// Whose a file is and who may use it, in the system's own numbers.
struct Rights {
    std::uint64_t owner = 0;
    std::uint64_t group = 0;
    std::uint32_t mode = 0;
};

struct Status {
    Kind kind = Kind::other;
    files::Stamp stamp;
    Rights rights;
};

/// What the path leads to, links followed; nothing where there is none.
[[nodiscard]] std::optional<Status> statusOf(const std::filesystem::path& path);

/// Whether this user may change a file, or make one in a folder.
[[nodiscard]] bool mayWrite(const std::filesystem::path& path);

/// Raises where this user may not change a file.
void requireWritable(const std::filesystem::path& path);

struct Extent {
    std::uint64_t begin;
    std::uint64_t end;
};

/// An open file, closed at the end. `path` is what errors name.
class OpenFile {
  public:
    class Handle;

    OpenFile(std::unique_ptr<Handle> handle, std::filesystem::path path);
    ~OpenFile();
    OpenFile(OpenFile&&) noexcept;
    OpenFile& operator=(OpenFile&&) noexcept;

    /// Opens a file that has just been seen as a regular one. Should it have become a FIFO since,
    /// the call still does not wait.
    [[nodiscard]] static OpenFile toRead(const std::filesystem::path& path);

    [[nodiscard]] Status status() const;
    /// Reads on; the number of bytes, 0 at the end of the file.
    [[nodiscard]] std::size_t read(std::span<std::uint8_t> buffer) const;
    void write(Bytes bytes) const;
    void seek(std::uint64_t place) const;
    /// The next bytes from `from` on that are really on the disk, nothing where only a hole is
    /// left: so a hole costs neither time nor room. `size` is the file's.
    [[nodiscard]] std::optional<Extent> nextData(std::uint64_t from, std::uint64_t size) const;
    void setSize(std::uint64_t size) const;
    /// Gives the file the owner, as far as this user may, and the mode.
    void setRights(const Rights& rights) const;
    /// Brings the bytes to the disk.
    void flush() const;

  private:
    friend class OpenFolder;

    std::unique_ptr<Handle> handle_;
    std::filesystem::path path_;
};

/// A folder in which a file is replaced. It stays the same one whatever becomes of its name.
class OpenFolder {
  public:
    class Handle;
    enum class Readers : std::uint8_t { usual, ownerOnly };

    OpenFolder(const std::filesystem::path& path, std::error_code& error);
    ~OpenFolder();
    OpenFolder(OpenFolder&&) noexcept;
    OpenFolder& operator=(OpenFolder&&) noexcept;

    /// Makes a file, `path` to errors, and locks it while it is open. Nothing, and no error, where
    /// the name is taken, or where another program took the file before it was locked.
    [[nodiscard]] std::optional<OpenFile> create(const std::string& name, Readers readers,
                                                 const std::filesystem::path& path,
                                                 std::error_code& error) const;
    /// Removes a file that no program keeps locked, where locks can tell. Whether it did.
    [[nodiscard]] bool removeAbandoned(const std::string& name) const;
    void remove(const std::string& name) const noexcept;
    /// Closes a file and gives it another name, over what has that name; its lock stays until then.
    void rename(OpenFile& file, const std::string& name, const std::string& newName) const;
    /// Brings the names to the disk, where the file system can.
    void flush(std::error_code& error) const;

    /// Whether other programs are locked out now. A file system without such locks says yes.
    [[nodiscard]] bool tryLock() const;

  private:
    std::unique_ptr<Handle> handle_;
};

}  // namespace k520::systemFiles
