// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/posix/posixPort.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/serial.h>
#endif

#include <algorithm>
#include <cerrno>

#include "base/RuntimeError.h"
#include "base/posix/systemCalls.h"
#include "link/port/portTexts.h"
#include "link/port/posix/portHolder.h"
#include "link/port/posix/radioLine.h"

namespace k520 {

namespace {

using std::chrono::steady_clock;

[[noreturn]] void throwInUse(const std::string& path, const struct stat& device) {
    throw RuntimeError(errNum::alreadyOpen, path,
                       say(texts::inUseBy, portHolder::description(device)));
}

[[noreturn]] void throwNotSerial(const std::string& path, const struct stat& device) {
    const Text& what = S_ISDIR(device.st_mode)   ? texts::isAFolder
                       : S_ISREG(device.st_mode) ? texts::isAFile
                                                 : texts::isNotSerial;
    throw RuntimeError(errNum::deviceUnavailable, path, say(what));
}

std::string userName(uid_t user) {
    const passwd* const entry = ::getpwuid(user);
    return entry != nullptr ? entry->pw_name : std::to_string(user);
}

std::string groupName(gid_t group) {
    const struct group* const entry = ::getgrgid(group);
    return entry != nullptr ? entry->gr_name : std::to_string(group);
}

/// Whether joining the device's group is the way in. Nobody should join the administrator's group.
bool groupMayUse(const struct stat& device) {
    constexpr mode_t groupRights = S_IRGRP | S_IWGRP;
    return device.st_gid != 0 && (device.st_mode & groupRights) == groupRights;
}

[[noreturn]] void throwNoPermission(const std::string& path, const struct stat& device) {
    const auto remedy = groupMayUse(device)
                            ? say(texts::joinGroup, groupName(device.st_gid), userName(::getuid()))
                            : say(texts::onlyUser, userName(device.st_uid));
    throw RuntimeError(errNum::permissionDenied, path, say(texts::permissionNeeded, remedy));
}

/// What the path leads to; anything but a character device is refused before it is opened.
struct stat examine(const std::string& path) {
    struct stat device {};
    if (::stat(path.c_str(), &device) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            throw RuntimeError(errNum::fileNotFound, path, say(texts::noSuchDevice));
        }
        if (errno == EACCES) {
            throw RuntimeError(errNum::permissionDenied, path, say(texts::folderClosed));
        }
        throwSystemError(errno, path);
    }
    if (!S_ISCHR(device.st_mode)) {
        throwNotSerial(path, device);
    }
    return device;
}

Descriptor openDevice(const std::string& path, const struct stat& device) {
    Descriptor line(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    const int error = errno;
    if (!line.valid()) {
        if (error == EACCES || error == EPERM) {
            throwNoPermission(path, device);
        }
        if (error == EBUSY) {
            throwInUse(path, device);
        }
        throwSystemError(error, path);
    }
    if (::isatty(line.get()) == 0) {
        throwNotSerial(path, device);
    }
    return line;
}

/// False where another program has locked the device; devices without locks are nobody's.
bool lock(int fd) {
    return ::flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool markedExclusive(int fd) {
#ifdef TIOCGEXCL
    // The mark stops other users at open(); the superuser passes by and has to look.
    int marked = 0;
    return ::ioctl(fd, TIOCGEXCL, &marked) == 0 && marked != 0;
#else
    static_cast<void>(fd);
    return false;
#endif
}

/// Drivers and converters hold bytes back for up to 16 ms unless asked not to. Many devices have
/// neither this setting nor modem lines, so refusals do not count.
void askForFavours(int fd) {
#ifdef __linux__
    serial_struct settings{};
    if (::ioctl(fd, TIOCGSERIAL, &settings) == 0) {
        settings.flags |= ASYNC_LOW_LATENCY;
        static_cast<void>(::ioctl(fd, TIOCSSERIAL, &settings));
    }
#endif
    const int powerLines = TIOCM_DTR | TIOCM_RTS;
    static_cast<void>(::ioctl(fd, TIOCMBIS, &powerLines));
}

}  // namespace

PosixPort::PosixPort(std::string path, std::chrono::milliseconds writeLimit)
    : path_(std::move(path)), writeLimit_(writeLimit) {}

PosixPort::~PosixPort() {
    PosixPort::close();
}

void PosixPort::open() {
    const struct stat device = examine(path_);
    Descriptor line = openDevice(path_, device);
    // A second opening finds the mark of the first. The mark comes before the lock: whoever is
    // asked for the holder must not find our own lock.
    if (markedExclusive(line.get()) || !lock(line.get())) {
        throwInUse(path_, device);
    }
    require(setRadioLine(line.get()));
    askForFavours(line.get());
    require(::tcflush(line.get(), TCIOFLUSH) == 0);
    // Last of what can fail, so that a refused opening leaves no mark.
    require(::ioctl(line.get(), TIOCEXCL) == 0);
    line_ = std::move(line);
}

void PosixPort::close() {
    if (isOpen()) {
        static_cast<void>(::ioctl(line_.get(), TIOCNXCL));
        line_.reset();
    }
}

void PosixPort::emptyInput() {
    requireOpen();
    require(::tcflush(line_.get(), TCIFLUSH) == 0);
}

void PosixPort::emptyOutput() {
    requireOpen();
    require(::tcflush(line_.get(), TCOFLUSH) == 0);
}

void PosixPort::write(std::span<const std::uint8_t> bytes) {
    requireOpen();
    const auto deadline = steady_clock::now() + writeLimit_;
    while (!bytes.empty()) {
        const ssize_t count = ::write(line_.get(), bytes.data(), bytes.size());
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else {
            require(count == 0 || errno == EAGAIN || errno == EINTR);
            waitForRoom(deadline);
        }
    }
}

std::size_t PosixPort::waiting() {
    requireOpen();
    pollfd line{line_.get(), POLLIN, 0};
    const int ready = ::poll(&line, 1, 0);
    require(ready >= 0 || errno == EINTR);
    if (ready > 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
        errno = EIO;
        require(false);
    }
    int count = 0;
    require(::ioctl(line_.get(), FIONREAD, &count) == 0);
    return static_cast<std::size_t>(count);
}

std::vector<std::uint8_t> PosixPort::readAll() {
    std::vector<std::uint8_t> bytes(waiting());
    const ssize_t count = bytes.empty() ? 0 : ::read(line_.get(), bytes.data(), bytes.size());
    require(count >= 0 || errno == EAGAIN || errno == EINTR);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

void PosixPort::requireOpen() const {
    if (!isOpen()) {
        throw RuntimeError(errNum::badFileName, path_, say(texts::portNotOpen));
    }
}

/// Raises what errno says unless `done`.
void PosixPort::require(bool done) const {
    if (done) {
        return;
    }
    if (errno == EIO || errno == ENXIO || errno == ENODEV) {
        throw RuntimeError(errNum::deviceIo, path_, say(texts::portGone));
    }
    throwSystemError(errno, path_);
}

void PosixPort::waitForRoom(steady_clock::time_point deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - steady_clock::now());
    if (left.count() <= 0) {
        throw RuntimeError(errNum::deviceIo, path_, say(texts::portTakesNothing));
    }
    pollfd line{line_.get(), POLLOUT, 0};
    require(::poll(&line, 1, static_cast<int>(left.count())) >= 0 || errno == EINTR);
}

}  // namespace k520
