// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Files.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Clock.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"
#include "base/systemFiles.h"

namespace k520::files {

namespace {

namespace fs = std::filesystem;
using systemFiles::Bytes;
using systemFiles::Kind;
using systemFiles::OpenFile;
using systemFiles::OpenFolder;
using systemFiles::Status;
using systemFiles::statusOf;

constexpr int mostLinks = 40;
/// Nobody holds the lock for longer than it takes to replace a small file.
constexpr std::chrono::seconds longestLockWait{3};
constexpr int mostTemporaryFiles = 100;

[[noreturn]] void refuse(std::int16_t number, const fs::path& path, std::string_view words) {
    throw RuntimeError(number, path.string(), words);
}

bool meansMissing(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

void requireRegular(const Status& status, const fs::path& path) {
    if (status.kind == Kind::folder) {
        throwSystemError(std::errc::is_a_directory, path.string());
    }
    if (status.kind != Kind::regular) {
        refuse(errNum::pathAccess, path, say(texts::notRegular));
    }
}

OpenFolder openFolder(const fs::path& folder) {
    std::error_code error;
    OpenFolder opened(folder, error);
    if (meansMissing(error)) {
        refuse(errNum::pathNotFound, folder,
               say(texts::withRemedy, systemWords(error), say(texts::checkPath)));
    }
    if (error) {
        throwSystemError(error, folder.string());
    }
    return opened;
}

/// Hands what follows in the file to `take`, piece by piece, up to `limit` bytes.
template <class Take>
void readOn(const OpenFile& file, std::size_t limit, Take take) {
    std::array<std::uint8_t, 32768> buffer;
    while (limit > 0) {
        const auto wanted = std::span(buffer).first(std::min(limit, buffer.size()));
        const std::size_t got = file.read(wanted);
        if (got == 0) {
            return;
        }
        take(Bytes(wanted.first(got)));
        limit -= got;
    }
}

/// The place to be replaced.
struct Target {
    fs::path path;              ///< as the caller named it
    fs::path folderPath;        ///< the folder of the file itself, every link followed
    OpenFolder folder;          ///< the same, opened
    std::string name;           ///< the file's name in that folder
    std::optional<Status> old;  ///< the file that stands there
};

/// The path that a symbolic link leads to, even if nothing stands there yet.
fs::path behindLinks(fs::path path) {
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code error;
        const fs::path link = fs::read_symlink(path, error);
        if (error == std::errc::invalid_argument || meansMissing(error)) {
            return path;
        }
        if (error) {
            throwSystemError(error, path.string());
        }
        path = path.parent_path() / link;
    }
    throwSystemError(std::errc::too_many_symbolic_link_levels, path.string());
}

Target locate(const fs::path& path) {
    const auto old = statusOf(path);
    if (old) {
        requireRegular(*old, path);
        // A rename would pass by the file's own protection.
        systemFiles::requireWritable(path);
    }
    const fs::path real = behindLinks(path);
    const fs::path folder = real.has_parent_path() ? real.parent_path() : ".";
    OpenFolder opened = openFolder(folder);
    if (!real.has_filename()) {
        throwSystemError(std::errc::is_a_directory, path.string());
    }
    return {path, folder, std::move(opened), real.filename().string(), old};
}

/// A file beside the target that takes its place in the end, or goes. Its name is one of a few, and
/// it is locked while it lives: so the next file in the folder takes the place of one that a
/// program left there when it was killed.
class TemporaryFile {
  public:
    explicit TemporaryFile(const Target& target) : target_(target), file_(create()) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty()) {
            target_.folder.remove(name_);
        }
    }

    [[nodiscard]] const OpenFile& file() const noexcept { return file_; }

    /// Brings the bytes to the disk and the file to the target's name.
    void takePlace() {
        file_.flush();
        target_.folder.rename(file_, name_, target_.name);
        name_.clear();
        std::error_code error;
        target_.folder.flush(error);
        if (error) {
            throwSystemError(error, say(texts::diskDoesNotConfirm, target_.path.string()));
        }
    }

  private:
    OpenFile create() {
        for (int slot = 0; slot < mostTemporaryFiles; ++slot) {
            const std::string name = fmt::format(".k520-{}.tmp", slot);
            auto file = tryName(name);
            if (!file && target_.folder.removeAbandoned(name)) {
                file = tryName(name);
            }
            if (file) {
                name_ = name;
                return std::move(*file);
            }
        }
        refuse(errNum::pathAccess, target_.path, say(texts::tooManyTemporary));
    }

    /// Nothing where a file has the name.
    [[nodiscard]] std::optional<OpenFile> tryName(const std::string& name) const {
        // While it is written, nobody sees more of it than of the file that it replaces.
        const auto readers =
            target_.old ? OpenFolder::Readers::ownerOnly : OpenFolder::Readers::usual;
        std::error_code error;
        auto file = target_.folder.create(name, readers, target_.path, error);
        if (error) {
            throwNoNewFile(error);
        }
        return file;
    }

    [[noreturn]] void throwNoNewFile(const std::error_code& error) const {
        std::error_code unknown;
        const fs::path known = fs::absolute(target_.folderPath, unknown);
        const fs::path& folder = unknown ? target_.folderPath : known;
        throwSystemError(error, say(texts::folderTakesNoFile, target_.path.string(),
                                    folder.lexically_normal().string()));
    }

    const Target& target_;
    std::string name_;
    OpenFile file_;
};

/// What a file holds from `from` on goes to the same place of `to`.
void copyTail(const fs::path& path, std::size_t from, const OpenFile& to) {
    const OpenFile old = OpenFile::toRead(path);
    const std::uint64_t size = old.status().stamp.size;
    std::uint64_t place = from;
    if (place >= size) {
        return;
    }
    while (place < size) {
        const auto data = old.nextData(place, size);
        if (!data || data->begin >= size) {
            break;
        }
        old.seek(data->begin);
        to.seek(data->begin);
        readOn(old, static_cast<std::size_t>(data->end - data->begin),
               [&](Bytes piece) { to.write(piece); });
        place = data->end;
    }
    // The end may be a hole, too.
    to.setSize(size);
}

enum class Tail { dropped, kept };

void replaceFile(const fs::path& path, Bytes bytes, Tail tail) {
    const Target target = locate(path);
    TemporaryFile temporary(target);
    temporary.file().write(bytes);
    if (target.old) {
        if (tail == Tail::kept) {
            copyTail(target.path, bytes.size(), temporary.file());
        }
        temporary.file().setRights(target.old->rights);
    }
    temporary.takePlace();
}

fs::path nameBeside(const fs::path& path, int number) {
    fs::path beside = path;
    beside += fmt::format(".~{}~", number);
    return beside;
}

int firstFreeNumber(const fs::path& path) {
    int number = 1;
    while (statusOf(nameBeside(path, number))) {
        ++number;
    }
    return number;
}

/// Whether two files hold the same. Larger ones than any data file are not looked at.
bool holdTheSame(const fs::path& a, const fs::path& b) {
    constexpr std::size_t most = 1U << 20U;
    const auto statusA = statusOf(a);
    const auto statusB = statusOf(b);
    return statusA && statusB && statusB->kind == Kind::regular &&
           statusA->stamp.size == statusB->stamp.size && statusA->stamp.size <= most &&
           read(a, most).bytes == read(b, most).bytes;
}

}  // namespace

fs::path freeNameBeside(const fs::path& path) {
    return nameBeside(path, firstFreeNumber(path));
}

fs::path keepBeside(const fs::path& path) {
    const auto old = statusOf(path);
    if (!old) {
        throwSystemError(std::errc::no_such_file_or_directory, path.string());
    }
    requireRegular(*old, path);
    const int number = firstFreeNumber(path);
    if (number > 1 && holdTheSame(path, nameBeside(path, number - 1))) {
        return nameBeside(path, number - 1);
    }
    const Target target = locate(nameBeside(path, number));
    TemporaryFile temporary(target);
    copyTail(path, 0, temporary.file());
    temporary.file().setRights(old->rights);
    temporary.takePlace();
    return target.path;
}

Content read(const fs::path& path, std::size_t limit) {
    // Asked before opening: to open a serial device already moves its lines.
    const auto seen = statusOf(path);
    if (!seen) {
        throwSystemError(std::errc::no_such_file_or_directory, path.string());
    }
    requireRegular(*seen, path);
    const OpenFile file = OpenFile::toRead(path);
    const Status status = file.status();
    requireRegular(status, path);
    Content content;
    readOn(file, limit, [&](Bytes piece) {
        content.bytes.insert(content.bytes.end(), piece.begin(), piece.end());
    });
    content.size = std::max<std::uint64_t>(status.stamp.size, content.bytes.size());
    return content;
}

void replace(const fs::path& path, std::span<const std::uint8_t> bytes) {
    replaceFile(path, bytes, Tail::dropped);
}

void replaceHead(const fs::path& path, std::span<const std::uint8_t> bytes) {
    replaceFile(path, bytes, Tail::kept);
}

void checkReplaceable(const fs::path& path) {
    // Only a real file shows for certain that a folder takes files.
    const Target target = locate(path);
    const TemporaryFile trial(target);
}

void makeFolder(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) {
        throwSystemError(error, path.string());
    }
}

void remove(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) {
        throwSystemError(error, path.string());
    }
}

std::optional<Stamp> stampOf(const fs::path& path) {
    const auto status = statusOf(path);
    return status ? std::optional(status->stamp) : std::nullopt;
}

bool mayWrite(const fs::path& path) {
    return systemFiles::mayWrite(path);
}

FolderLock::FolderLock(const fs::path& folder)
    : folder_(std::make_unique<OpenFolder>(openFolder(folder))) {
    const auto deadline = theClock().now() + longestLockWait;
    while (!folder_->tryLock()) {
        if (theClock().now() >= deadline) {
            refuse(errNum::permissionDenied, folder, say(texts::folderLocked));
        }
        theClock().sleepUntil(theClock().now() + std::chrono::milliseconds(5));
    }
}

FolderLock::~FolderLock() = default;

}  // namespace k520::files
