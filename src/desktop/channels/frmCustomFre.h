// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>

class QFormLayout;
class QLineEdit;
class QPushButton;

namespace k520 {

/// The custom range dialog: two limits in MHz (`txtFreMin`, `txtFreMax`), filled with those
/// accepted last. OK hands them to modFileCmd::customRangeOk, which asks first, and closes; Cancel
/// closes and changes nothing.
class frmCustomFre : public QDialog {
    Q_OBJECT

  public:
    explicit frmCustomFre(QWidget* parent = nullptr);

    /// Applies the interface texts.
    void InitFace();

  private:
    QLineEdit* txtFreMin_;
    QLineEdit* txtFreMax_;
    QPushButton* cmdOk_;
    QPushButton* cmdCancel_;
    QFormLayout* form_;
};

}  // namespace k520
