// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QGroupBox>
#include <vector>

class QComboBox;
class QGridLayout;
class QLabel;

namespace k520 {

/// A frame with lists and their labels: beside each other, or below each other where it is narrow.
class frmChLists : public QGroupBox {
    Q_OBJECT

  public:
    explicit frmChLists(QWidget* parent = nullptr);

    void add(QLabel& label, QComboBox& list);

    /// The width that the widest of the lists needs.
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    /// After a list or a label has got other texts.
    bool event(QEvent* event) override;

  private:
    struct Row {
        QLabel* label;
        QComboBox* list;
    };
    [[nodiscard]] int widthOf(const Row& row) const;
    [[nodiscard]] int margins() const;
    void arrange();

    QGridLayout* grid_;
    std::vector<Row> rows_;
    bool stacked_ = false;
};

}  // namespace k520
