// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/history.h"

#include <random>

#include "channels/ChannelFixture.h"
#include "channels/gridCells.h"
#include "channels/modChEdit.h"
#include "channels/modModel.h"
#include "document/encoded.h"
#include "settings/optionPanel.h"

namespace k520::history {
namespace {

using Kind = Place::Kind;

class HistoryTest : public test::ChannelFixture {
  protected:
    void begin() {
        optionPanel::InitOpt();
        modChMem::SetConvIicDat();
        start();
        setFile("a.dat");
        markSaved();
    }
    static void type(int channel, int column, const std::string& text) {
        grid().setText(channel, column, text);
        modChEdit::vsfgGridCh_AfterEdit(static_cast<std::int16_t>(channel),
                                        static_cast<std::int16_t>(column));
    }
};

TEST_F(HistoryTest, WhatIsShownComesBackInTheFirstRowAndInTheLast) {
    begin();
    for (const int channel : {1, 16}) {
        const auto before = row(channel);
        type(channel, 1, "446");
        const auto after = row(channel);
        EXPECT_NE(after, before);
        undo();
        EXPECT_EQ(row(channel), before) << channel;
        redo();
        EXPECT_EQ(row(channel), after) << channel;
    }
}

TEST_F(HistoryTest, EveryStepGoesBackAndForthAndSaysWhatAndWhere) {
    begin();
    struct Case {
        std::function<void()> edit;
        std::string name;
        Place place;
    };
    const std::vector<Case> cases{
        {[] { type(3, 1, "446"); }, "receive frequency of channel 3", {Kind::cell, 3, 1}},
        {[] { type(3, 2, "430"); }, "transmit frequency of channel 3", {Kind::cell, 3, 2}},
        {[] { modChEdit::cboGridChCtdcs_LostFocus(3, 3, "88.5"); },
         "receive tone of channel 3",
         {Kind::cell, 3, 3}},
        {[] { optionPanel::optionClicked(1, 7); },
         optionTable::captionText(optionTable::optionAt(1)),
         {Kind::option, 1, 0}},
        {[] { modModel::chooseBand(0); }, "band", {Kind::band, 0, 0}},
        {[] { modChEdit::openChannel(9); }, "open channel 9", {Kind::cell, 9, 1}},
        {[] {
             modIicDat::IicDat()(0x1000) = 0x5A;
             documentOrigin::edited("byte 1000");
         },
         "byte 1000",
         {Kind::byte, 0x1000, 0}},
        {[] {
             const documentOrigin::Step step("both");
             type(4, 1, "447");
             type(5, 1, "448");
         },
         "both",
         {Kind::cell, 4, 1}},
        {[] { modChMem::mnuDelAll_Click(); }, "delete all channels", {Kind::cell, 3, 1}},
    };
    std::vector<document::Document> states{document::capture()};
    for (const auto& each : cases) {
        each.edit();
        states.push_back(document::capture());
        EXPECT_EQ(undoName(), each.name);
        EXPECT_FALSE(canRedo());
    }
    for (std::size_t i = cases.size(); i-- > 0;) {
        EXPECT_EQ(undoName(), cases[i].name);
        EXPECT_EQ(undo(), cases[i].place) << cases[i].name;
        EXPECT_EQ(document::capture(), states[i]) << cases[i].name;
        EXPECT_EQ(redoName(), cases[i].name);
    }
    EXPECT_FALSE(canUndo());
    EXPECT_EQ(undo(), Place());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(redo(), cases[i].place) << cases[i].name;
        EXPECT_EQ(document::capture(), states[i + 1]) << cases[i].name;
    }
    EXPECT_FALSE(canRedo());
}

TEST_F(HistoryTest, AnEditAfterUndoingForgetsWhatWasUndone) {
    begin();
    type(1, 1, "440");
    type(2, 1, "441");
    undo();
    type(2, 1, "442");
    EXPECT_FALSE(canRedo());
    undo();
    undo();
    EXPECT_FALSE(canUndo());
    EXPECT_FALSE(changed());
}

TEST_F(HistoryTest, WhatChangesNothingIsNoStep) {
    begin();
    type(1, 1, "440");
    type(1, 1, "440");
    optionPanel::optionClicked(0, modSysSet::OptNow()[0]);
    EXPECT_EQ(state().past.size(), 1U);
}

TEST_F(HistoryTest, TheMarkComesAndGoesWithTheDifferenceFromTheFile) {
    begin();
    EXPECT_FALSE(changed());
    type(1, 1, "440.5");
    EXPECT_TRUE(changed());
    EXPECT_EQ(savedText(1, 1), "");
    EXPECT_EQ(savedText(2, 1), std::nullopt);
    type(1, 1, "");
    EXPECT_FALSE(changed()) << "typed back by hand";
    EXPECT_EQ(savedText(1, 1), std::nullopt);

    type(1, 1, "441");
    documentOrigin::saved();
    markSaved();
    EXPECT_FALSE(changed());
    undo();
    EXPECT_TRUE(changed()) << "the file holds the channel now";
    EXPECT_EQ(savedText(1, 1), "441");
    redo();
    EXPECT_FALSE(changed());
    modIicDat::IicDat()(816) ^= 0x11;
    documentOrigin::edited();
    EXPECT_FALSE(changed()) << "the programming stamp is nobody's work";
    modIicDat::IicDat()(0x1000) ^= 0x11;
    documentOrigin::edited();
    EXPECT_TRUE(changed());
}

TEST_F(HistoryTest, EachDocumentKeepsItsFile) {
    begin();
    type(1, 1, "440");
    {
        const documentOrigin::Step step("open b");
        type(1, 1, "450");
        documentOrigin::begin(documentOrigin::Origin::file);
        setFile("b.dat");
        markSaved();
    }
    EXPECT_FALSE(changed());
    EXPECT_EQ(state().past.size(), 2U);
    undo();
    EXPECT_EQ(file(), "a.dat");
    EXPECT_TRUE(changed());
    EXPECT_EQ(documentOrigin::state().origin, documentOrigin::Origin::defaults);
    undo();
    EXPECT_FALSE(changed());
    setFile("c.dat");
    redo();
    EXPECT_EQ(file(), "c.dat") << "another name is not undone";
    redo();
    EXPECT_EQ(file(), "b.dat");
    EXPECT_EQ(documentOrigin::state().origin, documentOrigin::Origin::file);
    EXPECT_FALSE(changed());
}

TEST_F(HistoryTest, ForgetsTheOldestAndSharesWhatIsEqual) {
    begin();
    for (int i = 0; i <= static_cast<int>(mostSteps); ++i) {
        optionPanel::optionClicked(1, i % 10);
    }
    EXPECT_EQ(state().past.size(), mostSteps);
    EXPECT_EQ(state().past.front().kept.image, state().past.back().kept.image);
    EXPECT_EQ(state().past.front().kept.channels, state().past.back().kept.channels);
    EXPECT_EQ(state().past.front().kept.rows, state().past.back().kept.rows);
}

TEST_F(HistoryTest, NothingIsRememberedBeforeTheStart) {
    type(1, 1, "440");
    setFile("a.dat");
    markSaved();
    EXPECT_FALSE(canUndo());
    EXPECT_FALSE(changed());
    EXPECT_EQ(file(), "");
    EXPECT_EQ(savedText(1, 1), std::nullopt);
}

TEST_F(HistoryTest, TheEncodedDocumentIsWhatSavingGives) {
    std::mt19937 random{1};
    for (auto& byte : image().bytes()) {
        byte = static_cast<std::uint8_t>(random());
    }
    modChMem::SoftDisplay();
    type(3, 1, "446.1");
    const auto encoded = document::encoded(document::capture());
    modChMem::SetConvIicDat();
    EXPECT_EQ(encoded, image());
}

}  // namespace
}  // namespace k520::history
