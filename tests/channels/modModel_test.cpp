// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modModel.h"

#include "channels/ChannelFixture.h"
#include "image/modIicDat.h"

namespace k520::modModel {
namespace {

/// Answers the range dialog with 140 to 141 MHz, or cancels it.
class RangeDialog : public test::ScriptedDialogs {
  public:
    void customRange() override {
        ++shown;
        EXPECT_EQ(!cancel && acceptCustomRange("140", "141"), !cancel);
    }
    bool cancel = true;
    int shown = 0;
};

class Model : public test::ChannelFixture {
  protected:
    /// The band's four bytes, the first one on top.
    static std::uint64_t stored() {
        const MemoryImage& i = image();
        return (i(0x37A) * 256U + i(0x37B)) * 65536U + i(0x37C) * 256U + i(0x37D);
    }
    static void expectBand(int index, std::int32_t low, std::int32_t high, std::uint64_t bytes) {
        const State& s = state();
        EXPECT_EQ((Bytes{s.cboFrequency.selected, s.bandLow, s.bandHigh, s.absoluteMax}),
                  (Bytes{index, low, high, 55000000}));
        EXPECT_EQ(stored(), bytes);
    }
    RangeDialog dialog;
};

TEST_F(Model, EveryBandIsWrittenAndFoundAgain) {
    EXPECT_EQ(state().cboModel.items.front() + state().cboFrequency.items[11], "ZEV-K520Custom");
    EXPECT_EQ(state().cboModel.selected, 0);
    expectBand(5, 40000000, 47000000, 0x40004700);
    for (int index = 0; index < 11; ++index) {
        const std::string name(
            bandCodec::bands()[static_cast<std::size_t>(index)].name);  // "136 - 174 MHz"
        const std::string low = name.substr(0, 3), high = name.substr(6, 3);
        const auto bytes = std::stoul(low + "0" + high + "0", nullptr, 16);
        for (const bool fromImage : {false, true}) {
            state() = {};
            fromImage ? selectBandFromImage() : selectBand(index);
            expectBand(index, std::stoi(low) * 100000, std::stoi(high) * 100000, bytes);
        }
    }
    EXPECT_EQ(dialog.shown, 0);
    put(0x379, {7});
    cboModel_Click();  // none selected: the first
    EXPECT_EQ(image()(0x379), 0);
}

TEST_F(Model, OtherLimitsInTheImageAreNotKept) {
    for (const int low : {0x1370, 0x1750, 0, 0x0D60}) {
        selectBand(3);
        put(0x37A, {low >> 8, low & 0xFF, 0x17, 0x40});
        const auto before = stored();
        selectBandFromImage();
        expectBand(11, 12000000, 52000000, before);
    }
    // A program goes on with what the list shows: no dialog, and the limits are written.
    applyShownBand();
    EXPECT_EQ(dialog.shown, 0);
    EXPECT_EQ(stored(), 0x12005200U);
}

TEST_F(Model, CustomRanges) {
    // The texts, and where they are accepted the band and its bytes.
    const std::tuple<const char*, const char*, int, int, std::uint64_t> cases[] = {
        {"145.12345", "150", 14512345, 15000000, 0x14511500},
        {"145.05", "145.15", 14505000, 14515000, 0x14501452},
        {"120", "520", 12000000, 52000000, 0x12005200},
        {"130", "130", 13000000, 13000000, 0x13001300},
        {"130", "125", 0, 0, 0},
        {"119.99999", "130", 0, 0, 0},
        {"130", "520.00001", 0, 0, 0},
        {"abc", "130", 0, 0, 0},
        {"130", "1e300", 0, 0, 0}};
    for (const auto& [low, high, bandLow, bandHigh, bytes] : cases) {
        SCOPED_TRACE(low + std::string(" ") + high);
        const bool accepted = acceptCustomRange(low, high);
        EXPECT_EQ(accepted, bandLow != 0);
        EXPECT_EQ(state().customMin, accepted ? low : "120");
        EXPECT_EQ(state().customMax, accepted ? high : "520");
        accepted ? expectBand(11, bandLow, bandHigh, bytes)
                 : expectBand(11, 12000000, 52000000, 0x12005200);
    }
}

TEST_F(Model, TheDialogIsShownForAUsersChoiceOnly) {
    selectBand(0);
    selectBand(11);
    expectBand(11, 13600000, 17400000, 0x13601740);
    dialog.cancel = false;
    cboFrequency_Click();
    expectBand(11, 14000000, 14100000, 0x14001410);
    EXPECT_EQ(dialog.shown, 2);
    // In the window a cancelled dialog leaves the entry before selected, too.
    chooseBand(2);
    dialog.cancel = true;
    chooseBand(11);
    expectBand(2, 15000000, 17400000, 0x15001740);
    dialog.cancel = false;
    chooseBand(11);
    expectBand(11, 14000000, 14100000, 0x14001410);
    EXPECT_EQ(dialog.shown, 4);
    EXPECT_EQ(failures(), Labels{});
    selectBand(-1);
    modIicDat::sizeArrays(0x100);
    selectBandFromImage();
    EXPECT_EQ(failures(),
              (Labels{"frmChMem->cboFrequency_Click 9", "frmChMem->selectBandFromImage 9"}));
    EXPECT_EQ(state().bandLow, 14000000);
}

}  // namespace
}  // namespace k520::modModel
