// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

#include "cli/Program.h"
#include "image/datFile.h"
#include "link/ptyRadio.h"
#include "link/simRadio.h"
#include "link/virtualRadio.h"

namespace k520 {
namespace {

using std::chrono::milliseconds;
using test::Outcome;
using test::Program;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

/// Fast enough for the first attempt's time-out, so that nothing fails but by a fault.
constexpr int fastLine = 230'400;

/// The program's sessions with a radio on a pseudo-terminal, over the first half KiB.
class Sessions : public testing::Test {
  protected:
    Sessions() {
        for (const char* key : {"ReadEndAddr", "WriteEndAddr"}) {
            EXPECT_EQ(run({"config", "set", "Setting", key, "01FF"}).code, 0);
        }
        EXPECT_EQ(run({"new", file("a.dat")}).code, 0);
        plug();
    }

    void plug(const SimFaults& faults = {}, int baud = fastLine) {
        radio = std::make_shared<SimRadio>(std::vector<std::uint8_t>(8192, 0x11), faults, baud);
        terminal = std::make_unique<PtyRadio>(radio);
    }

    /// Runs a command and plays the radio until it ends; `meanwhile` gets its process.
    Outcome with(const Words& words, const std::function<void(pid_t)>& meanwhile = {}) {
        const pid_t child = run.start(words, "session");
        int status = 0;
        while (waitpid(child, &status, WNOHANG) == 0) {
            if (meanwhile) {
                meanwhile(child);
            }
            terminal->step(milliseconds(2));
        }
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
                run.folder.read("session.out"), run.folder.read("session.err")};
    }
    [[nodiscard]] std::string port() const { return terminal->devicePath(); }
    [[nodiscard]] std::string file(const std::string& name) const { return run.file(name); }
    [[nodiscard]] bool exists(const std::string& name) const {
        return std::filesystem::exists(file(name));
    }

    Program run;
    std::shared_ptr<SimRadio> radio;
    std::unique_ptr<PtyRadio> terminal;
};

TEST_F(Sessions, WhatIsWrittenIsReadAgain) {
    EXPECT_EQ(run({"set", file("a.dat"), "ch7.rx=433.5", "ch7.encode=D023I"}).code, 0);
    const auto sent = run.folder.read("a.dat");
    // A tone of the radio's channel 5, which is empty in the file, must not come along.
    radio->memory()[0x58] = 0x9E;
    radio->memory()[0x59] = 0x02;
    const auto outcome =
        with({"write", "-p", port(), file("a.dat"), "--backup", file("old.dat"), "--verify"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(run.folder.read("a.dat"), sent) << "the file stays as it is";
    EXPECT_EQ(radio->memory()[0x73], 0x43);
    EXPECT_EQ(radio->memory()[0x58], 0xFF);
    EXPECT_THAT(run({"export", file("old.dat")}).out, HasSubstr("5,111.11111,111.11111,67.0"));
    EXPECT_EQ(radio->memory()[0x200], 0x11) << "beyond the write range nothing changes";
    EXPECT_EQ(with({"verify", "-p", port(), file("a.dat")}).code, 0);
    EXPECT_EQ(with({"read", "-p", port(), "-o", file("b.dat"), "--verify"}).code, 0);
    EXPECT_EQ(run({"diff", file("a.dat"), file("b.dat")}).code, 0);
    EXPECT_THAT(radio->complaints(), testing::IsEmpty());

    radio->memory()[0x74] ^= 0x01;
    const auto differs = with({"verify", "-p", port(), file("a.dat")});
    EXPECT_EQ(differs.code, 1);
    EXPECT_THAT(differs.out, HasSubstr("channel 7"));
}

TEST_F(Sessions, AFlippedByteIsFoundByTheSecondPassOnly) {
    // Behind the handshake's two bytes and the header's four comes the first data byte.
    const SimFaults flip{.replyBytes = {{.kind = ByteFaultKind::corrupt, .byte = 30, .value = 1}}};
    plug(flip);
    EXPECT_EQ(with({"read", "-p", port(), "-o", file("wrong.dat")}).code, 0);
    plug(flip);
    const auto verified = with({"read", "-p", port(), "-o", file("right.dat"), "--verify"});
    EXPECT_EQ(verified.code, 1);
    EXPECT_THAT(verified.err, HasSubstr("two reads of the radio differ"));
    EXPECT_FALSE(exists("right.dat"));
}

TEST_F(Sessions, FailedAttemptsAreRepeated) {
    plug({.failAttempts = 3});
    EXPECT_EQ(with({"read", "-p", port(), "-o", file("b.dat"), "--trace", file("t.txt")}).code, 0);
    const auto trace = run.folder.read("t.txt");
    EXPECT_THAT(trace, HasSubstr("Tx: 50 52 4F 47 \n    52 41 4D \nRx：Communication failed!"));
    EXPECT_THAT(trace, HasSubstr("Rx: 57 00 10 10 \n       11 11 "));
    EXPECT_EQ(radio->counters().attempts, 4U);
}

TEST_F(Sessions, AReadOfAnOddRangeTakesTheRestFromTheDefaultImage) {
    EXPECT_EQ(run({"config", "set", "Setting", "ReadEndAddr", "0023"}).code, 0);
    EXPECT_EQ(with({"read", "-p", port(), "-o", file("b.dat")}).code, 0);
    // Channel 2 has the radio's receive frequency and everything else as it is shipped.
    EXPECT_THAT(run({"export", file("b.dat")}).out,
                HasSubstr("2,111.11111,446.01875,,,Narrow,Low,On,Off\n"));
}

TEST_F(Sessions, WhatFailsIsToldAndLeavesEveryFile) {
    run.folder.write("old.dat", "old");
    const auto old = file("old.dat");
    const auto expectOld = [&] { EXPECT_EQ(run.folder.read("old.dat"), "old"); };

    plug({.silentFrom = 1});
    const auto silent = with({"write", "-p", port(), file("a.dat"), "--backup", old});
    EXPECT_EQ(silent.code, 1);
    EXPECT_THAT(silent.err, HasSubstr("is the radio on"));
    EXPECT_EQ(radio->counters().writes, 0U) << "without a backup nothing is written";
    expectOld();

    plug({.goneAfter = 6});
    const auto gone = with({"read", "-p", port(), "-o", old});
    EXPECT_EQ(gone.code, 1);
    EXPECT_THAT(gone.err, HasSubstr("gone away"));
    expectOld();

    plug({.silentFrom = 9});
    const auto partly = with({"write", "-p", port(), file("a.dat")});
    EXPECT_EQ(partly.code, 1);
    EXPECT_THAT(partly.err, HasSubstr("partly written"));
}

TEST_F(Sessions, PortsAreRefusedWithTheReason) {
    run.folder.write("plain", "x");
    struct Case {
        std::string port;
        const char* reason;
    };
    for (const auto& c :
         {Case{file("missing"), "no such device"}, Case{file("plain"), "serial"},
          Case{run.folder.path().string(), "serial"}, Case{"/dev/null", "serial"}}) {
        const auto outcome = run({"read", "-p", c.port, "-o", file("b.dat")});
        EXPECT_EQ(outcome.code, 1) << c.port;
        EXPECT_THAT(outcome.err, HasSubstr(c.reason)) << c.port;
        EXPECT_FALSE(exists("b.dat"));
    }
    EXPECT_EQ(run.folder.read("plain"), "x") << "not one byte was sent";

    bool asked = false;
    with({"read", "-p", port(), "-o", file("b.dat")}, [&](pid_t) {
        if (!asked && radio->counters().exchanges > 2) {
            asked = true;
            const auto second = run({"read", "-p", port(), "-o", file("c.dat")});
            EXPECT_EQ(second.code, 1);
            EXPECT_THAT(second.err, HasSubstr("in use"));
        }
    });
    EXPECT_TRUE(asked);
    EXPECT_FALSE(exists("c.dat"));
}

TEST_F(Sessions, CtrlCEndsASessionCleanly) {
    bool sent = false;
    const auto outcome = with({"read", "-p", port(), "-o", file("b.dat")}, [&](pid_t child) {
        if (!sent && radio->counters().exchanges > 3) {
            sent = true;
            kill(child, SIGINT);
        }
    });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("stopped by Ctrl-C"));
    EXPECT_FALSE(exists("b.dat"));
    EXPECT_EQ(with({"read", "-p", port(), "-o", file("b.dat")}).code, 0) << "the port is free";
}

TEST_F(Sessions, SimulateIsARadioForOthers) {
    const auto link = file("radio");
    const auto out = file("simulate.out");
    // A FIFO in place of the output file, so that its first line can be waited for.
    ASSERT_EQ(mkfifo(out.c_str(), 0600), 0);
    const int reader = open(out.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const pid_t child = run.start({"simulate", "--image", file("a.dat"), "--link", link, "--save",
                                   file("kept.dat"), "--baud", "230400"},
                                  "simulate");
    fcntl(reader, F_SETFL, 0);
    std::string first;
    for (char c = 0; read(reader, &c, 1) == 1 && c != '\n';) {
        first += c;
    }
    close(reader);
    EXPECT_THAT(first, testing::StartsWith("port: /dev/"));
    EXPECT_EQ(run({"read", "-p", link, "-o", file("b.dat")}).code, 0);
    EXPECT_EQ(run({"diff", file("a.dat"), file("b.dat")}).code, 0);
    EXPECT_EQ(run({"set", file("b.dat"), "ch3.tx="}).code, 0);
    EXPECT_EQ(run({"write", "-p", first.substr(6), file("b.dat"), "--verify"}).code, 0);
    kill(child, SIGTERM);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_THAT(run.folder.read("simulate.err"), HasSubstr("1 writes, 0 violations"));
    EXPECT_FALSE(std::filesystem::is_symlink(link));
    EXPECT_EQ(run({"diff", file("b.dat"), file("kept.dat")}).code, 0);
}

}  // namespace
}  // namespace k520
