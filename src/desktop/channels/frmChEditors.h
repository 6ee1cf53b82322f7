// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QStyledItemDelegate>

#include "desktop/widgets/EditTable.h"
#include "desktop/widgets/SteadyComboBox.h"

/// The in-cell editors of the channel grid and the delegate that makes them.
namespace k520 {

class frmChOffers;

/// A drop-down list in a cell. It says once how it ends.
class CellComboBox : public SteadyComboBox, public CellEditor {
    Q_OBJECT

  public:
    using SteadyComboBox::SteadyComboBox;

    void finish(QAbstractItemDelegate::EndEditHint hint);
    bool settle() override;

  signals:
    /// RevertModelCache: nothing was chosen. Any other hint: the text is to be stored, and where
    /// to go from there.
    void finished(QAbstractItemDelegate::EndEditHint hint);

  protected:
    /// No way out: a list that is hidden with the focus would take the grid for the next control
    /// and make it go on to its next cell.
    bool focusNextPrevChild(bool next) override;
    /// From an open list takes the entry that is highlighted.
    void takeHighlighted();

  private:
    bool finished_ = false;
};

/// The list of a cell. It opens at once; a choice ends it, and so does closing it without one.
class ListEditor : public CellComboBox {
    Q_OBJECT

  public:
    ListEditor(const QStringList& choices, const QString& text, QWidget* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

  signals:
    void shown();
    void listClosed();

  protected:
    void showEvent(QShowEvent* event) override;
    /// A letter goes to the next entry that starts with it.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void open();
    bool leaveByTab(int key);
};

/// The tone editor `cboGridChCtdcs`: all tones in a list, and a line `txtGridChCtdcs` that offers
/// those which contain what is typed. Up and Down put an offer into the line; where there is none
/// they open the whole list.
class ToneEditor : public CellComboBox {
    Q_OBJECT

  public:
    ToneEditor(const QString& text, QWidget* parent);

    void showPopup() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    frmChOffers* offers_;
};

/// Makes the editor that the cell's edit mode asks for, filled with the cell's text. Return and the
/// choice of an entry end an edit as described at CellComboBox.
class ChannelDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Null for a cell that has no way of editing.
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    /// Nothing: a change beside the edit must not replace what is being typed.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Nothing for a line in which nothing was typed: looking into a cell is not an edit, but
    /// typing what is there already is one.
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    /// Frequencies stand with their points below each other.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

  private:
    void end(QWidget* editor, EndEditHint hint);
    QWidget* watched(CellComboBox* editor) const;
};

}  // namespace k520
