// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <map>
#include <vector>

#include "base/posix/Descriptor.h"
#include "support/Raised.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::files {
namespace {

namespace fs = std::filesystem;
using test::raised;

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Checks the error numbers that each group of paths raises.
template <class Call>
void expectRefusals(const std::map<int, std::vector<fs::path>>& refusals, Call call) {
    for (const auto& [number, paths] : refusals) {
        for (const fs::path& path : paths) {
            EXPECT_EQ(raised([&call, &path] { call(path); }), number) << path;
        }
    }
}

/// What a call raises on a disk that is full as soon as a file has `limit` bytes.
template <class Call>
int raisedOnFullDisk(rlim_t limit, Call call) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{limit, before.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    const int number = raised(call);
    ::setrlimit(RLIMIT_FSIZE, &before);
    return number;
}

class Files : public testing::Test {
  protected:
    Files() {
        fs::create_directory(folder / "far");
        fs::create_symlink("far/none", folder / "dangling");
        fs::create_symlink("loop", folder / "loop");
        fs::create_symlink("fifo", folder / "toFifo");
        EXPECT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
        // So that nothing but its kind stands against it.
        ::chmod((folder / "fifo").c_str(), 0666);
    }

    const test::TempFolder folder;
};

TEST_F(Files, AreReadUpToTheLimit) {
    const std::string text(100'000, 'x');
    const auto path = folder.write("a", text);
    for (const std::size_t limit : {0UL, 1UL, 99'999UL, 100'000UL, 100'001UL, ~0UL}) {
        const Content content = read(path, limit);
        EXPECT_EQ(std::string(content.bytes.begin(), content.bytes.end()), text.substr(0, limit));
        EXPECT_EQ(content.size, text.size()) << limit;
    }
}

// A FIFO without a writer would wait for ever.
TEST_F(Files, AreNotReadUnlessRegular) {
    expectRefusals(
        {{53, {folder / "none", folder / "none/a", folder / "fifo/a", folder / "dangling", ""}},
         {75, {folder.path(), folder / "fifo", folder / "loop", "/dev/null"}}},
        [](const fs::path& path) { static_cast<void>(read(path, 10)); });
}

TEST_F(Files, KeepModeAndOwnerBehindLinks) {
    const auto old = folder.write("old", "a longer text");
    fs::create_symlink(folder / "old", folder / "far/chain");
    fs::create_symlink("far/chain", folder / "link");
    ::chmod(old.c_str(), 0604);
    const bool given = ::chown(old.c_str(), 1234, 4321) == 0;
    const mode_t mask = ::umask(027);
    replace(folder / "link", bytesOf("short"));
    replace(folder / "dangling", bytesOf("new"));
    ::umask(mask);
    EXPECT_EQ(folder.read("old") + folder.read("far/none"), "shortnew");
    EXPECT_TRUE(fs::is_symlink(folder / "link") && fs::is_symlink(folder / "dangling"));
    EXPECT_EQ(fs::status(folder / "dangling").permissions(), fs::perms{0640});
    struct stat status {};
    EXPECT_EQ(::stat(old.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0604U);
    EXPECT_EQ(status.st_uid, given ? 1234 : ::geteuid());
    EXPECT_EQ(status.st_gid, given ? 4321 : ::getegid());
}

TEST_F(Files, CarryTheirTailOver) {
    const std::string text = "ABCDEF" + std::string(70'000, 't');
    for (const std::string head : {"", "ab", "abcdefgh"}) {
        replaceHead(folder.write("a", text), bytesOf(head));
        EXPECT_EQ(folder.read("a"), head + text.substr(head.size())) << head;
    }
    replaceHead(folder.write("a", "A"), bytesOf("abc"));
    replaceHead(folder / "new", bytesOf("abc"));
    EXPECT_EQ(folder.read("a") + folder.read("new"), "abcabc");

    // Data between two holes of a MiB each: holes stay holes.
    const auto path = folder.write("a", "A");
    fs::resize_file(path, 1 << 20);
    std::ofstream(path, std::ios::app) << "data";
    fs::resize_file(path, 2 << 20);
    const auto expected = "abc" + folder.read("a").substr(3);
    replaceHead(path, bytesOf("abc"));
    EXPECT_TRUE(folder.read("a") == expected);
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_LT(status.st_blocks * 512, 1 << 18);
}

TEST_F(Files, AreRefusedAtOnceWhereTheyCannotBeReplaced) {
    ::chmod(folder.path().c_str(), 0777);
    ::chmod(folder.write("protected", "old").c_str(), 0444);
    ::chmod((folder / "far").c_str(), 0555);
    const auto before = folder.names();
    EXPECT_EQ(raised([&] { checkReplaceable(folder / "new"); }), 0);
    const std::map<int, std::vector<fs::path>> refusals{
        {52, {folder / std::string(300, 'n')}},
        {75,
         {folder.path(), folder / "fifo", folder / "toFifo", folder / "loop", folder / "far/",
          "/dev/null", "", folder / "far/new", folder / "protected"}},
        {76, {folder / "none/a", folder / "fifo/a", folder / "none/", folder / "none/.."}}};
    // The administrator may write anywhere.
    const uid_t user = ::geteuid();
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
    expectRefusals(refusals, checkReplaceable);
    expectRefusals(refusals, [](const fs::path& path) { replace(path, bytesOf("new")); });
    ASSERT_EQ(::seteuid(user), 0);
    EXPECT_EQ(folder.names(), before);
    EXPECT_EQ(folder.read("protected"), "old");
}

TEST_F(Files, TakeThePlaceOfWhatAKilledProgramLeft) {
    const std::string first = ".k520-0.tmp";
    const auto replaced = [&] {
        replace(folder / "a", bytesOf("new"));
        EXPECT_EQ(folder.read("a"), "new");
        fs::remove(folder / "a");
        return folder.names();
    };
    const auto before = folder.names();
    folder.write(first, "left");
    EXPECT_EQ(replaced(), before) << "an abandoned one goes";
    // Those of a program that runs, of somebody who gave it another name, and what is no file stay.
    auto with = before;
    with.insert(first);
    {
        folder.write(first, "running");
        const Descriptor running(::open((folder / first).c_str(), O_RDWR | O_CLOEXEC));
        EXPECT_EQ(::flock(running.get(), LOCK_EX), 0);
        EXPECT_EQ(replaced(), with);
    }
    fs::create_hard_link(folder / first, folder / "second name");
    with.insert("second name");
    EXPECT_EQ(replaced(), with);
    fs::remove(folder / first);
    fs::create_symlink("far", folder / first);
    EXPECT_EQ(replaced(), with);
    for (int slot = 1; slot < 100; ++slot) {
        fs::create_directory(folder / fmt::format(".k520-{}.tmp", slot));
    }
    EXPECT_EQ(raised([&] { replace(folder / "a", bytesOf("new")); }), 75);
    fs::remove(folder / ".k520-99.tmp");
    replaced();
}

TEST_F(Files, OneProgramAtATimeHasTheLockOfAFolder) {
    const auto first = std::make_unique<FolderLock>(folder.path());
    test::SimulatedClock clock;
    EXPECT_EQ(raised([&] { FolderLock{folder.path()}; }), 70);
    EXPECT_EQ(clock.now(), std::chrono::seconds(3));
    EXPECT_EQ(clock.waits, 600);
    EXPECT_EQ(raised([&] { FolderLock{folder / "none"}; }), 76);
}

TEST_F(Files, AreKeptBesideUnderTheNextNumber) {
    const auto path = folder.write("a", "one");
    ::chmod(path.c_str(), 0604);
    EXPECT_EQ(freeNameBeside(path), folder / "a.~1~");
    const auto kept = [&](const std::string& text) {
        folder.write("a", text);
        return keepBeside(path).filename();
    };
    folder.write("a.~0~", "one");
    EXPECT_EQ(kept("one"), "a.~1~");
    EXPECT_EQ(fs::status(folder / "a.~1~").permissions(), fs::perms{0604});
    EXPECT_EQ(kept("one"), "a.~1~") << "the same once more";
    EXPECT_EQ(kept("two"), "a.~2~");
    EXPECT_EQ(kept("one"), "a.~3~") << "only the last one is looked at";
    EXPECT_EQ(kept("onE"), "a.~4~");
    EXPECT_EQ(folder.read("a.~1~") + folder.read("a.~2~") + folder.read("a.~4~"), "onetwoonE");
    const std::string largest(1 << 20, 'x');
    EXPECT_EQ(kept(largest), "a.~5~");
    EXPECT_EQ(kept(largest), "a.~5~");
    EXPECT_EQ(kept(largest + "x"), "a.~6~");
    EXPECT_EQ(kept(largest + "x"), "a.~7~") << "larger than any data file: not looked at";
    EXPECT_EQ(raised([&] { keepBeside(folder / "none"); }), 53);
    EXPECT_EQ(raised([&] { keepBeside(folder / "fifo"); }), 75);
    EXPECT_EQ(freeNameBeside(path), folder / "a.~8~");
}

TEST_F(Files, AreRemovedAndLookedAt) {
    const auto path = folder.write("a", "text");
    EXPECT_EQ(stampOf(path)->size, 4U);
    fs::last_write_time(path, fs::file_time_type::clock::from_sys(std::chrono::sys_seconds()) -
                                  std::chrono::hours(1));
    EXPECT_EQ(stampOf(path)->modified, std::chrono::nanoseconds(0)) << "not before 1970";
    EXPECT_TRUE(mayWrite(path));
    EXPECT_FALSE(mayWrite(folder / "none"));
    files::remove(path);
    EXPECT_EQ(stampOf(path), std::nullopt);
    EXPECT_EQ(raised([&] { files::remove(path); }), 0) << "nothing to remove";
    makeFolder(folder / "deep/down");
    EXPECT_NE(raised([&] { files::remove(folder / "deep"); }), 0)
        << "a folder with something in it";
    EXPECT_NE(raised([&] { makeFolder(folder / "fifo/below"); }), 0);
    EXPECT_EQ(raised([&] { static_cast<void>(stampOf(folder / "loop")); }), 75);
}

TEST_F(Files, StayWhereverTheDiskGetsFull) {
    const std::string old = "what was there before, and a tail";
    const std::string fresh = "what is to come now";
    const auto path = folder.write("a", old);
    const auto before = folder.names();
    for (std::size_t limit = 0; limit < old.size(); ++limit) {
        EXPECT_EQ(raisedOnFullDisk(limit, [&] { replaceHead(path, bytesOf(fresh)); }), 61);
        EXPECT_EQ(raisedOnFullDisk(limit, [&] { replace(folder / "new", bytesOf(old)); }), 61);
        ASSERT_EQ(folder.names(), before) << limit;
        ASSERT_EQ(folder.read("a"), old) << limit;
    }
    EXPECT_EQ(raisedOnFullDisk(old.size(), [&] { replaceHead(path, bytesOf(fresh)); }), 0);
    EXPECT_EQ(folder.read("a"), fresh + old.substr(fresh.size()));
}

}  // namespace
}  // namespace k520::files
