// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/stat.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <tuple>

#include "base/posix/Descriptor.h"
#include "cli/Program.h"
#include "image/datFile.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/simRadio.h"
#include "link/simulator/virtualRadio.h"

namespace k520 {
namespace {

using std::chrono::milliseconds;
using test::Outcome;
using test::Program;
using testing::HasSubstr;

/// Fast enough for the first attempt's time-out, so that nothing fails but by a fault.
constexpr int fastLine = 230'400;

/// The program's sessions with a radio on a pseudo-terminal, over the first half KiB.
class Sessions : public testing::Test {
  protected:
    Sessions() {
        for (const char* line : {"config set Setting ReadEndAddr 01FF",
                                 "config set Setting WriteEndAddr 01FF", "new @a.dat"}) {
            EXPECT_EQ(run(line).code, 0);
        }
        plug();
    }

    void plug(const SimFaults& faults = {}, int baud = fastLine,
              const std::vector<std::uint8_t>& memory = std::vector<std::uint8_t>(8192, 0x11)) {
        radio = std::make_shared<SimRadio>(memory, faults, baud);
        terminal = std::make_unique<PtyRadio>(radio);
    }

    /// Runs a command at the radio's port and plays the radio until it ends; `meanwhile` gets its
    /// process.
    Outcome with(const std::string& line, const std::function<void(pid_t)>& meanwhile = {}) {
        auto words = run.wordsOf(line);
        words.insert(words.end(), {"-p", terminal->devicePath()});
        const pid_t child = run.start(words, "session");
        return run.finish(child, "session", [&] {
            if (meanwhile) {
                meanwhile(child);
            }
            terminal->step(milliseconds(2));
        });
    }
    [[nodiscard]] bool exists(const std::string& name) const {
        return std::filesystem::exists(run.file(name));
    }

    Program run;
    std::shared_ptr<SimRadio> radio;
    std::unique_ptr<PtyRadio> terminal;
};

TEST_F(Sessions, WhatIsWrittenIsReadAgain) {
    EXPECT_EQ(run("set @a.dat ch7.rx=433.5 ch7.encode=D023I").code, 0);
    const auto sent = run.folder.read("a.dat");
    // A tone of the radio's channel 5, which is empty in the file, must not come along.
    radio->memory()[0x58] = 0x9E;
    radio->memory()[0x59] = 0x02;
    const auto outcome = with("write @a.dat --backup @old.dat --verify");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(run.folder.read("a.dat"), sent) << "the file stays as it is";
    EXPECT_EQ(radio->memory()[0x73], 0x43);
    EXPECT_EQ(radio->memory()[0x58], 0xFF);
    EXPECT_THAT(run("export @old.dat").out, HasSubstr("5,111.11111,111.11111,67.0"));
    EXPECT_EQ(radio->memory()[0x200], 0x11) << "beyond the write range nothing changes";
    EXPECT_EQ(with("verify @a.dat").code, 0);
    EXPECT_EQ(with("read -o @b.dat --verify").code, 0);
    EXPECT_EQ(run("diff @a.dat @b.dat").code, 0);
    EXPECT_THAT(radio->complaints(), testing::IsEmpty());

    radio->memory()[0x74] ^= 0x01;
    const auto differs = with("verify @a.dat");
    EXPECT_EQ(differs.code, 1);
    EXPECT_THAT(differs.out, HasSubstr("channel 7"));
}

TEST_F(Sessions, TwoPassesThatDifferAreNotSaved) {
    EXPECT_EQ(run("config set Setting ReadEndAddr 003F").code, 0);
    const auto outcome = with("read -o @right.dat --verify --keep-copy", [&](pid_t) {
        radio->memory()[0x30] = radio->counters().reads == 0 ? 0x11 : 0x12;
    });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.out, HasSubstr("channel 3"));
    EXPECT_THAT(outcome.err, HasSubstr("two reads of the radio differ"));
    EXPECT_FALSE(exists("right.dat"));
    EXPECT_FALSE(exists("Data"));
}

TEST_F(Sessions, ABrokenWriteIsTakenBackByTheCommandThatItNames) {
    const auto before = std::vector(radio->memory().begin(), radio->memory().end());
    // The backup has 35 exchanges, the write as many; a busy machine may lose some attempts.
    plug({.silentFrom = 62}, fastLine, before);
    const auto broken = with("write @a.dat --keep-copy");
    EXPECT_EQ(broken.code, 1);
    EXPECT_THAT(broken.err, HasSubstr("partly written"));
    EXPECT_THAT(broken.err, HasSubstr("restore -p " + terminal->devicePath() + " --from /"));
    const auto half = std::vector(radio->memory().begin(), radio->memory().end());
    EXPECT_NE(half, before);

    EXPECT_EQ(run("config set Setting WriteEndAddr 003F").code, 0);
    plug({}, fastLine, half);
    const auto smaller = with("write @a.dat --keep-copy");
    EXPECT_EQ(smaller.code, 0);
    EXPECT_THAT(smaller.err, HasSubstr("may still be in the radio; what it held before that one is "
                                       "put back by: "));
    EXPECT_EQ(run("config set Setting WriteEndAddr 01FF").code, 0);

    plug({.silentFrom = 62}, fastLine, half);
    EXPECT_THAT(with("write @a.dat --keep-copy").err,
                HasSubstr("; what it held before an earlier write that failed: "));

    plug({}, fastLine, half);
    EXPECT_EQ(with("restore --verify").code, 0);
    EXPECT_TRUE(std::ranges::equal(radio->memory(), before));

    EXPECT_EQ(with("write @a.dat --keep-copy").code, 0);
    std::ranges::fill(radio->memory(), std::uint8_t{0x77});
    const auto refused = with("restore");
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("the radio matches neither the backup nor the data"));
    EXPECT_THAT(refused.out, HasSubstr("_before-write_0000-01FF.dat\n"));
    EXPECT_EQ(radio->memory()[0x10], 0x77);
    EXPECT_EQ(with("write @a.dat --keep-copy --backup @b.dat").code, 2);
}

TEST_F(Sessions, RestoreNamesWhatItCannotChooseFrom) {
    EXPECT_THAT(with("restore").err, HasSubstr("has no note of a write with --keep-copy"));
    std::vector<std::vector<std::uint8_t>> before;
    for (const std::uint8_t id : {std::uint8_t{0x21}, std::uint8_t{0x22}}) {
        std::vector<std::uint8_t> memory(8192, 0x11);
        memory[0x10] = id;
        before.push_back(memory);
        plug({.silentFrom = 62}, fastLine, memory);
        EXPECT_EQ(with("write @a.dat --keep-copy").code, 1);
    }
    // What told them apart is overwritten.
    const std::vector held(radio->memory().begin(), radio->memory().end());
    plug({}, fastLine, held);
    const auto several = with("restore");
    EXPECT_EQ(several.code, 1);
    EXPECT_THAT(several.err, HasSubstr("name the right one with --from"));
    EXPECT_TRUE(std::ranges::equal(radio->memory(), held));
    EXPECT_EQ(std::ranges::count(several.out, '\n'), 2);
    EXPECT_EQ(run("restore --list").out, several.out);
    const auto newest = several.out.substr(several.out.find('/'));
    EXPECT_EQ(with("restore --from " + newest.substr(0, newest.find(' '))).code, 0);
    EXPECT_TRUE(std::ranges::equal(radio->memory(), before.back())) << "the newest first";
    const auto older = several.out.substr(several.out.rfind('/') + 1);
    const auto name = older.substr(0, older.find(' '));
    EXPECT_THAT(run("restore --list").out, HasSubstr(name));
    EXPECT_EQ(run("restore --forget " + name).code, 0);
    EXPECT_THAT(run("restore --list").out, testing::Not(HasSubstr(name)));
    EXPECT_EQ(run("restore --forget " + name).code, 1) << "no more to forget";

    run.folder.write("junk.dat", std::string(8192, 'x'));
    const auto junk = with("restore --from @junk.dat");
    EXPECT_EQ(junk.code, 1);
    EXPECT_THAT(junk.err, HasSubstr("nothing was written: "));
    EXPECT_THAT(junk.err, HasSubstr("is not a data file"));
    EXPECT_TRUE(std::ranges::equal(radio->memory(), before.back()));
}

TEST_F(Sessions, FailedAttemptsAreRepeated) {
    plug({.failAttempts = 3});
    EXPECT_EQ(with("read -o @b.dat --trace @t.txt").code, 0);
    const auto trace = run.folder.read("t.txt");
    EXPECT_THAT(trace, HasSubstr("Tx: 50 52 4F 47 \n    52 41 4D \nRx：Communication failed!"));
    EXPECT_THAT(trace, HasSubstr("Rx: 57 00 10 10 \n       11 11 "));
    EXPECT_GE(radio->counters().attempts, 4U);
    // The data list is for looking at: a session ends well without it.
    std::filesystem::remove(run.file("session.out"));
    std::filesystem::create_symlink("/dev/full", run.file("session.out"));
    const auto unseen = with("read -o @c.dat --trace -");
    EXPECT_TRUE(unseen.code == 0 && exists("c.dat"));
    EXPECT_THAT(unseen.err, HasSubstr("the data list cannot be printed any more"));
}

TEST_F(Sessions, ATerminalShowsTheDataListOrTheProgress) {
    for (const bool list : {false, true}) {
        const Descriptor screen(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK));
        ASSERT_TRUE(::grantpt(screen.get()) == 0 && ::unlockpt(screen.get()) == 0);
        std::filesystem::create_symlink(::ptsname(screen.get()), run.file("session.err"));
        with(list ? "read -o @b.dat --trace -" : "read -o @b.dat", [&](pid_t) {
            if (radio->counters().exchanges > 0) {
                std::filesystem::remove(run.file("session.err"));
                run.folder.write("session.err", "");
            }
        });
        std::array<char, 4096> shown{};
        EXPECT_EQ(::read(screen.get(), shown.data(), shown.size()) > 0, !list);
        std::filesystem::remove(run.file("session.err"));
    }
}

TEST_F(Sessions, AReadOfAnOddRangeTakesTheRestFromTheDefaultImage) {
    EXPECT_EQ(run("config set Setting ReadEndAddr 0023").code, 0);
    EXPECT_EQ(with("read -o @b.dat").code, 0);
    // Channel 2 has the radio's receive frequency and everything else as it is shipped.
    EXPECT_THAT(run("export @b.dat").out, HasSubstr("2,111.11111,446.01875,,,Narrow,Low,On,Off\n"));
}

TEST_F(Sessions, WhatFailsIsToldAndLeavesEveryFile) {
    run.folder.write("old.dat", "old");
    const std::tuple<SimFaults, const char*, const char*> cases[] = {
        {{.silentFrom = 1}, "write @a.dat --backup @old.dat", "is the radio on"},
        {{.goneAfter = 6}, "read -o @old.dat", "gone away"},
        {{.silentFrom = 9}, "write @a.dat", "partly written"}};
    for (const auto& [faults, line, reason] : cases) {
        plug(faults);
        const auto outcome = with(line);
        EXPECT_EQ(outcome.code, 1) << line;
        EXPECT_THAT(outcome.err, HasSubstr(reason));
        EXPECT_EQ(radio->counters().writes, 0U);
        EXPECT_EQ(run.folder.read("old.dat"), "old");
    }
}

TEST_F(Sessions, PortsAreRefusedWithTheReason) {
    run.folder.write("plain", "x");
    for (const std::string name : {"@missing", "@plain"}) {
        const auto outcome = run("read -o @b.dat -p " + name);
        EXPECT_EQ(outcome.code, 1) << name;
        EXPECT_THAT(outcome.err, HasSubstr(name == "@plain" ? "serial" : "no such device"));
        EXPECT_FALSE(exists("b.dat"));
    }
    EXPECT_EQ(run.folder.read("plain"), "x");

    bool asked = false;
    with("read -o @b.dat", [&](pid_t) {
        if (!asked && radio->counters().exchanges > 2) {
            asked = true;
            const auto second = run("read -o @c.dat -p " + terminal->devicePath());
            EXPECT_EQ(second.code, 1);
            EXPECT_THAT(second.err, HasSubstr("in use"));
        }
    });
    EXPECT_TRUE(asked);
    EXPECT_FALSE(exists("c.dat"));
}

TEST_F(Sessions, CtrlCEndsASessionCleanly) {
    // Not as if it were to outlive its terminal.
    const auto hangUp = std::signal(SIGHUP, SIG_DFL);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        bool sent = false;
        plug();
        const auto outcome = with("read -o @b.dat", [&](pid_t child) {
            if (!sent && radio->counters().exchanges > 3) {
                sent = true;
                kill(child, signal);
            }
        });
        EXPECT_EQ(outcome.code, 1) << signal;
        EXPECT_THAT(outcome.err, HasSubstr("stopped on request"));
        EXPECT_FALSE(exists("b.dat"));
    }
    std::signal(SIGHUP, hangUp);
    EXPECT_EQ(with("read -o @b.dat").code, 0) << "the port is free";
}

// All at once, so that no pause of a busy machine comes in between.
TEST_F(Sessions, SimulateHasTheFaultsThatItIsAskedFor) {
    using namespace std::string_literals;
    const auto greeting = "PROGRAM"s;
    const auto block = "\x00\x10\x01"s;
    const auto reads = greeting + greeting + "\x06" + "R" + block + greeting;
    const auto writes = greeting + "\x06" + "W" + block + "J" + "R" + block;
    const auto ends = [](int attempts, const std::string& complaint = "", int count = 0) {
        const std::string told = complaint.empty() ? "" : "k520-cli: protocol: " + complaint + "\n";
        return fmt::format("{}k520-cli: {} attempts, 0 reads, 0 writes, {} violations\n", told,
                           attempts, count);
    };
    const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
        // options, what is sent, what comes back, and what is said at the end
        {"", reads, "\x06\x06\x06W" + block + "\x11\x06", ends(3)},
        {" --lose 1", reads, "\x06\x06W" + block + "\x11\x06", ends(3)},
        {" --corrupt 2", reads, "\x06\xF9\x06W" + block + "\x11\x06", ends(3)},
        {" --add 4", reads, "\x06\x06\x06WW" + block + "\x11\x06", ends(3)},
        {" --delay 1:3", reads, "\x06\x06\x06W" + block + "\x11\x06", ends(3)},
        {" --lose-request 7", reads, "\x06\x06W" + block + "\x11\x06",
         ends(2, "unknown while asleep: 50 52 4F 47 52 41 50", 1)},
        {" --corrupt-request 7", reads, "\x06\x06W" + block + "\x11\x06",
         ends(2, "unknown while asleep: 50 52 4F 47 52 41 B2", 1)},
        {" --silent-from 2", greeting + greeting, "\x06", ends(2)},
        {" --fail-first 1", reads, "\x06\x06W" + block + "\x11\x06", ends(3)},
        {" --unplug-after 1", greeting, "\x06", ends(1)},
        {" --babble-from 2", greeting, "\x06\xE2\x8D\x1B\x98", ends(1)},
        {"", writes, "\x06\x06\x06W" + block + "J", ends(1)},
        {" --forget 1", writes, "\x06\x06\x06W" + block + "\x11", ends(1)}};
    run.folder.write("all11.dat", std::string(8192, '\x11'));
    for (const auto& [options, sent, answer, told] : cases) {
        SCOPED_TRACE(options);
        const pid_t child = run.start(
            run.wordsOf("simulate --image @all11.dat --link @radio --baud 230400" + options),
            "simulate");
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        const auto inTime = [&] { return std::chrono::steady_clock::now() < until; };
        Descriptor line;
        while (!line.valid() && inTime()) {
            line = Descriptor(::open(run.file("radio").c_str(), O_RDWR | O_NOCTTY));
        }
        EXPECT_EQ(::write(line.get(), sent.data(), sent.size()), std::ssize(sent));
        std::string heard;
        pollfd input{line.get(), POLLIN, 0};
        while (heard.size() < answer.size() && inTime() && ::poll(&input, 1, 1000) >= 0) {
            std::array<char, 64> piece{};
            const auto room = std::min(piece.size(), answer.size() - heard.size());
            const auto count = ::read(line.get(), piece.data(), room);
            heard.append(piece.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        }
        EXPECT_EQ(heard, answer);
        if (options != " --unplug-after 1") {
            kill(child, SIGTERM);
        }
        const auto outcome = run.finish(child, "simulate");
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.err, told);
    }
}

TEST_F(Sessions, SimulateIsARadioForOthers) {
    EXPECT_EQ(run("set @a.dat ch5.rx=433.5 ch5.tx=433.5").code, 0);
    // A FIFO in place of the output file, so that its first line can be waited for.
    const auto out = run.file("simulate.out");
    ASSERT_EQ(mkfifo(out.c_str(), 0600), 0);
    // As if it were to outlive its terminal.
    const auto hangUp = std::signal(SIGHUP, SIG_IGN);
    const pid_t child = run.start(
        run.wordsOf("simulate --image @a.dat --link @radio --save @kept.dat --baud 230400"),
        "simulate");
    std::signal(SIGHUP, hangUp);
    const int reader = open(out.c_str(), O_RDONLY | O_CLOEXEC);
    std::string first;
    for (char c = 0; read(reader, &c, 1) == 1 && c != '\n';) {
        first += c;
    }
    close(reader);
    EXPECT_THAT(first, testing::StartsWith("port: /dev/"));
    kill(child, SIGHUP);
    const auto second = run("simulate --link @radio");
    EXPECT_EQ(second.code, 1);
    EXPECT_THAT(second.err, HasSubstr("where another simulated radio runs"));
    EXPECT_EQ(run("read -p @radio -o @b.dat").code, 0);
    EXPECT_EQ(run("diff @a.dat @b.dat").code, 0);
    EXPECT_THAT(run("export @b.dat").out, HasSubstr("5,433.5"));
    EXPECT_EQ(run("set @b.dat ch3.tx=").code, 0);
    EXPECT_EQ(run("write @b.dat --verify -p " + first.substr(6)).code, 0);
    EXPECT_EQ(run("diff @b.dat @kept.dat").code, 0) << "stored after a write";
    std::filesystem::remove(run.file("kept.dat"));
    kill(child, SIGTERM);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    // A late acknowledgement lets a busy machine write once more.
    EXPECT_THAT(run.folder.read("simulate.err"),
                testing::ContainsRegex(" [1-9][0-9]* writes, 0 violations"));
    EXPECT_FALSE(std::filesystem::is_symlink(run.file("radio")));
    EXPECT_EQ(run("diff @b.dat @kept.dat").code, 0) << "stored at the end";
}

}  // namespace
}  // namespace k520
