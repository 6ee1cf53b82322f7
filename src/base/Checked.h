// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "base/RuntimeError.h"

/// Conversions and array accesses that raise the standard run-time errors instead of wrapping round
/// or reading beyond an end: 6 (overflow), 9 (subscript), 13 (type mismatch).
namespace k520 {

/// The nearest whole number, halves to the even neighbour.
[[nodiscard]] double roundHalfEven(double value) noexcept;

/// Rounds halves to even; raises 6 where the result does not fit (or is not a number).
[[nodiscard]] std::uint8_t toByte(double value);
[[nodiscard]] std::int16_t toInt16(double value);
[[nodiscard]] std::int32_t toInt32(double value);

/// The value of a decimal number text, or nothing where the text is not a number. Blanks around it,
/// a sign, a decimal point (always ".", whatever the locale) and an exponent (e, E, d or D) are
/// allowed. Grouping marks, "nan" and "inf" are not numbers.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text) noexcept;
[[nodiscard]] inline bool isNumeric(std::string_view text) noexcept {
    return parseNumber(text).has_value();
}

/// The value of a text that is nothing but decimal digits, perhaps after a "-"; nothing for any
/// other text and outside 32 bits.
[[nodiscard]] std::optional<std::int32_t> parseWhole(std::string_view text) noexcept;

/// A rounded number from a decimal text; raise 13 where the text is not a number.
[[nodiscard]] std::int16_t textToInt16(std::string_view text);
[[nodiscard]] std::int32_t textToInt32(std::string_view text);

/// Hexadecimal digits without prefix into a signed 16-bit integer: "FFFF" is -1. Raises 13 for an
/// empty text or another character, 6 for anything above "FFFF".
[[nodiscard]] std::int16_t hexToInt16(std::string_view digits);

/// The number as settings hold it: a blank in front unless it is negative (" 3", "-3").
[[nodiscard]] std::string numberText(std::int32_t value);

/// The value as upper-case hexadecimal digits, zero-padded to `width`.
[[nodiscard]] std::string hexText(std::uint32_t value, int width);

/// Blanks taken off both ends; only the blank itself counts.
[[nodiscard]] std::string_view trimBlanks(std::string_view text) noexcept;

/// A letter A..Z made small; any other byte as it is.
[[nodiscard]] constexpr char lowerAscii(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
/// A copy with the letters A..Z made small; other bytes, UTF-8 included, stay.
[[nodiscard]] std::string lowerAscii(std::string_view text);

/// Raises 9 with the array's name and the index as source.
[[noreturn]] void throwSubscript(std::string_view arrayName, std::ptrdiff_t index);

/// Element `index` (from 0) of a container; raises 9 outside it.
template <class Container>
[[nodiscard]] auto& checkedAt(Container& container, std::ptrdiff_t index,
                              std::string_view arrayName) {
    if (index < 0 || index >= std::ssize(container)) {
        throwSubscript(arrayName, index);
    }
    return container[static_cast<std::size_t>(index)];
}

/// An array with real bounds, indexed from `First` to `Last` inclusive; raises 9 outside them.
template <class Element, std::ptrdiff_t First, std::ptrdiff_t Last>
class BoundedArray {
  public:
    [[nodiscard]] Element& operator()(std::ptrdiff_t index, std::string_view name = "array") {
        return elements_[offset(index, name)];
    }
    [[nodiscard]] const Element& operator()(std::ptrdiff_t index,
                                            std::string_view name = "array") const {
        return elements_[offset(index, name)];
    }
    void fill(const Element& value) { elements_.fill(value); }

    friend bool operator==(const BoundedArray&, const BoundedArray&) = default;

  private:
    static std::size_t offset(std::ptrdiff_t index, std::string_view name) {
        if (index < First || index > Last) {
            throwSubscript(name, index);
        }
        return static_cast<std::size_t>(index - First);
    }

    std::array<Element, static_cast<std::size_t>(Last - First + 1)> elements_{};
};

}  // namespace k520
