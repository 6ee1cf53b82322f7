// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
//
// What a path leads to is not what it should be: a data file, a port, a folder.
#include <gmock/gmock.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <cstring>
#include <set>

#include "app/modShowErr.h"
#include "base/Files.h"
#include "faults/Campaign.h"
#include "faults/DesktopCore.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/port/posix/posixPort.h"
#include "program/modFileCmd.h"

namespace k520::faults {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A pseudo-terminal; `path` is its serial device.
struct Terminal {
    Terminal() {
        EXPECT_TRUE(::grantpt(line.get()) == 0 && ::unlockpt(line.get()) == 0);
        path = ::ptsname(line.get());
    }
    [[nodiscard]] int bytesSent() const {
        int count = 0;
        ::ioctl(line.get(), FIONREAD, &count);
        return count;
    }
    Descriptor line{::posix_openpt(O_RDWR | O_NOCTTY)};
    std::string path;
};

/// Runs in-process work as a user whom permission bits concern.
void asOrdinary(const std::function<void()>& work) {
    const uid_t user = ::geteuid();
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
    work();
    ASSERT_EQ(::seteuid(user), 0);
}

class Openings : public DesktopCore {
  protected:
    Openings() {
        fs::permissions(folder.path(), fs::perms{0777});
        start(shippedSettings());
        const std::string whole(8192, '\x11');
        files = {{"short", folder.write("short.dat", whole.substr(0, 100))},
                 {"short", folder.write("empty.dat", "")},
                 {"whole", folder.write("long.dat", whole + whole)},
                 {"whole", folder.write("huge.dat", whole)},
                 {"refused", "/dev/null"},
                 {"refused", "/dev/zero"},
                 {"refused", terminal.path},
                 {"refused", folder / "fifo"},
                 {"refused", folder / "loop"},
                 {"refused", folder / "missing.dat"},
                 {"refused", folder / "folder"},
                 {"refused", folder.write("secret.dat", whole)}};
        fs::resize_file(folder / "huge.dat", std::uintmax_t{2} << 30);
        EXPECT_EQ(::mkfifo((folder / "fifo").c_str(), 0666), 0);
        fs::create_symlink("loop", folder / "loop");
        fs::create_directory(folder / "folder");
        for (const char* const name : {"long.dat", "huge.dat"}) {
            fs::permissions(folder / name, fs::perms{0666});
        }
        fs::permissions(folder / "secret.dat", fs::perms::none);
    }
    [[nodiscard]] Outcome cli(const Words& words) const {
        const test::TempFolder scratch;
        return execute(
            after(after(asOrdinaryUser(), {K520_CLI, "--program-folder", home()}), words), scratch);
    }
    [[nodiscard]] bool ordinaryUserCanRunIt() const { return cli({"--version"}).code == 0; }

    Terminal terminal;
    std::vector<std::pair<std::string, std::string>> files;  ///< what becomes of a path
};

TEST_F(Openings, OfTheDesktopChangeNothingWhereTheyAreRefused) {
    Row row("data file short, empty, long, 2 GiB, FIFO, device, folder, unreadable",
            "File > Open, in-process (processor time)");
    for (int round = 0; round < (exhaustive() ? 100 : 1); ++round) {
        for (const auto& [fate, path] : files) {
            SCOPED_TRACE(path);
            start(shippedSettings());
            const auto before = screen();
            const auto current = modFileCmd::state().currentFilePath;
            dialogs.answers = {"open " + path};
            double spent = 0;
            asOrdinary([&] { spent = processorTime(modFileCmd::OpenFile); });
            const auto shown = dialogs.take();
            const auto& errors = modShowErr::state().entries;
            const auto isRefused = [&, chosen = path](bool expected) {
                EXPECT_EQ(shown.size() == 2, expected);
                EXPECT_EQ(screen() == before, expected);
                EXPECT_EQ(modFileCmd::state().currentFilePath == current, expected);
                EXPECT_EQ(!errors.empty() && errors.back().source.find(chosen) == 0, expected);
            };
            if (path.ends_with("empty.dat")) {
                EXPECT_EQ(screen(), before);
            } else {
                isRefused(fate == "refused");
            }
            EXPECT_EQ(modFileCmd::shownRemark().empty(), fate != "refused");
            EXPECT_EQ(modFileCmd::shownNotice().empty(), fate == "refused");
            row.add(fate, spent);
        }
    }
    EXPECT_TRUE(!exhaustive() || row.slowest() < 100);
}

TEST_F(Openings, OfTheCommandLineAreToldAtOnce) {
    if (!ordinaryUserCanRunIt()) {
        GTEST_SKIP() << "an ordinary user cannot run " K520_CLI;
    }
    Row row("data file short, empty, long, 2 GiB, FIFO, device, folder, unreadable",
            "k520-cli show, set and verify, as an ordinary user");
    for (const auto& [fate, path] : files) {
        const bool isFile = path.ends_with(".dat") && fs::exists(path);
        const auto sizeBefore = isFile ? fs::file_size(path) : 0;
        for (const std::string command : {"show", "set", "verify"}) {
            SCOPED_TRACE(command + " " + path);
            Words words{command, path};
            if (command == "set") {
                words.emplace_back("ch1.rx=446.1");
            } else if (command == "verify") {
                words.insert(words.end(), {"-p", "/dev/null"});
            }
            const auto run = cli(words);
            const bool good = command == "show" ? fate != "refused" && !path.ends_with("empty.dat")
                                                : fate == "whole" && command == "set";
            EXPECT_EQ(run.code, good ? 0 : 1) << run.err;
            EXPECT_EQ(run.err.empty(), good && fate == "whole") << run.err;
            EXPECT_THAT(run.err, AnyOf("", HasSubstr(path), HasSubstr("serial device")));
            EXPECT_TRUE(!isFile || fs::file_size(path) == sizeBefore);
            row.add(good ? "done" : "refused", run.milliseconds);
        }
    }
    EXPECT_TRUE(!exhaustive() || row.slowest() < 1000);
    // A hole in the file costs no room when it is saved.
    struct stat huge {};
    ASSERT_EQ(::stat((folder / "huge.dat").c_str(), &huge), 0);
    EXPECT_LT(huge.st_blocks, 10'000);
}

TEST_F(Openings, OfAFileThatIsReplacedMeanwhileGetOneOfBoth) {
    Row row("data file replaced while open", "another thread replaces it without a pause");
    const auto path = folder / "changing.dat";
    const std::vector<std::uint8_t> a(8192, 0x11), b(8192, 0x22);
    files::replace(path, a);
    const std::jthread other([&](const std::stop_token& stop) {
        for (int i = 0; !stop.stop_requested(); ++i) {
            files::replace(path, i % 2 == 0 ? b : a);
        }
    });
    for (int i = 0; i < (exhaustive() ? 20'000 : 200); ++i) {
        MemoryImage image = modIicDat::IicDat();
        EXPECT_EQ(datFile::load(path, image), 8192U);
        EXPECT_EQ(std::set<std::uint8_t>(image.bytes().begin(), image.bytes().end()).size(), 1U);
        row.add("one of both");
    }
}

// Each kind of refusal has its own words, and a way out; nothing is sent.
TEST_F(Openings, OfPortsAreRefusedWithTheirRemedy) {
    if (!ordinaryUserCanRunIt()) {
        GTEST_SKIP() << "an ordinary user cannot run " K520_CLI;
    }
    Row row("port missing, folder, plain file, /dev/null, without permission, busy",
            "k520-cli read, as an ordinary user");
    const Terminal forbidden, busy;
    fs::permissions(forbidden.path, fs::perms{0600});
    fs::permissions(busy.path, fs::perms{0666});
    PosixPort holder(busy.path);
    holder.open();
    const std::pair<std::string, std::string> ports[] = {
        {"/dev/none", "plugged in?"},
        {folder / "folder", "is a folder"},
        {folder / "long.dat", "is a plain file"},
        {"/dev/null", ": is not a serial"},
        {::geteuid() == 0 ? forbidden.path : "/dev/console", "permission denied"},
        {busy.path, "in use by"}};
    for (int round = 0; round < (exhaustive() ? 20 : 1); ++round) {
        std::set<std::string> reasons;
        for (const auto& [path, words] : ports) {
            const auto run = cli({"read", "-p", path, "-o", folder / "out.dat"});
            EXPECT_EQ(run.code, 1);
            EXPECT_THAT(run.err, AllOf(HasSubstr(path + ": "), HasSubstr(words), HasSubstr(";")));
            EXPECT_FALSE(fs::exists(folder / "out.dat"));
            reasons.insert(run.err.substr(run.err.find(path) + path.size()));
            row.add("told with its remedy", run.milliseconds);
        }
        EXPECT_EQ(reasons.size(), std::size(ports));
    }
    EXPECT_EQ(forbidden.bytesSent() + busy.bytesSent(), 0);
    PosixPort ours(busy.path);
    EXPECT_THROW(ours.open(), RuntimeError);
    EXPECT_TRUE(!exhaustive() || row.slowest() < 200);
}

TEST_F(Openings, ReadOnlyFoldersHinderNothingButSaving) {
    if (!ordinaryUserCanRunIt()) {
        GTEST_SKIP() << "an ordinary user cannot run " K520_CLI;
    }
    Row row("read-only program folder and Data", "k520-cli and the desktop's core, ordinary user");
    const std::string data = folder / "long.dat";
    const std::string closed = folder / "home/Data";
    for (const auto& place : {closed, home()}) {
        fs::permissions(place, fs::perms{0555});
    }
    const Words driver{K520_FAULT_DRIVER, home()};
    const auto cliWords = [&](const Words& words) {
        return after({K520_CLI, "--program-folder", home()}, words);
    };
    const std::pair<Words, std::string> cases[] = {
        {cliWords({"show", data}), ""},
        {cliWords({"set", data, "ch1.rx=446.1", "-o", folder / "set.dat"}), ""},
        {cliWords({"export", data}), ""},
        {cliWords({"config", "get", "Setting", "COM"}), ""},
        {after(driver, {"start"}), ""},
        {after(driver, {"save", folder / "saved.dat"}), ""},
        {cliWords({"new", closed + "/a.dat"}), "the folder " + closed + " takes no new file"},
        {cliWords({"export", data, "-o", closed + "/a.csv"}), closed},
        {cliWords({"config", "set", "Setting", "COM", "3"}), home()},
        {after(driver, {"save", closed + "/a.dat"}), closed},
        {after(driver, {"lock"}), home()}};
    for (const auto& [words, named] : cases) {
        const test::TempFolder scratch;
        const auto run = execute(after(asOrdinaryUser(), words), scratch);
        EXPECT_EQ(run.code, named.empty() ? 0 : 1) << words.back() << run.err;
        EXPECT_THAT(run.err, HasSubstr(named));
        row.add(named.empty() ? "done" : "the folder named", run.milliseconds);
    }
    for (const auto& place : {home(), closed}) {
        fs::permissions(place, fs::perms{0755});
    }
}

TEST_F(Openings, TwoProgramsAtOnceLoseNoSettings) {
    Row row("two copies of the program at once", "each changes a setting of its own, with a third");
    const int rounds = exhaustive() ? 300 : 5;
    for (int round = 0; round < rounds; ++round) {
        start(shippedSettings());
        const Words commands[] = {{K520_CLI, "--program-folder", home(), "config", "set", "A",
                                   "key", fmt::format("a{}", round)},
                                  {K520_CLI, "--program-folder", home(), "config", "set", "B",
                                   "key", fmt::format("b{}", round)},
                                  {K520_FAULT_DRIVER, home(), "lock"}};
        forEach(std::size(commands), [&](std::size_t i) {
            const test::TempFolder scratch;
            const auto run = execute(commands[i], scratch);
            EXPECT_EQ(run.code, 0) << run.err;
        });
        EXPECT_THAT(settings(), AllOf(HasSubstr(fmt::format("key=a{}\n", round)),
                                      HasSubstr(fmt::format("key=b{}\n", round)),
                                      HasSubstr("ChannelLock=ShowLock\n")));
        row.add("all three kept");
    }
}

}  // namespace
}  // namespace k520::faults
