// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

#include "app/Text.h"

class QHBoxLayout;
class QLineEdit;

namespace k520 {

class CellGridModel;
class frmMemDatGrid;

/// The memory data window: the whole image as a hexadecimal grid `vsfgGridMemDat`, edited in place.
class frmMemDat : public QWidget {
    Q_OBJECT

  public:
    explicit frmMemDat(QWidget* parent = nullptr);

  private:
    void buildGrid();
    void addButton(QHBoxLayout& bar, const char* name, Text caption, const QString& icon,
                   void (*command)());
    void addGoTo(QHBoxLayout& bar);
    void goToAddress();

    CellGridModel* model_;
    frmMemDatGrid* vsfgGridMemDat_;
    QLineEdit* txtGoTo_;
};

}  // namespace k520
