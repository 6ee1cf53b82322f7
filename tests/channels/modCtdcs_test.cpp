// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modCtdcs.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/mdimoduMain.h"

namespace k520::modCtdcs {
namespace {

TEST(Ctdcs, TablesOfEveryLanguage) {
    const std::pair<std::int16_t, const char*> cases[] = {
        {1, "无"}, {2, "無"}, {9, "None"}, {0, "None"}, {3, "None"}};
    for (const auto& [language, off] : cases) {
        mdimoduMain::state().Language = language;
        GenCtdcsList();
        mdimoduMain::state().Language = 2;  // later changes do not count
        const State& s = state();
        EXPECT_EQ(s.CtdcsOffText, off);
        EXPECT_TRUE(s.CtdcsList.starts_with(off + std::string("|67.0|69.3|")));
        EXPECT_TRUE(s.CtdcsList.ends_with("|D743I|D754I"));
        EXPECT_EQ(std::ranges::count(s.CtdcsList, '|'), 260);
        EXPECT_TRUE(std::ranges::equal(s.cboGridChCtdcs, s.CtdcsText));
        for (std::size_t i = 0; i < s.CtdcsText.size(); ++i) {
            EXPECT_EQ(s.CtdcsIicDat[i].size(), 4U);
            EXPECT_EQ(std::stoi(s.CtdcsIicDat[i], nullptr, 16),
                      toneCode::toneWord(s.CtdcsText[i], off));
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
}  // namespace k520::modCtdcs
