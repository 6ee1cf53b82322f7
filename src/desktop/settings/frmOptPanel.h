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

namespace k520 {

/// The sixteen controls of the radio-wide options, in groups, over optionPanel. They stand in
/// two columns where it is wide enough; it scrolls where it is low. Several panels can live at
/// once; each has to be told by showState.
class frmOptPanel : public QWidget {
    Q_OBJECT

  public:
    explicit frmOptPanel(QWidget* parent = nullptr);

    /// Shows captions, entries and selections as optionPanel has them now.
    void showState();

    /// Gives an option's control the keyboard and scrolls to it.
    void showOption(int number);

  private:
    class ColumnScrollArea;
    /// An option's widgets: a list with its label, or a check box.
    struct Row {
        QLabel* label = nullptr;
        QComboBox* list = nullptr;
        QCheckBox* box = nullptr;
    };

    void buildFrame();
    void addGroup(optionTable::Group group);
    void addList(const optionTable::Option& option);
    void addCheckBox(const optionTable::Option& option);
    void arrange(int columns);
    int placeGroup(int group, int row, int column);
    void measure();
    void followWidth();
    void showControl(int number);

    QGroupBox* fraOption_;
    ColumnScrollArea* scroll_;
    QGridLayout* grid_ = nullptr;
    int shownColumns_ = 0;
    std::array<Row, optionTable::optionCount> rows_;
    std::vector<QLabel*> headings_;
};

}  // namespace k520
