// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <span>
#include <vector>

#include "base/Controls.h"
#include "desktop/widgets/EditTable.h"

class QLabel;
class QMenu;

namespace k520 {

class CellGridModel;
class TitleHeader;

/// The channel grid `vsfgGridCh`: the core's grid as a table that is edited like a spreadsheet.
/// What may be edited, what becomes of a text and what the pop-up menu offers is decided by
/// modChEdit.
class frmChGrid : public EditTable {
    Q_OBJECT

  public:
    explicit frmChGrid(QWidget* parent = nullptr);

    /// Gives rows and columns the sizes of the settings, or more where texts need more. What is
    /// left of the width is shared out; what is missing is taken from columns wider than their
    /// texts.
    void fit();

    /// Puts the commands on cells and channels into a menu, which has to call showEditMenu before
    /// it opens. They are `inFront` where the user sees what they work on; otherwise none can be
    /// chosen.
    void fillEditMenu(QMenu& menu);
    void showEditMenu(bool inFront);

    /// Selects a cell, counted as the core does, and scrolls to it.
    void showCell(int row, int column);

    /// The table's own search by letters would take keys that a cell refuses.
    void keyboardSearch(const QString&) override {}

  protected:
    /// Asks the core first.
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct KeyCommand;
    static const KeyCommand keyCommands[];
    struct CellCommand;
    static const std::vector<CellCommand>& cellCommands();

    void makeMenu();
    [[nodiscard]] QAction* makeAction(const char* name, const char* icon);
    [[nodiscard]] QAction* actionNamed(const char* name) const;
    void fillMenu(QMenu& menu, std::span<const char* const> names);
    /// Gives the commands captions and states for the channel of a row; false where it is none.
    bool showCommands(int gridRow, bool mnemonics);
    void makeCorner();
    void afterReset();

    void fitColumns(int room);
    /// The width in pixels that the texts of a column need.
    [[nodiscard]] int neededWidth(int column) const;
    [[nodiscard]] int neededRowHeight() const;

    [[nodiscard]] bool canStep(int cellCount) const;
    void step(int cellCount);
    void goDown() { goRows(1); }
    void goUp() { goRows(-1); }
    void goRows(int rows);
    void goToFirst();
    void goToLast();
    void goTo(const QModelIndex& index);

    void startEdit();
    void openList();
    void doubleClicked(const QModelIndex& index);
    void clearCells();
    [[nodiscard]] static bool mayEmpty(const QModelIndexList& chosen);
    void copyCells();
    void cutCells();
    void pasteCells();

    void showMenuOfCurrent();
    void showMenu(int gridRow, const QPoint& where);

    CellGridModel* model_;
    TitleHeader* titles_;
    std::vector<QAction*> actions_;
    QMenu* menu_;
    QLabel* corner_;
};

}  // namespace k520
