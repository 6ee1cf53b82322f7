// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

class QHBoxLayout;
class QLineEdit;

namespace k520 {

class CellGridModel;
class frmMemDatChars;
class frmMemDatGrid;

/// The memory data window: the whole image as a hexadecimal grid `vsfgGridMemDat`, edited in place,
/// and as characters beside it where there is room. It follows every completed read, write, save
/// and open while it lives.
class frmMemDat : public QWidget {
    Q_OBJECT

  public:
    explicit frmMemDat(QWidget* parent = nullptr);

    ~frmMemDat() override;
    frmMemDat(const frmMemDat&) = delete;
    frmMemDat& operator=(const frmMemDat&) = delete;

    /// Selects the byte at an address and scrolls to it; false where there is none.
    bool showAddress(int address);

    /// Opens the dialog of the partial fill.
    void cmdPartFill_Click();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void buildGrid();
    void layOut();
    /// The width at which bytes and characters are seen.
    [[nodiscard]] int fullWidth() const;
    void showCharacters();
    struct Button;
    void addButton(QHBoxLayout& bar, const Button& button);
    void addGoTo(QHBoxLayout& bar);
    void goToAddress();

    CellGridModel* model_;
    frmMemDatGrid* vsfgGridMemDat_;
    frmMemDatChars* characters_ = nullptr;
    QLineEdit* txtGoTo_;
};

}  // namespace k520
