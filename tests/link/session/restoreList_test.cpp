// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/restoreList.h"

#include "app/programFolder.h"
#include "base/Text.h"
#include "image/modIicDat.h"
#include "link/session/modSession.h"
#include "link/session/unfinishedWrite.h"
#include "support/ProgramFolder.h"

namespace k520::restoreList {
namespace {

class RestoreList : public test::ProgramFolder {
  protected:
    RestoreList() {
        modIicDat::sizeArrays(8191);
        setTextLanguage(TextLanguage::english);
        programFolder::state().own = folder.path();
    }
    static backups::Backup kept(backups::Reason reason, std::uint8_t byte,
                                modIicDat::AddressRange covered = {}) {
        MemoryImage image = modIicDat::IicDat();
        image(0x1FFF) = byte;
        return backups::store(image, covered, reason);
    }
    test::SimulatedClock clock;
};

TEST_F(RestoreList, TellsOccasionAndChangesAndBeginsWithTheLikeliest) {
    using enum backups::Reason;
    EXPECT_EQ(likeliest(rows().rows, {}), std::nullopt);
    const auto oldest = kept(beforeWrite, 0);
    const auto torn = kept(beforeWrite, 1);
    const auto written = kept(beforeWrite, 2);
    const auto copy = kept(read, 3);
    modIicDat::IicDat()(0x1FFF) = 3;
    auto all = rows();
    EXPECT_EQ(all.comparedWith, "Compared with the data in this program.");
    ASSERT_EQ(all.rows.size(), 4U);
    EXPECT_EQ(all.rows[0].made + ": " + all.rows[0].changes, "by a read: nothing");
    EXPECT_EQ(all.rows[1].made + ": " + all.rows[1].changes, "before a write: other bytes: 1");
    EXPECT_EQ(all.rows[1].time, "2026-11-21 13:05:09");
    EXPECT_EQ(likeliest(all.rows, {}), 1U);

    // What was sent last says more about the radio than the program's data.
    MemoryImage sent = modIicDat::IicDat();
    sent(0x1FFF) = 1;
    unfinishedWrite::keep(
        {.backup = torn.path, .before = {torn.path}, .found = sent, .sent = sent});
    folder.write("Data/Backups/" + oldest.path.filename().string(), "short");
    all = rows();
    EXPECT_EQ(all.comparedWith, "Compared with what was last written to a radio.");
    EXPECT_EQ(all.rows[2].made + ": " + all.rows[2].changes,
              "before a write that did not finish: nothing");
    EXPECT_THAT(all.rows[3].changes, testing::HasSubstr("cannot be read"));
    EXPECT_EQ(likeliest(all.rows, {}), 2U);
    EXPECT_EQ(likeliest(all.rows, copy.path), 0U);
    EXPECT_EQ(likeliest(all.rows, written.path), 1U);

    // Of the rest of the radio the note says nothing.
    const auto low = kept(beforeWrite, 4, {0, 0x42F});
    unfinishedWrite::keep({.backup = low.path, .before = {low.path}, .found = sent, .sent = sent});
    kept(read, 5, {0, 0x1FFF});
    kept(read, 6, {0x1000, 0x1FFF});
    all = rows();
    EXPECT_EQ(all.rows[0].changes, "unknown: the last write covered other addresses");
    EXPECT_EQ(all.rows[1].changes, "nothing");
}

TEST_F(RestoreList, IsOfferedWhereItCanHelp) {
    const auto offer = [](Direction direction) {
        const auto [shown, enabled, tip] = offerFor(direction);
        return fmt::format("{} {} {}", shown, enabled, tip);
    };
    EXPECT_EQ(offer(Direction::write), "true false There is no backup yet.");
    EXPECT_EQ(offer(Direction::read), "false false There is no backup yet.");
    const auto torn = kept(backups::Reason::beforeWrite, 1);
    const std::string tip = " true Choose a backup to write back to the radio.";
    EXPECT_EQ(offer(Direction::write), "true" + tip);
    EXPECT_EQ(offer(Direction::read), "false" + tip);
    const MemoryImage held = modIicDat::IicDat();
    unfinishedWrite::keep(
        {.backup = torn.path, .before = {torn.path}, .found = held, .sent = held});
    EXPECT_EQ(offer(Direction::read), "true" + tip);
}

TEST_F(RestoreList, ABrokenWriteMakesItsBackupDueAndThatOneIsNotAskedAbout) {
    safeguards::Ending torn;
    torn.task = safeguards::Task::write;
    torn.stage = Stage::write;
    torn.result.outcome = modSession::Outcome::failed;
    torn.result.furthestAddress = std::int16_t{0x20};
    torn.result.mostSteps = 4;
    torn.backup = "new.dat";
    const auto changed = [&](auto change) {
        auto ending = torn;
        change(ending);
        return dueAfter(ending);
    };
    const auto due = dueAfter(torn);
    EXPECT_EQ(due, "new.dat");
    EXPECT_EQ(changed([](auto& ending) { ending.what = safeguards::What::done; }), std::nullopt);
    EXPECT_EQ(changed([](auto& ending) { ending.backup.clear(); }), std::nullopt);
    EXPECT_EQ(changed([](auto& ending) { ending.earlier = {"old.dat"}; }), std::nullopt);
    EXPECT_EQ(changed([](auto& ending) { ending.stage = Stage::backUp; }), std::nullopt);
    EXPECT_FALSE(asksBefore("new.dat", due));
    EXPECT_TRUE(asksBefore("other.dat", due));
    EXPECT_TRUE(asksBefore("new.dat", std::nullopt));
    using enum Stage;
    EXPECT_EQ(safeguards::stagesOfRestore({.backUpFirst = true, .readBack = true}),
              (std::vector{restore, compare}));
    EXPECT_EQ(safeguards::stagesOfRestore({}), std::vector{restore});
}

}  // namespace
}  // namespace k520::restoreList
