// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/Text.h"

/// Texts of the channel window.
namespace k520::texts {

inline constexpr Text outOfBandTip{"频率超出频段 {} - {} MHz，对讲机可能无法工作。",
                                   "Outside the band {} - {} MHz: the radio may not work on it."};
inline constexpr Text openedTip{"新开启的信道，请输入频率。",
                                "A channel just opened: type its frequency."};
inline constexpr Text cutCells{"剪切(&T)", "Cu&t"};
inline constexpr Text pasteCells{"粘贴(&P)", "&Paste"};

}  // namespace k520::texts
