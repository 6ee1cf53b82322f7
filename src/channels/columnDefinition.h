// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/typedText.h"

namespace k520::modChMem {

/// Keys of columns that the program treats in a way of their own; every other column is a list of
/// texts to choose from.
namespace columnKey {
inline constexpr std::string_view rx = "RxFre";
inline constexpr std::string_view tx = "TxFre";
inline constexpr std::string_view offset = "OFFSET";
inline constexpr std::string_view name = "CHNAME";
inline constexpr std::string_view decode = "CtcssDcsDec";
inline constexpr std::string_view encode = "CtcssDcsEnc";
}  // namespace columnKey

/// The definition of a grid column, as the settings file lists it: entry 0 is the column's key,
/// entry 2 the value that an empty channel has in it, entries 3 to 49 the texts of the values 0, 1,
/// 2 and so on. Entry 1 has no use.
class ColumnDefinition {
  public:
    static constexpr int capacity = 50;
    /// The entry that holds the text of value 0.
    static constexpr int firstText = 3;

    /// As a column without settings reads: fifty entries "0".
    ColumnDefinition() : entries_(capacity, "0") {}
    /// The entries in front of the end marker, and the texts of the values in another language.
    explicit ColumnDefinition(std::vector<std::string> entries,
                              std::vector<std::string> otherTexts = {})
        : entries_(std::move(entries)), otherTexts_(std::move(otherTexts)) {}

    /// An entry; an empty text after the end marker. Raises 9 outside 0 to 49.
    [[nodiscard]] const std::string& entry(int index) const;

    [[nodiscard]] const std::string& key() const { return entry(0); }
    /// Raises 13 where the entry is not a number.
    [[nodiscard]] std::int32_t defaultValue() const;

    /// The texts of the values, as many as there are.
    [[nodiscard]] std::span<const std::string> texts() const noexcept;
    /// The text of a value, as entry() gives it: -3 to -1 are the entries in front of the texts.
    [[nodiscard]] const std::string& textOf(std::int32_t value) const;
    /// The value that a person's text means, in every language that the settings have (see
    /// typedText.h).
    [[nodiscard]] std::optional<typedText::Entry> meaningOf(std::string_view text) const;

    /// Whether its cells are edited by choosing a text: true for every key that is not listed
    /// above.
    [[nodiscard]] bool isList() const;

  private:
    std::vector<std::string> entries_;
    std::vector<std::string> otherTexts_;
};

}  // namespace k520::modChMem
