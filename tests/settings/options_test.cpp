// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/programFolder.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"
#include "settings/optionTable.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

using namespace modSysSet;
using namespace optionTable;

TEST(OptionTable, AnyByteDecodesAndEncodesWithinTheOptionsOwnBits) {
    for (int i = 0; i < optionCount * 0x100; ++i) {
        const Option& option = optionAt(i / 0x100);
        MemoryImage image(0x400);
        std::ranges::fill(image.bytes(), std::uint8_t{0xC5});
        image(option.source[0].address) = static_cast<std::uint8_t>(i);
        MemoryImage expected = image;
        // What is not stored comes back as it was, and all else as another value.
        const auto value = decode(option, image).value_or(0);
        const int other = option.ownedMask == 0 ? value : (value + 1) % (option.max + 1);
        const auto stored = static_cast<std::int16_t>(other);
        encode(option, stored, image);
        EXPECT_EQ(decode(option, image), stored) << option.name << i % 0x100;
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
        {5, 0x3F7, 0xF7, 7, 8, 8, 0x08},    {6, 0x135, 0xFE, 0, 1, 5, 5},
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

std::string summary(std::string_view name, const Option& option, std::int16_t language) {
    modSoftFace::FillSoftFace(language);
    const auto texts = entryTexts(option);
    return fmt::format("{}: {}: {} {}..{}; ", name, captionText(option), texts.size(), texts[0],
                       texts.back());
}

TEST(OptionTable, TextsInEveryLanguage) {
    std::string all, chinese;
    for (const Option& option : options()) {
        chinese += summary(option.control, option, 1);
        all += summary(option.name, option, 3);
        for (std::int16_t value = 0; value <= option.max; ++value) {
            EXPECT_EQ(parseValue(option, valueText(option, value)), typedText::Entry{value})
                << option.name;
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
    EXPECT_EQ(chinese,
              "cboTot: 超时定时器: 21 关..300秒; cboSql: 对讲机静噪电平: 10 0..9; "
              "cboVolume: 对讲机音量: 16 0..15; cboAnVoice: 语音通知: 3 无..英文; "
              "cboRadioSql: 收音机静噪电平: 33 0..32; cboRadioVolume: 收音机音量: 16 0..15; "
              "chkBatSave: 电池省电: 2 关..开; chkBeep: 哔音: 2 关..开; "
              "chkEmergencyAlarm: 紧急报警: 2 关..开; "
              "cboAnChipSel: 语音片选择: 2 男声1-1..女声NA021-2; "
              "cboCrystal: 晶体频率: 4 12.8MHz..26.0MHz; "
              "cboPreTot: 超时定时器预警[秒]: 11 关..10; cboVoxLevel: VOX增益电平: 11 关..10; "
              "cboVoxDly: VOX延迟时间[秒]: 6 0.3..3.0; cboVoxRxForbid: 接收时禁止VOX: 2 关..开; "
              "chkLowBatTx: 低电时允许发射: 2 关..开; ");
    EXPECT_EQ(valueText(optionAt(9), 2), "2");
    const std::tuple<int, const char*, int, bool> meanings[] = {
        // option, text, value, and whether that is only the entry's number
        {0, " 15S ", 1, false},     {0, "60秒", 4, false}, {0, "６０ s", 4, false},
        {0, "关", 0, false},        {0, "OFF", 0, false},  {0, "15", 1, false},
        {0, "2", 2, true},          {1, "9", 9, false},    {13, "1.0", 2, false},
        {13, "1,5 秒", 3, false},   {13, "3", 3, true},    {3, "英文", 2, false},
        {10, "26,0 mhz", 3, false}, {14, "开", 1, false},  {9, "male1-1", 0, false},
        {1, "05", 5, true}};
    for (std::int16_t language = 1; language <= 3; language += 2) {
        modSoftFace::FillSoftFace(language);
        for (const auto& [number, text, value, byIndex] : meanings) {
            EXPECT_EQ(parseValue(optionAt(number), text), (typedText::Entry{value, byIndex}))
                << text << " in language " << language;
        }
    }
    for (const char* text : {"", " ", "21", "-1", "1.5", "x", "nan", "15 MHz", "61s", "1e1"}) {
        EXPECT_EQ(parseValue(optionAt(0), text), std::nullopt) << text;
    }
    EXPECT_EQ(summary("", optionAt(0), 2), ": : 21 ..300; ");
}

TEST(OptionTable, Groups) {
    modSoftFace::state() = {};
    std::string all;
    for (int group = 0; group < groupCount; ++group) {
        all += groupText(static_cast<Group>(group)) + ":";
        for (const Option* option : optionsOf(static_cast<Group>(group))) {
            all += " " + std::string(option->name);
        }
        all += "; ";
    }
    EXPECT_EQ(all,
              "Transmit: tot pre_tot low_battery_tx; Receiver: squelch volume; "
              "Voice and tones: voice beep emergency_alarm voice_chip; "
              "VOX: vox_level vox_delay vox_inhibit_rx; "
              "Broadcast receiver: broadcast_squelch broadcast_volume; "
              "Power: battery_save crystal; ");
}

class SysSet : public test::ProgramFolder {
  protected:
    SysSet() { modIicDat::sizeArrays(0x3FF); }
    void write(const std::string& lines) const { settings("[Option]\n" + lines); }
    [[nodiscard]] std::string read() const {
        return folder.read(programFolder::settingsFileName).substr(9);
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
    write("0=0\n");
    OptNowDefSol(1);
    OptNowDefSol(-1);
    EXPECT_EQ(read() + failure(), "0=0\n");
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
    modShowErr::state() = {};
    OptNowDefSol(1);
    EXPECT_TRUE(read().ends_with("\n3600= 8\n"));
    EXPECT_EQ(failure(), "modSysSet->OptNowDefSol 9");
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

TEST_F(SysSet, ShowingThePanelChangesNoValue) {
    now[0] = 21;
    now[2] = -2;
    now[3] = 2;
    def[0] = 4;
    const auto before = now;
    optionPanel::show();
    const auto& controls = optionPanel::state().controls;
    EXPECT_EQ(fmt::format("{} {}", controls[0].selected, controls[2].selected), "4 -1");
    EXPECT_TRUE(controls[3].items.empty());
    EXPECT_EQ(now, before);
    EXPECT_TRUE(modShowErr::state().entries.empty());
}

TEST_F(SysSet, PanelClicksAndFailures) {
    auto& controls = optionPanel::state().controls;
    int told = 0;
    const auto following = optionPanel::state().onChange.subscribe([&] { ++told; });
    now = {20, -1, 0, 0, 0, 0, 5};
    optionPanel::InitFace();
    optionPanel::InitOpt();
    EXPECT_EQ(controls[7].caption, "Beep");
    EXPECT_EQ(optionPanel::state().frameCaption, "Optional Features");
    EXPECT_EQ(controls[0].items.at(static_cast<std::size_t>(controls[0].selected)), "300s");
    EXPECT_TRUE(controls[6].checked);
    EXPECT_EQ(told, 2);
    std::string captions;
    for (const auto& control : controls) {
        captions += control.markedCaption + "; ";
    }
    EXPECT_EQ(captions,
              "T&ime Out Timer[s]; Sql (&J); Vo&lume; Voice &Annunciation; Radio S&ql; "
              "&Radio Volume; &Battery Save; Beep (&K); Emer&gency Alarm; An &Chip Sel; Cr&ystal; "
              "&TOT Pre-Alert[s]; VO&X Gain Level; VOX &Delay Time[s]; VOX i&nhibit on Rx; "
              "Lo&w Battery Tx Enable; ");
    const auto before = documentOrigin::state().now;
    optionPanel::optionClicked(7, 2);
    EXPECT_TRUE(controls[7].checked && now[7] == 1 && documentOrigin::state().now != before);
    optionPanel::optionClicked(3, 1);
    optionPanel::optionClicked(3, -1);
    EXPECT_EQ(controls[3].selected * 10 + now[3], -9) << "nothing is selected, nothing changes";
    optionPanel::optionClicked(3, -2);
    EXPECT_EQ(failure(), "frmChMem->optionClicked 380");
    modShowErr::state() = {};
    EXPECT_EQ(told, 6);
    optionPanel::optionClicked(6, 0);
    optionPanel::optionClicked(0, 3);
    EXPECT_EQ(fmt::format("{} {} {}{}", now[6], now[0], now[1], failure()), "0 3 -1");
    optionPanel::optionClicked(0, 21);
    EXPECT_EQ(failure(), "frmChMem->optionClicked 380");
    now[2] = def[2] = 16;
    now[3] = 2;
    optionPanel::InitOpt();
    EXPECT_EQ(failure(), "frmChMem->InitOpt: 380");
    EXPECT_EQ(controls[3].selected, -1);
}

}  // namespace
}  // namespace k520
