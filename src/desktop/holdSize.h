// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>

namespace k520 {

/// Holds a widget at the size that it has, or lets it go. A label that is held can change its text
/// many times without its window being laid out anew each time.
inline void holdSize(QWidget& widget, bool held) {
    if (held) {
        widget.setFixedSize(widget.size());
    } else {
        widget.setMinimumSize(0, 0);
        widget.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
}

}  // namespace k520
