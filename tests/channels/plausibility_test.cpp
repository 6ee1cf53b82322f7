// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/plausibility.h"

#include <gtest/gtest.h>

#include <vector>

namespace k520::plausibility {
namespace {

using Bytes = std::vector<int>;

/// A configuration of 16 channels without frequencies, with so many tones that are none.
MemoryImage configuration(int senseless = 0) {
    MemoryImage image(0x2000);
    image(0x37A) = 0x13;
    image(0x37C) = 0x17;
    image(0x3F6) = 134;
    for (int i = 0; i < senseless; ++i) {
        image(0x18 + i / 2 * 0x10 + i % 2 * 2) = 1;
    }
    return image;
}

bool isOneWith(MemoryImage image, int address, const Bytes& bytes) {
    for (const int byte : bytes) {
        image(address++) = static_cast<std::uint8_t>(byte);
    }
    return looksLikeConfiguration(image);
}

// Of 64 values of the channels and ten options less than a quarter may make no sense.
TEST(Plausibility, AFewValuesMayMakeNoSense) {
    EXPECT_TRUE(looksLikeConfiguration(configuration(18)));
    EXPECT_FALSE(looksLikeConfiguration(configuration(19)));
    constexpr int rx = 0x100;
    constexpr int encode = 0x10A;
    const std::tuple<int, Bytes, bool> values[] = {{rx, {0, 0, 0, 0x10}, true},
                                                   {rx, {0x99, 0x99, 0x99, 0x09}, false},
                                                   {rx + 4, {0, 0, 0, 0x60}, true},
                                                   {rx + 4, {1, 0, 0, 0x60}, false},
                                                   {rx, {0xFF, 0xFF, 0xFF, 0xFF}, true},
                                                   {rx, {0x12, 0, 0, 0xFF}, true},
                                                   {rx, {0, 0, 0xFF, 0x44}, false},
                                                   {rx, {0, 0, 0, 0xFA}, false},
                                                   {encode, {0xFF, 0xFF}, true},
                                                   {encode, {0x9E, 0x02}, true},
                                                   {encode, {0x02, 0x9E}, false},
                                                   {encode - 2, {0x13, 0xA8}, true},
                                                   {encode - 2, {0x13, 0x48}, false},
                                                   {0x134, {9}, true},
                                                   {0x134, {10}, false}};
    for (const auto& [address, bytes, sensible] : values) {
        EXPECT_EQ(isOneWith(configuration(18), address, bytes), sensible)
            << testing::PrintToString(bytes);
    }
}

TEST(Plausibility, TheBandIsOneOfSuchRadios) {
    const std::pair<Bytes, bool> bands[] = {
        {{0x10, 0x00, 0x60, 0x00}, true},  {{0x09, 0x99, 0x60, 0x00}, false},
        {{0x10, 0x00, 0x60, 0x10}, false}, {{0x44, 0x00, 0x44, 0x00}, true},
        {{0x44, 0x10, 0x44, 0x00}, false}, {{0x4A, 0x00, 0x50, 0x00}, false},
        {{0x40, 0x00, 0xFF, 0xFF}, false}};
    for (const auto& [bytes, sensible] : bands) {
        EXPECT_EQ(isOneWith(configuration(), 0x37A, bytes), sensible)
            << testing::PrintToString(bytes);
    }
    EXPECT_TRUE(looksLikeConfiguration(MemoryImage(1039))) << "too small to be judged";
    EXPECT_FALSE(looksLikeConfiguration(MemoryImage(1040)));
}

}  // namespace
}  // namespace k520::plausibility
