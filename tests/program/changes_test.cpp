// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/changes.h"

#include "app/interfaceLock.h"
#include "channels/ChannelFixture.h"
#include "channels/modChEdit.h"
#include "image/datFile.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"
#include "program/recentFiles.h"

namespace k520::changes {
namespace {

using Texts = test::ScriptedDialogs::Texts;
using testing::HasSubstr;

class Changes : public test::ChannelFixture {
  protected:
    void SetUp() override {
        ChannelFixture::SetUp();
        modChMem::SetConvIicDat();
        image()(0x37A) = 0x40;
        datFile::save(file, image());
        const auto bytes = image().bytes();
        folder.write(programFolder::defaultImageFileName, {bytes.begin(), bytes.end()});
        modFileCmd::state().defaultFilePath = folder / "Untitled.dat";
        history::start();
        modFileCmd::setCurrentFile(folder / "Untitled.dat");
        history::markSaved();
    }
    static void type(int channel, const std::string& text) {
        grid().setText(channel, 1, text);
        modChEdit::vsfgGridCh_AfterEdit(static_cast<std::int16_t>(channel), 1);
    }
    const std::string file = folder / "fleet.dat";
    test::ScriptedDialogs dialogs;
};

TEST_F(Changes, TheTitleNamesTheFileAndMarksWhatIsUnsaved) {
    const std::string plain = modSoftFace::text(SoftText::mainTitle);
    EXPECT_EQ(title(), plain);
    type(3, "446");
    EXPECT_EQ(title(), "Untitled.dat* - " + plain);
    dialogs.answers = {"changes drop"};
    modFileCmd::openNamed(file);
    dialogs.take();
    EXPECT_EQ(title(), "fleet.dat - " + plain);
    type(3, "446");
    EXPECT_EQ(title(), "fleet.dat* - " + plain);
    undo();
    EXPECT_EQ(title(), "fleet.dat - " + plain);
    undo();
    EXPECT_EQ(title(), "Untitled.dat* - " + plain);
    undo();
    EXPECT_EQ(title(), plain);
}

TEST_F(Changes, EveryAnswerBeforeEveryCommandThatReplacesThem) {
    const std::string other = folder / "other.dat";
    const std::string save = "save " + other;
    const struct {
        const char* name;
        std::function<void()> run;
        Texts then;  ///< what is answered once the changes may go
    } commands[] = {
        {"new", modFileCmd::NewFile, {}},
        {"open", modFileCmd::OpenFile, {"open " + file}},
        {"a dropped file", [&] { modFileCmd::openNamed(file); }, {}},
        {"exit", [] { static_cast<void>(modStartUp::MDIForm_QueryUnload()); }, {}},
    };
    const struct {
        Texts answers;
        bool leaves, saves;
    } ways[] = {
        {{"changes cancel"}, false, false},
        {{"changes drop"}, true, false},
        {{"changes save", save}, true, true},
        {{"changes save", "save "}, false, false},
        {{"changes save", "save " + (folder / "none/x.dat").string()}, false, false},
    };
    for (const auto& command : commands) {
        for (const auto& way : ways) {
            SCOPED_TRACE(std::string(command.name) + testing::PrintToString(way.answers));
            history::start();
            documentOrigin::state().origin = documentOrigin::Origin::defaults;
            modFileCmd::setCurrentFile(folder / "Untitled.dat");
            history::markSaved();
            std::filesystem::remove(other);
            modStartUp::state() = {};
            type(5, history::savedText(5, 1).value_or(row(5)).starts_with("441") ? "442" : "441");
            dialogs.answers = way.answers;
            if (way.leaves) {
                dialogs.answers.insert(dialogs.answers.end(), command.then.begin(),
                                       command.then.end());
            }
            const auto before = row(5);
            command.run();
            dialogs.take();
            EXPECT_EQ(std::filesystem::exists(other), way.saves);
            const bool gone = row(5) != before || modStartUp::state().exiting == 1;
            EXPECT_EQ(gone, way.leaves);
        }
    }
}

TEST_F(Changes, SavingAFileThatIsKnownAsksForNoName) {
    modFileCmd::openNamed(file);
    type(3, "446");
    dialogs.answers = {"changes save"};
    EXPECT_EQ(leave(), Leave::agreed);
    dialogs.take();
    EXPECT_FALSE(history::changed());
    EXPECT_EQ(leave(), Leave::nothingToAsk);
    EXPECT_TRUE(std::filesystem::exists(file + ".~1~"));
}

TEST_F(Changes, CaptionsNameTheStepAndTheLockForbidsIt) {
    EXPECT_EQ(undoCaption(), "&Undo");
    type(3, "446");
    EXPECT_EQ(undoCaption(), "&Undo: receive frequency of channel 3");
    interfaceLock::state().lockState = interfaceLock::locked;
    EXPECT_EQ(undoCaption(), "&Undo");
    EXPECT_FALSE(mayUndo());
    EXPECT_EQ(undo(), history::Place());
    EXPECT_EQ(row(3).substr(0, 3), "446");
    interfaceLock::state().lockState = interfaceLock::unlocked;
    undo();
    EXPECT_EQ(redoCaption(), "&Redo: receive frequency of channel 3");
    EXPECT_FALSE(mayUndo());
}

TEST_F(Changes, TheNewestTenFilesAreRecentOnceEach) {
    for (int i = 1; i <= 12; ++i) {
        recentFiles::add(folder / ("f" + std::to_string(i) + ".dat"));
    }
    recentFiles::add(folder / "x/../f5.dat");
    auto files = recentFiles::list();
    ASSERT_EQ(files.size(), 10U);
    EXPECT_EQ(files[0], folder / "f5.dat");
    EXPECT_EQ(files[1], folder / "f12.dat");
    EXPECT_EQ(files[9], folder / "f3.dat");
    recentFiles::remove(folder / "f12.dat");
    files = recentFiles::list();
    EXPECT_EQ(files.size(), 9U);
    EXPECT_EQ(files[1], folder / "f11.dat");
    modFileCmd::openNamed(file);
    EXPECT_EQ(recentFiles::list().at(0), file);
}

}  // namespace
}  // namespace k520::changes
