// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/dataLog.h"

#include <gtest/gtest.h>

#include <numeric>

namespace k520::dataLog {
namespace {

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
        EXPECT_EQ(frameLines(i % 2 == 0 ? sent : received, bytes), expected[i]);
    }
}

}  // namespace
}  // namespace k520::dataLog
