// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QPersistentModelIndex>
#include <QTableView>

namespace k520 {

/// What an in-cell editor has to do before its text is taken.
class CellEditor {
  public:
    virtual ~CellEditor() = default;

    /// Closes the editor's own lists and takes what is highlighted in them. Returns false, after
    /// telling the user why, where the text cannot be stored.
    virtual bool settle() = 0;
};

/// A table that knows its open cell editor. Every command that works on the data asks all tables
/// first (commitAll), so that what a cell shows is what the command works on; where the keyboard is
/// does not matter. An editor never stays open when the cursor leaves its cell or the table is
/// hidden.
class EditTable : public QTableView {
    Q_OBJECT

  public:
    using QTableView::QTableView;

    /// Stores what the open editor of every table holds, and closes it. Returns false where an
    /// editor holds what cannot be stored: it stays open, has told why, and has the keyboard.
    [[nodiscard]] static bool commitAll();

    /// Closes the open editor; what it holds is stored where it can be.
    void endEdit();

  protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void hideEvent(QHideEvent* event) override;

    /// The open editor, or null.
    [[nodiscard]] QWidget* openEditor() const;
    /// Stores what the open editor holds and closes it; false where that cannot be stored.
    [[nodiscard]] bool commitEditor();

  private:
    QPersistentModelIndex edited_;
};

}  // namespace k520
