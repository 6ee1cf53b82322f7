// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QTableView>

namespace k520 {

/// Beside the channel grid: each channel as a sentence, in the row of the channel. Nothing can be
/// edited here; the row of the sentence that is clicked becomes the grid's.
class frmChWords : public QTableView {
    Q_OBJECT

  public:
    /// Follows `grid`, which has to live as long.
    explicit frmChWords(QTableView& grid, QWidget* parent = nullptr);

    /// The title in the language in force, and the sizes of the grid's rows.
    void refresh();

    [[nodiscard]] QSize sizeHint() const override;

  private:
    QTableView& grid_;
};

}  // namespace k520
