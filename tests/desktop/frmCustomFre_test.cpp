// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frmCustomFre.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "desktop/Desktop.h"
#include "desktop/qtText.h"

namespace k520 {
namespace {

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
    struct Case {
        const char* low;
        const char* high;
        int end;
        const char* answer;  ///< null: nobody asks
        const char* limits;
        bool channels;  ///< of before
    };
    const Case cases[] = {
        {"130", "150", Qt::Key_Escape, nullptr, "40000000 47000000 120 520", true},
        {"145.12345", "150", Qt::Key_Return, "ask no", "14512345 15000000 145.12345 150", true},
        {"130", "x", Qt::Key_Return, "ask no", "12000000 52000000 120 520", true},
        {"146", "148", Qt::Key_Return, "ask yes", "14600000 14800000 146 148", false}};
    modModel::selectBand(5);
    modChMem::DelOneChannel(1);
    for (const auto& [low, high, end, answer, expected, channels] : cases) {
        frmCustomFre window;
        window.show();
        window.activateWindow();
        auto& min = find<QLineEdit>(window, "txtFreMin");
        auto& max = find<QLineEdit>(window, "txtFreMax");
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(min.hasFocus());
        EXPECT_EQ(stdText(min.text()), modModel::state().customMin);
        EXPECT_EQ(stdText(max.text()), modModel::state().customMax);
        QTest::keyClicks(&min, QLatin1String(low));
        QTest::keyClick(&min, Qt::Key_Tab);
        EXPECT_TRUE(max.hasFocus());
        QTest::keyClicks(&max, QLatin1String(high));
        if (answer != nullptr) {
            dialogs.answers = {answer};
        }
        QTest::keyClick(&max, Qt::Key(end));
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(limits(), expected);
        EXPECT_EQ(dialogs.take(),
                  answer != nullptr ? std::vector{question} : std::vector<std::string>{});
        EXPECT_EQ(modChMem::ChInfo()(1).present(), !channels) << low;
    }
    EXPECT_EQ(failures(), std::vector<std::string>{});
}

TEST_F(CustomFre, TextsAndButtons) {
    for (const auto& [language, texts] :
         {std::pair(1, "自定义频率范围|频率下限[MHz]|频率上限[MHz]|确定|取消"),
          {2, "||||"},
          {3, "Custom|Min [MHz]|Max [MHz]|OK|Cancel"}}) {
        start(language);
        frmCustomFre window;
        std::string all = stdText(window.windowTitle());
        for (const auto* label : window.findChildren<QLabel*>()) {
            EXPECT_NE(label->buddy(), nullptr);
            all += "|" + stdText(label->text());
        }
        auto& cancel = find<QPushButton>(window, "cmdCancel");
        all += "|" + stdText(find<QPushButton>(window, "cmdOk").text());
        EXPECT_EQ(all + "|" + stdText(cancel.text()), texts);
        window.show();
        const std::string before = limits();
        find<QLineEdit>(window, "txtFreMin").setText(QStringLiteral("136"));
        cancel.click();
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(limits(), before);
        forget();
    }
}

}  // namespace
}  // namespace k520
