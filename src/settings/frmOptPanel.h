// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "settings/optionTable.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QScrollArea;

namespace k520 {

/// The sixteen controls of the radio-wide options, in groups, over optionPanel. It scrolls where it
/// is small. Several panels can live at once; each has to be told by showState.
class frmOptPanel : public QWidget {
    Q_OBJECT

  public:
    explicit frmOptPanel(QWidget* parent = nullptr);

    /// Shows captions, entries and selections as optionPanel has them now.
    void showState();

  private:
    /// An option's widgets: a list with its label, or a check box.
    struct Row {
        QLabel* label = nullptr;
        QComboBox* list = nullptr;
        QCheckBox* box = nullptr;
    };

    void buildFrame();
    void addGroups(QGridLayout& grid);
    void addList(QGridLayout& grid, const optionTable::Option& option);
    void addCheckBox(QGridLayout& grid, const optionTable::Option& option);
    void showControl(int number);

    QGroupBox* fraOption_;
    QScrollArea* scroll_;
    std::array<Row, optionTable::optionCount> rows_;
    std::vector<QLabel*> headings_;
};

}  // namespace k520
