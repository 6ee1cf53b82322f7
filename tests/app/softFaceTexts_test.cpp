// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/softFaceTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

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

bool isMenu(int index) {
    return index >= 20 && index <= 49;
}

TEST(SoftFaceTexts, RowsAreOrderedCompleteAndAgreeOnMnemonics) {
    int last = -1;
    for (const SoftFaceRow& row : softFaceRows()) {
        SCOPED_TRACE(row.index);
        EXPECT_GT(row.index, last);
        EXPECT_LE(row.index, 445);
        EXPECT_FALSE(row.chinese.empty() || row.english.empty());
        EXPECT_EQ(mnemonic(row.chinese), mnemonic(row.english));
        EXPECT_TRUE(!isMenu(row.index) || mnemonic(row.english) != '\0');
        last = row.index;
    }
}

TEST(SoftFaceTexts, FillTakesTheTextsOfTheLanguage) {
    std::int16_t language = 1;
    modSoftFace::FillSoftFace(language);
    EXPECT_EQ(modSoftFace::text(20), "文件(&F)");
    EXPECT_EQ(modSoftFace::text(74), "当前所有信道数据将被清除，是否继续?");
    EXPECT_EQ(modSoftFace::text(175), "Rx：没有收到数据，请检查串口及连线！");
    EXPECT_EQ(modSoftFace::text(227), "无");

    language = 9;
    modSoftFace::FillSoftFace(language);
    EXPECT_EQ(language, 3);
    EXPECT_EQ(modSoftFace::text(79), "Communication failed,please check commuication port!");
    EXPECT_EQ(modSoftFace::text(175), "Rx：Communication failed! No receive Data!");
    EXPECT_EQ(modSoftFace::text(168), "");
    EXPECT_EQ(modSoftFace::text(300), "");

    language = 2;
    modSoftFace::FillSoftFace(language);
    EXPECT_EQ(language, 2);
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

    const ErrText telling[] = {{9, "数组索引超出范围"},
                               {35, "没有定义  子程序、函数，或属性"},
                               {380, "属性值无效"},
                               {31037, "从文件读出时出错"},
                               {8, ""}};
    for (const ErrText& row : telling) {
        modShowErr::VbErrNumDes(row.number);
        EXPECT_EQ(modShowErr::state().lastDescription, row.text) << row.number;
    }
}

}  // namespace
}  // namespace k520
