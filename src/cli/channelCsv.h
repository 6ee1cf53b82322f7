// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

/// The channel table as CSV: what export writes and import takes.
namespace k520::cli {

/// All channels under a line of titles: "channel", and each column's name as nameOfColumn gives it.
/// An empty channel has empty cells.
[[nodiscard]] std::string channelCsv();

/// Types into the grid what a text of that form says; what it leaves out stays. Raises Failure with
/// the line of what cannot be taken; lines in front of it are then in the table already.
void takeChannelCsv(std::string_view text);

}  // namespace k520::cli
