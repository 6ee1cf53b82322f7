// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors

#include <set>

#include "app/mainMenus.h"
#include "app/mdimoduMain.h"
#include "app/mnemonics.h"
#include "desktop/Desktop.h"
#include "desktop/memview/frmMemDat.h"
#include "desktop/memview/frmPartFill.h"
#include "desktop/settings/frmOptPanel.h"
#include "image/modIicDat.h"
#include "memview/modMemDat.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"

namespace k520 {
namespace {

using testing::Each;
using testing::IsEmpty;
using testing::Property;

class OptPanel : public test::Desktop {
  protected:
    void open(int language = mdimoduMain::languageEnglish) {
        resetModules();
        start(language);
        optionPanel::InitFace();
        optionPanel::InitOpt();
        ASSERT_THAT(failures(), IsEmpty());
    }
    static std::int16_t& now(int number) {
        return modSysSet::state().OptNow.at(static_cast<std::size_t>(number));
    }

    /// The letters that lead to the controls, in their order.
    static std::string lettersOf(const frmOptPanel& panel) {
        std::vector<std::string> captions;
        for (const auto* label : panel.findChildren<QLabel*>()) {
            captions.push_back(stdText(label->text()));
        }
        for (const auto* box : panel.findChildren<QCheckBox*>()) {
            captions.push_back(stdText(box->text()));
        }
        auto all = mnemonics::lettersOf(captions);
        std::ranges::sort(all);
        return all;
    }

    /// The caption of a check box, or a list's label, length and the entry that it shows.
    static std::string shown(const QWidget& panel, const char* control) {
        const auto* list = qobject_cast<QComboBox*>(&find<QWidget>(panel, control));
        if (list == nullptr) {
            return stdText(plainCaption(qText(said(panel, control))));
        }
        const auto labels = panel.findChildren<QLabel*>();
        const auto label = std::ranges::find(labels, list, &QLabel::buddy);
        return fmt::format("{} {} {}",
                           label == labels.end() ? "" : stdText(plainCaption((*label)->text())),
                           list->count(), stdText(list->currentText()));
    }
};

TEST_F(OptPanel, ShowsEveryOptionInItsOwnControlWithItsTexts) {
    for (const int language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
        open(language);
        for (const auto& option : optionTable::options()) {
            now(option.number) = option.max;
        }
        optionPanel::InitOpt();
        const frmOptPanel panel;
        for (const auto& option : optionTable::options()) {
            const auto texts = entryTexts(option);
            const bool list = option.kind == optionTable::ControlKind::list;
            EXPECT_EQ(shown(panel, option.control.data()),
                      captionText(option) +
                          (list ? fmt::format(" {} {}", texts.size(), texts.back()) : ""));
        }
        // None of them has a letter of the menus or of the lists above the channels.
        EXPECT_EQ(lettersOf(panel).size(), optionTable::options().size());
        const auto all = lettersOf(panel) + mnemonics::lettersOf(mainMenus::captions()) + "MU";
        EXPECT_EQ(std::set(all.begin(), all.end()).size(), all.size()) << all;
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
    for (std::size_t i = 0; i < optionTable::optionCount; ++i) {
        auto& control = find<QWidget>(panel, optionTable::options()[i].control.data());
        QTest::keyClick(&control, control.inherits("QComboBox") ? Qt::Key_Down : Qt::Key_Space);
        wantedNow[i] = 1;
        EXPECT_EQ(modSysSet::OptNow(), wantedNow) << i;
    }
    EXPECT_EQ(modIicDat::IicDat(), image);
}

TEST_F(OptPanel, AValueOutOfRangeIsReplacedByTheDefault) {
    open();
    modSysSet::state().OptDef.fill(1);
    modSysSet::state().OptNow.fill(33);
    optionPanel::InitOpt();
    frmOptPanel panel;
    EXPECT_THAT(panel.findChildren<QComboBox*>(), Each(Property(&QComboBox::currentIndex, 1)));
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
        for (const auto& option : optionTable::options()) {
            EXPECT_NE(said(panel, option.control.data(), "toolTip"), "");
        }
    }
}

TEST_F(OptPanel, TwoColumnsStandWhereThereIsRoom) {
    open();
    frmOptPanel panel;
    panel.show();
    const auto* scroll = panel.findChild<QScrollArea*>();
    // Where the last group begins, to the right of the first or below it.
    const auto place = [&](int width) {
        panel.resize(width, 500);
        QApplication::processEvents();
        EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width()) << width;
        const QPoint first = find<QComboBox>(panel, "cboTot").pos();
        const QPoint last = find<QComboBox>(panel, "cboCrystal").pos();
        return std::pair(last.x() > first.x() + 100, last.y() > 400);
    };
    for (const int width : {1000, 320, 1200, 300}) {
        EXPECT_EQ(place(width), std::pair(width > 900, width < 900)) << width;
    }
}

class MemDat : public test::Desktop {
  protected:
    void SetUp() override {
        start();
        window = std::make_unique<frmMemDat>();
        ASSERT_TRUE(showActive(*window));
    }
    [[nodiscard]] QTableView& table() const { return find<QTableView>(*window, "vsfgGridMemDat"); }
    [[nodiscard]] QModelIndex cell(int address) const {
        return table().model()->index(address / 16, address % 16);
    }
    [[nodiscard]] std::string shown(int address) const {
        return stdText(cell(address).data().toString());
    }
    /// The addresses around two places whose bytes are marked.
    [[nodiscard]] std::string marked() const {
        std::string all;
        for (const int address : {0x44, 0x45, 0x46, 0x1FFE, 0x1FFF}) {
            const bool red = cell(address).data(Qt::BackgroundRole) == QColor(255, 0, 0);
            all += red ? fmt::format("{:X} ", address) : "";
        }
        return all;
    }
    static std::uint8_t& byte(int address) { return modIicDat::IicDat()(address); }
    /// The window has heard of it on return: an open editor would follow its cell.
    static void put(int address, std::uint8_t value) {
        byte(address) = value;
        modMemDat::TableFreDat();
        QApplication::processEvents();
    }
    /// The open editor. A closed one is hidden, and gone only some time later.
    [[nodiscard]] QLineEdit* editor() const {
        for (auto* found : table().viewport()->findChildren<QLineEdit*>()) {
            if (found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    /// Types at a cell as a user does: the first key opens the editor.
    void type(int address, const char* keys) const {
        table().setCurrentIndex(cell(address));
        for (; *keys != '\0'; ++keys) {
            QTest::keyClick(editor() != nullptr ? static_cast<QWidget*>(editor()) : &table(),
                            *keys);
        }
    }
    /// Presses a key in the editor that closes it.
    void leave(Qt::Key key) const {
        ASSERT_NE(editor(), nullptr);
        QTest::keyClick(editor(), key);
        ASSERT_TRUE(served([&] { return editor() == nullptr; }));
    }
    std::unique_ptr<frmMemDat> window;
};

TEST_F(MemDat, ShowsTheWholeImageFromItsFirstMoment) {
    EXPECT_THAT(failures(), IsEmpty());
    EXPECT_EQ(table().model()->headerData(511, Qt::Vertical), QStringLiteral("1FF0H"));
    for (const int address : {0, 0x130, 0x1FFF}) {
        EXPECT_EQ(shown(address), fmt::format("{:02X}", byte(address)));
    }
    EXPECT_EQ(marked(), "");
    EXPECT_FALSE(table().horizontalScrollBar()->isVisible());
}

TEST_F(MemDat, ATypedByteGoesIntoTheImageInCapitals) {
    const std::pair<Qt::Key, int> ways[] = {{Qt::Key_Return, 0x13F},
                                            {Qt::Key_Enter, 0x13F},
                                            {Qt::Key_Tab, 0x130},
                                            {Qt::Key_Backtab, 0x12E}};
    for (const auto& [key, next] : ways) {
        put(0x12F, 0);
        type(0x12F, "a5");
        leave(key);
        EXPECT_TRUE(shown(0x12F) == "A5" && byte(0x12F) == 0xA5);
        EXPECT_EQ(table().currentIndex(), cell(next));
    }
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(table().currentIndex(), cell(0x13E));
    // Another cell is clicked while one is edited.
    type(0x140, "5a");
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                      table().visualRect(cell(0x125)).center());
    EXPECT_EQ(byte(0x140), 0x5A);
    EXPECT_EQ(table().currentIndex(), cell(0x125));
}

TEST_F(MemDat, WhatIsNoByteIsRefusedInTheCell) {
    put(0x20, 0x77);
    for (const char* text : {"g1", "5"}) {
        SCOPED_TRACE(text);
        type(0x20, text);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) {
            QTest::keyClick(editor(), key);
            QApplication::processEvents();
            ASSERT_NE(editor(), nullptr);
            EXPECT_NE(editor()->palette(), table().palette()) << "shows that it is refused";
        }
        leave(Qt::Key_Escape);
        EXPECT_TRUE(shown(0x20) == "77" && byte(0x20) == 0x77);
    }
    type(0x20, "4");
    QTest::keyClick(editor(), Qt::Key_Return);
    QTest::keyClick(editor(), 'b');
    EXPECT_EQ(editor()->palette(), table().palette()) << "is being corrected";
    leave(Qt::Key_Return);
    EXPECT_EQ(byte(0x20), 0x4B);
}

TEST_F(MemDat, AByteLeftAsItWasWritesNothingBack) {
    // The grid does not know this byte yet: writing the grid back would undo it.
    const std::uint8_t changed = byte(0x1000) ^= 0xFF;
    type(0x20, shown(0x20).c_str());
    leave(Qt::Key_Return);
    table().setCurrentIndex(cell(0x20));
    QTest::keyClick(&table(), Qt::Key_F2);
    leave(Qt::Key_Return);
    EXPECT_EQ(byte(0x1000), changed);
}

TEST_F(MemDat, RefillMarksChangesUntilTheMarksAreCleared) {
    byte(0x1FFF) ^= 0xFF;
    byte(0x45) = byte(0x45) == 0xA5 ? 0x5A : 0xA5;
    table().setCurrentIndex(cell(0x45));
    find<QPushButton>(*window, "cmdFillGrid").click();
    EXPECT_EQ(marked(), "45 1FFF ");
    find<QPushButton>(*window, "cmdSetDefCol").click();
    EXPECT_EQ(marked(), "");
    EXPECT_EQ(table().currentIndex(), cell(0x45));
    EXPECT_EQ(stdText(cell(0x45).data(Qt::ToolTipRole).toString()),
              "地址为: 0x0045    二进制:10100101    "
              "B0:1 B1:0 B2:1 B3:0   B4:0 B5:1 B6:0 B7:1     十进制165");
}

TEST_F(MemDat, CharactersStandBesideTheBytes) {
    auto& characters = find<QTableView>(*window, "characters");
    window->resize(1200, 500);
    QApplication::processEvents();
    ASSERT_TRUE(characters.isVisible());
    put(0x1FF2, 'K');
    put(0x1FF3, 0x80);
    const auto* model = characters.model();
    EXPECT_EQ(model->index(511, 2).data().toString() + model->index(511, 3).data().toString(),
              QStringLiteral("K."));
    table().setCurrentIndex(cell(0x1FF2));
    EXPECT_EQ(characters.currentIndex(), model->index(511, 2));
    EXPECT_EQ(characters.rowViewportPosition(511), table().rowViewportPosition(511));
    QTest::mouseClick(characters.viewport(), Qt::LeftButton, {},
                      characters.visualRect(model->index(511, 3)).center());
    EXPECT_EQ(table().currentIndex(), cell(0x1FF3));
    // What the main window leaves for it when it is first opened.
    window->resize(900, 500);
    QApplication::processEvents();
    EXPECT_TRUE(characters.isVisible());
    EXPECT_FALSE(table().horizontalScrollBar()->isVisible());
    window->resize(620, 500);
    QApplication::processEvents();
    EXPECT_FALSE(characters.isVisible());
    EXPECT_FALSE(table().horizontalScrollBar()->isVisible());
    EXPECT_TRUE(table().verticalScrollBar()->isVisible());
}

TEST_F(MemDat, PartialFillSaysWhatItCannotTakeAndStaysOpen) {
    frmPartFill dialog;
    ASSERT_TRUE(showActive(dialog));
    auto& value = find<QLineEdit>(dialog, "txtFillValue");
    const std::string hint = said(dialog, "lblRefusal");
    find<QLineEdit>(dialog, "txtFillFrom").setText(QStringLiteral("1FFE"));
    QTest::keyClick(&value, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible() && value.hasFocus());
    EXPECT_THAT(said(dialog, "lblRefusal"), testing::HasSubstr("00 to FF"));
    QTest::keyClicks(&value, QStringLiteral("a5"));
    EXPECT_EQ(said(dialog, "lblRefusal"), hint);
    QTest::keyClick(&value, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(shown(0x1FFE) + shown(0x1FFF), "A5A5");
    EXPECT_EQ(marked(), "1FFE 1FFF ");
}

TEST_F(MemDat, GoesToAnAddressOfTheGrid) {
    auto& field = find<QLineEdit>(*window, "txtGoTo");
    const std::pair<const char*, int> cases[] = {
        {"0120H", 0x120}, {"1ff3", 0x1FF3}, {"2000", 0x1FF3}, {"-5", 0x1FF3}, {"xyz", 0x1FF3}};
    for (const auto& [text, address] : cases) {
        field.setText(qText(text));
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(table().currentIndex(), cell(address)) << text;
    }
    EXPECT_TRUE(table().viewport()->rect().contains(table().visualRect(cell(0x1FF3))));
}

}  // namespace
}  // namespace k520
