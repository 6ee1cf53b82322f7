// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/mdifrmMain.h"

#include "app/ownTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "desktop/Desktop.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"
#include "settings/optionPanel.h"

namespace k520 {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Texts = test::ScriptedDialogs::Texts;

class MainWindow : public test::MainWindow {
  protected:
    std::string panel(const char* name) { return stdText(find<QLabel>(*main, name).text()); }
    static std::string captions(const QList<QAction*>& actions) {
        std::string all;
        for (const QAction* item : actions) {
            all += item->isSeparator() ? "---|" : stdText(item->text()) + "|";
        }
        return all;
    }
    QList<QMdiSubWindow*> shownChildren() {
        QList<QMdiSubWindow*> shown;
        for (auto* window : find<QMdiArea>(*main, "mdiArea").subWindowList()) {
            if (window->isVisible()) {
                shown.append(window);
            }
        }
        return shown;
    }
};

TEST_F(MainWindow, CaptionsComeFromTheLanguageInForce) {
    const struct {
        int language;
        std::string title, menus, file, buttons, status, filePanel;
    } faces[] = {
        {1, "NorvikK520对讲机写频软件",
         "文件(&F)|编辑(&E)|编程(&P)|选项(&O)|设置(&S)|视图(&V)|帮助(&H)|",
         "新建(&N)|打开(&O)…|最近的文件(&R)|保存(&S)…|另存为(&A)…|打印(&P)…|---|退出(&E)|",
         "新建|打开|保存|读频|写频|串口|打印|帮助|退出|", "就绪", "文件名:"},
        {3, "ZEV K520 Radio Software", "&File|&Edit|&Program|&Option|&Settings|&View|&Help|",
         "&New|&Open…|&Recent files|&Save…|S&ave As…|&Print…|---|&Exit|",
         "New|Open|Save|Read|Write|Port|Print|Help|Exit|", "Ready", "File Name:"},
        {2, "", "|||||", "", "|||||||||", "", ""},
    };
    for (const auto& face : faces) {
        SCOPED_TRACE(face.language);
        resetModules();
        open(face.language);
        if (face.language != 2) {
            EXPECT_TRUE(stdText(main->windowTitle()).starts_with(face.title));
            EXPECT_EQ(captions(main->menuBar()->actions()), face.menus);
            EXPECT_EQ(captions(main->menuBar()->actions()[0]->menu()->actions()), face.file);
        }
        EXPECT_EQ(captions(find<QToolBar>(*main, "tlbMdiFrmMain").actions()), face.buttons);
        for (const QAction* button : find<QToolBar>(*main, "tlbMdiFrmMain").actions()) {
            EXPECT_THAT(stdText(button->toolTip()),
                        testing::MatchesRegex(".{5,} \\((Ctrl|F).*\\)"));
        }
        EXPECT_EQ(panel("panStatus"), face.status);
        EXPECT_EQ(panel("panPort"), "COM1");
        EXPECT_EQ(panel("panFile"), face.filePanel + (folder / "Data" / "Untitled.dat").string());
        EXPECT_EQ(panel("panTime"), "2026-11-21 13:05:09");
        EXPECT_TRUE(action(("mnuLangSel" + std::to_string(face.language - 1)).c_str()).isChecked());
        EXPECT_FALSE(main->windowFlags() &
                     (Qt::WindowMaximizeButtonHint | Qt::WindowMinimizeButtonHint));
        EXPECT_TRUE(main->windowFlags() & Qt::WindowCloseButtonHint);
        EXPECT_THAT(failures(), IsEmpty());
        for (const QAction* item : main->findChildren<QAction*>()) {
            const bool ours = item->objectName().startsWith(QLatin1String("mnu"));
            EXPECT_FALSE(ours && item->menu() == nullptr && item->icon().isNull() &&
                         !item->isCheckable())
                << stdText(item->objectName());
        }
        main.reset();
    }
}

TEST_F(MainWindow, TheVeryFirstStartOnlyLeavesItsMark) {
    main = std::make_unique<mdifrmMain>();
    EXPECT_EQ(main->Form_Load(), modStartUp::StartResult::quit);
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("FirRun=1"));
    main->close();  // without a question
    main.reset();
    EXPECT_FALSE(modChMem::state().vsfgGridCh.onReset.hasSubscribers())
        << "a window was left behind";
}

TEST_F(MainWindow, ToolbarKeysAreComparedExactly) {
    open();
    for (const char* key : {"COM", "fileNew", "", "Print "}) {
        main->tlbmdifrmMain_ButtonClick(QLatin1String(key));
    }
    const std::tuple<const char*, Texts, Texts> commands[] = {
        {"FileNew", {"ask no"}, {"ask|Notice|All data will be cleared,continue?"}},
        {"FileOpen",
         {"open "},
         {"open|Data File(*.dat)|*.dat|" + (folder / "Data" / "Untitled.dat").string() + "|"}},
        {"FileSave", {"ask no"}, {"ask|Notice|TempData has changed,Do you want to save it now?"}},
        {"Help",
         {"document "},
         {"document|" +
          (std::filesystem::path(K520_SHARE_DIR) / "help" / "EngHelp.html").string()}},
        {"Exit", {"ask no"}, {"ask|Notice|Are you sure want to exit?"}}};
    for (const auto& [key, answers, shown] : commands) {
        dialogs.answers = answers;
        main->tlbmdifrmMain_ButtonClick(QLatin1String(key));
        EXPECT_EQ(dialogs.take(), shown);
    }
    EXPECT_TRUE(main->isVisible());
    main->tlbmdifrmMain_ButtonClick(QStringLiteral("Com"));
    auto& ports = find<QDialog>(*main, "frmToolCom");
    EXPECT_TRUE(ports.isModal() && ports.isVisible());
    find<QAbstractButton>(ports, "COM1_6").click();
    find<QAbstractButton>(ports, "cmdOk").click();
    EXPECT_EQ(panel("panPort"), "COM7");
    EXPECT_THAT(failures(), IsEmpty());
}

TEST_F(MainWindow, TreeShowsEachWindowOnceAndMaximised) {
    open();
    for (const char* key : {"RadioInfo", "ChInfo", "SysSet", "ChInfo", "SysSet", "Radio", ""}) {
        main->showWindow(QLatin1String(key));
    }
    EXPECT_EQ(shownChildren().size(), 3);
    for (const char* key : {"ChInfo", "RadioInfo"}) {
        main->showWindow(QLatin1String(key));
        EXPECT_TRUE(shownChildren().constLast()->isMaximized() ||
                    find<QMdiArea>(*main, "mdiArea").activeSubWindow()->isMaximized());
    }
    auto* info = find<QMdiArea>(*main, "mdiArea").activeSubWindow();
    EXPECT_EQ(stdText(info->widget()->objectName()), "frmRadioInfo");
    info->close();
    EXPECT_EQ(shownChildren().size(), 2);
    main->showWindow(QStringLiteral("RadioInfo"));
    EXPECT_EQ(find<QMdiArea>(*main, "mdiArea").activeSubWindow(), info);
    EXPECT_TRUE(info->widget()->isVisible());
}

TEST_F(MainWindow, TreeFollowsTheWindowInFront) {
    open();
    auto& tree = find<QTreeWidget>(*main, "treevMain");
    const auto marked = [&] { return stdText(tree.currentItem()->text(0)); };
    EXPECT_EQ(marked(), "Channel Info");
    const std::pair<const char*, const char*> windows[] = {{"mnuOptFeature", "Optional Features"},
                                                           {"mnuMemDat", "ZEV-K520"}};
    for (const auto& [item, node] : windows) {
        action(item).trigger();
        EXPECT_EQ(marked(), node);
    }
    auto& area = find<QMdiArea>(*main, "mdiArea");
    EXPECT_EQ(stdText(area.currentSubWindow()->widget()->objectName()), "frmMemDat");
    area.closeActiveSubWindow();
    area.setActiveSubWindow(area.subWindowList().constFirst());
    EXPECT_EQ(marked(), "Channel Info");
}

TEST_F(MainWindow, EditMenuActsOnTheChannelsInFront) {
    const std::pair<int, const char*> faces[] = {
        {1,
         "!撤销(&U)|!重做(&R)|---|剪切(&T)|复制(&C)|粘贴(&P)|清除单元格(&D)|---|全选(&A)|---|!"
         "开启信道 2(&O)|"
         "删除信道 2(&L)|存为默认值(&S)|---|删除所有信道(&N)|"},
        {3,
         "!&Undo|!&Redo|---|Cu&t|&Copy|&Paste|&Delete cells|---|Select &all|---|!&Open channel 2|"
         "De&lete channel 2|&Save as default|---|Delete all cha&nnels|"}};
    for (const auto& [language, items] : faces) {
        resetModules();
        open(language);
        modChEdit::openChannel(2);
        auto& grid = find<QTableView>(*main, "vsfgGridCh");
        auto& menu = find<QMenu>(*main, "mnuEdit");
        const auto shown = [&] {
            emit menu.aboutToShow();
            std::string all;
            for (const QAction* item : menu.actions()) {
                all += (item->isEnabled() ? "" : "!") +
                       (item->isSeparator() ? "---" : stdText(item->text())) + "|";
            }
            return all;
        };
        grid.setCurrentIndex(grid.model()->index(1, 0));
        EXPECT_EQ(shown(), items);
        action("mnuSelectAll").trigger();
        action("mnuCopy").trigger();
        EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 15);
        action("mnuDelOne").trigger();
        EXPECT_FALSE(modChMem::ChInfo()(2).present());
        action("mnuOptFeature").trigger();
        EXPECT_THAT(shown(), HasSubstr("|!"));
        EXPECT_EQ(std::ranges::count_if(menu.actions(), &QAction::isEnabled), 5)
            << "four separators, and what can be undone";
        main.reset();
    }
}

TEST_F(MainWindow, ClosingAsksAndStoresTheGeometry) {
    open();
    main->setGeometry(30, 40, 960, 600);
    const QRect frame = main->frameGeometry();
    main->showWindow(QStringLiteral("SysSet"));
    dialogs.answers = {"ask no", "ask yes"};
    EXPECT_FALSE(main->close());
    EXPECT_TRUE(main->isVisible());
    action("mnuExit").trigger();
    EXPECT_FALSE(main->isVisible());
    const std::string stored = folder.read("Uninstall.exe");
    // The frame is the window manager's: 15 twips a pixel at 96 dots an inch.
    EXPECT_THAT(stored,
                HasSubstr(fmt::format("MdiFormHeight= {}\nMdiFormWidth= {}\nMdiFormLeft= {}\n"
                                      "MdiFormTop= {}\n",
                                      15 * frame.height(), 15 * frame.width(), 15 * frame.left(),
                                      15 * frame.top())));
    EXPECT_EQ(dialogs.take(), Texts(2, "ask|Notice|Are you sure want to exit?"));
    EXPECT_EQ(modStartUp::state().exiting, 1);
}

TEST_F(MainWindow, ComesBackWhereItWasAndNeverBeyondTheScreen) {
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const auto shut = [&] {
        modStartUp::state().quitting = true;
        EXPECT_TRUE(main->close());
        main.reset();
    };
    const auto fits = [&] {
        const QRect frame = main->frameGeometry();
        EXPECT_TRUE(room.contains(frame.topLeft()) && frame.bottom() <= room.bottom());
        // This screen may be narrower than any that is supported.
        EXPECT_LE(main->width(), std::max(room.width(), main->minimumSizeHint().width()));
    };
    open();
    fits();
    // 1024 x 768 at 150 %, less the window's frame; whichever window is in front.
    for (const char* key : {"SysSet", "RadioInfo", "ChInfo"}) {
        main->showWindow(QLatin1String(key));
    }
    main->showMemDat();
    QApplication::processEvents();
    EXPECT_LE(main->minimumSizeHint().width(), 1024 * 2 / 3 - 10);
    EXPECT_LE(main->minimumSizeHint().height(), 768 * 2 / 3 - 60);
    main->resize(900, 500);
    main->move(0, 70);
    shut();
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("WindowPlace=0,70,900,500\n"));
    const std::tuple<const char*, QPoint, int> starts[] = {{"0,70,900,500", {0, 70}, 500},
                                                           {"5000,-900,4000,510", {0, 0}, 510}};
    for (const auto& [place, where, height] : starts) {
        resetModules();
        open(3, fmt::format("WindowPlace={}\n", place));
        EXPECT_EQ(main->pos(), where);
        EXPECT_EQ(main->height(), height);
        fits();
        shut();
    }
}

TEST_F(MainWindow, SaysWhatIsUnusualAboutTheDataAndWhereItCameFrom) {
    open();
    const auto shows = [&](const char* name) { return find<QWidget>(*main, name).isVisible(); };
    EXPECT_FALSE(shows("lblNotice") || shows("panOrigin"));
    modFileCmd::openNamed(folder.write("short.dat", "x"));
    EXPECT_TRUE(shows("lblNotice"));
    EXPECT_THAT(panel("lblNotice"), HasSubstr("1 of 8192 bytes"));
    action("mnuReadFre").trigger();
    auto& dialog = find<QDialog>(*main, "frmCommun");
    find<QAbstractButton>(dialog, "cmdRead").click();
    dialog.close();
    EXPECT_FALSE(shows("lblNotice"));
    EXPECT_TRUE(shows("panOrigin"));
    EXPECT_EQ(panel("panOrigin"), "Read from the radio, not saved");
    EXPECT_THAT(panel("panFile"), HasSubstr("short.dat")) << "the current path stays";
    dialogs.answers = {"save " + (folder / "radio.dat").string()};
    action("mnuSaveAs").trigger();
    EXPECT_EQ(panel("panStatus"), "Ready  Saved");
    EXPECT_FALSE(shows("panOrigin"));
    optionPanel::optionClicked(1, 3);
    EXPECT_EQ(panel("panStatus"), "Ready");
    dialogs.take();
}

TEST_F(MainWindow, AnotherLanguageIsStoredAndEndsTheProgram) {
    open();
    action("mnuLangSel2").trigger();
    EXPECT_THAT(dialogs.take(), IsEmpty());
    dialogs.answers = {"ask no", "ask yes"};
    action("mnuLangSel0").trigger();
    EXPECT_TRUE(main->isVisible());
    EXPECT_TRUE(action("mnuLangSel0").isChecked() && !action("mnuLangSel2").isChecked());
    EXPECT_EQ(say(texts::fileSaved), "Saved") << "the texts stay those of the start";
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("Language= 1\n"));
    action("mnuLangSel1").trigger();
    EXPECT_FALSE(main->isVisible());
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("Language= 2\n"));
    const std::string box =
        "question|Message|Language has changed, you need to restart the software.";
    const std::string question = "ask|Notice|Are you sure want to exit?";
    EXPECT_EQ(dialogs.take(), (Texts{box, question, box, question}));
}

TEST_F(MainWindow, LanguageThatCannotBeStoredStays) {
    open();
    std::filesystem::remove(folder / "Uninstall.exe");
    std::filesystem::create_directory(folder / "Uninstall.exe");
    action("mnuLangSel0").trigger();
    EXPECT_TRUE(action("mnuLangSel2").isChecked());
    EXPECT_TRUE(main->isVisible());
    ASSERT_EQ(failures().size(), 1U);
    EXPECT_THAT(failures()[0], HasSubstr("mdifrmMain->SwiLangFace 75"));
}

TEST_F(MainWindow, FailuresAreCountedInTheStatusBarAndTheListOpensFromThere) {
    open();
    auto& button = find<QToolButton>(*main, "cmdFailures");
    EXPECT_FALSE(button.isVisible());
    modFileCmd::setCurrentFile((folder / "no" / "such.dat").string());
    EXPECT_FALSE(modFileCmd::SaveDatFile());
    EXPECT_TRUE(button.isVisible());
    EXPECT_EQ(stdText(button.text()), "1");
    auto& list = find<QWidget>(*main, "frmShowErr");
    EXPECT_FALSE(list.isVisible());
    button.click();
    EXPECT_TRUE(list.isVisible());
    action("mnuShowErr").trigger();
    EXPECT_FALSE(list.isVisible());
}

TEST_F(MainWindow, TheStoredLockStateIsShownAndCanBeChanged) {
    open(3, "ChannelLock=ShowLock\n");
    EXPECT_EQ(panel("panStatus"), "Interface Locked");
    EXPECT_TRUE(action("mnuLockCh").isChecked());
    action("mnuLockCh").trigger();
    EXPECT_EQ(panel("panStatus"), "Ready");
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("ChannelLock=ShowNo\n"));
}

}  // namespace
}  // namespace k520
