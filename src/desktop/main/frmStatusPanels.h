// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QStatusBar>

class QLabel;
class QToolButton;

namespace k520 {

/// The main window's status bar: panels for status, port, current file and time, one that says
/// where unsaved data came from, and a button that appears once something stands in the error list.
class frmStatusPanels : public QStatusBar {
    Q_OBJECT

  public:
    explicit frmStatusPanels(QWidget* parent = nullptr);

    /// Applies the interface texts.
    void SetSoftFace();
    /// Shows port number, file, lock state and remark as the core has them now.
    void refresh();
    /// The number of failures in the error list.
    void setFailures(int count);

  signals:
    void errorListWanted();

  private:
    void showTime();

    QLabel* status_;
    QLabel* port_;
    QLabel* origin_;
    QLabel* file_;
    QLabel* time_;
    QToolButton* failures_;
};

}  // namespace k520
