// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

#include "document/Refused.h"

/// The channel table as CSV.
namespace k520::document {

/// All channels under a line of titles: "channel", and each column's name as nameOfColumn gives it.
/// An empty channel has empty cells.
[[nodiscard]] std::string channelCsv();

/// Types into the grid what a text of that form says; what it leaves out stays. Raises Refused with
/// the line of what cannot be taken; lines in front of it are then in the table already.
void takeChannelCsv(std::string_view text, const Listener& listener);

}  // namespace k520::document
