// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChGrid.h"
#include "app/interfaceLock.h"
#include "desktop/channels/frmChFrequency.h"

#include "app/mdimoduMain.h"
#include "channels/channelTexts.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "desktop/Desktop.h"
#include "desktop/widgets/CellGridModel.h"
#include "image/modIicDat.h"

namespace k520 {
namespace {

const std::string blank = "|||||||";
const std::string parameters = "Narrow|Low|On|Tone";
const std::string firstRow = "150|150|67.0|67.0|" + parameters;

/// The grid of the shipped settings on the band 136 to 174 MHz, with two channels: `firstRow` and
/// one that receives only.
class Grid : public test::Desktop {
  protected:
    void SetUp() override {
        start(mdimoduMain::languageEnglish, "DefColor=#FFFFFF\nOverColor=#F2A33A\n");
        modModel::selectBand(0);
        grid = std::make_unique<frmChGrid>();
        grid->resize(900, 600);
        grid->setFocus();
        ASSERT_TRUE(showActive(*grid) && grid->hasFocus());
        fill();
    }
    void TearDown() override { EXPECT_EQ(failures(), std::vector<std::string>{}); }
    static void fill() {
        modChMem::mnuDelAll_Click();
        for (const int n : {1, 2}) {
            channel(n).rxFre() = 15'000'000;
            channel(n).txFre() = n == 1 ? 15'000'000 : frequency::none;
            channel(n).decodeTone = channel(n).encodeTone = "67.0";
            channel(n).field(5) = channel(n).field(6) = channel(n).field(7) = 1;
            channel(n).field(8) = 2;
        }
        modChMem::ShowChTblGrid();
        edited();
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
    /// A cell's text, with "!" in the colour of a frequency outside the band.
    static std::string cell(int row, int col) {
        const Cell& found = modChMem::state().vsfgGridCh.cell(row, col);
        return found.text + (found.background == modChMem::overColour() ? "!" : "");
    }
    static std::string row(int number) {
        std::string all = cell(number, 1);
        for (int col = 2; col <= 8; ++col) {
            all += "|" + cell(number, col);
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
    std::string tip(int row, int col) {
        return stdText(at(row, col).data(Qt::ToolTipRole).toString());
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
        // Without a window manager the focus does not come back from a list by itself.
        if (list() == nullptr && !grid->isActiveWindow()) {
            showActive(*grid);
        }
    }
    /// What a user does: "3,1" goes to a cell, the name of a key presses it, all else is typed.
    void play(const std::string& gestures) {
        for (const QString& word : qText(gestures).split(u' ')) {
            const QKeyCombination named = QKeySequence(word)[0];
            if (const auto place = word.split(u','); place.size() == 2) {
                go(place[0].toInt(), place[1].toInt());
            } else if (word.size() > 1 && named.key() != Qt::Key_unknown) {
                key(named.key(), named.keyboardModifiers());
            } else {
                for (const QChar c : word) {
                    QTest::keyClick(editor() != nullptr ? editor() : grid.get(), c.toLatin1());
                }
                settle();
            }
        }
    }
    /// Leaves an editor, and the list in front of it.
    void escape() {
        play("Esc Esc");
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
            const std::string name = action->isSeparator() ? "-" : stdText(action->text());
            items += (action->isEnabled() ? "" : "!") + name + "|";
        }
        find<QMenu>(*grid, "mnuChannel").hide();
        return items;
    }

    std::unique_ptr<frmChGrid> grid;
    QClipboard& clipboard = *QApplication::clipboard();
};

struct Case {
    const char* gestures;
    std::string row;          ///< the first channel then
    std::string editedAndAt;  /// the channels edited, and the cursor
};

const Case keyCases[] = {
    {"1,1 145.0124 Return", "145.0125|150|67.0|67.0|" + parameters, "1 2,1"},
    {"1,1 440 Tab", "440!|150|67.0|67.0|" + parameters, "1 1,2"},
    {"1,2 440 Tab", "150|440!|67.0|67.0|" + parameters, "1 1,3"},
    {"1,2 abc Return", "150||67.0||" + parameters, "1 2,2"},
    {"1,1 abc Return", blank, "1 2,1"},
    // Tones are typed in short, or chosen among those offered.
    {"1,4 88.54 Return", "150|150|67.0|88.5|" + parameters, "1 2,4"},
    {"1,3 88 Down Return", "150|150|88.5|67.0|" + parameters, "1 2,3"},
    {"1,4 023 Tab", "150|150|67.0|D023N|" + parameters, "1 1,5"},
    {"1,3 d754i Return", "150|150|D754I|67.0|" + parameters, "1 2,3"},
    {"1,4 9 Backtab", "150|150|67.0|None|" + parameters, "1 1,3"},
    {"1,3 9 Return 1,3 F4 Down Return 1,3", firstRow, "1 1,3"},
    // Lists open at once and store at once.
    {"1,6 F4 Up Return", "150|150|67.0|67.0|Narrow|High|On|Tone", "1 1,6"},
    {"1,6 Alt+Down Up Return", "150|150|67.0|67.0|Narrow|High|On|Tone", "1 1,6"},
    {"1,6 F2 Up Return", "150|150|67.0|67.0|Narrow|High|On|Tone", "1 1,6"},
    {"1,6 Space Up Return", "150|150|67.0|67.0|Narrow|High|On|Tone", "1 1,6"},
    {"1,5 w Tab", "150|150|67.0|67.0|Wide|Low|On|Tone", "1 1,6"},
    {"1,6 h Esc", firstRow, "1,6"},
    // Clearing goes by the rules.
    {"1,1 Del", blank, "1 1,1"},
    {"1,2 Del", "150||67.0||" + parameters, "1 1,2"},
    {"1,4 Backspace", "150|150|67.0|None|" + parameters, "1 1,4"},
    {"1,8 Del", "150|150|67.0|67.0|Narrow|Low|On|Off", "1 1,8"},
    {"5,1 Del", firstRow, "5,1"},
    // From cell to cell.
    {"1,1 Return", firstRow, "2,1"},
    {"2,1 Num+Enter", firstRow, "3,1"},
    {"3,1 Shift+Return", firstRow, "2,1"},
    {"16,4 Return", firstRow, "16,4"},
    {"1,8 Tab", firstRow, "2,1"},
    {"2,1 Shift+Backtab", firstRow, "1,8"},
};

TEST_F(Grid, TheKeyboard) {
    for (const auto& [gestures, expected, editedAndAt] : keyCases) {
        SCOPED_TRACE(gestures);
        fill();
        play(gestures);
        EXPECT_EQ(row(1), expected);
        EXPECT_EQ(edited() + where(), editedAndAt);
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(grid->selectionModel()->selectedIndexes().size(), 1);
    }
    fill();
    chooseCells(1, 3, 9, 8);
    play("Del");
    EXPECT_EQ(row(1) + edited(), "150|150|None|None|Wide|High|Off|Off1 2 ");
}

TEST_F(Grid, LookingIntoACellIsNoEdit) {
    channel(1).rxFre() = 14'500'123;  // not on the raster
    modChMem::ShowChTblGrid();
    const std::string before = row(1);
    for (int col = 1; col <= 8; ++col) {
        for (const char* end : {"Return", "Tab", "Esc"}) {
            play(fmt::format("1,{} F2", col));
            EXPECT_NE(editor(), nullptr) << col;
            play(end);
            EXPECT_EQ(editor(), nullptr) << col;
        }
        play(fmt::format("1,{} 88", col));
        escape();
    }
    EXPECT_EQ(row(1) + edited(), before);
}

TEST_F(Grid, CellsThatRefuse) {
    const auto opens = [&](int number) {
        std::string open;
        for (int col = 1; col <= 8; ++col) {
            bool all = true;
            for (const char* opener : {"F2", "F4", "5", "Space"}) {
                play(fmt::format("{},{} {}", number, col, opener));
                all = all && editor() != nullptr;
                escape();
            }
            open += all ? 'x' : '-';
        }
        return open;
    };
    EXPECT_EQ(opens(1) + opens(2) + opens(3), "xxxxxxxxxxx-xxxxx-------");
    play("3,1 151 Return");
    EXPECT_EQ(row(3).substr(0, 18) + opens(3), "151|151|None|None|xxxxxxxx");

    const auto before = modChMem::ChInfo();
    clipboard.setText(QStringLiteral("160"));
    play("1,1 160");
    interfaceLock::state().lockState = interfaceLock::locked;  // with an editor open
    play("Return");
    EXPECT_EQ(opens(1), "--------");
    for (int col = 1; col <= 8; ++col) {
        play(fmt::format("1,{} Del Ctrl+V", col));
        click(1, col, true);
        EXPECT_EQ(editor(), nullptr) << col;
    }
    EXPECT_TRUE(modChMem::ChInfo() == before);
    EXPECT_EQ(row(1), firstRow);
    EXPECT_EQ(menuAt(1),
              "!Open channel 1|!Delete channel 1|!Save as default|-|"
              "!Cu&t|&Copy|!&Paste|!&Delete cells|-|!Delete all channels|");
}

TEST_F(Grid, TonesAreOfferedWhileOneIsTyped) {
    play("1,3 F2");
    auto& box = find<QComboBox>(*grid, "cboGridChCtdcs");
    auto& line = find<QLineEdit>(box, "txtGridChCtdcs");
    EXPECT_EQ(line.selectedText(), QStringLiteral("67.0"));
    const std::pair<const char*, const char*> offers[] = {
        {"d02", "D023N D025N D026N D023I D025I D026I "}, {"88", "88.5 "}};
    for (const auto& [typed, offered] : offers) {
        line.selectAll();
        QTest::keyClicks(&box, QLatin1String(typed));
        const auto& found = *find<QListView>(*grid, "lstOffers").model();
        std::string all;
        for (int i = 0; i < found.rowCount(); ++i) {
            all += stdText(found.index(i, 0).data().toString()) + " ";
        }
        EXPECT_EQ(all, offered);
    }
    // Losing the focus stores.
    play("Esc Esc 1,4 100");
    click(5, 5);
    EXPECT_EQ(row(1), "150|150|67.0|100.0|" + parameters);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(Grid, TheMouse) {
    for (const char* text : {"Off", "Carrier", "Tone"}) {
        click(1, 8, true);
        EXPECT_EQ(cell(1, 8) + edited(), std::string(text) + "1 ");
        EXPECT_EQ(editor(), nullptr);
    }
    for (int col = 1; col <= 4; ++col) {
        click(1, col, true);
        EXPECT_NE(editor(), nullptr) << col;
        escape();
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

TEST_F(Grid, CopyAndPaste) {
    play("1,2 151 Return");
    chooseCells(1, 1, 2, 8);
    play("Ctrl+C");
    EXPECT_EQ(stdText(clipboard.text()),
              "150\t151\t67.0\t67.0\tNarrow\tLow\tOn\tTone\n"
              "150\t\t67.0\t\tNarrow\tLow\tOn\tTone");
    play("15,1 Ctrl+V");
    EXPECT_EQ(row(15) + row(16), row(1) + row(2));
    const auto selected = [&] { return grid->selectionModel()->selectedIndexes().size(); };
    EXPECT_EQ(selected(), 15);  // all but the encode tone of a channel that does not transmit
    const std::tuple<int, int, const char*, std::string, int> cases[] = {
        // at row and column; pasted; the row then; the cells selected then
        {15, 1, "145.0124\t440\r\n", "145.0125|440!|67.0|67.0|Narrow|Low|On|Tone", 2},
        {15, 3, "88\t023i\tWide", "145.0125|440!|88.0|D023I|Wide|Low|On|Tone", 3},
        {16, 1, "\t67.0", "150||67.0||Narrow|Low|On|Tone", 0}};
    for (const auto& [number, col, pasted, expected, cells] : cases) {
        clipboard.setText(qText(pasted));
        play(fmt::format("{},{} Ctrl+V", number, col));
        EXPECT_EQ(row(number), expected) << pasted;
        EXPECT_EQ(cells == 0 ? 0 : selected(), cells) << pasted;
    }
    EXPECT_EQ(dialogs.take(),
              std::vector<std::string>{
                  "exclamation|Notice|Nothing was pasted. These cells cannot be taken:\n"
                  "Channel 16, Transmit [MHz]: the channel is empty; enter its receive frequency "
                  "first"});
    // One text fills all chosen cells; cells here and there are copied at their places.
    clipboard.setText(QStringLiteral("160"));
    chooseCells(4, 1, 6, 1);
    play("Ctrl+V");
    EXPECT_EQ(cell(4, 1) + cell(5, 1) + cell(6, 1), "160160160");
    chooseCells(1, 1, 1, 2);
    grid->selectionModel()->select(at(5, 2), QItemSelectionModel::Select);
    play("Ctrl+X");
    EXPECT_EQ(stdText(clipboard.text()), "150\t151\n\t160");
    EXPECT_EQ(row(1) + cell(5, 2), blank);
}

TEST_F(Grid, AsksBeforeSeveralChannelsAreEmptied) {
    const std::string question = "ask|Notice|2 channels will be deleted. Go on?";
    const std::string secondRow = row(2);
    const std::tuple<std::array<int, 4>, const char*, const char*, std::string> cases[] = {
        // from row and column to row and column; the key; the answer, if asked; what is left
        {{1, 1, 1, 8}, "Del", "", blank + secondRow},
        {{1, 2, 9, 8}, "Del", "", "150||None||Wide|High|Off|Off150||None||Wide|High|Off|Off"},
        {{1, 1, 16, 8}, "Del", "ask no", firstRow + secondRow},
        {{1, 1, 16, 1}, "Backspace", "ask no", firstRow + secondRow},
        {{1, 1, 2, 3}, "Ctrl+X", "ask no", firstRow + secondRow},
        {{1, 1, 16, 8}, "Del", "ask yes", blank + blank},
        {{1, 1, 2, 8}, "Ctrl+X", "ask yes", blank + blank},
        {{5, 1, 16, 8}, "Del", "", firstRow + secondRow}};
    for (const auto& [area, pressed, answer, expected] : cases) {
        SCOPED_TRACE(
            fmt::format("{} from {},{} to {},{}", pressed, area[0], area[1], area[2], area[3]));
        fill();
        const bool asked = *answer != 0;
        dialogs.answers = asked ? std::vector<std::string>{answer} : std::vector<std::string>{};
        chooseCells(area[0], area[1], area[2], area[3]);
        play(pressed);
        EXPECT_EQ(row(1) + row(2), expected);
        EXPECT_EQ(dialogs.take(), std::vector<std::string>(asked ? 1 : 0, question));
    }
    interfaceLock::state().lockState = interfaceLock::locked;
    play("1,1 Ctrl+A Del");
}

TEST_F(Grid, TabAtTheEndsGoesToTheNextControl) {
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

TEST_F(Grid, TheTipOfAFrequencyOutsideTheBand) {
    play("1,1 440 Return");
    const std::string saved = "As saved: 446.00625";
    EXPECT_EQ(tip(1, 1), "Outside the band 136 - 174 MHz: the radio may not work on it.\n" + saved);
    modModel::selectBand(5);
    EXPECT_EQ(tip(1, 1), saved);
}

TEST_F(Grid, PopUpMenu) {
    const auto run = [&](const char* name) { find<QAction>(*grid, name).trigger(); };
    const std::string rest = "-|Cu&t|&Copy|&Paste|&Delete cells|-|Delete all channels|";
    EXPECT_EQ(menuAt(1), "!Open channel 1|Delete channel 1|Save as default|" + rest);
    EXPECT_EQ(menuAt(5), "Open channel 5|!Delete channel 5|!Save as default|" + rest);
    run("mnuCopy");
    EXPECT_EQ(clipboard.text(), QString());
    EXPECT_EQ(where(), "5,3");
    run("mnuOpenCh");
    EXPECT_EQ(row(5), "136!|136!|None!|None!|Wide!|High!|Off!|Off!");
    EXPECT_EQ(tip(5, 3), say(texts::openedTip) + "\nAs saved: (empty)");
    play("5,1 137 Return");
    EXPECT_EQ(tip(5, 3), "As saved: (empty)");
    menuAt(1);
    play("5,2 Shift+F10");
    EXPECT_TRUE(find<QMenu>(*grid, "mnuChannel").isVisible());
    find<QMenu>(*grid, "mnuChannel").hide();
    run("mnuSaveDef");
    EXPECT_EQ(modIicDat::IicDatDef()(0x53), 0x13);  // 137.00000 MHz, the lowest byte first
    run("mnuDelOne");
    EXPECT_EQ(row(1) + row(5), firstRow + blank);
    run("mnuDelAll");
    EXPECT_EQ(row(1) + row(2), blank + blank);
}

TEST_F(Grid, FillsItsRoomOrScrolls) {
    for (const bool narrow : {false, true}) {
        grid->resize(narrow ? 300 : 900, 400);
        settle();
        const int width = grid->horizontalHeader()->length();
        EXPECT_TRUE(narrow ? width > grid->viewport()->width()
                           : width == grid->viewport()->width());
    }
    modChMem::state().vsfgGridCh.reset(4, 3);
    EXPECT_EQ(where(), "1,1");
}

// Whatever decimals a frequency has, its point has the place that it has in the widest one.
TEST(ChannelCells, FrequenciesStandWithTheirPointsBelowEachOther) {
    const QFontMetrics font(QApplication::font());
    const int width = font.horizontalAdvance(QStringLiteral("000.00000")) + 40;
    const auto pointOf = [&](const QString& text) {
        return frmChFrequency::indent(text, font, width) +
               font.horizontalAdvance(text.section(u'.', 0, 0));
    };
    const int point = 20 + font.horizontalAdvance(QStringLiteral("000"));
    for (const char* text : {"446.00625", "446", "433.5", "52.525", "7.1"}) {
        EXPECT_EQ(pointOf(QLatin1String(text)), point) << text;
    }
    EXPECT_LT(frmChFrequency::indent(QStringLiteral("446.00625"), font, 20), 0) << "no room";
}

}  // namespace
}  // namespace k520
