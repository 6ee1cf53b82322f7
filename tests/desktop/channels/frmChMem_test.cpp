// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChMem.h"
#include "channels/bandCodec.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "desktop/Desktop.h"
#include "desktop/channels/frmCustomFre.h"
#include "image/modIicDat.h"

namespace k520 {
namespace {

class ChMem : public test::Desktop {
  protected:
    static void choose(QComboBox& list, int entry) {
        list.setCurrentIndex(entry);
        emit list.activated(entry);
    }
    static std::string band() {
        std::string bytes;
        for (int i = 0; i < bandCodec::bandLength; ++i) {
            bytes += fmt::format("{:02X}", modIicDat::IicDat()(bandCodec::bandAddress + i));
        }
        return bytes;
    }
};

TEST_F(ChMem, FollowsTheCoreAfterItsStart) {
    frmChMem window;
    start();
    window.refresh();
    EXPECT_EQ(find<QTableView>(window, "vsfgGridCh").model()->rowCount(), 16);
    auto& bands = find<QComboBox>(window, "cboFrequency");
    EXPECT_EQ(said(window, "cboModel", "currentText"), "ZEV-K520");
    EXPECT_EQ(said(window, "cboFrequency", "currentText"), "400 - 470 MHz");
    EXPECT_EQ(bands.itemText(bandCodec::customBand), QStringLiteral("Custom"));
    // What the program selects is shown and starts nothing.
    modModel::state().cboFrequency.selected = bandCodec::customBand;
    window.refresh();
    EXPECT_EQ(bands.currentIndex(), bandCodec::customBand);
    EXPECT_EQ(band(), "40004700");
}

TEST_F(ChMem, AUsersChoiceGoesToTheCore) {
    start();
    frmChMem window;
    window.show();
    auto& bands = find<QComboBox>(window, "cboFrequency");
    QTest::keyClick(&bands, Qt::Key_Up);
    EXPECT_EQ(band(), "24502460");
    EXPECT_EQ(modModel::state().bandHigh, 24'600'000);
    EXPECT_EQ(modChMem::state().vsfgGridCh.cell(1, 1).background, modChMem::overColour());
    QWheelEvent wheel({5, 5}, bands.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&bands, &wheel);
    EXPECT_EQ(band(), "24502460");
    modIicDat::IicDat()(bandCodec::modelAddress) = 7;
    choose(find<QComboBox>(window, "cboModel"), 0);
    EXPECT_EQ(modIicDat::IicDat()(bandCodec::modelAddress), 0);
}

TEST_F(ChMem, TheCustomRange) {
    /// Dialogs in which the custom range dialog does what a test says.
    struct RangeDialogs : test::ScriptedDialogs {
        void customRange() override { onRange(); }
        std::function<void()> onRange;
    };
    start();
    RangeDialogs range;
    frmChMem window;
    auto& bands = find<QComboBox>(window, "cboFrequency");
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        // low and high, null where it is cancelled; the entry and the band then
        {nullptr, nullptr, 5, "40004700"},
        {"145.12345", "150", 11, "14511500"},
        {nullptr, nullptr, 11, "14511500"},
        {"130", "125", 11, "12005200"}};
    for (const auto& [low, high, shown, stored] : cases) {
        range.onRange = [&low = low, &high = high] {
            if (low != nullptr) {
                modModel::acceptCustomRange(low, high);
            }
        };
        choose(bands, bandCodec::customBand);
        EXPECT_EQ(bands.currentIndex(), shown) << stored;
        EXPECT_EQ(modModel::state().cboFrequency.selected, shown);
        EXPECT_EQ(band(), stored);
    }
}

using Texts = test::ScriptedDialogs::Texts;

class CustomFre : public test::Desktop {
  protected:
    static std::string limits() {
        const auto& s = modModel::state();
        return fmt::format("{} {} ", s.bandLow, s.bandHigh) + s.customMin + " " + s.customMax;
    }
    const std::string question = "ask|Notice|All data will be cleared,continue?";
};

TEST_F(CustomFre, TypedFromTheKeyboard) {
    start();
    const std::tuple<const char*, const char*, int, Texts, const char*, bool> cases[] = {
        // low and high; the last key; what is asked; the limits then, and whether channels are left
        {"130", "150", Qt::Key_Escape, {}, "40000000 47000000 120 520", true},
        {"145.12345", "150", Qt::Key_Return, {"ask no"}, "14512345 15000000 145.12345 150", true},
        {"130", "x", Qt::Key_Return, {"ask no"}, "12000000 52000000 120 520", true},
        {"146", "148", Qt::Key_Return, {"ask yes"}, "14600000 14800000 146 148", false}};
    modModel::selectBand(5);
    modChMem::DelOneChannel(1);
    for (const auto& [low, high, end, answers, expected, channels] : cases) {
        frmCustomFre window;
        auto& min = find<QLineEdit>(window, "txtFreMin");
        auto& max = find<QLineEdit>(window, "txtFreMax");
        ASSERT_TRUE(showActive(window) && min.hasFocus());
        EXPECT_EQ(stdText(min.text() + max.text()),
                  modModel::state().customMin + modModel::state().customMax);
        QTest::keyClicks(&min, QLatin1String(low));
        QTest::keyClick(&min, Qt::Key_Tab);
        EXPECT_TRUE(max.hasFocus());
        QTest::keyClicks(&max, QLatin1String(high));
        dialogs.answers = answers;
        QTest::keyClick(&max, Qt::Key(end));
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(limits(), expected);
        EXPECT_EQ(dialogs.take(), Texts(answers.size(), question));
        EXPECT_EQ(modChMem::ChInfo()(1).present(), !channels) << low;
    }
    EXPECT_EQ(failures(), Texts{});
}

}  // namespace
}  // namespace k520
