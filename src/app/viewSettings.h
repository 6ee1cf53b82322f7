// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

/// What a person chose in the menu View, in section "Setting" of the settings file. A setting that
/// cannot be read goes to the error list under "mdifrmMain->viewSettings", like one that cannot be
/// written.
namespace k520::viewSettings {

/// "1" shows the channels in words.
inline constexpr std::string_view channelWords = "ChannelWords";

/// An empty text where nothing is stored.
[[nodiscard]] std::string stored(std::string_view key);
void store(std::string_view key, std::string_view value);

}  // namespace k520::viewSettings
