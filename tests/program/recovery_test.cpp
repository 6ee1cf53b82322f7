// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/recovery.h"

#include <random>

#include "channels/ChannelFixture.h"
#include "channels/modChEdit.h"
#include "document/encoded.h"
#include "document/history.h"
#include "document/imageDifferences.h"
#include "image/datFile.h"
#include "program/modFileCmd.h"
#include "settings/optionPanel.h"

namespace k520::recovery {
namespace {

using Texts = test::ScriptedDialogs::Texts;

class Recovery : public test::ChannelFixture {
  protected:
    void SetUp() override {
        ChannelFixture::SetUp();
        begin();
    }
    void begin() {
        // As a start does it: empty channels get their default parameters.
        modChMem::SoftDisplay();
        history::start();
        modFileCmd::setCurrentFile(folder / "fleet.dat");
        modChMem::SetConvIicDat();
        datFile::save(folder / "fleet.dat", image());
        history::markSaved();
    }
    static void type(int channel, const std::string& text) {
        grid().setText(channel, 1, text);
        modChEdit::vsfgGridCh_AfterEdit(static_cast<std::int16_t>(channel), 1);
    }
    static void keepNow() {
        keep();
        wait();
    }
    /// The program is killed, and another one is started.
    void kill() {
        wait();
        const auto own = programFolder::state().own;
        resetModules();
        programFolder::state().own = own;
        modSoftFace::FillSoftFace(mdimoduMain::state().Language);
        ChannelFixture::SetUp();
        modChMem::SoftDisplay();
        history::start();
        modFileCmd::setCurrentFile(folder / "other.dat");
        history::markSaved();
    }
    std::set<std::string> copies() {
        std::set<std::string> names;
        std::error_code none;
        for (const auto& each :
             std::filesystem::recursive_directory_iterator(folder / "Recovery", none)) {
            if (each.is_regular_file()) {
                names.insert(each.path().lexically_relative(folder / "Recovery").string());
            }
        }
        return names;
    }
    test::ScriptedDialogs dialogs;
};

TEST_F(Recovery, AKilledProgramsWorkIsOfferedAsAChangeOfItsFile) {
    type(3, "446.1");
    image()(0x405) = 0x77;  // no data file holds it
    keepNow();
    kill();
    ASSERT_EQ(copies(), std::set<std::string>{"1/unsaved.bin"});
    dialogs.answers = {"ask yes"};
    offer();
    EXPECT_THAT(dialogs.take(),
                testing::ElementsAre(testing::AllOf(
                    testing::HasSubstr("fleet.dat"),
                    testing::HasSubstr("differ from the file in: channel 3; other bytes: 1"))));
    EXPECT_EQ(row(3).substr(0, 6), "446.1|");
    EXPECT_EQ(image()(0x405), 0x77);
    EXPECT_EQ(modFileCmd::state().currentFilePath, folder / "fleet.dat");
    EXPECT_TRUE(history::changed());
    EXPECT_EQ(history::savedText(3, 1), "");
    EXPECT_EQ(history::undoName(), "recover fleet.dat");
    EXPECT_EQ(copies().size(), 1U) << "it is unsaved work again";
    end();
    EXPECT_EQ(copies(), std::set<std::string>());
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Recovery, WhatIsOfferedIsWhatTheLastCopyHeld) {
    std::mt19937 random{14};
    const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    for (int life = 0; life < 20; ++life) {
        MemoryImage last;
        for (int step = 0; step < 12 || last.size() == 0; ++step) {
            switch (below(4)) {
                case 0:
                    type(1 + below(16), std::to_string(400 + below(70)));
                    break;
                case 1:
                    optionPanel::optionClicked(below(optionTable::optionCount), below(2));
                    break;
                case 2:
                    history::undo();
                    break;
                default:
                    keepNow();
                    last =
                        history::changed() ? document::encoded(document::capture()) : MemoryImage();
            }
        }
        kill();
        dialogs.answers = {"ask yes"};
        offer();
        dialogs.take();
        const auto differences =
            imageDifferences::find(document::encoded(document::capture()), last, {0, 0x1FFF});
        EXPECT_EQ(imageDifferences::summaryText(imageDifferences::summaryOf(differences)),
                  "nothing")
            << life;
    }
}

TEST_F(Recovery, ACleanEndASaveAndAnUndoLeaveNothing) {
    const std::function<void()> ends[] = {end,
                                          [] {
                                              modFileCmd::SaveDatFile();
                                              keepNow();
                                          },
                                          [] {
                                              history::undo();
                                              keepNow();
                                          }};
    int number = 2;
    for (const auto& ended : ends) {
        type(++number, "446.1");
        keepNow();
        ASSERT_EQ(copies().size(), 1U);
        ended();
        EXPECT_EQ(copies(), std::set<std::string>()) << number;
    }
    offer();
}

TEST_F(Recovery, EachProgramHasItsOwnAndOnlyTheDeadAreOffered) {
    type(3, "446.1");
    keepNow();
    const auto first = state();  // the first program lives on, and keeps its folder locked
    state() = State();
    type(4, "446.2");
    keepNow();
    EXPECT_EQ(copies(), (std::set<std::string>{"1/unsaved.bin", "2/unsaved.bin"}));
    EXPECT_EQ(found().size(), 0U);
    kill();
    EXPECT_EQ(found().size(), 1U);
    modFileCmd::state().defaultFilePath = folder / "Untitled.dat";
    folder.write("fleet recovered.dat", "taken");
    dialogs.answers = {"ask no"};
    offer();
    EXPECT_THAT(dialogs.take(),
                testing::ElementsAre(testing::HasSubstr("kept as fleet recovered 2.dat.")));
    EXPECT_EQ(copies(), std::set<std::string>{"1/unsaved.bin"});
    EXPECT_FALSE(history::changed());
    EXPECT_NE(row(4).substr(0, 6), "446.2|");
    modFileCmd::openNamed(folder / "fleet recovered 2.dat");
    EXPECT_EQ(row(4).substr(0, 6), "446.2|");
}

TEST_F(Recovery, OddCopiesAreTakenOrLeftInWords) {
    type(3, "446.1");
    keepNow();
    std::filesystem::remove(folder / "fleet.dat");
    kill();
    dialogs.answers = {"ask yes"};
    offer();
    EXPECT_THAT(dialogs.take(),
                testing::ElementsAre(testing::HasSubstr("work that was never saved (fleet.dat)")));
    EXPECT_TRUE(history::changed());
    EXPECT_EQ(row(3).substr(0, 6), "446.1|");
    end();

    std::filesystem::create_directories(folder / "Recovery/7");
    folder.write("Recovery/7/unsaved.bin", "too short");
    offer();
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Recovery, ACopyThatCannotBeMadeIsToldOnce) {
    folder.write("Recovery", "in the way");
    for (int number = 3; number < 6; ++number) {
        type(number, "446.1");
        keepNow();
    }
    EXPECT_EQ(failures().size(), 1U);
    EXPECT_TRUE(std::filesystem::remove(folder / "Recovery"));
    keepNow();
    EXPECT_EQ(copies().size(), 1U);
}

}  // namespace
}  // namespace k520::recovery
