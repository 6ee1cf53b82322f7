// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// An editor that is open when a command comes: the command has to take what the cell shows, and the
// editor must be gone. Looked at is what the command made, not the cell.
#include <span>

#include "app/interfaceLock.h"
#include "app/mdimoduMain.h"
#include "channels/modChMem.h"
#include "desktop/Desktop.h"
#include "document/history.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/simulator/virtualRadio.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"

namespace k520 {
namespace {

using Texts = test::ScriptedDialogs::Texts;
using testing::HasSubstr;

class OpenEditors : public test::MainWindow {
  protected:
    void SetUp() override {
        open(3, "ReadEndAddr=03FF\nWriteEndAddr=03FF\n");
        grid = &find<QTableView>(*main, "vsfgGridCh");
    }
    void TearDown() override { EXPECT_THAT(failures(), testing::IsEmpty()); }

    /// One channel, 450 MHz both ways, 67.0 Hz, Narrow, Low, On, Tone; its receive cell is current.
    void oneChannel() {
        modChMem::mnuDelAll_Click();
        auto& channel = modChMem::state().ChInfo(1);
        channel.rxFre() = channel.txFre() = 45'000'000;
        channel.decodeTone = channel.encodeTone = "67.0";
        channel.field(5) = channel.field(6) = channel.field(7) = 1;
        channel.field(8) = 2;
        modChMem::ShowChTblGrid();
        main->showWindow(QStringLiteral("ChInfo"));
        ASSERT_TRUE(showActive(*main));
        grid->setFocus();
        ASSERT_TRUE(served([&] { return grid->hasFocus(); }));
        grid->setCurrentIndex(grid->model()->index(0, 0));
    }
    /// What has the keyboard: an open list, or the widget with the focus.
    static QWidget& keyboard() {
        if (auto* list = QApplication::activePopupWidget()) {
            return *list->findChild<QAbstractItemView*>();
        }
        return *QApplication::focusWidget();
    }
    /// Presses keys by their names, and types all else.
    static void play(const std::string& gestures) {
        for (const QString& word : qText(gestures).split(u' ')) {
            const QKeyCombination named = QKeySequence(word)[0];
            if (word.size() > 1 && named.key() != Qt::Key_unknown) {
                QTest::keyClick(&keyboard(), named.key(), named.keyboardModifiers());
            } else {
                for (const QChar c : word) {
                    QTest::keyClick(&keyboard(), c.toLatin1());
                }
            }
            for (int i = 0; i < 3; ++i) {
                QApplication::processEvents();
            }
        }
    }
    void editCell(int column, const std::string& gestures) {
        grid->setCurrentIndex(grid->model()->index(0, column - 1));
        play(gestures);
        ASSERT_TRUE(editorOpen());
    }

    void click(const char* button) {
        auto& bar = find<QToolBar>(*main, "tlbMdiFrmMain");
        QTest::mouseClick(bar.widgetForAction(&find<QAction>(bar, button)), Qt::LeftButton);
    }
    /// Opens a list of the channel window with the mouse and chooses an entry there.
    void choose(const char* list, int entry) {
        auto& box = find<QComboBox>(*main, list);
        QTest::mouseClick(&box, Qt::LeftButton);
        box.hidePopup();
        box.setCurrentIndex(entry);
        emit box.activated(entry);
    }
    void session(const char* button) {
        auto& dialog = find<QDialog>(*main, "frmCommun");
        QTest::mouseClick(&find<QPushButton>(dialog, button), Qt::LeftButton);
        dialog.close();
    }
    void clickNode(int child) {
        auto& tree = find<QTreeWidget>(*main, "treevMain");
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                          tree.visualItemRect(tree.topLevelItem(0)->child(child)).center());
    }

    /// A cell of channel 1, as a memory holds it.
    static std::string decoded(const MemoryImage& bytes, int column) {
        modIicDat::IicDat() = bytes;
        modChMem::IicDatToChInfo();
        modChMem::ShowChTblGrid();
        return modChMem::state().vsfgGridCh.text(1, column);
    }
    std::string inFile(int column) {
        MemoryImage bytes = modIicDat::IicDat();
        datFile::load(path, bytes);
        return decoded(bytes, column);
    }
    static std::string inRadio(int column) {
        MemoryImage bytes = modIicDat::IicDat();
        std::ranges::copy(virtualRadio::state().radio->memory(), bytes.bytes().begin());
        return decoded(bytes, column);
    }
    static std::string inTable(int column) {
        modChMem::SetConvIicDat();
        return decoded(modIicDat::IicDat(), column);
    }

    QTableView* grid = nullptr;
    const std::string path = folder / "edited.dat";
};

/// A cell that is being edited, and what it stands for.
struct Edit {
    int column;
    const char* gestures;
    const char* shown;
};

constexpr Edit edits[] = {
    {1, "431.25", "431.25"},
    {2, "432,5", "432.5"},
    // Suggestions open, one of them in the line, and none.
    {3, "151.4", "151.4"},
    {4, "d023", "D023N"},
    {3, "88 Down", "88.5"},
    {4, "88.54", "88.5"},
    // The whole list of tones, and the lists of parameters.
    {3, "F4 Down", "69.3"},
    {6, "F4 Up", "High"},
    {5, "w", "Wide"},
};

TEST_F(OpenEditors, EveryCommandTakesWhatTheCellShows) {
    const struct {
        const char* name;
        Texts answers;
        std::function<void()> run;
        std::function<std::string(int)> result;
        bool byMouse = false;  // a click outside an open list only closes it, unchosen
    } commands[] = {
        {"save",
         {"ask yes", "save " + path},
         [&] { action("mnuSave").trigger(); },
         [&](int col) { return inFile(col); }},
        {"save as",
         {"save " + path},
         [&] { action("mnuSaveAs").trigger(); },
         [&](int col) { return inFile(col); }},
        {"save by its button",
         {"ask yes", "save " + path},
         [&] { click("FileSave"); },
         [&](int col) { return inFile(col); },
         true},
        {"write", {}, [&] { action("mnuWriteFre").trigger(), session("cmdWrite"); }, inRadio},
        {"write by its button", {}, [&] { click("Write"), session("cmdWrite"); }, inRadio, true},
        {"close", {"changes cancel"}, [&] { main->close(); }, inTable},
        {"exit", {"changes cancel"}, [&] { action("mnuExit").trigger(); }, inTable},
        {"exit by its button", {"changes cancel"}, [&] { click("Exit"); }, inTable, true},
        {"language", {"changes cancel"}, [&] { action("mnuLangSel0").trigger(); }, inTable},
        {"lock", {}, [&] { action("mnuLockCh").trigger(); }, inTable},
        {"help", {"document "}, [&] { action("mnuHelpTopic").trigger(); }, inTable},
        {"port", {}, [&] { action("mnuCom").trigger(); }, inTable},
        {"radio information", {}, [&] { clickNode(0); }, inTable, true},
        {"the tree", {}, [&] { clickNode(2); }, inTable, true},
        {"options", {}, [&] { action("mnuOptFeature").trigger(); }, inTable},
        {"memory", {}, [&] { action("mnuMemDat").trigger(); }, inTable},
        {"the error list", {}, [&] { action("mnuShowErr").trigger(); }, inTable},
        {"model", {}, [&] { choose("cboModel", 0); }, inTable, true},
        {"band", {}, [&] { choose("cboFrequency", 5); }, inTable, true},
        {"an option", {}, [&] { choose("cboTot", 3); }, inTable, true},
        {"another cell", {}, [&] { grid->setCurrentIndex(grid->model()->index(4, 4)); }, inTable},
        {"hide the window",
         {},
         [&] { find<QMdiArea>(*main, "mdiArea").closeActiveSubWindow(); },
         inTable,
         true},
    };
    for (const auto& command : commands) {
        for (const Edit& edit : edits) {
            SCOPED_TRACE(
                fmt::format("{}: {} in column {}", command.name, edit.gestures, edit.column));
            oneChannel();
            history::markSaved();
            editCell(edit.column, edit.gestures);
            if (command.byMouse && QApplication::activePopupWidget() != nullptr) {
                play("Esc Esc");
                continue;
            }
            dialogs.answers = command.answers;
            command.run();
            EXPECT_FALSE(editorOpen());
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
            EXPECT_EQ(command.result(edit.column), edit.shown);
            dialogs.take();
            interfaceLock::state().lockState = interfaceLock::unlocked;
            mdimoduMain::state().Language = mdimoduMain::languageEnglish;
            for (auto* dialog : main->findChildren<QDialog*>()) {
                dialog->close();
            }
            QApplication::processEvents();
        }
    }
}

TEST_F(OpenEditors, ThePrintoutHasWhatTheCellShows) {
    for (const Edit& edit : edits) {
        oneChannel();
        editCell(edit.column, edit.gestures);
        dialogs.answers = {"print "};
        edit.column % 2 == 0 ? click("Print") : action("mnuPrint").trigger();
        EXPECT_THAT(dialogs.take().at(0), HasSubstr(fmt::format(">{}<", edit.shown)));
        EXPECT_FALSE(editorOpen());
    }
}

TEST_F(OpenEditors, NothingTypedOutlivesDataThatReplacesIt) {
    oneChannel();
    modFileCmd::setCurrentFile(path);
    ASSERT_TRUE(modFileCmd::SaveDatFile());
    const std::string drop = "changes drop";
    // What is answered without unsaved changes, and with them.
    const std::tuple<const char*, Texts, Texts, std::function<void()>> commands[] = {
        {"new", {"ask yes"}, {drop}, [&] { action("mnuNew").trigger(); }},
        {"new by its button", {"ask yes"}, {drop}, [&] { click("FileNew"); }},
        {"open", {"open " + path}, {drop, "open " + path}, [&] { action("mnuOpen").trigger(); }},
        {"open by its button",
         {"open " + path},
         {drop, "open " + path},
         [&] { click("FileOpen"); }},
        {"read", {}, {drop}, [&] { action("mnuReadFre").trigger(), session("cmdRead"); }},
        {"read by its button", {}, {drop}, [&] { click("Read"), session("cmdRead"); }},
    };
    for (const auto& [name, answers, answersToEdit, run] : commands) {
        std::optional<MemoryImage> expected;
        const auto goOn = [&](const Texts& now) {
            history::start();
            history::setFile(path);
            history::markSaved();
            dialogs.answers = now;
            run();
            // What has the keyboard then gets keys: they must not end an old edit.
            QApplication::processEvents();
            ASSERT_TRUE(showActive(*main));
            grid->setFocus();
            play("Return Down");
            modChMem::SetConvIicDat();
            dialogs.take();
        };
        oneChannel();
        goOn(answers);
        expected = modIicDat::IicDat();
        for (const Edit& edit : edits) {
            SCOPED_TRACE(fmt::format("{}: {} in column {}", name, edit.gestures, edit.column));
            oneChannel();
            editCell(edit.column, edit.gestures);
            goOn(answersToEdit);
            EXPECT_FALSE(editorOpen());
            EXPECT_EQ(modIicDat::IicDat(), expected);
        }
    }
}

TEST_F(OpenEditors, KeysGoToTheHighlightedCell) {
    oneChannel();
    auto& channels = modChMem::state().ChInfo;
    channels(2) = channels(3) = channels(1);
    modChMem::ShowChTblGrid();
    const std::tuple<const char*, const char*> ways[] = {
        // gestures from the decode tone of channel 1; the decode tones of channels 1 to 3 then
        {"151.4 Esc Down 77 Return", "67.0 77.0 67.0"},
        {"151.4 Esc Esc Down Esc 77 Return", "67.0 77.0 67.0"},
        {"151.4 Return 77 Return", "151.4 77.0 67.0"},
        {"88 Down Return 77 Return", "88.5 77.0 67.0"},
        {"9 Return Down 77 Return", "None 67.0 77.0"},
        {"F2 Esc Down Down 131.8 Tab", "67.0 67.0 131.8"},
        {"F4 Esc Esc 141.3 Return Return", "141.3 67.0 67.0"},
        {"F4 Down Return 77 Return", "77.0 67.0 67.0"},
    };
    for (const auto& [gestures, tones] : ways) {
        for (int n = 1; n <= 3; ++n) {
            channels(n).decodeTone = "67.0";
        }
        modChMem::ShowChTblGrid();
        grid->setCurrentIndex(grid->model()->index(0, 2));
        play(gestures);
        EXPECT_EQ(fmt::format("{} {} {}", channels(1).decodeTone, channels(2).decodeTone,
                              channels(3).decodeTone),
                  tones)
            << gestures;
        EXPECT_FALSE(editorOpen()) << gestures;
    }
}

class OpenByte : public OpenEditors {
  protected:
    static constexpr int address = 0x0200;  // neither a channel nor an option

    void editByte(const std::string& gestures) {
        QApplication::processEvents();
        main->showMemDat();
        ASSERT_TRUE(showActive(*main));
        bytes = &find<QTableView>(*main, "vsfgGridMemDat");
        bytes->setFocus();
        ASSERT_TRUE(served([&] { return bytes->hasFocus(); }));
        modIicDat::IicDat()(address) = 0x11;
        modMemDat::TableFreDat();
        bytes->setCurrentIndex(bytes->model()->index(address / 16, address % 16));
        play(gestures);
    }
    QTableView* bytes = nullptr;
};

TEST_F(OpenByte, IsSavedAndWritten) {
    for (const bool returned : {false, true}) {
        const auto edit = [&] {
            editByte("5a");
            EXPECT_TRUE(editorOpen());
            if (returned) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            }
        };
        edit();
        dialogs.answers = {"save " + path};
        action("mnuSaveAs").trigger();
        MemoryImage saved = modIicDat::IicDat();
        datFile::load(path, saved);
        EXPECT_EQ(saved(address), 0x5A);
        edit();
        click("Write");
        session("cmdWrite");
        EXPECT_EQ(virtualRadio::state().radio->memory()[address], 0x5A);
        EXPECT_FALSE(editorOpen());
        dialogs.take();
    }
}

TEST_F(OpenByte, ThatIsNoByteStopsCommandsAndSaysWhy) {
    const std::function<void()> commands[] = {[&] { action("mnuSaveAs").trigger(); },
                                              [&] { action("mnuSave").trigger(); },
                                              [&] { action("mnuNew").trigger(); },
                                              [&] { action("mnuWriteFre").trigger(); },
                                              [&] { click("Read"); },
                                              [&] { main->close(); },
                                              [&] { clickNode(2); },
                                              [&] { action("mnuLangSel0").trigger(); },
                                              [&] { action("mnuPrint").trigger(); },
                                              [&] { action("mnuLockCh").trigger(); }};
    editByte("5");
    for (const auto& command : commands) {
        QToolTip::hideText();
        command();
        EXPECT_EQ(stdText(QToolTip::text()), "Two hexadecimal digits, 00 to FF.");
        EXPECT_TRUE(editorOpen());
        EXPECT_EQ(find<QMdiArea>(*main, "mdiArea").currentSubWindow()->widget()->objectName(),
                  QLatin1String("frmMemDat"));
    }
    EXPECT_EQ(main->findChild<QDialog*>(QStringLiteral("frmCommun")), nullptr);
    EXPECT_FALSE(action("mnuLockCh").isChecked());
    EXPECT_TRUE(action("mnuLangSel2").isChecked());
    // It goes with its cell or its window, and then commands run again.
    for (const bool byCell : {true, false}) {
        editByte("5");
        if (byCell) {
            bytes->setCurrentIndex(bytes->model()->index(0, 0));
        } else {
            find<QMdiArea>(*main, "mdiArea").closeActiveSubWindow();
        }
        EXPECT_FALSE(editorOpen());
        EXPECT_EQ(modIicDat::IicDat()(address), 0x11);
        dialogs.answers = {"save " + path};
        action("mnuSaveAs").trigger();
        dialogs.take();
    }
}

}  // namespace
}  // namespace k520
