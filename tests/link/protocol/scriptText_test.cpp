// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/scriptText.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <numeric>

#include "link/protocol/dataLog.h"
#include "support/Raised.h"

namespace k520 {
namespace {

using namespace scriptText;

TEST(ScriptText, AddressHasTheFormThatTheRadioExpects) {
    for (int address = 0; address <= highestAddress; ++address) {
        ASSERT_EQ(addressText(address),
                  fmt::format("{:X}{:X}{:02X}", address / 1024, address / 256 % 4, address % 256));
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

TEST(DataLog, FramesBecomeLines) {
    const std::string head = "00 01 02 03 ";
    const std::string data = "04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 ";
    const std::vector<std::string> expected[] = {
        {"Tx: "},
        {"Rx: 00 "},
        {"Tx: " + head},
        {"Rx: " + head, "    04 05 06 "},
        {"Tx: " + head, "    " + data},
        {"Rx: " + head, "       " + data + "13 "},
        {"Tx: " + head, "       " + data + "13 ", "    14 "}};
    const std::size_t counts[] = {0, 1, 4, 7, 19, 20, 21};
    for (std::size_t i = 0; i < std::size(counts); ++i) {
        std::vector<std::uint8_t> bytes(counts[i]);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        EXPECT_EQ(dataLog::frameLines(i % 2 == 0 ? dataLog::sent : dataLog::received, bytes),
                  expected[i]);
    }
}

}  // namespace
}  // namespace k520
