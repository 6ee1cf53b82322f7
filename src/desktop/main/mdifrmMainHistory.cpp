// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Undo and redo in the main window, and what it shows of unsaved changes.
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include "desktop/channels/frmChGrid.h"
#include "desktop/channels/frmChMem.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/memview/frmMemDat.h"
#include "desktop/settings/frmOptPanel.h"
#include "desktop/settings/frmSysSet.h"
#include "desktop/widgets/qtText.h"
#include "program/changes.h"
#include "program/recovery.h"

namespace k520 {

void mdifrmMain::mnuUndo_Click() {
    showPlace(changes::undo());
}

void mdifrmMain::mnuRedo_Click() {
    showPlace(changes::redo());
}

void mdifrmMain::followHistory() {
    const auto show = [this](const char* name, const std::string& caption, bool enabled) {
        auto* action = findChild<QAction*>(QLatin1String(name));
        action->setText(qText(caption));
        action->setEnabled(enabled);
    };
    show("mnuUndo", changes::undoCaption(), changes::mayUndo());
    show("mnuRedo", changes::redoCaption(), changes::mayRedo());
    setWindowTitle(qText(changes::title()));
    // Every change is in a copy soon after; many at once are in one.
    if (!recovery_->isActive()) {
        recovery_->start(recovery::longestGapMs);
    }
    // The marks of changed cells come and go without a change of their text.
    chMem_->grid()->viewport()->update();
}

void mdifrmMain::showPlace(const history::Place& place) {
    const QMdiSubWindow* front = mdi_->currentSubWindow();
    const bool optionsInFront = front != nullptr && front->widget() == sysSet_;
    switch (place.kind) {
        case history::Place::Kind::cell:
            showChild(*chMem_);
            return chMem_->grid()->showCell(place.number, place.column);
        case history::Place::Kind::option:
            if (!optionsInFront) {
                showChild(*chMem_);
            }
            return (optionsInFront ? sysSet_->panel() : chMem_->panel())->showOption(place.number);
        case history::Place::Kind::band:
            showChild(*chMem_);
            return chMem_->showBand();
        case history::Place::Kind::byte:
            showMemDat();
            memDat_->showAddress(place.number);
            return;
        case history::Place::Kind::nothing:
            return;
    }
}

}  // namespace k520
