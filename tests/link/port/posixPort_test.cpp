// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/posix/posixPort.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

#include <functional>
#include <tuple>
#include <vector>

#include "support/Raised.h"
#include "support/TempFolder.h"
#include "support/Terminal.h"

namespace k520 {
namespace {

namespace fs = std::filesystem;
using test::Terminal;
using testing::HasSubstr;

/// What opening a path raises; number 0 where it succeeds.
RuntimeError failureOf(const std::string& path) {
    return test::failureOf([&] { PosixPort(path).open(); });
}

TEST(PosixPort, MakesARawLineOfWhateverItFinds) {
    const Terminal pair;
    const Descriptor terminal(::open(pair.path.c_str(), O_RDWR | O_NOCTTY));
    termios line{};
    ASSERT_EQ(::tcgetattr(terminal.get(), &line), 0);
    line.c_iflag |= ICRNL | IXON | IXOFF | INPCK;
    line.c_lflag |= ICANON | ECHO | ISIG;
    line.c_cflag |= CSTOPB;
    ::cfsetspeed(&line, B115200);
    ASSERT_EQ(::tcsetattr(terminal.get(), TCSANOW, &line), 0);

    PosixPort port(pair.path);
    port.open();
    ASSERT_EQ(::tcgetattr(terminal.get(), &line), 0);
    EXPECT_EQ(line.c_iflag & (ICRNL | IXON | IXOFF | INPCK), 0U);
    EXPECT_EQ(line.c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(line.c_oflag & OPOST, 0U);
    EXPECT_EQ(line.c_cflag & (CSTOPB | CSIZE), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(::cfgetospeed(&line), static_cast<speed_t>(B9600));
    EXPECT_EQ(line.c_cc[VMIN] + line.c_cc[VTIME], 0);
}

TEST(PosixPort, KeepsOthersOutWhileItIsOpenAndForgetsInputOnRequest) {
    const Terminal pair;
    const Descriptor other(::open(pair.path.c_str(), O_RDWR | O_NOCTTY));
    const auto marked = [&] {
        int mark = -1;
        return ::ioctl(other.get(), TIOCGEXCL, &mark) == 0 ? mark : -1;
    };
    PosixPort port(pair.path);
    const std::vector<std::uint8_t> bytes{1, 2, 3};
    const std::function<void()> calls[] = {[&] { port.emptyInput(); }, [&] { port.emptyOutput(); },
                                           [&] { port.write(bytes); }, [&] { port.waiting(); },
                                           [&] { port.readAll(); }};
    for (const auto& call : calls) {
        EXPECT_EQ(test::raised([&] { return call(), 0; }), errNum::badFileName);
    }
    port.open();
    EXPECT_EQ(marked(), 1);
    EXPECT_EQ(failureOf(pair.path).number(), errNum::alreadyOpen);
    EXPECT_EQ(marked(), 1) << "a refused opening leaves the mark";
    for (const auto& call : calls) {
        EXPECT_EQ(test::raised([&] { return call(), 0; }), 0);
    }
    EXPECT_EQ(::write(pair.master.get(), bytes.data(), bytes.size()), 3);
    EXPECT_EQ(port.waiting(), 3U);
    port.emptyInput();
    EXPECT_EQ(port.waiting(), 0U);
    EXPECT_EQ(::write(pair.master.get(), bytes.data(), bytes.size()), 3);
    EXPECT_EQ(port.readAll(), bytes);
    EXPECT_TRUE(port.readAll().empty());
    port.close();
    EXPECT_EQ(marked(), 0);
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

TEST(PosixPort, NamesTheGroupThatHasPermission) {
    const Terminal pair;
    const char* const path = pair.path.c_str();
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
    // Numbers where the system has no name, and never the administrator's group.
    const std::tuple<gid_t, mode_t, const char*> owners[] = {{54321, 0060U, "usermod -aG 54321 "},
                                                             {54321, 0040U, "user 12345"},
                                                             {0, 0060U, "user 12345"}};
    for (const auto& [owner, mode, expected] : owners) {
        if (user != 0) {
            continue;  // only the administrator can give it away
        }
        ASSERT_TRUE(::chown(path, 12345, owner) == 0 && ::chmod(path, mode) == 0);
        ASSERT_TRUE(::setegid(65534) == 0 && ::seteuid(65534) == 0);
        const RuntimeError failure = failureOf(path);
        ASSERT_TRUE(::seteuid(user) == 0 && ::setegid(::getgid()) == 0);
        EXPECT_THAT(failure.source(), HasSubstr(expected));
    }
}

}  // namespace
}  // namespace k520
