// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>
#include <sys/resource.h>

#include <csignal>
#include <set>

#include "app/modSoftFace.h"
#include "app/programFolder.h"
#include "base/Files.h"
#include "channels/ChannelFixture.h"
#include "channels/gridCells.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "image/datFile.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "program/modPrint.h"
#include "program/modStartUp.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"

namespace k520 {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using namespace modFileCmd;
using namespace modPrint;

using Texts = test::ScriptedDialogs::Texts;

class FileCommands : public test::ChannelFixture {
  protected:
    /// Makes a configuration of channel 3, option 1 and a band, under the path "old".
    static void edit(const Bytes& rx, std::int16_t squelch, const Bytes& band) {
        modIicDat::sizeArrays(0x1FFF);
        put(0x30, rx);
        put(0x37A, band);
        modChMem::SoftDisplay();
        modSysSet::state().OptNow[1] = squelch;
        modSysSet::OptSelToSave();
        setCurrentFile("old");
        state().lastAnswer = 0;
    }
    /// The last answer, and what the user sees: path, channel 3, option 1 and lower limit.
    static std::string inForce() {
        return fmt::format("{} {} {} {} {}", state().lastAnswer, state().filePanel,
                           grid().text(3, 1), modSysSet::OptNow()[1],
                           modModel::state().bandLow / 100'000);
    }
    static std::string text(const MemoryImage& from) {
        return {from.bytes().begin(), from.bytes().end()};
    }
    test::ScriptedDialogs dialogs;
};

TEST_F(FileCommands, TheCurrentFileIsToldAtOnce) {
    std::string told;
    const auto following = state().onFilePanel.subscribe([&] { told = state().filePanel; });
    setCurrentFile("some.dat");
    EXPECT_THAT(told, HasSubstr("some.dat"));
}

TEST_F(FileCommands, NewForgetsTheDefaultsThatAUserHasSaved) {
    modModel::selectBand(0);  // 136 to 174 MHz
    EXPECT_TRUE(gridCells::store(2, 1, "150"));
    EXPECT_TRUE(gridCells::store(2, 3, "67.0"));
    modChEdit::saveAsDefault(2);
    NewFileSol();
    EXPECT_TRUE(gridCells::store(4, 1, "151"));
    EXPECT_EQ(row(4).substr(0, 18), "151|151|None|None|");
}

TEST_F(FileCommands, EveryAnswerOfEveryCommand) {
    std::int16_t chinese = 1;  // in English some of the texts are the same
    modSoftFace::FillSoftFace(chinese);
    // The default image's band is in no entry of the list: New must not ask for a range.
    edit({0x25, 0x06, 0x60, 0x44}, 5, {0x13, 0x70, 0x17, 0x30});
    folder.write(programFolder::defaultImageFileName, text(image()));
    folder.write(programFolder::settingsFileName, "[Option]\n0=16\n3002=4\n3502=8\n");
    edit({0x00, 0x00, 0x35, 0x43}, 9, {0x24, 0x50, 0x24, 0x60});
    const std::string good = folder / "good.dat";
    datFile::save(good, image());
    const std::string lost = folder / "missing/a.dat";
    const std::string out = folder / "target.dat";
    const std::string fresh = folder / "Data/Untitled.dat";
    const std::string clear = "ask|提示|当前所有信道数据将被清除，是否继续?";
    const std::string open = "open|Data File(*.dat)|*.dat|old|";
    const std::string wrong = "critical|提示|错误的文件类型!";
    const std::string changed = "ask|提示|文件内容已经改变,想保存文件吗?";
    const std::string save = "save|Data File(*.dat)|*.dat|old|dat|old";
    const std::string failed = "critical|提示|保存文件出错!";
    const std::string unwritten = "critical|提示|写文件出错!";
    const std::string same = " 136 7 136";
    const auto range = [] { customRangeOk("145.12345", "150"); };
    const auto blocked = [&] {
        EXPECT_TRUE(std::filesystem::remove(folder / "Data")) << "it is not empty";
        folder.write("Data", "in the way");
        GenerateDatFolder();
    };
    const std::tuple<std::function<void()>, Texts, Texts, std::string, std::string> cases[] = {
        {GenerateDatFolder, {}, {}, "", "0 " + fresh + same},
        {GenerateDatFolder, {}, {}, "", "0 " + fresh + same},
        {blocked, {}, {}, "GenerateDatFolder 76", "0 " + fresh + same},
        {NewFile, {"ask no"}, {clear}, "", "7 old" + same},
        {NewFile, {"ask yes"}, {clear}, "", "6 " + fresh + " 446.00625 4 120"},
        {range, {"ask no"}, {clear}, "", "7 old 136 7 145"},
        {range, {"ask yes"}, {clear}, "", "6 " + fresh + " 446.00625 4 145"},
        {OpenFile, {"open "}, {open}, "", "0 old" + same},
        {OpenFile, {"open fail"}, {open, wrong}, "OpenFile 57", "0 old" + same},
        {OpenFile, {"open " + lost}, {open, wrong}, "OpenFile 53", "0 old" + same},
        {OpenFile, {"open /"}, {open, wrong}, "OpenFile 75", "0 old" + same},
        {OpenFile, {"open " + good}, {open}, "", "0 " + good + " 433.5 9 245"},
        {SaveFile, {"ask no"}, {changed}, "", "7 old" + same},
        {SaveFile, {"ask fail"}, {changed, failed}, "SaveFile 57", "0 old" + same},
        {SaveFile, {"ask yes", "save "}, {changed, save}, "", "6 old" + same},
        {SaveFile,
         {"ask yes", "save fail"},
         {changed, save, unwritten},
         "SaveAsFile 57",
         "6 old" + same},
        {SaveFile,
         {"ask yes", "save " + lost},
         {changed, save},
         "SaveDatFile 76",
         "6 " + lost + same},
        {SaveFile, {"ask yes", "save " + out}, {changed, save}, "", "6 " + out + same}};
    for (const auto& [command, answers, shown, error, expected] : cases) {
        edit({0x00, 0x00, 0x60, 0x13}, 7, {0x13, 0x60, 0x17, 0x40});
        // Saving has to bring these into the image.
        put(0x30, {0, 0, 0, 0});
        image()(0x134) = 0;
        dialogs.answers = answers;
        command();
        EXPECT_EQ(inForce(), std::string(expected).insert(2, "文件名:"));
        EXPECT_EQ(dialogs.take(), shown) << expected;
        EXPECT_EQ(failures(), error.empty() ? Labels{} : Labels{"mdifrmMain->" + error});
    }
    EXPECT_TRUE(state().saveAsked);
    const std::string file = folder.read("target.dat");
    EXPECT_EQ(file.substr(0x42, 2) + file.at(0x144), "\x60\x13\x07");
}

// The format's own shift must not move what the file does not hold.
TEST_F(FileCommands, ShortFilesFillOnlyWhatTheyHold) {
    for (const std::size_t length : {0U, 5U, 0x18U, 0x2FU, 0x3FFU, 0x404U, 0x410U, 0x900U}) {
        std::string file;
        std::string expected;
        for (std::size_t i = 0; i < 0x2000; ++i) {
            const std::size_t offset = i >= 0x10 && i < 0x400 ? i + 0x10 : i;
            image()(static_cast<int>(i)) = static_cast<std::uint8_t>(i % 251);
            file.append(i < length ? 1 : 0, static_cast<char>(i % 247));
            expected += static_cast<char>(offset < length ? offset % 247 : i % 251);
        }
        openNamed(folder.write("short.dat", file));
        const bool isWhole = file.size() == image().size();
        EXPECT_EQ(shownNotice().find("holds only") == std::string::npos, isWhole || length == 0);
        EXPECT_EQ(shownNotice().find("is empty") == std::string::npos, length > 0);
        EXPECT_EQ(text(image()), expected) << length;
    }
}

// What was there and would be lost is kept; what the command wrote itself is not.
TEST_F(FileCommands, OverwritingKeepsWhatTheFileHeld) {
    bool asked = false;
    const auto saveAs = [&](const std::string& name) {
        dialogs.answers = {"save " + (folder / name).string()};
        if (std::exchange(asked, false)) {
            dialogs.answers.emplace_back("ask yes");
        }
        SaveAsFile();
        dialogs.take();
        return shownRemark();
    };
    const auto edit = [](const std::string& mhz) {
        grid().setText(1, 1, mhz);
        modChEdit::vsfgGridCh_AfterEdit(1, 1);
    };
    const auto channelOf = [&](const std::string& name) {
        return fmt::format("{:02X}", static_cast<unsigned char>(folder.read(name).at(0x22)));
    };
    const std::string kept = "Saved; what a.dat held before is kept as a.dat.";
    const auto open = [&] { openNamed(folder / "a.dat"); };
    const auto read = [] { documentOrigin::begin(documentOrigin::Origin::radio); };
    // The person is asked then, and agrees.
    const auto another = [&] {
        folder.write("a.dat", "another program's");
        asked = true;
    };
    const auto nothing = [] {};
    const struct {
        std::function<void()> before;
        std::string frequency, remark;
        std::set<std::string> files;
    } steps[] = {{nothing, "441", "Saved", {"a.dat"}},
                 {nothing, "442", "Saved", {"a.dat"}},
                 {open, "443", kept + "~1~", {"a.dat", "a.dat.~1~"}},
                 {nothing, "444", "Saved", {"a.dat", "a.dat.~1~"}},
                 {open, "444", "Saved", {"a.dat", "a.dat.~1~"}},
                 {read, "445", kept + "~2~", {"a.dat", "a.dat.~1~", "a.dat.~2~"}},
                 {another, "446", kept + "~3~", {"a.dat", "a.dat.~1~", "a.dat.~2~", "a.dat.~3~"}},
                 // A copy that is there already is not made again.
                 {[&] { folder.write("a.dat", folder.read("a.dat.~3~")), read(), asked = true; },
                  "447",
                  kept + "~3~",
                  {"a.dat", "a.dat.~1~", "a.dat.~2~", "a.dat.~3~"}}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.frequency);
        step.before();
        edit(step.frequency);
        EXPECT_EQ(saveAs("a.dat"), step.remark);
        EXPECT_EQ(folder.names(), step.files);
        EXPECT_EQ(channelOf("a.dat"), step.frequency.substr(2) + "0");
    }
    EXPECT_EQ(channelOf("a.dat.~1~"), "20");
    EXPECT_EQ(channelOf("a.dat.~2~"), "40");
    EXPECT_EQ(folder.read("a.dat.~3~"), "another program's");
    // Two files in turn: each holds an own save.
    const auto before = folder.names().size();
    for (const char* mhz : {"448", "449"}) {
        edit(mhz);
        saveAs("a.dat");
        saveAs("b.dat");
    }
    EXPECT_EQ(folder.names().size(), before + 1) << "b.dat alone";
    // A longer file is kept whole, with its mode.
    folder.write("long.dat", std::string(10'000, 'x'));
    std::filesystem::permissions(folder / "long.dat", std::filesystem::perms{0600});
    saveAs("long.dat");
    EXPECT_EQ(folder.read("long.dat.~1~"), std::string(10'000, 'x'));
    EXPECT_EQ(std::filesystem::status(folder / "long.dat.~1~").permissions(),
              std::filesystem::perms{0600});
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(FileCommands, AFileThatAnotherProgramChangedIsAskedAbout) {
    modChMem::SetConvIicDat();
    datFile::save(folder / "a.dat", image());
    openNamed(folder / "a.dat");
    modChMem::SetConvIicDat();
    auto theirs = image();
    theirs(0x1000) ^= 0xFF;
    datFile::save(folder / "a.dat", theirs);
    const auto held = folder.read("a.dat");
    dialogs.answers = {"ask no", "ask yes"};
    saveAgain();
    EXPECT_EQ(folder.read("a.dat"), held);
    EXPECT_EQ(shownRemark(), "NOT saved: a.dat was left as it is");
    EXPECT_THAT(dialogs.take(), testing::ElementsAre(HasSubstr("is shown in: other bytes: 1.")));
    saveAgain();
    dialogs.take();
    EXPECT_NE(folder.read("a.dat"), held);
    EXPECT_EQ(folder.read("a.dat.~1~"), held);
    saveAgain();
    EXPECT_EQ(shownRemark(), "Saved");
}

TEST_F(FileCommands, WhatIsTooLargeForAConfigurationIsNotOverwritten) {
    folder.write("video.dat", std::string(1'000'001, 'v'));
    dialogs.answers = {"save " + (folder / "video.dat").string()};
    SaveAsFile();
    dialogs.take();
    EXPECT_THAT(shownRemark(), HasSubstr("video.dat is too large for a configuration"));
    EXPECT_EQ(folder.names(), std::set<std::string>{"video.dat"});
    EXPECT_EQ(folder.read("video.dat").size(), 1'000'001U);
    failures();
}

TEST_F(FileCommands, WhatCannotBeKeptIsNotOverwritten) {
    const std::string other(5'000, 'x');
    const auto path = folder.write("a.dat", other);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{4'096, before.rlim_max};
    dialogs.answers = {"save " + path.string()};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    SaveAsFile();
    ::setrlimit(RLIMIT_FSIZE, &before);
    dialogs.take();
    EXPECT_THAT(shownRemark(), HasSubstr("NOT saved: what a.dat holds could not be kept"));
    EXPECT_EQ(folder.read("a.dat"), other);
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.dat"});
    EXPECT_EQ(failures(), Labels{"mdifrmMain->SaveDatFile 61"});
}

TEST_F(FileCommands, WordsHoldUntilTheyAreNoLongerTrue) {
    const auto readRadio = [] { documentOrigin::begin(documentOrigin::Origin::radio); };
    const auto save = [&](const std::string& name) {
        return [this, name] {
            dialogs.answers = {"save " + name};
            SaveAsFile();
        };
    };
    const auto good = folder / "good.dat";
    const auto lost = (folder / "no/such.dat").string();
    const auto openLost = [&] { openNamed(lost); };
    const auto clear = [] { modChEdit::openChannel(2), modChMem::DelOneChannel(2); };
    const auto option = [] { optionPanel::optionClicked(1, 3); };
    const auto tone = [] { modChEdit::cboGridChCtdcs_LostFocus(1, 3, "67.0"); };
    const auto band = [] { modModel::chooseBand(3); };
    const auto byte = [] { modMemDat::SetGridMemDat(), modMemDat::typeByte(1, 1, "5A"); };
    const auto deleteAll = [] { modChMem::mnuDelAll_Click(); };
    const std::string unsaved = "Read from the radio, not saved";
    const std::tuple<std::function<void()>, std::string, std::string> steps[] = {
        {save(good), "Saved", ""},     {clear, "", ""},
        {save(good), "Saved", ""},     {option, "", ""},
        {save(good), "Saved", ""},     {tone, "", ""},
        {save(good), "Saved", ""},     {band, "", ""},
        {save(good), "Saved", ""},     {byte, "", ""},
        {save(good), "Saved", ""},     {deleteAll, "", ""},
        {save(good), "Saved", ""},     {readRadio, "", unsaved},
        {option, "", unsaved},         {save(lost), "NOT saved", unsaved},
        {clear, "NOT saved", unsaved}, {save(good), "Saved", ""},
        {openLost, "Not opened", ""},  {readRadio, "", unsaved},
        {NewFileSol, "", ""}};
    setCurrentFile(good);
    int told = 0;
    const auto following = documentOrigin::state().onChange.subscribe([&] { ++told; });
    int number = 0;
    for (const auto& [step, remark, origin] : steps) {
        SCOPED_TRACE(number++);
        const int before = told;
        step();
        EXPECT_EQ(shownRemark().substr(0, remark.empty() ? 1 : remark.size()), remark);
        EXPECT_EQ(shownOrigin(), origin);
        EXPECT_TRUE(told > before || remark.starts_with("N")) << "nobody was told";
    }
    // After a read no name is offered: the current file holds something else.
    const auto shown = dialogs.take();
    EXPECT_EQ(std::ranges::count_if(shown, [](const auto& s) { return s.ends_with("|dat|"); }), 2);
    EXPECT_THAT(shown, Contains("critical|Notice|There is no such file:\n" + lost +
                                "\n\nCheck the path and the name."));
    EXPECT_EQ(failures(), (Labels{"mdifrmMain->SaveDatFile 76", "mdifrmMain->OpenFile 53",
                                  "mdifrmMain->InitTempArray 53"}));
}

// Each kind of file that a person may open by mistake, and each good one.
TEST_F(FileCommands, AFileThatIsNoConfigurationIsNamed) {
    const auto shipped = files::read(K520_SHARE_DIR "/PL220_CV.exe", 0x2000).bytes;
    std::ranges::copy(shipped, image().bytes().begin());
    datFile::save(folder / "good.dat", image());
    const std::string good = folder.read("good.dat");
    std::string oneBad = good;
    oneBad.replace(0x20, 4, "\xAB\xCD\xEF\x44");
    std::string noise;
    for (unsigned i = 0, n = 1; i < 0x2000; ++i) {
        noise += static_cast<char>((n = n * 1664525U + 1013904223U) >> 24U);
    }
    std::string text;
    while (text.size() < 0x2000) {
        text += "channel,rx,tx,decode\n1,446.00625,446.00625,67.0\n";
    }
    const auto tuned = [&](const std::string& bcd) {
        std::string all = good;
        for (std::size_t record = 0x20; record < 0x120; record += 0x10) {
            all.replace(record, 8, bcd + bcd);
        }
        return all;
    };
    const auto filled = [](char byte) { return std::string(0x2000, byte); };
    const std::string only = "The file holds only ", senseless = "This does not look like";
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {good, {}},
        {oneBad, {}},
        {good.substr(0, 0x500), {only}},
        {good + "tail", {"The file holds 8196 bytes, more than"}},
        {"", {"The file is empty"}},
        {noise, {senseless}},
        {noise.substr(0, 0x500), {only, senseless}},
        {text, {"The file holds", senseless}},
        {tuned(std::string("\0\0\0\x60", 4)), {}},
        {tuned(std::string("\1\0\0\x60", 4)), {senseless}},
        {filled('\0'), {senseless}},
        {filled('\xFF'), {senseless}},
        {filled('\x11'), {senseless}},
        {good, {}}};
    for (const auto& [bytes, words] : cases) {
        openNamed(folder / "good.dat");
        openNamed(folder.write("file.dat", bytes));
        const std::string notice = shownNotice();
        EXPECT_EQ(notice.empty(), words.empty()) << notice;
        for (const auto& word : words) {
            EXPECT_THAT(notice, HasSubstr(word));
        }
        EXPECT_EQ(std::ranges::count(notice, '\n') + 1,
                  std::max<std::ptrdiff_t>(1, std::ssize(words)));
        folder.write("good.dat", good);
    }
    openNamed(folder.write("file.dat", noise));
    modMemDat::SetGridMemDat();
    modMemDat::typeByte(1, 1, "5A");
    EXPECT_FALSE(shownNotice().empty()) << "an edit makes no other file of it";
    documentOrigin::begin(documentOrigin::Origin::radio);
    EXPECT_TRUE(shownNotice().empty());
    failures();
}

class Paper : public test::ProgramFolder {
  protected:
    Paper() {
        programFolder::state().shipped = K520_SHARE_DIR;
        modStartUp::readSettings();
        modStartUp::prepareCore();
        modFileCmd::NewFileSol();
        optionPanel::InitFace();
        optionPanel::InitOpt();
    }
    test::ScriptedDialogs dialogs;
};

TEST_F(Paper, HoldsTheChannelsThatExistAndAllOptions) {
    modFileCmd::setCurrentFile("a<b>&c.dat");
    modChMem::DelOneChannel(2);
    const std::string html = documentHtml();
    EXPECT_THAT(html, AllOf(HasSubstr(">a&lt;b&gt;&amp;c.dat<"), HasSubstr(">400 - 470 MHz<"),
                            HasSubstr(">Unknown Time<"), HasSubstr(">VOX</b>")));
    EXPECT_THAT(html, HasSubstr(">Receive [MHz]</th>"));
    documentOrigin::begin(documentOrigin::Origin::radio);
    EXPECT_THAT(documentHtml(),
                AllOf(HasSubstr(">Read from the radio, not saved<"), Not(HasSubstr("c.dat"))));
    const std::string first = modChMem::state().vsfgGridCh.text(1, 1);
    EXPECT_THAT(html, testing::ContainsRegex(">1</td><td[^>]*>" + first + "</td>"));
    EXPECT_THAT(html, Not(HasSubstr(">2</td><td align")));
    for (const auto& control : optionPanel::state().controls) {
        EXPECT_THAT(html, HasSubstr("<tr><td>" + control.caption + "</td><td>"));
    }
    EXPECT_THAT(html, HasSubstr("<td>Crystal</td><td>12.8MHz</td>"));
    EXPECT_THAT(html, HasSubstr("<td>Beep</td><td>On</td>"));

    // Up to 24 channels leave room for the options on their page.
    auto& channels = modChMem::state();
    channels.vsfgGridCh.reset(26, 9);
    for (const std::int16_t count : {std::int16_t{24}, std::int16_t{25}}) {
        channels.ChNum = count;
        for (int n = 2; n <= count; ++n) {
            channels.ChInfo(n) = channels.ChInfo(1);
        }
        EXPECT_EQ(documentHtml().find("page-break") != std::string::npos, count > 24);
    }
}

TEST_F(Paper, APrinterThatFailsIsTold) {
    dialogs.answers = {"print ", "print fail"};
    Print();
    Print();
    const auto shown = dialogs.take();
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[0], "print|" + documentHtml());
    EXPECT_EQ(shown[2], "critical|Notice|Print occur error!");
    EXPECT_EQ(failure(), "mdifrmMain->Print 57");
}

}  // namespace
}  // namespace k520
