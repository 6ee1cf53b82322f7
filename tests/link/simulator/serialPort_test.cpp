// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/SerialPort.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>

#include <ctime>
#include <thread>

#include "link/port/deviceLink.h"
#include "link/port/posix/posixPort.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/virtualPort.h"
#include "support/Raised.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520 {
namespace {

namespace fs = std::filesystem;
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
    try {
        PosixPort(path).open();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, "opened"};
}

TEST(PosixPort, MakesARawLineOfWhateverItFinds) {
    const Descriptor master(::posix_openpt(O_RDWR | O_NOCTTY));
    ASSERT_TRUE(::grantpt(master.get()) == 0 && ::unlockpt(master.get()) == 0);
    const std::string path = ::ptsname(master.get());
    const Descriptor terminal(::open(path.c_str(), O_RDWR | O_NOCTTY));
    termios line{};
    ASSERT_EQ(::tcgetattr(terminal.get(), &line), 0);
    line.c_iflag |= ICRNL | IXON | IXOFF | INPCK;
    line.c_lflag |= ICANON | ECHO | ISIG;
    line.c_cflag |= CSTOPB;
    ::cfsetspeed(&line, B115200);
    ASSERT_EQ(::tcsetattr(terminal.get(), TCSANOW, &line), 0);

    PosixPort port(path);
    port.open();
    ASSERT_EQ(::tcgetattr(terminal.get(), &line), 0);
    EXPECT_EQ(line.c_iflag & (ICRNL | IXON | IXOFF | INPCK), 0U);
    EXPECT_EQ(line.c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(line.c_oflag & OPOST, 0U);
    EXPECT_EQ(line.c_cflag & (CSTOPB | CSIZE), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(::cfgetospeed(&line), static_cast<speed_t>(B9600));
    EXPECT_EQ(line.c_cc[VMIN] + line.c_cc[VTIME], 0);
}

TEST(PosixPort, RefusesWhatIsNoSerialDevice) {
    const test::TempFolder folder;
    folder.write("plain", "as it was");
    fs::create_symlink(folder / "plain", folder / "link");
    fs::create_symlink(folder / "nowhere", folder / "dangling");
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    for (const char* name : {"missing", "plain/below", "dangling"}) {
        EXPECT_EQ(failureOf(folder / name).number(), errNum::fileNotFound) << name;
    }
    for (const char* name : {".", "plain", "link", "fifo", "/dev/null"}) {
        EXPECT_EQ(failureOf(folder / name).number(), errNum::deviceUnavailable) << name;
        EXPECT_THAT(failureOf(folder / name).source(), HasSubstr("not a serial device"));
    }
    EXPECT_EQ(folder.read("plain"), "as it was");
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

TEST(PosixPort, NamesTheGroupThatHasPermission) {
    const PtyRadio radio(std::make_shared<SimRadio>());
    const char* const path = radio.devicePath().c_str();
    const uid_t user = ::geteuid();
    // The administrator passes by every refusal, and nobody is told to join his group.
    ASSERT_TRUE(user != 0 || ::chown(path, 0, 1) == 0);
    struct stat device {};
    ASSERT_EQ(::stat(path, &device), 0);
    const struct group* const group = ::getgrgid(device.st_gid);
    ASSERT_NE(group, nullptr);
    const std::string remedy = std::string("sudo usermod -aG ") + group->gr_name + " ";
    // An owner without rights of his own is refused whatever his group may do.
    for (const mode_t mode : {0060U, 0U}) {
        ASSERT_EQ(::chmod(path, mode), 0);
        ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
        const RuntimeError failure = failureOf(path);
        ASSERT_EQ(::seteuid(user), 0);
        EXPECT_EQ(failure.number(), errNum::permissionDenied);
        EXPECT_THAT(failure.source(), HasSubstr(mode == 0 ? "only user " : remedy));
    }
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

TEST(DeviceLink, TurnsAndRemovesOnlyItsOwnLink) {
    const test::TempFolder folder;
    const fs::path link = folder / "radio";
    for (const bool turnedElsewhere : {false, true}) {
        const DeviceLink first(link, "/dev/pts/100");
        {
            const DeviceLink second(link, "/dev/pts/101");
            EXPECT_EQ(fs::read_symlink(link), "/dev/pts/101");
            if (turnedElsewhere) {
                fs::remove(link);
                fs::create_symlink("/dev/elsewhere", link);
            }
        }
        EXPECT_EQ(fs::is_symlink(link), turnedElsewhere);
    }
    folder.write("file", "kept");
    EXPECT_EQ(raised([&] { DeviceLink(folder / "file", "/dev/null"); }), errNum::pathAccess);
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAre("radio", "file"));
}

TEST(DeviceLink, TakesTheLinkOfNobodyWhoRuns) {
    const test::TempFolder folder;
    const fs::path link = folder / "radio";
    const PtyRadio one(std::make_shared<SimRadio>());
    const PtyRadio other(std::make_shared<SimRadio>());
    const auto refused = [&] {
        return raised([&] { DeviceLink(link, other.devicePath()); }) == errNum::permissionDenied;
    };
    {
        const DeviceLink running(link, one.devicePath());
        EXPECT_TRUE(refused());
        EXPECT_EQ(fs::read_symlink(link), one.devicePath());
    }
    EXPECT_FALSE(refused());
    fs::create_symlink("/dev/null", link);
    EXPECT_TRUE(refused()) << "somebody's own link";
    EXPECT_EQ(fs::read_symlink(link), "/dev/null");
    // What a killed program leaves: its terminal's name has gone to a terminal without a link.
    fs::remove(link);
    fs::create_symlink(one.devicePath(), link);
    EXPECT_FALSE(refused());
}

}  // namespace
}  // namespace k520
