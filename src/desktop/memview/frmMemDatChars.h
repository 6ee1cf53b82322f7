// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QTableView>

namespace k520 {

/// The characters beside a table of bytes: the same rows and columns, each byte as one character.
/// It scrolls with that table, has its current byte, and follows its marks.
class frmMemDatChars : public QTableView {
    Q_OBJECT

  public:
    /// `bytes` has its model already, and outlives this view.
    explicit frmMemDatChars(QTableView& bytes, QWidget* parent = nullptr);

    /// The width at which every character is seen.
    [[nodiscard]] QSize sizeHint() const override;
    /// It never keeps a window from getting narrower.
    [[nodiscard]] QSize minimumSizeHint() const override { return {}; }

  private:
    void shape();
    void follow();

    QTableView& bytes_;
};

}  // namespace k520
