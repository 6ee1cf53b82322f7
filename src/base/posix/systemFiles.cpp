// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/systemFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

#include "base/posix/Descriptor.h"
#include "base/posix/systemCalls.h"

namespace k520::systemFiles {

namespace {

namespace fs = std::filesystem;

constexpr mode_t allModeBits = 07777;

std::error_code systemSays() {
    return {errno, std::generic_category()};
}

Kind kindOf(mode_t mode) {
    return S_ISREG(mode) ? Kind::regular : S_ISDIR(mode) ? Kind::folder : Kind::other;
}

Status statusFrom(const struct stat& known) {
    // Nanoseconds reach to the year 2262, but a file may claim any.
    constexpr time_t farthest = 9'000'000'000;
    const auto modified =
        std::chrono::seconds(std::clamp<time_t>(known.st_mtim.tv_sec, 0, farthest)) +
        std::chrono::nanoseconds(known.st_mtim.tv_nsec);
    return {kindOf(known.st_mode),
            {modified, static_cast<std::uint64_t>(known.st_size), known.st_ino, known.st_dev},
            {known.st_uid, known.st_gid, known.st_mode & allModeBits}};
}

/// The number of a regular file's names; nothing where the system does not tell.
std::optional<nlink_t> linksTo(int file) {
    struct stat status {};
    const bool known = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    return known ? std::optional(status.st_nlink) : std::nullopt;
}

}  // namespace

class OpenFile::Handle {
  public:
    explicit Handle(int number) noexcept : file(number) {}

    [[nodiscard]] int number() const noexcept { return file.get(); }

    Descriptor file;
};

class OpenFolder::Handle {
  public:
    explicit Handle(int number) noexcept : folder(number) {}

    Descriptor folder;
};

std::optional<Status> statusOf(const fs::path& path) {
    struct stat known {};
    if (retried([&] { return ::stat(path.c_str(), &known); }) == 0) {
        return statusFrom(known);
    }
    if (errno != ENOENT && errno != ENOTDIR) {
        throwSystemError(errno, path.string());
    }
    return std::nullopt;
}

bool mayWrite(const fs::path& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

void requireWritable(const fs::path& path) {
    checked(::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS), path);
}

OpenFile::OpenFile(std::unique_ptr<Handle> handle, fs::path path)
    : handle_(std::move(handle)), path_(std::move(path)) {}

OpenFile::~OpenFile() = default;
OpenFile::OpenFile(OpenFile&&) noexcept = default;
OpenFile& OpenFile::operator=(OpenFile&&) noexcept = default;

OpenFile OpenFile::toRead(const fs::path& path) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    const int file = checked(retried([&] { return ::open(path.c_str(), flags); }), path);
    return {std::make_unique<Handle>(file), path};
}

Status OpenFile::status() const {
    struct stat known {};
    checked(::fstat(handle_->number(), &known), path_);
    return statusFrom(known);
}

std::size_t OpenFile::read(std::span<std::uint8_t> buffer) const {
    return static_cast<std::size_t>(checked(
        retried([&] { return ::read(handle_->number(), buffer.data(), buffer.size()); }), path_));
}

void OpenFile::write(Bytes bytes) const {
    while (!bytes.empty()) {
        const auto put = checked(
            retried([&] { return ::write(handle_->number(), bytes.data(), bytes.size()); }), path_);
        if (put == 0) {
            throwSystemError(ENOSPC, path_.string());
        }
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

void OpenFile::seek(std::uint64_t place) const {
    checked(::lseek(handle_->number(), static_cast<off_t>(place), SEEK_SET), path_);
}

std::optional<Extent> OpenFile::nextData(std::uint64_t from, std::uint64_t size) const {
    const off_t begin = ::lseek(handle_->number(), static_cast<off_t>(from), SEEK_DATA);
    if (begin == -1) {
        // A file system that does not tell has no holes.
        return errno == ENXIO ? std::nullopt : std::optional(Extent{from, size});
    }
    const off_t hole = ::lseek(handle_->number(), begin, SEEK_HOLE);
    const auto end = hole == -1 ? size : std::min(static_cast<std::uint64_t>(hole), size);
    return Extent{static_cast<std::uint64_t>(begin), end};
}

void OpenFile::setSize(std::uint64_t size) const {
    checked(retried([&] { return ::ftruncate(handle_->number(), static_cast<off_t>(size)); }),
            path_);
}

void OpenFile::setRights(const Rights& rights) const {
    const int file = handle_->number();
    const auto owner = static_cast<uid_t>(rights.owner);
    const auto group = static_cast<gid_t>(rights.group);
    // Only the system's administrator gives files away, and an owner from outside a container
    // has no number in it. The group alone may still be possible.
    const bool kept =
        ::fchown(file, owner, group) == 0 || ::fchown(file, static_cast<uid_t>(-1), group) == 0;
    if (!kept && errno != EPERM && errno != EINVAL) {
        throwSystemError(errno, path_.string());
    }
    checked(::fchmod(file, rights.mode), path_);
}

void OpenFile::flush() const {
    checked(retried([&] { return ::fsync(handle_->number()); }), path_);
}

OpenFolder::OpenFolder(const fs::path& path, std::error_code& error) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    handle_ = std::make_unique<Handle>(retried([&] { return ::open(path.c_str(), flags); }));
    error = handle_->folder.valid() ? std::error_code() : systemSays();
}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&&) noexcept = default;
OpenFolder& OpenFolder::operator=(OpenFolder&&) noexcept = default;

std::optional<OpenFile> OpenFolder::create(const std::string& name, Readers readers,
                                           const fs::path& path, std::error_code& error) const {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
    const mode_t mode = readers == Readers::ownerOnly ? 0600 : 0666;
    const int file =
        retried([&] { return ::openat(handle_->folder.get(), name.c_str(), flags, mode); });
    error = file == -1 && errno != EEXIST ? systemSays() : std::error_code();
    if (file == -1) {
        return std::nullopt;
    }
    OpenFile made(std::make_unique<OpenFile::Handle>(file), path);
    // Until it is locked another program may take it for an abandoned one.
    const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    return locked && linksTo(file) != 0 ? std::optional(std::move(made)) : std::nullopt;
}

bool OpenFolder::removeAbandoned(const std::string& name) const {
    constexpr int flags = O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY;
    const int folder = handle_->folder.get();
    const Descriptor left(::openat(folder, name.c_str(), flags));
    return left.valid() && ::flock(left.get(), LOCK_EX | LOCK_NB) == 0 &&
           linksTo(left.get()) == 1 && ::unlinkat(folder, name.c_str(), 0) == 0;
}

void OpenFolder::remove(const std::string& name) const noexcept {
    ::unlinkat(handle_->folder.get(), name.c_str(), 0);
}

void OpenFolder::rename(OpenFile& file, const std::string& name, const std::string& newName) const {
    const int folder = handle_->folder.get();
    const Descriptor lock(checked(::fcntl(file.handle_->number(), F_DUPFD_CLOEXEC, 0), file.path_));
    checked(file.handle_->file.close(), file.path_);
    checked(::renameat(folder, name.c_str(), folder, newName.c_str()), file.path_);
}

void OpenFolder::flush(std::error_code& error) const {
    const int done = retried([&] { return ::fsync(handle_->folder.get()); });
    // A file system that cannot flush a folder says so by EINVAL.
    error = done == -1 && errno != EINVAL ? systemSays() : std::error_code();
}

bool OpenFolder::tryLock() const {
    // Some network file systems have no such lock; writing goes on without it there.
    return ::flock(handle_->folder.get(), LOCK_EX | LOCK_NB) == 0 ||
           (errno != EWOULDBLOCK && errno != EINTR);
}

}  // namespace k520::systemFiles
