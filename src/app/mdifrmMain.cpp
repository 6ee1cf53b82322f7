// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdifrmMain.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLibraryInfo>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QToolBar>
#include <array>

#include "app/Guard.h"
#include "app/frmShowErr.h"
#include "app/frmStatusPanels.h"
#include "app/frmTreeView.h"
#include "app/mdimoduMain.h"
#include "app/modFileCmd.h"
#include "app/modPrint.h"
#include "app/modShowErr.h"
#include "channels/frmChMem.h"
#include "channels/modChMem.h"
#include "desktop/icons.h"
#include "desktop/owned.h"
#include "desktop/qtText.h"
#include "link/frmCommun.h"
#include "link/frmRadioInfo.h"
#include "link/frmToolCom.h"
#include "link/modSession.h"
#include "memview/frmMemDat.h"
#include "settings/frmOptPanel.h"
#include "settings/frmSysSet.h"
#include "settings/optionPanel.h"

namespace k520 {

namespace {

constexpr int titleText = 16;
constexpr QSize firstSize{1100, 720};
constexpr int toolIconSize = 24;
constexpr int treeWidth = 165;
constexpr int twipsPerInch = 1440;

/// The menus of the menu bar and their captions.
struct MenuRow {
    const char* name;
    int text;
};
constexpr std::array menuRows{MenuRow{"mnuFile", 20},   MenuRow{"mnuProgram", 26},
                              MenuRow{"mnuOption", 29}, MenuRow{"mnuSettings", 31},
                              MenuRow{"mnuView", 0},    MenuRow{"mnuHelp", 36}};

using Main = mdifrmMain;

/// An item of a menu; a row without a name is a separator.
struct ItemRow {
    const char* menu;
    const char* name = nullptr;
    int text = 0;
    const char* icon = nullptr;
    const char* keys = nullptr;
    void (*run)(Main&) = nullptr;
};
const std::array itemRows{
    ItemRow{"mnuFile", "mnuNew", 21, "file-new", "Ctrl+N", [](Main&) { modFileCmd::NewFile(); }},
    ItemRow{"mnuFile", "mnuOpen", 22, "file-open", "Ctrl+O", [](Main&) { modFileCmd::OpenFile(); }},
    ItemRow{"mnuFile", "mnuSave", 23, "file-save", "Ctrl+S", [](Main&) { modFileCmd::SaveFile(); }},
    ItemRow{"mnuFile", "mnuSaveAs", 24, "file-save-as", "Ctrl+Shift+S",
            [](Main&) { modFileCmd::SaveAsFile(); }},
    ItemRow{"mnuFile", "mnuPrint", 43, "print", "Ctrl+P", [](Main&) { modPrint::Print(); }},
    ItemRow{"mnuFile"},
    ItemRow{"mnuFile", "mnuExit", 25, "exit", "Ctrl+Q", [](Main& main) { main.ExitSoft(); }},
    ItemRow{"mnuProgram", "mnuReadFre", 27, "radio-read", "F5",
            [](Main& main) { main.mnuReadFre_Click(); }},
    ItemRow{"mnuProgram", "mnuWriteFre", 28, "radio-write", "F6",
            [](Main& main) { main.mnuWriteFre_Click(); }},
    ItemRow{"mnuOption", "mnuOptFeature", 30, "options", "F7",
            [](Main& main) { main.showWindow(QStringLiteral("SysSet")); }},
    ItemRow{"mnuSettings", "mnuCom", 32, "port", "F8",
            [](Main& main) { main.tlbmdifrmMain_ButtonClick(QStringLiteral("Com")); }},
    ItemRow{"mnuHelp", "mnuHelpTopic", 37, "help", "F1", [](Main&) { modStartUp::Help(); }}};

/// The toolbar's buttons, by their keys.
struct ButtonRow {
    const char* key;
    int text;
    const char* icon;
    void (*run)(Main&);
};
const std::array buttonRows{
    ButtonRow{"FileNew", 0, "file-new", [](Main&) { modFileCmd::NewFile(); }},
    ButtonRow{"FileOpen", 1, "file-open", [](Main&) { modFileCmd::OpenFile(); }},
    ButtonRow{"FileSave", 2, "file-save", [](Main&) { modFileCmd::SaveFile(); }},
    ButtonRow{"Read", 3, "radio-read", [](Main& main) { main.mnuReadFre_Click(); }},
    ButtonRow{"Write", 4, "radio-write", [](Main& main) { main.mnuWriteFre_Click(); }},
    ButtonRow{"Com", 5, "port", [](Main& main) { main.selectPort(); }},
    ButtonRow{"Print", 8, "print", [](Main&) { modPrint::Print(); }},
    ButtonRow{"Help", 6, "help", [](Main&) { modStartUp::Help(); }},
    ButtonRow{"Exit", 7, "exit", [](Main& main) { main.ExitSoft(); }}};

/// The language menu, in the order of the languages' numbers.
constexpr std::array languageTexts{34, 57, 35};
constexpr int languageMenuText = 33;
constexpr int lockText = 47;

QString languageItem(int language) {
    return QStringLiteral("mnuLangSel%1").arg(language - 1);
}

std::int32_t twips(int pixels, int dotsPerInch) {
    return pixels * twipsPerInch / dotsPerInch;
}

}  // namespace

mdifrmMain::mdifrmMain()
    : mdi_(ownNamed<QMdiArea>("mdiArea", this)),
      status_(ownNamed<frmStatusPanels>("stbMain", this)),
      chMem_(ownNamed<frmChMem>("frmChMem")) {
    setObjectName(QStringLiteral("mdifrmMain"));
    setWindowIcon(icons::program());
    setCentralWidget(mdi_);
    setStatusBar(status_);
    makeMenus();
    makeToolBar();
    makeDocks();
    connectCore();
    ForbidMaxForm();
    resize(firstSize);
}

mdifrmMain::~mdifrmMain() {
    modChMem::state().onFormRefresh = nullptr;
    optionPanel::state().onChange = nullptr;
    modFileCmd::state().onFilePanel = nullptr;
}

modStartUp::StartResult mdifrmMain::Form_Load() {
    return modStartUp::Form_Load({.checkLanguageItem = [this] { checkLanguageItem(); },
                                  .setSoftFace = [this] { SetSoftFace(); },
                                  .initChannelForm =
                                      [this] {
                                          optionPanel::InitFace();
                                          chMem_->refresh();
                                      },
                                  .showChannelForm = [this] { showChild(*chMem_); },
                                  .showLockState = [this] { showLockState(); }});
}

// Making the window.

void mdifrmMain::makeMenus() {
    for (const MenuRow& row : menuRows) {
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
        action->setShortcut(QKeySequence(QLatin1String(row.keys)));
        connect(action, &QAction::triggered, this, [this, &row] { row.run(*this); });
        menu(row.menu)->addAction(action);
    }
    auto* lock = ownNamed<QAction>("mnuLockCh", this);
    lock->setCheckable(true);
    lock->setIcon(icons::line(QStringLiteral("lock")));
    connect(lock, &QAction::triggered, this, &mdifrmMain::mnuLockCh_Click);
    menu("mnuOption")->addAction(lock);

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

void mdifrmMain::makeDocks() {
    tree_ = ownNamed<frmTreeView>("frmTreeView", this);
    addDockWidget(Qt::LeftDockWidgetArea, tree_);
    resizeDocks({tree_}, {treeWidth}, Qt::Horizontal);
    connect(tree_, &frmTreeView::windowWanted, this, &mdifrmMain::showWindow);

    errors_ = ownNamed<frmShowErr>("frmShowErr", this);
    addDockWidget(Qt::BottomDockWidgetArea, errors_);
    errors_->hide();
    connect(status_, &frmStatusPanels::errorListWanted, errors_, [this] { errors_->show(); });

    auto* view = menuBar()->findChild<QMenu*>(QStringLiteral("mnuView"));
    for (const auto& [dock, name] : {std::pair<QDockWidget*, const char*>(errors_, "mnuShowErr"),
                                     std::pair<QDockWidget*, const char*>(tree_, "mnuShowTree")}) {
        dock->toggleViewAction()->setObjectName(QLatin1String(name));
        view->addAction(dock->toggleViewAction());
    }
    errors_->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("F9")));
}

void mdifrmMain::connectCore() {
    modChMem::state().onFormRefresh = [this] { followFormRefresh(); };
    optionPanel::state().onChange = [this] { followPanel(); };
    modFileCmd::state().onFilePanel = [this] { status_->refresh(); };
    const auto* errors = errors_->findChild<QListView*>(QStringLiteral("listShowErr"));
    connect(errors->model(), &QAbstractItemModel::rowsInserted, status_,
            [this] { status_->setFailures(static_cast<int>(modShowErr::state().entries.size())); });
}

void mdifrmMain::ForbidMaxForm() {
    guarded("mdifrmMain->ForbidMaxForm", [this] {
        const Qt::WindowFlags without =
            Qt::WindowMinMaxButtonsHint | Qt::WindowFullscreenButtonHint;
        setWindowFlags((windowFlags() & ~without) | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    });
}

// Texts.

void mdifrmMain::SetSoftFace() {
    const auto& s = mdimoduMain::state();
    if (!s.fontInUse.empty()) {
        QFont font = QApplication::font();
        font.setFamily(qText(s.fontInUse));
        QApplication::setFont(font);
    }
    if (s.Language == mdimoduMain::languageChinese &&
        toolkitTexts_.load(QStringLiteral("qtbase_zh_CN"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&toolkitTexts_);
    }
    setWindowTitle(softText(titleText));
    setMenuFace();
    setToolBarFace();
    status_->SetSoftFace();
    tree_->InitRadioSet();
    errors_->SetSoftFace();
    chMem_->SetSoftFace();
}

void mdifrmMain::setMenuFace() {
    const auto name = [this](const char* item, const QString& caption) {
        findChild<QAction*>(QLatin1String(item))->setText(caption);
    };
    for (const MenuRow& row : menuRows) {
        menuBar()
            ->findChild<QMenu*>(QLatin1String(row.name))
            ->setTitle(row.text == 0 ? ownQText(OwnText::menuView) : softText(row.text));
    }
    for (const ItemRow& row : itemRows) {
        if (row.name != nullptr) {
            name(row.name, softText(row.text));
        }
    }
    for (int language = 1; language <= std::ssize(languageTexts); ++language) {
        findChild<QAction*>(languageItem(language))
            ->setText(softText(languageTexts[static_cast<std::size_t>(language - 1)]));
    }
    menuBar()
        ->findChild<QMenu*>(QStringLiteral("mnuLanguage"))
        ->setTitle(softText(languageMenuText));
    name("mnuLockCh", softText(lockText));
    name("mnuShowErr", ownQText(OwnText::viewErrorList));
    name("mnuShowTree", ownQText(OwnText::viewTree));
}

void mdifrmMain::setToolBarFace() {
    auto* bar = findChild<QToolBar*>(QStringLiteral("tlbMdiFrmMain"));
    bar->setWindowTitle(ownQText(OwnText::toolbarTitle));
    for (const ButtonRow& row : buttonRows) {
        auto* action = bar->findChild<QAction*>(QLatin1String(row.key));
        action->setText(softText(row.text));
        action->setToolTip(softText(row.text));
    }
}

void mdifrmMain::checkLanguageItem() {
    findChild<QAction*>(languageItem(mdimoduMain::state().Language))->setChecked(true);
}

void mdifrmMain::showLockState() {
    const bool locked = mdimoduMain::state().lockState == mdimoduMain::locked;
    findChild<QAction*>(QStringLiteral("mnuLockCh"))->setChecked(locked);
    status_->refresh();
}

// Commands.

void mdifrmMain::tlbmdifrmMain_ButtonClick(const QString& key) {
    guarded("mdifrmMain->tlbmdifrmMain_ButtonClick", [&] {
        const auto* row = std::ranges::find_if(
            buttonRows, [&](const ButtonRow& button) { return key == QLatin1String(button.key); });
        if (row != buttonRows.end()) {
            row->run(*this);
        }
    });
}

void mdifrmMain::mnuReadFre_Click() {
    communicate(Direction::read);
}

void mdifrmMain::mnuWriteFre_Click() {
    communicate(Direction::write);
}

void mdifrmMain::communicate(Direction direction) {
    if (commun_ == nullptr) {
        commun_ = ownNamed<frmCommun>("frmCommun", this);
        connect(commun_, &frmCommun::memDatWanted, this, &mdifrmMain::showMemDat);
        connect(commun_, &frmCommun::sessionEnded, this, [this] {
            if (radioInfo_ != nullptr) {
                radioInfo_->refresh();
            }
        });
    }
    commun_->prepare(direction);
    commun_->open();
}

void mdifrmMain::selectPort() {
    auto* dialog = ownNamed<frmToolCom>("frmToolCom", this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::finished, status_, &frmStatusPanels::refresh);
    dialog->open();
}

void mdifrmMain::mnuLangSel_Click(int language) {
    const bool close = modStartUp::SwiLangFace(static_cast<std::int16_t>(language));
    checkLanguageItem();
    if (close) {
        ExitSoft();
    }
}

void mdifrmMain::mnuLockCh_Click(bool lock) {
    modStartUp::lockChannels(lock);
    showLockState();
}

void mdifrmMain::ExitSoft() {
    guarded("mdifrmMain->ExitSoft", [this] { close(); });
}

// Child windows.

void mdifrmMain::showWindow(const QString& key) {
    if (key == QLatin1String("ChInfo")) {
        showChild(*chMem_);
    } else if (key == QLatin1String("SysSet")) {
        if (sysSet_ == nullptr) {
            sysSet_ = ownNamed<frmSysSet>("frmSysSet");
            sysSet_->panel()->showState();
        }
        showChild(*sysSet_);
    } else if (key == QLatin1String("RadioInfo")) {
        if (radioInfo_ == nullptr) {
            radioInfo_ = ownNamed<frmRadioInfo>("frmRadioInfo");
            connect(radioInfo_, &frmRadioInfo::memDatWanted, this, &mdifrmMain::showMemDat);
        }
        radioInfo_->refresh();
        showChild(*radioInfo_);
    }
}

void mdifrmMain::showMemDat() {
    if (memDat_ == nullptr) {
        memDat_ = ownNamed<frmMemDat>("frmMemDat");
    }
    showChild(*memDat_);
}

void mdifrmMain::showChild(QWidget& child) {
    auto* window = qobject_cast<QMdiSubWindow*>(child.parentWidget());
    if (window == nullptr) {
        // Closing it only hides it: it is kept for the next time.
        window = own<QMdiSubWindow>();
        window->setWidget(&child);
        window->setWindowIcon(windowIcon());
        mdi_->addSubWindow(window);
    }
    child.show();
    window->showMaximized();
    mdi_->setActiveSubWindow(window);
    child.setFocus();
}

void mdifrmMain::followFormRefresh() {
    optionPanel::InitOpt();
    chMem_->refresh();
    if (radioInfo_ != nullptr) {
        radioInfo_->refresh();
    }
}

void mdifrmMain::followPanel() {
    chMem_->panel()->showState();
    if (sysSet_ != nullptr) {
        sysSet_->panel()->showState();
    }
}

void mdifrmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Some window managers offer it all the same.
    if (event->type() == QEvent::WindowStateChange && isMaximized()) {
        setWindowState(windowState() & ~Qt::WindowMaximized);
    }
}

void mdifrmMain::closeEvent(QCloseEvent* event) {
    if (modSession::state().busyMark != 0 || !modStartUp::MDIForm_QueryUnload()) {
        event->ignore();
        return;
    }
    const QRect shape = frameGeometry();
    const int dpi = logicalDpiX();
    modStartUp::SaveMdiFormShape({twips(shape.height(), dpi), twips(shape.width(), dpi),
                                  twips(shape.left(), dpi), twips(shape.top(), dpi)});
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this) {
            window->close();
        }
    }
    event->accept();
}

}  // namespace k520
