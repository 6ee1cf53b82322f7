// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Clock.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"
#include "base/posix/Descriptor.h"

namespace k520::files {

namespace {

namespace fs = std::filesystem;
using Status = struct stat;
using Bytes = std::span<const std::uint8_t>;

constexpr int mostLinks = 40;
/// Nobody holds the lock for longer than it takes to replace a small file.
constexpr std::chrono::seconds longestLockWait{3};
constexpr int mostTemporaryFiles = 100;
constexpr mode_t allModeBits = 07777;

/// The call's result once no signal interrupts it any more.
template <class Call>
auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

template <class Result>
Result checked(Result result, const fs::path& subject) {
    if (result == -1) {
        throwSystemError(errno, subject.string());
    }
    return result;
}

[[noreturn]] void refuse(std::int16_t number, const fs::path& path, std::string_view words) {
    throw RuntimeError(number, path.string(), words);
}

bool meansMissing(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR;
}

/// What the path leads to, links followed; nothing where there is none.
std::optional<Status> statusOf(const fs::path& path) {
    Status status{};
    if (retried([&] { return ::stat(path.c_str(), &status); }) == 0) {
        return status;
    }
    if (!meansMissing(errno)) {
        throwSystemError(errno, path.string());
    }
    return std::nullopt;
}

void requireRegular(const Status& status, const fs::path& path) {
    if (S_ISDIR(status.st_mode)) {
        throwSystemError(EISDIR, path.string());
    }
    if (!S_ISREG(status.st_mode)) {
        refuse(errNum::pathAccess, path, say(texts::notRegular));
    }
}

/// Opens a file that has just been seen as a regular one. Should it have become a FIFO since, the
/// call still does not wait.
Descriptor openToRead(const fs::path& path) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    return Descriptor(checked(retried([&] { return ::open(path.c_str(), flags); }), path));
}

Descriptor openFolder(const fs::path& folder) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    const int number = retried([&] { return ::open(folder.c_str(), flags); });
    if (number == -1 && meansMissing(errno)) {
        refuse(
            errNum::pathNotFound, folder,
            say(texts::withRemedy, std::generic_category().message(errno), say(texts::checkPath)));
    }
    return Descriptor(checked(number, folder));
}

/// Hands what follows in the file to `take`, piece by piece, up to `limit` bytes.
template <class Take>
void readOn(const Descriptor& file, std::size_t limit, const fs::path& path, Take take) {
    std::array<std::uint8_t, 32768> buffer;
    while (limit > 0) {
        const std::size_t wanted = std::min(limit, buffer.size());
        const auto got = static_cast<std::size_t>(
            checked(retried([&] { return ::read(file.get(), buffer.data(), wanted); }), path));
        if (got == 0) {
            return;
        }
        take(Bytes(buffer.data(), got));
        limit -= got;
    }
}

void writeAll(const Descriptor& file, Bytes bytes, const fs::path& path) {
    while (!bytes.empty()) {
        const auto put =
            checked(retried([&] { return ::write(file.get(), bytes.data(), bytes.size()); }), path);
        if (put == 0) {
            throwSystemError(ENOSPC, path.string());
        }
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

/// The place to be replaced.
struct Target {
    fs::path path;              ///< as the caller named it
    fs::path folderPath;        ///< the folder of the file itself, every link followed
    Descriptor folder;          ///< the same, opened
    std::string name;           ///< the file's name in that folder
    std::optional<Status> old;  ///< the file that stands there
};

/// The path that a symbolic link leads to, even if nothing stands there yet.
fs::path behindLinks(fs::path path) {
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code error;
        const fs::path link = fs::read_symlink(path, error);
        if (error == std::errc::invalid_argument || meansMissing(error.value())) {
            return path;
        }
        if (error) {
            throwSystemError(error.value(), path.string());
        }
        path = path.parent_path() / link;
    }
    throwSystemError(ELOOP, path.string());
}

Target locate(const fs::path& path) {
    const auto old = statusOf(path);
    if (old) {
        requireRegular(*old, path);
        // A rename would pass by the file's own protection.
        checked(::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS), path);
    }
    const fs::path real = behindLinks(path);
    const fs::path folder = real.has_parent_path() ? real.parent_path() : ".";
    Descriptor opened = openFolder(folder);
    if (!real.has_filename()) {
        throwSystemError(EISDIR, path.string());
    }
    return {path, folder, std::move(opened), real.filename().string(), old};
}

/// A file beside the target that takes its place in the end, or goes. Its name is one of a few, and
/// it is locked while it lives: so the next file in the folder takes the place of one that a
/// program left there when it was killed.
class TemporaryFile {
  public:
    explicit TemporaryFile(const Target& target) : target_(target) { create(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty()) {
            ::unlinkat(target_.folder.get(), name_.c_str(), 0);
        }
    }

    [[nodiscard]] const Descriptor& file() const noexcept { return file_; }

    void keepOwnerAndMode(const Status& old) const {
        const int file = file_.get();
        // Only the system's administrator gives files away, and an owner from outside a container
        // has no number in it. The group alone may still be possible.
        const bool kept = ::fchown(file, old.st_uid, old.st_gid) == 0 ||
                          ::fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0;
        if (!kept && errno != EPERM && errno != EINVAL) {
            throwSystemError(errno, target_.path.string());
        }
        checked(::fchmod(file, old.st_mode & allModeBits), target_.path);
    }

    /// Brings the bytes to the disk and the file to the target's name.
    void takePlace() {
        const int folder = target_.folder.get();
        checked(retried([&] { return ::fsync(file_.get()); }), target_.path);
        // The lock stays until the file has its own name.
        const Descriptor lock(checked(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0), target_.path));
        checked(file_.close(), target_.path);
        checked(::renameat(folder, name_.c_str(), folder, target_.name.c_str()), target_.path);
        name_.clear();
        // A file system that cannot flush a folder says so by EINVAL.
        if (retried([&] { return ::fsync(folder); }) == -1 && errno != EINVAL) {
            const int error = errno;
            throwSystemError(error, say(texts::diskDoesNotConfirm, target_.path.string()));
        }
    }

  private:
    void create() {
        for (int slot = 0; slot < mostTemporaryFiles; ++slot) {
            const std::string name = fmt::format(".k520-{}.tmp", slot);
            if (tryName(name) || (removeAbandoned(name) && tryName(name))) {
                name_ = name;
                return;
            }
        }
        refuse(errNum::pathAccess, target_.path, say(texts::tooManyTemporary));
    }

    /// False where a file has the name.
    bool tryName(const std::string& name) {
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
        // While it is written, nobody sees more of it than of the file that it replaces.
        const mode_t mode = target_.old ? 0600 : 0666;
        const int file =
            retried([&] { return ::openat(target_.folder.get(), name.c_str(), flags, mode); });
        if (file == -1 && errno == EEXIST) {
            return false;
        }
        if (file == -1) {
            throwNoNewFile(errno);
        }
        file_ = Descriptor(file);
        // Until it is locked another program may take it for an abandoned one.
        const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        return locked && linksTo(file) != 0;
    }

    [[noreturn]] void throwNoNewFile(int error) const {
        std::error_code unknown;
        const fs::path known = fs::absolute(target_.folderPath, unknown);
        const fs::path& folder = unknown ? target_.folderPath : known;
        throwSystemError(error, say(texts::folderTakesNoFile, target_.path.string(),
                                    folder.lexically_normal().string()));
    }

    /// Removes a file that nobody keeps locked, where locks can tell. Whether it did.
    [[nodiscard]] bool removeAbandoned(const std::string& name) const {
        constexpr int flags = O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY;
        const int folder = target_.folder.get();
        const Descriptor left(::openat(folder, name.c_str(), flags));
        return left.valid() && ::flock(left.get(), LOCK_EX | LOCK_NB) == 0 &&
               linksTo(left.get()) == 1 && ::unlinkat(folder, name.c_str(), 0) == 0;
    }

    /// The number of a regular file's names; nothing where the system does not tell.
    static std::optional<nlink_t> linksTo(int file) {
        Status status{};
        const bool known = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
        return known ? std::optional(status.st_nlink) : std::nullopt;
    }

    const Target& target_;
    std::string name_;
    Descriptor file_;
};

struct Extent {
    off_t begin;
    off_t end;
};

/// The next bytes from `from` on that are really on the disk, nothing where only a hole is left: so
/// a hole costs neither time nor room.
std::optional<Extent> nextData(const Descriptor& file, off_t from, off_t size) {
    const off_t begin = ::lseek(file.get(), from, SEEK_DATA);
    if (begin == -1) {
        // A file system that does not tell has no holes.
        return errno == ENXIO ? std::nullopt : std::optional(Extent{from, size});
    }
    const off_t hole = ::lseek(file.get(), begin, SEEK_HOLE);
    return Extent{begin, hole == -1 ? size : std::min(hole, size)};
}

/// What a file holds from `from` on goes to the same place of `to`.
void copyTail(const fs::path& path, std::size_t from, const Descriptor& to) {
    const Descriptor old = openToRead(path);
    Status status{};
    checked(::fstat(old.get(), &status), path);
    const off_t size = status.st_size;
    auto place = static_cast<off_t>(from);
    if (place >= size) {
        return;
    }
    while (place < size) {
        const auto data = nextData(old, place, size);
        if (!data || data->begin >= size) {
            break;
        }
        checked(::lseek(old.get(), data->begin, SEEK_SET), path);
        checked(::lseek(to.get(), data->begin, SEEK_SET), path);
        readOn(old, static_cast<std::size_t>(data->end - data->begin), path,
               [&](Bytes piece) { writeAll(to, piece, path); });
        place = data->end;
    }
    // The end may be a hole, too.
    checked(retried([&] { return ::ftruncate(to.get(), size); }), path);
}

enum class Tail { dropped, kept };

void replaceFile(const fs::path& path, Bytes bytes, Tail tail) {
    const Target target = locate(path);
    TemporaryFile temporary(target);
    writeAll(temporary.file(), bytes, path);
    if (target.old) {
        if (tail == Tail::kept) {
            copyTail(target.path, bytes.size(), temporary.file());
        }
        temporary.keepOwnerAndMode(*target.old);
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
    const auto sizeOf = [](const Status& status) {
        return static_cast<std::size_t>(status.st_size);
    };
    const auto statusA = statusOf(a);
    const auto statusB = statusOf(b);
    return statusA && statusB && S_ISREG(statusB->st_mode) &&
           statusA->st_size == statusB->st_size && sizeOf(*statusA) <= most &&
           read(a, most).bytes == read(b, most).bytes;
}

}  // namespace

fs::path freeNameBeside(const fs::path& path) {
    return nameBeside(path, firstFreeNumber(path));
}

fs::path keepBeside(const fs::path& path) {
    const auto old = statusOf(path);
    if (!old) {
        throwSystemError(ENOENT, path.string());
    }
    requireRegular(*old, path);
    const int number = firstFreeNumber(path);
    if (number > 1 && holdTheSame(path, nameBeside(path, number - 1))) {
        return nameBeside(path, number - 1);
    }
    const Target target = locate(nameBeside(path, number));
    TemporaryFile temporary(target);
    copyTail(path, 0, temporary.file());
    temporary.keepOwnerAndMode(*old);
    temporary.takePlace();
    return target.path;
}

Content read(const fs::path& path, std::size_t limit) {
    // Asked before opening: to open a serial device already moves its lines.
    const auto seen = statusOf(path);
    if (!seen) {
        throwSystemError(ENOENT, path.string());
    }
    requireRegular(*seen, path);
    const Descriptor file = openToRead(path);
    Status status{};
    checked(::fstat(file.get(), &status), path);
    requireRegular(status, path);
    Content content;
    readOn(file, limit, path, [&](Bytes piece) {
        content.bytes.insert(content.bytes.end(), piece.begin(), piece.end());
    });
    content.size =
        std::max<std::uint64_t>(static_cast<std::uint64_t>(status.st_size), content.bytes.size());
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
        throwSystemError(error.value(), path.string());
    }
}

void remove(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) {
        throwSystemError(error.value(), path.string());
    }
}

std::optional<Stamp> stampOf(const fs::path& path) {
    const auto status = statusOf(path);
    if (!status) {
        return std::nullopt;
    }
    // Nanoseconds reach to the year 2262, but a file may claim any.
    constexpr time_t farthest = 9'000'000'000;
    const auto modified =
        std::chrono::seconds(std::clamp<time_t>(status->st_mtim.tv_sec, 0, farthest)) +
        std::chrono::nanoseconds(status->st_mtim.tv_nsec);
    return Stamp{modified, static_cast<std::uint64_t>(status->st_size), status->st_ino,
                 status->st_dev};
}

FolderLock::FolderLock(const fs::path& folder) : folder_(-1) {
    Descriptor opened = openFolder(folder);
    const auto deadline = theClock().now() + longestLockWait;
    while (::flock(opened.get(), LOCK_EX | LOCK_NB) != 0) {
        // Some network file systems have no such lock; writing goes on without it there.
        if (errno != EWOULDBLOCK && errno != EINTR) {
            break;
        }
        if (theClock().now() >= deadline) {
            refuse(errNum::permissionDenied, folder, say(texts::folderLocked));
        }
        theClock().sleepUntil(theClock().now() + std::chrono::milliseconds(5));
    }
    folder_ = opened.release();
}

FolderLock::~FolderLock() {
    ::close(folder_);
}

}  // namespace k520::files
