// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The real program over pseudo-terminals: killed at every block of a write, and what a session with
// a silent radio or a pulled cable costs. Prints the rows of a table; the exit code is 1 where a
// case broke a promise.
//
// usage: k520_program_campaign [STRIDE]    over the whole memory only one exchange in STRIDE
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "cli/Program.h"
#include "faults/KilledWrite.h"
#include "link/simulator/ptyRadio.h"

namespace {

using namespace k520;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Sessions wait for the line most of the time, so that several share a processor.
constexpr int atATime = 3;

int reap() {
    int status = 0;
    ::wait(&status);
    return status == 0 ? 0 : 1;
}

struct Killing {
    const char* what;
    std::string (*kill)(const test::KilledWriteCase& job);
    /// Exchanges at the end of a write that are left out.
    std::uint32_t leftOut = 0;
    const char* outcome;
};

constexpr Killing oneWrite{"a write with backup", test::killedWrite, 0,
                           "backups intact and radios restored"};
// What differs between the two radios is in the last block.
constexpr Killing twoWrites{"a write to each of two radios of one kind", test::twoKilledWrites, 3,
                            "pairs that got their own content back"};

/// Kills at one exchange in `stride`; returns how many cases broke a promise.
int killEverywhere(const Killing& killing, int lastAddress, std::uint32_t stride) {
    const auto exchanges = static_cast<std::uint32_t>(lastAddress / 16 + 1 + 3) - killing.leftOut;
    int cases = 0;
    int running = 0;
    int broken = 0;
    std::fflush(nullptr);
    for (std::uint32_t exchange = 1; exchange <= exchanges; exchange += stride, ++cases) {
        if (running == atATime) {
            broken += reap();
            --running;
        }
        ++running;
        if (::fork() == 0) {
            const auto wrong = killing.kill({.lastAddress = lastAddress, .exchange = exchange});
            if (!wrong.empty()) {
                fmt::print(stderr, "killed at exchange {}: {}\n", exchange, wrong);
            }
            std::fflush(nullptr);
            ::_exit(wrong.empty() ? 0 : 1);
        }
    }
    for (; running > 0; --running) {
        broken += reap();
    }
    fmt::print("| kill -9 of {} | at exchange 1, {} ... {}, 0000-{:04X} | {} | {} {} |\n",
               killing.what, 1 + stride, exchanges, lastAddress, cases, cases - broken,
               killing.outcome);
    return broken;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Runs a read at a radio with faults, and tells what it takes.
int measure(const char* fault, const SimFaults& faults) {
    const test::Program run;
    PtyRadio terminal(std::make_shared<SimRadio>(std::vector<std::uint8_t>{}, faults));
    const auto start = steady_clock::now();
    const pid_t child =
        run.start(run.wordsOf("read -o @b.dat -p " + terminal.devicePath()), "session");
    auto gone = start;
    int status = 0;
    rusage used{};
    while (::wait4(child, &status, WNOHANG, &used) == 0) {
        if (!terminal.step(milliseconds(20)) && gone == start) {
            gone = steady_clock::now();
        }
    }
    const std::chrono::duration<double> time = steady_clock::now() - start;
    const std::chrono::duration<double> afterwards =
        gone == start ? gone - start : steady_clock::now() - gone;
    const double share = (seconds(used.ru_utime) + seconds(used.ru_stime)) / time.count() * 100;
    const bool failed = WIFEXITED(status) && WEXITSTATUS(status) == 1;
    fmt::print(
        "| {} | real read | 1 | {:.2f} s, {:.2f} s of them after the unplugging, processor "
        "{:.1f} %, largest {} KiB{} |\n",
        fault, time.count(), afterwards.count(), share, used.ru_maxrss, failed ? "" : ", NOT TOLD");
    return failed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const long stride = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1;
    fmt::print("| fault | how | cases | outcome |\n| --- | --- | ---: | --- |\n");
    int broken = measure("radio silent", {.silentFrom = 1});
    broken += measure("silent from the 9th exchange on", {.silentFrom = 9});
    broken += measure("cable pulled after the 20th exchange", {.goneAfter = 20});
    broken += measure("endless noise", {.babble = Babble{}});
    broken += killEverywhere(oneWrite, 0x1FF, 1);
    broken += killEverywhere(twoWrites, 0x1FF, 1);
    broken += killEverywhere(oneWrite, 0x1FFF, static_cast<std::uint32_t>(std::max(1L, stride)));
    return broken == 0 ? 0 : 1;
}
