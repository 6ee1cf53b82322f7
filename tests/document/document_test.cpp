// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/document.h"

#include <random>

#include "app/modSoftFace.h"
#include "channels/ChannelFixture.h"
#include "channels/bandCodec.h"
#include "channels/channelEdit.h"
#include "channels/modChEdit.h"
#include "channels/modModel.h"
#include "document/channelCsv.h"
#include "document/comparison.h"
#include "document/decoded.h"
#include "image/documentOrigin.h"
#include "settings/optionPanel.h"
#include "support/ScriptedDialogs.h"

namespace k520::document {
namespace {

class DocumentTest : public test::ChannelFixture {
  protected:
    /// All that a person sees of the configuration.
    static std::vector<std::string> shown() {
        std::vector<std::string> all;
        for (int row = 0; row < grid().rows(); ++row) {
            for (int col = 0; col < grid().columns(); ++col) {
                const auto& cell = grid().cell(row, col);
                all.push_back(cell.text);
                all.push_back(cell.background ? std::to_string(cell.background->red * 65536 +
                                                               cell.background->green * 256 +
                                                               cell.background->blue)
                                              : "");
            }
        }
        for (const auto& control : optionPanel::state().controls) {
            all.push_back(std::to_string(control.selected) + (control.checked ? "x" : ""));
        }
        const auto& model = modModel::state();
        for (const int number : {model.bandLow, model.bandHigh, model.cboModel.selected,
                                 model.cboFrequency.selected}) {
            all.push_back(std::to_string(number));
        }
        return all;
    }
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    static void put(int number, int col, int value) {
        auto channel = modChMem::ChInfo()(number);
        std::string remark;
        if (!channelEdit::give(channel, col, std::to_string(value), remark)) {
            modChEdit::takeChannel(static_cast<std::int16_t>(number), channel, remark);
        }
    }
    void edit() {
        const int channel = 1 + below(modChMem::state().ChNum);
        switch (below(7)) {
            case 0:
                put(channel, 1 + below(4), 60 + below(500));
                break;
            case 1:
                put(channel, 5 + below(4), below(3));
                break;
            case 2:
                modChMem::DelOneChannel(static_cast<std::int16_t>(channel));
                break;
            case 3:
                optionPanel::optionClicked(below(optionTable::optionCount), below(3));
                break;
            case 4:
                modModel::selectBand(below(bandCodec::customBand));
                break;
            case 5:
                modModel::acceptCustomRange("130", "400");
                break;
            default:
                modChMem::SetConvIicDat();
        }
    }
    void hostileImage() {
        for (auto& byte : image().bytes()) {
            byte = static_cast<std::uint8_t>(random_());
        }
        modIicDat::IicDatDef() = image();
        modChMem::SoftDisplay();
        optionPanel::InitOpt();
    }

    std::mt19937 random_{520};
    test::ScriptedDialogs dialogs;
};

TEST_F(DocumentTest, ComesBackWithAllThatWasShown) {
    optionPanel::InitFace();
    for (int round = 0; round < 60; ++round) {
        if (round % 3 == 0) {
            hostileImage();
        }
        for (int i = below(4); i > 0; --i) {
            edit();
        }
        const auto kept = capture();
        const auto seen = shown();
        for (int i = 0; i < 8; ++i) {
            edit();
        }
        if (round % 2 == 0) {
            hostileImage();
            EXPECT_FALSE(capture() == kept);
        }
        const auto errors = modShowErr::state().entries.size();
        const auto moment = documentOrigin::state().now;
        restore(kept);
        EXPECT_TRUE(capture() == kept) << "round " << round;
        EXPECT_EQ(shown(), seen) << "round " << round;
        EXPECT_EQ(modShowErr::state().entries.size(), errors);
        EXPECT_EQ(documentOrigin::state().now, moment);
    }
}

TEST_F(DocumentTest, EveryValueCounts) {
    void (*const changes[])() = {
        [] { modIicDat::IicDat()(0x1FFF) ^= 1; },
        [] { modIicDat::IicDatDef()(0) ^= 1; },
        [] { modChMem::state().ChInfo(16).encodeTone = "67.0"; },
        [] { modChMem::state().newChannel = modChMem::Channel(); },
        [] { ++modSysSet::state().OptNow[15]; },
        [] { ++modSysSet::state().OptDef[0]; },
        [] { ++modModel::state().bandHigh; },
        [] { modModel::state().customMin = "121"; },
    };
    const auto kept = capture();
    for (const auto change : changes) {
        change();
        EXPECT_FALSE(capture() == kept);
        restore(kept);
        EXPECT_TRUE(capture() == kept);
    }
}

TEST_F(DocumentTest, TellsWindowsOfWhatChangedAlone) {
    const auto kept = capture();
    std::vector<std::pair<int, int>> cells;
    int panels = 0;
    int forms = 0;
    const auto drawing =
        grid().onCellChanged.subscribe([&](int row, int col) { cells.emplace_back(row, col); });
    const auto following = optionPanel::state().onChange.subscribe([&] { ++panels; });
    const auto refreshing = modChMem::state().onFormRefresh.subscribe([&] { ++forms; });
    restore(kept);
    EXPECT_TRUE(cells.empty());
    EXPECT_EQ(panels + forms, 0);
    grid().setText(3, 2, "446");
    optionPanel::state().controls[0].selected = 7;
    modModel::state().bandLow = 1;
    cells.clear();
    restore(kept);
    EXPECT_EQ(cells, (std::vector<std::pair<int, int>>{{3, 2}}));
    EXPECT_EQ(panels, 1);
    EXPECT_EQ(forms, 1);
}

TEST_F(DocumentTest, AComparisonLeavesItAsItIs) {
    hostileImage();
    const auto kept = capture();
    const auto seen = shown();
    MemoryImage a(0x2000);
    MemoryImage b(0x2000);
    b(0x130) = 1;
    const auto comparison = compareImages(a, b);
    ASSERT_EQ(comparison.differences.size(), 1U);
    EXPECT_EQ(comparison.differences.front().what, "tot");
    EXPECT_TRUE(capture() == kept);
    EXPECT_EQ(shown(), seen);
}

TEST_F(DocumentTest, ChannelsAreTakenAllOrNotAtAll) {
    const Listener unheard = [](const std::string&) {};
    takeChannelCsv("channel,rx\n3,440\n", unheard);
    const auto kept = capture();
    const auto seen = shown();
    const std::string text = "channel,rx,decode\n1,145.5,67.0\n3,,\n";
    const auto made = taken(text, kept.channels, unheard);
    EXPECT_TRUE(capture() == kept);
    for (const char* wrong : {"4,446,loud\n", "1,146,\n", "17,146,\n", "4,146\n"}) {
        EXPECT_THROW(takeChannelCsv(text + wrong, unheard), Refused) << wrong;
        EXPECT_TRUE(capture() == kept) << wrong;
        EXPECT_EQ(shown(), seen);
    }
    takeChannelCsv(text, unheard);
    EXPECT_TRUE(capture().channels != kept.channels);
    EXPECT_EQ(csvOf(made.channels), channelCsv());
    EXPECT_EQ(grid().text(1, 3) + grid().text(3, 1), "67.0");
}

TEST_F(DocumentTest, AnImageMeansTheSameBesideTheTablesAndInThem) {
    for (int round = 0; round < 60; ++round) {
        MemoryImage any = image();
        const int filler = below(0x100);
        for (auto& byte : any.bytes()) {
            byte = static_cast<std::uint8_t>(round % 2 == 0 ? static_cast<int>(random_()) : filler);
        }
        if (round % 10 == 0) {
            modIicDat::sizeArrays(static_cast<std::int16_t>(below(0x400)));
            any = image();
        }
        const auto kept = capture();
        const Configuration before{kept.channels, kept.options, {}};
        const auto entries = modShowErr::state().entries.size();
        const auto found = decode(any, basisInForce(), before);
        EXPECT_TRUE(capture() == kept);
        EXPECT_EQ(modShowErr::state().entries.size(), entries);

        modIicDat::IicDat() = any;
        modChMem::SoftDisplay();
        EXPECT_TRUE(found.configuration.channels == capture().channels);
        EXPECT_EQ(found.configuration.options, modSysSet::OptNow());
        const auto& logged = modShowErr::state().entries;
        ASSERT_EQ(logged.size(), entries + found.faults.size());
        for (std::size_t i = 0; i < found.faults.size(); ++i) {
            EXPECT_EQ(logged[entries + i].number, found.faults[i].error.number());
            EXPECT_EQ(logged[entries + i].label, found.faults[i].procedure);
        }
        modIicDat::sizeArrays(0x1FFF);
    }
}

}  // namespace
}  // namespace k520::document
