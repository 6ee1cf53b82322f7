// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/SteadyComboBox.h"

#include <QWheelEvent>

namespace k520 {

SteadyComboBox::SteadyComboBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void SteadyComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace k520
