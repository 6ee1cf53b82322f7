// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modShowErr.h"

#include <new>
#include <stdexcept>

#include "app/Guard.h"
#include "support/ProgramFolder.h"
#include "support/SimulatedClock.h"

namespace k520::modShowErr {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

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

TEST_F(ErrorList, TakesEveryOtherExceptionAsAnErrorOfTheProgram) {
    guarded("a->b", [] { throw std::bad_alloc(); });
    guarded("a->b", [] { throw std::out_of_range("far out"); });
    guarded("a->b", [] { throw 1; });
    EXPECT_THAT(lines().at(1), AllOf(HasSubstr("出错号:  7 "), EndsWith("内存不足")));
    EXPECT_THAT(lines().at(3), AllOf(HasSubstr("出错号:  51 "), HasSubstr("far out")));
    EXPECT_THAT(lines().at(5), HasSubstr("出错号:  51 "));
}

}  // namespace
}  // namespace k520::modShowErr
