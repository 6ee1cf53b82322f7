// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/look.h"
#include "app/modShowErr.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "support/ProgramFolder.h"

namespace k520::test {

/// The channel modules as a start leaves them: an image of 8 KiB, English, eight columns with four
/// parameters, colours, and an empty grid. There is no settings file.
class ChannelFixture : public ProgramFolder {
  protected:
    using Bytes = std::vector<int>;
    using Labels = std::vector<std::string>;
    static constexpr Colour def{0xFF, 0xFF, 0xFF};
    static constexpr Colour over{0xFF, 0x00, 0x00};
    static constexpr const char* blank = "|||||||";

    void SetUp() override {
        look::state().DefColor = "#FFFFFF";
        look::state().OverColor = "255";
        modIicDat::sizeArrays(0x1FFF);
        modChMem::initChannelForm();
        defineColumns();
        EXPECT_EQ(failures(), Labels{});
    }

    static void defineColumns() {
        auto& s = modChMem::state();
        s.ColNum = 8;
        s.ChGridHeader = "No|Rx|Tx|Dec|Enc|A|B|C|D";
        s.ChColDef[4] = modChMem::ColumnDefinition({"A", "", "1", "narrow", "wide"});
        s.ChColDef[5] = modChMem::ColumnDefinition({"B", "", "0", "low", "high"});
        s.ChColDef[6] = modChMem::ColumnDefinition({"C", "", "1", "no", "yes"});
        s.ChColDef[7] = modChMem::ColumnDefinition({"D", "", "2", "off", "carrier", "tone"});
        modChMem::SetChGrid();
    }

    /// Label and number of the failures logged since the last call.
    static Labels failures() {
        Labels labels;
        for (const auto& entry : modShowErr::state().entries) {
            labels.push_back(entry.label + " " + std::to_string(entry.number));
        }
        modShowErr::state().entries.clear();
        return labels;
    }

    static MemoryImage& image() { return modIicDat::IicDat(); }
    static void put(int address, const Bytes& bytes) {
        for (const int byte : bytes) {
            image()(address++) = static_cast<std::uint8_t>(byte);
        }
    }
    static Bytes get(const MemoryImage& from, std::ptrdiff_t address, std::ptrdiff_t count) {
        const auto first = from.bytes().begin() + address;
        return {first, first + count};
    }

    static modChMem::Channel& channel(int number) { return modChMem::state().ChInfo(number); }
    static CellGrid& grid() { return modChMem::state().vsfgGridCh; }
    static auto colour(int row, int col) { return grid().cell(row, col).background; }
    /// The texts of a row's data cells, "|" between them.
    static std::string row(int number) {
        std::string texts = grid().text(number, 1);
        for (int col = 2; col < grid().columns(); ++col) {
            texts += "|" + grid().text(number, col);
        }
        return texts;
    }
};

}  // namespace k520::test
