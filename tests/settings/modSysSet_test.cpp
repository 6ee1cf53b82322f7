// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/modSysSet.h"

#include <fmt/format.h>

#include <tuple>

#include "support/ProgramFolder.h"

namespace k520::modSysSet {
namespace {

class SysSet : public test::ProgramFolder {
  protected:
    SysSet() { modIicDat::sizeArrays(0x3FF); }
    void write(const std::string& lines) const { settings("[Option]\n" + lines); }
    [[nodiscard]] std::string read() const {
        return folder.read(mdimoduMain::settingsFileName).substr(9);
    }

    OptionSet& now = state().OptNow;
    OptionSet& def = state().OptDef;
};

TEST_F(SysSet, EveryLanguageHasItsSets) {
    write("0=2\n1001=11\n1502=12\n2001=21\n2502=22\n3001=31\n3502=32\n");
    const std::pair<std::int16_t, const char*> rows[] = {
        {2, "21 0 0 22"}, {1, "11 0 0 12"}, {3, "31 0 0 32"}, {4, "31 0 0 32"}};
    for (const auto& [language, values] : rows) {
        mdimoduMain::state().Language = language;
        OptNowDefSol(0);
        EXPECT_EQ(fmt::format("{} {} {} {}", def[0], def[1], now[0], now[1]), values);
    }
    EXPECT_EQ(mdimoduMain::state().Language, 3);
}

TEST_F(SysSet, SavesAndCopiesSets) {
    write("; mine\n0=2\n3001=7\n3002=8\n3501=1\n3502=1\n3503=9\n");
    OptNowDefSol(0);
    OptNowDefSol(4);
    OptNowDefSol(2);
    EXPECT_EQ(read(), "; mine\n0=2\n3001=7\n3002=8\n3501= 7\n3502= 8\n3503=9\n");
    now[1] = -6;
    OptNowDefSol(3);
    EXPECT_EQ(read(), "; mine\n0=2\n3001=7\n3002=-6\n3501= 7\n3502= 8\n3503=9\n");
    EXPECT_EQ(fmt::format("{}{}", def[1], failure()), "-6");
}

TEST_F(SysSet, StopsAtTheFirstBadSetting) {
    const std::tuple<const char*, int, const char*> rows[] = {
        {"0=40000\n3001=1\n", 6, "0 0 0 0"},
        {"0=3\n3001=1\n3002=x\n3003=3\n3501=4\n", 13, "1 0 0 0"},
        {"0=101\n3001=1\n3100=2\n3501=4\n", 9, "1 0 2 0"}};
    for (const auto& [settings, number, values] : rows) {
        state() = {};
        write(settings);
        OptNowDefSol(0);
        EXPECT_EQ(fmt::format("{} {} {} {}", def[0], def[2], def[99], now[0]), values);
        EXPECT_EQ(failure(), fmt::format("modSysSet->OptNowDefSol {}", number));
    }
    now[99] = 8;
    OptNowDefSol(1);
    EXPECT_TRUE(read().ends_with("\n3600= 8\n"));
    OptNowDefSol(2);
    EXPECT_TRUE(read().ends_with("\n3600= 8\n"));
}

TEST_F(SysSet, ImageAndValues) {
    modIicDat::IicDat()(0x130) = 21;
    modIicDat::IicDat()(0x3FE) = 0x07;
    def[0] = 300;
    OptSelSaveSol(1);
    EXPECT_EQ(fmt::format("{} {} {}", now[0], now[9], now[15]), "300 1 1");
    modIicDat::IicDat()(0x134) = 9;
    OptSelSaveSol(0);
    EXPECT_EQ(failure(), "modSysSet->OptSelToSave 6");
    EXPECT_EQ(modIicDat::IicDat()(0x134), 9);
    modIicDat::sizeArrays(0x3F0);
    now.fill(7);
    OptSelSaveSol(1);
    EXPECT_EQ(failure(), "modSysSet->SaveToOptSel 9");
    EXPECT_EQ(fmt::format("{} {} {}", now[1], now[2], now[3]), "0 7 7");
}

TEST_F(SysSet, PanelReportsEveryListAndTakesItsDefault) {
    now.fill(33);
    def.fill(1);
    optionPanel::InitOpt();
    std::vector<std::string> lines = modShowErr::state().listShowErr.lines();
    std::erase_if(lines, [](const auto& line) { return line.starts_with("---------2"); });
    std::vector<std::string> expected;
    for (const char* item :
         {"超时定时器     ", "静噪电平     ", "对讲机音量     ", "语音通知     ",
          "收音机静噪电平   ", "收音机音量     ", "语音片选择     ", "晶体频率     ",
          "超时预警     ", "VOX增益电平     ", "VOX延迟时间[秒]     ", "接收时禁止VOX     "}) {
        expected.push_back("        可选功能项:   出错位置: frmChMem->InitOpt->" +
                           std::string(item) + "错误类型: 不在范围内");
    }
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(optionPanel::state().controls[14].selected, 1);
    EXPECT_EQ(fmt::format("{} {} {}", now[0], now[14], now[15]), "1 1 33");
}

TEST_F(SysSet, PanelClicksAndFailures) {
    auto& controls = optionPanel::state().controls;
    now = {20, -1, 0, 0, 0, 0, 5};
    optionPanel::InitFace();
    optionPanel::InitOpt();
    EXPECT_EQ(controls[7].caption, "Beep");
    EXPECT_EQ(controls[0].items.at(static_cast<std::size_t>(controls[0].selected)), "300s");
    EXPECT_TRUE(controls[6].checked);
    optionPanel::optionClicked(6, 0);
    optionPanel::optionClicked(0, 3);
    EXPECT_EQ(fmt::format("{} {} {}{}", now[6], now[0], now[1], failure()), "0 3 -1");
    optionPanel::optionClicked(0, 21);
    EXPECT_EQ(failure(), "frmChMem->optionClicked 380");
    now[2] = def[2] = 16;
    now[3] = 2;
    optionPanel::InitOpt();
    EXPECT_EQ(failure(), "frmChMem->InitOpt: 380");
    EXPECT_EQ(controls[3].selected, 0);
}

}  // namespace
}  // namespace k520::modSysSet
