// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frmCustomFre.h"

#include <QLineEdit>

#include "desktop/Desktop.h"

namespace k520 {
namespace {

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
