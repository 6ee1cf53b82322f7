// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "memview/modMemDat.h"

#include <numeric>
#include <set>

#include "app/modShowErr.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "memview/partialFill.h"
#include "support/ProgramFolder.h"

namespace k520::modMemDat {
namespace {

/// An empty grid over an image whose bytes count from 0 again and again.
class MemDat : public test::ProgramFolder {
  protected:
    MemDat() { prepare(0x1FFF, 0x1FFF); }

    void prepare(std::int16_t datNum, std::int16_t tableMaxAddr) {
        state() = {};
        modShowErr::state() = {};
        modIicDat::sizeArrays(datNum);
        std::iota(image().bytes().begin(), image().bytes().end(), std::uint8_t{0});
        modIicDat::state().TableMaxAddr = tableMaxAddr;
        SetGridMemDat();
    }
    static MemoryImage& image() { return modIicDat::IicDat(); }

    CellGrid& grid = state().vsfgGridMemDat;
};

TEST_F(MemDat, ShowsEveryByteAndMarksExactlyWhatChanged) {
    cmdFillGrid_Click();
    EXPECT_EQ(grid.text(0, 0) + grid.text(0, 16) + grid.text(32, 0) + grid.text(512, 0),
              "AddrF01F0H1FF0H");
    EXPECT_EQ(grid.text(1, 6) + grid.text(2, 11) + grid.text(17, 1) + grid.text(512, 16),
              "051A00FF");
    for (const auto& [row, column, mode] : {std::tuple(0, 1, EditMode::none),
                                            {1, 0, EditMode::none},
                                            {1, 1, EditMode::keyboard},
                                            {512, 16, EditMode::keyboard}}) {
        EXPECT_EQ(grid.cell(row, column).editMode, mode) << row << ' ' << column;
    }
    EXPECT_EQ(grid.columnWidth(0) + 10'000 * grid.columnWidth(1), 4'000'750);
    EXPECT_EQ(grid.columnWidth(16) + 10'000 * grid.columns(), 170'400);
    EXPECT_EQ(grid.rowHeight(0) + 1000 * grid.rowHeight(1) + 1'000'000 * grid.rowHeight(512),
              270'270'270);
    std::set<std::pair<int, int>> told;
    const auto following =
        grid.onCellChanged.subscribe([&](int row, int column) { told.emplace(row, column); });
    TableFreDat();
    EXPECT_TRUE(told.empty());

    const std::set<std::pair<int, int>> changed{{0x13, 4}};
    image()(0x123) = 0x77;
    TableFreDat();
    EXPECT_EQ(told, changed);
    grid.setText(1, 11, "0a");
    TableFreDat();
    EXPECT_EQ(grid.text(0x13, 4) + grid.text(1, 11), "770A");
    EXPECT_EQ(grid.cell(1, 11).background, std::nullopt);
    EXPECT_EQ(grid.cell(0x13, 4).background, (Colour{255, 0, 0}));
    told.clear();
    cmdSetDefCol();
    EXPECT_EQ(told, changed);
    EXPECT_EQ(grid.cell(0x13, 4).background, std::nullopt);
    EXPECT_EQ(failure(), "");
}

TEST_F(MemDat, HostileLastAddresses) {
    const std::tuple<std::int16_t, int, bool> rows[] = {// last address, rows of the grid, error
                                                        {0x10, 2, true},    {0x11, 3, false},
                                                        {0, 1, true},       {-1, 1, false},
                                                        {-32768, 1, false}, {0x7FFF, 2049, true}};
    for (const auto& [tableMaxAddr, gridRows, isReported] : rows) {
        prepare(0x40F, tableMaxAddr);
        TableFreDat();
        EXPECT_EQ(grid.rows(), gridRows);
        EXPECT_EQ(failure().ends_with(" 9"), isReported);
    }
    EXPECT_EQ(grid.text(0x41, 16) + grid.text(0x42, 1), "0F");
}

TEST_F(MemDat, EditsAndTips) {
    const std::uint8_t bytes[] = {0x00, 0x1F, 0x20, 0x7E, 0x7F, 0xFF};
    std::string characters;
    std::ranges::transform(bytes, std::back_inserter(characters), characterOf);
    EXPECT_EQ(characters, ".. ~..");
    EXPECT_EQ(CellTipHint(27, 6), "");
    TableFreDat();
    MemoryImage wanted = image();
    wanted(0x1A5) = 0xAB;
    grid.setText(27, 6, "ab");
    vsfgGridMemDat_AfterEdit();
    EXPECT_EQ(image(), wanted);
    EXPECT_EQ(CellTipHint(27, 6),
              "地址为: 0x01A5    二进制:10101011    "
              "B0:1 B1:0 B2:1 B3:0   B4:1 B5:0 B6:1 B7:1     十进制171    \r\n");
    EXPECT_EQ(CellTipHint(0, 1) + CellTipHint(1, 0) + CellTipHint(513, 1) + CellTipHint(1, -1), "");
    EXPECT_TRUE(isByteText("00") && isByteText("fF") && failure().empty());
    for (const char* text : {"", "0", "000", "G0", "0g", "-1", " 1"}) {
        EXPECT_FALSE(isByteText(text)) << text;
    }
    EXPECT_EQ(B_To_D(std::string(31, '1')), 2147483647);
    EXPECT_EQ(test::raised([] { return B_To_D(std::string(32, '1')); }), 6);
    EXPECT_EQ(test::raised([] { return B_To_D("12"); }), 13);
    EXPECT_EQ(test::raised([] { return H_To_B("1G"); }), 13);
    EXPECT_EQ(SeparateChar("ff") + test::raised([] { return SeparateChar("100"); }), 255 + 6);
    const std::pair<const char*, std::optional<int>> addresses[] = {
        {"0", 0},    {" 1feH ", 0x1FE}, {"FFFFh", 0xFFFF}, {"8000", 0x8000},
        {"", {}},    {"H", {}},         {"10000", {}},     {"0x1", {}},
        {"1 2", {}}, {"-1", {}},        {"HH", {}},        {"1HH", {}}};
    for (const auto& [text, address] : addresses) {
        EXPECT_EQ(parseAddress(text), address) << text;
    }
    grid.setText(1, 1, "FFFF");
    GridDataTemp();
    EXPECT_EQ(failure(), "frmMemDat->GridDataTemp 6");
    EXPECT_EQ(image(), wanted);
}

// The grid is older than the image when a file was opened or a channel deleted meanwhile.
TEST_F(MemDat, ATypedByteChangesNothingElse) {
    TableFreDat();
    image()(0x1234) = 0x77;
    MemoryImage wanted = image();
    int edits = 0;
    const auto following = documentOrigin::state().onChange.subscribe([&] { ++edits; });
    for (const auto& [address, text] : {std::pair(0x30, "5a"), {0x1500, "fE"}, {0x1500, "Ff"}}) {
        EXPECT_TRUE(typeByte(address / 16 + 1, address % 16 + 1, text));
        wanted(address) = SeparateChar(text);
    }
    EXPECT_FALSE(typeByte(1, 1, "5"));
    EXPECT_EQ(edits, 3);
    EXPECT_TRUE(typeByte(0x151, 1, "ff"));
    EXPECT_EQ(edits, 3) << "it was that before";
    EXPECT_EQ(image(), wanted);
    EXPECT_EQ(grid.text(0x124, 5) + grid.text(0x151, 1), "77FF");
    EXPECT_EQ(failure(), "");
}

TEST_F(MemDat, APartialFillChangesItsRangeAndMarksWhatHasChanged) {
    modIicDat::state().partialFillRange = {0, 0x1FFF};
    const auto [from, to, value] = partialFill::initial();
    EXPECT_EQ(from + to + value, "00001FFF");
    TableFreDat();
    MemoryImage wanted = image();
    const auto before = documentOrigin::state().now;
    EXPECT_FALSE(partialFill::fill({" 1feH", "0200 ", "fF"}));
    EXPECT_NE(documentOrigin::state().now, before);
    wanted(0x1FE) = wanted(0x1FF) = wanted(0x200) = 0xFF;
    EXPECT_EQ(image(), wanted);
    EXPECT_EQ(grid.text(32, 15) + grid.text(33, 1), "FFFF");
    EXPECT_EQ(grid.cell(32, 15).background, changedMark);
    EXPECT_EQ(grid.cell(32, 16).background, std::nullopt) << "was FF before";
    EXPECT_EQ(partialFill::initial().from + partialFill::initial().to, "01FE0200");

    using partialFill::Field;
    const std::pair<partialFill::Texts, Field> refused[] = {
        {{"", "1", "00"}, Field::from},   {{"2000", "2001", "00"}, Field::from},
        {{"0x1", "1", "0"}, Field::from}, {{"0", "12345", "00"}, Field::to},
        {{"0", "2000", "00"}, Field::to}, {{"11", "10", "00"}, Field::to},
        {{"0", "1", "5"}, Field::value},  {{"0", "1", "G0"}, Field::value}};
    for (const auto& [texts, field] : refused) {
        const auto refusal = partialFill::fill(texts);
        ASSERT_TRUE(refusal) << texts.from << ' ' << texts.to << ' ' << texts.value;
        EXPECT_EQ(refusal->field, field);
        EXPECT_NE(refusal->reason, "");
    }
    EXPECT_EQ(image(), wanted);
    EXPECT_EQ(partialFill::initial().from + partialFill::initial().to, "01FE0200");
    EXPECT_FALSE(partialFill::fill({"300", "300", "77"})) << "a single byte";
    wanted(0x300) = 0x77;
    EXPECT_EQ(image(), wanted);
    EXPECT_EQ(failure(), "");
}

TEST_F(MemDat, FollowsItsHighestAddress) {
    modIicDat::state().TableMaxAddr = 0xFF;
    fitGrid();
    EXPECT_EQ(grid.rows(), 17);
    EXPECT_EQ(grid.text(1, 1), "");
    TableFreDat();
    modIicDat::state().TableMaxAddr = 0x1FFF;
    fitGrid();
    EXPECT_EQ(grid.text(512, 16), "FF");
    EXPECT_EQ(failure(), "");
}

}  // namespace
}  // namespace k520::modMemDat
