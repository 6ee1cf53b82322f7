// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/display.h"

#include "base/environment.h"

namespace k520::display {

bool mayBeThere() {
#ifdef __linux__
    return !environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty();
#else
    return true;
#endif
}

}  // namespace k520::display
