// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

#include "document/picture.h"

/// A channel as a sentence in the language in force: "Hears 446.03125 MHz with tone 118.8 Hz, sends
/// on the same frequency with tone 118.8 Hz, narrow, low power".
namespace k520::channelWords {

/// Empty for an empty channel. Bandwidth and power are said as the settings name them, the power
/// and the busy lock only of a channel that sends, scan and busy lock only where they are not off.
/// Columns that are not among those shipped are left out.
[[nodiscard]] std::string of(const document::ChannelPicture& channel);

/// That of a channel of the table as it stands; empty outside it.
[[nodiscard]] std::string ofNumber(int number);

}  // namespace k520::channelWords
