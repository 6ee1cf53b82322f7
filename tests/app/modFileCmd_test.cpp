// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include "app/modPrint.h"
#include "app/modStartUp.h"
#include "channels/ChannelFixture.h"
#include "image/datFile.h"

namespace k520 {
namespace {

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

TEST_F(FileCommands, EveryAnswerOfEveryCommand) {
    std::int16_t chinese = 1;  // in English some of the texts are the same
    modSoftFace::FillSoftFace(chinese);
    // The default image's band is in no entry of the list: New must not ask for a range.
    edit({0x25, 0x06, 0x60, 0x44}, 5, {0x13, 0x70, 0x17, 0x30});
    folder.write(mdimoduMain::defaultImageFileName, text(image()));
    folder.write(mdimoduMain::settingsFileName, "[Option]\n0=16\n3002=4\n3502=8\n");
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
    const std::string save = "save|Data File(*.dat)|*.dat|old|dat";
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
        EXPECT_EQ(state().remark.empty(), file.size() == image().size()) << state().remark;
        EXPECT_EQ(text(image()), expected) << length;
    }
}

class Paper : public test::ProgramFolder {
  protected:
    Paper() {
        mdimoduMain::state().shippedFolder = K520_SHARE_DIR;
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
    EXPECT_THAT(html, HasSubstr("a&lt;b&gt;&amp;c.dat<br>400 - 470 MHz"));
    EXPECT_THAT(html, HasSubstr("<th>Receive [MHz]</th>"));
    const std::string first = modChMem::state().vsfgGridCh.text(1, 1);
    EXPECT_THAT(html, HasSubstr("<td>1</td><td>" + first + "</td>"));
    EXPECT_THAT(html, Not(HasSubstr("<td>2</td>")));
    for (const auto& control : optionPanel::state().controls) {
        EXPECT_THAT(html, HasSubstr("<tr><td>" + control.caption + "</td><td>"));
    }
    EXPECT_THAT(html, HasSubstr("<td>Crystal</td><td>12.8MHz</td>"));
    EXPECT_THAT(html, HasSubstr("<td>Beep</td><td>On</td>"));
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
