// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What a person's text means in a cell of the channel grid (see typedText.h for what never
/// counts). Typing, pasting, `set` and `import` all ask here.
namespace k520::cellText {

/// Whether a text means that there is nothing.
[[nodiscard]] bool isEmpty(std::string_view text);

/// A number of MHz, with or without that unit; nothing where it is none.
[[nodiscard]] std::optional<double> megahertz(std::string_view text);

/// A transmit frequency by its distance from the receive frequency, in MHz: "=" is 0, "=+7.6" and
/// "=-7.6" lie above and below. Nothing for any other text.
[[nodiscard]] std::optional<double> distanceFromReceive(std::string_view text);

/// A tone in its normal form (toneCode::normaliseTone), with or without the unit Hz; the off text
/// of the language in force for an empty text and for that of any language. Two digits that are not
/// a CTCSS tone are a DCS code of the list without its first zero: "23" is "D023N", but "65" is
/// "65.0". Nothing where it is not a tone.
[[nodiscard]] std::optional<std::string> tone(std::string_view text);

/// A channel's name: the characters of modChMem's table, small letters made capitals. Nothing where
/// another character is in it.
[[nodiscard]] std::optional<std::string> name(std::string_view text);

}  // namespace k520::cellText
