// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the printout.
namespace k520::texts {

inline constexpr Text printedFile{"文件", "File"};
inline constexpr Text printedBand{"频段", "Band"};
inline constexpr Text printedStamp{"上次写频时间", "Last programmed"};
inline constexpr Text printedOn{"打印时间", "Printed"};

}  // namespace k520::texts
