// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Squelch tones as texts and as the 16-bit words that the radio stores, low byte first:
///
///   0xFFFF            off
///   0x0258..0x0A5A    CTCSS in tenths of Hz (60.0 to 265.0 Hz)
///   0x2800..0x29FF    DCS normal; bits 0-8 are the code, three octal digits
///   0xA800..0xA9FF    DCS inverted
///   anything else     shown as off
///
/// As texts: the off text, "67.0" (Hz with one decimal), "D023N" and "D023I".
namespace k520::toneCode {

/// A tone of the CTCSS list: its text, and its word as four hexadecimal digits.
struct CtcssTone {
    std::string_view text;
    std::string_view word;
};

inline constexpr int ctcssCount = 50;
inline constexpr int dcsCount = 105;

/// What can be chosen from a list. Words outside these lists are shown and stored all the same.
[[nodiscard]] std::span<const CtcssTone, ctcssCount> ctcssTones() noexcept;
/// Three octal digits each.
[[nodiscard]] std::span<const std::string_view, dcsCount> dcsCodes() noexcept;

/// The off text of an interface language, 1 to 3; that of language 3 for any other number.
[[nodiscard]] std::string_view offTextOf(std::int16_t language) noexcept;

/// The off texts of all languages.
[[nodiscard]] std::span<const std::string_view> allOffTexts() noexcept;

/// The text of a stored word; `offText` for off and for every word that is not a tone.
[[nodiscard]] std::string toneText(std::uint16_t word, std::string_view offText);

/// The word of a text. The writer asks for less than the reader shows:
///  - an empty text, `offText` and the off text of every language give 0xFFFF;
///  - a number is a CTCSS tone in Hz; its tenths (halves to even) are stored without a look at the
///    range of tones. Raises 6 where they do not fit 16 bits;
///  - anything else is a DCS text of one letter, three digits and a polarity, "N" for normal. Every
///    other polarity, and none at all ("D023"), is inverted; digits 8 and 9 count as they are.
///    Raises 9 for more than five characters, 13 for a digit that is missing or none.
[[nodiscard]] std::uint16_t toneWord(std::string_view text, std::string_view offText);

/// What a person typed, as the text of a tone; nothing where it is none. Blanks around do not
/// count.
///  - A number of 60.0 to 265.0 is a CTCSS tone: "88.54" becomes "88.5".
///  - Any other number is a DCS code without letters and needs three octal digits in front: "023"
///    becomes "D023N".
///  - A text with or without "D" or "d" in front needs three octal digits next, then takes "N",
///  "n", "I"
///    or "i" for the polarity and N for anything else: "D023", "023x" and "D023N5" become "D023N".
[[nodiscard]] std::optional<std::string> normaliseTone(std::string_view typed);

}  // namespace k520::toneCode
