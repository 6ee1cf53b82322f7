// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/optionTable.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "app/modSoftFace.h"

namespace k520::optionTable {
namespace {

TEST(OptionTable, AnyByteDecodesAndEncodesWithinTheOptionsOwnBits) {
    for (int i = 0; i < optionCount * 0x100; ++i) {
        const Option& option = optionAt(i / 0x100);
        MemoryImage image(0x400);
        std::ranges::fill(image.bytes(), std::uint8_t{0xC5});
        image(option.source[0].address) = static_cast<std::uint8_t>(i);
        MemoryImage expected = image;
        const auto value = decode(option, image);
        encode(option, value.value_or(0), image);
        EXPECT_EQ(decode(option, image), value.value_or(0)) << option.name << i % 0x100;
        for (const auto& [address, mask] : ownedBits(option)) {
            const int changed = (expected(address) ^ image(address)) & mask;
            expected(address) = static_cast<std::uint8_t>(expected(address) ^ changed);
        }
        EXPECT_TRUE(image == expected) << option.name << i % 0x100;
    }
}

TEST(OptionTable, BytesOfTheRadio) {
    constexpr int none = -1000;  // out of range
    const std::array<int, 7> rows[] = {
        // option, address, raw byte, what it means and what the next one means, a value set and
        // what it makes of the raw byte
        {0, 0x130, 20, 20, none, 3, 3},     {1, 0x134, 9, 9, none, 255, 255},
        {2, 0x3FF, 15, 15, none, 1, 1},     {3, 0x12F, 2, 2, none, 1, 1},
        {4, 0x3F6, 0x85, none, 0, -134, 0}, {4, 0x3F6, 0xA6, 32, none, 0, 0x86},
        {5, 0x3F7, 0xF7, 7, 8, 7, 0x07},    {6, 0x135, 0xFE, 0, 1, 5, 5},
        {7, 0x136, 0x80, 0, 1, 0, 0},       {8, 0x3FC, 0x81, 1, 1, 0, 0x01},
        {8, 0x3FC, 0xFE, 1, 1, 5, 0x7E},    {9, 0x3FE, 0xFC, 0, 1, 1, 0xFC},
        {9, 0x3FE, 0x06, 2, 1, 0, 0x06},    {10, 0x3D8, 0x5A, 0, 0, 3, 0x5A},
        {10, 0x3D8, 0x75, 1, 0, 0, 0x75},   {10, 0x3D8, 0x49, 2, 0, 0, 0x49},
        {10, 0x3D8, 0xA8, 3, 0, 0, 0xA8},   {10, 0x3D3, 0xC5, 3, 3, 0, 0xC5},
        {10, 0x3D3, 0x7F, 1, 2, 0, 0x7F},   {11, 0x131, 10, 10, none, 0, 0},
        {12, 0x13A, 10, 10, none, 0, 0},    {13, 0x13B, 5, 5, none, 0, 0},
        {14, 0x138, 1, 1, none, 0, 0},      {15, 0x3FE, 0x07, 1, 0, 0, 0x03}};
    for (const auto& [number, address, raw, value, next, written, byte] : rows) {
        const Option& option = optionAt(number);
        SCOPED_TRACE(fmt::format("{} {}", option.name, raw));
        MemoryImage image(0x400);
        image(address) = static_cast<std::uint8_t>(raw + 1);
        EXPECT_EQ(decode(option, image).value_or(none), next);
        image(address) = static_cast<std::uint8_t>(raw);
        EXPECT_EQ(decode(option, image).value_or(none), value);
        encode(option, static_cast<std::int16_t>(written), image);
        EXPECT_EQ(image(address), byte);
    }
    EXPECT_EQ(ownedBits(optionAt(10)), (std::vector<ImageBits>{{0x3D8, 0xFF}, {0x3D3, 0xC0}}));
}

std::string summary(const Option& option, std::int16_t language) {
    modSoftFace::FillSoftFace(language);
    const auto texts = entryTexts(option);
    return fmt::format("{}: {}: {} {}..{}", option.name, captionText(option), texts.size(),
                       texts[0], texts.back());
}

TEST(OptionTable, TextsInEveryLanguage) {
    std::string all;
    for (const Option& option : options()) {
        all += summary(option, 3) + "; ";
        for (std::int16_t value = 0; value <= option.max; ++value) {
            EXPECT_EQ(parseValue(option, valueText(option, value)), value) << option.name;
        }
    }
    EXPECT_EQ(
        all,
        "tot: Time Out Timer[s]: 21 Off..300s; squelch: Sql: 10 0..9; volume: Volume: 16 0..15; "
        "voice: Voice Annunciation: 3 Off..English; broadcast_squelch: Radio Sql: 33 0..32; "
        "broadcast_volume: Radio Volume: 16 0..15; battery_save: Battery Save: 2 Off..On; "
        "beep: Beep: 2 Off..On; emergency_alarm: Emergency Alarm: 2 Off..On; "
        "voice_chip: An Chip Sel: 2 Male1-1..Female NA021-2; crystal: Crystal: 4 12.8MHz..26.0MHz; "
        "pre_tot: TOT Pre-Alert[s]: 11 Off..10; vox_level: VOX Gain Level: 11 Off..10; "
        "vox_delay: VOX Delay Time[s]: 6 0.3..3.0; vox_inhibit_rx: VOX inhibit on Rx: 2 Off..On; "
        "low_battery_tx: Low Battery Tx Enable: 2 Off..On; ");
    EXPECT_EQ(valueText(optionAt(9), 2), "2");
    EXPECT_EQ(parseValue(optionAt(0), " 15S "), 1);
    EXPECT_EQ(parseValue(optionAt(13), "1.0"), 2);
    for (const char* text : {"", "21", "-1", "1.5", "x", "nan"}) {
        EXPECT_EQ(parseValue(optionAt(0), text), std::nullopt) << text;
    }
    EXPECT_EQ(summary(optionAt(9), 1), "voice_chip: 语音片选择: 2 男声1-1..女声NA021-2");
    EXPECT_EQ(summary(optionAt(0), 1), "tot: 超时定时器: 21 关..300秒");
    EXPECT_EQ(summary(optionAt(0), 2), "tot: : 21 ..300");
}

}  // namespace
}  // namespace k520::optionTable
