// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/gridPaste.h"

#include "app/interfaceLock.h"
#include "channels/ChannelFixture.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"

namespace k520::gridPaste {
namespace {

using Reasons = std::vector<std::string>;

/// Channel 1 is "150|150|None|None|narrow|low|no|off" on the band 136 to 174 MHz, all others are
/// empty; the titles are those of the fixture.
class Paste : public test::ChannelFixture {
  protected:
    void SetUp() override {
        ChannelFixture::SetUp();
        modModel::selectBand(0);
        paste("150", {{{1, 1}}});
    }
    static std::string pasteAt(Place at, const std::string& text) {
        std::string cells;
        for (const Place& place : paste(text, {{at}})) {
            cells += std::to_string(place.row) + "," + std::to_string(place.col) + " ";
        }
        return cells;
    }
    test::ScriptedDialogs dialogs;
};

TEST_F(Paste, BlocksByTheRulesOfTyping) {
    const std::tuple<Place, const char*, const char*, int, const char*> cases[] = {
        // where; what; the cells that took it; a row then
        {{1, 1}, "151\t=+1,5 mhz\r\n", "1,1 1,2 ", 1, "151|152.5|None|None|narrow|low|no|off"},
        {{2, 1},
         "445,0124 MHz\t\td023i\t\tWIDE\t1\tYes\tCarrier",
         "2,1 2,2 2,3 2,5 2,6 2,7 2,8 ",
         2,
         "445.0125||D023I||wide|high|yes|carrier"},
        {{2, 2}, "150\n\n", "2,2 ", 2, "445.0125|150|D023I|D023I|wide|high|yes|carrier"},
        {{2, 1}, "\t\t\t", "2,1 ", 2, blank},
        {{16, 8}, "\t\n\t", "", 16, blank},
        {{3, 1},
         "rx\tTX \n155\t156\n157\t158",
         "3,1 3,2 4,1 4,2 ",
         4,
         "157|158|None|None|narrow|low|no|off"},
        {{1, 1}, "", "", 1, "151|152.5|None|None|narrow|low|no|off"}};
    for (const auto& [at, text, cells, number, expected] : cases) {
        EXPECT_EQ(pasteAt(at, text), cells) << text;
        EXPECT_EQ(row(number), expected) << text;
    }
    EXPECT_EQ(paste("160", {{{1, 1}, {5, 1}, {5, 2}}}).size(), 3U);
    EXPECT_EQ(row(1).substr(0, 9) + row(5).substr(0, 8), "160|152.5160|160|");
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Paste, AllOrNothing) {
    const auto before = modChMem::ChInfo();
    const std::tuple<Place, const char*, Reasons> cases[] = {
        {{1, 1},
         "151\n446;1\nRx",
         {"Channel 2, Rx: \"446;1\" is not a frequency in MHz, such as 446.00625",
          "Channel 3, Rx: \"Rx\" is not a frequency in MHz, such as 446.00625"}},
        {{1, 1}, "Rx", {"Channel 1, Rx: \"Rx\" is not a frequency in MHz, such as 446.00625"}},
        {{15, 1}, "150\n151\n152\n\n", {"Line 3: there are channels 1 to 16 only"}},
        {{1, 1}, "Rx\tTx", {"Channel 1, Rx: \"Rx\" is not a frequency in MHz, such as 446.00625"}},
        {{1, 8}, "carrier\tbeyond", {"Line 1: there is no column for \"beyond\""}},
        {{1, 1},
         "\t151",
         {"Channel 1, Tx: the channel is empty; enter its receive frequency first"}},
        {{1, 2},
         "\t67\t67",
         {"Channel 1, Enc: the channel does not transmit; enter its transmit frequency first"}},
        {{1, 3},
         "9\tx\t\twide",
         {"Channel 1, Dec: \"9\" is not a tone; give a CTCSS tone such as 88.5, a DCS code such as "
          "D023N or D023I, or nothing for off"}},
        {{1, 5}, "\t", {"Channel 1, A: \"\" is not a valid value; choose one of: narrow, wide"}}};
    for (const auto& [at, text, reasons] : cases) {
        EXPECT_EQ(pasteAt(at, text), "") << text;
        EXPECT_TRUE(modChMem::ChInfo() == before) << text;
        std::string box = "exclamation|Notice|Nothing was pasted. These cells cannot be taken:";
        for (const auto& reason : reasons) {
            box += "\n" + reason;
        }
        EXPECT_EQ(dialogs.take(), Reasons{box});
    }
    // A long list of reasons, and a long text in one.
    EXPECT_EQ(pasteAt({1, 1}, std::string(99, 'x') + "\na\nb\nc\nd\ne\nf\ng\nh\ni"), "");
    const auto box = dialogs.take().at(0);
    EXPECT_EQ(std::ranges::count(box, '\n'), 9);
    EXPECT_TRUE(box.ends_with("... and 2 more")) << box;
    EXPECT_NE(box.find("\"" + std::string(40, 'x') + "…\""), std::string::npos) << box;

    interfaceLock::state().lockState = interfaceLock::locked;
    EXPECT_EQ(pasteAt({1, 1}, "151"), "");
    EXPECT_TRUE(modChMem::ChInfo() == before);
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Paste, RemarksNameTheirCells) {
    pasteAt({1, 1}, "Rx\tTx\n600\t150\n1e2\t2e2");
    EXPECT_EQ(modChEdit::state().remark,
              "The line with the titles was left out; "
              "Channel 1, Rx: 600 is beyond 120 - 550 MHz; limited to 174 MHz; "
              "Channel 2, Rx: 1e2 is beyond 120 - 550 MHz; limited to 136 MHz");
    pasteAt({1, 1}, "150");
    EXPECT_EQ(modChEdit::state().remark, "");
}

}  // namespace
}  // namespace k520::gridPaste
