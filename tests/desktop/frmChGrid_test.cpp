// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frmChGrid.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

#include "desktop/CellGridModel.h"
#include "desktop/Desktop.h"
#include "desktop/qtText.h"

namespace k520 {
namespace {

const std::string blank = "|||||||";

/// The grid of the shipped settings on the band 136 to 174 MHz: channel 1 on 150 MHz, channel 2
/// receives only, all others empty.
class Grid : public test::Desktop {
  protected:
    void SetUp() override {
        start(mdimoduMain::languageEnglish, "DefColor=#FFFFFF\nOverColor=#F2A33A\n");
        modChMem::mnuDelAll_Click();
        modModel::selectBand(0);
        for (int n = 1; n <= 16; ++n) {
            channel(n).rxFre() = n <= 2 ? 15'000'000 : frequency::none;
            channel(n).txFre() = n == 1 ? 15'000'000 : frequency::none;
            channel(n).decodeTone = channel(n).encodeTone = n <= 2 ? "67.0" : "";
            for (int k = modChMem::firstParameter; k <= 8; ++k) {
                channel(n).field(k) = 0;
            }
        }
        modChMem::ShowChTblGrid();
        edited();
        grid = std::make_unique<frmChGrid>();
        grid->resize(900, 600);
        grid->show();
        grid->activateWindow();
        grid->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(grid.get()));
        ASSERT_TRUE(grid->hasFocus());
    }
    static modChMem::Channel& channel(int number) { return modChMem::state().ChInfo(number); }
    /// The channels marked as edited since the last call.
    static std::string edited() {
        std::string all;
        for (int n = 1; n <= 16; ++n) {
            all += std::exchange(channel(n).modified(), 0) != 0 ? fmt::format("{} ", n) : "";
        }
        return all;
    }
    static const Cell& cell(int row, int col) {
        return modChMem::state().vsfgGridCh.cell(row, col);
    }
    static std::string row(int number) {
        std::string all = cell(number, 1).text;
        for (int col = 2; col <= 8; ++col) {
            all += "|" + cell(number, col).text;
        }
        return all;
    }

    QModelIndex at(int row, int col) { return grid->model()->index(row - 1, col - 1); }
    void go(int row, int col) { chooseCells(row, col, row, col); }
    void chooseCells(int top, int left, int bottom, int right) {
        auto& selection = *grid->selectionModel();
        selection.setCurrentIndex(at(top, left), QItemSelectionModel::NoUpdate);
        selection.select({at(top, left), at(bottom, right)}, QItemSelectionModel::ClearAndSelect);
    }
    std::string where() {
        const QModelIndex current = grid->currentIndex();
        return fmt::format("{},{}", current.row() + 1, current.column() + 1);
    }
    /// The open editor, or null.
    QWidget* editor() { return grid->focusWidget() == grid.get() ? nullptr : grid->focusWidget(); }
    static QWidget* list() { return QApplication::activePopupWidget(); }
    /// To whatever has the keyboard: an open list, the editor or the grid.
    void key(int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QWidget* target = editor() != nullptr ? editor() : grid.get();
        if (list() != nullptr) {
            auto* inside = list()->findChild<QAbstractItemView*>();
            target = inside != nullptr ? inside : list();
        }
        QTest::keyClick(target, Qt::Key(key), with);
        settle();
    }
    void settle() {
        for (int i = 0; i < 3; ++i) {
            QApplication::processEvents();
        }
        if (list() == nullptr && !grid->isActiveWindow()) {
            // No window manager here, which would do this when a list closes.
            grid->activateWindow();
            QApplication::processEvents();
        }
    }
    void keys(const std::string& typed) {
        for (const char c : typed) {
            QTest::keyClick(editor() != nullptr ? editor() : grid.get(), c);
        }
        settle();
    }
    void type(int row, int col, const std::string& typed, int end = Qt::Key_Return) {
        go(row, col);
        keys(typed);
        key(end);
    }
    /// Leaves an editor, and the list in front of it.
    void escape() {
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
        EXPECT_EQ(editor(), nullptr);
    }
    QPoint centre(int row, int col) { return grid->visualRect(at(row, col)).center(); }
    void click(int row, int col, bool twice = false) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, centre(row, col));
        if (twice) {
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, centre(row, col));
        }
        settle();
    }
    /// The pop-up menu's items in order, "!" before those that are disabled.
    std::string menuAt(int row) {
        const QPoint place = centre(row, 3);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                grid->viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid->viewport(), &event);
        std::string items;
        for (const QAction* action : find<QMenu>(*grid, "mnuChannel").actions()) {
            items += (action->isEnabled() ? "" : "!") + stdText(action->text()) + "|";
        }
        find<QMenu>(*grid, "mnuChannel").hide();
        return items;
    }

    std::unique_ptr<frmChGrid> grid;
    QClipboard& clipboard = *QApplication::clipboard();
};

TEST_F(Grid, TypedFrequencies) {
    const std::pair<const char*, std::string> cases[] = {
        // typed and shown; "!" marks the colour of a frequency outside the band
        {"145.0124", "145.0125"}, {"145.0026", "145.005"}, {"145,5", "145.5"},
        {"100", "136"},           {"600", "174"},          {"440", "440!"}};
    for (const int col : {1, 2}) {
        for (const auto& [typed, shown] : cases) {
            type(1, col, typed);
            const bool outside = cell(1, col).background == modChMem::overColour();
            EXPECT_EQ(cell(1, col).text + (outside ? "!" : ""), shown);
            EXPECT_EQ(edited() + where(), fmt::format("1 2,{}", col));
        }
    }
    type(1, 2, "abc");
    EXPECT_EQ(row(1), "440||67.0||Wide|High|Off|Off");
    EXPECT_EQ(at(1, 1).data(Qt::ToolTipRole).toString(),
              QStringLiteral("Outside the band 136 - 174 MHz: the radio may not work on it."));
    modModel::selectBand(5);
    EXPECT_EQ(at(1, 1).data(Qt::ToolTipRole).toString(), QString());
    type(1, 1, "abc");
    EXPECT_EQ(row(1), blank);
    EXPECT_EQ(failures(), std::vector<std::string>{});
}

TEST_F(Grid, LookingIntoACellIsNoEdit) {
    channel(1).rxFre() = 14'500'123;  // not on the raster
    modChMem::ShowChTblGrid();
    const std::string before = row(1);
    for (int col = 1; col <= 8; ++col) {
        for (const int end : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}) {
            go(1, col);
            key(Qt::Key_F2);
            EXPECT_NE(editor(), nullptr) << col;
            key(end);
            EXPECT_EQ(editor(), nullptr) << col;
        }
        go(1, col);
        keys("88");
        escape();
    }
    EXPECT_EQ(row(1), before);
    EXPECT_EQ(edited(), "");
}

TEST_F(Grid, CellsThatRefuse) {
    const auto opens = [&](int row, int col) {
        bool open = true;
        for (const int opener : {Qt::Key_F2, Qt::Key_F4, Qt::Key_5, Qt::Key_Space}) {
            go(row, col);
            key(opener);
            open = open && editor() != nullptr;
            escape();
        }
        return open;
    };
    std::string open;
    for (const int number : {1, 2, 3}) {
        for (int col = 1; col <= 8; ++col) {
            open += opens(number, col) ? 'x' : '-';
        }
        open += " ";
    }
    EXPECT_EQ(open, "xxxxxxxx xxx-xxxx x------- ");
    click(2, 4, true);
    EXPECT_EQ(editor(), nullptr);
    type(3, 1, "151");
    EXPECT_EQ(row(3), "151|151|||Wide|High|Off|Off");
    EXPECT_TRUE(opens(3, 4));

    const auto before = modChMem::ChInfo();
    clipboard.setText(QStringLiteral("160"));
    go(1, 1);
    keys("160");
    mdimoduMain::state().lockState = mdimoduMain::locked;  // with an editor open
    key(Qt::Key_Return);
    for (int col = 1; col <= 8; ++col) {
        EXPECT_FALSE(opens(1, col)) << col;
        key(Qt::Key_Delete);
        key(Qt::Key_V, Qt::ControlModifier);
        click(1, col, true);
        EXPECT_EQ(editor(), nullptr) << col;
    }
    EXPECT_TRUE(modChMem::ChInfo() == before);
    EXPECT_EQ(row(1), "150|150|67.0|67.0|Wide|High|Off|Off");
    EXPECT_EQ(menuAt(1),
              "!Open channel 1|!Delete channel 1|!Delete all channels|!Save as default|");
}

TEST_F(Grid, ToneEditor) {
    go(1, 3);
    key(Qt::Key_F2);
    auto& box = find<QComboBox>(*grid, "cboGridChCtdcs");
    EXPECT_EQ(box.count(), modCtdcs::toneCount);
    auto& line = find<QLineEdit>(box, "txtGridChCtdcs");
    EXPECT_EQ(line.selectedText(), QStringLiteral("67.0"));
    const std::pair<const char*, const char*> offers[] = {
        {"d02", "D023N D025N D026N D023I D025I D026I "}, {"88", "88.5 "}};
    for (const auto& [typed, offered] : offers) {
        line.selectAll();
        QTest::keyClicks(&box, QLatin1String(typed));
        const auto& found = *line.completer()->completionModel();
        std::string all;
        for (int i = 0; i < found.rowCount(); ++i) {
            all += stdText(found.index(i, 0).data().toString()) + " ";
        }
        EXPECT_EQ(all, offered);
    }
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(cell(1, 3).text + " " + where(), "88.5 2,3");
    const std::tuple<const char*, int, const char*, int, int> cases[] = {
        {"88.54", Qt::Key_Return, "88.5", 2, 0},
        {"023", Qt::Key_Tab, "D023N", 1, 1},
        {"d754i", Qt::Key_Return, "D754I", 2, 0},
        {"9", Qt::Key_Backtab, "None", 1, -1}};
    for (const auto& [typed, end, shown, endRow, step] : cases) {
        for (const int col : {3, 4}) {
            edited();
            type(1, col, typed, end);
            EXPECT_EQ(cell(1, col).text, shown) << typed;
            EXPECT_EQ(edited() + where(), fmt::format("1 {},{}", endRow, col + step)) << typed;
        }
    }
    go(1, 3);
    key(Qt::Key_F4);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(cell(1, 3).text, "67.0");
    // Losing the focus stores.
    go(1, 4);
    keys("100");
    click(5, 5);
    EXPECT_EQ(cell(1, 4).text, "100.0");
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(Grid, ListsOpenAtOnceAndStoreAtOnce) {
    const std::pair<int, Qt::KeyboardModifiers> ways[] = {{Qt::Key_F4, Qt::NoModifier},
                                                          {Qt::Key_Down, Qt::AltModifier},
                                                          {Qt::Key_F2, Qt::NoModifier},
                                                          {Qt::Key_Space, Qt::NoModifier}};
    for (const auto& [opener, with] : ways) {
        go(1, 6);
        const bool high = cell(1, 6).text == "High";
        key(opener, with);
        ASSERT_NE(list(), nullptr) << opener;
        key(high ? Qt::Key_Down : Qt::Key_Up);
        key(Qt::Key_Return);
        EXPECT_EQ(cell(1, 6).text, high ? "Low" : "High") << opener;
        EXPECT_EQ(list(), nullptr);
        EXPECT_EQ(edited() + where(), "1 1,6");
    }
    go(1, 5);
    keys("n");
    key(Qt::Key_Tab);
    EXPECT_EQ(row(1), "150|150|67.0|67.0|Narrow|High|Off|Off");
    EXPECT_EQ(edited() + where(), "1 1,6");
    keys("l");
    key(Qt::Key_Escape);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(edited(), "");
}

TEST_F(Grid, TheMouse) {
    for (const char* text : {"Carrier", "Tone", "Off"}) {
        click(1, 8, true);
        EXPECT_EQ(cell(1, 8).text, text);
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(edited(), "1 ");
    }
    for (int col = 1; col <= 4; ++col) {
        click(1, col, true);
        EXPECT_NE(editor(), nullptr) << col;
        EXPECT_EQ(qobject_cast<QComboBox*>(editor()) != nullptr, col > 2);
        key(Qt::Key_Escape);
    }
    // A second click, later than a double click, opens a list.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    click(1, 6);
    EXPECT_EQ(list(), nullptr);
    click(1, 6);
    EXPECT_TRUE(served([&] { return list() != nullptr; }));
    QApplication::setDoubleClickInterval(interval);
    escape();
    EXPECT_EQ(edited(), "");
}

TEST_F(Grid, DeleteClearsByTheRules) {
    const std::tuple<int, int, const char*> cases[] = {
        {2, 2, "150||67.0||Narrow|Low|On|Tone"},
        {3, 4, "150|150|None|None|Narrow|Low|On|Tone"},
        {5, 8, "150|150|67.0|67.0|Wide|High|Off|Off"},
        {1, 1, "|||||||"},
        {1, 8, "|||||||"}};
    modChMem::Channel set = channel(1);
    set.field(5) = set.field(6) = set.field(7) = 1;
    set.field(8) = 2;
    for (const int with : {Qt::Key_Delete, Qt::Key_Backspace}) {
        for (const auto& [left, right, expected] : cases) {
            channel(1) = set;
            modChMem::ShowChTblGrid();
            chooseCells(1, left, 1, right);
            key(with);
            EXPECT_EQ(row(1), expected) << left;
            EXPECT_EQ(edited(), "1 ");
        }
    }
    chooseCells(3, 1, 9, 8);
    key(Qt::Key_Delete);
    EXPECT_EQ(edited(), "");
}

TEST_F(Grid, CopyAndPaste) {
    const auto ctrl = [&](int letter) { key(letter, Qt::ControlModifier); };
    type(1, 2, "151");
    chooseCells(1, 1, 2, 8);
    ctrl(Qt::Key_C);
    EXPECT_EQ(stdText(clipboard.text()),
              "150\t151\t67.0\t67.0\tWide\tHigh\tOff\tOff\n"
              "150\t\t67.0\t\tWide\tHigh\tOff\tOff");
    go(15, 1);
    ctrl(Qt::Key_V);
    EXPECT_EQ(row(15) + row(16), row(1) + row(2));
    const std::tuple<int, int, const char*, std::string> cases[] = {
        // at row and column; pasted; the row then
        {15, 1, "145.0124\t440\r\n", "145.0125|440|67.0|67.0|Wide|High|Off|Off"},
        {15, 3, "88\t023i\tNarrow\tnothing\tOn", "145.0125|440|88.0|D023I|Narrow|High|On|Off"},
        {15, 8, "Tone\tbeyond", "145.0125|440|88.0|D023I|Narrow|High|On|Tone"},
        {16, 2, "\t67.0\t67.0", "150||67.0||Wide|High|Off|Off"},
        {14, 2, "150\t67.0", blank},
        {15, 1, "\t151\t67.0", blank}};
    for (const auto& [number, col, pasted, expected] : cases) {
        clipboard.setText(qText(pasted));
        go(number, col);
        ctrl(Qt::Key_V);
        EXPECT_EQ(row(number), expected) << pasted;
    }
    // One text fills all chosen cells; cells here and there are copied at their places.
    clipboard.setText(QStringLiteral("160"));
    chooseCells(4, 1, 6, 1);
    ctrl(Qt::Key_V);
    EXPECT_EQ(row(4) + row(5) + row(6), row(4) + row(4) + row(4));
    EXPECT_EQ(cell(4, 1).text, "160");
    chooseCells(1, 1, 1, 2);
    grid->selectionModel()->select(at(5, 2), QItemSelectionModel::Select);
    ctrl(Qt::Key_X);
    EXPECT_EQ(stdText(clipboard.text()), "150\t151\n\t160");
    EXPECT_EQ(row(1) + cell(5, 2).text, blank);
    EXPECT_EQ(failures(), std::vector<std::string>{});
}

TEST_F(Grid, GoingFromCellToCell) {
    const std::tuple<int, int, int, Qt::KeyboardModifiers, const char*> cases[] = {
        {1, 1, Qt::Key_Return, Qt::NoModifier, "2,1"},
        {2, 1, Qt::Key_Enter, Qt::KeypadModifier, "3,1"},
        {3, 1, Qt::Key_Return, Qt::ShiftModifier, "2,1"},
        {16, 4, Qt::Key_Return, Qt::NoModifier, "16,4"},
        {1, 8, Qt::Key_Tab, Qt::NoModifier, "2,1"},
        {2, 1, Qt::Key_Backtab, Qt::ShiftModifier, "1,8"},
        {1, 2, Qt::Key_Right, Qt::NoModifier, "1,3"},
        {2, 4, Qt::Key_Home, Qt::NoModifier, "2,1"},
        {2, 4, Qt::Key_End, Qt::NoModifier, "2,8"},
        {2, 4, Qt::Key_PageDown, Qt::NoModifier, "16,4"}};
    for (const auto& [number, col, pressed, with, to] : cases) {
        go(number, col);
        key(pressed, with);
        EXPECT_EQ(where(), to) << pressed;
        EXPECT_EQ(grid->selectionModel()->selectedIndexes().size(), 1) << pressed;
    }
    // At the ends Tab goes on to the next control.
    QWidget window;
    QLineEdit before(&window);
    grid->setParent(&window);
    QLineEdit after(&window);
    for (const auto& [number, col, pressed, next] :
         {std::tuple(16, 8, Qt::Key_Tab, &after), {1, 1, Qt::Key_Backtab, &before}}) {
        grid->setFocus();
        go(number, col);
        QTest::keyClick(grid.get(), pressed);
        EXPECT_EQ(window.focusWidget(), next);
    }
    grid->setParent(nullptr);
}

TEST_F(Grid, PopUpMenu) {
    EXPECT_EQ(menuAt(1), "!Open channel 1|Delete channel 1|Delete all channels|Save as default|");
    EXPECT_EQ(menuAt(5), "Open channel 5|!Delete channel 5|Delete all channels|!Save as default|");
    EXPECT_EQ(where(), "5,3");
    const auto run = [&](const char* name) { find<QAction>(*grid, name).trigger(); };
    run("mnuOpenCh");
    EXPECT_EQ(row(5), "136|136|None|None|Wide|High|Off|Off");
    EXPECT_EQ(at(5, 3).data(Qt::ToolTipRole), ownQText(OwnText::openedTip));
    type(5, 1, "137");
    EXPECT_EQ(at(5, 3).data(Qt::ToolTipRole).toString(), QString());
    menuAt(1);
    go(5, 2);
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(find<QMenu>(*grid, "mnuChannel").isVisible());
    find<QMenu>(*grid, "mnuChannel").hide();
    run("mnuSaveDef");
    EXPECT_EQ(modIicDat::IicDatDef()(0x53), 0x13);  // 137.00000 MHz, the lowest byte first
    run("mnuDelOne");
    EXPECT_EQ(row(1) + row(5), "150|150|67.0|67.0|Wide|High|Off|Off" + blank);
    run("mnuDelAll");
    EXPECT_EQ(row(1) + row(2), blank + blank);
}

TEST_F(Grid, Sizes) {
    for (const bool narrow : {false, true}) {
        grid->resize(narrow ? 300 : 900, 400);
        settle();
        int sum = 0;
        for (int i = 0; i < 8; ++i) {
            const QString title = grid->model()->headerData(i, Qt::Horizontal).toString();
            for (const QString& word : title.split(u' ')) {
                EXPECT_GT(grid->columnWidth(i), grid->fontMetrics().horizontalAdvance(word));
            }
            sum += grid->columnWidth(i);
        }
        // All the room there is, or scrolled.
        EXPECT_TRUE(narrow ? sum > grid->viewport()->width() : sum == grid->viewport()->width());
    }
    EXPECT_GE(grid->rowHeight(0), pixelsOfTwips(300, grid->logicalDpiY()));
    modChMem::state().vsfgGridCh.reset(4, 3);
    EXPECT_EQ(where(), "1,1");
}

}  // namespace
}  // namespace k520
