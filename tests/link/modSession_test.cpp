// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/modSession.h"

#include <gmock/gmock.h>

#include "app/Dialogs.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/modCommun.h"
#include "link/virtualPort.h"
#include "memview/modMemDat.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::modSession {
namespace {

using modIicDat::IicDat;
using testing::Contains;
using testing::Not;
using Texts = std::vector<std::string>;

/// Keeps the status texts, and the other calls as letters.
struct RecordingView : NullView {
    void setStatus(const std::string& text) override { statuses.push_back(text); }
    void enableStart(Direction /*direction*/, bool on) override { calls += on ? 'S' : 's'; }
    void setBusy(bool on) override { calls += on ? 'B' : 'b'; }
    void setBlinking(bool on) override { calls += on ? 'L' : 'l'; }
    void resetStopBox() override { calls += 'r'; }
    void enableStopBox() override { calls += 'e'; }
    bool stopTicked() override { return wantsStop && calls.ends_with('e'); }
    bool showMemDatTicked() override { return gridTicked; }
    bool abandoned() override { return statuses.size() > abandonedAfter; }

    Texts statuses;
    std::string calls;
    bool wantsStop = false;
    bool gridTicked = false;
    std::size_t abandonedAfter = 10'000;
};

struct CountingBoxes : Dialogs {
    bool ask(const std::string&, const std::string&) override { return false; }
    void tell(BoxIcon, const std::string& title, const std::string& text) override {
        told += title + ": " + text;
    }
    std::string openFile(const FileChoice&) override { return {}; }
    std::string saveFile(const FileChoice&) override { return {}; }
    void customRange() override {}

    std::string told;
};

class Session : public testing::Test {
  protected:
    Session() {
        std::int16_t english = 3;
        modSoftFace::FillSoftFace(english);
        mdimoduMain::state().programFolder = folder.path();
        modShowErr::state() = {};
        modIicDat::state() = {};
        modIicDat::sizeArrays(8191);
        modChMem::state() = {};
        modChMem::SetChGrid();
        modMemDat::SetGridMemDat();
        modMemDat::TableFreDat();
        setDialogs(&boxes);
    }
    ~Session() override {
        setDialogs(nullptr);
        modCommun::state() = {};
        modChMem::state() = {};
        mdimoduMain::state() = {};
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

    test::TempFolder folder;
    test::SimulatedClock clock;
    CountingBoxes boxes;
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
    modChMem::state().onFormRefresh = [&] { ++displays; };
    modIicDat::state().readRange = modIicDat::state().writeRange = {0x330, 0x34F};
    view.gridTicked = true;
    cmdRead_Click(view);
    EXPECT_EQ(view.statuses, (Texts{"Reading Now......", " 3 %", " 50 %", " 97 %", " 100 %",
                                    "Read Successful", ""}));
    EXPECT_EQ(view.calls, "rLsBbrlSr");
    const auto& cell = modMemDat::state().vsfgGridMemDat.text(0x34, 1);
    EXPECT_EQ(cell, hexText(radio->memory()[0x330], 2));
    view = {};
    view.gridTicked = true;
    cmdWrite_Click(view);
    EXPECT_EQ(view.statuses, (Texts{"", " 3 %", " 50 %", " 97 %", " 100 %", "Successful", ""}));
    EXPECT_EQ(cell, "26");
    EXPECT_EQ(displays, 1);
}

TEST_F(Session, SilenceEndsAfterTwentyAttempts) {
    plug({.silentFrom = 1});
    const Result result = cmdRead_Click(view);
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_EQ(result.failedAttempts, 20);
    EXPECT_EQ(boxes.told, "Notice: " + modSoftFace::text(79));
    EXPECT_EQ(std::ranges::count(modCommun::state().listRtData.lines(), modSoftFace::text(175)),
              20);
    EXPECT_THAT(view.statuses, Contains(" 9 Reading Now......"));
    EXPECT_THAT(view.statuses, Not(Contains(" 8 Reading Now......")));
    EXPECT_THAT(view.statuses, Contains("Read Failed"));
    EXPECT_EQ(IicDat(), MemoryImage(8192));
}

TEST_F(Session, StopsWhenAsked) {
    plug({.silentFrom = 10});
    view.wantsStop = true;
    const Result stopped = cmdRead_Click(view);
    EXPECT_EQ(stopped.outcome, Outcome::stopped);
    EXPECT_EQ(stopped.failedAttempts, 6);

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
    // What lies behind the four bytes is left over from the block before.
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
        EXPECT_FALSE(modCommun::state().comCommun);
        EXPECT_TRUE(view.calls.ends_with(outcome == Outcome::portFailed ? "rL" : "brlSr"));
    }
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
            EXPECT_EQ(mdimoduMain::readSetting("Setting", key, "none"), text);
            EXPECT_EQ(target, 0x1FE);
        }
    }
    EXPECT_EQ(modShowErr::state().entries.size(), 15U);
    EXPECT_EQ(modShowErr::state().entries[3].label, "frmCommun->txtReadStartAddr_Change");
}

}  // namespace
}  // namespace k520::modSession
