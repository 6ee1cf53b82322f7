// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QIcon>

/// The program's own line icons. They are drawn in the palette's text colours, so that they can be
/// seen on light and dark desktops alike.
namespace k520::icons {

/// The icon share/icons/NAME.svg; a null icon where there is none.
[[nodiscard]] QIcon line(const QString& name);

/// The program's own icon, in its colours.
[[nodiscard]] QIcon program();

}  // namespace k520::icons
