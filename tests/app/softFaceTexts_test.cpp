// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/softFaceTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <tuple>

#include "app/RuntimeError.h"
#include "app/errTexts.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"

namespace k520 {
namespace {

/// The letter behind "&", or 0.
char mnemonic(std::string_view text) {
    const auto at = text.find('&');
    return at == text.npos || at + 1 == text.size() ? '\0'
                                                    : static_cast<char>(text[at + 1] & ~0x20);
}

TEST(SoftFaceTexts, RowsAreOrderedCompleteAndAgreeOnMnemonics) {
    int last = -1;
    for (const SoftFaceRow& row : softFaceRows()) {
        SCOPED_TRACE(row.index);
        EXPECT_GT(row.index, last);
        EXPECT_LE(row.index, 445);
        EXPECT_FALSE(row.chinese.empty() || row.english.empty());
        EXPECT_EQ(mnemonic(row.chinese), mnemonic(row.english));
        EXPECT_TRUE(row.index < 20 || row.index > 49 || mnemonic(row.english) != '\0');
        last = row.index;
    }
}

TEST(SoftFaceTexts, FillTakesTheTextsOfTheLanguage) {
    const std::tuple<std::int16_t, std::int16_t, std::map<int, std::string>> cases[] = {
        {1, 1, {{20, "文件(&F)"}, {175, "Rx：没有收到数据，请检查串口及连线！"}, {227, "无"}}},
        {9, 3, {{175, "Rx：Communication failed! No receive Data!"}, {168, ""}, {300, ""}}},
        {2, 2, {}}};
    for (const auto& [asked, taken, texts] : cases) {
        std::int16_t language = asked;
        modSoftFace::FillSoftFace(language);
        EXPECT_EQ(language, taken);
        for (const auto& text : texts) {
            EXPECT_EQ(modSoftFace::text(text.first), text.second);
        }
    }
    EXPECT_EQ(modSoftFace::state().SoftFace, modSoftFace::State{}.SoftFace);
    EXPECT_THROW(static_cast<void>(modSoftFace::text(446)), RuntimeError);
    EXPECT_THROW(static_cast<void>(modSoftFace::text(-1)), RuntimeError);
}

TEST(ErrTexts, AreAscendingAndTellTheStandardErrors) {
    const auto rows = errTexts();
    EXPECT_EQ(rows.size(), 114U);
    EXPECT_EQ(std::ranges::adjacent_find(rows, std::ranges::greater_equal{}, &ErrText::number),
              rows.end());
    EXPECT_TRUE(std::ranges::none_of(rows, &std::string_view::empty, &ErrText::text));

    const ErrText telling[] = {{9, "数组索引超出范围"}, {31037, "从文件读出时出错"}, {8, ""}};
    for (const ErrText& row : telling) {
        modShowErr::VbErrNumDes(row.number);
        EXPECT_EQ(modShowErr::state().lastDescription, row.text) << row.number;
    }
}

}  // namespace
}  // namespace k520
