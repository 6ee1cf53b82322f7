// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/channelWords.h"

#include <gtest/gtest.h>

namespace k520::channelWords {
namespace {

struct Case {
    const char* what;
    document::ChannelPicture channel;
    const char* english;
    const char* chinese;
};

document::ChannelPicture channel(std::optional<std::int32_t> rx, std::optional<std::int32_t> tx,
                                 const char* decode, const char* encode,
                                 std::vector<document::ParameterPicture> parameters) {
    return {7, rx, tx, true, decode, encode, std::move(parameters)};
}

TEST(ChannelWords, SayWhatIsHeardAndSent) {
    constexpr std::int32_t pmr = 44'603'125;
    const std::vector<document::ParameterPicture> narrow{{5, "Bandwidth", "", 1, "Narrow"},
                                                         {6, "Power", "", 1, "Low"},
                                                         {7, "Scan", "", 0, "Off"},
                                                         {8, "BusyLock", "", 0, "Off"}};
    const std::vector<document::ParameterPicture> unusual{{5, "Mystery", "", 1, "X"},
                                                          {6, "Power", "", 9, ""},
                                                          {7, "Scan", "", 1, "On"},
                                                          {8, "BusyLock", "", 2, "Tone"}};
    const Case cases[] = {
        {"empty", channel({}, {}, "", "", narrow), "", ""},
        {"simplex", channel(pmr, pmr, "118.8", "118.8", narrow),
         "Hears 446.03125 MHz with tone 118.8 Hz, sends on the same frequency with tone 118.8 Hz, "
         "narrow, low power",
         "接收 446.03125 MHz，模拟亚音 118.8 Hz，在同一频率发射，模拟亚音 118.8 Hz，narrow带，"
         "low功率"},
        {"repeater", channel(43'865'000, 43'105'000, "None", "D023I", {}),
         "Hears 438.65000 MHz whatever the tone, sends on 431.05000 MHz with code D023I",
         "接收 438.65000 MHz，不限亚音，在 431.05000 MHz 发射，数字亚音 D023I"},
        {"receive only", channel(pmr, {}, "", "", narrow),
         "Hears 446.03125 MHz whatever the tone, never sends, narrow",
         "接收 446.03125 MHz，不限亚音，不发射，narrow带"},
        {"unusual", channel(pmr, pmr, "D754N", "None", unusual),
         "Hears 446.03125 MHz with code D754N, sends on the same frequency without a tone, "
         "scanned, busy lock: tone",
         "接收 446.03125 MHz，数字亚音 D754N，在同一频率发射，不带亚音，扫描，繁忙锁定：tone"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        {
            const SpeakingIn language(TextLanguage::english);
            EXPECT_EQ(of(c.channel), c.english);
        }
        const SpeakingIn language(TextLanguage::chinese);
        EXPECT_EQ(of(c.channel), c.chinese);
    }
}

}  // namespace
}  // namespace k520::channelWords
