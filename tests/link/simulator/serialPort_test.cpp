// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/SerialPort.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <ctime>
#include <thread>

#include "link/port/posix/posixPort.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/virtualPort.h"
#include "support/Raised.h"
#include "support/SimulatedClock.h"

namespace k520 {
namespace {

using std::chrono::milliseconds;
using test::raised;
using testing::HasSubstr;
using Bytes = std::vector<std::uint8_t>;

const Bytes greeting{0x50, 0x52, 0x4F, 0x47, 0x52, 0x41, 0x4D};
const Bytes acknowledge{0x06};

/// Waits by the clock in force until the condition holds; false when it does not within 5 s.
template <class Condition>
bool until(Condition&& condition) {
    const auto deadline = theClock().now() + milliseconds(5000);
    while (!condition() && theClock().now() < deadline) {
        theClock().waitUntil(theClock().now() + milliseconds(1));
    }
    return condition();
}

bool answered(SerialPort& port, const Bytes& frame, std::size_t count) {
    port.write(frame);
    return until([&] { return port.waiting() == count; });
}

/// A radio inside the program, on the simulated clock.
struct VirtualLine {
    VirtualPort port() { return VirtualPort(radio); }

    SimFaults faults{};
    test::SimulatedClock clock{};
    std::shared_ptr<SimRadio> radio = std::make_shared<SimRadio>(Bytes{}, faults);
};

/// A radio on a pseudo-terminal, served by a thread of its own.
struct PtyLine {
    PosixPort port() { return PosixPort(path); }

    SimFaults faults;
    PtyRadio pty{std::make_shared<SimRadio>(Bytes{}, faults)};
    std::string path = pty.devicePath();
    std::jthread thread{[this](const std::stop_token& stop) {
        while (!stop.stop_requested() && pty.step(milliseconds(20))) {
        }
    }};
};

/// What every back end does alike.
template <class Line>
class EverySerialPort : public testing::Test {};
using Lines = testing::Types<VirtualLine, PtyLine>;
TYPED_TEST_SUITE(EverySerialPort, Lines);

TYPED_TEST(EverySerialPort, OpensOnceAndClosesAsOftenAsAsked) {
    TypeParam line;
    auto port = line.port();
    auto other = line.port();
    EXPECT_EQ(raised([&] { return port.waiting(); }), errNum::badFileName);
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(port.isOpen());
        port.open();
        EXPECT_EQ(raised([&] { port.open(); }), errNum::alreadyOpen);
        EXPECT_EQ(raised([&] { other.open(); }), errNum::alreadyOpen);
        EXPECT_TRUE(port.isOpen());
        port.close();
        port.close();
    }
    other.open();
}

TYPED_TEST(EverySerialPort, CarriesExchangesAndForgetsInputOnRequestAndAtOpening) {
    TypeParam line;
    auto port = line.port();
    port.open();
    EXPECT_TRUE(answered(port, greeting, 1));
    port.emptyInput();
    EXPECT_EQ(port.waiting(), 0U);
    port.emptyOutput();
    EXPECT_TRUE(answered(port, acknowledge, 1));
    EXPECT_EQ(port.readAll(), acknowledge);
    EXPECT_TRUE(answered(port, {0x52, 0x73, 0xFF, 0x01}, 5));
    EXPECT_EQ(port.readAll(), (Bytes{0x57, 0x73, 0xFF, 0x01, 0xFF}));
    EXPECT_TRUE(answered(port, greeting, 1));
    port.close();
    port.open();
    EXPECT_EQ(port.waiting(), 0U);
}

TYPED_TEST(EverySerialPort, TellsAHangUpFromSilence) {
    TypeParam line{{.silentFrom = 2, .goneAfter = 3}};
    auto port = line.port();
    port.open();
    EXPECT_TRUE(answered(port, greeting, 1));
    port.write(acknowledge);
    EXPECT_EQ(port.readAll(), acknowledge);
    EXPECT_EQ(port.waiting(), 0U);
    port.write(greeting);
    EXPECT_TRUE(until([&] { return raised([&] { return port.waiting(); }) == errNum::deviceIo; }));
    EXPECT_EQ(raised([&] { return port.readAll(); }), errNum::deviceIo);
    EXPECT_EQ(raised([&] { port.write(greeting); }), errNum::deviceIo);
    EXPECT_EQ(raised([&] { port.emptyInput(); }), errNum::deviceIo);
    EXPECT_EQ(raised([&] { port.emptyOutput(); }), errNum::deviceIo);
    port.close();
    EXPECT_EQ(raised([&] { port.open(); }), errNum::fileNotFound);
}

/// What opening a path raises; number 0 where it succeeds.
RuntimeError failureOf(const std::string& path) {
    return test::failureOf([&] { PosixPort(path).open(); });
}

/// What a call raises while the process can open nothing more.
template <class Call>
int raisedWithoutDescriptors(Call call) {
    const Descriptor next(::dup(STDERR_FILENO));
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit used{static_cast<rlim_t>(next.get()), before.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &used), 0);
    const int number = raised(call);
    ::setrlimit(RLIMIT_NOFILE, &before);
    return number;
}

TEST(PosixPort, TellsWhyTheSystemRefusesALine) {
    const auto radio = std::make_shared<SimRadio>();
    // To look at a type for the first time the sanitizer needs a descriptor; so none is new below.
    PtyRadio{radio};
    const PtyRadio pty(radio);
    PosixPort port(pty.devicePath());
    EXPECT_EQ(failureOf("/dev/null").number(), errNum::deviceUnavailable);
    EXPECT_EQ(raisedWithoutDescriptors([&] { PtyRadio{radio}; }), errNum::tooManyFiles);
    EXPECT_EQ(raisedWithoutDescriptors([&] { port.open(); }), errNum::tooManyFiles);
    port.open();
    // The administrator passes by the mark.
    const uid_t user = ::geteuid();
    ::chmod(pty.devicePath().c_str(), 0666);
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
    const int number = failureOf(pty.devicePath()).number();
    ASSERT_EQ(::seteuid(user), 0);
    EXPECT_EQ(number, errNum::alreadyOpen);
}

TEST(PtyRadio, SleepsOutALongWait) {
    PtyRadio pty(std::make_shared<SimRadio>());
    constexpr milliseconds wait(1'001);
    const auto begin = theClock().now();
    const auto busy = std::clock();
    pty.step(wait);
    EXPECT_GE(theClock().now() - begin, wait);
    EXPECT_LT(std::clock() - busy, CLOCKS_PER_SEC / 2);
}

/// Starts another program that marks the device, and locks it where asked; returns its number.
pid_t startHolder(const std::string& path, bool locks) {
    int ready[2] = {-1, -1};
    EXPECT_EQ(::pipe(ready), 0);
    const Descriptor reader(ready[0]), writer(ready[1]);
    const pid_t process = ::fork();
    if (process == 0) {
        const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY);
        const bool held = ::ioctl(fd, TIOCEXCL) == 0 && (!locks || ::flock(fd, LOCK_EX) == 0);
        ::_exit(::write(ready[1], held ? "y" : "n", 1) == 1 ? ::pause() : 1);
    }
    char answer = 0;
    EXPECT_TRUE(::read(ready[0], &answer, 1) == 1 && answer == 'y');
    return process;
}

TEST(PosixPort, NamesTheHolderAndOpensOnceItIsKilled) {
    for (const bool locks : {true, false}) {
        SCOPED_TRACE(locks);
        const PtyLine radio;
        const pid_t holder = startHolder(radio.path, locks);
        // Twice: a refused opening leaves the holder's mark alone.
        for (int round = 0; round < 2; ++round) {
            const RuntimeError failure = failureOf(radio.path);
            EXPECT_EQ(failure.number(), errNum::alreadyOpen);
            EXPECT_THAT(failure.source(),
                        testing::ContainsRegex(fmt::format("in use by .* .process {}.$", holder)));
        }
        ::kill(holder, SIGKILL);
        ::waitpid(holder, nullptr, 0);
        EXPECT_TRUE(until([&] { return failureOf(radio.path).number() == 0; }));
    }
}

TEST(PosixPort, GivesUpOnALineThatTakesNoBytesForTheRadioHoldsAFloodBack) {
    const auto radio = std::make_shared<SimRadio>();
    PtyRadio pty(radio);
    PosixPort port(pty.devicePath(), milliseconds(20));
    port.open();
    EXPECT_EQ(failureOf(pty.devicePath()).source(), pty.devicePath() + ": in use by this program");
    int marked = 0;
    const Descriptor foreign(::open(pty.devicePath().c_str(), O_RDWR | O_NOCTTY));
    EXPECT_TRUE(!foreign.valid() || (::ioctl(foreign.get(), TIOCGEXCL, &marked) == 0 && marked));
    EXPECT_EQ(raised([&] { port.write(Bytes(1'000'000, 0x99)); }), errNum::deviceIo);
    for (int i = 0; i < 50; ++i) {
        pty.step(milliseconds(0));
    }
    EXPECT_GT(radio->counters().complaints, 0U);
    EXPECT_LT(radio->lineBusyUntil() - theClock().now(), milliseconds(470));
}

}  // namespace
}  // namespace k520
