// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/simulator/ptyRadio.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/inotify.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "base/posix/Descriptor.h"
#include "base/posix/interruptDescriptor.h"
#include "base/posix/systemCalls.h"
#include "link/port/portTexts.h"
#include "link/port/posix/portHolder.h"
#include "link/port/posix/radioLine.h"

namespace k520 {

namespace {

/// How far the client's line may run ahead. What it writes beyond that waits in the terminal's
/// buffer, as in a port's, and a client that floods the line has to wait too.
constexpr Clock::Microseconds lineAhead{200'000};

/// A closing is told a moment before the closed client's lock is released, so one look is not
/// enough.
constexpr int looksAfterClosing = 10;
constexpr Clock::Microseconds lookInterval{20'000};

void require(bool done) {
    const int error = errno;
    if (!done) {
        throwSystemError(error, say(texts::pseudoTerminal));
    }
}

Descriptor openMaster() {
    Descriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    require(master.valid() && ::grantpt(master.get()) == 0 && ::unlockpt(master.get()) == 0);
    return master;
}

/// A descriptor that becomes readable when a client closes the device; none where the system
/// offers no such watch.
Descriptor watchClosings(const std::string& path) {
#ifdef __linux__
    Descriptor watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch.valid() && ::inotify_add_watch(watch.get(), path.c_str(), IN_CLOSE) >= 0) {
        return watch;
    }
#else
    static_cast<void>(path);
#endif
    return {};
}

timespec toTimespec(std::chrono::nanoseconds time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((time - seconds).count())};
}

}  // namespace

/// Both ends of the pseudo-terminal, and the radio at one of them.
class PtyRadio::Pair {
  public:
    explicit Pair(std::shared_ptr<SimRadio> radio);

    [[nodiscard]] const std::string& devicePath() const noexcept { return devicePath_; }
    bool step(Microseconds limit);

  private:
    void sleepUntilSomethingComes(Microseconds limit);
    void hearClient();
    void noticeClosings();
    void tidyUpAfterClients();
    void answerClient();
    void hangUp();

    std::shared_ptr<SimRadio> radio_;
    SystemClock clock_;
    Descriptor master_;
    /// Kept open, so that the pair lives on between clients.
    Descriptor slave_;
    Descriptor closings_;
    /// How often to look yet whether the last client has gone, and when next.
    int looksLeft_ = 0;
    Microseconds nextLook_{0};
    std::string devicePath_;
    struct stat device_ {};
};

PtyRadio::Pair::Pair(std::shared_ptr<SimRadio> radio)
    : radio_(std::move(radio)), master_(openMaster()) {
    const char* const name = ::ptsname(master_.get());
    require(name != nullptr);
    devicePath_ = name;
    slave_ = Descriptor(::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    require(slave_.valid() && setRadioLine(slave_.get()) && ::fstat(slave_.get(), &device_) == 0);
    closings_ = watchClosings(devicePath_);
}

bool PtyRadio::Pair::step(Microseconds limit) {
    if (master_.valid()) {
        sleepUntilSomethingComes(limit);
        noticeClosings();
        hearClient();
        answerClient();
        if (radio_->gone(clock_.now())) {
            hangUp();
        }
    }
    return master_.valid();
}

void PtyRadio::Pair::sleepUntilSomethingComes(Microseconds limit) {
    const Microseconds now = clock_.now();
    Microseconds wake = now + limit;
    if (const auto due = radio_->nextDue()) {
        wake = std::min(wake, *due);
    }
    if (looksLeft_ > 0) {
        wake = std::min(wake, nextLook_);
    }
    const Microseconds lineReady = radio_->lineBusyUntil() - lineAhead;
    const bool listening = lineReady <= now;
    if (!listening) {
        wake = std::min(wake, lineReady);
    }
    std::array<pollfd, 3> sources{{{listening ? master_.get() : -1, POLLIN, 0},
                                   {closings_.get(), POLLIN, 0},
                                   {interrupt::descriptor(), POLLIN, 0}}};
    const timespec timeout = toTimespec(std::max(wake - now, Microseconds(0)));
    static_cast<void>(::ppoll(sources.data(), sources.size(), &timeout, nullptr));
}

void PtyRadio::Pair::hearClient() {
    const Microseconds now = clock_.now();
    if (radio_->lineBusyUntil() - lineAhead > now) {
        return;
    }
    std::array<std::uint8_t, 256> bytes{};
    const ssize_t count = ::read(master_.get(), bytes.data(), bytes.size());
    if (count > 0) {
        radio_->receive(std::span(bytes).first(static_cast<std::size_t>(count)), now);
    }
}

void PtyRadio::Pair::noticeClosings() {
    std::array<char, 4096> events{};
    while (closings_.valid() && ::read(closings_.get(), events.data(), events.size()) > 0) {
        looksLeft_ = looksAfterClosing;
        nextLook_ = clock_.now();
    }
    if (looksLeft_ > 0 && nextLook_ <= clock_.now()) {
        --looksLeft_;
        nextLook_ += lookInterval;
        tidyUpAfterClients();
    }
}

/// When no client is left, the exclusive mark goes, and the line settings are those of a radio's
/// line again, without echo. A client that was refused closes too, while another one goes on.
void PtyRadio::Pair::tidyUpAfterClients() {
    if (!portHolder::locker(device_) && !portHolder::opener(device_)) {
        looksLeft_ = 0;
        static_cast<void>(::ioctl(slave_.get(), TIOCNXCL));
        static_cast<void>(setRadioLine(slave_.get()));
    }
}

void PtyRadio::Pair::answerClient() {
    const auto bytes = radio_->takeDue(clock_.now());
    if (!bytes.empty()) {
        // Bytes for which a client has no room are lost, as on a line without flow control.
        [[maybe_unused]] const ssize_t taken = ::write(master_.get(), bytes.data(), bytes.size());
    }
}

void PtyRadio::Pair::hangUp() {
    closings_.reset();
    slave_.reset();
    master_.reset();
}

PtyRadio::PtyRadio(std::shared_ptr<SimRadio> radio)
    : pair_(std::make_unique<Pair>(std::move(radio))) {}

PtyRadio::~PtyRadio() = default;

const std::string& PtyRadio::devicePath() const noexcept {
    return pair_->devicePath();
}

bool PtyRadio::step(Microseconds limit) {
    return pair_->step(limit);
}

}  // namespace k520
