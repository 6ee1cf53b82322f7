// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/scriptText.h"

#include <gtest/gtest.h>

#include "link/simRadio.h"
#include "support/Raised.h"

namespace k520::scriptText {
namespace {

TEST(ScriptText, AddressHasTheFormThatTheRadioExpects) {
    const std::pair<int, const char*> known[] = {
        {0, "0000"}, {0x3F0, "03F0"}, {0x400, "1000"}, {0x810, "2010"}, {0x1FF0, "73F0"}};
    for (const auto& [address, text] : known) {
        EXPECT_EQ(addressText(address), text);
    }
    for (int address = 0; address <= highestAddress; ++address) {
        const std::string text = addressText(address);
        ASSERT_EQ(decodeAddress(byteOfToken(text.substr(0, 2)), byteOfToken(text.substr(2))),
                  address);
    }
    for (const int outside : {-1, -32768, 16384, 32767}) {
        EXPECT_EQ(test::raised([&] { return addressText(outside); }), errNum::invalidCall);
    }
}

TEST(ScriptText, PercentsRoundTiesToEven) {
    const std::pair<int, int> blocksByEnd[] = {{0x1FFF, 512}, {0xF, 1},  {7, 1},
                                               {0x18, 2},     {0x28, 2}, {0x38, 4}};
    for (const auto& [end, blocks] : blocksByEnd) {
        EXPECT_EQ(percentBlocks(0, end), blocks) << end;
    }
    const std::array<int, 3> percents[] = {{2, 1, 97}, {3, 1, 97},  {2, 4, 26},
                                           {3, 4, 50}, {2, 512, 3}, {520, 1, 97}};
    for (const auto& [step, blocks, percent] : percents) {
        EXPECT_EQ(blockPercent(step, blocks), percent) << step;
    }
}

TEST(ScriptText, TokensThatAreNoByteAreZero) {
    EXPECT_EQ(tokens("TX0"), (std::vector<std::string>{"TX", "0"}));
    EXPECT_EQ(byteOfToken("a5"), 0xA5);
    EXPECT_EQ(byteOfToken("7"), 7);
    for (const char* text : {"0G", "G0", "-1", " 7", ""}) {
        EXPECT_EQ(byteOfToken(text), 0) << text;
    }
}

}  // namespace
}  // namespace k520::scriptText
