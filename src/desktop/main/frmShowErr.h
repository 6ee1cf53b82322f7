// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDockWidget>

class QAction;
class QLabel;
class QListView;
class QPushButton;

namespace k520 {

class LineListModel;

/// The docked error list `listShowErr`, with copying to the clipboard. Hidden until it is opened.
class frmShowErr : public QDockWidget {
    Q_OBJECT

  public:
    explicit frmShowErr(QWidget* parent = nullptr);

    /// Captions in the language in force.
    void SetSoftFace();

  private:
    void buildList();
    void buildFrame();
    void showLine(const QModelIndex& index);
    void showEmpty();
    /// Copies the selected lines, or all where none is selected.
    void copyLines();
    void copyAll();

    LineListModel* model_;
    QListView* listShowErr_;
    QLabel* lblEmpty_;
    QPushButton* cmdCopyAll_;
    QAction* copyLines_;
    QAction* copyAll_;
};

}  // namespace k520
