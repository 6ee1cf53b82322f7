// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Controls.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/Raised.h"

namespace k520 {
namespace {

using test::raised;

TEST(Colours, AreReadInBothForms) {
    const std::pair<const char*, std::optional<Colour>> colours[] = {
        {"#123456", Colour{0x12, 0x34, 0x56}},
        {" #FFfFF0 ", Colour{0xFF, 0xFF, 0xF0}},
        {"255", Colour{255, 0, 0}},
        {"1193046", Colour{0x56, 0x34, 0x12}},
        {"16777215", Colour{255, 255, 255}},
        {"16777216", {}},
        {"#12345", {}},
        {"#1234567", {}},
        {"#12345G", {}},
        {"-1", {}},
        {"12x", {}},
        {"", {}}};
    for (const auto& [text, colour] : colours) {
        EXPECT_EQ(parseColour(text), colour) << text;
    }
}

TEST(LineList, SelectsWhatIsInserted) {
    LineList list;
    std::string told;
    const auto inserting = list.onInsert.subscribe([&](int at) { told += std::to_string(at); });
    const auto clearing = list.onClear.subscribe([&] { told += "c"; });
    list.insertSelected(0, "b");
    list.insertSelected(0, "a");
    list.insertSelected(2, "c");
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(list.selected(), 2);
    EXPECT_EQ(raised([&] { return list.insertSelected(4, "x"), 0; }), 9);
    EXPECT_EQ(raised([&] { return list.insertSelected(-1, "x"), 0; }), 9);
    list.clear();
    EXPECT_EQ(list.size() * 10 + list.selected(), -1);
    EXPECT_EQ(told, "002c");
}

TEST(CellGrid, TellsOfChangesAndKeepsToItsBounds) {
    CellGrid grid;
    int resets = 0;
    std::string changed;
    const auto resetting = grid.onReset.subscribe([&] { ++resets; });
    const auto changing = grid.onCellChanged.subscribe([&](int row, int column) {
        changed += std::to_string(row) + std::to_string(column) + " ";
    });
    grid.reset(2, 3);
    grid.setText(1, 2, "a");
    grid.setBackground(0, 1, Colour{1, 2, 3});
    grid.setEditing(1, 0, EditMode::list, {"x"});
    grid.setColumnWidth(2, 7);
    grid.setRowHeight(1, 8);
    grid.setColumnFormat(0, "f");
    EXPECT_EQ(changed, "12 01 ");
    EXPECT_EQ(grid.text(1, 2) + grid.text(0, 2) + grid.columnFormat(0) + grid.columnFormat(2),
              "af");
    EXPECT_EQ(grid.columnWidth(2) * 1000 + grid.columnWidth(1) * 100 + grid.rowHeight(1) * 10 +
                  grid.rowHeight(0),
              7080);
    EXPECT_EQ(grid.cell(1, 0).editMode, EditMode::list);
    EXPECT_EQ(grid.cell(1, 0).choices.size(), 1U);
    const std::function<void()> outside[] = {[&] { grid.setText(2, 0, ""); },
                                             [&] { grid.setText(0, 3, ""); },
                                             [&] { grid.setText(-1, 0, ""); },
                                             [&] { grid.setText(0, -1, ""); },
                                             [&] { grid.setColumnWidth(3, 1); },
                                             [&] { grid.setRowHeight(2, 1); },
                                             [&] { grid.setColumnFormat(3, ""); },
                                             [&] { grid.reset(-1, 1); },
                                             [&] { grid.reset(1, -1); }};
    for (const auto& call : outside) {
        EXPECT_EQ(raised([&] { return call(), 0; }), 9) << &call - outside;
    }
    EXPECT_EQ(resets, 1);
    grid.reset(1, 1);
    EXPECT_EQ(grid.text(0, 0) + grid.columnFormat(0), "");
    EXPECT_EQ(grid.rows() * 1000 + grid.columns() * 100 + grid.columnWidth(0) + grid.rowHeight(0),
              1100);
    grid.reset(0, 0);
    EXPECT_EQ(resets, 3);
    EXPECT_EQ(raised([&] { return grid.text(0, 0); }), 9);
}

}  // namespace
}  // namespace k520
