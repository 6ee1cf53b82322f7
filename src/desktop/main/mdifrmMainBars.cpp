// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The main window's menus and toolbar, from their tables.
#include <QActionGroup>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>
#include <array>

#include "app/Guard.h"
#include "app/mainMenus.h"
#include "app/mdimoduMain.h"
#include "app/ownTexts.h"
#include "desktop/channels/frmChGrid.h"
#include "desktop/channels/frmChMem.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "program/modFileCmd.h"
#include "program/modPrint.h"
#include "program/modStartUp.h"

namespace k520 {

namespace {

constexpr int toolIconSize = 24;

using mainMenus::menus;

using Main = mdifrmMain;

/// An item of a menu; a row without a name is a separator.
struct ItemRow {
    const char* menu;
    const char* name = nullptr;
    SoftText text{};
    const char* icon = nullptr;
    const char* keys = nullptr;
    void (*run)(Main&) = nullptr;
    /// It asks for more before it does anything: its caption ends with an ellipsis.
    bool asks = false;
    const Text* own = nullptr;
    const char* otherKeys = "";  ///< work, too, but the menu does not show them
};
constexpr bool asks = true;
const std::array itemRows{
    ItemRow{"mnuFile", "mnuNew", SoftText::menuNew, "file-new", "Ctrl+N",
            [](Main&) { modFileCmd::NewFile(); }},
    ItemRow{"mnuFile", "mnuOpen", SoftText::menuOpen, "file-open", "Ctrl+O",
            [](Main&) { modFileCmd::OpenFile(); }, asks},
    ItemRow{"mnuFile", "mnuSave", SoftText::menuSave, "file-save", "Ctrl+S",
            [](Main&) { modFileCmd::SaveFile(); }, asks},
    ItemRow{"mnuFile", "mnuSaveAs", SoftText::menuSaveAs, "file-save-as", "Ctrl+Shift+S",
            [](Main&) { modFileCmd::SaveAsFile(); }, asks},
    ItemRow{"mnuFile", "mnuPrint", SoftText::menuPrint, "print", "Ctrl+P",
            [](Main&) { modPrint::Print(); }, asks},
    ItemRow{"mnuFile"},
    ItemRow{"mnuFile", "mnuExit", SoftText::menuExit, "exit", "Ctrl+Q",
            [](Main& main) { main.ExitSoft(); }},
    ItemRow{"mnuEdit",
            "mnuUndo",
            {},
            "undo",
            "Ctrl+Z",
            [](Main& main) { main.mnuUndo_Click(); },
            !asks,
            &texts::undo},
    ItemRow{"mnuEdit",
            "mnuRedo",
            {},
            "redo",
            "Ctrl+Shift+Z",
            [](Main& main) { main.mnuRedo_Click(); },
            !asks,
            &texts::redo,
            "Ctrl+Y"},
    ItemRow{"mnuEdit"},
    ItemRow{"mnuProgram", "mnuReadFre", SoftText::menuRead, "radio-read", "F5",
            [](Main& main) { main.mnuReadFre_Click(); }, asks},
    ItemRow{"mnuProgram", "mnuWriteFre", SoftText::menuWrite, "radio-write", "F6",
            [](Main& main) { main.mnuWriteFre_Click(); }, asks},
    ItemRow{"mnuOption", "mnuOptFeature", SoftText::menuOptionalFeatures, "options", "F7",
            [](Main& main) { main.showWindow(QStringLiteral("SysSet")); }},
    ItemRow{"mnuSettings", "mnuCom", SoftText::menuPort, "port", "F8",
            [](Main& main) { main.tlbmdifrmMain_ButtonClick(QStringLiteral("Com")); }, asks},
    ItemRow{"mnuView",
            "mnuMemDat",
            {},
            "memory",
            "Ctrl+M",
            [](Main& main) { main.showMemDat(); },
            !asks,
            &texts::viewMemory},
    ItemRow{"mnuHelp", "mnuHelpTopic", SoftText::menuHelpTopic, "help", "F1",
            [](Main&) { modStartUp::Help(); }}};

template <class Row>
QString shownCaption(const Row& row) {
    return qText(mainMenus::captionOf(row));
}

QString itemCaption(const ItemRow& row) {
    const QString caption = shownCaption(row);
    return row.asks && !caption.isEmpty() ? caption + u'…' : caption;
}

/// The toolbar's buttons, by their keys. `item` is the menu item of the same command.
struct ButtonRow {
    const char* key;
    SoftText text;
    const char* icon;
    const char* item;
    Text tip;
    void (*run)(Main&);
};
const std::array buttonRows{
    ButtonRow{"FileNew", SoftText::toolNew, "file-new", "mnuNew", texts::tipNew,
              [](Main&) { modFileCmd::NewFile(); }},
    ButtonRow{"FileOpen", SoftText::toolOpen, "file-open", "mnuOpen", texts::tipOpen,
              [](Main&) { modFileCmd::OpenFile(); }},
    ButtonRow{"FileSave", SoftText::toolSave, "file-save", "mnuSave", texts::tipSave,
              [](Main&) { modFileCmd::SaveFile(); }},
    ButtonRow{"Read", SoftText::toolRead, "radio-read", "mnuReadFre", texts::tipRead,
              [](Main& main) { main.mnuReadFre_Click(); }},
    ButtonRow{"Write", SoftText::toolWrite, "radio-write", "mnuWriteFre", texts::tipWrite,
              [](Main& main) { main.mnuWriteFre_Click(); }},
    ButtonRow{"Com", SoftText::toolPort, "port", "mnuCom", texts::tipPort,
              [](Main& main) { main.selectPort(); }},
    ButtonRow{"Print", SoftText::toolPrint, "print", "mnuPrint", texts::tipPrint,
              [](Main&) { modPrint::Print(); }},
    ButtonRow{"Help", SoftText::toolHelp, "help", "mnuHelpTopic", texts::tipHelp,
              [](Main&) { modStartUp::Help(); }},
    ButtonRow{"Exit", SoftText::toolExit, "exit", "mnuExit", texts::tipExit,
              [](Main& main) { main.ExitSoft(); }}};

/// The language menu, in the order of the languages' numbers.
constexpr std::array languageTexts{SoftText::menuSimplified, SoftText::menuTraditional,
                                   SoftText::menuEnglish};

QString languageItem(int language) {
    return QStringLiteral("mnuLangSel%1").arg(language - 1);
}

}  // namespace

void mdifrmMain::makeMenus() {
    for (const mainMenus::Menu& row : menus) {
        menuBar()->addMenu(ownNamed<QMenu>(row.name, menuBar()));
    }
    const auto menu = [this](const char* name) {
        return menuBar()->findChild<QMenu*>(QLatin1String(name));
    };
    for (const ItemRow& row : itemRows) {
        if (row.name == nullptr) {
            menu(row.menu)->addSeparator();
            continue;
        }
        auto* action = ownNamed<QAction>(row.name, this);
        action->setIcon(icons::line(QLatin1String(row.icon)));
        action->setShortcuts(
            {QKeySequence(QLatin1String(row.keys)), QKeySequence(QLatin1String(row.otherKeys))});
        connect(action, &QAction::triggered, this,
                [this, &row] { command([&] { row.run(*this); }); });
        menu(row.menu)->addAction(action);
    }
    auto* recent = ownNamed<QMenu>("mnuRecent", menuBar());
    menu("mnuFile")->insertMenu(findChild<QAction*>(QStringLiteral("mnuSave")), recent);
    connect(recent, &QMenu::aboutToShow, this, &mdifrmMain::showRecentMenu);
    chMem_->grid()->fillEditMenu(*menu("mnuEdit"));
    connect(menu("mnuEdit"), &QMenu::aboutToShow, this, &mdifrmMain::showEditMenu);

    auto* lock = ownNamed<QAction>("mnuLockCh", this);
    lock->setCheckable(true);
    connect(lock, &QAction::triggered, this, &mdifrmMain::mnuLockCh_Click);
    menu("mnuOption")->addAction(lock);

    auto* words = ownNamed<QAction>("mnuWords", this);
    words->setCheckable(true);
    connect(words, &QAction::triggered, this, &mdifrmMain::mnuWords_Click);
    menu("mnuView")->addAction(words);

    auto* languages = ownNamed<QMenu>("mnuLanguage", menuBar());
    languages->setIcon(icons::line(QStringLiteral("language")));
    menu("mnuSettings")->addMenu(languages);
    auto* group = own<QActionGroup>(this);
    for (int language = 1; language <= std::ssize(languageTexts); ++language) {
        auto* item = own<QAction>(group);
        item->setObjectName(languageItem(language));
        item->setCheckable(true);
        languages->addAction(item);
        connect(item, &QAction::triggered, this, [this, language] { mnuLangSel_Click(language); });
    }
}

void mdifrmMain::showEditMenu() {
    const QMdiSubWindow* front = mdi_->currentSubWindow();
    chMem_->grid()->showEditMenu(front != nullptr && front->widget() == chMem_);
}

void mdifrmMain::makeToolBar() {
    auto* bar = ownNamed<QToolBar>("tlbMdiFrmMain", this);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setIconSize({toolIconSize, toolIconSize});
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ButtonRow& row : buttonRows) {
        auto* action = ownNamed<QAction>(row.key, bar);
        action->setIcon(icons::line(QLatin1String(row.icon)));
        connect(action, &QAction::triggered, this,
                [this, action] { tlbmdifrmMain_ButtonClick(action->objectName()); });
        bar->addAction(action);
    }
    addToolBar(bar);
}

void mdifrmMain::setMenuFace() {
    const auto name = [this](const char* item, const QString& caption) {
        findChild<QAction*>(QLatin1String(item))->setText(caption);
    };
    for (const mainMenus::Menu& row : menus) {
        menuBar()->findChild<QMenu*>(QLatin1String(row.name))->setTitle(shownCaption(row));
    }
    for (const ItemRow& row : itemRows) {
        if (row.name != nullptr) {
            name(row.name, itemCaption(row));
        }
    }
    for (int language = 1; language <= std::ssize(languageTexts); ++language) {
        findChild<QAction*>(languageItem(language))
            ->setText(softText(languageTexts[static_cast<std::size_t>(language - 1)]));
    }
    menuBar()->findChild<QMenu*>(QStringLiteral("mnuRecent"))->setTitle(qSay(texts::recentFiles));
    menuBar()
        ->findChild<QMenu*>(QStringLiteral("mnuLanguage"))
        ->setTitle(softText(SoftText::menuLanguage));
    name("mnuLockCh", softText(SoftText::menuLockChannels));
    name("mnuWords", qSay(texts::viewWords));
    name("mnuShowErr", qSay(texts::viewErrorList));
    name("mnuShowTree", qSay(texts::viewTree));
}

void mdifrmMain::setToolBarFace() {
    auto* bar = findChild<QToolBar*>(QStringLiteral("tlbMdiFrmMain"));
    bar->setWindowTitle(qSay(texts::toolbarTitle));
    for (const ButtonRow& row : buttonRows) {
        auto* action = bar->findChild<QAction*>(QLatin1String(row.key));
        action->setText(softText(row.text));
        const QKeySequence keys = findChild<QAction*>(QLatin1String(row.item))->shortcut();
        action->setToolTip(
            QStringLiteral("%1 (%2)").arg(qSay(row.tip), keys.toString(QKeySequence::NativeText)));
    }
}

void mdifrmMain::checkLanguageItem() {
    findChild<QAction*>(languageItem(mdimoduMain::state().Language))->setChecked(true);
}

void mdifrmMain::tlbmdifrmMain_ButtonClick(const QString& key) {
    guarded("mdifrmMain->tlbmdifrmMain_ButtonClick", [&] {
        const auto* row = std::ranges::find_if(
            buttonRows, [&](const ButtonRow& button) { return key == QLatin1String(button.key); });
        if (row != buttonRows.end()) {
            command([&] { row->run(*this); });
        }
    });
}

}  // namespace k520
