// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QSize>

class QWidget;

namespace k520::frmMainPlace {

/// Before the window is shown: gives it the stored place, or its first size where none is stored,
/// so that it lies with its frame within a screen that is there.
void restore(QWidget& window, QSize firstSize);
/// Stores where it stands.
void save(const QWidget& window);

}  // namespace k520::frmMainPlace
