// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/unfinishedWrite.h"

#include <algorithm>
#include <functional>

#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/session/backups.h"
#include "support/ProgramFolder.h"

namespace k520::unfinishedWrite {
namespace {

using modIicDat::AddressRange;
using Change = std::function<void(MemoryImage&)>;

/// A radio that held 11 everywhere, and a write of 22.
class UnfinishedWrite : public test::ProgramFolder {
  protected:
    UnfinishedWrite() {
        modIicDat::sizeArrays(0x42F);
        held = imageOf(0x11, {2026, 11, 21, 10, 0, 0});
        note.sent = imageOf(0x22, {2026, 12, 31, 23, 59, 0});
        note.found = held;
        note.backup = backups::store(held, whole, backups::Reason::beforeWrite).path;
        note.before = {note.backup};
    }
    static MemoryImage imageOf(std::uint8_t byte, const DateTime& when) {
        MemoryImage image(0x430);
        std::ranges::fill(image.bytes(), byte);
        stamp::write(image, when);
        return image;
    }
    static Change stamped(const DateTime& when) {
        return [=](MemoryImage& image) { stamp::write(image, when); };
    }
    /// So many bytes from 0x20 on are another radio's.
    static Change falsified(int count) {
        return [=](MemoryImage& image) {
            std::ranges::fill(image.bytes().subspan(0x20, static_cast<std::size_t>(count)),
                              std::uint8_t{0x77});
        };
    }
    /// -1 where it is another radio.
    int doubtsOf(MemoryImage now, const Change& change, AddressRange range) const {
        change(now);
        return doubts(note, now, range).value_or(-1);
    }

    static constexpr AddressRange whole{0, 0x42F};
    test::SimulatedClock clock;
    MemoryImage held;
    Note note;
};

TEST_F(UnfinishedWrite, ARadioIsKnownByItsBytesAndItsStamp) {
    const Change none = [](MemoryImage&) {};
    const Change foreign = stamped({2020, 1, 1, 0, 0, 0});
    const Change noStamp = [](MemoryImage& image) { image(stamp::address) = 0xFF; };
    struct Case {
        Change change;
        AddressRange range;
        int written, unfinished;  ///< doubts where the write has come to its end, and where not
    };
    const Case ofSent[] = {{none, whole, 0, 0},
                           {falsified(8), whole, 8, 8},
                           {falsified(9), whole, -1, -1},
                           {falsified(8), {0x20, 0x2F}, -1, -1},
                           {falsified(7), {0x20, 0x2E}, 7, 7},
                           {stamped({2027, 1, 1, 0, 0, 0}), whole, 0, 0},
                           {stamped({2027, 1, 1, 0, 1, 0}), whole, -1, -1},
                           {stamped({2026, 12, 31, 23, 58, 0}), whole, -1, -1},
                           {stamped({2026, 11, 21, 10, 0, 0}), whole, -1, 0},
                           {noStamp, whole, -1, -1},
                           {foreign, whole, -1, -1},
                           {foreign, {0x330, 0x334}, -1, -1},
                           {foreign, {0x331, 0x42F}, 0, 0},
                           {foreign, {0, 0x333}, 0, 0}};
    for (const auto& row : ofSent) {
        const auto place = &row - ofSent;
        note.state = State::written;
        EXPECT_EQ(doubtsOf(note.sent, row.change, row.range), row.written) << place;
        note.state = State::unfinished;
        EXPECT_EQ(doubtsOf(note.sent, row.change, row.range), row.unfinished) << place;
    }
    // Nothing that only the write can have put there outweighs a doubt.
    EXPECT_EQ(doubtsOf(held, none, whole), 0);
    EXPECT_EQ(doubtsOf(held, falsified(1), whole), -1);
    // Without a stamp of its own a write can have any.
    stamp::write(note.sent, {2026, 1, 1, 0, 0, 0});
    note.sent(stamp::address) = 0xFF;
    EXPECT_EQ(doubtsOf(note.sent, foreign, whole), 0);
    // What was held before, but not when this write began, speaks for an unfinished one alone.
    note.found = note.sent;
    for (const auto& [state, expected] : {std::pair(State::unfinished, 0), {State::written, -1}}) {
        note.state = state;
        EXPECT_EQ(doubtsOf(held, none, {0, 0x32F}), expected);
    }
}

TEST_F(UnfinishedWrite, ItsRadioShowsWhatItHasPutThere) {
    MemoryImage now = held;
    EXPECT_FALSE(shows(note, now, whole));
    now(0x50) = 0x22;
    EXPECT_TRUE(shows(note, now, whole));
    EXPECT_TRUE(shows(note, now, {0x50, 0x50}));
    EXPECT_FALSE(shows(note, now, {0x51, 0x42F}) || shows(note, now, {0, 0x4F}));
    note.barelyBegun = true;
    EXPECT_TRUE(shows(note, held, whole));
}

TEST_F(UnfinishedWrite, ARadioStaysTornWhereAWriteDoesNotReach) {
    constexpr AddressRange written{0x10, 0x1F};
    const Change nothing = [](MemoryImage&) {};
    const auto torn = [&](MemoryImage now, const Change& change, AddressRange known = whole) {
        change(now);
        return staysTorn(note, now, known, written);
    };
    const auto one = [](int address) { return [=](MemoryImage& image) { image(address) = 0x77; }; };
    EXPECT_FALSE(torn(held, nothing)) << "all as it was before";
    EXPECT_FALSE(torn(note.sent, nothing)) << "all as it was sent";
    EXPECT_TRUE(torn(held, nothing, {0, 0x42E})) << "nobody knows the last byte";
    for (const auto& [address, expected] : {std::pair(0, true),
                                            {0x0F, true},
                                            {0x10, false},
                                            {0x1F, false},
                                            {0x20, true},
                                            {0x32F, true},
                                            {0x330, false},
                                            {0x334, false},
                                            {0x335, true},
                                            {0x42F, true}}) {
        EXPECT_EQ(torn(held, one(address)), expected) << std::hex << address;
        EXPECT_EQ(torn(note.sent, one(address)), expected) << std::hex << address;
        MemoryImage now = held;
        one(address)(now);
        EXPECT_FALSE(staysTorn(note, now, whole, whole)) << "all is written";
    }
    const auto later = backups::store(note.sent, whole, backups::Reason::beforeWrite).path;
    const auto first = std::exchange(note.backup, later);
    note.before = {first};
    EXPECT_TRUE(torn(note.sent, nothing)) << "sent onto what an earlier attempt had torn";
    EXPECT_FALSE(torn(held, nothing));
}

// Where the later write began from other bytes, the radio can be the one of either.
TEST_F(UnfinishedWrite, AGoodWriteThatWentBeforeDoesNotCount) {
    note.state = State::written;
    for (const int other : {-1, 0, 0x42F}) {
        MemoryImage began = note.sent;
        MemoryImage now = note.sent;
        now(0x50) = 0x11;
        if (other >= 0) {
            began(other) = 0x77;
            now(other) = 0x11;
        }
        Note later{.backup = backups::store(began, whole, backups::Reason::beforeWrite).path};
        later.before = {later.backup};
        later.found = began;
        later.sent = imageOf(0x11, {2027, 1, 1, 1, 0, 0});
        const auto best = bestFitting({later, note}, now);
        ASSERT_EQ(best.size(), other == -1 ? 1U : 2U) << other;
        EXPECT_EQ(best.front().backup, later.backup);
    }
}

TEST_F(UnfinishedWrite, ANoteIsReadAsItWasKept) {
    const auto second = backups::store(held, whole, backups::Reason::beforeWrite).path;
    note.before = {note.backup, second};
    note.barelyBegun = true;
    keep(note);
    const auto isThere = [&](const std::string& extension) {
        return std::filesystem::exists(
            std::filesystem::path(note.backup).replace_extension(extension));
    };
    EXPECT_TRUE(isThere(".unfinished") && !isThere(".written"));
    auto kept = unfinished();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].backup, note.backup);
    EXPECT_EQ(kept[0].before, note.before);
    EXPECT_TRUE(kept[0].barelyBegun && kept[0].found == note.found && kept[0].sent == note.sent);
    EXPECT_EQ(neededBackups().size(), 3U);
    note.state = State::written;
    note.barelyBegun = false;
    keep(note);
    EXPECT_TRUE(isThere(".written") && !isThere(".unfinished"));
    EXPECT_TRUE(unfinished().empty() && neededBackups().empty());
    ASSERT_EQ(all().size(), 1U);
    EXPECT_FALSE(all()[0].barelyBegun);
    // A backup that is gone is no way back, and without any the note is of no use.
    std::filesystem::remove(second);
    EXPECT_EQ(all()[0].before, std::vector{note.backup});
    modIicDat::sizeArrays(0x42E);
    EXPECT_TRUE(all().empty()) << "for an image of another size";
    modIicDat::sizeArrays(0x42F);
    drop(note.backup);
    EXPECT_TRUE(all().empty());
    EXPECT_EQ(failure(), "");
}

}  // namespace
}  // namespace k520::unfinishedWrite
