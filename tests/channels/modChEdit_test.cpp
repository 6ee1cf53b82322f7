// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modChEdit.h"

#include "app/interfaceLock.h"
#include "channels/ChannelFixture.h"
#include "channels/channelEdit.h"
#include "channels/gridCells.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"

namespace k520::modChEdit {
namespace {

class Edit : public test::ChannelFixture {
  protected:
    void SetUp() override {
        ChannelFixture::SetUp();
        modModel::selectBand(0);  // 136 to 174 MHz
        type(1, 1, "150");
    }
    static void type(std::int16_t number, std::int16_t col, const std::string& text) {
        if (col == 3 || col == 4) {
            return cboGridChCtdcs_LostFocus(number, col, text);
        }
        grid().setText(number, col, text);
        vsfgGridCh_AfterEdit(number, col);
    }
};

TEST_F(Edit, TypedFrequencies) {
    const std::pair<const char*, std::string> cases[] = {
        // typed and shown; "!" marks the colour of a frequency outside the band
        {"145.0124", "145.0125"}, {"145.0026", "145.005"}, {"145.01125", "145.0125"},
        {" 15.0E1", "150"},       {"174.005", "174.005!"}, {"100.00", "136"},
        {"-5.00", "136"},         {"600.00", "174"},       {"120.00", "120!"},
        {"550.002", "550!"},      {"550.005", "174"}};
    for (const std::int16_t col : std::array<std::int16_t, 2>{1, 2}) {
        const auto shown = [&] {
            return grid().text(1, col) + (colour(1, col) == over ? "!" : "");
        };
        for (const auto& [typed, expected] : cases) {
            type(1, col, typed);
            EXPECT_EQ(shown(), expected) << typed;
            EXPECT_EQ(channel(1).outOfBand, expected.ends_with('!'));
            modChMem::ShowChTblGrid();  // what the table holds
            EXPECT_EQ(shown(), expected);
        }
    }
}

TEST_F(Edit, ALifeOfAChannel) {
    const std::tuple<std::int16_t, const char*, const char*> steps[] = {
        {1, "440", "440|440|None|None|wide|high|no|tone"},
        {1, "150", "150|440|None|None|wide|high|no|tone"},
        {3, "67", "150|440|67.0|None|wide|high|no|tone"},
        {2, "152", "150|152|67.0|67.0|wide|high|no|tone"},
        {3, "9", "150|152|None|67.0|wide|high|no|tone"},
        {4, "023i", "150|152|None|D023I|wide|high|no|tone"},
        {2, "153", "150|153|None|D023I|wide|high|no|tone"},
        {2, "", "150||None||wide|high|no|tone"},
        {2, "151", "150|151|None|None|wide|high|no|tone"},
        {2, "", "150||None||wide|high|no|tone"},
        {1, "150", "150|150|None|None|wide|high|no|tone"},
        {2, "=+1,5 MHz", "150|151.5|None|None|wide|high|no|tone"},
        {2, "= -0.0124", "150|149.9875|None|None|wide|high|no|tone"},
        {2, "=1", "150||None||wide|high|no|tone"},
        {2, "=", "150|150|None|None|wide|high|no|tone"},
        {2, "151", "150|151|None|None|wide|high|no|tone"},
        {8, "carrier", "150|151|None|None|wide|high|no|carrier"},
        {8, "x", "150|151|None|None|wide|high|no|carrier"},
        {1, "99999", "150|151|None|None|wide|high|no|carrier"},
        {2, "21474.8364", "150|151|None|None|wide|high|no|carrier"},
        {1, "abc", blank}};
    channel(2).field(5) = channel(2).field(8) = -1;
    channel(2).field(6) = 1;  // kept: only what is -1 gets the default
    channel(2).decodeTone = "67.0";
    for (const auto& [col, typed, expected] : steps) {
        channel(2).modified() = 0;
        type(2, col, typed);
        EXPECT_EQ(channel(2).modified(), 1);
        EXPECT_EQ(row(2), expected);
        modChMem::ShowChTblGrid();
        EXPECT_EQ(row(2), expected);
    }
    const std::string handler = "frmChMem->vsfgGridCh_AfterEdit: ";
    EXPECT_EQ(failures(), (Labels{handler + "5", handler + "6", "frmChMem->ModifyTxRxFre: 6"}));
    EXPECT_EQ(channel(2).decodeTone + channel(2).encodeTone, "");
    EXPECT_EQ(channel(2).field(8), -1);
    EXPECT_EQ(colour(2, 1), def);
    channel(1).encodeTone = "D023N";  // not shown, and gone with a new transmit frequency
    channel(1).txFre() = -1;
    modChMem::ShowChTblGrid();
    type(1, 2, "151");
    EXPECT_EQ(row(1) + channel(1).encodeTone, "150|151|None|None|narrow|low|no|off");
}

TEST_F(Edit, RemarksOnWhatBecameOfAText) {
    const std::tuple<std::int16_t, const char*, const char*> cases[] = {
        {1, "600", "600 is beyond 120 - 550 MHz; limited to 174 MHz"},
        {2, "1e2 mhz", "1e2 mhz is beyond 120 - 550 MHz; limited to 136 MHz"},
        {1, "150", ""},
        {3, "9", "9 is not a tone; the tone is off now"},
        {4, "none", ""},
        {8, "2", "2 is not an entry; taken as entry number 2: tone"},
        {8, "Carrier", ""}};
    for (const auto& [col, typed, remark] : cases) {
        type(1, col, typed);
        EXPECT_EQ(state().remark, remark);
    }
    EXPECT_EQ(row(1), "150|136|None|None|narrow|low|no|carrier");
}

TEST_F(Edit, WhichCellsMayBeEdited) {
    using enum EditMode;
    for (std::int16_t col = 1; col <= 8; ++col) {
        EXPECT_EQ(vsfgGridCh_BeforeEdit(2, col), col != 1) << col;
        EXPECT_FALSE(vsfgGridCh_BeforeEdit(1, col)) << col;
        EXPECT_EQ(grid().cell(1, col).editMode, col < 3 ? keyboard : col < 5 ? none : list);
    }
    EXPECT_EQ(grid().cell(1, 8).choices, (Labels{"off", "carrier", "tone"}));
    channel(1).txFre() = -1;
    EXPECT_TRUE(vsfgGridCh_BeforeEdit(1, 4));
    EXPECT_FALSE(vsfgGridCh_BeforeEdit(1, 3) || vsfgGridCh_BeforeEdit(0, 3));
    EXPECT_EQ(failures(), Labels{});
    EXPECT_TRUE(vsfgGridCh_BeforeEdit(300, 1));
    EXPECT_EQ(failures(), Labels{"frmChMem->vsfgGridCh_BeforeEdit: 9"});

    const auto before = modChMem::ChInfo();
    interfaceLock::state().lockState = "ShowLock";
    EXPECT_FALSE(vsfgGridCh_BeforeEdit(3, 5));
    EXPECT_EQ(grid().cell(3, 5).editMode, none);
    type(1, 1, "151");
    type(1, 3, "67");
    vsfgGridCh_DblClick(1, 5);
    openChannel(2);
    EXPECT_TRUE(modChMem::ChInfo() == before);
}

TEST_F(Edit, AClearedCellHasItsDefault) {
    const std::pair<int, const char*> steps[] = {// cleared column, and the row then
                                                 {5, "150|150|67.0|67.0|wide|high|yes|carrier"},
                                                 {4, "150|150|67.0|None|wide|high|yes|carrier"},
                                                 {3, "150|150|None|None|wide|high|yes|carrier"},
                                                 {2, "150||None||wide|high|yes|carrier"},
                                                 {4, "150||None||wide|high|yes|carrier"},
                                                 {1, blank}};
    type(1, 3, "67");
    type(1, 4, "67");
    for (const auto& [col, texts] :
         {std::pair{5, "narrow"}, {6, "high"}, {7, "yes"}, {8, "carrier"}}) {
        type(1, static_cast<std::int16_t>(col), texts);
    }
    for (const auto& [col, expected] : steps) {
        gridCells::clear(1, col);
        EXPECT_EQ(row(1), expected) << col;
    }
}

TEST_F(Edit, TipsSayWhatColoursMean) {
    type(1, 1, "120");
    openChannel(2);
    const std::tuple<int, int, const char*> tips[] = {
        {1, 1, "136"}, {1, 2, ""}, {1, 5, ""}, {2, 1, "opened"}, {2, 5, "opened"}, {3, 1, ""}};
    for (const auto& [number, col, tip] : tips) {
        const auto found = gridCells::tipOf(number, col);
        EXPECT_TRUE(found.empty() == std::string_view(tip).empty() &&
                    found.find(tip) != std::string::npos)
            << number << "," << col << ": " << found;
    }
}

TEST_F(Edit, DoubleClickSteps) {
    for (const auto& [value, next] : {std::pair(0, 1), {1, 2}, {2, 0}, {9, 0}, {-1, -1}}) {
        channel(1).field(8) = value;
        channel(1).modified() = 0;
        vsfgGridCh_DblClick(1, 8);
        EXPECT_EQ(channel(1).field(8), next) << value;
        EXPECT_EQ(channel(1).modified(), value == -1 ? 0 : 1) << value;
        EXPECT_EQ(grid().text(1, 8), next == 1 ? "carrier" : next == 2 ? "tone" : "off");
    }
    const auto before = modChMem::ChInfo();
    for (std::int16_t col = 0; col <= 4; ++col) {
        vsfgGridCh_DblClick(1, col);
    }
    vsfgGridCh_DblClick(2, 5);
    EXPECT_TRUE(modChMem::ChInfo() == before);
}

TEST_F(Edit, TheCellsThatAreDifferent) {
    modChMem::state().ChNum = 100;
    modChMem::state().ColNum = 12;
    modChMem::SetChGrid();
    channel(100).rxFre() = 15000000;
    for (std::int16_t col = 9; col <= 11; ++col) {
        vsfgGridCh_DblClick(100, col);
        EXPECT_EQ(channel(100).field(col), col == 9 ? 1 : 0);
        EXPECT_FALSE(vsfgGridCh_BeforeEdit(100, col));
        EXPECT_EQ(grid().cell(100, col).choices.empty(), col == 10);
    }
    modChMem::ShowChTblGrid();
    EXPECT_EQ(row(100), "150||None||narrow|low|no|off|0|0||0");
}

// Each is one step of undo, and makes the document one that is not saved.
TEST_F(Edit, WhatAPersonDoesCountsAsAnEdit) {
    const std::function<void()> actions[] = {[] { type(1, 1, "151"); },
                                             [] { type(1, 3, "67"); },
                                             [] { takeChannel(2, channel(1), "remark"); },
                                             [] { vsfgGridCh_DblClick(1, 5); },
                                             [] { openChannel(5); },
                                             [] {
                                                 modChMem::state().currentChannel = 5;
                                                 modChMem::mnuDelOne_Click();
                                             },
                                             [] { modChMem::mnuDelAll_Click(); },
                                             [] { modModel::selectModel(0); },
                                             [] { modModel::chooseBand(3); }};
    for (const auto& action : actions) {
        const auto before = documentOrigin::state().now;
        action();
        EXPECT_EQ(documentOrigin::state().now.edit, before.edit + 1) << &action - actions;
    }
    EXPECT_EQ(row(2), blank) << "all are deleted";
    takeChannel(2, {}, "remark");
    EXPECT_EQ(shownRemark(), "remark");
    openChannel(4);
    EXPECT_EQ(shownRemark(), "") << "of the edit before";
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Edit, CellsKnowTheirTextsAndWhatEmptiesAChannel) {
    const std::pair<int, Labels> texts[] = {{1, {"000.00000"}},
                                            {2, {"000.00000"}},
                                            {3, {"D000N", "None"}},
                                            {4, {"D000N", "None"}},
                                            {5, {"narrow", "wide"}}};
    for (const auto& [col, expected] : texts) {
        EXPECT_EQ(gridCells::possibleTexts(col), expected) << col;
    }
    EXPECT_TRUE(gridCells::empties(1, 1));
    EXPECT_FALSE(gridCells::empties(1, 2) || gridCells::empties(2, 1));
    interfaceLock::state().lockState = interfaceLock::locked;
    EXPECT_FALSE(gridCells::empties(1, 1));
    takeChannel(1, {}, "");
    EXPECT_EQ(row(1), "150|150|None|None|narrow|low|no|off");
}

TEST_F(Edit, ThePopUpMenu) {
    const auto menuOf = [](std::int16_t number, std::string menu = "") {
        for (const auto& item : channelMenu(number)) {
            menu += (item.enabled ? "+" : "-") + item.caption;
        }
        return menu;
    };
    EXPECT_EQ(menuOf(1), "-Open channel 1+Delete channel 1+Delete all channels+Save as default");
    interfaceLock::state().lockState = interfaceLock::locked;
    EXPECT_EQ(menuOf(1), "-Open channel 1-Delete channel 1-Delete all channels-Save as default");
    interfaceLock::state().lockState = interfaceLock::unlocked;
    EXPECT_EQ(menuOf(2), "+Open channel 2-Delete channel 2+Delete all channels-Save as default");
    EXPECT_EQ(menuOf(0), "");
    EXPECT_EQ(modChMem::state().currentChannel, 2);
    EXPECT_EQ(failures(), Labels{"frmChMem->vsfgGridCh_MouseDown: 9"});
    openChannel(2);
    EXPECT_EQ(row(2), "136|136|None|None|wide|low|yes|tone");
    type(2, 5, "narrow");
    openChannel(2);  // exists: stays
    EXPECT_EQ(channel(2).field(5), 0);
    EXPECT_TRUE(colour(2, 1) == over && colour(2, 8) == over);
    // The frequency that it was given counts once it was typed.
    EXPECT_FALSE(gridCells::refuses(2, 1));
    EXPECT_TRUE(gridCells::store(2, 1, "136"));
    EXPECT_EQ(colour(2, 8), def);
    // A frequency that is typed again is an edit, too: here it makes the channel transmit.
    type(2, 2, "");
    EXPECT_TRUE(gridCells::store(2, 1, "136"));
    EXPECT_EQ(row(2), "136|136|None|None|narrow|low|yes|tone");
    EXPECT_FALSE(gridCells::store(2, 6, "low") || gridCells::store(2, 3, "None"));
    type(2, 1, "150");
    type(2, 3, "67.0");
    saveAsDefault(2);
    saveAsDefault(3);  // empty: nothing to save
    EXPECT_EQ(get(modIicDat::IicDatDef(), 0x20, 8), (Bytes{0, 0, 0, 0x15, 0, 0, 0x60, 0x13}));
    EXPECT_EQ(modIicDat::IicDatDef()(0x30), 0);
    // New channels get its tones and parameters from now on, until New.
    modChMem::DelOneChannel(2);
    type(2, 1, "151");
    openChannel(3);
    EXPECT_EQ(row(2), "151|151|67.0|None|narrow|low|yes|tone");
    EXPECT_EQ(row(3), "136|136|67.0|None|narrow|low|yes|tone");
}

TEST_F(Edit, ColumnsThatAreNoListTakeWhatTheyCanHold) {
    modChMem::GetValidCharTbl();
    modChMem::state().ChColDef[4] = modChMem::ColumnDefinition({"CHNAME"});
    modChMem::state().ChColDef[5] = modChMem::ColumnDefinition({"OFFSET"});
    const std::tuple<int, const char*, const char*> cases[] = {
        {5, "Base 1", "BASE 1"},   {5, "a.b", "BASE 1"}, {5, "ＡＢ", "AB"}, {5, "", ""},
        {6, "0,6 MHz", "0.60000"}, {6, "x", "0.60000"},  {6, "", ""}};
    for (const auto& [col, typed, shown] : cases) {
        EXPECT_FALSE(gridCells::refuses(1, col));
        EXPECT_EQ(grid().cell(1, col).editMode, EditMode::keyboard);
        gridCells::store(1, col, typed);
        EXPECT_EQ(grid().text(1, col), shown) << typed;
        // A text that is refused is told beside the grid, too.
        const bool refused = typed == std::string_view("a.b") || typed == std::string_view("x");
        EXPECT_THAT(shownRemark(),
                    testing::StartsWith(refused ? fmt::format("\"{}\" is not a", typed) : ""));
        EXPECT_EQ(shownRemark().empty(), !refused);
    }
    EXPECT_EQ(failures(), Labels(2, "frmChMem->vsfgGridCh_AfterEdit: 5"));
    auto given = channel(1);
    std::string remark;
    EXPECT_EQ(channelEdit::give(given, 5, "a.b", remark)->reason,
              "\"a.b\" is not a valid name; a name has 0-9, A-Z, blanks and - / + _");
}

}  // namespace
}  // namespace k520::modChEdit
