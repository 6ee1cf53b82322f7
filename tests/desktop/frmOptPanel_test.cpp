// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/frmOptPanel.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/Desktop.h"

namespace k520::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Property;

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

    /// The caption of a check box, or a list's label, length and the entry that it shows.
    static std::string shown(const QWidget& panel, const char* control) {
        const auto* list = qobject_cast<QComboBox*>(&find<QWidget>(panel, control));
        if (list == nullptr) {
            return said(panel, control);
        }
        const auto labels = panel.findChildren<QLabel*>();
        const auto label = std::ranges::find(labels, list, &QLabel::buddy);
        return fmt::format("{} {} {}", label == labels.end() ? "" : stdText((*label)->text()),
                           list->count(), stdText(list->currentText()));
    }
};

/// The options in the order of their numbers. Lists show their length and their last entry.
struct Expected {
    const char* control;
    std::int16_t last;  ///< the last entry's index
    const char* chinese;
    const char* english;
};

// clang-format off
const Expected expected[] = {
    {"cboTot", 20, "超时定时器 21 300秒", "Time Out Timer[s] 21 300s"},
    {"cboSql", 9, "对讲机静噪电平 10 9", "Sql 10 9"},
    {"cboVolume", 15, "对讲机音量 16 15", "Volume 16 15"},
    {"cboAnVoice", 2, "语音通知 3 英文", "Voice Annunciation 3 English"},
    {"cboRadioSql", 32, "收音机静噪电平 33 32", "Radio Sql 33 32"},
    {"cboRadioVolume", 15, "收音机音量 16 15", "Radio Volume 16 15"},
    {"chkBatSave", 1, "电池省电", "Battery Save"},
    {"chkBeep", 1, "哔音", "Beep"},
    {"chkEmergencyAlarm", 1, "紧急报警", "Emergency Alarm"},
    {"cboAnChipSel", 1, "语音片选择 2 女声NA021-2", "An Chip Sel 2 Female NA021-2"},
    {"cboCrystal", 3, "晶体频率 4 26.0MHz", "Crystal 4 26.0MHz"},
    {"cboPreTot", 10, "超时定时器预警[秒] 11 10", "TOT Pre-Alert[s] 11 10"},
    {"cboVoxLevel", 10, "VOX增益电平 11 10", "VOX Gain Level 11 10"},
    {"cboVoxDly", 5, "VOX延迟时间[秒] 6 3.0", "VOX Delay Time[s] 6 3.0"},
    {"cboVoxRxForbid", 1, "接收时禁止VOX 2 开", "VOX inhibit on Rx 2 On"},
    {"chkLowBatTx", 1, "低电时允许发射", "Low Battery Tx Enable"},
};
// clang-format on

TEST_F(OptPanel, ShowsEveryOptionInItsOwnControlWithItsTexts) {
    for (const int language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
        open(language);
        for (std::size_t i = 0; i < std::size(expected); ++i) {
            now(i) = expected[i].last;
        }
        optionPanel::InitOpt();
        const frmOptPanel panel;
        for (const auto& [control, last, chinese, english] : expected) {
            EXPECT_EQ(shown(panel, control),
                      language == mdimoduMain::languageChinese ? chinese : english);
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
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        auto& control = find<QWidget>(panel, expected[i].control);
        QTest::keyClick(&control, control.inherits("QComboBox") ? Qt::Key_Down : Qt::Key_Space);
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

TEST_F(OptPanel, TheWheelScrollsAndChangesNoList) {
    open();
    frmOptPanel panel;
    panel.resize(320, 200);
    ASSERT_TRUE(showActive(panel));
    auto& timer = find<QComboBox>(panel, "cboTot");
    const auto turn = [&] {
        const QPointF at = timer.rect().center();
        QWheelEvent wheel(at, timer.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        // Only a wheel that a user turns goes on to the parents of what ignores it.
        QSpontaneKeyEvent::setSpontaneous(&wheel);
        qApp->notify(&timer, &wheel);
    };
    timer.setCurrentIndex(4);
    timer.setFocus();
    turn();
    EXPECT_EQ(timer.currentIndex(), 4);
    EXPECT_GT(panel.findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
}

TEST_F(OptPanel, ShowsItsTextsWholeInANarrowPlace) {
    for (const int language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
        open(language);
        frmOptPanel panel;
        panel.resize(300, 300);
        panel.show();
        const auto* scroll = panel.findChild<QScrollArea*>();
        EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
        for (const auto* list : panel.findChildren<QComboBox*>()) {
            EXPECT_LT(list->view()->sizeHintForColumn(0) + 20, list->width());
        }
        EXPECT_NE(said(panel, "cboCrystal", "toolTip"), "") << "is never stored";
        EXPECT_EQ(said(panel, "cboTot", "toolTip"), "");
    }
}

}  // namespace
}  // namespace k520::test
