// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QAbstractTableModel>
#include <QRect>
#include <functional>

#include "base/Controls.h"

namespace k520 {

/// A cell grid as an item model. The grid's row 0 and column 0, its titles, are the model's
/// headers, so model row 0 is grid row 1. Changes of many cells reach the views together, when
/// events are next served.
class CellGridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// What a window adds to the plain grid; rows and columns are the grid's own, from 1.
    struct Rules {
        /// Whether a user may edit the cell in the view's editor. None: no cell.
        std::function<bool(int row, int column)> mayEdit = {};
        /// Stores what a user typed or chose; returns whether it was taken.
        std::function<bool(int row, int column, const QString& text)> edited = {};
        /// The tip of a cell; empty for none.
        std::function<QString(int row, int column)> tip = {};
        /// Whether a cell has the mark of a change in its corner. None: no cell has.
        std::function<bool(int row, int column)> marked = {};
        /// The tip of a column's title; empty for none.
        std::function<QString(int column)> titleTip = {};
        /// A row in words, for the tip of its title and for screen readers; empty for none.
        std::function<QString(int row)> rowWords = {};
    };

    CellGridModel(CellGrid& grid, Rules rules, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    /// Display and Edit: the text. Background: the cell's colour; Foreground: black or white,
    /// whichever can be read on it. CellGridModel::choicesRole: the list of a cell, as QStringList.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    static constexpr int choicesRole = Qt::UserRole;
    static constexpr int markedRole = Qt::UserRole + 1;  ///< bool: see Rules::marked

    [[nodiscard]] static int gridRow(const QModelIndex& index) { return index.row() + 1; }
    [[nodiscard]] static int gridColumn(const QModelIndex& index) { return index.column() + 1; }
    /// The index of a grid cell; an invalid one for titles and outside the grid.
    [[nodiscard]] QModelIndex indexOf(int row, int column) const {
        return index(row - 1, column - 1);
    }

    [[nodiscard]] const CellGrid& grid() const { return grid_; }

  private:
    void noteChange(int row, int column);
    void tellChanges();

    CellGrid& grid_;
    Rules rules_;
    QRect changed_;  ///< model cells whose change the views have not been told yet
    Subscription cellChanged_;
    Subscription reset_;
};

/// Twips (1/1440 inch) of the settings as pixels of a screen with so many dots an inch.
[[nodiscard]] constexpr int pixelsOfTwips(int twips, int dotsPerInch) noexcept {
    return twips * dotsPerInch / 1440;
}

}  // namespace k520
