// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What a person's text means, however it came: typed, pasted, imported or given to a command.
/// Blanks around a text do not count, nor does the case of letters; full-width characters count as
/// the ordinary ones; a decimal comma is a decimal point.
namespace k520::typedText {

/// A text without what never counts: blanks at both ends (tabs, no-break and full-width blanks
/// among them), and the full-width forms of letters, digits and marks.
[[nodiscard]] std::string plain(std::string_view text);

/// The text of a number as the program writes one: plain, with a decimal point, without the unit
/// after it. `units` are in small letters. A text that is not a number may come back changed.
[[nodiscard]] std::string numeral(std::string_view text, std::span<const std::string_view> units);

/// The number that a text means (see parseNumber), perhaps with one of the units; nothing where it
/// is none.
[[nodiscard]] std::optional<double> number(std::string_view text,
                                           std::span<const std::string_view> units);

/// An entry of a list.
struct Entry {
    std::int32_t value = 0;
    /// No entry has that text: it was taken as an entry's number, from 0.
    bool byIndex = false;

    friend bool operator==(const Entry&, const Entry&) = default;
};

/// The entry that a text means. `lists` are the same entries in several languages; in the first one
/// an entry with just that text goes before all others. Blanks inside do not count, nor does a unit
/// after a number, in the text or in the entry: "15" is "15s". Nothing for an empty text, and where
/// no entry fits.
[[nodiscard]] std::optional<Entry> entry(std::string_view text,
                                         std::span<const std::span<const std::string>> lists);

/// A text as messages show it: not longer than forty characters, on one line.
[[nodiscard]] std::string shown(std::string_view text);

}  // namespace k520::typedText
