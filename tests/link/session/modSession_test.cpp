// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/modSession.h"

#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/settingsStore.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualPort.h"
#include "memview/modMemDat.h"
#include "support/ProgramFolder.h"

namespace k520::modSession {
namespace {

using modIicDat::IicDat;
using testing::HasSubstr;
using testing::Not;
using Texts = test::ScriptedDialogs::Texts;

/// Keeps every call in order, "|" after each: the status texts as they are, percents after a "p",
/// the others as letters.
struct RecordingView : NullView {
    void setStatus(const std::string& text) override {
        ++statuses;
        note(text);
    }
    void setPercentText(const std::string& text) override { note("%" + text); }
    void setProgress(std::int16_t percent) override { note("p" + std::to_string(percent)); }
    void enableStart(Direction direction, bool on) override {
        note(std::string(on ? "S" : "s") + (direction == Direction::read ? "r" : "w"));
    }
    void setBusy(bool on) override { note(on ? "B" : "b"); }
    void setBlinking(bool on) override { note(on ? "L" : "l"); }
    void resetStopBox() override { note("r"); }
    void enableStopBox() override { note("e"); }
    bool stopTicked() override { return alwaysTicked || (wantsStop && log.ends_with("e|")); }
    bool showMemDatTicked() override { return gridTicked; }
    void gaveUp(const Result& /*result*/) override { note("gave up"); }
    bool abandoned() override { return statuses > abandonedAfter; }
    void note(const std::string& what) { log += what + "|"; }

    std::string log;
    bool alwaysTicked = false;
    bool wantsStop = false;
    bool gridTicked = false;
    int statuses = 0;
    int abandonedAfter = 10'000;
};

class Session : public test::ProgramFolder {
  protected:
    Session() {
        modIicDat::sizeArrays(8191);
        modChMem::SetChGrid();
        modMemDat::SetGridMemDat();
        modMemDat::TableFreDat();
    }
    void plug(SimFaults faults = {}, int baud = 1'000'000) {
        std::vector<std::uint8_t> memory(SimRadio::memorySize, 0xFF);
        for (std::size_t i = 0x200; i < memory.size(); ++i) {
            memory[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
        }
        radio = std::make_shared<SimRadio>(memory, faults, baud);
        modCommun::state().portMaker = [this](std::int16_t) {
            return std::make_unique<VirtualPort>(radio);
        };
    }
    /// Whether image and radio hold the same from `start` on.
    bool agree(std::size_t start, std::size_t length) {
        return std::ranges::equal(IicDat().bytes().subspan(start, length),
                                  radio->memory().subspan(start, length));
    }

    test::SimulatedClock clock;
    test::ScriptedDialogs dialogs;
    RecordingView view;
    std::shared_ptr<SimRadio> radio;
};

// The first attempts poll for less than a block's 25 ms: they always fail on a real line.
TEST_F(Session, WholeMemoryAtTheRadiosSpeed) {
    plug({}, SimRadio::usualBaud);
    const Result read = cmdRead_Click(view);
    EXPECT_EQ(read.outcome, Outcome::succeeded);
    EXPECT_EQ(read.failedAttempts, 3);
    EXPECT_TRUE(agree(0, 8192));
    EXPECT_EQ(modMemDat::state().vsfgGridMemDat.text(0x34, 1), "00");
    // 24 bytes a block on the line, and 5 ms before the request and before the script's end.
    const std::chrono::microseconds ideal(512 * (24 * 10'000'000LL / 9600 + 10'000));
    EXPECT_LT(read.lastAttempt, ideal * 105 / 100);

    IicDat()(0x1FFF) = 0x5A;
    modChMem::state().ChInfo(2).rxFre() = 44'600'625;
    EXPECT_EQ(cmdWrite_Click(view).failedAttempts, 2);
    EXPECT_TRUE(agree(0, 8192));
    EXPECT_EQ(radio->memory()[0x20], 0x25);
    EXPECT_EQ(radio->memory()[0x1FFF], 0x5A);
    EXPECT_TRUE(radio->complaints().empty());
    EXPECT_TRUE(modShowErr::state().entries.empty());
}

TEST_F(Session, ShowsItsProgressInOrder) {
    plug();
    int displays = 0;
    const auto following = modChMem::state().onFormRefresh.subscribe([&] { ++displays; });
    modIicDat::state().readRange = modIicDat::state().writeRange = {0x330, 0x34F};
    view.gridTicked = true;
    modCommun::state().dataListLine = 7;
    const auto begin = clock.now();
    const Result read = cmdRead_Click(view);
    // The last texts stand for a moment, which does not count.
    EXPECT_EQ(clock.now() - begin, read.duration + std::chrono::milliseconds(150));
    EXPECT_EQ(read.duration, read.lastAttempt);
    EXPECT_EQ(read.stepsDone * 100 + read.stepCount, 404);
    EXPECT_EQ(view.log,
              "r|L|sr|B|Reading Now......|p3| 3 %|p50| 50 %|p97| 97 %|p100| 100 %|b|r|l|"
              "Read Successful|p100|p0||%|Sr|r|");
    const auto& cell = modMemDat::state().vsfgGridMemDat.text(0x34, 1);
    const auto asRead = hexText(radio->memory()[0x330], 2);
    EXPECT_EQ(cell, asRead);
    for (const bool ticked : {false, true}) {
        view = {};
        view.gridTicked = ticked;
        cmdWrite_Click(view);
        EXPECT_EQ(view.log,
                  "r|L|sw|B||p3| 3 %|p50| 50 %|p97| 97 %|p100| 100 %|b|r|l|"
                  "Successful|p100|p0||%|Sw|r|");
        EXPECT_EQ(cell, ticked ? "26" : asRead);
    }
    EXPECT_EQ(displays, 1);
}

TEST_F(Session, SilenceEndsAfterTwentyAttempts) {
    plug({.silentFrom = 1});
    const Result result = cmdRead_Click(view);
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_EQ(result.failedAttempts, 20);
    EXPECT_EQ(dialogs.take(),
              Texts{"exclamation|Notice|" + modSoftFace::text(SoftText::checkPort)});
    EXPECT_EQ(std::ranges::count(modCommun::state().listRtData.lines(),
                                 modSoftFace::text(SoftText::noReply)),
              20);
    EXPECT_THAT(view.log, HasSubstr("| 9 Reading Now......|"));
    EXPECT_THAT(view.log, Not(HasSubstr(" 8 Reading")));
    EXPECT_TRUE(view.log.ends_with("|gave up|b|r|l|Read Failed|p0||%|Sr|r|"));
    EXPECT_EQ(IicDat(), MemoryImage(8192));
    // One line of the error list for all attempts.
    ASSERT_EQ(modShowErr::state().entries.size(), 1U);
    const auto& told = modShowErr::state().entries.front();
    EXPECT_EQ(told.label, "frmCommun->cmdRead_Click");
    EXPECT_EQ(told.number, errNum::deviceIo);
    EXPECT_EQ(told.source, "no valid answer from a radio in 20 attempts");
    EXPECT_TRUE(result.unanswered);
}

TEST_F(Session, StopsWhenAsked) {
    // A box that stands ticked from the start cuts the waits short, and ends nothing earlier.
    for (const bool fromTheStart : {false, true}) {
        plug({.silentFrom = 1});
        view.wantsStop = !fromTheStart;
        view.alwaysTicked = fromTheStart;
        const Result stopped = cmdRead_Click(view);
        EXPECT_EQ(stopped.outcome, Outcome::stopped);
        EXPECT_EQ(stopped.failedAttempts, 6);
        EXPECT_TRUE(modShowErr::state().entries.empty()) << "a wish is not a failure";
        EXPECT_EQ(stopped.duration < std::chrono::milliseconds(60), fromTheStart);
    }

    plug();
    view = {};
    view.abandonedAfter = 4;
    const Result abandoned = cmdRead_Click(view);
    EXPECT_EQ(abandoned.outcome, Outcome::stopped);
    EXPECT_EQ(abandoned.failedAttempts, 0);
    EXPECT_EQ(abandoned.lastAddress, 0x0020);
    // The stamp is in the image before anything is sent.
    cmdWrite_Click(view);
    EXPECT_EQ(IicDat()(816), 0x26);
}

TEST_F(Session, ShortLastBlockCopiesSixteenBytes) {
    plug({.failAttempts = 1});
    modIicDat::state().readRange = modIicDat::state().writeRange = {0x400, 0x413};
    EXPECT_EQ(cmdRead_Click(view).failedAttempts, 1);
    EXPECT_TRUE(agree(0x400, 20));
    // What lies after the four bytes is left over from the block before.
    EXPECT_EQ(IicDat()(0x414), radio->memory()[0x404]);
    EXPECT_EQ(IicDat()(0x420), 0);
    IicDat()(0x413) = 0x77;
    cmdWrite_Click(view);
    EXPECT_TRUE(agree(0x400, 20));
    EXPECT_FALSE(agree(0x414, 1));
}

TEST_F(Session, ErrorsEndItWithEverythingReset) {
    auto& range = modIicDat::state().readRange;
    const std::tuple<std::string, Outcome, std::function<void()>> errors[] = {
        {"modCommun->ProtocolCom", Outcome::failed, [this] { plug({.goneAfter = 5}); }},
        {"modCommun->OpenCom", Outcome::portFailed, [this] { EXPECT_TRUE(radio->takeCable()); }},
        {"modCommun->InitProtocol", Outcome::failed, [&] { range.end = 0x3FFF; }},
        {"frmCommun->cmdRead_Click", Outcome::failed, [] { modIicDat::sizeArrays(0x104); }}};
    for (const auto& [label, outcome, arrange] : errors) {
        SCOPED_TRACE(label);
        range = {};
        plug();
        view = {};
        arrange();
        EXPECT_EQ(cmdRead_Click(view).outcome, outcome);
        EXPECT_EQ(modShowErr::state().entries.back().label, label);
        EXPECT_EQ(std::exchange(modShowErr::state().entries, {}).size(), 1U);
        EXPECT_FALSE(modCommun::state().comCommun);
        EXPECT_EQ(dialogs.take().size(), label == "modCommun->ProtocolCom" ? 1U : 0U);
        EXPECT_TRUE(view.log.ends_with(
            outcome == Outcome::portFailed ? "r|L|" : "|b|r|l|Read Failed|p0||%|Sr|r|"));
    }
}

TEST_F(Session, WaitsAreAsLongAsAskedAndNoneForZero) {
    const auto start = clock.now();
    modCommun::DelayNms(0);
    modCommun::DelayNms(-5);
    modCommun::DelayNms(7);
    EXPECT_EQ(clock.now() - start, std::chrono::milliseconds(7));
    EXPECT_EQ(clock.waits, 1);
}

TEST_F(Session, SecondStartDoesNothing) {
    plug();
    struct : NullView {
        void setStatus(const std::string& /*text*/) override {
            EXPECT_EQ(cmdWrite_Click(*this).outcome, Outcome::busy);
        }
    } impatient;
    EXPECT_EQ(cmdRead_Click(impatient).outcome, Outcome::succeeded);
    EXPECT_TRUE(agree(0, 8192));
}

TEST_F(Session, AddressFieldsAreStoredAsTypedAndThenParsed) {
    const auto& image = modIicDat::state();
    const std::tuple<AddressField, std::string, const std::int16_t&> fields[] = {
        {AddressField::maxAddr, "TableMaxAddr", image.TableMaxAddr},
        {AddressField::readStart, "ReadStartAddr", image.readRange.start},
        {AddressField::readEnd, "ReadEndAddr", image.readRange.end},
        {AddressField::writeStart, "WriteStartAddr", image.writeRange.start},
        {AddressField::writeEnd, "WriteEndAddr", image.writeRange.end}};
    for (const auto& [field, key, target] : fields) {
        for (const char* text : {"1fe", "", "1FG", "12345"}) {
            addressFieldChanged(field, text);
            EXPECT_EQ(settingsStore::read("Setting", key, "none"), text);
            EXPECT_EQ(target, 0x1FE);
        }
    }
    EXPECT_EQ(modShowErr::state().entries.size(), 15U);
    EXPECT_EQ(modShowErr::state().entries[3].label, "frmCommun->txtReadStartAddr_Change");
}

}  // namespace
}  // namespace k520::modSession
