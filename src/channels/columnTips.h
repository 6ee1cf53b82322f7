// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

/// Explanations of the columns of the channel grid.
namespace k520::columnTips {

/// What a column is for, in the language in force, by its key in the settings; empty for a column
/// that the program does not know.
[[nodiscard]] std::string of(int column);

}  // namespace k520::columnTips
