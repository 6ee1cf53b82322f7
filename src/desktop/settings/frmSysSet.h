// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

namespace k520 {

class frmOptPanel;

/// The window of the optional features: the panel alone, captioned with text 303.
class frmSysSet : public QWidget {
    Q_OBJECT

  public:
    explicit frmSysSet(QWidget* parent = nullptr);

    [[nodiscard]] frmOptPanel* panel() const { return panel_; }

  private:
    frmOptPanel* panel_;
};

}  // namespace k520
