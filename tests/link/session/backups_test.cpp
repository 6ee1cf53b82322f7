// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/backups.h"

#include <gmock/gmock.h>

#include <fmt/format.h>
#include <sys/resource.h>

#include <array>
#include <csignal>
#include <filesystem>

#include "app/programFolder.h"
#include "base/ModuleState.h"
#include "image/modIicDat.h"
#include "support/Raised.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::backups {
namespace {

class Backups : public testing::Test {
  protected:
    Backups() {
        programFolder::state().own = folder.path();
        modIicDat::sizeArrays(0x42F);
    }
    ~Backups() override { resetModules(); }

    test::TempFolder folder;
    test::SimulatedClock clock;
    MemoryImage image{0x430};
};

TEST_F(Backups, NamesTellTimeReasonAndAddresses) {
    const Backup first = store(image, {0, 0x42F}, Reason::read);
    const Backup second = store(image, {0x10, 0x1F}, Reason::beforeWrite);
    EXPECT_EQ(first.path.filename(), "2026-11-21_13-05-09_read_0000-042F.dat");
    EXPECT_EQ(second.path.filename(), "2026-11-21_13-05-09-2_before-write_0010-001F.dat");
    const auto all = list();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].path, second.path);
    EXPECT_EQ(all[1].covered, (modIicDat::AddressRange{0x10, 0x1F}));
    EXPECT_EQ(latestBeforeWrite()->path, second.path);

    for (const char* name :
         {"fleet.dat", "2026-11-21_13-05-09_read_0000-042F.lost",
          "2026-11-21_13-05-09_read_0000-FFFFF.dat", "2026-11-21_13-05-09-1_read_0000-042F.dat",
          "2026-11-21_13-05-09-2147483648_read_0000-042F.dat",
          "2026-11-21_13-05-09-2147483647_read_0000-042F.dat",
          "2026-11-21_13-05-09-1000000_read_0000-042F.dat",
          "2026-11-21_13-05-09_write_0000-042F.dat", "___.dat"}) {
        EXPECT_FALSE(parseName(name)) << name;
    }
}

TEST_F(Backups, AFullDiskLeavesNothingOfOne) {
    // The bytes beside it have room, the backup has not.
    struct rlimit before {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit small { 64, before.rlim_max };
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto error = test::raised([&] { return store(image, {0, 0x42F}, Reason::read); });
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, errNum::diskFull);
    EXPECT_TRUE(std::filesystem::is_empty(backups::folder()));
}

TEST_F(Backups, TheOldestGoAndNothingElse) {
    image(0x400) = 0x5A;
    const Backup first = store(image, {0, 0x42F}, Reason::read);
    const std::string data = "Data/Backups/";
    for (std::size_t i = 1; i < mostKept; ++i) {
        folder.write(
            data + fmt::format("2027-01-01_00-{:02}-{:02}_read_0000-042F.dat", i / 60, i % 60),
            "x");
    }
    folder.write(data + "fleet.dat", "mine");
    EXPECT_EQ(load(first.path, {0, 0x42F}).image, image);
    clock.wall.year = 2028;
    const Backup newest = store(image, {0, 0x42F}, Reason::read);
    // A clock that was set back must not cost the backup just made.
    clock.wall.year = 1999;
    const Backup afterwards = store(image, {0, 0x42F}, Reason::read);

    const auto all = list();
    EXPECT_EQ(all.size(), mostKept);
    EXPECT_EQ(all.front().path, afterwards.path);
    EXPECT_EQ(all[1].time, "2027-01-01_00-00-02");
    EXPECT_EQ(all.back().path, newest.path);
    EXPECT_EQ(folder.read(data + "fleet.dat"), "mine");
    EXPECT_FALSE(exists(std::filesystem::path(first.path).replace_extension("lost")));
    EXPECT_EQ(load(newest.path, {0, 0x42F}).image, image);
    store(image, {0, 0x42F}, Reason::read, std::array{afterwards.path});
    EXPECT_EQ(list().front().path, afterwards.path) << "the one that a radio may need";

    clock.wall.year = 1990;
    const Backup ofOtherReason = store(image, {0, 0x42F}, Reason::beforeWrite);
    store(image, {0, 0x42F}, Reason::read);
    EXPECT_EQ(list().front().path, ofOtherReason.path);
    EXPECT_EQ(list().size(), mostKept + 1);
}

TEST_F(Backups, WhatAKilledProgramLeftGoesWithTheNext) {
    create_directories(backups::folder());
    const std::string name = "Data/Backups/2027-01-01_00-00-00_read_0000-042F";
    for (const std::string left : {".lost", ".unfinished", ".written"}) {
        folder.write(name + left, "x");
    }
    const std::string theirs[] = {"Data/Backups/mine.lost", "Data/Backups/.lost",
                                  "Data/Backups/2026-01-01_00-00-00_read_0000-042F.lost",
                                  "Data/Backups/2026-01-01_00-00-00_read_0000-042F.dat"};
    for (const auto& file : theirs) {
        folder.write(file, "x");
    }
    const Backup made = store(image, {0, 0x42F}, Reason::read);
    for (const std::string left : {".lost", ".unfinished", ".written"}) {
        EXPECT_FALSE(exists(folder / (name + left))) << left;
    }
    for (const auto& file : theirs) {
        EXPECT_TRUE(exists(folder / file)) << file;
    }
    EXPECT_TRUE(load(made.path, {0, 0x42F}).whole);
}

}  // namespace
}  // namespace k520::backups
