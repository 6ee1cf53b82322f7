// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/frmOptPanel.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/Desktop.h"
#include "desktop/qtText.h"
#include "settings/frmSysSet.h"

namespace k520::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Property;

/// What a user sees of a control: captions, a list's length and its first and last entry.
struct Expected {
    const char* control;
    const char* chinese;
    const char* english;
    int entries = 0;
    const char* chineseEnds = "";
    const char* englishEnds = "";
};

// clang-format off
const std::vector<Expected> expected{
    {"cboTot", "超时定时器", "Time Out Timer[s]", 21, "关 300秒", "Off 300s"},
    {"cboSql", "对讲机静噪电平", "Sql", 10, "0 9", "0 9"},
    {"cboVolume", "对讲机音量", "Volume", 16, "0 15", "0 15"},
    {"cboAnVoice", "语音通知", "Voice Annunciation", 3, "无 英文", "Off English"},
    {"cboRadioSql", "收音机静噪电平", "Radio Sql", 33, "0 32", "0 32"},
    {"cboRadioVolume", "收音机音量", "Radio Volume", 16, "0 15", "0 15"},
    {"chkBatSave", "电池省电", "Battery Save"},
    {"chkBeep", "哔音", "Beep"},
    {"chkEmergencyAlarm", "紧急报警", "Emergency Alarm"},
    {"cboAnChipSel", "语音片选择", "An Chip Sel", 2, "男声1-1 女声NA021-2", "Male1-1 Female NA021-2"},
    {"cboCrystal", "晶体频率", "Crystal", 4, "12.8MHz 26.0MHz", "12.8MHz 26.0MHz"},
    {"cboPreTot", "超时定时器预警[秒]", "TOT Pre-Alert[s]", 11, "关 10", "Off 10"},
    {"cboVoxLevel", "VOX增益电平", "VOX Gain Level", 11, "关 10", "Off 10"},
    {"cboVoxDly", "VOX延迟时间[秒]", "VOX Delay Time[s]", 6, "0.3 3.0", "0.3 3.0"},
    {"cboVoxRxForbid", "接收时禁止VOX", "VOX inhibit on Rx", 2, "关 开", "Off On"},
    {"chkLowBatTx", "低电时允许发射", "Low Battery Tx Enable"},
};
// clang-format on

class OptPanel : public Desktop {
  protected:
    void open(int language = mdimoduMain::languageEnglish) {
        forget();
        start(language);
        optionPanel::InitFace();
        optionPanel::InitOpt();
        ASSERT_THAT(failures(), IsEmpty());
    }
    static std::int16_t& now(std::size_t number) { return modSysSet::state().OptNow[number]; }

    /// A list's label, entries and selection or a check box's caption, in the table's terms.
    static std::string shown(const QWidget& panel, const Expected& row) {
        if (row.entries == 0) {
            return stdText(find<QCheckBox>(panel, row.control).text());
        }
        const auto& list = find<QComboBox>(panel, row.control);
        const auto labels = panel.findChildren<QLabel*>();
        const auto label = std::ranges::find(labels, &list, &QLabel::buddy);
        return stdText((label == labels.end() ? QString() : (*label)->text()) + u'|' +
                       list.itemText(0) + u' ' + list.itemText(row.entries - 1) + u'|' +
                       QString::number(list.count()) + u'|' + list.currentText());
    }
    static std::string wanted(const Expected& row, bool chinese) {
        const std::string caption = chinese ? row.chinese : row.english;
        const std::string ends = chinese ? row.chineseEnds : row.englishEnds;
        return row.entries == 0 ? caption
                                : fmt::format("{}|{}|{}|{}", caption, ends, row.entries,
                                              ends.substr(ends.find(' ') + 1));
    }
};

TEST_F(OptPanel, ShowsEveryOptionWithItsTextsAndItsLastEntry) {
    for (const int language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
        open(language);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            now(i) = static_cast<std::int16_t>(std::max(0, expected[i].entries - 1));
        }
        optionPanel::InitOpt();
        const frmOptPanel panel;
        for (const Expected& row : expected) {
            EXPECT_EQ(shown(panel, row), wanted(row, language == mdimoduMain::languageChinese));
        }
    }
}

TEST_F(OptPanel, AUsersChangeGoesIntoItsOptionAndNowhereElse) {
    open();
    modSysSet::state().OptNow.fill(0);
    now(8) = 5;
    optionPanel::InitOpt();
    const frmOptPanel panel;
    const MemoryImage image = modIicDat::IicDat();
    find<QCheckBox>(panel, "chkEmergencyAlarm").click();
    modSysSet::OptionSet wantedNow{};
    EXPECT_EQ(modSysSet::OptNow(), wantedNow) << "5 is shown as checked";
    for (std::size_t i = 0; i < expected.size(); ++i) {
        QTest::keyClick(&find<QWidget>(panel, expected[i].control),
                        expected[i].entries > 0 ? Qt::Key_Down : Qt::Key_Space);
        wantedNow[i] = 1;
        EXPECT_EQ(modSysSet::OptNow(), wantedNow) << expected[i].control;
    }
    EXPECT_EQ(modIicDat::IicDat(), image);
}

TEST_F(OptPanel, AValueOutOfRangeIsReportedAndReplacedByTheDefault) {
    open();
    modSysSet::state().OptDef.fill(1);
    modSysSet::state().OptNow.fill(33);
    optionPanel::InitOpt();
    frmOptPanel panel;
    const auto lists = panel.findChildren<QComboBox*>();
    EXPECT_EQ(modShowErr::state().listShowErr.size(), 2 * lists.size());
    EXPECT_THAT(modShowErr::state().listShowErr.lines(),
                Contains(EndsWith("frmChMem->InitOpt->语音片选择     错误类型: 不在范围内")));
    EXPECT_THAT(lists, Each(Property(&QComboBox::currentIndex, 1)));
    // Showing stores nothing, but the entry that is shown can be chosen again.
    now(1) = 77;
    panel.showState();
    EXPECT_EQ(now(1), 77);
    auto& squelch = find<QComboBox>(panel, "cboSql");
    squelch.showPopup();
    QTest::keyClick(squelch.view(), Qt::Key_Return);
    EXPECT_EQ(now(1), 1);
}

TEST_F(OptPanel, TheWheelScrollsAndChangesOnlyAListWithTheFocus) {
    open();
    frmOptPanel panel;
    panel.resize(320, 200);
    panel.show();
    panel.activateWindow();
    ASSERT_TRUE(served([&] { return panel.isActiveWindow(); }));
    auto& timer = find<QComboBox>(panel, "cboTot");
    const auto turn = [&] {
        const QPointF at = timer.rect().center();
        QWheelEvent wheel(at, timer.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        // Only a wheel that a user turns goes on to the parents of what ignores it.
        QSpontaneKeyEvent::setSpontaneous(&wheel);
        qApp->notify(&timer, &wheel);
    };
    find<QComboBox>(panel, "cboSql").setFocus();
    const int before = timer.currentIndex();
    turn();
    EXPECT_EQ(timer.currentIndex(), before);
    EXPECT_GT(panel.findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
    timer.setFocus();
    turn();
    EXPECT_EQ(timer.currentIndex(), before + 1);
}

TEST_F(OptPanel, FitsANarrowPlaceAndHasNamesInEveryLanguage) {
    for (const int language : {1, 2, 3}) {
        SCOPED_TRACE(language);
        open(language);
        frmOptPanel panel;
        panel.resize(300, 300);
        panel.show();
        EXPECT_EQ(panel.width(), 300);
        const auto* scroll = panel.findChild<QScrollArea*>();
        EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
        const int width = find<QWidget>(panel, "cboTot").width();
        for (const auto* list : panel.findChildren<QComboBox*>()) {
            EXPECT_EQ(list->width(), width);
            EXPECT_LT(list->view()->sizeHintForColumn(0) + 20, width);
            EXPECT_FALSE(list->accessibleName().isEmpty());
        }
        EXPECT_FALSE(find<QWidget>(panel, "cboCrystal").toolTip().isEmpty());
        EXPECT_TRUE(find<QWidget>(panel, "cboTot").toolTip().isEmpty());
    }
    frmSysSet window;
    window.resize(1000, 400);
    window.show();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Optional Features"));
    EXPECT_EQ(find<QGroupBox>(window, "fraOption").title(), QStringLiteral("Optional Features"));
    EXPECT_NEAR(window.panel()->geometry().center().x(), 500, 2);
    EXPECT_NEAR(window.panel()->width(), 500, 100);
}

}  // namespace
}  // namespace k520::test
