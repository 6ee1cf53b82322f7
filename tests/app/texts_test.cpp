// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <locale>
#include <memory>
#include <new>
#include <stdexcept>

#include "app/Guard.h"
#include "app/errTexts.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/softFaceTexts.h"
#include "base/causeTexts.h"
#include "base/generalDate.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using namespace modShowErr;

class ErrorList : public test::ProgramFolder {
  protected:
    static const std::vector<std::string>& lines() { return state().listShowErr.lines(); }

    test::SimulatedClock clock;
};

TEST_F(ErrorList, ShowsTwoLinesForEachFailureTheLastSelected) {
    EXPECT_FALSE(
        guarded("mdifrmMain->SeparateChar", [] { throw RuntimeError(9, "IicDat(9000)"); }));
    EXPECT_TRUE(guarded("mdifrmMain->OpenFile", [] {}));
    clock.wall = {2027, 1, 2, 3, 4, 5};
    EXPECT_FALSE(guarded("mdifrmMain->OpenFile", [] { throw RuntimeError(4711, "a.dat"); }));
    ShowOptErrMsg("cboTot");
    EXPECT_THAT(
        lines(),
        ElementsAre("---------2026-11-21 13:05:09--------",
                    "         错误:  mdifrmMain->SeparateChar     出错号:  9     出错点:  "
                    "IicDat(9000)     出错描述:  数组索引超出范围",
                    "---------2027-01-02 03:04:05--------",
                    "         错误:  mdifrmMain->OpenFile     出错号:  4711     出错点:  a.dat     "
                    "出错描述:  ",
                    "---------2027-01-02 03:04:05--------", "        可选功能项:   cboTot"));
    EXPECT_EQ(state().listShowErr.selected(), 5);
    EXPECT_EQ(state().lineCounter, 6);
    EXPECT_EQ(state().entries.at(1).label + state().entries.at(1).source,
              "mdifrmMain->OpenFilea.dat");
    EXPECT_EQ(state().entries.at(1).number + state().entries.at(2).number, 4711);
}

/// A locale whose dates are "D<day>/<day of the week>/<day of the year>" and "T<hour>", each after
/// `prefix`.
struct OwnForm : std::time_put<char> {
    explicit OwnForm(std::string before) : prefix(std::move(before)) {}
    iter_type do_put(iter_type out, std::ios_base&, char, const std::tm* time, char form,
                     char) const override {
        return fmt::format_to(
            out, "{}{}", prefix,
            form == 'x' ? fmt::format("D{}/{}/{}", time->tm_mday, time->tm_wday, time->tm_yday)
                        : fmt::format("T{}", time->tm_hour));
    }
    std::string prefix;
};

TEST(GeneralDate, IsTheLocalesFormWhereItHasOne) {
    const DateTime when{2026, 11, 23, 14, 41, 0};
    const std::string plain = "2026-11-23 14:41:00";
    const std::string date = "D23/1/326 ";
    EXPECT_EQ(generalDate::text(when, std::locale::classic()), plain);
    const std::pair<const char*, std::string> cases[] = {
        {"", date + "T14"},
        {"日", "日" + date + "日T14"},
        {"é", "é" + date + "éT14"},
        {"😀", "😀" + date + "😀T14"},
        {"\xC8\xD5", plain},
        {"\xE6\x97", plain},
        {"\xC1\x81", plain},
        {"\x80", plain},
        {"\xF4\x80\x80\x80", "\xF4\x80\x80\x80" + date + "\xF4\x80\x80\x80T14"},
        {"\xF5\x80\x80\x80", plain}};
    for (const auto& [prefix, text] : cases) {
        const std::locale locale(std::locale::classic(),
                                 std::make_unique<OwnForm>(prefix).release());
        EXPECT_EQ(generalDate::text(when, locale), text);
    }
}

TEST_F(ErrorList, TakesEveryOtherExceptionAsAnErrorOfTheProgram) {
    guarded("a->b", [] { throw std::bad_alloc(); });
    guarded("a->b", [] { throw std::out_of_range("far out"); });
    guarded("a->b", [] { throw 1; });
    EXPECT_THAT(lines().at(1), AllOf(HasSubstr("出错号:  7 "), EndsWith("内存不足")));
    EXPECT_THAT(lines().at(3), AllOf(HasSubstr("出错号:  51 "), HasSubstr("far out")));
    EXPECT_THAT(lines().at(5), HasSubstr("出错号:  51 "));
}

/// The letter after "&", or 0.
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
            EXPECT_EQ(modSoftFace::text(SoftText(text.first)), text.second);
        }
    }
    EXPECT_EQ(modSoftFace::state().SoftFace, modSoftFace::State{}.SoftFace);
    EXPECT_THROW(static_cast<void>(modSoftFace::text(SoftText(446))), RuntimeError);
    EXPECT_THROW(static_cast<void>(modSoftFace::text(SoftText(-1))), RuntimeError);
}

TEST(SoftFaceTexts, NamedTextsAreChineseInLanguageOneAndEnglishInAllOthers) {
    const std::pair<std::int16_t, const char*> cases[] = {{1, "fleet.dat：未知错误"},
                                                          {2, "fleet.dat: unknown failure"},
                                                          {3, "fleet.dat: unknown failure"},
                                                          {0, "fleet.dat: unknown failure"}};
    for (const auto& [language, expected] : cases) {
        std::int16_t asked = language;
        modSoftFace::FillSoftFace(asked);
        EXPECT_EQ(RuntimeError(1, "fleet.dat", say(texts::unknownFailure)).source(), expected)
            << language;
    }
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
