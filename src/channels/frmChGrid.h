// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QTableView>

#include "app/Controls.h"

class QLabel;
class QMenu;

namespace k520 {

class CellGridModel;
class TitleHeader;

/// The channel grid `vsfgGridCh`: the core's grid as a table that is edited like a spreadsheet.
/// What may be edited, what becomes of a text and what the pop-up menu offers is decided by
/// modChEdit.
class frmChGrid : public QTableView {
    Q_OBJECT

  public:
    explicit frmChGrid(QWidget* parent = nullptr);

    /// Gives rows and columns the sizes of the settings, or more where texts need more. What is
    /// left of the width is shared out; what is missing is taken from columns wider than their
    /// texts.
    void fit();

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
    static const CellCommand cellCommands[3];

    void makeMenu();
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
    void copyCells();
    void cutCells();
    void pasteCells();

    void showMenuOfCurrent();
    void showMenu(int gridRow, const QPoint& where);

    CellGridModel* model_;
    TitleHeader* titles_;
    QMenu* menu_;
    QLabel* corner_;
};

}  // namespace k520
