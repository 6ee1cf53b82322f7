// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace k520 {

class frmChGrid;
class frmChLists;
class frmChWords;
class frmOptPanel;

/// The channel window: model and band above the channel grid `vsfgGridCh`, the panel of the
/// optional features beside it.
class frmChMem : public QWidget {
    Q_OBJECT

  public:
    /// The core's start-up steps need not have run yet: the window follows its state.
    explicit frmChMem(QWidget* parent = nullptr);

    /// Applies the interface texts (modChMem's ChInfoInitFace).
    void SetSoftFace();
    /// Shows the model and band lists, their selection and the columns' widths as the core has them
    /// now; after the grid was built and after every refresh of the form.
    void refresh();

    /// Shows a coloured line above the grid; none for an empty text.
    void showNotice(const QString& text);

    /// Gives the band list the keyboard.
    void showBand();

    /// Shows each channel in words beside the grid, or no longer.
    void showWords(bool shown);

    [[nodiscard]] frmOptPanel* panel() const;
    [[nodiscard]] frmChGrid* grid() const;

  private:
    void layOut();
    void modelChosen(int index);
    void bandChosen(int index);

    QLabel* lblNotice_;
    frmChLists* fraModel_;
    QLabel* lblModel_;
    QComboBox* cboModel_;
    QLabel* lblFrequency_;
    QComboBox* cboFrequency_;
    frmChGrid* vsfgGridCh_;
    frmChWords* words_;
    frmOptPanel* panel_;
};

}  // namespace k520
