// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/safeguards.h"

#include <gmock/gmock.h>

#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/programFolder.h"
#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/session/sessionAdvice.h"
#include "link/session/unfinishedWrite.h"
#include "link/session/waysBack.h"
#include "link/simulator/virtualPort.h"
#include "settings/modSysSet.h"
#include "support/ScriptedDialogs.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::safeguards {
namespace {

using modIicDat::IicDat;
using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr Choices all{.keepCopy = true, .backUpFirst = true, .readBack = true};

struct StageList : NullView {
    void beginStage(Stage stage) override { stages.push_back(stage); }
    void setStatus(const std::string& text) override { statuses += text + "|"; }
    std::vector<Stage> stages;
    std::string statuses;
};

/// Counts the pauses in which the interface stands still.
struct CountingClock : test::SimulatedClock {
    void sleepUntil(Microseconds deadline) override {
        ++sleeps;
        waitUntil(deadline);
    }
    int sleeps = 0;
};

/// Sessions over the first KiB and a bit, which holds the bytes that have no place in a data file.
class Safeguards : public testing::Test {
  protected:
    Safeguards() {
        resetModules();
        std::int16_t english = 3;
        modSoftFace::FillSoftFace(english);
        programFolder::state().own = folder.path();
        modIicDat::sizeArrays(8191);
        modChMem::SetChGrid();
        modIicDat::state().readRange = modIicDat::state().writeRange = {0, 0x42F};
        plug();
    }
    ~Safeguards() override { resetModules(); }

    void plug(SimFaults faults = {}) {
        std::vector<std::uint8_t> memory(SimRadio::memorySize);
        for (std::size_t i = 0; i < memory.size(); ++i) {
            memory[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
        }
        plug(std::move(faults), memory);
    }
    void plug(SimFaults faults, const std::vector<std::uint8_t>& memory) {
        radio = std::make_shared<SimRadio>(memory, std::move(faults), 1'000'000);
        modCommun::state().portMaker = [this](std::int16_t) {
            return std::make_unique<VirtualPort>(radio);
        };
    }
    [[nodiscard]] std::vector<std::uint8_t> memory() const {
        return {radio->memory().begin(), radio->memory().end()};
    }
    static std::string advice(const Ending& ending) {
        return sessionAdvice::noticeOf(ending,
                                       std::span(modShowErr::state().entries).subspan(ending.mark))
            .advice;
    }
    /// The backups of unfinished writes, the newest first.
    static std::vector<fs::path> unfinished() {
        std::vector<fs::path> paths;
        for (const auto& way : waysBack::list()) {
            if (way.unfinished) {
                paths.push_back(way.path);
            }
        }
        return paths;
    }
    [[nodiscard]] std::size_t backupCount() const { return backups::list().size(); }

    test::TempFolder folder;
    CountingClock clock;
    test::ScriptedDialogs dialogs;
    StageList view;
    std::shared_ptr<SimRadio> radio;
};

TEST_F(Safeguards, AWriteIsBackedUpComparedAndCanBeTakenBack) {
    const auto before = memory();
    const Ending ending = write(view, all);
    EXPECT_TRUE(ending.good());
    EXPECT_THAT(view.stages, testing::ElementsAre(Stage::backUp, Stage::write, Stage::compare));
    EXPECT_NE(memory(), before);
    EXPECT_EQ(ending.backup.filename(), "2026-11-21_13-05-09_before-write_0000-042F.dat");
    EXPECT_THAT(advice(ending),
                HasSubstr("holds what was sent. The backup made before is Data/Backups/" +
                          ending.backup.filename().string()));

    // The whole of what was read, the bytes without a place in a data file among them.
    const auto sent = IicDat();
    EXPECT_TRUE(restore(view, backups::latestBeforeWrite()->path, all).good());
    EXPECT_EQ(memory(), before);
    EXPECT_EQ(clock.sleeps, 1) << "only the write itself, of five sessions";
    EXPECT_EQ(IicDat(), sent) << "a restore is none of the image's business";
    EXPECT_EQ(backupCount(), 1U);
    EXPECT_THAT(unfinished(), testing::IsEmpty());
}

// Whoever writes again after a write that broke off backs up a torn radio.
TEST_F(Safeguards, TheFirstOfSeveralBrokenWritesStaysAWayBack) {
    const auto before = memory();
    const auto writeAndBreak = [&](const std::vector<std::uint8_t>& held, unsigned silentFrom) {
        plug({.silentFrom = silentFrom});
        std::ranges::copy(held, radio->memory().begin());
        const Ending ending = write(view, all);
        EXPECT_FALSE(ending.good());
        dialogs.take();
        return ending;
    };
    // The backup has 70 exchanges, the handshake of the write two.
    const Ending first = writeAndBreak(before, 70 + 30);
    EXPECT_TRUE(first.earlier.empty());
    const auto torn = memory();
    const Ending untouched = writeAndBreak(torn, 70 + 1);
    EXPECT_THAT(untouched.earlier, testing::ElementsAre(first.backup)) << "and stays so";
    IicDat()(0x42F) ^= 0xFF;
    const Ending second = writeAndBreak(torn, 70 + 20);
    EXPECT_NE(second.backup, first.backup);
    EXPECT_THAT(second.earlier, testing::ElementsAre(first.backup));
    for (const auto& ending : {untouched, second}) {
        EXPECT_THAT(advice(ending), HasSubstr("before that one is in Data/Backups/" +
                                              first.backup.filename().string()));
    }
    EXPECT_THAT(unfinished(), testing::ElementsAre(first.backup));
    EXPECT_EQ(waysBack::list().front().path, second.backup);

    // The backup fits any radio, but only its own needs it no more then.
    const auto tornTwice = memory();
    for (const bool own : {false, true}) {
        plug({}, own ? tornTwice : std::vector<std::uint8_t>(before.size()));
        EXPECT_TRUE(restore(view, first.backup, all).good());
        EXPECT_TRUE(
            std::ranges::equal(radio->memory().first(0x430), std::span(before).first(0x430)));
        EXPECT_EQ(unfinished().empty(), own);
    }

    writeAndBreak(before, 70 + 30);
    const std::vector<std::uint8_t> other(before.size(), 0x77);
    EXPECT_TRUE(writeAndBreak(other, 70 + 30).earlier.empty()) << "another radio";
}

// Whoever repeats a write that broke off must not lose the backup in the file of that name.
TEST_F(Safeguards, AFileOfOnesOwnKeepsWhatItHeld) {
    const auto writeTo = [&](std::uint8_t held) {
        plug();
        std::ranges::fill(radio->memory(), held);
        return write(view, {.backUpFirst = true}, folder / "mine.dat");
    };
    EXPECT_EQ(writeTo(0x77).displaced, "");
    const auto first = folder.read("mine.dat");
    EXPECT_EQ(writeTo(0x77).displaced, "") << "the same once more";
    EXPECT_EQ(writeTo(0x33).displaced, folder / "mine.dat.~1~");
    EXPECT_EQ(writeTo(0x44).displaced, folder / "mine.dat.~2~");
    EXPECT_EQ(folder.read("mine.dat.~1~"), first);
    EXPECT_EQ(folder.read("mine.dat")[0], 0x44);

    folder.write("mine.dat", std::string(1 << 21, 'x'));
    EXPECT_THAT(advice(writeTo(0x55)), HasSubstr("too large to be a data file"));
    EXPECT_EQ(memory()[0], 0x55) << "untouched";
}

TEST_F(Safeguards, OnlyTheRadioThatWasWrittenIsTakenBackUnasked) {
    EXPECT_EQ(takeBack(view, all).what, What::otherRadio) << "no write at all";
    const auto before = memory();
    const auto backup = write(view, all).backup;
    const auto written = memory();

    std::ranges::fill(radio->memory(), std::uint8_t{0x77});
    const auto other = memory();
    const Ending refused = takeBack(view, all);
    EXPECT_FALSE(refused.good());
    EXPECT_EQ(refused.what, What::otherRadio);
    EXPECT_EQ(memory(), other);

    // A restore has 70 exchanges before its first. One that never got there changes nothing.
    plug({.silentFrom = 70 + 1}, written);
    EXPECT_FALSE(takeBack(view, all).good());
    dialogs.take();
    EXPECT_THAT(unfinished(), testing::IsEmpty());
    // A restore that is cut off can be repeated.
    plug({.silentFrom = 70 + 30}, written);
    EXPECT_THAT(advice(takeBack(view, all)), HasSubstr("restore once more"));
    dialogs.take();
    EXPECT_THAT(unfinished(), testing::ElementsAre(backup));
    plug({}, memory());
    EXPECT_TRUE(takeBack(view, all).good());
    EXPECT_EQ(memory(), before);
    EXPECT_EQ(takeBack(view, all).what, What::otherRadio) << "there is nothing more to take back";

    // The same data, written by somebody else at another time.
    plug({}, before);
    EXPECT_TRUE(write(view, all).good());
    clock.wall.minute += 2;
    modSession::WriteComDat();
    std::ranges::copy(IicDat().bytes().first(0x430), radio->memory().begin());
    EXPECT_EQ(takeBack(view, all).what, What::otherRadio);
}

TEST_F(Safeguards, EachTornRadioFindsItsOwnWayBack) {
    // Of one kind: only what the torn part does not reach, or the time of the write, tells them
    // apart. The second pair of one is of equal content.
    struct Radio {
        std::vector<std::uint8_t> before, torn;
        fs::path backup;
    };
    const auto tear = [&](std::uint8_t id, std::size_t at, unsigned blocks) {
        plug({.silentFrom = 70 + 2 + blocks});
        std::ranges::fill(radio->memory(), std::uint8_t{0x11});
        radio->memory()[at] = id;
        Radio torn{.before = memory(), .torn = {}, .backup = {}};
        const Ending ending = write(view, all);
        EXPECT_FALSE(ending.good());
        dialogs.take();
        EXPECT_THAT(ending.earlier, testing::IsEmpty());
        torn.torn = memory();
        torn.backup = ending.backup;
        ++clock.wall.hour;
        return torn;
    };
    const auto takesBack = [&](const Radio& torn) {
        plug({}, torn.torn);
        const Ending ending = takeBack(view, all);
        EXPECT_EQ(memory() == torn.before, ending.good());
        return ending;
    };
    const Radio late = tear(1, 0x300, 30);
    const Radio stamped = tear(2, 0x20, 60);
    const Radio twin = tear(3, 0x20, 60);
    EXPECT_THAT(unfinished(), testing::ElementsAre(twin.backup, stamped.backup, late.backup));
    for (const Radio& torn : {stamped, late, twin}) {
        const Ending ending = takesBack(torn);
        EXPECT_TRUE(ending.good());
        EXPECT_EQ(ending.backup, torn.backup);
    }
    EXPECT_THAT(unfinished(), testing::IsEmpty());

    // What differed is overwritten, and the stamp not reached.
    const Radio one = tear(4, 0x20, 20);
    const Radio other = tear(5, 0x20, 20);
    const Ending unclear = takesBack(one);
    EXPECT_EQ(unclear.what, What::severalPossible);
    EXPECT_THAT(unclear.possible, testing::ElementsAre(other.backup, one.backup));
    EXPECT_EQ(memory(), one.torn);
    EXPECT_TRUE(restore(view, one.backup, all).good());
    EXPECT_TRUE(takesBack(other).good()) << "the only one left";

    const Radio equal = tear(6, 0x20, 20);
    tear(6, 0x20, 20);
    EXPECT_TRUE(takesBack(equal).good()) << "both backups hold the same";
    EXPECT_EQ(unfinished().size(), 2U) << "and either radio may still need one";

    // Written once more the radio can still be either, and each way back is named once.
    fs::remove_all(backups::folder());
    const Radio older = tear(7, 0x20, 20);
    const Radio newer = tear(8, 0x20, 20);
    const auto ways = testing::ElementsAre(newer.backup, older.backup);
    plug({.silentFrom = 70 + 2 + 20}, older.torn);
    EXPECT_THAT(write(view, all).earlier, ways);
    dialogs.take();
    EXPECT_THAT(takesBack(older).possible, ways);
}

// Two radios of equal content were written well, in the same minute.
TEST_F(Safeguards, ARestoreThatFitsSeveralNotesCanBeRepeated) {
    const std::vector<std::uint8_t> before(SimRadio::memorySize, 0x11);
    for (int radios = 0; radios < 2; ++radios) {
        plug({}, before);
        EXPECT_TRUE(write(view, all).good());
    }
    // The look has 70 exchanges.
    plug({.silentFrom = 70 + 30}, memory());
    EXPECT_FALSE(takeBack(view, all).good());
    dialogs.take();
    EXPECT_EQ(unfinished().size(), 2U);
    plug({}, memory());
    EXPECT_TRUE(takeBack(view, all).good());
    EXPECT_EQ(memory(), before);
}

// The note of a radio stays until that very radio is known to be whole again.
TEST_F(Safeguards, AWayBackStaysForTheRadioThatNeedsIt) {
    const auto before = memory();
    plug({.silentFrom = 70 + 30}, before);
    const auto backup = write(view, all).backup;
    const auto torn = memory();
    dialogs.take();
    plug({}, before);
    EXPECT_TRUE(takeBack(view, all).good()) << "a whole radio of equal content";
    EXPECT_THAT(unfinished(), testing::ElementsAre(backup));

    plug({}, torn);
    const auto held = IicDat();
    EXPECT_TRUE(takeBack(view, {}).good());
    EXPECT_EQ(memory(), before);
    EXPECT_THAT(unfinished(), testing::IsEmpty());
    EXPECT_EQ(unfinishedWrite::all().size(), 1U) << "nobody has compared";
    std::ranges::copy(held.bytes().first(0x430), radio->memory().begin());
    EXPECT_TRUE(takeBack(view, all).good()) << "it held on to what was written";
    EXPECT_THAT(unfinishedWrite::all(), testing::IsEmpty());
}

// One file, two radios, at the same time or without the stamp: what the good write left in one of
// them may as well be what the other is torn to.
TEST_F(Safeguards, AWrittenRadioIsNotTakenForATornOne) {
    const struct {
        modIicDat::AddressRange range;
        bool tornFirst;
    } cases[] = {{{0, 0x42F}, true}, {{0, 0x42F}, false}, {{0, 0x2FF}, true}, {{0, 0x2FF}, false}};
    for (const auto& [range, tornFirst] : cases) {
        SCOPED_TRACE(testing::Message() << range.end << (tornFirst ? " torn first" : ""));
        fs::remove_all(backups::folder());
        modIicDat::state().readRange = modIicDat::state().writeRange = range;
        const auto exchanges = static_cast<unsigned>(3 + (range.end + 1) / 16);
        std::vector<std::uint8_t> a(SimRadio::memorySize, 0x11);
        std::vector<std::uint8_t> b(SimRadio::memorySize, 0x22);
        fs::path backupA;
        fs::path backupB;
        const auto tearA = [&] {
            plug({.silentFrom = exchanges + 2 + 30}, a);
            backupA = write(view, all).backup;
            dialogs.take();
        };
        const auto writeB = [&] {
            plug({}, b);
            const Ending good = write(view, all);
            EXPECT_TRUE(good.good());
            backupB = good.backup;
            b = memory();
        };
        if (tornFirst) {
            tearA();
            writeB();
        } else {
            writeB();
            tearA();
        }
        plug({}, b);
        const Ending unclear = takeBack(view, all);
        EXPECT_EQ(unclear.what, What::severalPossible);
        EXPECT_THAT(unclear.possible, testing::UnorderedElementsAre(backupA, backupB));
        EXPECT_EQ(memory(), b) << "untouched";

        plug({.silentFrom = exchanges + 2 + 10}, b);
        IicDat()(0x120) ^= 0xFF;
        const Ending second = write(view, all);
        IicDat()(0x120) ^= 0xFF;
        dialogs.take();
        EXPECT_THAT(second.earlier, testing::IsEmpty());
        EXPECT_THAT(unfinished(), testing::UnorderedElementsAre(backupA, second.backup));

        plug({}, b);
        EXPECT_TRUE(restore(view, backupA, all).good());
        EXPECT_THAT(unfinished(), testing::Contains(backupA));
    }
}

// A radio that was never written holds the same as another before its write that broke off.
TEST_F(Safeguards, AWholeRadioOfEqualContentIsNotTakenForATornOne) {
    const auto before = memory();
    plug({.silentFrom = 70 + 30}, before);
    const Ending torn = write(view, all);
    const auto held = memory();
    dialogs.take();
    clock.wall.hour += 1;
    plug({}, before);
    const Ending whole = write(view, all);
    EXPECT_TRUE(whole.good());
    EXPECT_THAT(whole.earlier, testing::IsEmpty());
    EXPECT_THAT(unfinished(), testing::ElementsAre(torn.backup));
    plug({}, held);
    EXPECT_TRUE(write(view, all).good()) << "the torn one, written once more";
    EXPECT_THAT(unfinished(), testing::IsEmpty());

    // Where nothing is known to have changed it is the radio itself.
    plug({.silentFrom = 70 + 3}, before);
    const Ending barely = write(view, all);
    dialogs.take();
    EXPECT_THAT(unfinished(), testing::ElementsAre(barely.backup));
    plug({}, before);
    EXPECT_TRUE(write(view, all).good());
    EXPECT_THAT(unfinished(), testing::IsEmpty());
}

TEST_F(Safeguards, AGoodWriteOfASmallerRangeForgetsOnlyWhatItCovers) {
    const auto before = memory();
    const struct {
        unsigned blocks;  // that the torn write stored
        modIicDat::AddressRange range;
        bool ownFile;
        bool staysTorn;
    } cases[] = {
        {30, {0x10, 0x4F}, false, true}, {30, {0x10, 0x4F}, true, true},
        {30, {0, 0x42F}, true, false},   {4, {0, 0x4F}, false, false},  // the rest is as it was
        {4, {0, 0x2F}, false, true},                                    // one block short
        {67, {0x10, 0x4F}, false, false}};  // only the end of the session was missing
    for (const auto& [blocks, range, ownFile, staysTorn] : cases) {
        SCOPED_TRACE(testing::Message() << blocks << " blocks, then up to " << range.end);
        fs::remove_all(backups::folder());
        fs::remove(folder / "mine.dat");
        modIicDat::state().writeRange = {0, 0x42F};
        plug({.silentFrom = 70 + 3 + blocks}, before);
        const auto backup = write(view, all).backup;
        dialogs.take();
        modIicDat::state().writeRange = range;
        plug({}, memory());
        IicDat()(0x20) ^= 0xFF;
        const Ending ending = write(view, all, ownFile ? folder / "mine.dat" : fs::path());
        EXPECT_TRUE(ending.good());
        EXPECT_EQ(unfinished(), staysTorn ? std::vector{backup} : std::vector<fs::path>());
        EXPECT_EQ(ending.earlier, unfinished());
        EXPECT_EQ(advice(ending).find("may still be in the radio") != std::string::npos, staysTorn);
        if (staysTorn && !ownFile) {
            const auto torn = memory();
            EXPECT_TRUE(write(view, all).good()) << "the smaller range once more";
            EXPECT_THAT(unfinished(), testing::ElementsAre(backup));
            plug({}, torn);
            EXPECT_TRUE(takeBack(view, all).good());
            EXPECT_EQ(memory(), before);
            EXPECT_THAT(unfinished(), testing::IsEmpty());
        }
    }
}

TEST_F(Safeguards, NotesOfOlderVersionsCountUntilTheirRadioIsWhole) {
    const auto before = memory();
    plug({.silentFrom = 70 + 60}, before);
    const auto backup = write(view, all).backup;
    dialogs.take();
    auto note = fs::path(backup).replace_extension(".unfinished");
    const auto bytes = folder.read(fs::relative(note, folder.path()).string());
    const auto images = bytes.substr(bytes.size() - 2 * IicDat().size());
    for (const char* name : {"unfinished-write", "last-write"}) {
        folder.write(std::string("Data/Backups/") + name,
                     backup.filename().string() + "\n" + images);
        fs::remove(note);
        plug({}, memory());
        EXPECT_EQ(unfinished().size(), name == std::string("unfinished-write") ? 1U : 0U);
        EXPECT_FALSE(fs::exists(backups::folder() / name));
        EXPECT_TRUE(takeBack(view, all).good()) << name;
        EXPECT_EQ(memory(), before);
        // As the good write of an older version left it.
        std::copy_n(images.end() - 0x2000, 0x430, radio->memory().begin());
    }
}

// Data files have no header, but every one has the filler.
TEST_F(Safeguards, WhatIsNoDataFileIsNotRestored) {
    EXPECT_TRUE(write(view, {.backUpFirst = true}, folder / "mine.dat").good());
    const auto held = memory();
    const std::string mine = folder.read("mine.dat");
    auto wrong = mine;
    wrong[0x1F] = 'x';
    const std::pair<std::string, const char*> cases[] = {
        {std::string(0x2000, 'x'), "is not a data file"},
        {wrong, "0010 to 001F are all FF"},
        {"", "is not a data file"},
        {mine.substr(0, 0x42F), "has 1071 bytes and needs 1072"},
        {mine + std::string(0x6001, 'x'), "a data file has at most 32768"}};
    for (const auto& [bytes, reason] : cases) {
        folder.write("junk.dat", bytes);
        const Ending ending = restore(view, folder / "junk.dat", all);
        EXPECT_FALSE(ending.good());
        EXPECT_THAT(ending.backupTrouble, HasSubstr(reason));
        EXPECT_EQ(memory(), held);
    }
    folder.write("junk.dat", mine + std::string(0x6000, 'x'));
    EXPECT_TRUE(restore(view, folder / "junk.dat", all).good());
}

// A bad line may have falsified some bytes; a stamp of another time means another write.
TEST_F(Safeguards, ARadioIsKnownAgainByItsStampAndAllButEightBytes) {
    const std::tuple<int, int, bool> cases[] = {
        // First and last of the bytes that hold something else, and whether it is the same radio.
        {0x328, 0x32F, true},  {0x327, 0x32F, false}, {0x335, 0x33C, true},
        {0x335, 0x33D, false}, {0x330, 0x330, false}, {0x334, 0x334, false}};
    for (const auto& [first, last, known] : cases) {
        fs::remove_all(backups::folder());
        plug();
        const auto backup = write(view, all).backup;
        for (int address = first; address <= last; ++address) {
            auto& byte = radio->memory()[static_cast<std::size_t>(address)];
            byte = static_cast<std::uint8_t>(byte + 0x55);
        }
        const Ending ending = takeBack(view, all);
        EXPECT_EQ(ending.what == What::otherRadio, !known) << std::hex << first << " to " << last;
        EXPECT_EQ(ending.good(), known);
        EXPECT_EQ(ending.backup, known ? backup : fs::path());
    }
}

// The write range is smaller than what is read: the flipped address lies outside it.
TEST_F(Safeguards, ABlockStoredAtAWrongAddressIsFound) {
    modIicDat::state().writeRange = {0x10, 0x4F};
    EXPECT_TRUE(write(view, all).good());
    plug({.requestBytes = {
              {.kind = ByteFaultKind::corrupt, .byte = 8 + 67 * 4 + 7 + 8 + 3, .value = 0x80}}});
    std::ranges::copy(IicDat().bytes().subspan(0x10, 16), radio->memory().subspan(0x10).begin());
    const Ending ending = write(view, all);
    EXPECT_EQ(ending.stage, Stage::compare);
    ASSERT_FALSE(ending.differences.empty());
    EXPECT_EQ(ending.differences.front().address, 0x90);
}

TEST_F(Safeguards, ARestoreThatCannotBeRightTouchesNothing) {
    const auto path = write(view, all).backup;
    const auto held = memory();
    fs::rename(fs::path(path).replace_extension("lost"), folder / "kept");
    EXPECT_TRUE(restore(view, path, all).good());
    EXPECT_EQ(memory()[0x400], held[0x400]) << "what no file says stays as the radio has it";
    folder.write("Data/Backups/" + path.stem().string() + ".lost", "short");
    EXPECT_FALSE(restore(view, path, all).good());
    // With a note the radio is read before the backup is.
    const auto noted = write(view, all).backup;
    fs::resize_file(fs::path(noted).replace_extension("lost"), 3);
    EXPECT_THAT(advice(restore(view, noted, all)), HasSubstr("The backup cannot be read"));
    modIicDat::sizeArrays(0x42E);
    const Ending ending = restore(view, path, {});
    EXPECT_THAT(advice(ending), HasSubstr("0000 to 042F do not lie within the memory image"));
    modIicDat::state().writeRange = {0x20, 0x1F};
    EXPECT_TRUE(write(view, all).stage == Stage::write) << "nothing to guard";
}

TEST_F(Safeguards, APlainDataFileRestoresAllThatItHolds) {
    const auto before = memory();
    EXPECT_TRUE(write(view, {.backUpFirst = true}, folder / "mine.dat").good());
    EXPECT_EQ(backupCount(), 0U);
    EXPECT_NE(memory()[0x400], before[0x400]);
    std::ranges::fill(radio->memory().subspan(0x400, 16), std::uint8_t{0xA5});
    EXPECT_TRUE(restore(view, folder / "mine.dat", all).good());
    auto expected = before;
    std::fill_n(expected.begin() + 0x400, 16, std::uint8_t{0xA5});
    EXPECT_EQ(memory(), expected);

    modIicDat::state().writeRange = {0, 0x2FF};
    plug({.silentFrom = 60});
    EXPECT_TRUE(restore(view, folder / "mine.dat", {}).good()) << "the lost bytes lie beyond";
    modIicDat::state().writeRange = {0, 0x42F};
    plug({}, expected);

    folder.write("short.dat", "short");
    for (const char* name : {"short.dat", "none.dat"}) {
        const Ending ending = restore(view, folder / name, all);
        EXPECT_FALSE(ending.good());
        EXPECT_THAT(advice(ending), HasSubstr("The backup cannot be read"));
        EXPECT_EQ(memory(), expected);
    }
}

TEST_F(Safeguards, OnlyTwoEqualPassesBecomeTheImage) {
    EXPECT_TRUE(read(view, all).good());
    EXPECT_EQ(IicDat()(0x42F), radio->memory()[0x42F]);
    ASSERT_EQ(backupCount(), 1U);
    const auto copy = backups::load(backups::list().front().path, {0, 0x42F}).image;
    EXPECT_TRUE(std::ranges::equal(copy.bytes(), IicDat().bytes()));

    const auto before = IicDat();
    // After the handshake's two bytes and the header of the block that channel 2 has.
    plug({.replyBytes = {{.kind = ByteFaultKind::corrupt, .byte = 2 + 40 + 5, .value = 1}}});
    view = {};
    const Ending ending = read(view, all);
    EXPECT_FALSE(ending.good());
    EXPECT_EQ(IicDat(), before);
    EXPECT_EQ(backupCount(), 1U);
    EXPECT_THAT(view.statuses, testing::Not(HasSubstr("Successful")));
    EXPECT_THAT(advice(ending), HasSubstr("(bytes listed under Details: 1)"));
    listDifferences(ending);
    EXPECT_THAT(modCommun::state().listRtData.lines().back(), HasSubstr("0020: "));
    EXPECT_THAT(modCommun::state().listRtData.lines().back(), HasSubstr("Channel 2"));

    plug({.silentFrom = 10});
    EXPECT_FALSE(read(view, all).good());
    EXPECT_EQ(backupCount(), 1U);
    dialogs.take();
}

TEST_F(Safeguards, WhatFailsLeavesNothingUntold) {
    // The backup takes 2 + 67 + 1 exchanges, the write as many.
    const struct {
        SimFaults faults;
        Choices choices;
        Stage stage;
        bool touched;
        const char* advice;
    } cases[] = {
        {{.silentFrom = 30}, all, Stage::backUp, false, "nothing was written"},
        {{.silentFrom = 70 + 1},
         all,
         Stage::write,
         false,
         "The radio is unchanged. The backup made before is "},
        {{.silentFrom = 70 + 3}, all, Stage::write, false, "may be partly written"},
        {{.silentFrom = 70 + 13},
         all,
         Stage::write,
         true,
         "(up to 009F): write again before it is "
         "used. What the radio held before is in "},
        {{.silentFrom = 140 + 20}, all, Stage::compare, true, "written but not compared"},
        {{.silentFrom = 13},
         {},
         Stage::write,
         true,
         "(up to 009F): write again before it is used."},
    };
    for (const auto& row : cases) {
        plug(row.faults);
        fs::remove_all(backups::folder());
        const auto before = memory();
        const Ending ending = write(view, row.choices);
        EXPECT_FALSE(ending.good());
        EXPECT_EQ(ending.stage, row.stage) << row.advice;
        EXPECT_EQ(memory() != before, row.touched) << row.advice;
        EXPECT_THAT(advice(ending), HasSubstr(row.advice));
        dialogs.take();
        EXPECT_EQ(ending.backup.empty(), row.stage == Stage::backUp || row.choices == Choices{});
    }

    fs::remove_all(backups::folder());
    folder.write("Data/Backups", "in the way");
    plug();
    const auto before = memory();
    const Ending ending = write(view, all);
    EXPECT_EQ(memory(), before);
    EXPECT_THAT(advice(ending), HasSubstr("could not be stored (" + backups::folder().string()));
}

TEST_F(Safeguards, TheStagesThatChoicesMean) {
    const std::tuple<Direction, Choices, std::vector<Stage>> cases[] = {
        {Direction::read, {}, {Stage::read}},
        {Direction::read, all, {Stage::read, Stage::compare}},
        {Direction::write, {}, {Stage::write}},
        {Direction::write, {.backUpFirst = true}, {Stage::backUp, Stage::write}},
        {Direction::write, all, {Stage::backUp, Stage::write, Stage::compare}}};
    for (const auto& [direction, choices, stages] : cases) {
        EXPECT_EQ(stagesOf(direction, choices), stages);
    }
}

TEST_F(Safeguards, ChoicesAreOffUntilTheSettingsFileHasThemOn) {
    EXPECT_EQ(chosen(), Choices{});
    for (const ChoiceRow& row : choiceRows) {
        choose(row, true);
        EXPECT_TRUE(chosen().*row.member);
    }
    choose(choiceRows[0], false);
    EXPECT_EQ(chosen(), (Choices{.keepCopy = false, .backUpFirst = true, .readBack = true}));
    EXPECT_EQ(folder.read("Uninstall.exe"), "[Setting]\nKeepCopy=0\nBackUpFirst=1\nReadBack=1\n");
}

}  // namespace
}  // namespace k520::safeguards
