// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/modStartUp.h"

#include <fmt/format.h>

#include "app/interfaceLock.h"
#include "app/look.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/programFolder.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "support/ProgramFolder.h"

namespace k520::modStartUp {
namespace {

using testing::HasSubstr;
using Texts = test::ScriptedDialogs::Texts;

/// A variable of the environment; its old value comes back at the end.
struct Variable {
    ~Variable() { set(old); }
    void set(const std::string& value) const { ::setenv(name, value.c_str(), 1); }
    const char* name;
    std::string old = std::getenv(name) != nullptr ? std::getenv(name) : "";
};

class StartUp : public test::ProgramFolder {
  protected:
    /// A start of a new process, to which the machine's own ports are useless.
    StartResult start() {
        resetModules();
        programFolder::state().own = home;
        programFolder::state().shipped = shipped;
        modCommun::state().portMaker = [](std::int16_t number) {
            const auto device = comPorts::devicePath(number);
            return comPorts::portForDevice(device == "virtual" ? device : "");
        };
        return Form_Load();
    }
    void startWith(const std::string& lines) {
        folder.write("Uninstall.exe", "[Setting]\nFirRun=0\n" + lines);
        EXPECT_EQ(start(), StartResult::running);
    }
    std::string settings() { return folder.read("Uninstall.exe"); }
    static std::string inForce() {
        const auto& look = look::state();
        const auto& i = modIicDat::state();
        return fmt::format("{} {} {} {} {} {} {} {} {} {}..{} {}..{} {}",
                           mdimoduMain::state().Language, modCommun::state().portNumber,
                           look.fontInUse, look.OverColor, look.DefColor,
                           interfaceLock::state().lockState, i.IicDatSpare.size(), i.toneLimit,
                           i.combinedToneLimit, i.readRange.start, i.readRange.end,
                           i.writeRange.start, i.writeRange.end, i.partialFillRange.end);
    }
    static auto reports(const std::string& label = "mdifrmMain->Form_Load") {
        return std::ranges::count(modShowErr::state().entries, label, &modShowErr::Entry::label);
    }

    const Variable all{"LC_ALL"}, messages{"LC_MESSAGES"}, lang{"LANG"};
    const std::string defaults =
        " Times New Roman Times New Roman 宋体 ShowNo 1 210 260 0..8191 0..8191 8191";
    test::TempFolder empty;
    std::filesystem::path home = folder.path();
    std::filesystem::path shipped = empty.path();
    test::ScriptedDialogs dialogs;
};

TEST_F(StartUp, FirstStartLeavesItsMarkAndTheSecondChoosesLanguageAndPort) {
    all.set("");
    messages.set("");
    lang.set("zh_CN.UTF-8");
    EXPECT_EQ(start(), StartResult::quit);
    EXPECT_TRUE(modStartUp::state().quitting);
    folder.write("Uninstall.exe", "[Setting]\nFirRun=02\n");
    EXPECT_EQ(start(), StartResult::quit);
    EXPECT_THAT(settings(), HasSubstr("FirRun=1"));
    folder.write("Uninstall.exe", settings() + "[Ports]\nCOM3=virtual\nCOM5=virtual\nCOM6=/none\n");
    EXPECT_EQ(start(), StartResult::running);
    EXPECT_THAT(settings(), AllOf(HasSubstr("FirRun=0"), HasSubstr("COM= 5")));
    EXPECT_EQ(inForce(), "1 5 宋体" + defaults.substr(16));
    shipped = K520_SHARE_DIR;
    std::filesystem::remove(folder / "Uninstall.exe");
    all.set("zh_TW");
    EXPECT_EQ(start(), StartResult::running);
    EXPECT_EQ(inForce(), "3 1 Noto Sans #F2A33A default ShowNo 8192 210 260 0..8191 0..8191 8191");
    EXPECT_TRUE(modShowErr::state().entries.empty());
    EXPECT_NE(modChMem::state().vsfgGridCh.text(1, 1), "");
    EXPECT_EQ(modMemDat::state().vsfgGridMemDat.text(0x34, 0), "0330H");
    EXPECT_TRUE(modFileCmd::state().filePanel.ends_with("/Data/Untitled.dat"));
}

TEST_F(StartUp, LocaleNames) {
    const std::pair<int, Texts> names[] = {{2052, {"zh_CN.UTF-8", "zh", "zh-Hans", "ZH_cn@x"}},
                                           {1028, {"zh_TW.Big5", "zh_HK", "zh_MO", "zh_Hant_US"}},
                                           {1033, {"en_US", "de_DE.UTF-8", "C", "zha_CN"}}};
    lang.set("ja_JP");
    for (const auto& [identifier, group] : names) {
        for (const auto& name : group) {
            all.set(name);
            EXPECT_EQ(GetSystemDefaultLCID(), identifier) << name;
        }
    }
}

TEST_F(StartUp, SettingsGoWhereTheyBelong) {
    const std::tuple<std::string, std::string, int, std::string> cases[] = {
        {"", "2 1" + defaults, 0, ""},
        {"Language=7\n", "3 1" + defaults, 0, "Language=7\n"},
        {"Language=abc\n", "3 1" + defaults, 1, "Language=abc\n"},
        {"DatNum=-5\n", "2 1" + defaults, 1, ""},
        {"COM=5\n", "2 5" + defaults, 0, "COM=5\n"},
        {"COM=5\n[Ports]\nCOM1=virtual\nCOM3=virtual\n", "2 3" + defaults, 0, "COM= 3\n"},
        {"COM=17\n[Ports]\nCOM1=virtual\n", "2 1" + defaults, 0, "COM= 1\n"},
        // As much of a text as its buffer takes.
        {"Language=00000001\nTableMaxAddr=000000000003FF\nChsFont=" + std::string(29, 'f') + "gh\n",
         "1 1 " + std::string(29, 'f') + defaults.substr(16, defaults.size() - 20) + "1023", 0, ""},
        {"Language=000000001\nTableMaxAddr=000000000003FFF\n",
         "3 1" + defaults.substr(0, defaults.size() - 4) + "1023", 0, ""},
        {"Language=1\nCOM= 2\nDatNum=1039\nChsFont=B\nCtMax=10\nDcsMax=20\nCtcDcsMax=30\n"
         "TableMaxAddr=3FF\nReadStartAddr=10\nReadEndAddr=FFFF\nWriteStartAddr=1\n"
         "WriteEndAddr=2\nChannelLock=ShowLock\n[Ports]\nCOM2=virtual\nCOM4=virtual\n",
         "1 2 B Times New Roman 宋体 ShowLock 1040 20 30 16..-1 1..2 1023", 0, "COM= 2\n"}};
    for (const auto& [lines, expected, errors, stored] : cases) {
        startWith(lines);
        EXPECT_EQ(inForce(), expected);
        EXPECT_EQ(reports(), errors) << lines;
        EXPECT_THAT(settings(), HasSubstr(stored));
    }
}

TEST_F(StartUp, EveryHostileNumberIsReportedOnceAndItsDefaultTaken) {
    const Texts keys{"Language",       "COM",           "DatNum",
                     "CtMax",          "DcsMax",        "CtcDcsMax",
                     "TableMaxAddr",   "ReadStartAddr", "ReadEndAddr",
                     "WriteStartAddr", "WriteEndAddr"};
    for (const std::string value : {"xyz", "99999", ""}) {
        startWith(fmt::format("{}={}\n", fmt::join(keys, "=" + value + "\n"), value));
        EXPECT_EQ(inForce(), "3 1" + defaults);
        ASSERT_EQ(reports(), std::ssize(keys)) << value;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            EXPECT_THAT(modShowErr::state().entries[i].source, HasSubstr(keys[i]));
            EXPECT_EQ(modShowErr::state().entries[i].number, value == "99999" ? 6 : 13);
        }
    }
}

// It would otherwise end without a word at every start.
TEST_F(StartUp, SettingsThatCannotBeReadOrWrittenDoNotEndIt) {
    const auto file = folder / "Uninstall.exe";
    const std::function<void()> arrangements[] = {
        [&] { std::filesystem::create_directory(file); },
        [&] { std::filesystem::create_symlink(file, file); },
        [&] { folder.write("Uninstall.exe", "[Setting]\nFirRun=x\n"); },
        [&] { home = folder.write("file", "") / "below"; }};
    for (const auto& arrange : arrangements) {
        std::filesystem::remove(file);
        arrange();
        EXPECT_EQ(start(), StartResult::running);
        EXPECT_GT(reports(), 0);
        EXPECT_EQ(inForce().substr(1), " 1" + defaults);
    }
}

TEST_F(StartUp, ClosingAsksUnlessQuitting) {
    startWith("Language=3\n");
    dialogs.answers = {"ask fail", "ask no", "ask yes"};
    EXPECT_FALSE(MDIForm_QueryUnload());
    EXPECT_FALSE(MDIForm_QueryUnload());
    EXPECT_EQ(modStartUp::state().exitAnswer * 10 + modStartUp::state().exiting, 70);
    EXPECT_TRUE(MDIForm_QueryUnload());
    EXPECT_EQ(modStartUp::state().exitAnswer * 10 + modStartUp::state().exiting, 61);
    EXPECT_EQ(dialogs.take(), Texts(3, "ask|Notice|Are you sure want to exit?"));
    EXPECT_EQ(reports("mdifrmMain->MDIForm_QueryUnload"), 1);
    modStartUp::state().quitting = true;
    EXPECT_TRUE(MDIForm_QueryUnload());
}

// A step that fails is reported, and the steps after it are done.
TEST_F(StartUp, WindowsHaveTheirPlacesInTheSequence) {
    folder.write("Uninstall.exe",
                 "[Setting]\nFirRun=0\nLanguage=1\nDatNum=8191\nChannelLock=ShowLock\n");
    shipped = K520_SHARE_DIR;
    std::string seen;
    const auto note = [&](const char* step) {
        const auto& channels = modChMem::state();
        seen += fmt::format("{}: text {}, font {}, rows {}, channel 1 {}, {}\n", step,
                            modSoftFace::text(SoftText::toolNew), look::state().fontInUse,
                            channels.vsfgGridCh.rows(), channels.ChInfo(1).present(),
                            interfaceLock::state().lockState);
    };
    resetModules();
    programFolder::state().own = home;
    programFolder::state().shipped = shipped;
    modSoftFace::state() = {};
    // What another program writes meanwhile does not mix with what was read.
    const auto otherSettings = [&] {
        folder.write("Uninstall.exe", "[Setting]\nFirRun=0\nLanguage=3\nDatNum=1039\n");
    };
    const WindowSteps steps{.checkLanguageItem =
                                [&] {
                                    note("language");
                                    otherSettings();
                                },
                            .setSoftFace = [&] { throw std::runtime_error("no face"); },
                            .initChannelForm = [&] { note("channels"); },
                            .showChannelForm = [&] { note("show"); },
                            .showLockState = [&] { note("lock"); }};
    EXPECT_EQ(Form_Load(steps), StartResult::running);
    EXPECT_EQ(seen,
              "language: text , font , rows 0, channel 1 false, ShowNo\n"
              "channels: text 新建, font 宋体, rows 17, channel 1 false, ShowNo\n"
              "show: text 新建, font 宋体, rows 17, channel 1 true, ShowNo\n"
              "lock: text 新建, font 宋体, rows 17, channel 1 true, ShowLock\n");
    EXPECT_EQ(modIicDat::state().DatNum, 8191);
    EXPECT_EQ(reports(), 1);
}

TEST_F(StartUp, HelpPrefersTheFileInTheProgramFolder) {
    startWith("Language=3\n");
    const std::string html = (shipped / "help" / "EngHelp.html").string();
    const std::string chm = folder.path() / "EngHelp.CHM";
    dialogs.answers = {"document ", "document fail", "document ", "document "};
    Help();
    Help();
    folder.write("EngHelp.CHM", "");
    Help();
    mdimoduMain::state().Language = 2;
    Help();
    EXPECT_EQ(
        dialogs.take(),
        (Texts{"document|" + html, "document|" + html,
               "critical|Notice|There is no program to open the help file:\n" + html,
               "document|" + chm, "document|" + (shipped / "help" / "ChtHelp.html").string()}));
    EXPECT_EQ(reports("mdifrmMain->Help"), 1);
    mdimoduMain::state().Language = 9;
    EXPECT_EQ(helpFile(), chm);
}

TEST_F(StartUp, LanguageAndGeometryAreStored) {
    startWith("Language=3\n");
    EXPECT_FALSE(SwiLangFace(3));
    EXPECT_EQ(settings(), "[Setting]\nFirRun=0\nLanguage=3\n");
    EXPECT_TRUE(SwiLangFace(1));
    SaveMdiFormShape({9000, 12000, -15, 0});
    EXPECT_EQ(settings(),
              "[Setting]\nFirRun=0\nLanguage= 1\nMdiFormHeight= 9000\nMdiFormWidth= 12000\n"
              "MdiFormLeft=-15\nMdiFormTop= 0\n");
    EXPECT_EQ(dialogs.take(),
              Texts{"question|Message|Language has changed, you need to restart the software."});
    lockChannels(true);
    EXPECT_EQ(interfaceLock::state().lockState, interfaceLock::locked);
    EXPECT_THAT(settings(), HasSubstr("ChannelLock=ShowLock\n"));
    lockChannels(false);
    EXPECT_THAT(settings(), HasSubstr("ChannelLock=ShowNo\n"));
    programFolder::state().own /= "Uninstall.exe";
    EXPECT_FALSE(SwiLangFace(3));
    EXPECT_EQ(mdimoduMain::state().Language, 1);
    EXPECT_EQ(reports("mdifrmMain->SwiLangFace"), 1);
}

}  // namespace
}  // namespace k520::modStartUp
