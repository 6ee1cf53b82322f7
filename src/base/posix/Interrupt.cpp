// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Interrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "base/posix/interruptDescriptor.h"
#include "base/posix/systemCalls.h"

namespace k520::interrupt {

namespace {

std::atomic<bool> mark = false;
static_assert(std::atomic<bool>::is_always_lock_free, "the handler may only touch this");
std::array<int, 2> wakeUp{-1, -1};

extern "C" void onSignal(int signal) {
    if (mark.exchange(true)) {
        _exit(128 + signal);
    }
    const int saved = errno;
    const char byte = 0;
    // A full pipe wakes its reader just as well.
    [[maybe_unused]] const auto written = ::write(wakeUp[1], &byte, 1);
    errno = saved;
}

}  // namespace

void note() {
    if (wakeUp[0] == -1 && pipe2(wakeUp.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throwSystemError(errno, "pipe");
    }
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM}) {
        sigaction(signal, &action, nullptr);
    }
    // Who started the program to outlive the terminal has it ignored.
    struct sigaction inherited {};
    if (sigaction(SIGHUP, nullptr, &inherited) == 0 && inherited.sa_handler != SIG_IGN) {
        sigaction(SIGHUP, &action, nullptr);
    }
    failOverlongWrites();
}

bool noted() noexcept {
    return mark;
}

void failOverlongWrites() noexcept {
    std::signal(SIGXFSZ, SIG_IGN);
}

void failUnreadWrites() noexcept {
    std::signal(SIGPIPE, SIG_IGN);
}

int descriptor() noexcept {
    return wakeUp[0];
}

}  // namespace k520::interrupt
