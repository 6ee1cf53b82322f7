// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/mdifrmMain.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLibraryInfo>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <algorithm>

#include "app/Guard.h"
#include "app/look.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/viewSettings.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "desktop/channels/frmChGrid.h"
#include "desktop/channels/frmChMem.h"
#include "desktop/link/frmCommun.h"
#include "desktop/link/frmRadioInfo.h"
#include "desktop/link/frmToolCom.h"
#include "desktop/main/frmMainPlace.h"
#include "desktop/main/frmShowErr.h"
#include "desktop/main/frmStatusPanels.h"
#include "desktop/main/frmTreeView.h"
#include "desktop/memview/frmMemDat.h"
#include "desktop/settings/frmOptPanel.h"
#include "desktop/settings/frmSysSet.h"
#include "desktop/widgets/EditTable.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "desktop/widgets/screenRoom.h"
#include "link/session/modSession.h"
#include "memview/modMemDat.h"
#include "program/changes.h"
#include "program/modFileCmd.h"
#include "program/modPrint.h"
#include "program/modStartUp.h"
#include "program/recovery.h"
#include "settings/optionPanel.h"

namespace k520 {

namespace {

constexpr QSize firstSize{1100, 720};
constexpr int treeWidth = 165;
constexpr int twipsPerInch = 1440;

/// Gives a dialog its final size first: it is centred by the size that it has.
void openDialog(QDialog& dialog) {
    dialog.ensurePolished();
    dialog.resize(dialog.size().expandedTo(dialog.sizeHint()).boundedTo(roomOnScreen(dialog)));
    dialog.open();
}

std::int32_t twips(int pixels, int dotsPerInch) {
    return pixels * twipsPerInch / dotsPerInch;
}

}  // namespace

mdifrmMain::mdifrmMain()
    : mdi_(ownNamed<QMdiArea>("mdiArea", this)),
      status_(ownNamed<frmStatusPanels>("stbMain", this)),
      chMem_(ownNamed<frmChMem>("frmChMem", this)),
      recovery_(own<QTimer>(this)) {
    setObjectName(QStringLiteral("mdifrmMain"));
    setWindowIcon(icons::program());
    setAcceptDrops(true);
    setCentralWidget(mdi_);
    setStatusBar(status_);
    recovery_->setSingleShot(true);
    connect(recovery_, &QTimer::timeout, this, recovery::keep);
    makeMenus();
    makeToolBar();
    makeDocks();
    connectCore();
    connect(mdi_, &QMdiArea::subWindowActivated, this, &mdifrmMain::followFront);
    chMem_->hide();
    ForbidMaxForm();
}

mdifrmMain::~mdifrmMain() {
    // Its children go after this window, and tell of it.
    mdi_->disconnect(this);
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
                                  .showLockState =
                                      [this] {
                                          showLockState();
                                          showViewSettings();
                                          frmMainPlace::restore(*this, firstSize);
                                      }});
}

// Making the window.

void mdifrmMain::makeDocks() {
    tree_ = ownNamed<frmTreeView>("frmTreeView", this);
    addDockWidget(Qt::LeftDockWidgetArea, tree_);
    connect(tree_, &frmTreeView::windowWanted, this,
            [this](const QString& key) { command([&] { showWindow(key); }); });

    errors_ = ownNamed<frmShowErr>("frmShowErr", this);
    addDockWidget(Qt::BottomDockWidgetArea, errors_);
    errors_->hide();
    connect(status_, &frmStatusPanels::errorListWanted, errors_, [this] { errors_->show(); });

    auto* view = menuBar()->findChild<QMenu*>(QStringLiteral("mnuView"));
    for (const auto& [dock, name] : {std::pair<QDockWidget*, const char*>(errors_, "mnuShowErr"),
                                     std::pair<QDockWidget*, const char*>(tree_, "mnuShowTree")}) {
        dock->toggleViewAction()->setObjectName(QLatin1String(name));
        connect(dock->toggleViewAction(), &QAction::triggered, this, [this] { command([] {}); });
        view->addAction(dock->toggleViewAction());
    }
    errors_->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("F9")));
}

void mdifrmMain::connectCore() {
    following_ = {modChMem::state().onDecoded.subscribe(optionPanel::InitOpt),
                  modChMem::state().onFormRefresh.subscribe([this] { followFormRefresh(); }),
                  optionPanel::state().onChange.subscribe([this] { followPanel(); }),
                  modFileCmd::state().onFilePanel.subscribe([this] { followDocument(); }),
                  documentOrigin::state().onChange.subscribe([this] { followDocument(); }),
                  history::state().onChange.subscribe([this] { followHistory(); })};
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
    const auto& s = look::state();
    if (!s.fontInUse.empty()) {
        QFont font = QApplication::font();
        font.setFamily(qText(s.fontInUse));
        QApplication::setFont(font);
    }
    if (mdimoduMain::state().Language == mdimoduMain::languageChinese &&
        toolkitTexts_.load(QStringLiteral("qtbase_zh_CN"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&toolkitTexts_);
    }
    setMenuFace();
    followHistory();
    setToolBarFace();
    status_->SetSoftFace();
    tree_->InitRadioSet();
    resizeDocks({tree_}, {std::max(treeWidth, tree_->neededWidth())}, Qt::Horizontal);
    errors_->SetSoftFace();
    chMem_->SetSoftFace();
}

void mdifrmMain::showLockState() {
    findChild<QAction*>(QStringLiteral("mnuLockCh"))->setChecked(modChEdit::locked());
    followHistory();
    status_->refresh();
}

// Commands.

void mdifrmMain::command(const std::function<void()>& body) {
    if (EditTable::commitAll()) {
        body();
    }
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
        commun_->setMayRead(changes::mayLeave);
        connect(commun_, &frmCommun::memDatWanted, this, &mdifrmMain::showMemDat);
        connect(commun_, &frmCommun::sessionEnded, this, [this] {
            if (radioInfo_ != nullptr) {
                radioInfo_->refresh();
            }
            recovery::keep();
        });
    }
    commun_->prepare(direction);
    openDialog(*commun_);
}

void mdifrmMain::selectPort() {
    auto* dialog = ownNamed<frmToolCom>("frmToolCom", this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::finished, status_, &frmStatusPanels::refresh);
    openDialog(*dialog);
}

void mdifrmMain::mnuLangSel_Click(int language) {
    bool close = false;
    command([&] { close = modStartUp::SwiLangFace(static_cast<std::int16_t>(language)); });
    checkLanguageItem();
    if (close) {
        ExitSoft();
    }
}

void mdifrmMain::mnuLockCh_Click(bool lock) {
    command([&] { modStartUp::lockChannels(lock); });
    showLockState();
}

void mdifrmMain::mnuWords_Click(bool shown) {
    command([] {});
    chMem_->showWords(shown);
    viewSettings::store(viewSettings::channelWords, shown ? "1" : "0");
}

/// Shows what the settings file says of the menu View.
void mdifrmMain::showViewSettings() {
    const bool words = viewSettings::stored(viewSettings::channelWords) == "1";
    findChild<QAction*>(QStringLiteral("mnuWords"))->setChecked(words);
    chMem_->showWords(words);
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
            connect(radioInfo_, &frmRadioInfo::memDatWanted, this,
                    [this] { command([this] { showMemDat(); }); });
        }
        radioInfo_->refresh();
        showChild(*radioInfo_);
    }
}

void mdifrmMain::showMemDat() {
    if (memDat_ == nullptr) {
        memDat_ = ownNamed<frmMemDat>("frmMemDat");
    }
    modMemDat::TableFreDat();
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

void mdifrmMain::followFront(const QMdiSubWindow* front) {
    if (front != nullptr) {
        const QWidget* child = front->widget();
        const char* key = child == chMem_       ? "ChInfo"
                          : child == radioInfo_ ? "RadioInfo"
                          : child == sysSet_    ? "SysSet"
                                                : "";
        tree_->showCurrent(QLatin1String(key));
        for (auto* table : mdi_->findChildren<EditTable*>()) {
            if (!front->isAncestorOf(table)) {
                table->endEdit();
            }
        }
    } else if (mdi_->currentSubWindow() == nullptr) {
        // Without a child window the keyboard would be nowhere.
        tree_->showCurrent({});
        tree_->widget()->setFocus();
    }
}

void mdifrmMain::followFormRefresh() {
    optionPanel::show();
    chMem_->refresh();
    if (radioInfo_ != nullptr) {
        radioInfo_->refresh();
    }
    if (memDat_ != nullptr) {
        modMemDat::TableFreDat();
    }
}

void mdifrmMain::followPanel() {
    chMem_->panel()->showState();
    if (sysSet_ != nullptr) {
        sysSet_->panel()->showState();
    }
}

void mdifrmMain::followDocument() {
    status_->refresh();
    chMem_->showNotice(qText(modFileCmd::shownNotice()));
}

void mdifrmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    chMem_->setFocus();
}

void mdifrmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Some window managers offer it all the same.
    if (event->type() == QEvent::WindowStateChange && isMaximized()) {
        setWindowState(windowState() & ~Qt::WindowMaximized);
    }
}

void mdifrmMain::closeEvent(QCloseEvent* event) {
    if (modSession::running() && commun_ != nullptr) {
        commun_->refuseClose();
    }
    if (modSession::running() || !EditTable::commitAll() || !modStartUp::MDIForm_QueryUnload()) {
        event->ignore();
        return;
    }
    const QRect shape = frameGeometry();
    const int dpi = logicalDpiX();
    modStartUp::SaveMdiFormShape({twips(shape.height(), dpi), twips(shape.width(), dpi),
                                  twips(shape.left(), dpi), twips(shape.top(), dpi)});
    frmMainPlace::save(*this);
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this) {
            window->close();
        }
    }
    event->accept();
}

}  // namespace k520
