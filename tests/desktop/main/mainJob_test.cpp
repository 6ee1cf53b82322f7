// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors

#include <random>
#include <span>

#include "app/modSoftFace.h"
#include "channels/channelTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "desktop/Desktop.h"
#include "desktop/memview/frmMemDat.h"
#include "document/history.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/simulator/virtualRadio.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "settings/modSysSet.h"
#include "settings/optionTable.h"

namespace k520 {
namespace {

using testing::IsEmpty;

class MainJob : public test::MainWindow {
  protected:
    /// Starts a session with the mouse, in the dialog that a menu item opens.
    void session(const char* item, const char* button) {
        action(item).trigger();
        auto& dialog = find<QDialog>(*main, "frmCommun");
        ASSERT_TRUE(dialog.isVisible());
        QTest::mouseClick(&find<QPushButton>(dialog, button), Qt::LeftButton);
        dialog.close();
        ASSERT_FALSE(dialog.isVisible());
    }
    void type(int row, int column, const char* keys) {
        auto& grid = find<QTableView>(*main, "vsfgGridCh");
        // Without a window manager the focus does not come back from a dialog by itself.
        main->activateWindow();
        grid.setFocus();
        ASSERT_TRUE(served([&] { return grid.hasFocus(); }));
        grid.setCurrentIndex(grid.model()->index(row - 1, column - 1));
        const std::string before = cell(row, column);
        QTest::keyClicks(&grid, QLatin1String(keys).left(1));
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(keys).mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(served([&] { return cell(row, column) != before; }));
    }
    static std::string cell(int row, int column) {
        return modChMem::state().vsfgGridCh.text(row, column);
    }
    static std::span<std::uint8_t> radio() { return virtualRadio::state().radio->memory(); }
};

TEST_F(MainJob, ReadEditWriteSaveAndReopenInEveryLanguage) {
    for (const int language : {1, 2, 3}) {
        SCOPED_TRACE(language);
        resetModules();
        std::filesystem::remove(folder / "virtual-radio.bin");
        open(language);
        const std::string first = cell(1, 1);
        session("mnuReadFre", "cmdRead");
        EXPECT_NE(cell(1, 1) + cell(5, 1) + cell(6, 1), first) << "the radio has its own channels";

        type(1, 1, "446.0124");
        EXPECT_EQ(cell(1, 1), "446.0125");
        type(1, 3, "88");
        EXPECT_EQ(cell(1, 3), "88.0");
        auto& timer = find<QComboBox>(*main, "cboTot");
        timer.setFocus();
        QTest::keyClick(&timer, Qt::Key_End);
        EXPECT_EQ(modSysSet::OptNow()[0], 20);

        session("mnuWriteFre", "cmdWrite");
        EXPECT_EQ(radio()[0x130], 20);
        const std::vector<std::uint8_t> record(radio().begin() + 0x10, radio().begin() + 0x14);
        EXPECT_EQ(record, (std::vector<std::uint8_t>{0x50, 0x12, 0x60, 0x44}));

        const std::string path = folder / "job.dat";
        dialogs.answers = {"ask yes", "save " + path, "ask yes", "open " + path};
        action("mnuSave").trigger();
        const auto saved = modIicDat::IicDat();
        action("mnuNew").trigger();
        EXPECT_EQ(cell(1, 1), first);
        action("mnuOpen").trigger();
        EXPECT_EQ(cell(1, 1), "446.0125");
        EXPECT_EQ(timer.currentIndex(), 20);
        EXPECT_EQ(modIicDat::IicDat(), saved);
        EXPECT_THAT(failures(), IsEmpty());
        dialogs.take();
        main.reset();
    }
}

TEST_F(MainJob, ACommandTakesWhatIsBeingTyped) {
    open();
    main->activateWindow();
    auto& grid = find<QTableView>(*main, "vsfgGridCh");
    ASSERT_TRUE(served([&] { return grid.hasFocus(); })) << "the grid has the keyboard at once";
    QTest::keyClicks(&grid, QStringLiteral("4"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("31.25"));
    EXPECT_NE(cell(1, 1), "431.25");
    dialogs.answers = {"print "};
    action("mnuPrint").trigger();
    EXPECT_EQ(cell(1, 1), "431.25");
    EXPECT_THAT(dialogs.take().at(0), testing::HasSubstr(">431.25<"));
}

TEST_F(MainJob, AnOpenMemoryWindowFollowsEveryCommand) {
    open();
    const frmMemDat memory;
    const auto inStep = [] {
        const auto& grid = modMemDat::state().vsfgGridMemDat;
        const auto& image = modIicDat::IicDat();
        for (int address = 0; address <= 0x1FFF; ++address) {
            if (grid.text(address / 16 + 1, address % 16 + 1) !=
                modMemDat::FormatByteDat(image(address))) {
                return false;
            }
        }
        return true;
    };
    const std::string path = folder / "memory.dat";
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"a write", [&] { session("mnuWriteFre", "cmdWrite"); }},
        {"a read", [&] { session("mnuReadFre", "cmdRead"); }},
        {"a save",
         [&] {
             dialogs.answers = {"save " + path};
             action("mnuSaveAs").trigger();
         }},
        {"an open", [&] {
             dialogs.answers = {"open " + path};
             action("mnuOpen").trigger();
         }}};
    for (const auto& [name, command] : commands) {
        modIicDat::IicDat()(0x1000) ^= 0xFF;
        modChMem::state().ChInfo(1).rxFre() += 1250;
        ASSERT_FALSE(inStep());
        command();
        EXPECT_TRUE(inStep()) << name;
    }
    dialogs.take();
}

TEST_F(MainJob, TheProgramCannotBeLeftInASession) {
    open();
    int tries = 0;
    clock.onWait = [&] { tries += main->close() ? 1000 : 1; };
    session("mnuReadFre", "cmdRead");
    clock.onWait = nullptr;
    EXPECT_GT(tries, 1);
    EXPECT_TRUE(main->isVisible());
    dialogs.answers = {"changes cancel", "changes drop"};
    EXPECT_FALSE(main->close());
    EXPECT_TRUE(main->close()) << "what was read and is in no file is not asked about twice";
    dialogs.take();
}

TEST_F(MainJob, AFileThatCouldNotBeSavedIsToldInTheStatusBar) {
    open();
    dialogs.answers = {"save " + (folder / "none" / "a.dat").string(),
                       "save " + (folder / "a.dat").string()};
    action("mnuSaveAs").trigger();
    EXPECT_THAT(said(*main, "panStatus", "text"), testing::HasSubstr("NOT saved: "));
    action("mnuSaveAs").trigger();
    EXPECT_EQ(said(*main, "panStatus", "text"), "Ready  Saved");
    dialogs.take();
}

/// Answers whatever is asked, by dice; no box is expected but that of a paste that is refused.
class CarelessUser : public test::ScriptedDialogs {
  public:
    explicit CarelessUser(const test::TempFolder& folder) : folder_(folder) {}
    int roll(int sides) { return std::uniform_int_distribution(0, sides - 1)(dice_); }
    template <class T, std::size_t N>
    const T& oneOf(const T (&choices)[N]) {
        return choices[static_cast<std::size_t>(roll(N))];
    }

    bool ask(const std::string& /*title*/, const std::string& text, bool /*usual*/) override {
        return text != modSoftFace::text(SoftText::askExit) && roll(2) == 0;
    }
    SaveAnswer askToSave(const std::string& /*title*/, const std::string& /*text*/) override {
        constexpr SaveAnswer choices[] = {SaveAnswer::save, SaveAnswer::dontSave,
                                          SaveAnswer::cancel};
        return stays ? SaveAnswer::cancel : oneOf(choices);
    }
    std::string openFile(const FileChoice& choice) override {
        const std::string path = saveFile(choice);
        return std::filesystem::exists(path) ? path : "";
    }
    std::string saveFile(const FileChoice& /*choice*/) override {
        return folder_ / ("f" + std::to_string(roll(3)) + ".dat");
    }
    void tell(BoxIcon icon, const std::string& title, const std::string& text) override {
        if (text.starts_with(say(texts::nothingPasted))) {
            ++refusedPastes;
        } else {
            ScriptedDialogs::tell(icon, title, text);
        }
    }
    void customRange() override {
        modFileCmd::customRangeOk(std::to_string(100 + roll(300)), std::to_string(200 + roll(400)));
    }
    void openDocument(const std::string& /*path*/) override {}
    void print(const std::string& html) override { EXPECT_FALSE(html.empty()); }

    int refusedPastes = 0;
    bool stays = false;

  private:
    const test::TempFolder& folder_;
    std::mt19937 dice_{20261121};
};

/// What people copy from mails, tables and other programs.
const std::string pastedTexts[] = {
    "446,00625",
    "446.2 MHz",
    "=+7.6",
    "-1\t1e9",
    "\"446.1\"\t'88.5'",
    "Rx\tTx",
    "RX Freq.\tTX Freq.\n446.1\t446.1\n",
    "446.1\t446.1\tD023N\t88,5 Hz\tWide\tHigh\tYes\tCarrier\r\n446.2\t\t\t\t\t\t\t",
    "\t446.1",
    "446.1\t\t\t\t\t\t\t\t\t446.1",
    "\t\t\t\n\t\n\n",
    "\r\n",
    "",
    " ",
    std::string("446.1\0"
                "446.2",
                11),
    "４４６．１\t开启",
    "446.1;446.2,446.3",
    std::string(100'000, '4'),
    "440\n441\n442\n443\n444\n445\n446\n447\n448\n449\n450\n451\n452\n453\n454\n455\n456\n",
    "440\n441\n442\n443\n444\n445\n446\n447\n448\n449\n450\n451\n452\n453\n454\n455",
    "446.1\t600\n100\t446.1"};

/// The mark of an opened channel is in no file, so colours do not count.
MATCHER(SameText, "") {
    return std::get<0>(arg).first == std::get<1>(arg).first;
}

class RandomActions : public MainJob {
  public:
    void press() {
        static constexpr Qt::Key keys[] = {
            Qt::Key_1,    Qt::Key_4,      Qt::Key_6,      Qt::Key_Period, Qt::Key_D,
            Qt::Key_8,    Qt::Key_Return, Qt::Key_Tab,    Qt::Key_Delete, Qt::Key_F2,
            Qt::Key_Down, Qt::Key_Up,     Qt::Key_Right,  Qt::Key_Left,   Qt::Key_Escape,
            Qt::Key_Home, Qt::Key_End,    Qt::Key_Return, Qt::Key_N,      Qt::Key_4};
        QTest::keyClick(&keyboard(), user.oneOf(keys));
    }
    /// What has the keyboard in the main window: the grid, where nothing has it.
    QWidget& keyboard() {
        main->activateWindow();
        QWidget* target = QApplication::focusWidget();
        if (target == nullptr || target->window() != main.get()) {
            target = &grid();
            target->setFocus();
        }
        return *target;
    }
    EditTable& grid() { return find<EditTable>(*main, "vsfgGridCh"); }
    /// Chooses cells and begins to edit one. Nothing ends the edit: that is left to what comes
    /// next.
    void beginAnEdit() {
        static constexpr const char* typed[] = {"4", "446,1", "x", "88.", "d023", " ", "=+7.6"};
        main->showWindow(QStringLiteral("ChInfo"));
        chooseCells();
        QTest::keyClick(&grid(), Qt::Key_F2);
        QTest::keyClicks(&keyboard(), QLatin1String(user.oneOf(typed)));
    }
    void chooseCells() {
        grid().setFocus();
        const auto cell = [&] { return grid().model()->index(user.roll(16), user.roll(8)); };
        const QModelIndex first = cell();
        grid().setCurrentIndex(first);
        if (user.roll(3) == 0) {
            grid().selectionModel()->select({std::min(first, cell()), std::max(first, cell())},
                                            QItemSelectionModel::ClearAndSelect);
        }
    }
    /// Into an open editor, or over cells; what is refused changes nothing.
    void paste() {
        QApplication::clipboard()->setText(qText(user.oneOf(pastedTexts)));
        if (user.roll(3) == 0) {
            QTest::keyClick(&keyboard(), Qt::Key_V, Qt::ControlModifier);
            return;
        }
        grid().endEdit();
        chooseCells();
        const auto before = modChMem::ChInfo();
        const int refused = user.refusedPastes;
        grid().findChild<QAction*>(QStringLiteral("mnuPaste"))->trigger();
        EXPECT_TRUE(refused == user.refusedPastes || modChMem::ChInfo() == before);
    }
    void click() {
        auto& grid = find<QTableView>(*main, "vsfgGridCh");
        const QPoint at(user.roll(grid.viewport()->width()), user.roll(grid.viewport()->height()));
        user.roll(2) == 0 ? QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, at)
                          : QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, at);
    }
    void chooseInAList() {
        const auto lists = main->findChildren<QComboBox*>();
        auto* list = lists[user.roll(static_cast<int>(lists.size()))];
        if (list->isVisible() && list->isEnabled() && !list->isEditable() && list->count() > 0) {
            list->setFocus();
            list->setCurrentIndex(user.roll(list->count()));
            emit list->activated(list->currentIndex());
        }
    }
    void command() {
        static constexpr const char* items[] = {
            "mnuNew",  "mnuOpen",   "mnuSave",   "mnuSaveAs", "mnuHelp",    "mnuOptFeature",
            "mnuExit", "mnuLockCh", "mnuLockCh", "mnuPrint",  "mnuShowErr", "mnuShowTree",
            "mnuUndo", "mnuUndo",   "mnuUndo",   "mnuRedo",   "mnuRedo",    "mnuWords"};
        const char* const name = user.oneOf(items);
        user.stays = std::string_view(name) == "mnuExit";
        if (auto* item = main->findChild<QAction*>(QLatin1String(name))) {
            item->trigger();
        }
        user.stays = false;
        EXPECT_FALSE(editorOpen("vsfgGridCh"));
    }
    void channelCommand() {
        grid().endEdit();
        const auto row = static_cast<std::int16_t>(1 + user.roll(16));
        const auto menu = modChEdit::channelMenu(row);
        const std::function<void()> commands[] = {
            [&] { modChEdit::openChannel(row); }, [] { modChMem::mnuDelOne_Click(); },
            [] { modChMem::mnuDelAll_Click(); }, [&] { modChEdit::saveAsDefault(row); }};
        const auto& command = user.oneOf(commands);
        if (menu.at(static_cast<std::size_t>(&command - commands)).enabled) {
            command();
        }
    }
    void showWindow() {
        static constexpr const char* keys[] = {"RadioInfo", "ChInfo", "SysSet", "Radio"};
        const int chosen = user.roll(5);
        chosen == 4 ? main->showMemDat() : main->showWindow(QLatin1String(keys[chosen]));
    }
    void run() {
        user.roll(2) == 0 ? session("mnuReadFre", "cmdRead") : session("mnuWriteFre", "cmdWrite");
        EXPECT_FALSE(editorOpen("vsfgGridCh"));
    }
    /// The grid, the table, and the bytes of a file or a radio say the same.
    static void expectOneMeaning() {
        const auto shown = gridCells();
        const auto channels = modChMem::ChInfo();
        const auto options = modSysSet::OptNow();
        const auto image = modIicDat::IicDat();
        modChMem::ShowChTblGrid();
        ASSERT_EQ(gridCells(), shown);
        // An empty channel has its default parameters only after the first decoding.
        MemoryImage encoded = image;
        for (int round = 1; round <= 3; ++round) {
            modChMem::SetConvIicDat();
            ASSERT_TRUE(round < 3 || modIicDat::IicDat() == encoded);
            encoded = modIicDat::IicDat();
            modChMem::IicDatToChInfo();
            modSysSet::SaveToOptSel();
            modChMem::ShowChTblGrid();
            ASSERT_THAT(gridCells(), testing::Pointwise(SameText(), shown));
            for (const auto& option : optionTable::options()) {
                const auto at = static_cast<std::size_t>(option.number);
                // The others only tell what the radio has.
                ASSERT_TRUE(option.ownedMask == 0 || modSysSet::OptNow()[at] == options[at])
                    << option.name;
            }
        }
        modChMem::state().ChInfo = channels;
        modSysSet::state().OptNow = options;
        modIicDat::IicDat() = image;
        modChMem::ShowChTblGrid();
    }
    /// The text and the colour of all cells.
    static std::vector<std::pair<std::string, std::optional<Colour>>> gridCells() {
        const CellGrid& grid = modChMem::state().vsfgGridCh;
        std::vector<std::pair<std::string, std::optional<Colour>>> all;
        for (int row = 1; row < grid.rows(); ++row) {
            for (int col = 1; col < grid.columns(); ++col) {
                all.emplace_back(grid.cell(row, col).text, grid.cell(row, col).background);
            }
        }
        return all;
    }

    CarelessUser user{folder};
};

TEST_F(RandomActions, ThreeHundredOfThemLeaveNoFailureBehind) {
    // Sessions over a part of the memory, as they are one action in fifteen.
    open(3, "ReadEndAddr=03FF\nWriteEndAddr=03FF\n");
    setDialogs(&user);
    const auto first = document::capture();
    using Me = RandomActions;
    static constexpr void (Me::*actions[])() = {
        &Me::press,          &Me::press,       &Me::press,
        &Me::press,          &Me::press,       &Me::press,
        &Me::click,          &Me::click,       &Me::chooseInAList,
        &Me::chooseInAList,  &Me::beginAnEdit, &Me::beginAnEdit,
        &Me::paste,          &Me::paste,       &Me::run,
        &Me::command,        &Me::command,     &Me::channelCommand,
        &Me::channelCommand, &Me::showWindow};
    int compared = 0;
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        (this->*user.oneOf(actions))();
        QApplication::processEvents();
        ASSERT_THAT(failures(), IsEmpty());
        ASSERT_TRUE(main->isVisible());
        if (!editorOpen()) {
            ++compared;
            ASSERT_NO_FATAL_FAILURE(expectOneMeaning());
        }
    }
    EXPECT_GT(compared, 100);
    EXPECT_GT(user.refusedPastes, 0);

    const auto last = document::capture();
    int steps = 0;
    for (; history::canUndo(); ++steps) {
        history::undo();
    }
    EXPECT_EQ(document::capture(), first);
    EXPECT_FALSE(history::changed());
    // Not further: the last action may have been an undo.
    for (; steps > 0; --steps) {
        ASSERT_TRUE(history::canRedo());
        history::redo();
    }
    EXPECT_EQ(document::capture(), last);
}

}  // namespace
}  // namespace k520
