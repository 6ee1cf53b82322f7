// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

namespace k520 {

/// A frame that one control fills. What the control wants is asked when the window is laid out for
/// another reason, and not each time that it changes its mind: so a label can change its text all
/// the time, and nothing around it moves or is computed anew.
class SteadyFrame : public QWidget {
    Q_OBJECT

  public:
    SteadyFrame(QWidget* content, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* content_;
};

}  // namespace k520
