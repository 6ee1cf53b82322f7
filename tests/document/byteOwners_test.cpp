// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <tuple>

#include "channels/ChannelFixture.h"
#include "document/imageDifferences.h"
#include "settings/optionTable.h"

namespace k520::imageDifferences {
namespace {

using ByteOwners = test::ChannelFixture;

TEST_F(ByteOwners, EveryBitHasItsOwnAndNoNeighbours) {
    const std::string tot = optionTable::captionText(optionTable::optionAt(0));
    const std::string chip = optionTable::captionText(optionTable::optionAt(9));
    const std::string lowBattery = optionTable::captionText(optionTable::optionAt(15));
    const std::tuple<int, int, std::string> cases[] = {
        // An address, bits that differ there, whose they are.
        {0x00F, 0xFF, ""},
        {0x010, 0xFF, "Channel 1 Rx"},
        {0x013, 0x01, "Channel 1 Rx"},
        {0x014, 0xFF, "Channel 1 Tx"},
        {0x017, 0xFF, "Channel 1 Tx"},
        {0x018, 0xFF, "Channel 1 Dec"},
        {0x019, 0xFF, "Channel 1 Dec"},
        {0x01A, 0xFF, "Channel 1 Enc"},
        {0x01B, 0xFF, "Channel 1 Enc"},
        {0x01C, 0x08, "Channel 1 D"},
        {0x01C, 0xE7, "Channel 1"},
        {0x01D, 0x20, "Channel 1 A"},
        {0x01D, 0x10, "Channel 1 B"},
        {0x01D, 0x30, "Channel 1 A, Channel 1 B"},
        {0x01E, 0xFF, "Channel 1"},
        {0x01F, 0xFF, "Channel 1"},
        {0x020, 0xFF, "Channel 2 Rx"},
        {0x10F, 0xFF, "Channel 16"},
        {0x110, 0xFF, ""},
        {0x17D, 0xFF, ""},
        {0x17E, 0x81, "Channel 1 C, Channel 8 C"},
        {0x17F, 0x01, "Channel 9 C"},
        {0x17F, 0x80, "Channel 16 C"},
        {0x180, 0xFF, ""},
        {0x130, 0x01, tot},
        {0x3FE, 0x03, chip},
        {0x3FE, 0x06, chip + ", " + lowBattery},
        {0x3FE, 0x08, ""},
        {0x32F, 0xFF, ""},
        {0x330, 0xFF, "Programming stamp"},
        {0x334, 0xFF, "Programming stamp"},
        {0x335, 0xFF, ""},
        {0x378, 0xFF, ""},
        {0x379, 0xFF, "Model"},
        {0x37A, 0xFF, "Band"},
        {0x37D, 0xFF, "Band"},
        {0x37E, 0xFF, ""}};
    for (const auto& [address, bits, owner] : cases) {
        MemoryImage changed = image();
        changed(address) ^= static_cast<std::uint8_t>(bits);
        const auto found = find(image(), changed, {0, 0x1FFF});
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(ownerText(found.front()), owner) << std::hex << address << " " << bits;
    }
}

TEST_F(ByteOwners, OnlyTheRangeIsLookedAt) {
    MemoryImage changed = image();
    for (const int address : {0x0F, 0x10, 0x4F, 0x50}) {
        changed(address) = 0x5A;
    }
    const auto found = find(image(), changed, {0x10, 0x4F});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(lineText(found.front()), "0010: 00 / 5A  Channel 1 Rx");
    EXPECT_EQ(found.back().address, 0x4F);
    EXPECT_TRUE(find(image(), MemoryImage(0x0F), {0, 0x1FFF}).empty()) << "bytes of both";
}

}  // namespace
}  // namespace k520::imageDifferences
