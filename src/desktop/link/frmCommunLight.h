// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

class QTimer;

namespace k520 {

/// The light `imgGreen`, which the timer `tmrLigGrint` blinks while a session is on. Off it is a
/// hollow ring, so that nothing around it moves.
class frmCommunLight : public QWidget {
    Q_OBJECT

  public:
    explicit frmCommunLight(QWidget* parent = nullptr);

    void setBlinking(bool on);
    [[nodiscard]] bool isLit() const noexcept { return lit_; }
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void setLit(bool lit);

    QTimer* tmrLigGrint_;
    bool lit_ = false;
};

}  // namespace k520
