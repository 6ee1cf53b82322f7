// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "channels/channelTable.h"
#include "document/Refused.h"

/// The channel table as CSV.
namespace k520::document {

using Channels = std::vector<modChMem::Channel>;

/// Channels, the first one number 1, under a line of titles: "channel", and each column's name as
/// nameOfColumn gives it. An empty channel has empty cells.
[[nodiscard]] std::string csvOf(const Channels& channels);

/// What a text of that form makes of channels, cell by cell as typing does; what it leaves out
/// stays. Raises Refused with the line of what cannot be taken.
struct TakenCsv {
    Channels channels;
    std::map<int, std::string> remarks;  ///< of the channels that were edited, by number
};
[[nodiscard]] TakenCsv taken(std::string_view text, Channels channels, const Listener& listener);

/// The channel table as csvOf writes it.
[[nodiscard]] std::string channelCsv();

/// Puts what such a text makes of the channel table into it, all at once. Raises Refused as above;
/// the table is then as it was.
void takeChannelCsv(std::string_view text, const Listener& listener);

}  // namespace k520::document
