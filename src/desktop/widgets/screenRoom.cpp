// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/screenRoom.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace k520 {

namespace {

/// What the window manager puts around a window: what it has put there, or else a guess.
QSize frameOf(const QWidget& window) {
    const QSize frame = window.frameGeometry().size() - window.geometry().size();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    constexpr int border = 4;
    return frame.height() > 0 ? frame : QSize(2 * border, title + border);
}

int within(int place, int length, int from, int room) {
    return std::max(from, std::min(place, from + room - length));
}

}  // namespace

QSize roomOnScreen(const QWidget& window) {
    return window.screen()->availableGeometry().size() - frameOf(window);
}

void resizeOnScreen(QWidget& window, QSize wanted) {
    const QSize size = wanted.boundedTo(roomOnScreen(window)).expandedTo(window.minimumSizeHint());
    const QRect screen = window.screen()->availableGeometry();
    const QSize whole = size + frameOf(window);
    const QPoint at = window.pos();
    const QPoint inside(within(at.x(), whole.width(), screen.x(), screen.width()),
                        within(at.y(), whole.height(), screen.y(), screen.height()));
    // First the place: a window manager moves a window that grows off the screen as it likes.
    if (inside != at) {
        window.move(inside);
    }
    window.resize(size);
}

void keepOnScreen(QWidget& window) {
    resizeOnScreen(window, window.size());
}

}  // namespace k520
