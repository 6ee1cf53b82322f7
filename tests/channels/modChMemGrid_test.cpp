// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/look.h"
#include "app/mdimoduMain.h"
#include "channels/ChannelFixture.h"
#include "channels/modModel.h"
#include "image/modIicDat.h"
#include "settings/modSysSet.h"

namespace k520::modChMem {
namespace {

class Grid : public test::ChannelFixture {
  protected:
    static void setChannel(int number, std::int32_t rx, std::int32_t tx) {
        channel(number).rxFre() = rx;
        channel(number).txFre() = tx;
        channel(number).decodeTone = "67.0";
        channel(number).encodeTone = "D023N";
    }
};

TEST_F(Grid, TheDefinitionIsTheLanguages) {
    settings(
        "[ChInfo]\n1001=71\n3001=73\n3000=102\n3002=2\n3003=No|Rx|Tx|more\n3102=1500\n"
        "3200=RxFre\n3201=a\n3202=3\n3203=on\n3204=off\n3205=*EndOfThisItem*\n3206=x\n");
    for (const std::int16_t language : std::array<std::int16_t, 4>{1, 2, 7, 3}) {
        mdimoduMain::state().Language = language;
        ReadChInfo();
        EXPECT_EQ(state().ChRowHeight, language == 1 ? 71 : 73) << language;
    }
    SetChGrid();
    EXPECT_EQ(row(0), "Rx|Tx|more");
    EXPECT_EQ(grid().text(99, 0) + grid().text(100, 0) + grid().text(101, 0), "99VFO");
    EXPECT_EQ(grid().rowHeight(0) + grid().columnWidth(2), 73 + 1500);
    EXPECT_EQ(grid().columnFormat(1) + grid().columnFormat(2), "###.#####");
    EXPECT_EQ(columnOf(1).texts().size(), 2U);
    EXPECT_EQ(columnOf(1).defaultValue(), 3);
}

TEST_F(Grid, HostileDefinitionsAreReportedAndLeaveAGrid) {
    const std::string read = "modChMem->ReadChInfo ";
    const std::string set = "modChMem->SetChGrid ";
    const std::tuple<const char*, int, int, Labels> cases[] = {
        {"3000=abc\n3001=99999\n3103=x\n", 17, 10, {read + "13", read + "6", read + "13"}},
        {"", 17, 10, {}},
        {"3000=-1\n3002=0\n", 1, 10, {}},
        {"3000=300\n", 261, 10, {set + "9"}},
        {"3002=60\n", 17, 61, {read + "9", set + "9"}},
        {"3000=32767\n3002=32767\n", 261, 201, {read + "9", read + "9", set + "9", set + "9"}}};
    for (const auto& [changes, rows, columns, log] : cases) {
        SCOPED_TRACE(changes);
        state() = {};
        settings(std::string("[ChInfo]\n") + changes);
        ReadChInfo();
        SetChGrid();
        EXPECT_EQ(std::pair(grid().rows(), grid().columns()), std::pair(rows, columns));
        EXPECT_EQ(row(0).substr(0, 5), "0|0|0");
        EXPECT_EQ(failures(), log);
        EXPECT_EQ(grid().columnWidth(9), columns == 201 ? 0 : 1000);
    }
}

TEST_F(Grid, ChannelsAreDrawnAsTheyAre) {
    setChannel(1, 44600625, 14500000);
    setChannel(2, 47000000, -1);
    setChannel(3, 47000001, 40000000);
    channel(1).field(5) = 1;
    channel(2).field(5) = 2;  // has no text
    channel(4).decodeTone = "67.0";
    ShowChTblGrid();
    EXPECT_EQ(row(1), "446.00625|145|67.0|D023N|wide|low|no|off");
    EXPECT_EQ(row(2), "470||67.0|||low|no|off");
    EXPECT_EQ(row(4), blank);
    EXPECT_EQ(failures(), Labels{});
    for (int n = 1; n <= 3; ++n) {
        EXPECT_EQ(colour(n, 1), n == 3 ? over : def) << n;
        EXPECT_EQ(colour(n, 2), n == 1 ? over : def) << n;
    }
    modModel::selectBand(0);
    EXPECT_TRUE(colour(1, 1) == over && colour(1, 2) == def);
    // An empty row is left as it is, but for a warning colour.
    const Colour own{1, 2, 3};
    grid().setBackground(1, 5, own);
    channel(1).rxFre() = -1;
    ShowChTblGrid();
    EXPECT_TRUE(row(1) == blank && colour(1, 1) == def && colour(1, 5) == own);
    channel(3).field(5) = 47;
    look::state().DefColor = "宋体";
    look::state().OverColor = "Times New Roman";
    ShowChTblGrid();
    EXPECT_EQ(colour(2, 1), warningColour);
    EXPECT_EQ(colour(2, 2), std::nullopt);
    EXPECT_EQ(grid().text(3, 5), "");
    EXPECT_EQ(failures(), Labels{"modChMem->ChParaShow 9"});
}

TEST_F(Grid, DeletionTakesTheRecordFromTheDefaultImage) {
    std::ranges::fill(modIicDat::IicDatDef().bytes(), std::uint8_t{0x5A});
    setChannel(5, 44600625, 14500000);
    ShowChTblGrid();
    grid().setBackground(5, 5, Colour{1, 2, 3});
    state().currentChannel = 5;
    channel(5).modified() = channel(9).modified() = 0;
    mnuDelOne_Click();
    EXPECT_EQ(row(5) + channel(5).decodeTone + channel(5).encodeTone, blank);
    EXPECT_TRUE(colour(5, 2) == def && colour(5, 5) == def);
    EXPECT_FALSE(channel(5).present() || channel(5).transmits());
    EXPECT_EQ(channel(5).modified(), 1);
    for (int address = 0x40; address < 0x70; ++address) {
        EXPECT_EQ(image()(address), address / 16 == 5 ? 0x5A : 0) << address;
    }
    for (const int n : {1, 16}) {
        setChannel(n, 44600625, 14500000);
        channel(n).modified() = 0;
    }
    mnuDelAll_Click();
    for (const int n : {1, 9, 16}) {
        EXPECT_TRUE(!channel(n).present() && channel(n).modified() == 1) << n;
    }
    EXPECT_EQ(get(image(), 0x10F, 2), (Bytes{0x5A, 0}));
    EXPECT_EQ(failures(), Labels{});
    state().currentChannel = 0;
    mnuDelOne_Click();
    EXPECT_EQ(failures(), Labels{"mdifrmMain->mnuDelOne_Click 9"});
}

TEST_F(Grid, ARefreshFollowsTheImage) {
    put(0x20, {0x25, 0x06, 0x60, 0x44});
    put(0x37A, {0x13, 0x60, 0x17, 0x40});
    put(0x130, {4});  // the first option
    int bandSeen = -1;
    const auto following = state().onFormRefresh.subscribe(
        [&] { bandSeen = modModel::state().cboFrequency.selected; });
    SoftDisplay();
    EXPECT_EQ(bandSeen, 0);
    EXPECT_EQ(row(2), "446.00625||None||narrow|low|no|off");
    EXPECT_EQ(colour(2, 1), over);  // drawn before the band was known
    EXPECT_EQ(modSysSet::OptNow()[0], 4);
    channel(2).rxFre() = 14501250;
    modSysSet::state().OptNow[0] = 7;
    SetConvIicDat();
    EXPECT_EQ(image()(0x23), 0x14);
    EXPECT_EQ(image()(0x130), 7);
}

}  // namespace
}  // namespace k520::modChMem
