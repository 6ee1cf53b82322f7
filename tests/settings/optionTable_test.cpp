// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/optionTable.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

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
            const int others = expected(address) & ~mask;
            expected(address) = static_cast<std::uint8_t>(others | (image(address) & mask));
        }
        EXPECT_TRUE(image == expected) << option.name << i % 0x100;
    }
}

TEST(OptionTable, BytesOfTheRadio) {
    constexpr int none = -1000;
    const struct {
        const char* name;
        int address, raw;
        int value, next;    // what `raw` and `raw` + 1 mean; none = out of range
        int written, byte;  // a value, and what it makes of `raw`
    } rows[] = {{"tot", 0x130, 20, 20, none, 3, 3},
                {"squelch", 0x134, 9, 9, none, 255, 255},
                {"volume", 0x3FF, 15, 15, none, 1, 1},
                {"voice", 0x12F, 2, 2, none, 1, 1},
                {"broadcast_squelch", 0x3F6, 0x85, none, 0, -134, 0},
                {"broadcast_squelch", 0x3F6, 0xA6, 32, none, 0, 0x86},
                {"broadcast_volume", 0x3F7, 0xF7, 7, 8, 7, 0x07},
                {"battery_save", 0x135, 0xFE, 0, 1, 5, 5},
                {"beep", 0x136, 0x80, 0, 1, 0, 0},
                {"emergency_alarm", 0x3FC, 0x81, 1, 1, 0, 0x01},
                {"emergency_alarm", 0x3FC, 0xFE, 1, 1, 5, 0x7E},
                {"voice_chip", 0x3FE, 0xFC, 0, 1, 1, 0xFC},
                {"voice_chip", 0x3FE, 0x06, 2, 1, 0, 0x06},
                {"crystal", 0x3D8, 0x5A, 0, 0, 3, 0x5A},
                {"crystal", 0x3D8, 0x75, 1, 0, 0, 0x75},
                {"crystal", 0x3D8, 0x49, 2, 0, 0, 0x49},
                {"crystal", 0x3D8, 0xA8, 3, 0, 0, 0xA8},
                {"crystal", 0x3D3, 0xC5, 3, 3, 0, 0xC5},
                {"crystal", 0x3D3, 0x7F, 1, 2, 0, 0x7F},
                {"pre_tot", 0x131, 10, 10, none, 0, 0},
                {"vox_level", 0x13A, 10, 10, none, 0, 0},
                {"vox_delay", 0x13B, 5, 5, none, 0, 0},
                {"vox_inhibit_rx", 0x138, 1, 1, none, 0, 0},
                {"low_battery_tx", 0x3FE, 0x07, 1, 0, 0, 0x03}};
    for (const auto& row : rows) {
        SCOPED_TRACE(fmt::format("{} {}", row.name, row.raw));
        const Option& option = *findOption(row.name);
        MemoryImage image(0x400);
        image(row.address) = static_cast<std::uint8_t>(row.raw + 1);
        EXPECT_EQ(decode(option, image).value_or(none), row.next);
        image(row.address) = static_cast<std::uint8_t>(row.raw);
        EXPECT_EQ(decode(option, image).value_or(none), row.value);
        encode(option, static_cast<std::int16_t>(row.written), image);
        EXPECT_EQ(image(row.address), row.byte);
    }
    const std::vector<ImageBits> crystalBits{{0x3D8, 0xFF}, {0x3D3, 0xC0}};
    EXPECT_EQ(ownedBits(optionAt(10)), crystalBits);
}

std::string summary(const Option& option, std::int16_t language) {
    modSoftFace::FillSoftFace(language);
    const auto entries = entryTexts(option);
    return fmt::format("{}: {} {} .. {}", captionText(option), entries.size(), entries.front(),
                       entries.back());
}

TEST(OptionTable, TextsInEveryLanguage) {
    const struct {
        const char *name, *english, *chinese;
    } rows[] = {
        {"tot", "Time Out Timer[s]: 21 Off .. 300s", "超时定时器: 21 关 .. 300秒"},
        {"squelch", "Sql: 10 0 .. 9", "对讲机静噪电平: 10 0 .. 9"},
        {"volume", "Volume: 16 0 .. 15", "对讲机音量: 16 0 .. 15"},
        {"voice", "Voice Annunciation: 3 Off .. English", "语音通知: 3 无 .. 英文"},
        {"broadcast_squelch", "Radio Sql: 33 0 .. 32", "收音机静噪电平: 33 0 .. 32"},
        {"broadcast_volume", "Radio Volume: 16 0 .. 15", "收音机音量: 16 0 .. 15"},
        {"battery_save", "Battery Save: 2 Off .. On", "电池省电: 2 关 .. 开"},
        {"beep", "Beep: 2 Off .. On", "哔音: 2 关 .. 开"},
        {"emergency_alarm", "Emergency Alarm: 2 Off .. On", "紧急报警: 2 关 .. 开"},
        {"voice_chip", "An Chip Sel: 2 Male1-1 .. Female NA021-2",
         "语音片选择: 2 男声1-1 .. 女声NA021-2"},
        {"crystal", "Crystal: 4 12.8MHz .. 26.0MHz", "晶体频率: 4 12.8MHz .. 26.0MHz"},
        {"pre_tot", "TOT Pre-Alert[s]: 11 Off .. 10", "超时定时器预警[秒]: 11 关 .. 10"},
        {"vox_level", "VOX Gain Level: 11 Off .. 10", "VOX增益电平: 11 关 .. 10"},
        {"vox_delay", "VOX Delay Time[s]: 6 0.3 .. 3.0", "VOX延迟时间[秒]: 6 0.3 .. 3.0"},
        {"vox_inhibit_rx", "VOX inhibit on Rx: 2 Off .. On", "接收时禁止VOX: 2 关 .. 开"},
        {"low_battery_tx", "Low Battery Tx Enable: 2 Off .. On", "低电时允许发射: 2 关 .. 开"},
    };
    for (const Option& option : options()) {
        const auto& row = rows[option.number];
        EXPECT_EQ(option.name, row.name);
        EXPECT_EQ(summary(option, 1), row.chinese);
        EXPECT_EQ(summary(option, 3), row.english);
        for (std::int16_t value = 0; value <= option.max; ++value) {
            EXPECT_EQ(parseValue(option, valueText(option, value)), value) << option.name;
        }
    }
    EXPECT_EQ(valueText(optionAt(9), 2), "2");
    EXPECT_EQ(parseValue(optionAt(0), " 15S "), 1);
    EXPECT_EQ(parseValue(optionAt(13), "1.0"), 2) << "a text goes before an index";
    EXPECT_EQ(summary(optionAt(0), 2), ": 21  .. 300");
    for (const char* text : {"", "21", "-1", "1.5", "x", "nan"}) {
        EXPECT_EQ(parseValue(optionAt(0), text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace k520::optionTable
