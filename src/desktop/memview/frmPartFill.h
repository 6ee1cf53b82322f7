// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>
#include <array>

class QLabel;
class QLineEdit;

namespace k520 {

/// The dialog of the partial fill: a range of addresses and a value. It stays open, and says what
/// is wrong, until all three can be taken or the user cancels.
class frmPartFill : public QDialog {
    Q_OBJECT

  public:
    explicit frmPartFill(QWidget* parent = nullptr);

    void accept() override;

  private:
    void layOut();
    void showRefusal(QLineEdit& field, const QString& reason);
    void clearRefusal();

    /// By partialFill::Field.
    std::array<QLineEdit*, 3> fields_;
    QLabel* lblRefusal_;
};

}  // namespace k520
