// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QSize>

class QWidget;

namespace k520 {

/// The most that a window may measure within its frame on the screen that it is on.
[[nodiscard]] QSize roomOnScreen(const QWidget& window);

/// Gives a window a size, or as much of it as its screen has room for, and moves it so far that all
/// of it can be seen.
void resizeOnScreen(QWidget& window, QSize wanted);

/// Makes a window that is larger than its screen as large as that, and moves it so far that all of
/// it can be seen.
void keepOnScreen(QWidget& window);

}  // namespace k520
