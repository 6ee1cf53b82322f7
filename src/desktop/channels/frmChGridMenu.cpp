// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The channel grid's commands in the pop-up menu and in the Edit menu.
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <array>

#include "app/ownTexts.h"
#include "channels/channelTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "desktop/channels/frmChGrid.h"
#include "desktop/widgets/CellGridModel.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

std::int16_t currentChannel() {
    return modChMem::state().currentChannel;
}

/// A command on channels, in the order of modChEdit::channelMenu.
struct ChannelCommand {
    const char* name;
    const char* icon;
    char mnemonic;
    void (*run)();
};

constexpr std::array channelCommands{
    ChannelCommand{"mnuOpenCh", "channel-open", 'O',
                   [] { modChEdit::openChannel(currentChannel()); }},
    ChannelCommand{"mnuDelOne", "channel-delete", 'L', modChMem::mnuDelOne_Click},
    ChannelCommand{"mnuDelAll", "channels-delete-all", 'N', modChMem::mnuDelAll_Click},
    ChannelCommand{"mnuSaveDef", "channel-default", 'S',
                   [] { modChEdit::saveAsDefault(currentChannel()); }}};

/// What the two menus hold, in their order; null is a separator. What takes all channels at once
/// stands apart.
constexpr std::array popUpItems{"mnuOpenCh", "mnuDelOne", "mnuSaveDef", "", "mnuCut",
                                "mnuCopy",   "mnuPaste",  "mnuClear",   "", "mnuDelAll"};
constexpr std::array editItems{"mnuCut", "mnuCopy",   "mnuPaste",  "mnuClear",   "", "mnuSelectAll",
                               "",       "mnuOpenCh", "mnuDelOne", "mnuSaveDef", "", "mnuDelAll"};

}  // namespace

/// A command on the selected cells. Its key is shown beside the caption; keyCommands has it too.
struct frmChGrid::CellCommand {
    const char* name;
    const char* icon;
    Text caption;
    QKeyCombination keys;
    bool changes;  ///< not while the channels are locked
    void (frmChGrid::*run)();
};

const std::vector<frmChGrid::CellCommand>& frmChGrid::cellCommands() {
    static const std::vector<CellCommand> all{
        {"mnuCut", "cut", texts::cutCells, Qt::ControlModifier | Qt::Key_X, true,
         &frmChGrid::cutCells},
        {"mnuCopy", "copy", texts::copyLines, Qt::ControlModifier | Qt::Key_C, false,
         &frmChGrid::copyCells},
        {"mnuPaste", "paste", texts::pasteCells, Qt::ControlModifier | Qt::Key_V, true,
         &frmChGrid::pasteCells},
        {"mnuClear", "cells-clear", texts::clearCells, Qt::Key_Delete, true,
         &frmChGrid::clearCells},
        {"mnuSelectAll", "select-all", texts::selectAllCells, Qt::ControlModifier | Qt::Key_A,
         false, &frmChGrid::selectAll},
    };
    return all;
}

void frmChGrid::makeMenu() {
    menu_->setObjectName(QStringLiteral("mnuChannel"));
    for (const ChannelCommand& command : channelCommands) {
        QAction* action = makeAction(command.name, command.icon);
        connect(action, &QAction::triggered, this, [this, &command] {
            endEdit();
            command.run();
        });
    }
    for (const CellCommand& command : cellCommands()) {
        QAction* action = makeAction(command.name, command.icon);
        action->setShortcut(QKeySequence(command.keys));
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, [this, &command] {
            endEdit();
            (this->*command.run)();
        });
    }
    fillMenu(*menu_, popUpItems);
    verticalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(verticalHeader(), &QWidget::customContextMenuRequested, this, [this](QPoint where) {
        showMenu(verticalHeader()->logicalIndexAt(where) + 1,
                 verticalHeader()->viewport()->mapToGlobal(where));
    });
}

QAction* frmChGrid::makeAction(const char* name, const char* icon) {
    auto* action = ownNamed<QAction>(name, icons::line(QLatin1String(icon)), QString(), this);
    actions_.push_back(action);
    return action;
}

QAction* frmChGrid::actionNamed(const char* name) const {
    return findChild<QAction*>(QLatin1String(name));
}

void frmChGrid::fillMenu(QMenu& menu, std::span<const char* const> names) {
    for (const std::string_view name : names) {
        if (name.empty()) {
            menu.addSeparator();
        } else {
            menu.addAction(actionNamed(name.data()));
        }
    }
}

void frmChGrid::fillEditMenu(QMenu& menu) {
    fillMenu(menu, editItems);
}

bool frmChGrid::showCommands(int gridRow, bool mnemonics) {
    endEdit();
    const auto items = modChEdit::channelMenu(toInt16(gridRow));
    for (std::size_t i = 0; i < items.size(); ++i) {
        const ChannelCommand& command = channelCommands.at(i);
        QAction* action = actionNamed(command.name);
        const QString caption = qText(items[i].caption);
        action->setText(mnemonics ? withMnemonic(caption, command.mnemonic) : caption);
        action->setEnabled(items[i].enabled);
    }
    for (const CellCommand& command : cellCommands()) {
        QAction* action = actionNamed(command.name);
        action->setText(qSay(command.caption));
        action->setEnabled(!command.changes || !modChEdit::locked());
    }
    return !items.empty();
}

void frmChGrid::showEditMenu(bool inFront) {
    // The texts, too, where there is nothing to act on.
    showCommands(std::max(1, CellGridModel::gridRow(currentIndex())), true);
    for (QAction* action : actions_) {
        action->setEnabled(inFront && action->isEnabled());
    }
}

void frmChGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        return showMenuOfCurrent();
    }
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid() && !selectionModel()->isSelected(index)) {
        goTo(index);
    }
    showMenu(rowAt(event->pos().y()) + 1, event->globalPos());
}

void frmChGrid::showMenuOfCurrent() {
    showMenu(CellGridModel::gridRow(currentIndex()),
             viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void frmChGrid::showMenu(int gridRow, const QPoint& where) {
    if (gridRow >= 1 && showCommands(gridRow, false)) {
        menu_->popup(where);
    }
}

}  // namespace k520
