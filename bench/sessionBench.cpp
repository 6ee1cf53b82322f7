// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Sessions. On a simulated clock: what the program itself costs for a whole radio (8 KiB, a
// simulated line at 9600 baud, its failed first attempts included). In real time: one whole read
// over a pseudo-terminal, compared with the time that the line and the prescribed waits take.

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <memory>

#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "image/modIicDat.h"
#include "link/port/posix/posixPort.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/simRadio.h"
#include "link/simulator/virtualPort.h"
#include "program/modStartUp.h"
#include "support/SimulatedClock.h"

namespace {

using namespace k520;

void prepare() {
    programFolder::state().own = K520_SHARE_DIR;
    settingsStore::state().writable = false;
    modStartUp::readSettings();
    modStartUp::prepareCore();
}

void readOnSimulatedClock(benchmark::State& state) {
    prepare();
    test::SimulatedClock clock;
    const auto radio = std::make_shared<SimRadio>();
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<VirtualPort>(radio);
    };
    NullView view;
    for (auto _ : state) {
        if (modSession::cmdRead_Click(view).outcome != modSession::Outcome::succeeded) {
            state.SkipWithError("the session failed");
            break;
        }
    }
    modCommun::state().portMaker = nullptr;
}
BENCHMARK(readOnSimulatedClock)->Unit(benchmark::kMillisecond);

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The time that the bytes of a whole read take on the line, and the 5 ms in front of every phase
/// of a script and of its end.
double prescribedSeconds(int blocks) {
    constexpr double byteTime = 10.0 / SimRadio::usualBaud;
    constexpr double phaseWait = 0.005;
    const double handshake = 3 * phaseWait + (7 + 1 + 1 + 1) * byteTime;
    const double block = 2 * phaseWait + (4 + 20) * byteTime;
    const double end = 2 * phaseWait;
    return handshake + blocks * block + end;
}

/// Plays the radio in a process of its own until it is killed.
pid_t playRadio(PtyRadio& terminal) {
    const pid_t child = fork();
    if (child == 0) {
        while (terminal.step(std::chrono::seconds(1))) {
        }
        _exit(0);
    }
    return child;
}

void readAtLineSpeed(benchmark::State& state) {
    prepare();
    PtyRadio terminal(std::make_shared<SimRadio>());
    const pid_t radio = playRadio(terminal);
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<PosixPort>(terminal.devicePath());
    };
    NullView view;
    for (auto _ : state) {
        const double before = processorSeconds();
        const auto result = modSession::cmdRead_Click(view);
        if (result.outcome != modSession::Outcome::succeeded) {
            state.SkipWithError("the session failed");
            break;
        }
        const double attempt = static_cast<double>(result.lastAttempt.count()) / 1e6;
        const double whole = static_cast<double>(result.duration.count()) / 1e6;
        const double prescribed = prescribedSeconds(result.stepCount - 2);
        state.counters["attempt_s"] = attempt;
        state.counters["prescribed_s"] = prescribed;
        state.counters["ratio"] = attempt / prescribed;
        state.counters["failed_attempts"] = result.failedAttempts;
        state.counters["processor_%"] = 100 * (processorSeconds() - before) / whole;
    }
    modCommun::state().portMaker = nullptr;
    kill(radio, SIGKILL);
    waitpid(radio, nullptr, 0);
}
BENCHMARK(readAtLineSpeed)->Unit(benchmark::kSecond)->Iterations(1)->Repetitions(3)->UseRealTime();

}  // namespace
