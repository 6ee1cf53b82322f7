// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QMainWindow>
#include <QTranslator>
#include <array>
#include <functional>

#include "base/Signal.h"
#include "document/history.h"
#include "link/protocol/communView.h"
#include "program/modStartUp.h"

class QMdiArea;
class QMdiSubWindow;
class QTimer;

namespace k520 {

class frmChMem;
class frmCommun;
class frmMemDat;
class frmRadioInfo;
class frmShowErr;
class frmStatusPanels;
class frmSysSet;
class frmTreeView;

/// The main window: menus, toolbar, status bar, the docked tree and error list, and the child
/// windows of the radio's data. Its commands are those of modFileCmd, modStartUp and the dialogs;
/// it only reaches them.
class mdifrmMain : public QMainWindow {
    Q_OBJECT

  public:
    mdifrmMain();
    ~mdifrmMain() override;
    mdifrmMain(const mdifrmMain&) = delete;
    mdifrmMain& operator=(const mdifrmMain&) = delete;

    /// The start-up. The caller shows the window, unless the program is to quit.
    [[nodiscard]] modStartUp::StartResult Form_Load();

    /// Applies interface texts and font to every window.
    void SetSoftFace();
    /// Takes maximising and minimising from the window.
    void ForbidMaxForm();

    /// What a toolbar button does, by its key; nothing for an unknown one.
    void tlbmdifrmMain_ButtonClick(const QString& key);
    /// Show the communication dialog for one direction.
    void mnuReadFre_Click();
    void mnuWriteFre_Click();
    /// The port dialog; afterwards the status bar shows the port.
    void selectPort();
    /// Stores a language 1 to 3 for the next start and closes; nothing for the one in force.
    void mnuLangSel_Click(int language);
    /// Locks or unlocks the channels and shows that.
    void mnuLockCh_Click(bool lock);
    /// Shows one of the windows that the tree stands for ("RadioInfo", "ChInfo", "SysSet").
    void showWindow(const QString& key);
    /// The memory data window, filled with what the image holds now.
    void showMemDat();
    /// Shows the channels in words or no longer, and remembers it.
    void mnuWords_Click(bool shown);
    /// Takes the last step back, or makes it again, and shows where it was.
    void mnuUndo_Click();
    void mnuRedo_Click();
    /// Closes the window, which asks.
    void ExitSoft();

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    /// A data file may be dropped anywhere in the window.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void makeMenus();
    void makeToolBar();
    void makeDocks();
    void connectCore();
    void setToolBarFace();
    void setMenuFace();
    /// Runs a command on what the window shows: an open cell editor is stored first, and where it
    /// cannot be stored the command does not run.
    void command(const std::function<void()>& body);
    /// The tree marks the child window in front, and no editor stays open in another one.
    void followFront(const QMdiSubWindow* front);
    void showChild(QWidget& child);
    void communicate(Direction direction);
    void showEditMenu();
    void showRecentMenu();
    void openFile(const QString& path);
    void checkLanguageItem();
    void showViewSettings();
    void showLockState();
    void followFormRefresh();
    void followPanel();
    void followDocument();
    void followHistory();
    void showPlace(const history::Place& place);

    QMdiArea* mdi_;
    frmStatusPanels* status_;
    frmTreeView* tree_ = nullptr;
    frmShowErr* errors_ = nullptr;
    frmCommun* commun_ = nullptr;
    // Children of the frame, made on first use and kept.
    frmChMem* chMem_;
    frmRadioInfo* radioInfo_ = nullptr;
    frmSysSet* sysSet_ = nullptr;
    frmMemDat* memDat_ = nullptr;
    QTimer* recovery_;  ///< runs from a change until its copy is made
    QTranslator toolkitTexts_;
    std::array<Subscription, 6> following_;
};

}  // namespace k520
