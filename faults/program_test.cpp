// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The real program against radios and lines that fail, over pseudo-terminals.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "app/modShowErr.h"
#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "cli/Program.h"
#include "faults/KilledWrite.h"
#include "image/modIicDat.h"
#include "link/port/deviceLink.h"
#include "link/port/posix/posixPort.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/simulator/ptyRadio.h"

namespace k520 {
namespace {

using std::chrono::milliseconds;
using test::Program;
using testing::HasSubstr;

/// `k520-cli simulate` as a process, at the link "radio" of the program's folder.
class Simulation {
  public:
    Simulation(const Program& run, const std::string& options)
        : process_(run.start(
              run.wordsOf("simulate --link @radio --save @kept.dat --baud 230400" + options),
              "simulate")) {
        while (!std::filesystem::is_symlink(run.file("radio"))) {
            std::this_thread::yield();
        }
    }
    ~Simulation() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    Simulation(const Simulation&) = delete;
    Simulation& operator=(const Simulation&) = delete;

  private:
    pid_t process_;
};

TEST(ProgramFaults, EveryFaultEndsWithItsCodeAndItsReason) {
    const Program run;
    for (const char* line :
         {"config set Setting ReadEndAddr 003F", "config set Setting WriteEndAddr 003F",
          "new @a.dat", "set @a.dat ch3.rx=433.5"}) {
        ASSERT_EQ(run(line).code, 0);
    }
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {" --lose 70", "read -o @b.dat --verify", 0, ""},
        {" --corrupt 70", "read -o @b.dat --verify", 1, "differ"},
        {" --add 70", "read -o @b.dat --verify", 1, "differ"},
        {" --delay 70:300", "read -o @b.dat --verify", 0, ""},
        {" --babble-from 1", "read -o @b.dat", 1, "no valid answer"},
        {" --babble-from 5", "write @a.dat", 1, "partly written"},
        {" --lose-request 80", "write @a.dat --verify", 0, ""},
        {" --corrupt-request 80", "write @a.dat --verify", 1, "does not hold what was sent"},
        {" --forget 4", "write @a.dat --verify", 1, "does not hold what was sent"},
        {" --delay 6:300", "write @a.dat --verify", 0, ""},
        {" --unplug-after 5", "read -o @b.dat", 1, "gone away"},
        // Plugged in again.
        {"", "read -o @b.dat --verify", 0, ""}};
    for (const auto& [options, line, code, reason] : rows) {
        test::Outcome outcome;
        const auto asExpected = [&, wanted = code, text = reason] {
            return outcome.code == wanted && outcome.err.find(text) != std::string::npos;
        };
        // A busy machine may spoil the very attempt that the fault is meant for; then once more.
        for (int round = 0; round < 5 && !asExpected(); ++round) {
            std::filesystem::remove(run.file("b.dat"));
            const Simulation radio(run, options);
            outcome = run(std::string(line) + " -p @radio");
        }
        EXPECT_EQ(outcome.code, code) << options << ": " << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(reason)) << options;
        EXPECT_EQ(std::filesystem::exists(run.file("b.dat")), code == 0 && line[0] == 'r');
    }
}

/// The process goes on: after the cable has been out, the next session opens the port anew.
TEST(ProgramFaults, TheSameProcessGoesOnWhenTheCableIsBack) {
    const test::TempFolder folder;
    modIicDat::sizeArrays(8191);
    modChMem::SetChGrid();
    modIicDat::state().readRange = {0x400, 0x43F};
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<PosixPort>(folder / "radio");
    };
    NullView view;
    for (const std::optional<std::uint32_t> goneAfter : {std::optional(4U), {}}) {
        PtyRadio pty(std::make_shared<SimRadio>(std::vector<std::uint8_t>{},
                                                SimFaults{.goneAfter = goneAfter}, 230'400));
        const DeviceLink link(folder / "radio", pty.devicePath());
        const std::jthread thread([&](const std::stop_token& stop) {
            while (!stop.stop_requested() && pty.step(milliseconds(20))) {
            }
        });
        const auto outcome = modSession::cmdRead_Click(view).outcome;
        EXPECT_EQ(outcome == modSession::Outcome::succeeded, !goneAfter);
        EXPECT_EQ(modShowErr::state().entries.size(), 1U) << "told once, of the first session";
    }
    EXPECT_EQ(modIicDat::IicDat()(0x43F), 0xFF);
    resetModules();
}

TEST(ProgramFaults, AKilledWriteLeavesTheBackupAndARadioThatItRestores) {
    // The handshake is exchanges 1 and 2, the end exchange 35.
    for (const std::uint32_t exchange : {1U, 3U, 19U, 35U}) {
        EXPECT_EQ(test::killedWrite({.lastAddress = 0x1FF, .exchange = exchange}), "") << exchange;
    }
}

TEST(ProgramFaults, TwoRadiosWhoseWritesWereKilledGetTheirOwnContentBack) {
    // The last of the blocks goes with exchange 34.
    for (const std::uint32_t exchange : {1U, 20U}) {
        EXPECT_EQ(test::twoKilledWrites({.lastAddress = 0x1FF, .exchange = exchange}), "")
            << exchange;
    }
}

}  // namespace
}  // namespace k520
