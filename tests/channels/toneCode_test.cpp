// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>
#include <algorithm>
#include <tuple>

#include "app/mdimoduMain.h"
#include "channels/modCtdcs.h"
#include "support/Raised.h"

namespace k520 {
namespace {

using namespace modCtdcs;
using namespace toneCode;

constexpr const char* off = "None";

TEST(ToneCode, EveryWordThatIsShownAsAToneComesBack) {
    int tones = 0;
    for (unsigned w = 0; w <= 0xFFFF; ++w) {
        const auto word = static_cast<std::uint16_t>(w);
        const auto text = toneText(word, off);
        tones += text != off ? 1 : 0;
        EXPECT_EQ(toneWord(text, off), text == off ? 0xFFFF : word) << text;
        EXPECT_EQ(normaliseTone(text), text == off ? std::nullopt : std::optional(text));
    }
    EXPECT_EQ(tones, 2650 - 600 + 1 + 512 + 512);
    const std::pair<std::uint16_t, const char*> cases[] = {
        {0x0257, off},     {0x0258, "60.0"},  {0x0A5A, "265.0"}, {0x0A5B, off}, {1234, "123.4"},
        {0x2813, "D023N"}, {0x29EC, "D754N"}, {0xA9EC, "D754I"}, {0x2A13, off}};
    for (const auto& [word, text] : cases) {
        EXPECT_EQ(toneText(word, off), text) << word;
    }
}

TEST(ToneCode, WordsOfTexts) {
    const std::tuple<const char*, int, int> cases[] = {
        // text, word, error
        {"", 0xFFFF, 0},     {"None", 0xFFFF, 0},   {"无", 0xFFFF, 0},     {"67", 0x029E, 0},
        {"6.05", 60, 0},     {"6553.5", 0xFFFF, 0}, {"6553.6", 0, 6},      {"-1", 0, 6},
        {"D023", 0xA813, 0}, {"D023n", 0xA813, 0},  {"无023N", 0x2813, 0}, {"D099N", 0x2851, 0},
        {"D023N ", 0, 9},    {"D02", 0, 13},        {"D0x3N", 0, 13}};
    for (const auto& [text, expected, error] : cases) {
        int word = 0;
        const auto convert = [&, typed = text] { return word = toneWord(typed, off); };
        EXPECT_EQ(test::raised(convert), error) << text;
        EXPECT_EQ(word, expected) << text;
    }
}

TEST(ToneCode, WhatAPersonTypes) {
    const std::pair<const char*, const char*> cases[] = {
        {"67", "67.0"},     {" 88.54 ", "88.5"}, {"59.95", "60.0"},   {"59.94", "-"},
        {"131", "131.0"},   {"023", "D023N"},    {"7541", "D754N"},   {"23", "-"},
        {"028", "-"},       {"1e300", "-"},      {"D023", "D023N"},   {"D023n", "D023N"},
        {"D023i", "D023I"}, {"D023x", "D023N"},  {"D023IN", "D023I"}, {"D02", "-"},
        {"D128N", "-"},     {"d023N", "D023N"},  {"023N", "D023N"},   {"023i", "D023I"},
        {"754 I", "D754N"}, {"02N", "-"},        {"None", "-"},       {"", "-"}};
    for (const auto& [typed, tone] : cases) {
        EXPECT_EQ(normaliseTone(typed).value_or("-"), tone) << typed;
    }
}

TEST(Ctdcs, TablesOfEveryLanguage) {
    const std::pair<std::int16_t, const char*> cases[] = {
        {1, "无"}, {2, "無"}, {9, "None"}, {0, "None"}, {3, "None"}};
    for (const auto& [language, none] : cases) {
        mdimoduMain::state().Language = language;
        GenCtdcsList();
        mdimoduMain::state().Language = 2;  // later changes do not count
        const State& s = state();
        EXPECT_EQ(s.CtdcsOffText, none);
        EXPECT_TRUE(s.CtdcsList.starts_with(none + std::string("|67.0|69.3|")));
        EXPECT_TRUE(s.CtdcsList.ends_with("|D743I|D754I"));
        EXPECT_EQ(std::ranges::count(s.CtdcsList, '|'), 260);
        EXPECT_TRUE(std::ranges::equal(s.cboGridChCtdcs, s.CtdcsText));
        for (std::size_t i = 0; i < s.CtdcsText.size(); ++i) {
            EXPECT_EQ(s.CtdcsIicDat[i].size(), 4U);
            EXPECT_EQ(std::stoi(s.CtdcsIicDat[i], nullptr, 16), toneWord(s.CtdcsText[i], none));
            EXPECT_EQ(toneIndexOf(s.CtdcsText[i]), static_cast<int>(i));
        }
    }
    const std::pair<const char*, int> places[] = {{"67.0", 1},    {"254.1", 50},  {"D023N", 51},
                                                  {"D754N", 155}, {"D023I", 156}, {"D754I", 260}};
    for (const auto& [text, index] : places) {
        EXPECT_EQ(toneIndexOf(text), index);
    }
}

}  // namespace
}  // namespace k520
