// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/SteadyFrame.h"

namespace k520 {

SteadyFrame::SteadyFrame(QWidget* content, QWidget* parent) : QWidget(parent), content_(content) {
    content->setParent(this);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize SteadyFrame::sizeHint() const {
    return content_->sizeHint();
}

/// Room is not made for a text that may be gone at once: the window can become narrower.
QSize SteadyFrame::minimumSizeHint() const {
    return {0, content_->minimumSizeHint().height()};
}

void SteadyFrame::resizeEvent(QResizeEvent* /*event*/) {
    content_->setGeometry(rect());
}

}  // namespace k520
