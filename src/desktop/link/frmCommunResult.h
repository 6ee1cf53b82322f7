// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

#include "link/session/sessionAdvice.h"

class QLabel;

namespace k520 {

/// The result of the communication dialog: an icon, one bold line that says what happens or has
/// happened, and under it the advice. It keeps its size, whatever it says.
class frmCommunResult : public QWidget {
    Q_OBJECT

  public:
    explicit frmCommunResult(QWidget* parent = nullptr);

    void setNotice(const sessionAdvice::Notice& notice);
    /// Room for the advice in the font of the language in force.
    void keepRoom();
    void setAdviceTip(const QString& tip);

  private:
    QLabel* imgResult_;
    QLabel* lblResult_;
    QLabel* lblAdvice_;
};

}  // namespace k520
