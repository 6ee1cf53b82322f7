// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

namespace k520::userLocale {

/// The name of the locale that the user has chosen for texts, such as "zh_CN.UTF-8"; empty where
/// there is none.
[[nodiscard]] std::string name();

}  // namespace k520::userLocale
