// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/deviceLink.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <system_error>
#include <utility>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "base/posix/Descriptor.h"
#include "base/posix/systemCalls.h"
#include "link/port/portTexts.h"

namespace k520 {

namespace {

namespace fs = std::filesystem;

/// The path at the end of a link, for messages and comparisons.
fs::path targetOf(const fs::path& link) {
    std::error_code error;
    const auto target = fs::read_symlink(link, error);
    return target.is_absolute() ? target : link.parent_path() / target;
}

/// Terminals of this kind belong to programs. Others may be real ports, and opening one of those
/// already moves its lines.
bool isPseudoTerminal(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode) &&
           path.string().starts_with("/dev/pts/");
}

Descriptor openTerminal(const fs::path& path) {
    return Descriptor(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

/// The mark is a lock that the system takes away with the program, however that ends; clients use
/// locks of another kind. Whether this program has it now.
bool mark(const Descriptor& terminal) {
#ifdef F_OFD_SETLK
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    return ::fcntl(terminal.get(), F_OFD_SETLK, &lock) == 0;
#else
    static_cast<void>(terminal);
    return false;
#endif
}

/// Raises where something that runs, or that is none of a simulated radio, stands at the end of a
/// link.
void requireStale(const fs::path& link, const fs::path& device) {
    const fs::path target = targetOf(link);
    std::error_code error;
    if (target == device || !fs::exists(target, error)) {
        return;
    }
    if (!isPseudoTerminal(target)) {
        throw RuntimeError(errNum::permissionDenied, link.string(),
                           say(texts::linkElsewhere, target.string()));
    }
    // One that cannot be opened is in use, or another user's.
    const Descriptor terminal = openTerminal(target);
    if (!terminal.valid() || !mark(terminal)) {
        throw RuntimeError(errNum::permissionDenied, link.string(),
                           say(texts::linkInUse, target.string()));
    }
}

void turn(const fs::path& link, const fs::path& device) {
    std::error_code error;
    const fs::path temporary = link.string() + "." + std::to_string(::getpid());
    fs::create_symlink(device, temporary, error);
    if (!error) {
        fs::rename(temporary, link, error);
    }
    if (error) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        throwSystemError(error, link.string());
    }
}

}  // namespace

class DeviceLink::Mark {
  public:
    explicit Mark(Descriptor marked) : terminal(std::move(marked)) {}

    const Descriptor terminal;
};

DeviceLink::DeviceLink(fs::path link, fs::path device)
    : link_(std::move(link)), device_(std::move(device)) {
    // Two programs that begin at once must not both find the link stale.
    const files::FolderLock alone(link_.has_parent_path() ? link_.parent_path() : ".");
    std::error_code error;
    const auto present = fs::symlink_status(link_, error);
    if (fs::exists(present) && !fs::is_symlink(present)) {
        throw RuntimeError(errNum::pathAccess, link_.string(), say(texts::notALink));
    }
    if (fs::is_symlink(present)) {
        requireStale(link_, device_);
    }
    if (isPseudoTerminal(device_)) {
        mark_ = std::make_unique<Mark>(openTerminal(device_));
        static_cast<void>(mark(mark_->terminal));
    }
    turn(link_, device_);
}

DeviceLink::~DeviceLink() {
    std::error_code error;
    if (fs::read_symlink(link_, error) == device_ && !error) {
        fs::remove(link_, error);
    }
}

}  // namespace k520
