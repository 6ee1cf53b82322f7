// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QComboBox>

namespace k520 {

/// A drop-down list that the mouse wheel leaves alone: a page that is scrolled must not change what
/// happens to be under the pointer.
class SteadyComboBox : public QComboBox {
    Q_OBJECT

  public:
    explicit SteadyComboBox(QWidget* parent = nullptr);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace k520
