// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/imageDifferences.h"

#include <gmock/gmock.h>

#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "settings/optionTable.h"
#include "support/ProgramFolder.h"

namespace k520::imageDifferences {
namespace {

using ImageDifferences = test::ProgramFolder;

TEST_F(ImageDifferences, AreSummedUpByWhatTheyBelongTo) {
    modIicDat::sizeArrays(0x1FFF);
    modChMem::SetChGrid();
    const auto tot = optionTable::ownedBits(optionTable::optionAt(0)).front();
    const struct {
        std::vector<std::pair<int, int>> flipped;  ///< addresses and bits
        Summary summary;
        const char* text;
    } cases[] = {
        {{}, {}, "nothing"},
        {{{0x332, 0xFF}}, {}, "nothing"},
        {{{0x3E, 1}}, {.bytes = 1, .channels = {3}}, "channel 3"},
        {{{0x17E, 0x05}, {0x10, 1}, {0x24, 1}, {0x35, 1}, {0x50, 1}},
         {.bytes = 5, .channels = {1, 2, 3, 5}},
         "channels 1-3, 5"},
        {{{tot.address, tot.mask}, {0x379, 1}, {0x37C, 1}, {0x500, 1}, {0x0F, 1}},
         {.bytes = 5, .options = {0}, .band = true, .model = true, .otherBytes = 2},
         "optional features: Time Out Timer[s]; band; model; other bytes: 2"},
    };
    for (const auto& row : cases) {
        MemoryImage a(0x2000);
        for (const auto& [address, bits] : row.flipped) {
            a(address) ^= static_cast<std::uint8_t>(bits);
        }
        const auto summary = summaryOf(find(a, MemoryImage(0x2000), {0, 0x1FFF}));
        EXPECT_EQ(summary, row.summary) << row.text;
        EXPECT_EQ(summaryText(summary), row.text);
    }
}

}  // namespace
}  // namespace k520::imageDifferences
